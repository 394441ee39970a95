// The desk: the short list of things asked of whatever the program runs on.
#include "toolkit/desk.h"

#include "core/fault.h"

namespace vael {
namespace {

Desk* current = nullptr;

}  // namespace

Desk& TheDesk() {
    if (current == nullptr) throw Fault(FaultNumber::Argument, "The program runs on no desk.");
    return *current;
}

void UseDesk(Desk* desk) { current = desk; }

void TopMost(View& view) { TheDesk().StayOnTop(view, true); }

void NoTopMost(View& view) { TheDesk().StayOnTop(view, false); }

void Say(const std::string& text, const std::string& title) {
    (void)TheDesk().Ask({.Text = text, .Title = title});
}

bool AskYesNo(const std::string& text, const std::string& title) {
    return TheDesk().Ask({.Text = text,
                          .Title = title,
                          .Choice = Question::Buttons::YesNo,
                          .Icon = Question::Sign::Exclamation,
                          .DefaultButton = 2}) == Answer::Yes;
}

}  // namespace vael
