// A form: the window of one view, its widgets joined to the view's records.
#pragma once

#include "desktop/binder.h"

#include <QFont>
#include <QMainWindow>

#include <functional>
#include <string>
#include <vector>

namespace vael {

class Form : public QMainWindow {
    Q_OBJECT
public:
    using SetUp = std::function<void(QMainWindow&)>;
    /// What a view asks of its form beyond its controls.
    struct Extras {
        std::function<void(const QPalette&)> Colours;  // at the start, and when they change
        std::function<void(Form&)> Brought;            // after the records were brought
    };
    /// `setUp` is what the form compiler made of the .ui file.
    Form(View& view, const SetUp& setUp, Extras extras);
    Form(View& view, const SetUp& setUp) : Form(view, setUp, Extras{}) {}
    ~Form() override;
    Form(const Form&) = delete;
    Form& operator=(const Form&) = delete;

    [[nodiscard]] View& Shown() const { return view_; }
    /// Controls of the view that the form lacks, each with what is wrong.
    [[nodiscard]] const std::vector<std::string>& Missing() const { return joined_.Missing; }
    [[nodiscard]] const std::vector<std::unique_ptr<Binding>>& Bindings() const {
        return joined_.Bindings;
    }
    /// Brings what changed in the records to the screen: caption, controls, visibility, whether the
    /// window stays on top. A window that is shown again stands where it stood.
    void Bring();

protected:
    void closeEvent(QCloseEvent* event) override;
    void changeEvent(QEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    void Refitted();
    void Decorate();
    void BringVisible();
    void BringOnTop();
    void FocusFirst();
    View& view_;
    Extras extras_;
    Joined joined_;
    bool resizePending_ = false;
    bool onTop_ = false;
    QByteArray place_;  // where the window stood when it was hidden, for this run
};

/// The font of boxes that show running numbers: one size larger, all digits of one width.
[[nodiscard]] QFont DigitFont();

/// The form a widget belongs to, also from inside an open menu or list; nullptr for a widget of
/// a message box or of no form.
[[nodiscard]] Form* FormOf(QObject* target);

}  // namespace vael
