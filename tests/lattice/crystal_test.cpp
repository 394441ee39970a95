// The reader of crystal.dat: field rules, limits, and what it says of a file that is wrong.
#include "lattice/crystal.h"

#include "core/cp932.h"
#include "core/fault.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <sstream>

using namespace vael;

namespace {

const std::string COMMENTS = "1\n2\n3\n4\n5\n6\n7\n8\n9\n\"ten, not closed\n";
const std::string GOLD = "\"Au Gold\",0,4.0786,4.0786,4.0786,90,90,90\n1,1,1\n2,0,0\n0,0,0\n";

CrystalTable Read(const std::string& text) {
    std::istringstream in(text);
    return ReadCrystalFile(in, "crystal.dat");
}

/// The words of the fault that a text ends in; empty when it is read.
std::string WordsOf(const std::string& text) {
    try {
        (void)Read(text);
    } catch (const Fault& fault) {
        EXPECT_EQ(fault.Number(), FaultNumber::FileContent);
        return fault.what();
    }
    return "";
}

void ExpectRefused(const std::string& text, const std::string& line, const std::string& expected) {
    const std::string words = WordsOf(text);
    EXPECT_NE(words.find("crystal.dat, line " + line + ":"), std::string::npos) << words;
    EXPECT_NE(words.find(expected), std::string::npos) << words;
}

std::string Triples(int count) {
    std::string text;
    for (int i = 1; i <= count; ++i) text += std::to_string(i) + " 0 0\n";
    return text;
}

const std::string CELL = "X 0 1 1 1 90 90 90\n";

}  // namespace

TEST(CrystalFile, ReadsNameSystemCellAndTriples) {
    const CrystalTable table = Read(COMMENTS + "1\n" + GOLD);
    ASSERT_EQ(table.CrystalCount, 1);
    const CrystalRecord& gold = table.Crystals[0];
    EXPECT_EQ(gold.Name, "Au Gold");
    EXPECT_EQ(gold.System, 0);
    EXPECT_EQ(gold.A, 4.0786);
    EXPECT_EQ(gold.Gamma, 90.0);
    ASSERT_EQ(gold.Count, 2);
    EXPECT_EQ(gold.Hs[1], 2);
    EXPECT_EQ(gold.Ks[1], 0);
    EXPECT_EQ(gold.Ls[0], 1);
}

TEST(CrystalFile, ACountOfZeroGivesAnEmptyList) {
    EXPECT_EQ(Read(COMMENTS + "0\n").CrystalCount, 0);
    EXPECT_EQ(Read(COMMENTS + "0").CrystalCount, 0);
}

TEST(CrystalFile, AnEmptyReflectionListHasCountZero) {
    EXPECT_EQ(Read(COMMENTS + "1\n" + CELL + "0 0 0\n").Crystals[0].Count, 0);
}

TEST(CrystalFile, FieldsEndAtACommaABlankOrTheLinesEnd) {
    const std::string one = "Au,0,4 4,4\n90 90 , 90\n1 1 1 2,0,0\n3\n1\n1\n\n0 0 0";
    const CrystalRecord crystal = Read(COMMENTS + "1\n" + one).Crystals[0];
    EXPECT_EQ(crystal.Name, "Au");
    EXPECT_EQ(crystal.Gamma, 90.0);
    ASSERT_EQ(crystal.Count, 3);
    EXPECT_EQ(crystal.Hs[2], 3);
    EXPECT_EQ(crystal.Ks[2], 1);
}

TEST(CrystalFile, LinesMayEndInCarriageReturnAndLineFeed) {
    std::string text = COMMENTS + "1\n" + GOLD;
    std::string both;
    for (const char c : text) both += c == '\n' ? std::string("\r\n") : std::string(1, c);
    const CrystalRecord crystal = Read(both).Crystals[0];
    EXPECT_EQ(crystal.Name, "Au Gold");
    EXPECT_EQ(crystal.Count, 2);
}

TEST(CrystalFile, QuotesKeepBlanksAndCommas) {
    const auto table = Read(COMMENTS + "1\n\" hBN, hexagonal \" 2 2.5 2.5 6.66 90 90 120 0 0 0\n");
    EXPECT_EQ(table.Crystals[0].Name, " hBN, hexagonal ");
    EXPECT_EQ(table.Crystals[0].C, 6.66);
}

TEST(CrystalFile, AnUnquotedNameRunsToTheCommaWhenOneFollowsOnItsLine) {
    EXPECT_EQ(Read(COMMENTS + "1\nAu Gold ,0,4,4,4,90,90,90\n0 0 0\n").Crystals[0].Name, "Au Gold");
    EXPECT_EQ(Read(COMMENTS + "1\nAu 0 4 4 4 90 90 90\n0,0,0\n").Crystals[0].Name, "Au");
}

TEST(CrystalFile, NamesAreCodePage932) {
    const auto table = Read(COMMENTS + "1\n" + ToCp932("\"Au 金\"") + " 0 4 4 4 90 90 90 0 0 0\n");
    EXPECT_EQ(table.Crystals[0].Name, "Au 金");
}

TEST(CrystalFile, NegativeIndicesAreKept) {
    const auto table = Read(COMMENTS + "1\n" + CELL + "-1 1 -2 0 0 0");
    EXPECT_EQ(table.Crystals[0].Hs[0], -1);
    EXPECT_EQ(table.Crystals[0].Ls[0], -2);
}

TEST(CrystalFile, OneHundredAndOneTriplesFit) {
    const auto table = Read(COMMENTS + "1\n" + CELL + Triples(101) + "0 0 0\n");
    EXPECT_EQ(table.Crystals[0].Count, 101);
    EXPECT_EQ(table.Crystals[0].Hs[100], 101);
}

TEST(CrystalFile, OneHundredAndTwoTriplesAreAFault) {
    ExpectRefused(COMMENTS + "1\n" + CELL + Triples(102) + "0 0 0\n", "114", "101");
}

TEST(CrystalFile, AMissingTerminatorIsAFault) {
    ExpectRefused(COMMENTS + "1\n" + CELL + "1 1 1\n2 0 0\n", "14",
                  "h of reflection 3 of crystal 1");
    // Before a second crystal its name stands where the terminator belongs.
    ExpectRefused(COMMENTS + "2\n" + CELL + "1 1 1\nY 0 1 1 1 90 90 90\n0 0 0\n", "14",
                  "h of reflection 2 of crystal 1 (or 0 0 0 behind the last one) was expected, not "
                  "\"Y\"");
}

TEST(CrystalFile, AMissingIndexOfATripleIsAFault) {
    ExpectRefused(COMMENTS + "1\n" + CELL + "1 1\n0 0 0\n", "14", "l of reflection 2");
    ExpectRefused(COMMENTS + "1\n" + CELL + "1 1 1\n2 0", "14", "l of reflection 2");
}

TEST(CrystalFile, AWrongCountIsAFault) {
    ExpectRefused(COMMENTS + "2\n" + GOLD, "15", "the name of crystal 2");
    ExpectRefused(COMMENTS + "1\n" + GOLD + GOLD, "16", "the end of the file");
    ExpectRefused(COMMENTS + "-1\n" + GOLD, "11", "0 to 31");
    ExpectRefused(COMMENTS + "32\n" + GOLD, "11", "0 to 31");
    ExpectRefused(COMMENTS + "many\n" + GOLD, "11", "0 to 31, was expected, not \"many\"");
    ExpectRefused(COMMENTS + "1.5\n" + GOLD, "11", "a whole number");
    ExpectRefused(COMMENTS + "\n", "11", "the number of crystals");
}

TEST(CrystalFile, NoNumberWhereOneBelongsIsAFault) {
    ExpectRefused(COMMENTS + "1\nAu x 4 4 4 90 90 90 0 0 0\n", "12", "the crystal system");
    ExpectRefused(COMMENTS + "1\nAu 0 4 4.o 4 90 90 90 0 0 0\n", "12", "b of crystal 1");
    ExpectRefused(COMMENTS + "1\nAu 0 4 4 4 90 90 90\n1 1 1\n2 O 0\n0 0 0\n", "14",
                  "k of reflection 2");
    ExpectRefused(COMMENTS + "1\nAu,0,4,,4,90,90,90\n0 0 0\n", "12", "b of crystal 1");
    ExpectRefused(COMMENTS + "1\n" + CELL + "1 1 1.5\n0 0 0\n", "13", "a whole number");
    ExpectRefused(COMMENTS + "1\n" + CELL + "1 1 40000\n0 0 0\n", "13", "16 bits");
}

TEST(CrystalFile, TooFewCommentLinesAndAnOpenQuoteAreFaults) {
    ExpectRefused("1\n2\n3\n", "3", "ten lines of comment");
    ExpectRefused("", "0", "ten lines of comment");
    ExpectRefused(COMMENTS, "10", "the number of crystals");
    ExpectRefused(COMMENTS + "1\n\"Au 0 4 4 4\n", "12", "closing quote");
}

TEST(CrystalFile, AForeignFileWithOneEndlessLineIsRefused) {
    ExpectRefused(std::string(70000, 'x'), "1", "too long");
}

TEST(CrystalFile, AFileReadsAsItsStreamDoes) {
    const auto path = std::filesystem::temp_directory_path() /
                      ("vael_crystal_" + std::to_string(::getpid()) + ".dat");
    std::ofstream(path, std::ios::binary) << COMMENTS + "1\n" + GOLD;
    EXPECT_EQ(ReadCrystalFile(path.string()).Crystals[0].Name, "Au Gold");
    std::filesystem::permissions(path, std::filesystem::perms::none);
    if (::access(path.c_str(), R_OK) != 0) {  // root may read everything
        try {
            (void)ReadCrystalFile(path.string());
            ADD_FAILURE() << "a file without permission was read";
        } catch (const Fault& fault) {
            EXPECT_EQ(fault.Number(), FaultNumber::FileAccess);
            EXPECT_NE(std::string(fault.what()).find(path.string()), std::string::npos);
        }
    }
    std::filesystem::remove(path);
}

TEST(CrystalFile, AMissingFileAndAFolderAreNamed) {
    try {
        (void)ReadCrystalFile(std::string("/no/such/crystal.dat"));
        FAIL();
    } catch (const Fault& fault) {
        EXPECT_EQ(fault.Number(), FaultNumber::FileMissing);
        EXPECT_NE(std::string(fault.what()).find("/no/such/crystal.dat"), std::string::npos);
    }
    try {
        (void)ReadCrystalFile(std::filesystem::temp_directory_path().string());
        FAIL();
    } catch (const Fault& fault) {
        EXPECT_EQ(fault.Number(), FaultNumber::FileAccess);
        EXPECT_NE(std::string(fault.what()).find("folder"), std::string::npos);
    }
}

TEST(CrystalTable, FindsAKeyAFullNameOrBoth) {
    const auto table = Read(COMMENTS + "2\n" + CELL + "0 0 0\n" + GOLD);
    EXPECT_EQ(FindCrystal(table, "Au"), 1);
    EXPECT_EQ(FindCrystal(table, "Au Gold"), 1);
    EXPECT_EQ(FindCrystal(table, "Gold"), 1);
    EXPECT_EQ(FindCrystal(table, "X"), 0);
    EXPECT_EQ(FindCrystal(table, "AU"), -1);
    EXPECT_EQ(FindCrystal(table, ""), -1);
    EXPECT_EQ(MarkerKey("Au Gold"), "Au");
    EXPECT_EQ(MarkerKey("NaCl"), "NaCl");
}

TEST(CrystalTable, SystemsHaveCodesAndNames) {
    EXPECT_EQ(SystemCode(4), "MON");
    EXPECT_EQ(SystemCode(6), "UNK");
    EXPECT_EQ(SystemCode(-1), "UNK");
    EXPECT_EQ(SystemListText(3), "Orthorhombic");
    EXPECT_EQ(SystemLogName(5), "TRICLINIC");
    EXPECT_EQ(SystemListText(9), "");
}
