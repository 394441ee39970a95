// The binder: joins the records of a view to the widgets of a form by name, carries the user's hand
// to the records and what changed in the records to the widgets. It knows kinds of control and no
// view.
#pragma once

#include "toolkit/controls.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

class QMainWindow;
class QObject;

namespace vael {

/// One record and its widget.
class Binding {
public:
    virtual ~Binding() = default;
    /// Shows what differs from what was shown last; all of it with `again`. A box that is being
    /// typed in is left alone until the hand leaves it.
    virtual void Bring(bool again) = 0;
    [[nodiscard]] virtual const Control& Record() const = 0;
    [[nodiscard]] virtual QObject* Widget() const = 0;
};

struct Joined {
    std::vector<std::unique_ptr<Binding>> Bindings;
    std::vector<std::string> Missing;  // "name: what is wrong", empty when all is joined
};

/// Finds a widget of the right class for each control of the view by its name and wires it. Menus
/// and timers have no widget in the form: they are made here. `refitted` is called when a picture
/// has changed its size.
[[nodiscard]] Joined Join(View& view, QMainWindow& form, const std::function<void()>& refitted);

}  // namespace vael
