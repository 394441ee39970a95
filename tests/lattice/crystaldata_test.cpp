// The shipped crystal table: made by the tool to the byte, complete by the rules of each group.
#include "structure.h"

#include "core/fault.h"
#include "lattice/geometry.h"
#include "lattice/pressure.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <fstream>
#include <functional>
#include <map>
#include <numbers>
#include <set>
#include <sstream>

using namespace vael;

namespace {

const std::string PATH = std::string(VAEL_SOURCE_DIR) + "/data/crystal.dat";

bool Even(int i) { return i % 2 == 0; }
bool Multiple(int i, int n) { return i % n == 0; }

/// The reflection conditions as the tables of space groups print them, and those of the places of
/// the atoms, by hand.
const std::map<std::string, std::function<bool(int, int, int)>>& Conditions() {
    static const auto all = [](int, int, int) { return true; };
    static const auto f = [](int h, int k, int l) { return Even(h + k) && Even(k + l); };
    static const auto i = [](int h, int k, int l) { return Even(h + k + l); };
    static const auto diamond = [](int h, int k, int l) {
        return f(h, k, l) && (!Even(h) || Multiple(h + k + l, 4));
    };
    static const auto spinel = [](int h, int k, int l) {
        if (!f(h, k, l)) return false;
        if (h == 0 && !Multiple(k + l, 4)) return false;
        if (k == 0 && !Multiple(h + l, 4)) return false;
        return l != 0 || Multiple(h + k, 4);
    };
    static const auto hcp = [](int h, int k, int l) { return !Multiple(h - k, 3) || Even(l); };
    static const auto corundum = [](int h, int k, int l) {
        if (!Multiple(-h + k + l, 3)) return false;
        return (h != 0 && k != 0 && h + k != 0) || Even(l);
    };
    static const auto quartz = [](int h, int k, int l) {
        return h != 0 || k != 0 || Multiple(l, 3);
    };
    static const auto rutile = [](int h, int k, int l) {
        return (h != 0 || Even(k + l)) && (k != 0 || Even(h + l));
    };
    static const auto zircon = [](int h, int k, int l) {
        if (!Even(h + k + l)) return false;
        if (l == 0 && !(Even(h) && Even(k))) return false;
        return std::abs(h) != std::abs(k) || Multiple(2 * h + l, 4);
    };
    static const auto pbnm = [](int h, int k, int l) {
        if (h == 0 && !Even(k)) return false;
        if (k == 0 && !Even(h + l)) return false;
        return h != 0 || k != 0 || Even(l);
    };
    static const auto c2c = [](int h, int k, int l) {
        return Even(h + k) && (k != 0 || (Even(h) && Even(l)));
    };
    static const std::map<std::string, std::function<bool(int, int, int)>> map{
        {"Fe", i},
        {"NACL", f},
        {"Pt", f},
        {"Au", f},
        {"MgO", f},
        {"hBN", hcp},
        {"Pt_B", f},
        {"CeO2", f},
        {"TiC", f},
        {"Al2O3", corundum},
        {"Si", diamond},
        {"Cu", f},
        {"Al", f},
        {"W", i},
        {"Mo", i},
        {"Re", hcp},
        {"Diamond", diamond},
        {"WC", all},
        {"LaB6", all},
        {"Quartz", quartz},
        {"Stishovite", rutile},
        {"Zircon", zircon},
        {"Forsterite", pbnm},
        {"Bridgmanite", pbnm},
        {"Ringwoodite", spinel},
        {"Coesite", c2c},
        {"Diopside", c2c},
        {"Kyanite", all}};
    return map;
}

/// All different d at `least` or above that the conditions allow, falling; from the metric of the
/// direct cell by Cartesian vectors.
std::vector<double> AllowedD(const CrystalRecord& crystal, double least,
                             const std::function<bool(int, int, int)>& allowed) {
    const double rad = std::numbers::pi / 180.0;
    const double ca = std::cos(crystal.Alpha * rad), cb = std::cos(crystal.Beta * rad);
    const double cg = std::cos(crystal.Gamma * rad), sg = std::sin(crystal.Gamma * rad);
    const double y = (ca - cb * cg) / sg, z = std::sqrt(1 - cb * cb - y * y);
    // Rows of the inverse of the edge matrix (upper triangular).
    const double ax = 1 / crystal.A, ay = -cg / (sg * crystal.A);
    const double az = (cg * y / sg - cb) / (z * crystal.A);
    const double by = 1 / (sg * crystal.B), bz = -y / (sg * z * crystal.B),
                 cz = 1 / (z * crystal.C);
    std::vector<double> all;
    const auto most = [&](double edge) { return static_cast<int>(edge / least) + 1; };
    for (int h = -most(crystal.A); h <= most(crystal.A); ++h)
        for (int k = -most(crystal.B); k <= most(crystal.B); ++k)
            for (int l = -most(crystal.C); l <= most(crystal.C); ++l) {
                if ((h == 0 && k == 0 && l == 0) || !allowed(h, k, l)) continue;
                const double gx = h * ax, gy = h * ay + k * by, gz = h * az + k * bz + l * cz;
                const double d = 1 / std::sqrt(gx * gx + gy * gy + gz * gz);
                if (d >= least * (1 - 1e-10)) all.push_back(d);
            }
    std::sort(all.rbegin(), all.rend());
    std::vector<double> different;
    for (const double d : all)
        if (different.empty() || different.back() - d > 1e-8 * d) different.push_back(d);
    return different;
}

}  // namespace

TEST(CrystalData, IsByteForByteWhatTheToolMakes) {
    std::ifstream in(PATH, std::ios::binary);
    ASSERT_TRUE(in);
    std::ostringstream text;
    text << in.rdbuf();
    EXPECT_TRUE(text.str() == tools::CrystalFileText()) << "run vael-crystals data/crystal.dat";
}

TEST(CrystalData, HasASampleThenTheSixMarkersThenTheOthers) {
    const CrystalTable table = ReadCrystalFile(PATH);
    EXPECT_GE(table.CrystalCount, 24);
    EXPECT_LE(table.CrystalCount, 31);
    EXPECT_FALSE(FindScale(MarkerKey(table.Crystals[0].Name)));
    const char* markers[] = {"NACL", "Pt", "Au", "MgO", "hBN", "Pt_B"};
    for (std::size_t i = 0; i < 6; ++i)
        EXPECT_EQ(MarkerKey(table.Crystals[i + 1].Name), markers[i]);
    std::set<int> systems;
    std::set<std::string> keys;
    for (int i = 0; i < table.CrystalCount; ++i) {
        const CrystalRecord& crystal = table.Crystals[static_cast<std::size_t>(i)];
        systems.insert(crystal.System);
        keys.insert(MarkerKey(crystal.Name));
        EXPECT_GT(crystal.Count, 0);
        EXPECT_LE(crystal.Name.size(), 30u) << crystal.Name;
        EXPECT_EQ(crystal.Name.find_first_of(",\""), std::string::npos);
        if (i > 6) {
            EXPECT_FALSE(FindScale(MarkerKey(crystal.Name)));
        }
    }
    EXPECT_EQ(systems.size(), 6u);
    EXPECT_EQ(static_cast<int>(keys.size()), table.CrystalCount);
}

TEST(CrystalData, HoldsTheReferenceCells) {
    const CrystalTable table = ReadCrystalFile(PATH);
    const auto cell = [&](const char* key) {
        return Item(table.Crystals, FindCrystal(table, key));
    };
    EXPECT_EQ(cell("Au").A, 4.0786);
    EXPECT_EQ(cell("CeO2").A, 5.41165);
    EXPECT_EQ(cell("TiC").A, 4.316);
    EXPECT_EQ(cell("MgO").A, 4.2112);
    EXPECT_EQ(cell("Fe").A, 2.8665);
    EXPECT_EQ(cell("Al2O3").A, 4.7592);
    EXPECT_EQ(cell("Al2O3").C, 12.992);
    EXPECT_EQ(cell("Pt").A, 3.9231);
    EXPECT_EQ(cell("Gold").A, 4.0786);
}

TEST(CrystalData, ReflectionsAreCompleteByTheConditionsInOrderOfFallingD) {
    const CrystalTable table = ReadCrystalFile(PATH);
    for (int i = 0; i < table.CrystalCount; ++i) {
        CrystalRecord crystal = table.Crystals[static_cast<std::size_t>(i)];
        const std::string key = MarkerKey(crystal.Name);
        ASSERT_EQ(Conditions().count(key), 1u) << key;
        CalcDSpacings(crystal, crystal.ReferenceCell());
        std::vector<double> listed(crystal.D.begin(), crystal.D.begin() + crystal.Count);
        const auto expected = AllowedD(crystal, listed.back(), Conditions().at(key));
        ASSERT_EQ(listed.size(), expected.size()) << key;
        for (std::size_t row = 0; row < listed.size(); ++row)
            ASSERT_NEAR(listed[row], expected[row], 1e-8) << key << " row " << row;
        for (int row = 0; row < crystal.Count; ++row)
            EXPECT_TRUE(Conditions().at(key)(Item(crystal.Hs, row), Item(crystal.Ks, row),
                                             Item(crystal.Ls, row)))
                << key << " row " << row;
    }
}

TEST(CrystalData, TheFirstLinesHaveTheNamesOfTheTextbooks) {
    const CrystalTable table = ReadCrystalFile(PATH);
    const auto lines = [&](const char* key, int count) {
        const CrystalRecord& crystal = Item(table.Crystals, FindCrystal(table, key));
        std::string text;
        for (int i = 0; i < count; ++i)
            text += (i ? " " : "") + std::to_string(Item(crystal.Hs, i)) +
                    std::to_string(Item(crystal.Ks, i)) + std::to_string(Item(crystal.Ls, i));
        return text;
    };
    EXPECT_EQ(lines("Au", 10), "111 200 220 311 222 400 331 420 422 511");
    EXPECT_EQ(lines("Fe", 7), "110 200 211 220 310 222 321");
    EXPECT_EQ(lines("Si", 8), "111 220 311 400 331 422 511 440");
    EXPECT_EQ(lines("Al2O3", 9), "012 104 110 006 113 202 024 116 211");
    EXPECT_EQ(lines("hBN", 6), "002 100 101 102 004 103");
    EXPECT_EQ(lines("Quartz", 6), "100 101 110 102 111 200");
    EXPECT_EQ(lines("Stishovite", 6), "110 101 200 111 210 211");
    EXPECT_EQ(lines("Zircon", 5), "101 200 211 112 220");
    EXPECT_EQ(lines("Forsterite", 6), "020 110 021 101 111 120");
    EXPECT_EQ(lines("LaB6", 6), "100 110 111 200 210 211");
    EXPECT_EQ(lines("Ringwoodite", 6), "111 220 311 222 400 331");
}

TEST(SpaceGroups, HaveTheirOrders) {
    const std::map<std::string, std::size_t> orders{
        {"Fm-3m", 192}, {"Im-3m", 96}, {"Pm-3m", 48}, {"Fd-3m", 192},  {"P63/mmc", 24},
        {"P-6m2", 12},  {"R-3c", 36},  {"P3221", 6},  {"P42/mnm", 16}, {"I41/amd", 32},
        {"Pbnm", 8},    {"C2/c", 8},   {"P-1", 2}};
    for (const tools::Structure& structure : tools::Structures())
        EXPECT_EQ(tools::MakeGroup(structure.Generators).size(), orders.at(structure.Group))
            << structure.Name;
}

TEST(SpaceGroups, AnOperationThatIsNoneIsAFault) {
    EXPECT_THROW((void)tools::ParseOp("x,y"), Fault);
    EXPECT_THROW((void)tools::ParseOp("x,y,w"), Fault);
    EXPECT_EQ(tools::ParseOp("x,y,z-1/4").T[2], 18);
    EXPECT_THROW((void)tools::FindStructure("none"), Fault);
}

TEST(PowderLines, HaveTheMultiplicitiesOfCubicCrystals) {
    const auto lines = tools::PowderLines(tools::FindStructure("Au"), {4, 4, 4, 90, 90, 90}, 0.7);
    const int expected[] = {8, 6, 12, 24, 8, 6, 24, 24, 24, 32, 12};  // 511 with 333
    ASSERT_EQ(lines.size(), std::size(expected));
    for (std::size_t i = 0; i < lines.size(); ++i) EXPECT_EQ(lines[i].Multiplicity, expected[i]);
    // Four atoms in phase: |F|^2 = 16 f^2 each.
    const double f = tools::ScatteringFactor(79, 0.5 / lines[1].D);
    EXPECT_NEAR(lines[1].SumF2, 6 * 16 * f * f, 1e-6 * lines[1].SumF2);
}
