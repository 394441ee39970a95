// The kinds of control on their widgets, by mouse and key: tabs, lists, editable list, button with
// a key, wheel, a frame that is dragged, and a window that keeps its place.
#include "kindsworld.h"

#include <QWheelEvent>
#include <QWindow>

namespace vael {
namespace {

using namespace vael::test;

// --- tabs and lists -----------

TEST(TabsOnScreen, AreClickedAndStepped) {
    KindsWorld w;
    auto& bar = w.Of<QTabBar>("tabPages");
    QTest::mouseClick(&bar, Qt::LeftButton, {}, bar.tabRect(1).center());
    EXPECT_EQ(w.V.tabPages.Index, 1);
    QTest::keyClick(&bar, Qt::Key_Left);
    EXPECT_EQ(w.V.tabPages.Index, 0);
    EXPECT_EQ(w.V.Done.size(), 2U);
    w.V.tabPages.Captions = {"One", "Two", "Three"};
    w.V.tabPages.Index = 2;
    w.Bring();
    EXPECT_EQ(bar.count(), 3);
    EXPECT_EQ(bar.tabText(2), QStringLiteral("Three"));
    EXPECT_EQ(bar.currentIndex(), 2);
    EXPECT_EQ(w.V.Done.size(), 2U) << "the program's change does not come back";
}

QPoint MiddleOf(const QListWidget& list, int row) {
    return list.visualItemRect(list.item(row)).center();
}

TEST(ListOnScreen, PicksByClickAndKeyAndOpensByDoubleClickAndEnter) {
    KindsWorld w;
    auto& list = w.Of<QListWidget>("lstOne");
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, MiddleOf(list, 1));
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, MiddleOf(list, 1));
    QTest::keyClick(&list, Qt::Key_Down);
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, MiddleOf(list, 2));
    QTest::mouseDClick(list.viewport(), Qt::LeftButton, {}, MiddleOf(list, 2));
    QTest::keyClick(&list, Qt::Key_Return);
    EXPECT_EQ(w.V.Done,
              (Texts{"click b", "click b", "click c", "click c", "double c", "double c"}));
    w.V.Done.clear();
    w.V.lstOne.Items = {"x", "y"};
    w.V.lstOne.Index = 0;
    w.Bring();
    EXPECT_EQ(list.count(), 2);
    EXPECT_TRUE(list.item(0)->isSelected());
    EXPECT_TRUE(w.V.Done.empty());
}

TEST(ListOnScreen, PicksManyWithShiftAndCtrl) {
    KindsWorld w;
    auto& list = w.Of<QListWidget>("lstMany");
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, MiddleOf(list, 0));
    QTest::mouseClick(list.viewport(), Qt::LeftButton, Qt::ShiftModifier, MiddleOf(list, 1));
    QTest::mouseClick(list.viewport(), Qt::LeftButton, Qt::ControlModifier, MiddleOf(list, 3));
    EXPECT_EQ(w.V.lstMany.Picked, (std::vector<int>{0, 1, 3}));
    EXPECT_EQ(w.V.lstMany.Index, 3);
    w.V.lstMany.Picked = {2};
    w.V.lstMany.Index = 2;
    w.Bring();
    EXPECT_FALSE(list.item(0)->isSelected());
    EXPECT_TRUE(list.item(2)->isSelected());
    EXPECT_EQ(w.V.Done.size(), 3U);
}

TEST(EditableList, TakesATypedTextOnEnterAndOnLeaving) {
    KindsWorld w;
    auto& combo = w.Of<QComboBox>("cboScale");
    combo.setFocus();
    combo.lineEdit()->selectAll();
    QTest::keyClicks(&combo, QStringLiteral("37k"));
    EXPECT_TRUE(w.V.Done.empty()) << "half typed";
    QTest::keyClick(&combo, Qt::Key_Return);
    EXPECT_EQ(w.V.Done, Texts{"enter 37k"});
    EXPECT_EQ(combo.count(), 3) << "a typed text is no item";
    combo.lineEdit()->selectAll();
    QTest::keyClicks(&combo, QStringLiteral("log"));
    QTest::mouseClick(&w.Of<QPushButton>("cmdKey"), Qt::LeftButton);
    EXPECT_EQ(w.V.Done, (Texts{"enter 37k", "enter log", "Ctrl+K"}));
}

TEST(EditableList, ATypedTextThatEqualsAnItemIsTypedAllTheSame) {
    KindsWorld w;
    auto& combo = w.Of<QComboBox>("cboScale");
    combo.setFocus();
    combo.lineEdit()->selectAll();
    QTest::keyClicks(&combo, QStringLiteral("auto"));
    QTest::keyClick(&combo, Qt::Key_Return);
    EXPECT_EQ(w.V.Done, Texts{"enter auto"});
    combo.lineEdit()->selectAll();
    QTest::keyClicks(&combo, QStringLiteral("1K"));
    w.Of<QPushButton>("cmdKey").setFocus();
    DeskWorld::Settle();
    EXPECT_EQ(w.V.Done, (Texts{"enter auto", "enter 1K"}));
}

TEST(EditableList, AnItemIsPickedByKeyAndTheProgramsTextIsShown) {
    KindsWorld w;
    auto& combo = w.Of<QComboBox>("cboScale");
    EXPECT_EQ(combo.currentText(), QStringLiteral("2K"));
    combo.setFocus();
    QTest::keyClick(&combo, Qt::Key_Down);
    EXPECT_EQ(w.V.Done, Texts{"pick auto"});
    w.V.cboScale.Index = -1;
    w.V.cboScale.Typed = "25000";
    w.Bring();
    EXPECT_EQ(combo.currentText(), QStringLiteral("25000"));
    EXPECT_EQ(w.V.Done.size(), 1U);
}

TEST(TextBoxOnScreen, ADoubleClickRunsItsHandlerAlsoInABoxThatOnlyShows) {
    KindsWorld w;
    auto& box = w.Of<QLineEdit>("txtName");
    w.V.txtName.Text = "two";
    w.V.txtName.ReadOnly = true;
    w.Bring();
    QTest::mouseClick(&box, Qt::LeftButton);
    EXPECT_TRUE(w.V.Done.empty());
    QTest::mouseDClick(&box, Qt::LeftButton);
    EXPECT_EQ(w.V.Done, Texts{"double two"});
    w.V.txtName.Enabled = false;
    w.Bring();
    QTest::mouseDClick(&box, Qt::LeftButton);
    EXPECT_EQ(w.V.Done.size(), 1U);
}

// --- keys -----------

TEST(ButtonKey, ClicksTheButtonWhileItIsUsable) {
    KindsWorld w;
    auto& button = w.Of<QPushButton>("cmdPlain");
    w.Of<QPushButton>("cmdKey").setFocus();
    QTest::keyClick(&w.Of<QPushButton>("cmdKey"), Qt::Key_K, Qt::ControlModifier);
    QTest::keyClick(&w.Of<QPushButton>("cmdKey"), Qt::Key_K);
    EXPECT_EQ(w.V.Done, (Texts{"Ctrl+K", "K"}));
    w.V.cmdPlain.Enabled = false;
    w.Bring();
    EXPECT_FALSE(button.isEnabled());
    QTest::keyClick(&w.Of<QPushButton>("cmdKey"), Qt::Key_K);
    w.V.cmdKey.Shortcut = "Ctrl+L";
    w.Bring();
    QTest::keyClick(&w.Of<QPushButton>("cmdKey"), Qt::Key_K, Qt::ControlModifier);
    EXPECT_EQ(w.V.Done.size(), 2U);
    QTest::keyClick(&w.Of<QPushButton>("cmdKey"), Qt::Key_L, Qt::ControlModifier);
    EXPECT_EQ(w.V.Done.size(), 3U);
}

TEST(ButtonKey, APlainKeyStaysWithABoxThatIsTypedIn) {
    KindsWorld w;
    auto& box = w.Of<QLineEdit>("txtName");
    box.setFocus();
    QTest::keyClick(&box, Qt::Key_K);
    EXPECT_TRUE(w.V.Done.empty());
    EXPECT_EQ(box.text(), QStringLiteral("k"));
    QTest::keyClick(&box, Qt::Key_K, Qt::ControlModifier);
    QTest::keyClick(&box, Qt::Key_F7);
    EXPECT_EQ(w.V.Done, (Texts{"Ctrl+K", "F7"}));
    auto& combo = w.Of<QComboBox>("cboScale");
    combo.setFocus();
    QTest::keyClick(&combo, Qt::Key_K);
    EXPECT_EQ(w.V.Done.size(), 2U) << "an editable list is typed in too";
}

TEST(ButtonKey, EnterOnAButtonIsAClickOnIt) {
    KindsWorld w;
    int enters = 0;
    w.V.KeyPreview = [&](const KeyPress& key) {
        enters += key.Key == KeyPress::Name::Enter ? 1 : 0;
        return key.Key == KeyPress::Name::Enter;
    };
    w.Of<QPushButton>("cmdPlain").setFocus();
    QTest::keyClick(&w.Of<QPushButton>("cmdPlain"), Qt::Key_Return);
    EXPECT_EQ(w.V.Done, Texts{"K"});
    EXPECT_EQ(enters, 0);
    auto& box = w.Of<QLineEdit>("txtName");
    box.setFocus();
    QTest::keyClick(&box, Qt::Key_Return);
    EXPECT_EQ(enters, 1) << "a box without use for it hands it on, once";
}

TEST(ButtonKey, EnterInABoxWithAUseForItTakesTheTextAndLeavingDoesNotTakeItAgain) {
    KindsWorld w;
    w.V.txtName.Enter = [&] { w.V.Done.push_back("enter"); };
    w.V.txtName.Leave = [&] {
        w.V.Done.push_back("leave");
        return true;
    };
    auto& box = w.Of<QLineEdit>("txtName");
    box.setFocus();
    QTest::keyClicks(&box, QStringLiteral("a"));
    QTest::keyClick(&box, Qt::Key_Return);
    EXPECT_EQ(w.V.Done, Texts{"enter"});
    w.Of<QPushButton>("cmdKey").setFocus();
    EXPECT_EQ(w.V.Done, Texts{"enter"});
    box.setFocus();
    QTest::keyClicks(&box, QStringLiteral("b"));
    QTest::keyClick(&box, Qt::Key_Tab);
    EXPECT_EQ(w.V.Done, (Texts{"enter", "leave"}));
}

TEST(ButtonKey, EnterThatClosesTheViewEndsThere) {
    KindsWorld w;
    int enters = 0;
    w.V.KeyPreview = [&](const KeyPress&) {
        ++enters;
        w.V.Visible = false;
        w.Kinds.Bring();
        return true;
    };
    w.Of<QLineEdit>("txtName").setFocus();
    QTest::keyClick(&w.Of<QLineEdit>("txtName"), Qt::Key_Return);
    EXPECT_EQ(enters, 1);
}

using Name = KeyPress::Name;

struct Pressed {
    Qt::Key Key;
    Qt::KeyboardModifiers With;
    Name Seen;
};

TEST(ViewKeys, AreSeenByTheirNames) {
    KindsWorld w;
    std::vector<KeyPress> seen;
    w.V.KeyPreview = [&](const KeyPress& key) {
        seen.push_back(key);
        return true;
    };
    const Qt::KeyboardModifiers pad = Qt::KeypadModifier;
    const std::vector<Pressed> keys{{Qt::Key_PageUp, {}, Name::PageUp},
                                    {Qt::Key_PageDown, {}, Name::PageDown},
                                    {Qt::Key_Home, {}, Name::Home},
                                    {Qt::Key_End, {}, Name::End},
                                    {Qt::Key_F1, {}, Name::F1},
                                    {Qt::Key_F12, {}, Name::F12},
                                    {Qt::Key_Space, {}, Name::Space},
                                    {Qt::Key_Delete, {}, Name::Delete},
                                    {Qt::Key_Escape, {}, Name::Escape},
                                    {Qt::Key_Plus, pad, Name::Add},
                                    {Qt::Key_Minus, pad, Name::Subtract},
                                    {Qt::Key_Period, pad, Name::Decimal},
                                    {Qt::Key_Comma, pad, Name::Decimal},
                                    {Qt::Key_Delete, pad, Name::Delete},
                                    {Qt::Key_Left, Qt::ControlModifier, Name::Left}};
    auto& picture = w.Of<PictureWidget>("picPlot");
    for (const Pressed& key : keys) {
        seen.clear();
        QTest::keyClick(&picture, key.Key, key.With);
        ASSERT_EQ(seen.size(), 1U) << key.Key;
        EXPECT_EQ(seen[0].Key, key.Seen) << key.Key;
        EXPECT_EQ(seen[0].Ctrl, key.With.testFlag(Qt::ControlModifier)) << key.Key;
    }
    seen.clear();
    QTest::keyClick(&picture, Qt::Key_Plus);  // of the main keys: no key of a view
    EXPECT_TRUE(seen.empty());
}

TEST(ViewKeys, ABoxThatIsTypedInKeepsTheKeysThatItNeeds) {
    KindsWorld w;
    std::vector<Name> seen;
    w.V.KeyPreview = [&](const KeyPress& key) {
        seen.push_back(key.Key);
        return true;
    };
    auto& box = w.Of<QLineEdit>("txtName");
    auto& combo = w.Of<QComboBox>("cboScale");
    for (QWidget* target : {static_cast<QWidget*>(&box), static_cast<QWidget*>(&combo)}) {
        target->setFocus();
        for (const Qt::Key key : {Qt::Key_Left, Qt::Key_Right, Qt::Key_Up, Qt::Key_Down,
                                  Qt::Key_Home, Qt::Key_End, Qt::Key_PageUp, Qt::Key_PageDown})
            QTest::keyClick(target, key);
        QTest::keyClick(target, Qt::Key_Period, Qt::KeypadModifier);
        EXPECT_TRUE(seen.empty());
        QTest::keyClick(target, Qt::Key_F5);
        QTest::keyClick(target, Qt::Key_Escape);
        EXPECT_EQ(seen, (std::vector<Name>{Name::F5, Name::Escape}));
        seen.clear();
    }
    EXPECT_EQ(box.text(), QStringLiteral("."));
}

TEST(ViewKeys, AnOpenListKeepsItsKeysAndAClosedOneDoesNot) {
    KindsWorld w;
    std::vector<Name> seen;
    w.V.KeyPreview = [&](const KeyPress& key) {
        seen.push_back(key.Key);
        return true;
    };
    auto& combo = w.Of<QComboBox>("cboClosed");
    combo.setFocus();
    QTest::keyClick(&combo, Qt::Key_Down);
    EXPECT_EQ(seen, std::vector<Name>{Name::Down});
    EXPECT_EQ(w.V.cboClosed.Index, 0);
    combo.showPopup();
    DeskWorld::Settle();
    QTest::keyClick(QApplication::activePopupWidget(), Qt::Key_Down);
    EXPECT_EQ(seen.size(), 1U);
    combo.hidePopup();
    QTest::keyClick(&w.Table(), Qt::Key_Down);
    QTest::keyClick(&w.Of<QListWidget>("lstOne"), Qt::Key_Down);
    EXPECT_EQ(seen.size(), 1U) << "a list that stands open steps by its own keys";
}

// --- wheel, drag, window -----------

void Roll(PictureWidget& picture, QPointF at, QPoint turn, Qt::KeyboardModifiers with = {}) {
    QWheelEvent event(at, picture.mapToGlobal(at), {}, turn, Qt::NoButton, with, Qt::NoScrollPhase,
                      false);
    QCoreApplication::sendEvent(&picture, &event);
}

TEST(WheelOnAPicture, TellsNotchesAlsoInPartsAndSideways) {
    KindsWorld w;
    auto& picture = w.Of<PictureWidget>("picPlot");
    Roll(picture, {150.0, 40.0}, {0, 120});
    EXPECT_EQ(w.V.Notches, 1.0);
    EXPECT_EQ(w.V.WheelX, 150.0);
    EXPECT_FALSE(w.V.Sideways);
    Roll(picture, {150.0, 40.0}, {0, -30}, Qt::ShiftModifier);
    EXPECT_EQ(w.V.Notches, -0.25);
    EXPECT_TRUE(w.V.Sideways);
    Roll(picture, {20.0, 40.0}, {240, 0}, Qt::ShiftModifier);  // turned by the system
    EXPECT_EQ(w.V.Notches, 2.0);
    EXPECT_TRUE(w.V.Sideways);
    Roll(picture, {20.0, 40.0}, {-120, 15});  // a wheel of its own for this
    EXPECT_EQ(w.V.Notches, -1.0);
    EXPECT_TRUE(w.V.Sideways);
}

TEST(FloatingFrame, IsDraggedByItsLabelAndStaysUnderThePointer) {
    KindsWorld w;
    auto& frame = w.Of<QFrame>("fraMemo");
    auto& label = w.Of<QLabel>("lblMemo");
    EXPECT_EQ(frame.pos(), QPoint(20, 20));
    EXPECT_EQ(w.V.fraMemo.Width, frame.width());
    const QPoint grip(7, 5);
    QTest::mousePress(&label, Qt::LeftButton, {}, grip);
    const QPoint start = label.mapToGlobal(grip);
    const auto drag = [&](QPoint by) {
        const QPoint local = label.mapFromGlobal(start + by);
        QMouseEvent move(QEvent::MouseMove, local, label.mapToGlobal(local), Qt::NoButton,
                         Qt::LeftButton, {});
        QCoreApplication::sendEvent(&label, &move);
        w.Bring();
    };
    for (const QPoint by : {QPoint(3, 0), QPoint(40, 12), QPoint(41, 12), QPoint(90, -9)}) {
        drag(by);
        EXPECT_EQ(label.mapToGlobal(grip), start + by);
        EXPECT_EQ(frame.pos(), QPoint(20, 20) + by);
    }
    QTest::mouseRelease(&label, Qt::LeftButton, {}, grip);
    EXPECT_EQ(w.V.fraMemo.Left, 110);
    EXPECT_EQ(w.V.fraMemo.Top, 11);
}

TEST(FloatingFrame, IsAsLargeAsItsText) {
    KindsWorld w;
    auto& frame = w.Of<QFrame>("fraMemo");
    const int before = frame.height();
    w.V.lblMemo.Caption = "d:A=2.0391\nFWHM=0.012\nVal=33257.0\nNet=402100.0";
    w.Bring();
    EXPECT_GT(frame.height(), before);
}

TEST(Window, KeepsItsPlaceWhileItIsHidden) {
    KindsWorld w;
    w.Kinds.move(120, 90);
    w.Kinds.resize(500, 900);
    DeskWorld::Settle();
    const QRect place = w.Kinds.geometry();
    w.V.Visible = false;
    w.Bring();
    w.Kinds.setGeometry(0, 0, 300, 300);  // as a window manager places it anew
    w.V.Visible = true;
    w.Bring();
    EXPECT_EQ(w.Kinds.geometry(), place);
}

TEST(Window, StaysOnTopAsItsRecordSays) {
    KindsWorld w;
    w.V.OnTop = true;
    w.Bring();
    EXPECT_TRUE(w.Kinds.isVisible());
    EXPECT_TRUE(w.Kinds.windowHandle()->flags().testFlag(Qt::WindowStaysOnTopHint));
    w.V.OnTop = false;
    w.Bring();
    EXPECT_FALSE(w.Kinds.windowHandle()->flags().testFlag(Qt::WindowStaysOnTopHint));
}

}  // namespace
}  // namespace vael
