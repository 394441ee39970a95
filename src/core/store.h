// The program's memory: one fixed store of spectra, graph rows, peaks, regions and settings.
#pragma once

#include "core/records.h"

#include <array>
#include <cstdint>
#include <string>

namespace vael {

/// What the settings dialog edits. On the first start, where no parameter file can be read, these
/// are the dialog's own values.
struct Settings {
    std::int16_t FuncType = SHAPE_GAUSS;
    std::int16_t SmoothIndex = 0;    // 0 "5 Point" to 3 "11 Point"
    std::int16_t PeakThres = 10;     // 1 to 20
    std::int16_t BackInterval = 20;  // channels
    std::int16_t BackTimes = 5;
    double EACPS = 0.2;            // "BG Coefficient"
    double ISPPK = 20.0;           // "Peak Width(Ch)"
    double Lambda = 0.49576;       // "Lambda(for DAC)", angstrom
    double JudgeRange = 0.03;      // "Pickup range", angstrom of d
    std::int16_t SmoothingOn = 1;  // 1 when the smooth button really smooths

    /// The pick-up range of the matching is the same variable under its second name.
    [[nodiscard]] double& PickupRange() { return JudgeRange; }
};

/// Pools are 14 slots, the allocator hands out 10: deliberate, like the rest of these limits.
struct Store {
    std::array<SpectrumData, SLOT_COUNT> SpectrumDatas{};
    std::array<PropertyRecord, SLOT_COUNT> PropertyRecords{};
    std::array<PeakTable, SLOT_COUNT> PeakTables{};
    std::array<PeakTable, SLOT_COUNT> HandPeaks{};  // those of a table that came by hand
    std::array<GraphEntry, GRAPH_COUNT> GraphList{};
    std::array<std::int16_t, GRAPH_COUNT> SlotUsed{};  // -1 when slot n is allocated
    std::int16_t GraphTotal = 0;                       // count of allocated slots
    RoiList Rois{};
    /// Slot of the spectrum whose peaks slot n shows as a fit graph, from 1; 0 for none.
    std::array<std::int16_t, SLOT_COUNT> FitSource{};

    std::array<Colour, COLOUR_COUNT> ColorTable{};  // its order: display/colourtable.h
    ParamRecord DefaultParam{};
    std::int16_t SpanCh = DEFAULT_CHANNELS;  // largest channel count loaded since start
    std::int16_t UseFileEgc = 1;             // non-zero: each slot's own calibration
    std::int16_t FitMode = 0;                // 0 NaxFitting, 1 ExpressFitting
    std::int16_t AreaFitDone = 0;            // -1 after a NAX run succeeded
    std::int16_t LastSourceType = 0;
    std::int16_t FixedDefault = 1;  // 0: the parameter file has a second record
    double DacOffset = 0.0;         // degrees
    double DacSlope = 0.0;          // degrees a channel
    std::array<std::int32_t, MAX_CHANNELS> BackGroundBuf{};  // result of the NAX background
    std::string DataDrive;
    std::string DataFolder;
    std::string UserDataFolder;
    std::string ProgramFolder;                    // without a closing separator
    std::array<std::uint8_t, 64> DisplayBlock{};  // loaded and saved whole, read by nothing
    std::int16_t FilterIndex = 0;                 // last filter of the file dialog
};

inline Store store;
inline Settings settings;

/// The axis of DAC spectra as the store holds it.
[[nodiscard]] DacAxis DacNow();

/// The calibration in force for a slot: its own record, or the default one.
[[nodiscard]] const ParamRecord& ParamInForce(int slot);

/// Clear helpers, each for one slot or for all 14 with -1. Faults: Subscript.
void ClearProperty(int slot);  // texts to blanks, numbers to zero
void ClearSpectrum(int slot);  // channel count and all counts to zero
void SetDefaultEgc(int slot);  // polynomial and 2 theta from DefaultParam

}  // namespace vael
