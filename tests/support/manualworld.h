// A spectrum of two lines with the manual fit open on it, and the user's hand in its boxes.
#pragma once

#include "analysis/frmmanualfit.h"
#include "core/fault.h"
#include "core/frmlog.h"
#include "core/graphs.h"
#include "support/spectra.h"
#include "support/world.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace vael::test::manual {

inline ManualFitView& v = frmManualFit;

/// Lines of full width 10 and 12 at the 0-based channels 200 and 230.
inline const std::vector<GaussLine> PAIR{{200.0, 8000.0, 10.0}, {230.0, 4000.0, 12.0}};

struct ManualWorld : World {
    explicit ManualWorld(const std::vector<GaussLine>& lines = PAIR, int channels = 4096) {
        Open({"pair.npd"}, lines, channels);
        EXPECT_TRUE(Click(frmVaelAna.cmdManualFitting));
    }
    void Open(const std::vector<std::string>& names, const std::vector<GaussLine>& lines,
              int channels = 4096) {
        std::vector<std::string> paths;
        for (const auto& name : names)
            paths.push_back(Folder.Write(name, NpdText(GaussCounts(channels, 60.0, lines))));
        Desk.ChooseFiles(paths);
        Click(frmVaelAna.mnuLoad);
    }
};

inline void TypeAndLeave(TextBox& box, const std::string& text) {
    EXPECT_TRUE(Type(box, text)) << box.Name;
    Leave(box);
}

inline void Region(const std::string& start, const std::string& end) {
    TypeAndLeave(v.txtStartCh, start);
    TypeAndLeave(v.txtEndCh, end);
}

inline void Row(std::size_t i, const std::string& centre, const std::string& height,
                const std::string& width) {
    TypeAndLeave(v.txtCenterCh[i], centre);
    TypeAndLeave(v.txtMaxCount[i], height);
    TypeAndLeave(v.txtWidth[i], width);
}

inline void Rule(int peak, NaxKind param, HeldBy how, int master = 1,
                 const std::string& value = "") {
    Pick(v.cboRulePeak, peak - 1);
    Pick(v.cboRuleParam, param);
    Pick(v.cboRuleHow, static_cast<int>(how));
    if (how != HeldBy::Fixed) {
        Pick(v.cboRuleMaster, master - 1);
        Type(v.txtRuleValue, value);
    }
    EXPECT_TRUE(Click(v.cmdRuleAdd));
}

/// The pair, as one would read it off the plot.
inline void TypePair() {
    Region("160", "280");
    TypeAndLeave(v.txtPeakNum, "2");
    Row(0, "202", "7000", "9");
    Row(1, "230", "3500", "11");
}

inline const PeakTable& Peaks(int row) { return Item(store.PeakTables, GetGraphDataNo(row)); }

inline bool LogHas(const std::string& words) {
    return frmLog.txtMessage.Text.find(words) != std::string::npos;
}

}  // namespace vael::test::manual
