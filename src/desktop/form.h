// A form: the window of one view, its widgets joined to the view's records.
#pragma once

#include "desktop/binder.h"

#include <QMainWindow>

#include <functional>
#include <string>
#include <vector>

namespace vael {

class Form : public QMainWindow {
    Q_OBJECT
public:
    using SetUp = std::function<void(QMainWindow&)>;
    /// `setUp` is what the form compiler made of the .ui file; `palette` is called at the start and
    /// when the system's colours change.
    Form(View& view, const SetUp& setUp, std::function<void(const QPalette&)> palette = {});

    [[nodiscard]] View& Shown() const { return view_; }
    /// Controls of the view that the form lacks, each with what is wrong.
    [[nodiscard]] const std::vector<std::string>& Missing() const { return joined_.Missing; }
    [[nodiscard]] const std::vector<std::unique_ptr<Binding>>& Bindings() const {
        return joined_.Bindings;
    }
    /// Brings what changed in the records to the screen: caption, visibility, controls.
    void Bring();

protected:
    void closeEvent(QCloseEvent* event) override;
    void changeEvent(QEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    void Refitted();
    void Decorate();
    View& view_;
    std::function<void(const QPalette&)> palette_;
    Joined joined_;
    bool resizePending_ = false;
};

/// The form that a widget belongs to, also from inside an open menu or list; nullptr for a widget of
/// a message box or of no form.
[[nodiscard]] Form* FormOf(QObject* target);

}  // namespace vael
