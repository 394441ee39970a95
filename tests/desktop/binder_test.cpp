// Tests of the binder and the desk: joining by name, the user's hand, what comes back and what not.
#include "deskworld.h"

#include "core/fault.h"
#include "desktop/icons.h"

#include <QCloseEvent>
#include <QColorDialog>
#include <QFile>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPrinterInfo>
#include <QPushButton>
#include <QScrollBar>
#include <QStyle>
#include <QTimer>
#include <QToolButton>
#include <QWindow>
#include <QXmlStreamReader>

namespace vael {
namespace {

using test::DeskWorld;
using test::OnDialog;
using test::ScriptedQtDesk;

QString Q(const std::string& text) { return QString::fromStdString(text); }

// --- forms and records -----------

TEST(Forms, EveryControlOfEveryViewJoins) {
    DeskWorld world;
    std::size_t controls = 0;
    for (const View* view : AllViews()) {
        const Form* form = world.Desk.FormOfView(*view);
        ASSERT_NE(form, nullptr) << view->Name << " has no form";
        for (const std::string& missing : form->Missing()) ADD_FAILURE() << missing;
        EXPECT_EQ(form->Bindings().size(), view->Controls().size()) << view->Name;
        controls += form->Bindings().size();
    }
    EXPECT_GT(controls, 150U);
}

/// Widgets named in a .ui file, with their class, and the words that stand in it.
struct UiFile {
    std::map<std::string, std::string> Widgets;
    std::vector<std::string> Texts;
};

UiFile ReadUi(const std::string& view) {
    UiFile out;
    QFile file(Q(std::string(VAEL_SOURCE_DIR) + "/src/desktop/forms/") + Q(view).toLower() +
               QStringLiteral(".ui"));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << view;
    QXmlStreamReader xml(&file);
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement) continue;
        const auto attributes = xml.attributes();
        if (xml.name() == QLatin1String("widget"))
            out.Widgets[attributes.value(QStringLiteral("name")).toString().toStdString()] =
                attributes.value(QStringLiteral("class")).toString().toStdString();
        if (xml.name() == QLatin1String("property") &&
            attributes.value(QStringLiteral("name")) == QLatin1String("text"))
            out.Texts.push_back(
                xml.readElementText(QXmlStreamReader::IncludeChildElements).toStdString());
    }
    return out;
}

TEST(Forms, AgreeWithTheRecordsAndHoldNoWords) {
    DeskWorld world;
    const std::set<std::string> ours{"central",   "menuBar",   "barOperation",
                                     "barStatus", "panelSide", "markStatus"};
    for (const View* view : AllViews()) {
        const UiFile ui = ReadUi(view->Name);
        EXPECT_TRUE(ui.Texts.empty()) << view->Name << ": the words live in the records";
        for (const auto& [name, kind] : ui.Widgets) {
            const bool decoration = name == view->Name || ours.contains(name) ||
                                    name.starts_with("grp") || kind == "vael::ThinLine";
            EXPECT_TRUE(decoration || view->Find(name) != nullptr)
                << name << " is in the form of " << view->Name << " and in no record";
        }
    }
}

TEST(Forms, OpenWithinAScreenOf1280By800) {
    DeskWorld world;
    for (const auto& form : world.Desk.Forms()) {
        EXPECT_LE(form->width(), 1280) << form->Shown().Name;
        EXPECT_LE(form->height(), 800) << form->Shown().Name;
        EXPECT_LE(form->minimumSizeHint().width(), 1280);
        EXPECT_LE(form->minimumSizeHint().height(), 780);
    }
}

TEST(Forms, EveryPictureButtonHasADrawingAndAName) {
    DeskWorld world;
    int drawn = 0;
    for (auto* button : world.Main().findChildren<QAbstractButton*>()) {
        if (button->property("symbol").toString().isEmpty()) continue;
        EXPECT_FALSE(button->icon().isNull()) << button->objectName().toStdString();
        EXPECT_FALSE(button->accessibleName().isEmpty()) << button->objectName().toStdString();
        EXPECT_FALSE(button->toolTip().isEmpty()) << button->objectName().toStdString();
        ++drawn;
    }
    EXPECT_EQ(drawn, 20);
    EXPECT_TRUE(SymbolIcon(QStringLiteral("there is none of that name"), {}).isNull());
}

TEST(Forms, DisabledDrawingsAreGrey) {
    const QIcon icon = SymbolIcon(QStringLiteral("open"), QApplication::palette());
    EXPECT_NE(icon.pixmap(24, QIcon::Normal).toImage(), icon.pixmap(24, QIcon::Disabled).toImage());
}

// --- the binder on a small view -----------

struct SmallView : View {
    SmallView() : View("frmSmall", "Small") {
        cmdOne.Click = [this] { ++Clicks; };
        chkTwo.Click = [this] { ++Clicks; };
        cboFive.Click = [this] { ++Clicks; };
        hsbSix.Change = [this] { ++Clicks; };
        txtThree.Change = [this] { ++Changes; };
        hsbSix.Most = 100;
        Visible = true;
    }
    int Clicks = 0;
    int Changes = 0;
    Button cmdOne{*this, "cmdOne", "One"};
    CheckBox chkTwo{*this, "chkTwo", "Two"};
    TextBox txtThree{*this, "txtThree", "three"};
    NumberBox numFour{*this, "numFour", "0.00", 4.0};
    ListBox cboFive{*this, "cboFive", {"a", "b", "c"}, 0};
    ScrollBar hsbSix{*this, "hsbSix"};
    Option optSeven{*this, "optSeven", "Seven", "g"};
    Option optEight{*this, "optEight", "Eight", "g"};
    Timer timNine{*this, "timNine", 5};
};

/// A form of the small view, laid out by hand.
void LayOut(QMainWindow& window) {
    auto* all = new QWidget(&window);
    int y = 0;
    const auto put = [&](QWidget* widget, const char* name) {
        widget->setParent(all);
        widget->setObjectName(QLatin1String(name));
        widget->setGeometry(0, y, 200, 28);
        y += 30;
    };
    put(new QPushButton, "cmdOne");
    put(new QCheckBox, "chkTwo");
    put(new QLineEdit, "txtThree");
    put(new QLineEdit, "numFour");
    put(new QComboBox, "cboFive");
    put(new QScrollBar(Qt::Horizontal), "hsbSix");
    put(new QRadioButton, "optSeven");
    put(new QRadioButton, "optEight");
    window.setCentralWidget(all);
    window.resize(220, y);
}

/// A world with the small view beside the others, brought by hand.
struct SmallWorld : DeskWorld {
    SmallWorld() {
        Small.Bring();
        Small.activateWindow();
        Settle();
    }
    template <class W>
    W& Of(const char* name) {
        return *Small.findChild<W*>(QLatin1String(name));
    }
    static SmallView& TheView() {
        static SmallView* view = new SmallView;  // views stand for the life of the process
        view->~SmallView();
        return *new (view) SmallView;
    }
    SmallView& V = TheView();
    Form Small{V, LayOut};
};

TEST(Binder, TellsWhatIsMissingAndWhatIsOfAnotherClass) {
    DeskWorld world;
    SmallView& view = SmallWorld::TheView();
    Form form(view, [](QMainWindow& window) {
        LayOut(window);
        delete window.findChild<QWidget*>(QStringLiteral("cmdOne"));
        window.findChild<QWidget*>(QStringLiteral("chkTwo"))->setObjectName(QStringLiteral("x"));
        window.findChild<QWidget*>(QStringLiteral("hsbSix"))
            ->setObjectName(QStringLiteral("chkTwo"));
    });
    EXPECT_EQ(form.Missing(),
              (std::vector<std::string>{"frmSmall.cmdOne is not in the form",
                                        "frmSmall.chkTwo is of another class in the form",
                                        "frmSmall.hsbSix is not in the form"}));
}

TEST(Binder, TheUsersActsReachTheRecordsOnce) {
    SmallWorld w;
    QTest::mouseClick(&w.Of<QPushButton>("cmdOne"), Qt::LeftButton);
    EXPECT_EQ(w.V.Clicks, 1);
    QTest::mouseClick(&w.Of<QCheckBox>("chkTwo"), Qt::LeftButton, {}, QPoint(8, 14));
    EXPECT_EQ(w.V.chkTwo.Value, 1);
    EXPECT_EQ(w.V.Clicks, 2);
    QTest::keyClick(&w.Of<QComboBox>("cboFive"), Qt::Key_Down);
    EXPECT_EQ(w.V.cboFive.Index, 1);
    EXPECT_EQ(w.V.Clicks, 3);
    QTest::keyClick(&w.Of<QScrollBar>("hsbSix"), Qt::Key_Down);
    EXPECT_EQ(w.V.hsbSix.Value, 1);
    EXPECT_EQ(w.V.Clicks, 4);
}

TEST(Binder, TheProgramsChangesAreShownAndDoNotComeBack) {
    SmallWorld w;
    w.V.cmdOne.Caption = "Eins";
    w.V.chkTwo.Value = 1;
    w.V.txtThree.Text = "drei";
    w.V.numFour.Value = 4.5;
    w.V.cboFive.Items = {"x", "y"};
    w.V.cboFive.Index = 1;
    w.V.hsbSix.Value = 60;
    w.V.optEight.Value = true;
    w.Small.Bring();
    EXPECT_EQ(w.Of<QPushButton>("cmdOne").text(), QStringLiteral("Eins"));
    EXPECT_TRUE(w.Of<QCheckBox>("chkTwo").isChecked());
    EXPECT_EQ(w.Of<QLineEdit>("txtThree").text(), QStringLiteral("drei"));
    EXPECT_EQ(w.Of<QLineEdit>("numFour").text(), QStringLiteral("4.50"));
    EXPECT_EQ(w.Of<QComboBox>("cboFive").currentText(), QStringLiteral("y"));
    EXPECT_EQ(w.Of<QScrollBar>("hsbSix").value(), 60);
    EXPECT_TRUE(w.Of<QRadioButton>("optEight").isChecked());
    EXPECT_EQ(w.V.Clicks, 0);
    EXPECT_EQ(w.V.Changes, 0);
}

TEST(Binder, OptionsOfAGroupExcludeEachOtherAndAClickOnASetOneKeepsIt) {
    SmallWorld w;
    QTest::mouseClick(&w.Of<QRadioButton>("optSeven"), Qt::LeftButton, {}, QPoint(8, 14));
    w.Small.Bring();
    EXPECT_TRUE(w.Of<QRadioButton>("optSeven").isChecked());
    QTest::mouseClick(&w.Of<QRadioButton>("optEight"), Qt::LeftButton, {}, QPoint(8, 14));
    w.Small.Bring();
    EXPECT_FALSE(w.Of<QRadioButton>("optSeven").isChecked());
    QTest::mouseClick(&w.Of<QRadioButton>("optEight"), Qt::LeftButton, {}, QPoint(8, 14));
    EXPECT_TRUE(w.Of<QRadioButton>("optEight").isChecked());
}

TEST(Binder, ABoxBeingTypedInIsLeftAloneUntilTheHandLeavesIt) {
    SmallWorld w;
    auto& box = w.Of<QLineEdit>("txtThree");
    box.setFocus();
    QTest::keyClicks(&box, QStringLiteral("x"));
    EXPECT_EQ(w.V.txtThree.Text, "threex");
    w.V.txtThree.Text = "from the program";
    w.Small.Bring();
    EXPECT_EQ(box.text(), QStringLiteral("threex"));
    QTest::keyClick(&box, Qt::Key_Tab);
    DeskWorld::Settle();
    w.Small.Bring();
    EXPECT_EQ(box.text(), QStringLiteral("from the program"));
}

TEST(Binder, ALeaveThatRefusesKeepsTheFocusAndDropsTheAct) {
    SmallWorld w;
    w.V.txtThree.Leave = [&w] { return w.V.txtThree.Text == "three"; };
    auto& box = w.Of<QLineEdit>("txtThree");
    box.setFocus();
    QTest::keyClicks(&box, QStringLiteral("!"));
    QTest::mouseClick(&w.Of<QPushButton>("cmdOne"), Qt::LeftButton);
    EXPECT_EQ(w.V.Clicks, 0);
    EXPECT_EQ(TypedBox(), &w.V.txtThree);
    QTest::keyClick(&box, Qt::Key_Backspace);
    QTest::mouseClick(&w.Of<QPushButton>("cmdOne"), Qt::LeftButton);
    EXPECT_EQ(w.V.Clicks, 1);
}

TEST(Binder, HalfATypedNumberNeverReachesTheRecord) {
    SmallWorld w;
    auto& box = w.Of<QLineEdit>("numFour");
    box.setFocus();
    box.selectAll();
    QTest::keyClicks(&box, QStringLiteral("12.5"));
    EXPECT_EQ(w.V.numFour.Value, 4.0);
    QTest::keyClick(&box, Qt::Key_Return);
    EXPECT_EQ(w.V.numFour.Value, 12.5);
    EXPECT_EQ(box.text(), QStringLiteral("12.50"));
    box.selectAll();
    QTest::keyClicks(&box, QStringLiteral("1e"));
    QTest::keyClick(&box, Qt::Key_Tab);
    DeskWorld::Settle();
    EXPECT_EQ(w.V.numFour.Value, 12.5);
    EXPECT_EQ(box.text(), QStringLiteral("12.50"));  // what is no number is taken back
}

TEST(Binder, ADisabledHiddenOrWithheldControlTakesNoAct) {
    SmallWorld w;
    w.V.cmdOne.Withheld = true;
    w.V.cmdOne.Tip = "comes later";
    w.V.txtThree.Withheld = true;
    w.Small.Bring();
    auto& button = w.Of<QPushButton>("cmdOne");
    EXPECT_FALSE(button.isEnabled());
    EXPECT_EQ(button.toolTip(), QStringLiteral("comes later"));
    auto& box = w.Of<QLineEdit>("txtThree");
    EXPECT_TRUE(box.isReadOnly());  // what it holds can still be read
    QTest::keyClicks(&box, QStringLiteral("x"));
    EXPECT_EQ(w.V.txtThree.Text, "three");
    w.V.chkTwo.Visible = false;
    w.Small.Bring();
    EXPECT_FALSE(w.Of<QCheckBox>("chkTwo").isVisible());
}

TEST(Binder, ATimerTicksWhileItIsOn) {
    SmallWorld w;
    int ticks = 0;
    w.V.timNine.Tick = [&] {
        if (++ticks == 3) w.V.timNine.Enabled = false;
        w.Small.Bring();
    };
    w.V.timNine.Enabled = true;
    w.Small.Bring();
    QTest::qWait(120);
    EXPECT_EQ(ticks, 3);
}

// --- the desk -----------

TEST(Desk, ActsDuringACommandAreSwallowedAndNotQueued) {
    SmallWorld w;
    RunEvent(w.V, [&] {
        QTest::mouseClick(&w.Of<QPushButton>("cmdOne"), Qt::LeftButton);
        QTest::mouseClick(&w.Of<QCheckBox>("chkTwo"), Qt::LeftButton, {}, QPoint(8, 14));
        w.Desk.Breathe();
    });
    DeskWorld::Settle();
    EXPECT_EQ(w.V.Clicks, 0);
    EXPECT_FALSE(w.Of<QCheckBox>("chkTwo").isChecked());
}

TEST(Desk, ACloseBoxDuringACommandIsCarriedOutAfterwards) {
    SmallWorld w;
    bool during = true;
    RunEvent(w.V, [&] {
        w.Small.close();
        w.Desk.Breathe();
        during = w.V.Visible;
    });
    EXPECT_TRUE(during);
    EXPECT_FALSE(w.V.Visible);
}

TEST(Desk, TheLogWorksWhileACommandOfAnotherViewRuns) {
    DeskWorld w;
    frmLog.Visible = true;
    PutLog("a line");
    w.Desk.Show();
    RunEvent(frmVaelAna, [&] {
        w.Desk.Breathe();
        EXPECT_TRUE(w.Widget<QPlainTextEdit>(frmLog, "txtMessage")
                        .toPlainText()
                        .contains(QStringLiteral("a line")));
        w.ClickOn(frmLog.cmdClear);
    });
    EXPECT_EQ(frmLog.LineCount, 0);
    w.ClickOn(frmLog.cmdHide);
    EXPECT_FALSE(w.Desk.FormOfView(frmLog)->isVisible());
}

TEST(Desk, AModalViewHoldsTheCommandAndBlocksTheOthersUntilItIsAnswered) {
    DeskWorld w;
    int result = -1;
    bool opened = false;
    QTimer::singleShot(0, [&] {
        QTest::mouseClick(&w.Widget(frmVaelAna, "cmdFiles_0"), Qt::LeftButton);  // must do nothing
        opened = w.Desk.FormOfView(frmDialogMessage)->isVisible();
        QTest::mouseClick(&w.Widget(frmDialogMessage, "cmdNo"), Qt::LeftButton);
    });
    RunEvent(frmVaelAna, [&] { result = ShowMessage(0, "shall it be?"); });
    EXPECT_TRUE(opened);
    EXPECT_EQ(result, 1);
    EXPECT_FALSE(w.Desk.FormOfView(frmDialogMessage)->isVisible());
}

TEST(Desk, AFaultInAModalViewDoesNotEndTheCommandBelowIt) {
    DeskWorld w;
    bool finished = false;
    QTimer::singleShot(0, [&] {
        RunEvent(frmDialogMessage, [] { throw Fault(FaultNumber::Argument, "a fault inside"); });
        QTest::mouseClick(&w.Widget(frmDialogMessage, "cmdYes"), Qt::LeftButton);
    });
    RunEvent(frmVaelAna, [&] {
        ShowMessage(2, "told");
        finished = true;
    });
    EXPECT_TRUE(finished);
    EXPECT_EQ(w.Faults, std::vector<std::string>{"a fault inside"});
}

TEST(Desk, AMessageBoxIsAQuestionWithItsDefault) {
    DeskWorld w;
    QtDesk& plain = w.Desk;
    const auto answer = [&](Qt::Key key) {
        QString text;
        QTimer::singleShot(0, [&, key] {
            auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            ASSERT_NE(box, nullptr);
            text = box->text();
            QTest::keyClick(box, key);
        });
        const Question question{.Text = "Clear All Data",
                                .Title = "VaelAna",
                                .Choice = Question::Buttons::YesNo,
                                .DefaultButton = 2};
        const Answer given = plain.QtDesk::Ask(question);
        EXPECT_EQ(text, QStringLiteral("Clear All Data"));
        return given;
    };
    EXPECT_EQ(answer(Qt::Key_Return), Answer::No);  // the default button
    EXPECT_EQ(answer(Qt::Key_Escape), Answer::No);
}

constexpr const char* TWO_KINDS =
    "Nippon high Pressure Data File (*.npd)|*.npd|"
    "Express File (*.xbm)|*.xbm";

TEST(Desk, TheOpenDialogGivesTheChosenFilesAndTheFilter) {
    DeskWorld w;
    const std::string folder = w.Folder.path().toStdString();
    std::ofstream(folder + "/one.xba") << "x";
    const FileDialog dialog{.Title = "Open",
                            .Filter = TWO_KINDS,
                            .FilterIndex = 2,
                            .Folder = folder,
                            .Name = {},
                            .Multiple = true};
    QStringList filters;
    OnDialog<QFileDialog>([&](QFileDialog& box) {
        filters = box.nameFilters();
        auto* name = box.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
        name->setFocus();
        QTest::keyClicks(name, QStringLiteral("one.xba"));  // a kind that stands in no list
        QTest::keyClick(name, Qt::Key_Return);
    });
    const auto choice = w.Desk.QtDesk::OpenFiles(dialog);
    ASSERT_TRUE(choice);
    EXPECT_EQ(choice->Paths, (std::vector<std::string>{folder + "/one.xba"}));
    EXPECT_EQ(choice->FilterIndex, 2);
    EXPECT_EQ(filters.value(0), QStringLiteral("Nippon high Pressure Data File (*.npd)"));
    OnDialog<QFileDialog>([](QFileDialog& box) { box.reject(); });
    EXPECT_FALSE(w.Desk.QtDesk::OpenFiles(dialog));
}

TEST(Desk, TheSaveDialogAddsTheExtensionOfItsFilter) {
    DeskWorld w;
    const std::string folder = w.Folder.path().toStdString();
    const FileDialog dialog{.Title = "Save",
                            .Filter = TWO_KINDS,
                            .FilterIndex = 2,
                            .Folder = folder,
                            .Name = "abc_SMT"};
    OnDialog<QFileDialog>([](QFileDialog& box) {
        QTest::keyClick(box.findChild<QLineEdit*>(QStringLiteral("fileNameEdit")), Qt::Key_Return);
    });
    const auto choice = w.Desk.QtDesk::SaveFile(dialog);
    ASSERT_TRUE(choice);
    EXPECT_EQ(choice->Paths, (std::vector<std::string>{folder + "/abc_SMT.xbm"}));
    OnDialog<QFileDialog>([](QFileDialog& box) { box.reject(); });
    EXPECT_FALSE(w.Desk.QtDesk::SaveFile(dialog));
}

TEST(Desk, TheColourDialogGivesTheColourOrNothing) {
    DeskWorld w;
    OnDialog<QColorDialog>([](QColorDialog& box) {
        EXPECT_EQ(box.currentColor(), QColor(1, 2, 3));
        box.setCurrentColor(QColor(10, 20, 30));
        box.accept();
    });
    EXPECT_EQ(w.Desk.PickColour(Rgb(1, 2, 3)), Rgb(10, 20, 30));
    OnDialog<QColorDialog>([](QColorDialog& box) { box.reject(); });
    EXPECT_FALSE(w.Desk.PickColour(0));
}

TEST(Desk, LaunchingSaysWhetherTheProgramIsThere) {
    DeskWorld w;
    EXPECT_TRUE(w.Desk.Launch("true", {}));
    EXPECT_FALSE(w.Desk.Launch("there-is-no-such-program", {"a file"}));
}

TEST(Desk, WithoutAPrinterThereIsNoPrintJob) {
    DeskWorld w;
    if (!QPrinterInfo::availablePrinterNames().isEmpty()) GTEST_SKIP() << "there is a printer";
    EXPECT_FALSE(w.Desk.HasPrinter());
    EXPECT_EQ(w.Desk.StartPrintJob({.Title = "page", .Landscape = false, .File = {}}), nullptr);
}

TEST(Desk, NewColoursOfTheSystemReachStripsIconsAndReadOuts) {
    DeskWorld w;
    auto& open = w.Widget<QToolButton>(frmVaelAna, "cmdFiles_0");
    const QImage before = open.icon().pixmap(24).toImage();
    QPalette dark = QApplication::palette();
    dark.setColor(QPalette::Window, QColor(40, 44, 48));
    dark.setColor(QPalette::WindowText, QColor(230, 231, 232));
    dark.setColor(QPalette::ButtonText, QColor(230, 231, 232));
    QApplication::setPalette(dark);
    DeskWorld::Settle();
    EXPECT_EQ(frmVaelAna.StripBack, Rgb(40, 44, 48));
    EXPECT_NE(open.icon().pixmap(24).toImage(), before);
    EXPECT_EQ(w.Widget(frmVaelAna, "inumCursorDisp_0").palette().color(QPalette::Base),
              QColor(40, 44, 48));
    EXPECT_EQ(test::PaperOf(w, frmVaelAna.picSubScale).pixelColor(200, 24), QColor(40, 44, 48));
    QApplication::setPalette(QApplication::style()->standardPalette());
    DeskWorld::Settle();
}

TEST(Desk, KeysOfAViewComeBeforeTheWidgetButNotBeforeABoxThatIsTypedIn) {
    SmallWorld w;
    int lefts = 0;
    w.V.KeyPreview = [&](const KeyPress& key) {
        lefts += key.Key == KeyPress::Name::Left && key.Shift ? 1 : 0;
        return key.Key == KeyPress::Name::Left;
    };
    w.Of<QScrollBar>("hsbSix").setFocus();
    QTest::keyClick(&w.Of<QScrollBar>("hsbSix"), Qt::Key_Left, Qt::ShiftModifier);
    EXPECT_EQ(lefts, 1);
    EXPECT_EQ(w.V.hsbSix.Value, 0);
    auto& box = w.Of<QLineEdit>("txtThree");
    box.setFocus();
    QTest::keyClick(&box, Qt::Key_Left, Qt::ShiftModifier);
    EXPECT_EQ(lefts, 1);
    EXPECT_EQ(box.selectedText(), QStringLiteral("e"));
}

TEST(Desk, BusyNestsAndGivesTheCursorBack) {
    DeskWorld w;
    w.Desk.Busy(true);
    w.Desk.Busy(true);
    w.Desk.Busy(false);
    ASSERT_NE(QApplication::overrideCursor(), nullptr);
    EXPECT_EQ(QApplication::overrideCursor()->shape(), Qt::WaitCursor);
    w.Desk.Busy(false);
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
}

TEST(Desk, StayingOnTopDoesNotHideTheWindow) {
    DeskWorld w;
    w.Desk.StayOnTop(frmVaelAna, true);
    EXPECT_TRUE(frmVaelAna.OnTop);
    EXPECT_TRUE(w.Main().isVisible());
    EXPECT_TRUE(w.Main().windowHandle()->flags().testFlag(Qt::WindowStaysOnTopHint));
    w.Desk.StayOnTop(frmVaelAna, false);
    EXPECT_FALSE(w.Main().windowHandle()->flags().testFlag(Qt::WindowStaysOnTopHint));
}

TEST(Desk, FoldersAreListedAndMade) {
    DeskWorld w;
    const std::string folder = w.Folder.path().toStdString();
    EXPECT_TRUE(w.Desk.MakeFolder(folder + "/inner"));
    std::ofstream(folder + "/file.txt") << "x";
    const auto items = w.Desk.ListFolder(folder);
    ASSERT_EQ(items.size(), 2U);
    for (const FolderItem& item : items) EXPECT_EQ(item.IsFolder, item.Name == "inner");
}

TEST(Desk, MenusShowTheirTips) {
    DeskWorld w;
    for (auto* menu : w.Main().findChildren<QMenu*>())
        if (menu->objectName().endsWith(QStringLiteral("_items"))) {
            EXPECT_TRUE(menu->toolTipsVisible()) << menu->objectName().toStdString();
        }
}

TEST(Desk, AnUnloadedViewDrawsOnItsPicturesAgain) {
    DeskWorld w;
    Unload(frmVaelAna);
    w.Desk.Show();
    for (Picture& picture : frmVaelAna.picGraph) {
        auto& widget = w.Widget<PictureWidget>(frmVaelAna, picture.Name);
        EXPECT_EQ(&picture.Paper().Below(), &widget.Paper());
        EXPECT_EQ(picture.Width, widget.width());
    }
}

}  // namespace
}  // namespace vael
