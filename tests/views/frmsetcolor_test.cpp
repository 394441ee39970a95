// The colour view and its picker by the user's hand, and what each role changes on the plots.
#include "display/frmsetcolor.h"

#include "analysis/roicommands.h"
#include "core/areamarks.h"
#include "core/cursors.h"
#include "core/frmselgraph.h"
#include "core/frmvaelana.h"
#include "core/regionmarks.h"
#include "display/frmdialogcolor.h"
#include "support/elementworld.h"
#include "support/recordingcanvas.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <string>
#include <vector>

namespace vael {
namespace {

using K = KeyPress::Name;

const Colour NEW = Rgb(12, 200, 34);

/// Place of a role in the colour view by its name.
std::size_t RoleOf(const std::string& name) {
    const auto& roles = ColourRoles();
    const auto found = std::find_if(roles.begin(), roles.end(),
                                    [&](const ColourRole& role) { return role.Name == name; });
    EXPECT_NE(found, roles.end()) << name;
    return static_cast<std::size_t>(found - roles.begin());
}

Colour InForce(const std::string& name) {
    return store.ColorTable.at(static_cast<std::size_t>(ColourRoles()[RoleOf(name)].Entry));
}

void TypeColour(Colour colour) {
    EXPECT_TRUE(Type(frmDialogColor.inumRed, std::to_string(colour & 255)));
    EXPECT_TRUE(Type(frmDialogColor.inumGreen, std::to_string((colour >> 8) & 255)));
    EXPECT_TRUE(Type(frmDialogColor.inumBlue, std::to_string((colour >> 16) & 255)));
    EXPECT_TRUE(Leave(frmDialogColor.inumBlue));
}

struct Colours : test::ElementWorld {
    test::RecordingSurface Papers[2];
    ~Colours() {
        for (Picture& plot : frmVaelAna.picGraph) plot.PutOn(nullptr);
    }
    /// The user's acts in the colour view, opened by its menu item.
    void InView(std::function<void()> acts) {
        Desk.OnModal([acts = std::move(acts)](View& view) {
            ASSERT_EQ(&view, &frmSetColor);
            acts();
        });
        EXPECT_TRUE(Click(frmVaelAna.mnuColor));
    }
    /// Opens the picker of a role and acts in it.
    void Picking(const std::string& role, std::function<void()> acts) {
        Desk.OnModal([acts = std::move(acts)](View& view) {
            ASSERT_EQ(&view, &frmDialogColor);
            acts();
        });
        EXPECT_TRUE(Click(frmSetColor.cmdColor[RoleOf(role)]));
    }
    void Choose(const std::string& role, Colour colour) {
        Picking(role, [colour] {
            TypeColour(colour);
            EXPECT_TRUE(Click(frmDialogColor.cmdSet));
        });
    }
    /// Gives a role a colour and puts it in force.
    void Give(const std::string& role, Colour colour) {
        InView([&] {
            Choose(role, colour);
            EXPECT_TRUE(Click(frmSetColor.cmdOk));
        });
    }
    /// The plots on recorders, drawn anew from the next redraw on.
    void Watch() {
        for (std::size_t win = 0; win < 2; ++win) {
            frmVaelAna.picGraph[win].PutOn(&Papers[win]);
            Papers[win].Strokes.clear();
        }
    }
    [[nodiscard]] int Drawn(int win, Colour colour) const {
        const auto& strokes = Papers[win].Strokes;
        return static_cast<int>(
            std::count_if(strokes.begin(), strokes.end(),
                          [&](const test::Drawn& stroke) { return stroke.Pen.Ink == colour; }));
    }
};

TEST(SetColor, HasTheTwentyOneRolesWithTheirColours) {
    Colours w;
    w.InView([] {
        EXPECT_EQ(frmSetColor.Caption, "Color Stetting");
        EXPECT_EQ(frmSetColor.lblColor[12].Caption, "Zansa");
        EXPECT_EQ(frmSetColor.lblColor[15].Caption, "ROI Line ");
        for (std::size_t role = 0; role < ROLE_COUNT; ++role) {
            EXPECT_EQ(frmSetColor.cmdColor[role].Fill, InForce(ColourRoles()[role].Name));
            EXPECT_FALSE(frmSetColor.cmdColor[role].Tip.empty());
        }
        EXPECT_TRUE(Click(frmSetColor.cmdCansel));
    });
}

TEST(SetColor, TheRolesThatColourNothingSaySo) {
    for (const char* name : {"Fit Curve", "Zansa"})
        EXPECT_NE(frmSetColor.cmdColor[RoleOf(name)].Tip.find("nothing that is drawn"),
                  std::string::npos)
            << name;
    EXPECT_EQ(frmSetColor.cmdColor[RoleOf("Peak Curve")].Tip.find("nothing"), std::string::npos);
}

TEST(SetColor, CopiesATableInAndOut) {
    ColourTable table{};
    for (std::size_t k = 0; k < table.size(); ++k) table[k] = static_cast<Colour>(1000 + k);
    frmSetColor.SetTbl(table);
    EXPECT_EQ(frmSetColor.cmdColor[20].Fill, 1024) << "\"Expand Area\" is entry 24";
    ColourTable out{};
    frmSetColor.GetTbl(out);
    EXPECT_EQ(out, table);
}

TEST(SetColor, OkKeepsAndCancelCloseAndEscapeDrop) {
    Colours w;
    const ColourTable before = store.ColorTable;
    const std::vector<std::function<void()>> waysOut{
        [] { EXPECT_TRUE(Click(frmSetColor.cmdCansel)); },
        [] { EXPECT_TRUE(Key(frmSetColor, {.Key = K::Escape})); },
        [] { EXPECT_TRUE(Close(frmSetColor)); }};
    for (const auto& leave : waysOut) {
        w.InView([&] {
            w.Choose("Graph3", NEW);
            EXPECT_EQ(frmSetColor.cmdColor[2].Fill, NEW);
            leave();
        });
        EXPECT_EQ(store.ColorTable, before);
    }
    w.InView([&] {
        EXPECT_EQ(frmSetColor.cmdColor[2].Fill, before[2]) << "what was dropped never comes back";
        w.Choose("Graph3", NEW);
        EXPECT_TRUE(Key(frmSetColor, {.Key = K::Enter}));
    });
    ColourTable after = before;
    after[2] = NEW;
    EXPECT_EQ(store.ColorTable, after);
    EXPECT_EQ(frmVaelAna.lblStatus.Caption, "The colours were taken over.");
}

TEST(SetColor, APickerThatIsLeftOtherwiseStoresNothing) {
    Colours w;
    const ColourTable before = store.ColorTable;
    const std::vector<std::function<void()>> waysOut{
        [] { EXPECT_TRUE(Click(frmDialogColor.cmdCansel)); },
        [] { EXPECT_TRUE(Key(frmDialogColor, {.Key = K::Escape})); },
        [] { EXPECT_TRUE(Close(frmDialogColor)); }};
    w.InView([&] {
        w.Choose("Graph1", NEW);
        for (const auto& leave : waysOut) {
            w.Picking("Graph2", [&] {
                EXPECT_EQ(frmDialogColor.SelColor(), before[1]);
                TypeColour(NEW);
                leave();
            });
            EXPECT_EQ(frmSetColor.cmdColor[1].Fill, before[1]);
        }
        EXPECT_TRUE(Click(frmSetColor.cmdOk));
    });
    EXPECT_EQ(store.ColorTable[0], NEW);
    EXPECT_EQ(store.ColorTable[1], before[1]);
}

TEST(SetColor, AColourThatNobodyTouchesGoesOutAsItCameIn) {
    Colours w;
    store.ColorTable[30] = -1;
    store.ColorTable[4] = static_cast<Colour>(0x80112233U);
    const ColourTable before = store.ColorTable;
    w.InView([&] {
        w.Picking("Graph5", [] {
            EXPECT_EQ(frmDialogColor.SelColor(), 0x112233);
            EXPECT_TRUE(Click(frmDialogColor.cmdCansel));
        });
        EXPECT_TRUE(Click(frmSetColor.cmdOk));
    });
    EXPECT_EQ(store.ColorTable, before);
}

// --- the picker -----------

TEST(DialogColor, AClickOnASwatchTakesItsColourAndTheBarsFollow) {
    Colours w;
    w.InView([&] {
        w.Picking("Graph1", [] {
            DialogColorView& v = frmDialogColor;
            EXPECT_EQ(v.Caption, "Color Selection");
            EXPECT_EQ(v.Swatch, 18) << "the first colour of Graph1 is a swatch";
            EXPECT_TRUE(MouseDown(v.picColor[44], MouseButton::Left, 5, 5));
            EXPECT_EQ(v.SelColor(), Swatches()[44]);
            EXPECT_EQ(v.Swatch, 44);
            EXPECT_EQ(v.vsbRed.Value, 6);
            EXPECT_EQ(v.vsbGreen.Value, 86);
            EXPECT_EQ(v.vsbBlue.Value, 69);
            EXPECT_EQ(v.inumBlue.Value, 69.0);
            MouseDown(v.picColor[0], MouseButton::Right, 5, 5);
            EXPECT_EQ(v.SelColor(), Swatches()[44]) << "the right button takes nothing";
            EXPECT_TRUE(Click(v.cmdSet));
        });
        EXPECT_EQ(frmSetColor.cmdColor[0].Fill, Rgb(6, 86, 69));
        EXPECT_TRUE(Click(frmSetColor.cmdCansel));
    });
}

TEST(DialogColor, EachBarSetsItsOwnComponentFromNothingToAll) {
    Colours w;
    w.InView([&] {
        w.Picking("Graph1", [] {
            DialogColorView& v = frmDialogColor;
            EXPECT_EQ(v.vsbRed.Least, 0);
            EXPECT_EQ(v.vsbRed.Most, 255);
            EXPECT_TRUE(Scroll(v.vsbRed, 0));
            EXPECT_EQ(v.SelColor(), Rgb(0, 214, 79));
            EXPECT_TRUE(Scroll(v.vsbGreen, 255));
            EXPECT_EQ(v.SelColor(), Rgb(0, 255, 79));
            EXPECT_TRUE(Scroll(v.vsbBlue, 256)) << "held at its end";
            EXPECT_EQ(v.SelColor(), Rgb(0, 255, 255));
            EXPECT_EQ(v.Swatch, -1) << "it is no swatch";
            EXPECT_TRUE(Type(v.inumRed, "300"));
            EXPECT_TRUE(Type(v.inumGreen, "-5"));
            EXPECT_TRUE(Type(v.inumBlue, "7"));
            EXPECT_TRUE(Leave(v.inumBlue));
            EXPECT_EQ(v.SelColor(), Rgb(255, 0, 7)) << "the boxes hold their limits too";
            EXPECT_EQ(v.vsbRed.Value, 255);
            EXPECT_TRUE(Click(v.cmdCansel));
        });
        EXPECT_TRUE(Click(frmSetColor.cmdCansel));
    });
}

TEST(DialogColor, TheSampleAndTheBarsShowTheColour) {
    Colours w;
    test::RecordingSurface sample;
    test::RecordingSurface former;
    test::RecordingSurface red;
    w.InView([&] {
        w.Picking("Graph1", [&] {
            DialogColorView& v = frmDialogColor;
            v.picSampl.PutOn(&sample);
            v.shpSetColor.PutOn(&former);
            v.shpColorR.PutOn(&red);
            EXPECT_TRUE(Scroll(v.vsbRed, 51));
            v.picSampl.PutOn(nullptr);
            v.shpSetColor.PutOn(nullptr);
            v.shpColorR.PutOn(nullptr);
            EXPECT_TRUE(Click(v.cmdCansel));
        });
        EXPECT_TRUE(Click(frmSetColor.cmdCansel));
    });
    const auto ground = [](const test::RecordingSurface& paper) {
        for (const test::Drawn& drawn : paper.Strokes)
            if (drawn.What == test::Drawn::Kind::Clear) return drawn.Pen.Ink;
        return Colour{-1};
    };
    EXPECT_EQ(ground(sample), Rgb(51, 214, 79));
    EXPECT_EQ(ground(former), Rgb(255, 214, 79));
    // A fifth of the bar, from the top, in a fifth of red.
    const auto bar = std::find_if(red.Strokes.begin(), red.Strokes.end(),
                                  [](const auto& drawn) { return drawn.Pen.Ink == Rgb(51, 0, 0); });
    ASSERT_NE(bar, red.Strokes.end());
    EXPECT_EQ(std::min(bar->From.Y, bar->To.Y), 0.0);
    EXPECT_EQ(std::max(bar->From.Y, bar->To.Y), 51.0);
}

TEST(DialogColor, TheArrowsGoFromSwatchToSwatchAndStopAtTheEdges) {
    Colours w;
    w.InView([&] {
        w.Picking("Graph1", [] {
            const auto press = [](K key) { EXPECT_TRUE(Key(frmDialogColor, {.Key = key})); };
            TypeColour(Rgb(1, 2, 3));
            EXPECT_EQ(frmDialogColor.Swatch, -1);
            press(K::Down);
            EXPECT_EQ(frmDialogColor.Swatch, 0) << "from no swatch to the first";
            press(K::Left);
            press(K::Up);
            EXPECT_EQ(frmDialogColor.Swatch, 0);
            press(K::Right);
            press(K::Down);
            EXPECT_EQ(frmDialogColor.Swatch, 9);
            EXPECT_EQ(frmDialogColor.SelColor(), Swatches()[9]);
            for (int i = 0; i < 10; ++i) press(K::Right);
            for (int i = 0; i < 10; ++i) press(K::Down);
            EXPECT_EQ(frmDialogColor.Swatch, 47);
            EXPECT_FALSE(Key(frmDialogColor, {.Key = K::Left, .Ctrl = true}));
            press(K::Enter);
        });
        EXPECT_EQ(frmSetColor.cmdColor[0].Fill, Swatches()[47]);
        EXPECT_TRUE(Click(frmSetColor.cmdCansel));
    });
}

TEST(DialogColor, OthersOpensTheSystemsDialogWithTheColourAndTakesItsOwn) {
    Colours w;
    w.Desk.PickInDialog(NEW);
    w.Desk.PickInDialog(std::nullopt);
    w.InView([&] {
        w.Picking("Zansa", [&] {
            EXPECT_TRUE(Click(frmDialogColor.cmdOther));
            EXPECT_EQ(frmDialogColor.SelColor(), NEW);
            EXPECT_EQ(frmDialogColor.vsbGreen.Value, 200);
            EXPECT_TRUE(Click(frmDialogColor.cmdOther));
            EXPECT_EQ(frmDialogColor.SelColor(), NEW) << "a cancelled dialog changes nothing";
            EXPECT_TRUE(Click(frmDialogColor.cmdSet));
        });
        EXPECT_TRUE(Click(frmSetColor.cmdOk));
    });
    EXPECT_EQ(w.Desk.ColoursOffered, (std::vector<Colour>{Rgb(160, 160, 160), NEW}));
    EXPECT_EQ(InForce("Zansa"), NEW);
}

// --- what the roles change -----------

TEST(ColoursInForce, AGraphItsChipAndItsSwatchInBothWindows) {
    Colours w;
    w.Open({w.Spectrum("a.npd"), w.Spectrum("b.npd")});
    Tick(frmVaelAna.chkGrp[11]);  // the second one into the lower window
    Click(frmVaelAna.cmdMnSelGrp);
    w.Watch();
    w.Give("Graph2", NEW);
    EXPECT_EQ(store.GraphList[1].Color, NEW);
    EXPECT_EQ(frmVaelAna.chkGrp[1].Ink, NEW);
    EXPECT_EQ(frmVaelAna.chkGrp[11].Ink, NEW);
    EXPECT_EQ(std::as_const(frmSelGraph.sprGraphSel).At(SelGraphView::SWATCH, 2).Fill, NEW);
    EXPECT_GT(w.Drawn(1, NEW), 100);
    EXPECT_EQ(w.Drawn(0, NEW), 0);
    EXPECT_EQ(store.GraphList[0].Color, FirstColours()[0]) << "the others stay";
}

TEST(ColoursInForce, AGraphOfASlotThatOpensLater) {
    Colours w;
    w.Give("Graph1", NEW);
    w.Open({w.Spectrum("a.npd")});
    EXPECT_EQ(store.GraphList[0].Color, NEW);
    EXPECT_EQ(frmVaelAna.chkGrp[0].Ink, NEW);
}

TEST(ColoursInForce, TheMagnifierAndThePileHaveThemToo) {
    Colours w;
    w.Open({w.Spectrum("a.npd")});
    Tick(frmVaelAna.ckbExpand);
    w.Watch();
    w.Give("Graph1", NEW);
    EXPECT_GT(w.Drawn(0, NEW), 100);
    EXPECT_GT(w.Drawn(1, NEW), 100);
}

TEST(ColoursInForce, ThePartsOfACurveThatBelongToPeaks) {
    Colours w;
    w.Open({w.Spectrum("a.npd")});
    PeakTable& table = store.PeakTables[0];
    w.AddPeakAt(0, 1000.0);
    table.Peak[0].StartCh = 980;
    table.Peak[0].EndCh = 1020;
    w.Watch();
    w.Give("Peak Curve", NEW);
    EXPECT_GT(w.Drawn(0, NEW), 1);
    EXPECT_EQ(Engine().Target(0).Graph[0].PlotColor[1000], NEW);
}

TEST(ColoursInForce, TheMarksAndNumbersOfPeaks) {
    Colours w;
    w.Open({w.Spectrum("a.npd")});
    w.AddPeakAt(0, 1000.0);
    Tick(frmVaelAna.chkPeakParameter);
    w.Watch();
    w.Give("Peak Mark", NEW);
    EXPECT_EQ(w.Drawn(0, NEW), 2) << "the short line and the number";
}

TEST(ColoursInForce, TheRegionsThatStandAndThoseThatCome) {
    Colours w;
    w.Open({w.Spectrum("a.npd")});
    CsrX_Change(990);
    Click(frmVaelAna.mnuRoiStart);
    CsrX_Change(1010);
    Click(frmVaelAna.mnuRoiEnd);
    w.Watch();
    w.InView([&] {
        w.Choose("ROI Line ", NEW);
        w.Choose("ROI No Text", Rgb(1, 2, 3));
        EXPECT_TRUE(Click(frmSetColor.cmdOk));
    });
    EXPECT_EQ(store.Rois.RoiTable[0].Color, NEW);
    EXPECT_EQ(Engine().Target(0).Graph[0].PlotColor[1000], NEW);
    EXPECT_EQ(w.Drawn(0, Rgb(1, 2, 3)), 1);
    CsrX_Change(2000);
    Click(frmVaelAna.mnuRoiStart);
    CsrX_Change(2010);
    Click(frmVaelAna.mnuRoiEnd);
    EXPECT_EQ(store.Rois.RoiTable[1].Color, NEW);
}

TEST(ColoursInForce, TheLinesOfElements) {
    Colours w;
    w.OpenOne();
    w.ShowTable();
    Click(test::ElementWorld::Atom(58));
    w.Watch();
    w.Give("Element Mark", NEW);
    EXPECT_EQ(w.Drawn(0, NEW), 8) << "four lines and their names";
}

TEST(ColoursInForce, TheGroundsAndTheFrames) {
    Colours w;
    w.Watch();
    w.InView([&] {
        w.Choose("Window1 Back", Rgb(250, 250, 250));
        w.Choose("Window2 Back", Rgb(0, 0, 0));
        w.Choose("Base Form", NEW);
        EXPECT_TRUE(Click(frmSetColor.cmdOk));
    });
    const auto ground = [&](int win) {
        Colour last = -1;
        for (const test::Drawn& drawn : w.Papers[win].Strokes)
            if (drawn.What == test::Drawn::Kind::Clear) last = drawn.Pen.Ink;
        return last;
    };
    EXPECT_EQ(ground(0), Rgb(250, 250, 250));
    EXPECT_EQ(ground(1), Rgb(0, 0, 0));
    EXPECT_EQ(frmSetColor.cmdColor[RoleOf("Window2 Back")].Fill, Rgb(0, 0, 0)) << "black is one";
    for (const Frame& frame : frmVaelAna.fraGraph) EXPECT_EQ(frame.Edge, NEW);
}

/// Ink of the first mark of a group that stands on a window.
Colour InkOfMark(int win, int group) {
    const DrawTarget& target = Engine().Target(win);
    for (int i = 0; i < target.MarkNum; ++i)
        if (target.Mark[static_cast<std::size_t>(i)].Kind == group)
            return target.Mark[static_cast<std::size_t>(i)].Color;
    ADD_FAILURE() << "no such mark stands";
    return -1;
}

TEST(ColoursInForce, TheBandOfTheMagnifierShowsItsColourOnTheGround) {
    Colours w;
    w.Open({w.Spectrum("a.npd")});
    Tick(frmVaelAna.ckbExpand);
    w.InView([&] {
        w.Choose("Expand Area", NEW);
        w.Choose("Window1 Back", Rgb(240, 241, 239));
        EXPECT_TRUE(Click(frmSetColor.cmdOk));
    });
    EXPECT_EQ(InkOfMark(0, MARK_BAND) ^ Rgb(240, 241, 239), NEW);
    w.Give("Expand Area", Rgb(240, 241, 239));
    EXPECT_EQ(InkOfMark(0, MARK_BAND) ^ Rgb(240, 241, 239), Rgb(0, 0, 0))
        << "a band of its ground's colour would not be seen";
}

TEST(ColoursInForce, CursorAndAreaAreSeenOnEveryGround) {
    Colours w;
    w.Open({w.Spectrum("a.npd")});
    CsrX_Change(500);
    frmVaelAna.chkArea.Value = 1;
    SetArea(200, 400);
    for (const Colour ground : {Rgb(255, 255, 255), Rgb(128, 128, 128), Rgb(127, 60, 60),
                                Rgb(0, 0, 0), Rgb(120, 130, 200)}) {
        w.Give("Window1 Back", ground);
        for (const int group : {MARK_CURSOR, MARK_AREA_LEFT, MARK_AREA_RIGHT})
            EXPECT_GE(Contrast(ground, ground ^ InkOfMark(0, group)), 3.0)
                << std::hex << ground << " " << group;
        CsrX_Change(501);  // taken off with the ink that put them on
        CsrX_Change(500);
    }
    w.Give("Window1 Back", Rgb(18, 22, 28));
    EXPECT_EQ(InkOfMark(0, MARK_AREA_LEFT), Rgb(255, 100, 100));
    EXPECT_EQ(InkOfMark(0, MARK_CURSOR), Rgb(255, 255, 255));
}

TEST(ColoursInForce, StayWhenTheCalibrationIsLeft) {
    Colours w;
    ParamRecord none{};
    ASSERT_EQ(WriteSystemPara(w.Folder.Path("syspara_a.xpr"), none), -1);  // of a former run
    w.InView([&] {
        w.Choose("Window2 Back", NEW);
        w.Choose("Base Form", NEW);
        EXPECT_TRUE(Click(frmSetColor.cmdOk));
    });
    Click(frmVaelAna.mnuCons);
    ASSERT_TRUE(frmDialogCalibC.Visible);
    Click(frmDialogCalibC.cmdCalbCan);
    ASSERT_FALSE(frmDialogCalibC.Visible);
    EXPECT_EQ(InForce("Window2 Back"), NEW);
    EXPECT_EQ(Engine().Target(1).BackColor, NEW);
    EXPECT_EQ(frmVaelAna.fraGraph[0].Edge, NEW);
}

TEST(ColoursInForce, StandInTheParameterFileAndComeBackWithTheNextStart) {
    Colours w;
    w.InView([&] {
        w.Choose("Graph1", Rgb(0x11, 0x22, 0x33));
        w.Choose("Expand Area", NEW);
        EXPECT_TRUE(Click(frmSetColor.cmdOk));
    });
    const ColourTable chosen = store.ColorTable;
    Click(frmVaelAna.mnuExit);
    // "00", 584 bytes of parameters, then 41 colours of four bytes with red first.
    const std::string bytes = BytesOf(w.Folder.Path("syspara_a.xpr"));
    ASSERT_EQ(bytes.size(), 2U + 584U + 164U + 64U + 10U);
    EXPECT_EQ(bytes.substr(586, 4), (std::string{0x11, 0x22, 0x33, 0}));
    EXPECT_EQ(bytes.substr(586 + 4 * 24, 4), (std::string{12, static_cast<char>(200), 34, 0}));
    store = Store{};
    FreshViews();
    Form_Load(w.Folder.Path());
    EXPECT_EQ(store.ColorTable, chosen);
}

}  // namespace
}  // namespace vael
