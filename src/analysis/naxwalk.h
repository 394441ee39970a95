// The NAX runs: the walk that finds and fits every peak of a spectrum, and the manual fit.
#pragma once

#include "analysis/marks.h"
#include "analysis/naxfit.h"
#include "core/records.h"
#include "core/talk.h"

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace vael {

/// How the log line of a fitted group begins, by which a caller can count them.
inline constexpr std::string_view NAX_GROUP_LINE = "CH ";

/// What the tables of a run leave open, each with the reason for it. The figures behind them are
/// those of 150 seeded spectra of each kind, never of a measured one: docs/numerics.md has them
/// with the command that makes them.
struct NaxFilledIn {
    /// Rounds of "fit the peaks, then the background with the peaks taken off". A line of full
    /// width 20 comes out at 19.79 after one, 19.87 after three; each further one costs a fit.
    int Rounds = 3;
    /// A step that raises the sum of squares is halved so many times at most. A guard for weak
    /// candidates on the skirt of a strong peak; seeded spectra hardly ever need it.
    int Halvings = 5;
    /// A height below so many of its standard errors is noise: the least whole number that leaves
    /// no false peak among separated ones, raw or smoothed, and takes away no true one.
    double LeastHeight = 6.0;
    /// Lags over which the residuals' correlation is summed for that error: the filter of five
    /// points correlates channels up to four apart.
    int Lags = 4;
    /// The least full width in channels: below two channels nothing is sampled. The most is the
    /// reach of a region beyond its candidates (entry 6): what is as wide is background.
    double LeastFwhm = 2.0;
    /// Two peaks nearer than this share of the larger full width are one: a search by parabolas
    /// over 21 channels does not tell such a pair, so the lower one has wandered there. Beside
    /// strong peaks with skirts it takes away 384 of 839 left-over ones.
    double LeastApart = 0.5;
    /// The first background wants so many channels more than it has terms, and a slope or a
    /// curvature wants them to span this share of the region: else it is carried on over the peaks
    /// from one end, and half the lines of a comb are lost. Where they do not, the distance kept
    /// from the candidates shrinks to three quarters, again and again down to LeastDistance; then
    /// the background loses a term.
    int SpareChannels = 3;
    double LeastSpan = 0.5;
    double Shrink = 0.75;
    double LeastDistance = 4.0;
};

/// What a run is given. Channels of the walk are 1-based; a last channel of 0 is the spectrum's own
/// end, and 4096 is the end of all.
struct NaxSettings {
    double EACPS = 0.2;                   // "BG Coefficient"
    double ISPPK = 20.0;                  // "Peak Width(Ch)"
    std::int16_t FuncType = SHAPE_GAUSS;  // written to the records; the fit is Gaussian always
    std::int16_t FirstCh = 1;
    std::int16_t LastCh = 0;
    double TwoTheta = 0.0;  // degrees, of the graph
    NaxFilledIn Filled{};
};

/// One peak of the walk, channels 1-based.
struct NaxPeakRow {
    double Position = 0.0;
    double Height = 0.0;
    double Fwhm = 0.0;           // full width at half maximum, channels
    double OwnWidth = 0.0;       // the width that the search told
    double PositionError = 0.0;  // standard errors
    double HeightError = 0.0;
    double FwhmError = 0.0;
    int Group = 0;  // index in NaxResult::Groups
};

/// One group that was fitted: its channels (1-based, inclusive) and the background over them,
/// a + b d + c d d with d = channel - P. Status is "CONV", "MXST" (passes used up) or "DIV " (the
/// solver failed, or no peak was left).
struct NaxGroup {
    int From = 0;
    int To = 0;
    double A = 0.0, B = 0.0, C = 0.0, P = 0.0;
    std::string Status{};
    int Passes = 0;
    int Candidates = 0;
    int Peaks = 0;
};

/// What a run gives. `Result` is -1 when a manual fit failed or an automatic run found nothing.
struct NaxResult {
    std::int16_t Result = 0;
    std::vector<NaxPeakRow> Peaks;  // by rising position
    std::vector<NaxGroup> Groups;
    int Candidates = 0;  // of the search, of which at most 100 are kept
    NaxOutcome Outcome;  // of a manual fit
};

/// The automatic run: search, groups, fits. The log gets a line for each group (its channels, its
/// peaks, "CONV", "MXST" or "DIV ") and for each refused peak; with no peak left the words "NO
/// PEAKS ARE FOUND" are said. `state` is cleared first; NaxBackground in it is the image of the
/// groups' backgrounds, 0 where no group reached. Faults: those of the fit.
NaxResult NaxFitAll(const SpectrumData& spectrum, const NaxSettings& settings, NaxState& state,
                    const Talk& talk);

/// Start values of one peak of a manual fit: 1-based channel, counts above background, full width.
struct NaxManualPeak {
    double CenterCh = 0.0;
    double MaxCount = 0.0;
    double Width = 0.0;
};

/// A constraint row. `Letter` is "A", "P" or "W" in either case. `Link` "C" or "c" links the
/// parameter to that of peak `Master`: offset: value = master - Value; ratio: value = master *
/// Value. Any other `Link` fixes the parameter at its start value. Peaks count from 1.
struct NaxConstraint {
    int Peak = 0;
    char Letter = 'A';
    char Link = ' ';
    int Master = 0;
    NaxLink Type = NAX_LINK_NONE;
    double Value = 0.0;
};

/// What the manual dialog states: at most 5 peaks there; here as many
/// as leave at most 27 free parameters.
struct NaxManualInput {
    std::int16_t StartCh = 0;  // 1-based, inclusive
    std::int16_t EndCh = 0;
    std::vector<NaxManualPeak> Peaks;
    std::vector<NaxConstraint> Constraints;
};

/// Reads the manual input into the state: region, start values, constraints. Result 0, or 1 when
/// the region (over 500 channels, outside the spectrum, upside down), the peaks or a constraint
/// cannot be worked with.
[[nodiscard]] int COND(const NaxManualInput& input, NaxState& state);

/// The manual run: `COND`, the damped loop, a line to the log for each parameter. Its words: "Error
/// in Function COND", "Failed to fit" (the loop did not converge), "Can not fit" (a run-time error
/// inside, which ends here). Peaks are given only when the fit converged or stopped on a small
/// chi-square.
NaxResult NaxFitManual(const NaxManualInput& input, const SpectrumData& spectrum,
                       const NaxSettings& settings, NaxState& state, const Talk& talk);

/// Where the results of a run go: the slot's spectrum and peak table, and the buffer of the NAX
/// background (0-based channels, cleared first).
struct NaxTarget {
    int Window = 0;
    int Slot = 0;
    const SpectrumData& Spectrum;
    PeakTable& Peaks;
    std::span<std::int32_t> Background;
};

/// Writes the rows of an automatic run up to the first of height 0 into the peak table, which the
/// caller has emptied, with their areas and parted regions, and the background into the buffer.
void NaxStoreAll(const NaxResult& result, std::int16_t funcType, const NaxTarget& target,
                 const Marks& marks);

/// The same for a manual run: its peaks join those that are in the table.
void NaxStoreManual(const NaxResult& result, std::int16_t funcType, const NaxTarget& target,
                    const Marks& marks);

/// The BG coefficient that holds one false peak a spectrum: the larger of 0.2 and 0.02 times the
/// square root of the spectrum's median count.
[[nodiscard]] double AutoBgCoefficient(const SpectrumData& spectrum);

}  // namespace vael
