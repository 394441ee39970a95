// What survives each form: a full spectrum written and read again through the extension table.
#include "support/spectra.h"
#include "support/world.h"

#include "core/fault.h"
#include "files/extensions.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <map>
#include <memory>
#include <set>

using namespace vael;

namespace {

struct Slot {
    SpectrumData Data{};
    PropertyRecord Prop = BlankProperty();
    PeakTable Peaks{};
};

/// Every named thing with a value of its own; numbers with the few decimals that texts keep.
std::unique_ptr<Slot> Full(int channels) {
    auto slot = std::make_unique<Slot>();
    slot->Data.DataNo = static_cast<std::int16_t>(channels);
    for (int i = 0; i < channels; ++i) Item(slot->Data.Count, i) = i * 3 - 20;
    PropertyRecord& p = slot->Prop;
    p.RecordValid = 1;
    p.FileName = "AuWire";
    p.SampleName = "金の線";
    p.OpDate = "19990102";
    p.OpTime = "090807";
    p.OpName = "佐藤";
    p.Memo = "a comment";
    p.SpareText[3] = "spare";
    ParamRecord& q = p.Param;
    q.MeasureType = 1;
    q.EgcCoef = {0.125, 0.03125, 0.00390625};
    double value = 1.25;
    for (double* field :
         {&q.TwoTheta, &q.Volt,       &q.RingCurrent,    &q.IonChamber, &q.CountRate, &q.RealTime,
          &q.PressX,   &q.PressY,     &q.PressZ,         &q.PressTZ,    &q.HGonioX,   &q.PressLoad,
          &q.Power,    &q.Resistance, &q.DeadTime,       &q.InSlitV,    &q.InSlitH,   &q.InSlitX,
          &q.ReSlitV,  &q.ReSlitH,    &q.CollimatorSize, &q.Current2})
        *field = value += 1.5;
    q.Pressure = 8.5;
    q.Temperature = 26.5;
    q.LiveTime = channels;
    slot->Peaks.PeakNum = 1;
    slot->Peaks.Peak[0].Position = 12.5;
    return slot;
}

/// One thing that a form may keep: whether it is alike in both.
using Alike = std::function<bool(const Slot&, const Slot&)>;

template <class Get>
Alike Same(Get get) {
    return [get](const Slot& a, const Slot& b) { return get(a) == get(b); };
}

Alike Close(double ParamRecord::*field) {
    return [field](const Slot& a, const Slot& b) {
        return std::fabs(a.Prop.Param.*field - b.Prop.Param.*field) < 1e-9;
    };
}

const std::map<std::string, Alike>& Things() {
    static const std::map<std::string, Alike> things{
        {"length", Same([](const Slot& s) { return s.Data.DataNo; })},
        {"counts", Same([](const Slot& s) { return s.Data.Count; })},
        {"file name", Same([](const Slot& s) { return s.Prop.FileName; })},
        {"sample name", Same([](const Slot& s) { return s.Prop.SampleName; })},
        {"date", Same([](const Slot& s) { return s.Prop.OpDate; })},
        {"time", Same([](const Slot& s) { return s.Prop.OpTime; })},
        {"operator", Same([](const Slot& s) { return s.Prop.OpName; })},
        {"memo", Same([](const Slot& s) { return s.Prop.Memo; })},
        {"spare texts", Same([](const Slot& s) { return s.Prop.SpareText; })},
        {"mode", Same([](const Slot& s) { return s.Prop.Param.MeasureType; })},
        {"offset", Same([](const Slot& s) { return s.Prop.Param.EgcCoef[0]; })},
        {"slope", Same([](const Slot& s) { return s.Prop.Param.EgcCoef[1]; })},
        {"curvature",
         [](const Slot& a, const Slot& b) {  // six digits in a text
             return std::fabs(a.Prop.Param.EgcCoef[2] - b.Prop.Param.EgcCoef[2]) < 1e-8;
         }},
        {"2 theta", Close(&ParamRecord::TwoTheta)},
        {"live time", Close(&ParamRecord::LiveTime)},
        {"real time", Close(&ParamRecord::RealTime)},
        {"dead time", Close(&ParamRecord::DeadTime)},
        {"temperature", Close(&ParamRecord::Temperature)},
        {"pressure", Close(&ParamRecord::Pressure)},
        {"load", Close(&ParamRecord::PressLoad)},
        {"ring current", Close(&ParamRecord::RingCurrent)},
        {"press", Close(&ParamRecord::PressTZ)},
        {"goniometer", Close(&ParamRecord::HGonioX)},
        {"slits", Close(&ParamRecord::ReSlitH)},
        {"slit position", Close(&ParamRecord::InSlitX)},
        {"heater", Close(&ParamRecord::Resistance)},
        {"peaks", Same([](const Slot& s) { return s.Peaks; })}};
    return things;
}

std::set<std::string> Survivors(const Slot& from, const Slot& to) {
    std::set<std::string> alike;
    for (const auto& [name, same] : Things())
        if (same(from, to)) alike.insert(name);
    return alike;
}

std::set<std::string> Names() {
    std::set<std::string> names;
    for (const auto& [name, same] : Things()) names.insert(name);
    return names;
}

std::set<std::string> Without(std::set<std::string> all, const std::set<std::string>& lost) {
    for (const auto& name : lost) all.erase(name);
    return all;
}

/// The record's lines that the .npd grammar holds.
const std::set<std::string> NPD_HEADER{
    "file name", "sample name",  "date",    "time",      "operator",  "mode",      "offset",
    "slope",     "curvature",    "2 theta", "live time", "real time", "dead time", "temperature",
    "load",      "ring current", "press",   "slits",     "heater"};

struct Trip {
    const char* Written;  // extension
    const char* Read;
    std::set<std::string> Survives;
};

std::vector<Trip> Trips() {
    std::set<std::string> gsa = NPD_HEADER;
    gsa.insert({"length", "counts"});
    return {{"xbm", "xbm", Without(Names(), {"peaks"})},
            {"xbm", "042", Without(Names(), {"peaks"})},
            {"xba", "xba", Names()},
            {"npd", "gsa", gsa},
            {"rpt",
             "rpt",
             {"length", "counts", "file name", "sample name", "date", "time", "mode", "offset",
              "slope", "2 theta", "temperature", "pressure", "press"}}};
}

}  // namespace

TEST(RoundTrip, EachFormKeepsWhatItsRowTells) {
    TempFolder folder;
    for (const Trip& trip : Trips()) {
        for (const int channels : {1, 300, 8192}) {
            const auto from = Full(channels);
            const std::string path = folder.Path(std::string("a.") + trip.Written);
            std::filesystem::remove(path);
            ASSERT_EQ(KindOf(path)->Write(path, {from->Data, from->Prop, from->Peaks}, {}), -1);
            const std::string other = folder.Path(std::string("b.") + trip.Read);
            std::filesystem::rename(path, other);
            const auto to = std::make_unique<Slot>();
            std::int16_t last = 0;
            std::string said;
            FileTalk talk;
            talk.log = [&](std::string_view line) { said = line; };
            const std::int16_t done =
                ReadByExtension(other, {to->Data, to->Prop, last}, to->Peaks, talk);
            EXPECT_EQ(done, -1) << said;
            EXPECT_EQ(Survivors(*from, *to), trip.Survives)
                << trip.Written << " read as " << trip.Read << ", " << channels << " channels";
        }
    }
}

TEST(RoundTrip, AFileOfTheNpdWriterReadsInItsOwnReaderWithOneChannelLess) {
    TempFolder folder;
    const auto from = Full(300);
    from->Prop.Param.LiveTime = 299;  // the counting seconds, which it takes for the length
    const std::string path = folder.Path("a.npd");
    ASSERT_EQ(KindOf(path)->Write(path, {from->Data, from->Prop, from->Peaks}, {}), -1);
    const auto to = std::make_unique<Slot>();
    std::int16_t last = 0;
    ASSERT_EQ(ReadByExtension(path, {to->Data, to->Prop, last}, to->Peaks, {}), -1);
    std::set<std::string> expected = NPD_HEADER;
    expected.insert("memo");
    EXPECT_EQ(Survivors(*from, *to), expected);
    EXPECT_EQ(to->Data.DataNo, 299);
    for (int i = 0; i < 299; ++i) ASSERT_EQ(Item(to->Data.Count, i), Item(from->Data.Count, i + 1));
}

TEST(RoundTrip, EveryFormOfTheTableHasARowOrNoWayBack) {
    // Forms that are read or written only, and the two whose other half is told by hand.
    const std::set<std::string> oneWay{"###", "chn", "cnf", "raw", "xta", "csv"};
    std::set<std::string> rows{"gsa"};
    for (const Trip& trip : Trips()) rows.insert(trip.Written);
    for (const FileKind& kind : FileKinds()) {
        if (kind.Read != nullptr && kind.Write != nullptr)
            EXPECT_TRUE(rows.contains(kind.Extension)) << kind.Extension;
        else
            EXPECT_TRUE(oneWay.contains(kind.Extension) || rows.contains(kind.Extension))
                << kind.Extension;
    }
}
