// A spectrum with peaks at chosen d, and the lattice view open on it, for the tests of that view.
#pragma once

#include "support/plotted.h"

#include "core/fault.h"
#include "core/text.h"
#include "lattice/frmpeakcal.h"

#include <cmath>
#include <numbers>
#include <string>
#include <utility>
#include <vector>

namespace vael::test {

/// The crystals that come with the program.
inline std::string ShippedCrystals() {
    return BytesOf(std::string(VAEL_SOURCE_DIR) + "/data/crystal.dat");
}

/// A crystal.dat of the given crystals, each as the file has it.
inline std::string CrystalFile(const std::vector<std::string>& crystals) {
    std::string text;
    for (int line = 1; line <= 10; ++line) text += "comment\n";
    text += std::to_string(crystals.size()) + "\n";
    for (const std::string& crystal : crystals) text += crystal + "\n";
    return text;
}

inline constexpr double GOLD = 4.0786;  // angstrom, as the crystal file has it

/// Indices of the first lines of gold, by falling d.
inline const std::vector<std::array<int, 3>> GOLD_LINES{{1, 1, 1}, {2, 0, 0}, {2, 2, 0}, {3, 1, 1},
                                                        {2, 2, 2}, {4, 0, 0}, {3, 3, 1}, {4, 2, 0}};

/// gold.npd in row 0 and slot 0: E = 0.05 + 0.03 x at 10 degrees. No peaks yet.
struct LatticeWorld : Plotted {
    explicit LatticeWorld(const std::string& crystals = ShippedCrystals()) {
        Folder.Write("crystal.dat", crystals);
        Open({Spectrum("gold.npd")});
    }
    static PeakCalView& View() { return frmPeakCal; }
    static PropertyRecord& Record(int slot = 0) { return Item(store.PropertyRecords, slot); }
    static PeakTable& Peaks(int slot = 0) { return Item(store.PeakTables, slot); }

    /// The 0-based channel at which a slot's calibration has d.
    static double ChannelOfD(double d, int slot = 0) {
        const ParamRecord& param = Record(slot).Param;
        const double sine = std::sin(param.TwoTheta / 2.0 * std::numbers::pi / 180.0);
        const double energy = 12.3981 / (2.0 * d * sine);
        return (energy - param.EgcCoef[0]) / param.EgcCoef[1] - 1.0;
    }
    void AddD(double d, int slot = 0) { AddPeakAt(slot, ChannelOfD(d, slot)); }
    static double CubicD(double a, const std::array<int, 3>& hkl) {
        return a / std::sqrt(hkl[0] * hkl[0] + hkl[1] * hkl[1] + hkl[2] * hkl[2]);
    }
    /// The first `count` lines of a cubic cell, each off by a little that its number fixes.
    void AddCubic(double a, std::size_t count = 5, double scatter = 0.0) {
        for (std::size_t i = 0; i < count; ++i)
            AddD(CubicD(a, GOLD_LINES[i]) *
                 (1.0 + scatter * std::sin(1.7 * static_cast<double>(i) + 0.4)));
    }
    void OpenView() {
        EXPECT_TRUE(Click(frmVaelAna.cmdShowReport));
        EXPECT_TRUE(frmPeakCal.Visible);
    }
    /// Picks the crystal whose name begins so.
    static void Choose(const std::string& name) {
        const auto& items = frmPeakCal.cmbElement.Items;
        for (std::size_t i = 0; i < items.size(); ++i)
            if (items[i].starts_with(name)) {
                EXPECT_TRUE(Pick(frmPeakCal.cmbElement, static_cast<int>(i))) << name;
                return;
            }
        ADD_FAILURE() << "no crystal " << name << " in the list";
    }
    static void Sample() { EXPECT_TRUE(Click(frmPeakCal.optSelectMode[0])); }
    static void Execute() { EXPECT_TRUE(Click(frmPeakCal.cmdCal)); }
    static bool TypeAndLeave(TextBox& box, const std::string& text) {
        EXPECT_TRUE(Type(box, text)) << box.Name;
        return Leave(box);
    }
    static std::string Cell(const Grid& grid, int column, int row) {
        return grid.At(column, row).Text;
    }
    static std::string Told() { return frmVaelAna.lblStatus.Caption; }
    static double Value(const TextBox& box) {
        return Number(box.Text.substr(0, box.Text.find("+-")));
    }
    static double Error(const TextBox& box) {
        const std::size_t at = box.Text.find("+-");
        return at == std::string::npos ? 0.0 : Number(box.Text.substr(at + 2));
    }
    std::string LogText() const { return FromCp932(BytesOf(Folder.Path("crystalfit.csv"))); }
    static std::size_t Count(const std::string& text, const std::string& part) {
        std::size_t n = 0;
        for (std::size_t at = text.find(part); at != std::string::npos;
             at = text.find(part, at + part.size()))
            ++n;
        return n;
    }
};

}  // namespace vael::test
