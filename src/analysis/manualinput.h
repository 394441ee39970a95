// What a fit by hand is asked for: its rows, the rules that hold parameters, and their way to the
// fit.
#pragma once

#include "analysis/naxwalk.h"

#include <string>
#include <vector>

namespace vael {

/// How a rule holds a parameter: at its start value, at another peak's plus a value, or at another
/// peak's times a value.
enum class HeldBy { Fixed, Offset, Ratio };

/// A rule of one parameter of one peak. Peaks count from 1; an offset of a position is in
/// channels, of a height in counts, of a width in channels of full width at half maximum.
struct ManualRule {
    int Peak = 1;
    NaxKind Param = NAX_AMPLITUDE;
    HeldBy How = HeldBy::Fixed;
    int Master = 0;  // of a link
    double Value = 0.0;
};

/// A number with the decimals that it has, at most six.
[[nodiscard]] std::string ShortNumber(double value);

/// The letter of a parameter, "A", "P" or "W".
[[nodiscard]] char LetterOf(NaxKind param);

/// What the rule says, as "W2 = 1.2 * W1", "P2 = P1 + 30" or "A1 stays".
[[nodiscard]] std::string RuleReads(const ManualRule& rule);

/// Why a fit of these rows under these rules is not begun, a sentence; empty when it may be. A row
/// wants a centre, a height and a width above 0; a rule names a peak that is there, and as its
/// master another one that is there.
[[nodiscard]] std::string RefusalOf(const std::vector<NaxManualPeak>& rows,
                                    const std::vector<ManualRule>& rules);

/// Free parameters of the peaks: three to a peak less one to each rule of a peak that is there.
[[nodiscard]] int FreeParameters(int peaks, const std::vector<ManualRule>& rules);

/// Where each row goes when the rows stand by rising centre: `[i]` is the old index (from 0) of the
/// new row i. Equal centres keep their order.
[[nodiscard]] std::vector<std::size_t> OrderByCentre(const std::vector<NaxManualPeak>& rows);

/// The rules after rows were put in that order: peaks and masters are numbered anew.
[[nodiscard]] std::vector<ManualRule> Renumbered(const std::vector<ManualRule>& rules,
                                                 const std::vector<std::size_t>& order);

/// The fit's own input. It takes an offset off the master, and its widths are 1/e half widths.
[[nodiscard]] NaxManualInput ManualInputOf(int startCh, int endCh,
                                           const std::vector<NaxManualPeak>& rows,
                                           const std::vector<ManualRule>& rules);

/// Start values of a peak as they are read off the counts.
struct PeakGuess {
    double Height = 0.0;  // counts; 0 and below: there is no peak here
    double Fwhm = 0.0;    // full width at half maximum, channels
};

/// Height at the 0-based `channel`: the count above the straight line through the counts at `start`
/// and `end` where these are two channels of the spectrum that hold it between them, else the plain
/// count. Width: from the channel down to half of the height on either side, by the mean of three
/// counts, with the crossing between two channels interpolated. Where one side does not come down
/// within the line's ends or 250 channels, twice the other side; where neither does, `fallback`.
/// Faults: Subscript (a channel outside the spectrum).
[[nodiscard]] PeakGuess GuessPeak(const SpectrumData& spectrum, int channel, int start, int end,
                                  double fallback);

}  // namespace vael
