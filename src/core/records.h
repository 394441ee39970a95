// The records of the workbench: spectra, their properties, graph rows, peaks and regions.
#pragma once

#include "core/cp932.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <type_traits>

namespace vael {

inline constexpr int SLOT_COUNT = 14;      // spectrum slots, 0 to 13; only 0 to 9 are handed out
inline constexpr int GRAPH_COUNT = 10;     // graph rows, 0 to 9; the user sees 1 to 10
inline constexpr int MAX_CHANNELS = 8192;  // channels of one spectrum, 0 to 8191
inline constexpr int DEFAULT_CHANNELS = 4096;  // span before a file is loaded, and the fixed length
                                               // of the background computations of the NAX fit
inline constexpr int MAX_PEAKS = 100;
inline constexpr int MAX_ROIS = 10;
inline constexpr int COLOUR_COUNT = 41;
inline constexpr int WINDOW_COUNT = 2;

/// Booleans of the system are 16-bit words.
inline constexpr std::int16_t TRUE_WORD = -1;
inline constexpr std::int16_t FALSE_WORD = 0;

/// A 16-bit word with all bits set: "not found", "every one", "a fit was run". As signed 16 bits it
/// is -1.
inline constexpr std::uint16_t ALL_BITS = 65535;

/// 32-bit RGB colour: red in the low byte, then green, then blue.
using Colour = std::int32_t;
[[nodiscard]] constexpr Colour Rgb(int red, int green, int blue) {
    return red | (green << 8) | (blue << 16);
}

/// One spectrum. Channel indices are 0-based here; what the user sees and what goes through the
/// energy polynomial is a 1-based channel number. Negative counts are legal in memory.
struct SpectrumData {
    std::int16_t DataNo;  // number of channels
    std::array<std::int32_t, MAX_CHANNELS> Count;
};

/// Bits of ParamRecord::DerivedFlags: what a slot holds.
inline constexpr std::uint16_t DERIVED_SMOOTH = 2;      // already a smoothed copy
inline constexpr std::uint16_t DERIVED_BACKGROUND = 4;  // a background graph
inline constexpr std::uint16_t DERIVED_REMOVED = 8;     // a background-removed graph
inline constexpr std::uint16_t DERIVED_FIT = 16;        // a fit graph

/// Analysis parameters of one measurement; stands a second time as the default calibration.
/// Lengths in mm, times in seconds, energy polynomial in keV with the channel counted from 1.
struct ParamRecord {
    std::int16_t MeasureType;                 // 0 and 2 real time, 1 and 3 live time, 4 separate
    double PresetReal;                        // cleared, and read by nothing
    double PresetLive;                        // cleared, and read by nothing
    std::array<std::uint8_t, 12> SpareBlock;  // carried unread
    std::array<double, 3> EgcCoef;            // E = a + b X + c X X
    double TwoTheta;                          // degrees
    double Volt;                              // V
    double RingCurrent;                       // mA
    double Pressure;                          // GPa
    double Temperature;                       // degrees Celsius
    double IonChamber;                        // mV
    double CountRate;                         // counts per second
    std::int16_t GainWord;                    // carried unread
    double RealTime;
    double LiveTime;
    std::uint16_t DerivedFlags;
    double PressX, PressY, PressZ, PressTZ;
    double HGonioX, HGonioY, HGonioZ;
    double HGonioSpare;  // carried unread
    double VGonioX, VGonioY, VGonioZ, VGonioAngle;
    double PressLoad;  // ton
    double RamStroke;
    double Power;       // W
    double Resistance;  // milliohm
    double RingStatus;  // the same text as RingCurrent when read from NPD
    double DeadTime;    // percent
    double InSlitV, InSlitH, InSlitX, InSlitZ, InSlitTY;
    double ReSlitV, ReSlitH, ReSlitX, ReSlitZ, ReSlitTY;
    double CollimatorSize;
    double Current2;                      // A
    std::array<std::uint8_t, 214> Spare;  // kept in the file, carried unread
    std::array<std::uint8_t, 82> Tail;    // stands in no file, left as it was on read
};

/// Kinds of file as `SourceType` tells them.
inline constexpr std::int16_t SOURCE_NATIVE = 1;
inline constexpr std::int16_t SOURCE_REPORT = 3;
inline constexpr std::int16_t SOURCE_NPD = 4;
inline constexpr std::int16_t SOURCE_DAC = 5;

/// What is known of a measurement.
struct PropertyRecord {
    std::int16_t RecordValid;  // 1 when the record belongs to a saved or loaded file
    FixedText<64> FileName;    // base name of the file without folder
    FixedText<64> SampleName;
    FixedText<8> OpDate;     // YYYYMMDD
    FixedText<6> OpTime;     // HHMMSS
    FixedText<6> TimeSpare;  // cleared with the others, and read by nothing
    FixedText<30> OpName;
    FixedText<100> Memo;
    std::int16_t SourceType;
    std::array<std::int16_t, 10> SpareFlags;   // carried unread
    std::array<FixedText<100>, 11> SpareText;  // carried unread
    ParamRecord Param;
};

/// One row of the graph list; a row points to a slot.
struct GraphEntry {
    std::int16_t State = 0;    // 0 empty, 1 loaded and in step with its file, 2 changed, not saved
    std::int16_t WinNo = 0;    // window 0 or 1
    std::int16_t DataNo = 0;   // slot
    std::int16_t Visible = 0;  // -1 drawn, 0 hidden
    std::string Name;          // file name with extension, or one of the four derived names
    Colour Color = 0;
};

/// Names of the derived graphs: they are found again by exact comparison.
inline constexpr const char* NAME_SMOOTH = "Smooth";
inline constexpr const char* NAME_BACKGROUND = "BackGraund";
inline constexpr const char* NAME_REMOVED = "BackRemv";
inline constexpr const char* NAME_FIT = "Fit";

/// Peak shapes of PeakRecord::FuncType.
inline constexpr std::int16_t SHAPE_GAUSS = 1;
inline constexpr std::int16_t SHAPE_LORENTZ = 2;
inline constexpr std::int16_t SHAPE_MIX = 3;

/// One peak of a slot's table.
struct PeakRecord {
    std::uint16_t FitState;  // 0 searched only, 65535 a fit was run on it
    std::int16_t FuncType;
    double Amplitude;   // height above background, counts
    double GaussRatio;  // Gaussian share of the height, 0 to 1
    double Width;       // half width at half maximum, channels
    double Position;    // centre, 0-based channels; exactly 0 marks an empty record
    double BackConst;
    double BackSlope;
    std::int16_t StartCh;  // first and last channel of the fit region
    std::int16_t EndCh;
    double Intensity;     // summed area of the shape, counts
    std::uint32_t Spare;  // carried unread
    std::int16_t Fitted;  // 1 once a single-peak fit has written the record
    bool operator==(const PeakRecord&) const = default;
};

/// The peaks of one slot, rows 0 to PeakNum - 1, inserted by ascending Position. A centre that is
/// typed into the peak report stays in its row.
struct PeakTable {
    std::int16_t PeakNum;
    std::array<PeakRecord, MAX_PEAKS> Peak;
    bool operator==(const PeakTable&) const = default;
};

/// One region of interest.
struct RoiRecord {
    std::uint16_t DataNo;  // slot; 65535 in a query means any slot
    std::int16_t StartCh;  // inclusive
    std::int16_t EndCh;    // inclusive
    double MaxCount;       // 0 if no channel exceeds 0
    double MaxCh;          // channel of that count
    double TotalCount;
    Colour Color;
};

/// The one table of regions; rows 0 to RoiNum - 1, ordered by StartCh at insertion.
struct RoiList {
    std::int16_t RoiNum;
    std::array<RoiRecord, MAX_ROIS> RoiTable;
};

static_assert(std::is_trivially_copyable_v<SpectrumData>);
static_assert(std::is_trivially_copyable_v<PropertyRecord>);
static_assert(std::is_trivially_copyable_v<PeakTable>);
static_assert(std::is_trivially_copyable_v<RoiList>);

/// Axis of a DAC spectrum: 2 theta = Offset + Slope * channel in degrees, Lambda in angstrom.
struct DacAxis {
    double Offset = 0.0;
    double Slope = 0.0;
    double Lambda = 0.49576;
};

}  // namespace vael
