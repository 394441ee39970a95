// The world of the tests of the element table: the program's own atomic.dat, and two spectra.
#pragma once

#include "lattice/frmatom.h"
#include "lattice/frmelement.h"
#include "support/plotted.h"

#include <algorithm>
#include <string>
#include <vector>

namespace vael::test {

struct ElementWorld : Plotted {
    ElementWorld() { Folder.Write("atomic.dat", Ours()); }
    static std::string Ours() { return BytesOf(VAEL_SOURCE_DIR "/data/atomic.dat"); }
    [[nodiscard]] std::string File() const { return BytesOf(Folder.Path("atomic.dat")); }

    /// E = 0.05 + 0.03 X keV, with X from 1.
    void OpenOne() { Open({Spectrum("a.npd")}); }
    static double ChannelOf(double energy) { return (energy - 0.05) / 0.03 - 1.0; }

    void ShowTable() {
        EXPECT_TRUE(Click(frmVaelAna.cmdEnergy[1]));
        EXPECT_TRUE(frmAtom.Visible);
    }
    static Button& Atom(int number) {
        return frmAtom.cmdAtom[static_cast<std::size_t>(number - 1)];
    }
    static bool Marked(int number) { return Atom(number).Fill == 0xFFC0C0; }
    static Button& Kind(int kind) { return frmAtom.cmdPkDisp[static_cast<std::size_t>(kind)]; }
    static bool KindMarked(int kind) { return Kind(kind).Fill == 0xFFC0C0; }
    /// The channels of the vertical lines that a window's picture has, from the left.
    static std::vector<double> Lines(int win) {
        const DrawTarget& target = Engine().Target(win);
        std::vector<double> channels;
        for (int i = 0; i < target.VLineNum; ++i)
            channels.push_back(target.VLine[static_cast<std::size_t>(i)].X);
        std::sort(channels.begin(), channels.end());
        return channels;
    }
    /// The labels of a window's picture, in the order of their lines.
    static std::vector<std::string> Labels(int win) {
        const DrawTarget& target = Engine().Target(win);
        std::vector<std::string> labels;
        for (int i = 0; i < target.TextNum; ++i)
            labels.emplace_back(target.Text[static_cast<std::size_t>(i)].Text.data());
        return labels;
    }
    /// That a window has lines at these energies and no others, by the polynomial above.
    static void ExpectLines(int win, const std::vector<double>& energies) {
        const std::vector<double> lines = Lines(win);
        ASSERT_EQ(lines.size(), energies.size()) << "window " << win;
        for (std::size_t k = 0; k < lines.size(); ++k)
            EXPECT_NEAR(lines[k], ChannelOf(energies[k]), 0.01) << energies[k];
    }
};

}  // namespace vael::test
