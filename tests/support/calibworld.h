// The world of the calibration's tests: spectra of known lines, the dialog open, its file dialog.
#pragma once

#include "calibration/calibreport.h"
#include "calibration/frmcalibcurv.h"
#include "calibration/frmdialogcalibc.h"
#include "core/areamarks.h"
#include "core/cursors.h"
#include "core/frmdialogload.h"
#include "core/frmvaelana.h"
#include "support/plotted.h"

#include <string>
#include <utility>
#include <vector>

namespace vael::test::calib {

inline DialogCalibCView& v = frmDialogCalibC;

/// A line of a source: its energy in keV and the 0-based channel of its centre. One that is two
/// lines on each other is taken by "Split Fit".
struct KnownLine {
    double Energy;
    double Channel;
    bool Blend = false;
};

/// Three lines on E = 0.05 + 0.03 X, X from 1.
inline const std::vector<KnownLine> KNOWN{{18.08, 600.0}, {45.083, 1500.1}, {81.11, 2701.0}};

struct Calibrated : Plotted {
    explicit Calibrated(bool open = true) {
        if (open) Click(frmVaelAna.mnuCons);
        EXPECT_EQ(v.Visible, open);
    }
    std::string Source(const std::string& name) {
        std::vector<GaussLine> lines;
        for (const KnownLine& line : KNOWN) lines.push_back({line.Channel, 8000.0, 9.0});
        return Spectrum(name, 4096, lines);
    }
    /// "File Open" with these files of one folder typed into the dialog.
    void OpenFiles(const std::vector<std::string>& paths) {
        Desk.OnModal([paths](View&) {
            std::string names;
            for (const std::string& path : paths) {
                const std::size_t slash = path.rfind('/');
                frmDialogLoad.Directory(path.substr(0, slash));
                names += (names.empty() ? "" : ";") + path.substr(slash + 1);
            }
            Type(frmDialogLoad.txtSelFile, names);
            Click(frmDialogLoad.cmdSet);
        });
        EXPECT_TRUE(Click(v.cmdFileOpen));
    }
    static std::string Cell(int column, int row) {
        return std::as_const(v.vaSpread1).At(column, row).Text;
    }
    static void Row(int row, const std::string& channel, const std::string& energy) {
        EXPECT_TRUE(Edit(v.vaSpread1, DialogCalibCView::CHANNEL, row, channel));
        EXPECT_TRUE(Edit(v.vaSpread1, DialogCalibCView::ENERGY, row, energy));
    }
    static void Area(int from, int to) {
        frmVaelAna.chkArea.Value = 1;
        SetArea(from, to);
    }
    /// Fits each line in an area of its own and types its energy beside it.
    static void FitLines(const std::vector<KnownLine>& lines, int reach) {
        int row = 0;
        for (const KnownLine& line : lines) {
            const int middle = static_cast<int>(line.Channel);
            Area(middle - reach, middle + reach);
            EXPECT_TRUE(Click(v.cmdAuto[line.Blend ? 0 : 1]));
            ++row;
            EXPECT_TRUE(
                Edit(v.vaSpread1, DialogCalibCView::ENERGY, row, std::to_string(line.Energy)));
        }
    }
    static std::string Status() { return frmVaelAna.lblStatus.Caption; }
    static CalibConstants Shown() {
        return {v.ImConst[0].Value, v.ImConst[1].Value, v.ImConst[2].Value};
    }
    std::string Report() const { return BytesOf(Folder.Path(CALIB_REPORT)); }
    void ExpectReport() { Desk.ExpectQuestion("Parameter saved as " + Folder.Path(CALIB_REPORT)); }
};

}  // namespace vael::test::calib
