// A day's work in the real window: journeys by mouse and by keyboard alone, what happens while a
// fit runs, and how run-time errors end.
#include "deskworld.h"

#include "analysis/frmsetting.h"
#include "core/areamarks.h"
#include "core/cursors.h"
#include "core/graphs.h"
#include "core/windows.h"

#include <QLabel>

namespace vael {
namespace {

using test::DeskWorld;
using test::FIVE_LINES;

VaelAnaView& V() { return frmVaelAna; }

std::vector<std::string> RowNames() {
    std::vector<std::string> names;
    for (const GraphEntry& entry : store.GraphList)
        if (entry.State > 0) names.push_back(entry.Name);
    return names;
}
using Names = std::vector<std::string>;

std::pair<int, int> Area() {
    std::int16_t start = 0;
    std::int16_t end = 0;
    (void)GetRegions(start, end);
    return {start, end};
}

struct Day : DeskWorld {
    Day()
        : One(Write("one.npd", FIVE_LINES)),
          Two(Write("two.part.npd", {{800.0, 5000.0, 9.0}})),
          Three(Write("three, of them.npd", {{1500.0, 2500.0, 12.0}})) {}
    std::string One, Two, Three;
    std::string In(const std::string& name) {
        return (Folder.path() + QLatin1Char('/')).toStdString() + name;
    }
};

}  // namespace

TEST(WorkDay, ByMouse) {
    Day w;
    // Three files into the upper window; one of them into the lower one.
    w.Open({w.One, w.Two, w.Three});
    EXPECT_EQ(RowNames(), (Names{"one.npd", "two.part.npd", "three, of them.npd"}));
    EXPECT_EQ(V().lblRows.Caption, "rows 3/10");
    w.ClickOn(V().chkGrp[11]);
    EXPECT_EQ(store.GraphList[1].WinNo, 1);

    // From one window to the other and back.
    QTest::mouseClick(&w.Plot(1), Qt::LeftButton, {}, QPoint(100, 40));
    EXPECT_EQ(V().ActiveWin, 1);
    QTest::mouseClick(&w.Plot(0), Qt::LeftButton, {}, w.PlaceOf(0, 1000));
    EXPECT_EQ(V().ActiveWin, 0);
    EXPECT_NEAR(CursorCh(), 1000, 3);
    w.ClickOn(V().chkGrp[1]);
    EXPECT_EQ(store.GraphList[1].WinNo, 0);

    // All in one plot, and back.
    w.ClickOn(V().chkWinStyle);
    EXPECT_FALSE(w.Widget(V(), "fraGraph_1").isVisible());
    w.ClickOn(V().chkWinStyle);
    EXPECT_TRUE(w.Widget(V(), "fraGraph_1").isVisible());

    // A band of the upper window magnified in the lower one.
    w.ClickOn(V().ckbExpand);
    w.DragOn(0, w.PlaceOf(0, 1000), w.PlaceOf(0, 2000));
    EXPECT_NEAR(V().hsbStartX.Value, 1000, 4);
    EXPECT_NEAR(V().imnSpanCh.Value, 1001, 8);
    EXPECT_EQ(Engine().Target(0).XEnd, 4095);
    w.ClickOn(V().ckbExpand);

    // The list of rows to the first one; an area across a line; its edge dragged on.
    w.StepList(V().cboGrphSel[0], -2);
    EXPECT_EQ(GraphNo(), 0);
    w.ClickOn(V().chkArea);
    w.DragOn(0, w.PlaceOf(0, 1050), w.PlaceOf(0, 1150));
    EXPECT_NEAR(Area().first, 1050, 3);
    EXPECT_NEAR(Area().second, 1150, 3);
    w.DragOn(0, w.PlaceOf(0, 1150), w.PlaceOf(0, 1300));
    EXPECT_NEAR(Area().first, 1050, 3);
    EXPECT_NEAR(Area().second, 1300, 3);
    w.ClickOn(V().chkArea);

    // Zoom by the wheel and the buttons, the unit by its list.
    QTest::mouseClick(&w.Plot(0), Qt::LeftButton, {}, w.PlaceOf(0, 1100));
    w.ClickOn(V().cmdNarrower);
    w.ClickOn(V().cmdNarrower);
    EXPECT_EQ(V().imnSpanCh.Value, 1024);
    w.ClickOn(V().cmdWider);
    w.ClickOn(V().cmdWider);
    w.StepList(V().cboUnitX, 3);
    EXPECT_EQ(V().UnitX, 3);
    w.StepList(V().cboUnitX, -3);

    // Smooth, background, fit; the peaks one after the other.
    w.ClickOn(V().cmdOperation[3]);
    EXPECT_EQ(RowNames().front(), "Smooth");
    w.ClickOn(V().mnuBackGround);
    EXPECT_EQ(RowNames().front(), "BackRemv");
    w.ClickOn(V().cmdOperation[2]);
    EXPECT_EQ(store.PeakTables[static_cast<std::size_t>(DataNo())].PeakNum, 5);
    w.ClickOn(V().cmdOperation[8]);
    w.ClickOn(V().cmdOperation[8]);
    EXPECT_NE(V().itxtNoPeak.Text, "");

    // Each kind of row is saved under the name that is proposed.
    const auto save = [&](const Menu& choose, const char* proposed, const char* ending) {
        w.ClickOn(choose);
        w.Desk.Saves.push_back(w.In(std::string(proposed) + ending));
        w.ClickOn(V().cmdFiles[1]);
        EXPECT_EQ(w.Desk.SaveDialogs.back().Name, proposed);
        EXPECT_TRUE(std::filesystem::exists(w.In(std::string(proposed) + ending))) << proposed;
    };
    save(V().mnuGraphRaw, "one_RAW", ".xbm");
    save(V().mnuGraphSmt, "one_SMT", ".npd");
    save(V().mnuGraphBack, "one_BAK", ".xta");
    save(V().mnuGraphBackRemoved, "one_RMD", ".xbm");
    save(V().mnuGraphFit, "one_FIT", ".xba");

    // Rows closed until none is left.
    while (store.GraphTotal > 0) {
        const int before = store.GraphTotal;
        w.ClickOn(V().mnuCloseGraph);
        ASSERT_EQ(store.GraphTotal, before - 1);
    }
    EXPECT_TRUE(RowNames().empty());
    EXPECT_TRUE(w.Faults.empty()) << w.Faults.front();
    EXPECT_TRUE(w.Desk.Asked.empty());
    w.Main().close();
    DeskWorld::Settle();
    EXPECT_TRUE(w.Desk.HasQuit);
    EXPECT_TRUE(std::filesystem::exists(w.In("syspara_a.xpr")));
}

TEST(WorkDay, ByKeyboardAlone) {
    Day w;
    w.Desk.Files.push_back({w.One});
    w.KeyOn(Qt::Key_O, Qt::ControlModifier);
    EXPECT_EQ(RowNames(), (Names{"one.npd"}));
    w.KeyOn(Qt::Key_F7);  // AutoFitting
    EXPECT_EQ(RowNames(), (Names{"Fit", "BackRemv", "BackGraund", "Smooth", "one.npd"}));
    w.KeyOn(Qt::Key_Right, Qt::AltModifier);
    EXPECT_EQ(CursorCh(), 600);
    w.KeyOn(Qt::Key_Right, Qt::AltModifier);
    EXPECT_EQ(CursorCh(), 1100);
    w.KeyOn(Qt::Key_Left, Qt::AltModifier);
    EXPECT_EQ(CursorCh(), 600);
    w.KeyOn(Qt::Key_Left, Qt::ShiftModifier);
    EXPECT_EQ(CursorCh(), 580);
    for (int i = 0; i < 2; ++i) w.KeyOn(Qt::Key_Right, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(Area(), (std::pair{580, 620}));
    w.KeyOn(Qt::Key_Minus, Qt::KeypadModifier);
    EXPECT_EQ(V().imnSpanCh.Value, 2048);
    w.KeyOn(Qt::Key_PageDown);
    EXPECT_GT(V().hsbStartX.Value, 1000);
    w.KeyOn(Qt::Key_Home);
    EXPECT_EQ(V().hsbStartX.Value, 0);
    w.KeyOn(Qt::Key_Plus, Qt::KeypadModifier);
    EXPECT_EQ(V().imnSpanCh.Value, 4096);
    const std::int32_t scale = YFullScale(0);
    w.KeyOn(Qt::Key_Up);
    EXPECT_LT(YFullScale(0), scale);
    w.KeyOn(Qt::Key_Down);
    EXPECT_EQ(YFullScale(0), scale);
    w.KeyOn(Qt::Key_Period, Qt::KeypadModifier);
    EXPECT_EQ(V().ckbLogScale.Value, 1);
    w.KeyOn(Qt::Key_Period, Qt::KeypadModifier);
    EXPECT_EQ(V().ckbLogScale.Value, 0);
    w.KeyOn(Qt::Key_E, Qt::ControlModifier);
    EXPECT_EQ(V().ckbExpand.Value, 1);
    w.KeyOn(Qt::Key_E, Qt::ControlModifier);
    w.KeyOn(Qt::Key_U, Qt::ControlModifier);
    EXPECT_EQ(V().chkWinStyle.Value, 1);
    w.KeyOn(Qt::Key_I, Qt::ControlModifier);
    EXPECT_EQ(V().chkWinStyle.Value, 0);
    w.KeyOn(Qt::Key_F8);
    EXPECT_EQ(V().chkArea.Value, 0) << "the area that the keys had made is off";
    w.Desk.Saves.push_back(w.In("one_FIT.npd"));
    w.KeyOn(Qt::Key_S, Qt::ControlModifier);
    EXPECT_EQ(w.Desk.SaveDialogs.back().Name, "one_FIT");
    EXPECT_TRUE(std::filesystem::exists(w.In("one_FIT.npd")));
    w.KeyOn(Qt::Key_W, Qt::ControlModifier);
    EXPECT_EQ(RowNames().front(), "BackRemv");
    w.Desk.Files.push_back({w.One});
    w.KeyOn(Qt::Key_O, Qt::ControlModifier);
    w.KeyOn(Qt::Key_F4);
    EXPECT_EQ(RowNames(), (Names{"Smooth", "one.npd"}));
    w.KeyOn(Qt::Key_B, Qt::ControlModifier);
    EXPECT_EQ(store.GraphTotal, 4);
    w.KeyOn(Qt::Key_F6);
    EXPECT_EQ(store.GraphTotal, 5);
    w.Desk.Files.push_back({w.One});
    w.KeyOn(Qt::Key_O, Qt::ControlModifier);
    w.KeyOn(Qt::Key_F5);
    EXPECT_EQ(store.GraphTotal, 5);
    w.KeyOn(Qt::Key_L, Qt::ControlModifier);
    EXPECT_TRUE(w.Desk.FormOfView(frmLog)->isVisible());
    w.ClickOn(frmLog.cmdHide);
    w.KeyOn(Qt::Key_G, Qt::ControlModifier);
    EXPECT_TRUE(frmSelGraph.Visible);
    w.ClickOn(frmSelGraph.cmdOK);
    EXPECT_TRUE(w.Faults.empty()) << w.Faults.front();
    w.KeyOn(Qt::Key_Q, Qt::ControlModifier);
    EXPECT_TRUE(w.Desk.HasQuit);
}

TEST(WorkDay, WithoutAnyFileEveryKeyAndTheExitWork) {
    DeskWorld w;
    for (const Qt::Key key :
         {Qt::Key_Left, Qt::Key_Right, Qt::Key_Up, Qt::Key_Down, Qt::Key_Home, Qt::Key_End,
          Qt::Key_PageUp, Qt::Key_PageDown, Qt::Key_F5, Qt::Key_F6}) {
        // Without a row the fits say so in the words of the rows.
        if (key == Qt::Key_F5 || key == Qt::Key_F6) w.Desk.Answers.push_back(Answer::Ok);
        w.KeyOn(key);
    }
    EXPECT_EQ(w.Desk.Asked,
              (std::vector<std::string>{"ShiftGraph: Data Notting!", "ShiftGraph: Data Notting!"}));
    EXPECT_TRUE(w.Faults.empty());
    w.Main().close();
    DeskWorld::Settle();
    EXPECT_TRUE(w.Desk.HasQuit);
}

TEST(Typing, KeepsItsOwnKeysAndGivesTheOthersBackAfterwards) {
    Day w;
    w.Open({w.One});
    CsrX_Change(500);
    auto& box = w.Widget<QLineEdit>(V(), "imnSpanCh");
    QTest::mouseClick(&box, Qt::LeftButton);
    QTest::keyClick(&box, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClicks(&box, QStringLiteral("1000"));
    for (const Qt::Key key : {Qt::Key_Left, Qt::Key_Right, Qt::Key_Home, Qt::Key_End, Qt::Key_Up})
        QTest::keyClick(&box, key);
    EXPECT_EQ(CursorCh(), 500);
    EXPECT_EQ(V().ckbVtAuto.Value, 1);
    EXPECT_EQ(V().imnSpanCh.Value, 4096) << "half typed, not taken";
    QTest::keyClick(&box, Qt::Key_Return);
    EXPECT_EQ(V().imnSpanCh.Value, 1000);
    w.KeyOn(Qt::Key_Right);
    EXPECT_EQ(CursorCh(), 501);
}

TEST(Typing, EndsWithEnterOrAClickIntoAPlotAndTheKeysGoOnThere) {
    Day w;
    w.Open({w.One});
    w.Main().activateWindow();
    const auto keyWhereTheFocusIs = [](Qt::Key key) {
        QTest::keyClick(QApplication::focusWidget(), key);
    };
    for (const Control* box : {static_cast<const Control*>(&V().imnSpanCh),
                               static_cast<const Control*>(&V().itxtScaleY)}) {
        CsrX_Change(500);
        w.TypeInto(*box, "2000", Qt::Key_Return);
        keyWhereTheFocusIs(Qt::Key_Right);
        EXPECT_EQ(CursorCh(), 501) << box->Name;
    }
    auto& box = w.Widget<QLineEdit>(V(), "txt2Theta");
    QTest::mouseClick(&box, Qt::LeftButton);
    ASSERT_EQ(QApplication::focusWidget(), &box);
    QTest::mouseClick(&w.Plot(0), Qt::LeftButton, {}, w.PlaceOf(0, V().Windows[0].Start + 40));
    const int clicked = CursorCh();
    keyWhereTheFocusIs(Qt::Key_Right);
    EXPECT_EQ(CursorCh(), clicked + 1);
}

// --- while a fit runs -----------

TEST(RunningFit, SwallowsEveryActCountsItsGroupsAndKeepsTheStore) {
    Day w;
    w.Open({w.Two, w.One});
    V().mnuLogText.Click();
    w.Desk.Show();
    DeskWorld::Settle();
    std::set<std::string> status;
    int acts = 0;
    const Names before = RowNames();
    bool rowsMoved = false;
    w.Desk.OnBreathe = [&] {
        status.insert(V().lblStatus.Caption);
        if (++acts > 3) return;
        // Every widget of the main window is clicked, and every key of the view pressed.
        for (QWidget* widget : w.Main().findChildren<QWidget*>())
            if (widget->isVisible() && !widget->inherits("QMenuBar"))
                QTest::mouseClick(widget, Qt::LeftButton);
        for (const Qt::Key key : {Qt::Key_Left, Qt::Key_Up, Qt::Key_F5, Qt::Key_F7, Qt::Key_F8})
            QTest::keyClick(&w.Main(), key);
        QTest::keyClick(&w.Main(), Qt::Key_O, Qt::ControlModifier);
        QTest::keyClick(&w.Main(), Qt::Key_W, Qt::ControlModifier);
        w.Main().close();  // remembered, not carried out
        rowsMoved = rowsMoved || w.Desk.HasQuit || CursorCh() != 0;
    };
    w.ClickOn(V().cmdOperation[2]);
    w.Desk.OnBreathe = nullptr;
    EXPECT_GT(acts, 3) << "the fit never breathed";
    EXPECT_FALSE(rowsMoved);
    EXPECT_TRUE(std::any_of(status.begin(), status.end(), [](const std::string& line) {
        return line.find("groups so far") != std::string::npos;
    })) << "the status line counts";
    const Names after = RowNames();
    ASSERT_EQ(after.size(), before.size() + 3);
    EXPECT_EQ(after[3], before[0]);
    EXPECT_EQ(after[4], before[1]);
    EXPECT_TRUE(w.Desk.HasQuit) << "the close box is carried out behind the fit";
    EXPECT_TRUE(w.Faults.empty()) << w.Faults.front();
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
}

TEST(RunningFit, TheLogViewStaysLive) {
    Day w;
    w.Open({w.One});
    w.ClickOn(V().mnuLogText);
    int linesSeen = 0;
    bool cleared = false;
    w.Desk.OnBreathe = [&] {
        linesSeen = std::max<int>(linesSeen, frmLog.LineCount);
        if (frmLog.LineCount > 2 && !cleared) {
            w.ClickOn(frmLog.cmdClear);
            cleared = frmLog.LineCount == 0;
        }
    };
    w.ClickOn(V().cmdOperation[2]);
    w.Desk.OnBreathe = nullptr;
    EXPECT_GT(linesSeen, 2);
    EXPECT_TRUE(cleared);
}

// --- run-time errors -----------

/// That a command ended in one sentence in the status line and the log, and the window goes on.
void ExpectTold(Day& w, const std::string& part) {
    ASSERT_FALSE(w.Faults.empty()) << "there was no fault";
    EXPECT_NE(w.Faults.back().find(part), std::string::npos) << w.Faults.back();
    EXPECT_TRUE(V().StatusFault);
    EXPECT_NE(V().lblStatus.Caption.find(part), std::string::npos);
    EXPECT_TRUE(w.Widget<QLabel>(V(), "markStatus").isVisible());
    EXPECT_NE(frmLog.txtMessage.Text.find(part), std::string::npos);
    EXPECT_FALSE(CommandRunning());
}

void ExpectGoesOn(Day& w) {
    w.KeyOn(Qt::Key_Right);
    w.ClickOn(V().ckbLogScale);
    EXPECT_EQ(V().ckbLogScale.Value, 1) << "the window goes on";
    EXPECT_FALSE(V().StatusFault) << "the next command clears the mark";
    w.ClickOn(V().ckbVtAuto);
}

void TypeSetting(Day& w, const char* interval) {
    w.WhileModal(frmSetting, [&] {
        w.TypeInto(frmSetting.txtBackInterval, interval);
        w.ClickOn(frmSetting.cmdOk);
        if (frmSetting.Visible) w.ClickOn(frmSetting.cmdCansel);
    });
    w.ClickOn(V().mnuSetCons);
}

TEST(RunTimeError, AConversionIsTold) {
    Day w;
    w.Open({w.One});
    TypeSetting(w, "wide");
    ExpectTold(w, "A number was expected");
    ExpectGoesOn(w);
    EXPECT_EQ(settings.BackInterval, 20);
}

TEST(RunTimeError, AnOverflowIsTold) {
    Day w;
    w.Open({w.One});
    TypeSetting(w, "99999");
    ExpectTold(w, "Overflow");
    ExpectGoesOn(w);
    EXPECT_EQ(settings.BackInterval, 20);
}

TEST(RunTimeError, ASubscriptIsToldWhenNoSlotIsLeft) {
    Day w;
    w.Open({w.One});
    w.ClickOn(V().cmdMnSelGrp);
    for (int i = 0; i < 9; ++i) {
        w.Desk.Files.push_back({w.One});
        w.ClickOn(frmSelGraph.cmdOpen);
    }
    w.Desk.Files.push_back({w.One});
    w.Desk.Answers.push_back(Answer::Ok);
    w.ClickOn(frmSelGraph.cmdOpen);
    EXPECT_EQ(w.Desk.Asked.back(), "GetGraphSpace: Notting Space!");
    ExpectTold(w, "Subscript");
    ExpectGoesOn(w);
    EXPECT_EQ(RowNames(), (Names{"one.npd"}));
}

TEST(RunTimeError, ADivisionByZeroIsTold) {
    Day w;
    w.Open({w.One});
    // An angle so small that its sine is exactly zero has no d.
    w.TypeInto(V().txt2Theta, "1e-323", Qt::Key_Return);
    ExpectTold(w, "Division by zero.");
    w.TypeInto(V().txt2Theta, "12", Qt::Key_Return);
    ExpectGoesOn(w);
}

}  // namespace vael
