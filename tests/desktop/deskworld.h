// The program started off the screen in an empty folder, with dialogs answered by a script, and the
// acts of a user's mouse and keyboard on the real widgets.
#pragma once

#include "core/params.h"
#include "core/store.h"
#include "desktop/qtdesk.h"
#include "desktop/widgets.h"
#include "support/folderofprocess.h"
#include "support/freshviews.h"
#include "support/spectra.h"
#include "toolkit/hand.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QMouseEvent>
#include <QPointer>
#include <QRadioButton>
#include <QScrollBar>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

#include <chrono>
#include <deque>
#include <filesystem>
#include <fstream>
#include <set>
#include <string>
#include <vector>

namespace vael::test {

/// The desk of the program, but for the file dialogs and questions, which a script answers.
class ScriptedQtDesk : public QtDesk {
public:
    std::deque<std::vector<std::string>> Files;  // of the next open dialogs; an empty list cancels
    std::deque<std::string> Saves;               // of the next save dialogs; an empty path cancels
    std::vector<FileDialog> SaveDialogs;
    std::deque<Answer> Answers;
    std::vector<std::string> Asked;
    bool HasQuit = false;
    bool OwnDialogs = false;  // the program's own dialogs and questions, which the test works

    std::optional<FileChoice> OpenFiles(const FileDialog& dialog) override {
        if (OwnDialogs) return QtDesk::OpenFiles(dialog);
        if (Files.empty()) {
            ADD_FAILURE() << "nobody expected an open dialog";
            return std::nullopt;
        }
        const auto paths = Files.front();
        Files.pop_front();
        if (paths.empty()) return std::nullopt;
        return FileChoice{.Paths = paths, .FilterIndex = 1};
    }
    std::optional<FileChoice> SaveFile(const FileDialog& dialog) override {
        SaveDialogs.push_back(dialog);
        if (OwnDialogs) return QtDesk::SaveFile(dialog);
        if (Saves.empty()) {
            ADD_FAILURE() << "nobody expected a save dialog";
            return std::nullopt;
        }
        const std::string path = Saves.front();
        Saves.pop_front();
        if (path.empty()) return std::nullopt;
        return FileChoice{.Paths = {path}, .FilterIndex = 1};
    }
    Answer Ask(const Question& question) override {
        Asked.push_back(question.Text);
        if (OwnDialogs) return QtDesk::Ask(question);
        if (Answers.empty()) {
            ADD_FAILURE() << "nobody expected the question: " << question.Text;
            return question.Default();
        }
        const Answer answer = Answers.front();
        Answers.pop_front();
        return answer;
    }
    std::function<void()> OnBreathe;  // while a command lets the views breathe
    void Breathe() override {
        QtDesk::Breathe();
        if (OnBreathe) OnBreathe();
    }
    bool OpenText(const std::string& path) override {
        OpenedTexts.push_back(path);
        return EditorStarts;
    }
    void Quit() override { HasQuit = true; }
    std::vector<std::string> OpenedTexts;
    bool EditorStarts = true;
};

/// Acts on the next dialog of a kind that opens while one waits for it. What the act leaves open is
/// closed, so that a test that fails does not wait for ever.
template <class Dialog>
void OnDialog(std::function<void(Dialog&)> act) {
    auto* clock = new QTimer(qApp);
    const auto begun = std::chrono::steady_clock::now();
    QObject::connect(clock, &QTimer::timeout, clock, [clock, begun, act] {
        auto* box = qobject_cast<Dialog*>(QApplication::activeModalWidget());
        const bool late = std::chrono::steady_clock::now() - begun > std::chrono::seconds(30);
        if (box == nullptr && !late) return;
        clock->stop();
        clock->deleteLater();
        if (box == nullptr) {
            ADD_FAILURE() << "the dialog never came";
            return;
        }
        const QPointer<Dialog> still(box);
        act(*box);
        if (still.isNull() || !still->isVisible()) return;
        ADD_FAILURE() << "the dialog was left open";
        still->reject();
    });
    clock->start(1);
}

struct DeskWorld {
    DeskWorld() {
        ResetHands();
        OnFault([this](View&, const std::string& sentence) {
            Faults.push_back(sentence);
            TellStatus(sentence, true);
        });
        store = Store{};
        settings = Settings{};
        FreshViews();
        RunEvent(frmVaelAna, [this] { Form_Load(Folder.path().toStdString()); });
        Desk.Show();
        Settle();
    }
    ~DeskWorld() {
        OnFault([](View&, const std::string&) {});
        EXPECT_TRUE(Desk.Files.empty()) << "an open dialog that was expected never came";
        EXPECT_TRUE(Desk.Saves.empty()) << "a save dialog that was expected never came";
        EXPECT_TRUE(Desk.Answers.empty()) << "a question that was expected never came";
    }
    DeskWorld(const DeskWorld&) = delete;
    DeskWorld& operator=(const DeskWorld&) = delete;

    Form& Main() { return *Desk.FormOfView(frmVaelAna); }

    /// Lets everything that waits in the queue happen.
    static void Settle() {
        for (int i = 0; i < 4; ++i) QCoreApplication::processEvents();
    }

    template <class W = QWidget>
    W& Widget(const View& view, const std::string& name) {
        W* found = Desk.FormOfView(view)->findChild<W*>(QString::fromStdString(name));
        if (found == nullptr) throw std::runtime_error("no widget " + name);
        return *found;
    }
    /// A click of the left button on the middle of a control.
    void ClickOn(const Control& control) {
        auto& widget = Widget(control.Owner, control.Name);
        QPoint at = widget.rect().center();
        if (qobject_cast<QCheckBox*>(&widget) || qobject_cast<QRadioButton*>(&widget))
            at.setX(8);  // the middle of a wide box is not its mark
        QTest::mouseClick(&widget, Qt::LeftButton, {}, at);
        Pressed.insert(control.Owner.Name + "." + control.Name);
        Settle();
    }
    /// Opens the menus down to the item with the mouse and clicks it.
    void ClickOn(const Menu& item) {
        Form& form = *Desk.FormOfView(item.Owner);
        auto* top =
            form.findChild<QMenu*>(QString::fromStdString(item.Parent) + QStringLiteral("_items"));
        ASSERT_NE(top, nullptr);
        QMenuBar* bar = form.menuBar();
        QTest::mouseClick(bar, Qt::LeftButton, {}, bar->actionGeometry(top->menuAction()).center());
        Settle();
        ASSERT_TRUE(top->isVisible()) << item.Parent << " did not open";
        auto* action = form.findChild<QAction*>(QString::fromStdString(item.Name));
        QTest::mouseClick(top, Qt::LeftButton, {}, top->actionGeometry(action).center());
        Settle();
        if (top->isVisible()) top->close();  // a disabled item leaves its menu open
        Pressed.insert(item.Owner.Name + "." + item.Name);
        Settle();
    }
    /// Opens a list, goes down (or up) in it with the arrow keys and takes the item with Enter.
    void StepList(const ListBox& list, int steps) {
        auto& combo = Widget<QComboBox>(list.Owner, list.Name);
        combo.showPopup();
        Settle();
        for (int i = 0; i < std::abs(steps); ++i)
            QTest::keyClick(combo.view(), steps > 0 ? Qt::Key_Down : Qt::Key_Up);
        QTest::keyClick(combo.view(), Qt::Key_Return);
        Pressed.insert(list.Owner.Name + "." + list.Name);
        Settle();
    }
    /// Clicks into a box, types over what stands there, and presses a key that ends the typing.
    void TypeInto(const Control& box, const char* text, Qt::Key end = Qt::Key_Tab) {
        auto& widget = Widget(box.Owner, box.Name);
        auto* line = qobject_cast<QLineEdit*>(&widget);
        if (auto* combo = qobject_cast<QComboBox*>(&widget)) line = combo->lineEdit();
        ASSERT_NE(line, nullptr) << box.Name;
        QTest::mouseClick(line, Qt::LeftButton);
        QTest::keyClick(line, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClicks(line, QString::fromUtf8(text));
        QTest::keyClick(line, end);
        Pressed.insert(box.Owner.Name + "." + box.Name);
        Settle();
    }
    /// Clicks an arrow of a scroll bar: 1 forward, -1 back.
    void ScrollOn(const ScrollBar& bar, int direction) {
        auto& widget = Widget<QScrollBar>(bar.Owner, bar.Name);
        const bool level = widget.orientation() == Qt::Horizontal;
        QPoint at(4, 4);
        if (direction > 0) at = {widget.width() - 5, level ? 4 : widget.height() - 5};
        QTest::mouseClick(&widget, Qt::LeftButton, {}, at);
        Pressed.insert(bar.Owner.Name + "." + bar.Name);
        Settle();
    }
    /// A key on the main window, as it comes from the keyboard while no box is typed in.
    void KeyOn(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
        Main().activateWindow();
        Main().setFocus();
        QTest::keyClick(&Main(), key, modifiers);
        Settle();
    }
    /// Where a channel lies on a plot.
    QPoint PlaceOf(int win, int channel, int y = 60) {
        const WindowState& state = frmVaelAna.Windows[static_cast<std::size_t>(win)];
        const auto& plot = Plot(win);
        const double x = (plot.width() - 1.0) * (channel - state.Start) / (state.Span - 1.0);
        return {static_cast<int>(std::lround(x)), y};
    }
    QWidget& Plot(int win) {
        return Widget(frmVaelAna, frmVaelAna.picGraph[static_cast<std::size_t>(win)].Name);
    }
    /// A drag of the left button over a plot, in some steps.
    void DragOn(int win, QPoint from, QPoint to) {
        QWidget& plot = Plot(win);
        QTest::mousePress(&plot, Qt::LeftButton, {}, from);
        for (int i = 1; i <= 4; ++i) MoveOn(plot, from + (to - from) * i / 4, Qt::LeftButton);
        QTest::mouseRelease(&plot, Qt::LeftButton, {}, to);
        Settle();
    }
    static void MoveOn(QWidget& plot, QPoint at, Qt::MouseButtons buttons) {
        QMouseEvent move(QEvent::MouseMove, QPointF(at), QPointF(plot.mapToGlobal(at)),
                         Qt::NoButton, buttons, Qt::NoModifier);
        QApplication::sendEvent(&plot, &move);
    }
    /// The user's acts while the modal view stands that the next act opens. It is closed after them
    /// in any case, so that a test that fails does not wait for ever.
    void WhileModal(View& view, std::function<void()> acts) {
        auto* clock = new QTimer(&Desk);
        QObject::connect(clock, &QTimer::timeout, &Desk, [this, clock, &view, acts] {
            if (!view.Visible) return;
            clock->stop();
            clock->deleteLater();
            Settle();
            acts();
            EXPECT_FALSE(view.Visible) << view.Name << " was left open";
            view.Visible = false;
        });
        clock->start(1);
    }
    /// Writes a spectrum made in the test; its path.
    std::string Write(const std::string& name, const std::vector<GaussLine>& lines) {
        const std::string path = (Folder.path() + QLatin1Char('/')).toStdString() + name;
        std::ofstream(path, std::ios::binary) << NpdText(GaussCounts(4096, 60.0, lines), name);
        return path;
    }
    void Open(const std::vector<std::string>& paths) {
        Desk.Files.push_back(paths);
        ClickOn(frmVaelAna.cmdFiles[0]);
    }

    QTemporaryDir Folder;
    FolderOfProcess Here;
    ScriptedQtDesk Desk;
    std::vector<std::string> Faults;
    std::set<std::string> Pressed;
};

/// A path of the measured spectra, empty where they are not there.
inline std::string MeasuredFile(const std::string& name) {
    const std::string path = std::string(VAEL_MEASURED_DATA) + "/" + name;
    return std::filesystem::exists(path) ? path : std::string();
}

/// The image of a picture's paper as it stands.
inline QImage PaperOf(DeskWorld& world, const Picture& picture) {
    DeskWorld::Settle();
    return world.Widget<PictureWidget>(picture.Owner, picture.Name).Paper().Image();
}

/// Pixels of a picture that are of a colour.
inline int PixelsOf(const QImage& image, Colour colour) {
    int n = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x) n += image.pixelColor(x, y) == ToQt(colour) ? 1 : 0;
    return n;
}

/// Puts the program's element table into the program's folder.
inline void CopyElementTable(DeskWorld& world) {
    const std::filesystem::path folder = world.Folder.path().toStdString();
    std::filesystem::copy_file(std::filesystem::path(VAEL_SOURCE_DIR) / "data/atomic.dat",
                               folder / "atomic.dat");
}

/// What a user could press at this moment, by view and name.
inline void CollectUsable(std::set<std::string>& usable) {
    for (const View* view : AllViews()) {
        if (!view->Visible || view->Name == "frmSmall" || view->Name == "frmKinds") continue;
        for (const Control* control : view->Controls()) {
            bool acts = control->Usable();
            switch (control->Kind) {
                case ControlKind::Button:
                case ControlKind::CheckBox:
                case ControlKind::Option:
                case ControlKind::ListBox:
                case ControlKind::ScrollBar:
                case ControlKind::Grid:
                case ControlKind::Tabs: break;
                case ControlKind::TextBox:
                    acts = acts && !static_cast<const TextBox*>(control)->ReadOnly;
                    break;
                case ControlKind::NumberBox:
                    acts = acts && !static_cast<const NumberBox*>(control)->ReadOnly;
                    break;
                case ControlKind::Menu:
                    acts = acts && !static_cast<const Menu*>(control)->Parent.empty();
                    break;
                default: acts = false; break;
            }
            if (acts) usable.insert(view->Name + "." + control->Name);
        }
    }
}

inline const std::vector<GaussLine> FIVE_LINES{{600.0, 4000.0, 9.0},
                                               {1100.0, 9000.0, 10.0},
                                               {1700.0, 3000.0, 11.0},
                                               {2300.0, 2500.0, 12.0},
                                               {3100.0, 1500.0, 13.0}};

}  // namespace vael::test
