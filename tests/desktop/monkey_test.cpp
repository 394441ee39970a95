// The monkey at the real window: after each act every widget that is on the screen shows what its
// record says. VAEL_SEED repeats a run, VAEL_ACTS sets the number of acts.
#include "deskworld.h"

#include "support/monkey.h"

#include <QLabel>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QTabBar>

#include <iostream>

namespace vael {
namespace {

using test::Monkey;

std::string Text(const QString& text) { return text.toStdString(); }

/// What a widget shows otherwise than its record says; empty when they agree.
std::string Differs(const Binding& binding) {
    const Control& c = binding.Record();
    if (TypedBox() == &c) return {};  // half typed
    auto* widget = qobject_cast<QWidget*>(binding.Widget());
    if (widget == nullptr) {
        auto* action = qobject_cast<QAction*>(binding.Widget());
        if (action == nullptr) return {};
        const auto& item = static_cast<const Menu&>(c);
        if (item.Checkable && action->isChecked() != item.Checked) return "check mark";
        return action->isEnabled() == (item.Enabled && !item.Withheld) ? "" : "enabled";
    }
    const bool hidden = widget->isHidden();
    if (hidden == c.Visible) return "visible";
    const bool readable = qobject_cast<QLineEdit*>(widget) != nullptr;
    // A widget in a disabled one is disabled with it; none of the program's frames ever is.
    if (widget->isEnabled() != (c.Enabled && (readable || !c.Withheld))) return "enabled";
    switch (c.Kind) {
        case ControlKind::CheckBox:
            return static_cast<QCheckBox*>(widget)->isChecked() ==
                           (static_cast<const CheckBox&>(c).Value != 0)
                       ? ""
                       : "tick";
        case ControlKind::Option:
            return static_cast<QRadioButton*>(widget)->isChecked() ==
                           static_cast<const Option&>(c).Value
                       ? ""
                       : "option";
        case ControlKind::Button:
            return Text(static_cast<QAbstractButton*>(widget)->text()) ==
                           static_cast<const Button&>(c).Caption
                       ? ""
                       : "caption";
        case ControlKind::NumberBox:
            return Text(static_cast<QLineEdit*>(widget)->text()) ==
                           static_cast<const NumberBox&>(c).Text()
                       ? ""
                       : "number";
        case ControlKind::TextBox:
            if (auto* line = qobject_cast<QLineEdit*>(widget))
                return Text(line->text()) == static_cast<const TextBox&>(c).Text ? "" : "text";
            return "";
        case ControlKind::ListBox: {
            const auto& list = static_cast<const ListBox&>(c);
            if (auto* combo = qobject_cast<QComboBox*>(widget)) {
                if (combo->count() != static_cast<int>(list.Items.size())) return "items";
                if (combo->currentIndex() != list.Index) return "selection";
                return Text(combo->currentText()) == list.Text() ? "" : "text of the list";
            }
            return "";
        }
        case ControlKind::ScrollBar: {
            const auto& bar = static_cast<const ScrollBar&>(c);
            return static_cast<QScrollBar*>(widget)->value() == bar.Value ? "" : "place";
        }
        case ControlKind::Label: {
            std::string shown = static_cast<const Label&>(c).Caption;
            std::replace(shown.begin(), shown.end(), '\r', '\n');
            return Text(static_cast<QLabel*>(widget)->text()) == shown ? "" : "caption";
        }
        default: return "";
    }
}

/// The desk of the program, with the monkey before its dialogs.
class MonkeyQtDesk : public QtDesk {
public:
    MonkeyQtDesk(Monkey& monkey, std::vector<std::string> files)
        : monkey_(monkey), files_(std::move(files)) {}
    Answer Ask(const Question& question) override {
        if (question.Choice == Question::Buttons::Ok) return Answer::Ok;
        return monkey_.Chance(50) ? Answer::Yes : Answer::No;
    }
    std::optional<FileChoice> OpenFiles(const FileDialog&) override {
        FileChoice choice;
        for (int i = 0; i <= monkey_.Below(3); ++i) choice.Paths.push_back(monkey_.AnyOf(files_));
        return choice;
    }
    std::optional<FileChoice> SaveFile(const FileDialog&) override { return std::nullopt; }
    bool OpenText(const std::string&) override { return true; }
    void RunModal(View& view) override {
        Show();
        for (int i = 0; i < 10 && view.Visible; ++i) monkey_.ActOn(view);
        view.Visible = false;
        Show();
    }
    void Quit() override {}

private:
    Monkey& monkey_;
    std::vector<std::string> files_;
};

}  // namespace

TEST(WindowMonkey, EveryWidgetShowsItsRecordAfterEveryAct) {
    const char* given = std::getenv("VAEL_SEED");
    const std::uint64_t seed =
        given != nullptr ? std::strtoull(given, nullptr, 10) : std::random_device{}();
    const char* many = std::getenv("VAEL_ACTS");
    const int acts = many != nullptr ? std::atoi(many) : 1200;
    SCOPED_TRACE("VAEL_SEED=" + std::to_string(seed));
    std::cout << "VAEL_SEED=" << seed << std::endl;

    std::vector<std::string> files;
    QTemporaryDir folder;
    for (const std::string name : {"crystal.dat", "atomic.dat"})
        std::filesystem::copy_file(VAEL_SOURCE_DIR "/data/" + name,
                                   folder.path().toStdString() + "/" + name);
    {
        test::DeskWorld world;  // leaves a fresh store and fresh views behind
    }
    for (const auto& [name, lines] : std::vector<std::pair<std::string, std::vector<GaussLine>>>{
             {"five.npd", test::FIVE_LINES},
             {"one.npd", {{800.0, 5000.0, 9.0}}},
             {"flat.npd", {}}}) {
        files.push_back((folder.path() + QLatin1Char('/')).toStdString() + name);
        std::ofstream(files.back(), std::ios::binary) << NpdText(GaussCounts(4096, 60.0, lines));
    }
    Monkey monkey(seed);
    MonkeyQtDesk desk(monkey, files);
    OnFault([](View&, const std::string& sentence) { TellStatus(sentence, true); });
    RunEvent(frmVaelAna, [&] { Form_Load(folder.path().toStdString()); });
    desk.Show();
    for (int act = 0; act < acts; ++act) {
        monkey.Act();
        frmVaelAna.Visible = true;
        desk.Show();
        const auto breaches = test::Breaches();
        ASSERT_TRUE(breaches.empty())
            << "act " << act << ": " << monkey.LastAct << ": " << breaches.front();
        for (const auto& form : desk.Forms()) {
            if (!form->Shown().Visible) continue;
            for (const auto& binding : form->Bindings()) {
                const std::string what = Differs(*binding);
                ASSERT_TRUE(what.empty())
                    << "act " << act << ": " << monkey.LastAct << ": " << form->Shown().Name << "."
                    << binding->Record().Name << ": " << what;
            }
        }
    }
    EXPECT_GT(monkey.Taken, acts / 2);
    OnFault([](View&, const std::string&) {});
    for (View* view : AllViews()) view->Visible = false;
    desk.Show();
}

}  // namespace vael
