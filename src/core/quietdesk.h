// A desk for work that goes on without asking: questions get their default, what boxes say is kept.
#pragma once

#include "toolkit/desk.h"

#include <string>
#include <vector>

namespace vael {

/// Closes a modal view that nobody waits for; the program's own message box leaves its text.
void AnswerModal(View& view, std::vector<std::string>& said);

/// While it lives it is the desk of the process; all but questions, file dialogs and modal views
/// goes to the desk that was there before, which then is the desk again.
class QuietDesk : public Desk {
public:
    QuietDesk() : below_(&TheDesk()) { UseDesk(this); }
    ~QuietDesk() override { UseDesk(below_); }
    QuietDesk(const QuietDesk&) = delete;
    QuietDesk& operator=(const QuietDesk&) = delete;

    std::vector<std::string> Said;  // texts of message boxes, in order

    Answer Ask(const Question& question) override {
        Said.push_back(question.Text);
        return question.Default();
    }
    std::optional<FileChoice> OpenFiles(const FileDialog&) override { return std::nullopt; }
    std::optional<FileChoice> SaveFile(const FileDialog&) override { return std::nullopt; }
    std::optional<Colour> PickColour(Colour) override { return std::nullopt; }
    void RunModal(View& view) override { AnswerModal(view, Said); }
    std::vector<FolderItem> ListFolder(const std::string& path) override {
        return below_->ListFolder(path);
    }
    bool MakeFolder(const std::string& path) override { return below_->MakeFolder(path); }
    void Breathe() override { below_->Breathe(); }
    void Busy(bool on) override { below_->Busy(on); }
    bool Launch(const std::string& program, const std::vector<std::string>& words) override {
        return below_->Launch(program, words);
    }
    bool OpenText(const std::string& path) override { return below_->OpenText(path); }
    [[nodiscard]] bool HasPrinter() override { return below_->HasPrinter(); }
    std::unique_ptr<PrintJob> StartPrintJob(const PrintOrder& order) override {
        return below_->StartPrintJob(order);
    }
    void StayOnTop(View& view, bool on) override { below_->StayOnTop(view, on); }
    void Show() override { below_->Show(); }
    void Quit() override { below_->Quit(); }

private:
    Desk* below_;
};

}  // namespace vael
