// A view: a record of controls, known by name.
#include "toolkit/view.h"

#include <algorithm>
#include <utility>

namespace vael {
namespace {

std::vector<View*>& Registry() {
    static std::vector<View*> views;
    return views;
}

}  // namespace

Control::Control(View& owner, ControlKind kind, std::string name)
    : Owner(owner), Kind(kind), Name(std::move(name)) {
    owner.controls_.push_back(this);
}

View::View(std::string name, std::string caption)
    : Name(std::move(name)), Caption(std::move(caption)) {
    auto& views = Registry();
    if (std::find(views.begin(), views.end(), this) == views.end()) views.push_back(this);
}

// The registry keeps the address: a view that is unloaded is constructed again in the same place.
View::~View() = default;

Control* View::Find(const std::string& name) const {
    const auto found = std::find_if(controls_.begin(), controls_.end(),
                                    [&](const Control* c) { return c->Name == name; });
    return found == controls_.end() ? nullptr : *found;
}

const std::vector<View*>& AllViews() { return Registry(); }

std::function<bool(const KeyPress&)> EnterEscape(std::function<void()> enter,
                                                 std::function<void()> escape) {
    return [enter = std::move(enter), escape = std::move(escape)](const KeyPress& key) {
        if (key.Key == KeyPress::Name::Enter)
            enter();
        else if (key.Key == KeyPress::Name::Escape)
            escape();
        else
            return false;
        return true;
    };
}

}  // namespace vael
