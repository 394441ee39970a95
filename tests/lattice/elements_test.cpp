// The element table: its file to the byte, what a damaged one says, and the energies that come with
// the program.
#include "lattice/elements.h"

#include "core/fault.h"
#include "support/tempfolder.h"

#include <gtest/gtest.h>

#include <fstream>
#include <map>
#include <set>
#include <sstream>
#include <string>
#include <vector>

using namespace vael;

namespace {

/// 107 lines with an atomic number and a Ka1 energy of a hundredth of it.
std::string Lines(const std::string& end = "\r\n") {
    std::string text;
    for (int number = 1; number <= ELEMENT_MAX; ++number)
        text += std::to_string(number) + ",X,,,," + std::to_string(number * 0.01) + ",,,,,,," + end;
    return text;
}

std::vector<std::string> Split(const std::string& text) {
    std::istringstream in(text);
    std::vector<std::string> lines;
    for (std::string line; std::getline(in, line);) lines.push_back(line + "\n");
    return lines;
}

std::string Join(const std::vector<std::string>& lines) {
    std::string text;
    for (const std::string& line : lines) text += line;
    return text;
}

ElementTable Read(const std::string& text) {
    std::istringstream in(text);
    return ReadElementFile(in, "atomic.dat");
}

/// The sentence of the fault that a text ends in; empty for none.
std::string Refused(const std::string& text) {
    try {
        (void)Read(text);
    } catch (const Fault& fault) {
        EXPECT_EQ(fault.Number(), FaultNumber::FileContent);
        return fault.what();
    }
    return {};
}

void ExpectRefused(const std::string& text, const std::string& place, const std::string& why) {
    const std::string said = Refused(text);
    EXPECT_EQ(said.rfind(place, 0), 0u) << said;
    EXPECT_NE(said.find(why), std::string::npos) << said;
}

const ElementTable& Ours() {
    static const ElementTable table = ReadElementFile(VAEL_SOURCE_DIR "/data/atomic.dat");
    return table;
}

double Energy(int number, int kind) { return LineEnergy(Ours(), number, kind).value_or(0.0); }

}  // namespace

// --- the file -----------------------------------------------------------------------------------

TEST(Elements, TheColumnsHaveTheirNames) {
    EXPECT_EQ(Read(Lines()).Names,
              (std::array<std::string, 12>{"Num", "Symbol", "Element", "Element Name", "Ka2", "Ka1",
                                           "Kb3", "Kb1", "Kb2", "AbsEdge", "Gamma", "KAve"}));
}

TEST(Elements, AFileComesBackToTheByte) {
    const std::string own = [] {
        std::ifstream in(VAEL_SOURCE_DIR "/data/atomic.dat", std::ios::binary);
        return std::string(std::istreambuf_iterator<char>(in), {});
    }();
    ASSERT_FALSE(own.empty());
    EXPECT_EQ(ElementFileText(Read(own)), own);
    EXPECT_EQ(ElementFileText(Read(Lines("\n"))), Lines("\n"));
    // Blanks, quotes with a comma between them, digits and bytes of the code page stay as they are.
    auto lines = Split(Lines());
    lines[57] =
        " 58 , Ce,\"Cerium, 58\",\x83\x5a\x83\x8a\x83\x45\x83\x80,34.27890, 34.7196,,,,,,,\n";
    lines[106].resize(lines[106].size() - 2);  // no line end at the end of the file
    EXPECT_EQ(ElementFileText(Read(Join(lines))), Join(lines));
    EXPECT_EQ(ElementFileText(Read(Lines() + "\r\n \x1a")), Lines() + "\r\n \x1a");
}

TEST(Elements, CellsAreReadWithoutBlanksAndQuotes) {
    auto lines = Split(Lines());
    lines[57] = "58, Ce ,\" Cerium, 58\",\x83\x5a\x83\x8a\x83\x45\x83\x80,, 34.7196 ,,,,,,,\n";
    const ElementTable table = Read(Join(lines));
    EXPECT_EQ(CellText(table, 58, ELEMENT_SYMBOL), "Ce");
    EXPECT_EQ(CellText(table, 58, ELEMENT_SHORT), "Cerium, 58");
    EXPECT_EQ(CellText(table, 58, ELEMENT_NAME), "セリウム");
    EXPECT_EQ(CellNumber(table, 58, ELEMENT_KA1), 34.7196);
    EXPECT_EQ(CellNumber(table, 58, ELEMENT_KA2), std::nullopt);
    EXPECT_EQ(LineEnergy(table, 58, LINE_KA2), std::nullopt);
}

TEST(Elements, WhatStandsBehindTheLastCommaIsDropped) {
    auto lines = Split(Lines("\n"));
    lines[3] = "4,Be,,,,,,,,,,,dropped\n";
    const ElementTable table = Read(Join(lines));
    lines[3] = "4,Be,,,,,,,,,,,,\n";
    lines[3].erase(lines[3].size() - 2, 1);
    EXPECT_EQ(ElementFileText(table), Join(lines));
}

TEST(Elements, AChangedCellChangesNothingElseInTheFile) {
    ElementTable table = Read(Lines());
    PutCell(table, 107, ELEMENT_KB2, "145.5");
    PutCell(table, 107, ELEMENT_NAME, "ボーリウム");
    auto lines = Split(Lines());
    lines[106] = "107,X,,\x83\x7b\x81\x5b\x83\x8a\x83\x45\x83\x80,,1.070000,,,145.5,,,,\r\n";
    EXPECT_EQ(ElementFileText(table), Join(lines));
    for (const char* bad : {"a,b", "a\"b", "a\nb", "a\rb"})
        EXPECT_THROW(PutCell(table, 1, ELEMENT_NAME, bad), Fault) << bad;
    EXPECT_EQ(ElementFileText(table), Join(lines)) << "a refused text changes nothing";
    EXPECT_THROW(PutCell(table, 108, ELEMENT_NAME, "x"), Fault);
    EXPECT_THROW(PutCell(table, 0, ELEMENT_NAME, "x"), Fault);
    EXPECT_THROW((void)CellText(table, 1, 12), Fault);
}

TEST(Elements, ADamagedFileIsToldWithItsLine) {
    auto lines = Split(Lines());
    const auto with = [&lines](std::size_t line, const std::string& text) {
        auto changed = lines;
        changed[line - 1] = text + "\n";
        return Join(changed);
    };
    ExpectRefused("", "atomic.dat, line 1: ", "element 1 was expected");
    ExpectRefused(Join({lines.begin(), lines.begin() + 106}),
                  "atomic.dat, line 107: ", "element 107 was expected");
    ExpectRefused(Lines() + "108,X,,,,,,,,,,,\n", "atomic.dat, line 108: ", "the end of the file");
    ExpectRefused(with(7, "7,N,,,,,,,,,,"), "atomic.dat, line 7: ", "not 11 commas");
    ExpectRefused(with(7, "7,N,,,,,,,,,,,,,"), "atomic.dat, line 7: ", "not 14 commas");
    ExpectRefused(with(7, ""), "atomic.dat, line 7: ", "not 0 commas");
    ExpectRefused(with(7, "8,O,,,,,,,,,,,"), "atomic.dat, line 7: ", "the atomic number 7");
    ExpectRefused(with(7, "7,N,,,,high,,,,,,,"), "atomic.dat, line 7: ", "\"Ka1\", not \"high\"");
    ExpectRefused(with(7, "7,N,,,,-1,,,,,,,"), "atomic.dat, line 7: ", "\"Ka1\", not \"-1\"");
    ExpectRefused(with(7, "7,N,,,,1e300,,,,,,,"), "atomic.dat, line 7: ", "not \"1e300\"");
    ExpectRefused(with(7, "7,\"N,,,,,,,,,,,"), "atomic.dat, line 7: ", "closing quote");
    ExpectRefused(with(7, "7,N," + std::string(5000, 'x')), "atomic.dat, line 7: ", "too long");
}

TEST(Elements, AMissingFileAndAFolderAreFaultsThatNameThem) {
    const TempFolder folder;
    try {
        (void)ReadElementFile(folder.Path("atomic.dat"));
        ADD_FAILURE() << "no fault";
    } catch (const Fault& fault) {
        EXPECT_EQ(fault.Number(), FaultNumber::FileMissing);
        EXPECT_NE(std::string(fault.what()).find("atomic.dat"), std::string::npos);
    }
    EXPECT_THROW((void)ReadElementFile(folder.Path()), Fault);
    EXPECT_THROW(WriteElementFile(folder.Path("none/atomic.dat"), Read(Lines())), Fault);
    EXPECT_THROW(WriteElementFile(folder.Path("atomic.dat"), ElementTable{}), Fault);
}

TEST(Elements, AWrittenFileReadsAsTheSameTable) {
    const TempFolder folder;
    WriteElementFile(folder.Path("atomic.dat"), Ours());
    EXPECT_EQ(ReadElementFile(folder.Path("atomic.dat")), Ours());
}

TEST(Elements, LineKindsHaveTheirWordsAndColumns) {
    const std::vector<std::string> words{"Ka1", "KAve", "Ka2", "Kb2", "Kb3", "Kb1", "Gamma", "Edg"};
    for (int kind = 0; kind < LINE_KINDS; ++kind) {
        EXPECT_EQ(LineKindText(kind), words[static_cast<std::size_t>(kind)]);
        const std::string column = Ours().Names[static_cast<std::size_t>(ColumnOfKind(kind))];
        EXPECT_EQ(column, kind == LINE_EDGE ? "AbsEdge" : LineKindText(kind));
    }
    EXPECT_EQ(LineKindText(8), "");
    EXPECT_THROW((void)ColumnOfKind(8), Fault);
}

// --- the table that comes with the program ------------------------------------------------------

TEST(ElementData, HasEverySymbolAndNameOnce) {
    std::set<std::string> names, symbols;
    for (int number = 1; number <= ELEMENT_MAX; ++number) {
        EXPECT_EQ(CellNumber(Ours(), number, ELEMENT_NUM), number);
        EXPECT_EQ(CellText(Ours(), number, ELEMENT_SYMBOL), ElementSymbol(number));
        EXPECT_TRUE(symbols.insert(ElementSymbol(number)).second) << number;
        EXPECT_TRUE(names.insert(CellText(Ours(), number, ELEMENT_NAME)).second) << number;
        EXPECT_FALSE(CellText(Ours(), number, ELEMENT_SHORT).empty());
    }
    // Places that a slip by one would move: one or two of each period.
    const std::map<int, std::pair<std::string, std::string>> known{
        {1, {"H", "Hydrogen"}},       {11, {"Na", "Sodium"}},    {26, {"Fe", "Iron"}},
        {43, {"Tc", "Technetium"}},   {50, {"Sn", "Tin"}},       {58, {"Ce", "Cerium"}},
        {71, {"Lu", "Lutetium"}},     {74, {"W", "Tungsten"}},   {80, {"Hg", "Mercury"}},
        {91, {"Pa", "Protactinium"}}, {95, {"Am", "Americium"}}, {107, {"Bh", "Bohrium"}}};
    for (const auto& [number, words] : known) {
        EXPECT_EQ(CellText(Ours(), number, ELEMENT_SYMBOL), words.first);
        EXPECT_EQ(CellText(Ours(), number, ELEMENT_NAME), words.second);
    }
    EXPECT_EQ(ElementSymbol(0), "");
    EXPECT_EQ(ElementSymbol(108), "");
}

TEST(ElementData, AgreesWithThePublishedLines) {
    // J. A. Bearden, Rev. Mod. Phys. 39 (1967) 78: Ka1, Ka2, Kb1 in eV; K edges: J. A. Bearden,
    // A. F. Burr, ibid. 125.
    struct Row {
        int Number;
        double Ka1, Ka2, Kb1, Edge;
    };
    const std::vector<Row> published{
        {22, 4510.84, 4504.86, 4931.81, 4966.4},  {26, 6403.84, 6390.84, 7057.98, 7112.0},
        {29, 8047.78, 8027.83, 8905.29, 8978.9},  {42, 17479.34, 17374.3, 19608.3, 19999.5},
        {47, 22162.92, 21990.3, 24942.4, 25514},  {50, 25271.3, 25044.0, 28486.0, 29200.1},
        {56, 32193.6, 31817.1, 36378.2, 37440.6}, {58, 34719.7, 34278.9, 39257.3, 40443},
        {74, 59318.24, 57981.7, 67244.3, 69525},  {79, 68803.7, 66989.5, 77984, 80724.9},
        {82, 74969.4, 72804.2, 84936, 88004.5}};
    for (const Row& row : published) {
        EXPECT_NEAR(Energy(row.Number, LINE_KA1) * 1000, row.Ka1, 3.0) << row.Number;
        EXPECT_NEAR(Energy(row.Number, LINE_KA2) * 1000, row.Ka2, 3.0) << row.Number;
        EXPECT_NEAR(Energy(row.Number, LINE_KB1) * 1000, row.Kb1, 3.0) << row.Number;
        EXPECT_NEAR(Energy(row.Number, LINE_EDGE) * 1000, row.Edge, 1.0) << row.Number;
    }
    // Table of Radionuclides, Monographie BIPM-5.
    EXPECT_NEAR(Energy(27, LINE_GAMMA), 122.061, 0.001);
    EXPECT_NEAR(Energy(48, LINE_GAMMA), 88.034, 0.001);
    EXPECT_NEAR(Energy(56, LINE_GAMMA), 80.998, 0.001);
    EXPECT_NEAR(Energy(95, LINE_GAMMA), 59.541, 0.001);
}

TEST(ElementData, TheAverageKLineWeighsKa1TwiceNearly) {
    // Ka2 to Ka1 is 0.50 for light elements and 0.62 for the heaviest (J. H. Scofield, Phys. Rev. A
    // 9 (1974) 1041).
    for (int number = 20; number <= 104; ++number) {
        const double ka1 = Energy(number, LINE_KA1), ka2 = Energy(number, LINE_KA2);
        const double mean = Energy(number, LINE_KAVE);
        EXPECT_GT(mean, (ka1 + 0.66 * ka2) / 1.66 - 1e-4) << number;
        EXPECT_LT(mean, (ka1 + 0.49 * ka2) / 1.49 + 1e-4) << number;
    }
    EXPECT_NEAR(Energy(47, LINE_KAVE), 22.104, 0.002);
}

TEST(ElementData, LinesStandInTheirOrderAndRiseWithTheAtomicNumber) {
    for (int number = 31; number <= 104; ++number) {
        EXPECT_LT(Energy(number, LINE_KA2), Energy(number, LINE_KA1)) << number;
        EXPECT_LT(Energy(number, LINE_KA1), Energy(number, LINE_KB3)) << number;
        EXPECT_LT(Energy(number, LINE_KB3), Energy(number, LINE_KB1)) << number;
        EXPECT_LE(Energy(number, LINE_KB1), Energy(number, LINE_KB2)) << number;
        if (number < 104) EXPECT_LT(Energy(number, LINE_KB2), Energy(number, LINE_EDGE)) << number;
    }
    for (const int kind :
         {LINE_KA1, LINE_KA2, LINE_KB1, LINE_KB2, LINE_KB3, LINE_EDGE, LINE_KAVE}) {
        double below = 0.0;
        for (int number = 1; number <= ELEMENT_MAX; ++number) {
            const auto energy = LineEnergy(Ours(), number, kind);
            if (!energy) continue;
            EXPECT_GT(*energy, below) << number << " " << kind;
            below = *energy;
        }
        EXPECT_GT(below, 100.0) << kind;
    }
}

TEST(ElementData, CellsAreEmptyWhereNoLineExists) {
    for (const int number : {1, 2, 3, 4, 105, 106, 107})
        for (const int kind : {LINE_KA1, LINE_KA2, LINE_KB1, LINE_KB2, LINE_KB3, LINE_KAVE})
            EXPECT_EQ(LineEnergy(Ours(), number, kind), std::nullopt) << number;
    EXPECT_EQ(LineEnergy(Ours(), 12, LINE_KB1), std::nullopt) << "magnesium has no 3p electrons";
    EXPECT_EQ(LineEnergy(Ours(), 29, LINE_KB2), std::nullopt) << "copper has no 4p electrons";
    EXPECT_EQ(LineEnergy(Ours(), 29, LINE_GAMMA), std::nullopt);
}
