// A world with spectra opened and fitted, for tests of the plots.
#pragma once

#include "support/spectra.h"
#include "support/world.h"

#include "core/graphs.h"
#include "core/windows.h"

#include <string>
#include <utility>
#include <vector>

namespace vael {

struct Plotted : World {
    std::string Spectrum(const std::string& name, int channels = 4096,
                         const std::vector<GaussLine>& lines = {{1000.0, 5000.0, 10.0}}) {
        return Folder.Write(name, NpdText(GaussCounts(channels, 10, lines), name));
    }
    void Open(std::vector<std::string> paths) {
        Desk.ChooseFiles(std::move(paths));
        Click(frmVaelAna.mnuLoad);
    }
    /// The pixel of a channel in a window without a desktop.
    static double PixelOf(int win, int channel) {
        const WindowState& w = frmVaelAna.Windows[static_cast<std::size_t>(win)];
        const double width = frmVaelAna.picGraph[static_cast<std::size_t>(win)].Width - 1;
        return width * (channel - w.Start) / (w.Span - 1.0);
    }
    static Picture& Plot(int win) { return frmVaelAna.picGraph[static_cast<std::size_t>(win)]; }
    static void Drag(int win, double from, double to) {
        MouseDown(Plot(win), MouseButton::Left, from, 50);
        MouseMove(Plot(win), MouseButton::Left, (from + to) / 2, 50);
        MouseMove(Plot(win), MouseButton::Left, to, 50);
        MouseUp(Plot(win), MouseButton::Left, to, 50);
    }
    static bool Press(KeyPress::Name name, bool shift = false, bool ctrl = false,
                      bool alt = false) {
        return Key(frmVaelAna, {.Key = name, .Shift = shift, .Ctrl = ctrl, .Alt = alt});
    }
    /// Marks of a group that stand on a window's picture.
    static int MarksOf(int win, int group) {
        const DrawTarget& target = Engine().Target(win);
        int n = 0;
        for (int i = 0; i < target.MarkNum; ++i)
            n += target.Mark[static_cast<std::size_t>(i)].Kind == group ? 1 : 0;
        return n;
    }
    void AddPeakAt(int slot, double position, double width = 5.0, double amplitude = 4000.0) {
        PeakTable& table = store.PeakTables[static_cast<std::size_t>(slot)];
        PeakRecord& peak = table.Peak[static_cast<std::size_t>(table.PeakNum++)];
        peak.FitState = ALL_BITS;
        peak.FuncType = SHAPE_GAUSS;
        peak.Position = position;
        peak.Width = width;
        peak.Amplitude = amplitude;
        peak.GaussRatio = 1.0;
        peak.Intensity = 12345.67;
    }
};

}  // namespace vael
