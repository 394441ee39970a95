// The table of a run: file numbers, moments, and a file that holds whole rows at every moment.
#include "batch/runtable.h"
#include "batch/report.h"
#include "core/fault.h"
#include "support/world.h"

#include <gtest/gtest.h>

#include <sys/resource.h>  // a file-size limit stands for a full disk
#include <csignal>
#include <sstream>

using namespace vael;

namespace {

const auto NO_REMARK = [](const std::string& line) { ADD_FAILURE() << line; };

std::vector<std::vector<std::string>> Records(const std::string& text) {
    std::istringstream in(text);
    std::vector<std::vector<std::string>> out;
    for (std::vector<std::string> fields; ReadCsvRecord(in, fields);) out.push_back(fields);
    return out;
}

std::string Row(int number, const std::string& file) {
    RoadResult result;
    result.File = file;
    return RunRow(number, "", CsvRow(result));
}

}  // namespace

TEST(FileNumber, IsAnExtensionOfDigitsElseTheLongestRunOfDigitsElseTheOrder) {
    EXPECT_EQ(FileNumber("dir9999/run.007", 3), 7);
    EXPECT_EQ(FileNumber("AuWire_0019.npd", 3), 19);
    EXPECT_EQ(FileNumber("MgO_0043_d0.npd", 3), 43);
    EXPECT_EQ(FileNumber("a12_b34.xbm", 3), 34);  // the last of equal length
    EXPECT_EQ(FileNumber("AuWire.npd", 3), 3);
    EXPECT_EQ(FileNumber("x1234567890.npd", 3), 3);  // ten digits are no number of a file
    EXPECT_EQ(FileNumber("5", 3), 5);
    EXPECT_EQ(FileNumber("", 3), 3);
}

TEST(Moment, IsEmptyWhereDateOrTimeAreNotAllDigits) {
    EXPECT_EQ(Moment("20181010", "090541"), "2018-10-10 09:05:41");
    EXPECT_EQ(Moment("20181010", "9:0541"), "");
    EXPECT_EQ(Moment("        ", "090541"), "");
    EXPECT_EQ(Moment("2018101", "090541"), "");
}

TEST(Moment, CountsSecondsOfTheCalendar) {
    EXPECT_EQ(Seconds("1970-01-01 00:00:00"), 0.0);
    EXPECT_EQ(Seconds("1970-01-02 01:02:03"), 86400.0 + 3723.0);
    EXPECT_EQ(Seconds("2000-03-01 00:00:00"), 951868800.0);  // behind a leap day; `date -u +%s`
    EXPECT_EQ(Seconds("2001-02-29 00:00:00"), std::nullopt);
    EXPECT_EQ(Seconds("2001-02-28"), std::nullopt);
    EXPECT_EQ(Seconds("2001-02-28T00:00:00"), std::nullopt);
}

TEST(CsvRecord, QuotesHoldCommasQuotesAndLineEnds) {
    const auto records = Records("a,\"b,\"\"c\"\"\r\nd\",\r\n,\n\"cut");
    ASSERT_EQ(records.size(), 2u);
    EXPECT_EQ(records[0], (std::vector<std::string>{"a", "b,\"c\"\r\nd", ""}));
    EXPECT_EQ(records[1], (std::vector<std::string>{"", ""}));
}

TEST(RunTable, HasAHeadAndARowForEachFile) {
    const TempFolder folder;
    const std::string path = folder.Path("run.csv");
    {
        RunTable table(path, OldTable::Refuse, NO_REMARK);
        table.Add("a, b.npd", Row(1, "a, b.npd"));
        table.Add("c.npd", Row(2, "c.npd"));
        EXPECT_TRUE(table.Has("a, b.npd"));
        EXPECT_FALSE(table.Has("d.npd"));
        EXPECT_EQ(table.Rows(), 2);
    }
    const auto records = Records(BytesOf(path));
    ASSERT_EQ(records.size(), 3u);
    EXPECT_EQ(records[0][0], "number");
    EXPECT_EQ(records[0][1], "time");
    EXPECT_EQ(records[0][2], "file");
    for (const auto& record : records) EXPECT_EQ(record.size(), records[0].size());
    EXPECT_EQ(records[1][2], "a, b.npd");
    EXPECT_EQ(records[2][0], "2");
}

TEST(RunTable, ThatIsThereIsRefusedReplacedOrGoneOnWith) {
    const TempFolder folder;
    const std::string path = folder.Path("run.csv");
    { RunTable(path, OldTable::Refuse, NO_REMARK).Add("a.npd", Row(1, "a.npd")); }
    const std::string before = BytesOf(path);
    EXPECT_THROW(RunTable(path, OldTable::Refuse, NO_REMARK), Fault);
    EXPECT_EQ(BytesOf(path), before);
    {
        RunTable table(path, OldTable::GoOn, NO_REMARK);
        EXPECT_TRUE(table.Has("a.npd"));
        table.Add("b.npd", Row(2, "b.npd"));
    }
    EXPECT_EQ(BytesOf(path), before + Row(2, "b.npd"));
    { const RunTable table(path, OldTable::Replace, NO_REMARK); }
    EXPECT_EQ(Records(BytesOf(path)).size(), 1u);
}

TEST(RunTable, GoingOnCutsOffALineWithoutItsEndAndSaysSo) {
    const TempFolder folder;
    const std::string path = folder.Path("run.csv");
    const std::string whole = RunHead() + Row(1, "a.npd");
    for (const std::string torn : {"2,,b.n", "2,,\"b\r\n", "2"}) {
        folder.Write("run.csv", whole + torn);
        int remarks = 0;
        RunTable table(path, OldTable::GoOn, [&](const std::string& line) {
            ++remarks;
            EXPECT_NE(line.find("run.csv"), std::string::npos);
        });
        EXPECT_EQ(remarks, 1);
        EXPECT_TRUE(table.Has("a.npd"));
        EXPECT_EQ(table.Rows(), 1);
        EXPECT_EQ(BytesOf(path), whole) << torn;
    }
}

TEST(RunTable, AFileThatIsNoTableOfARunIsLeftAlone) {
    const TempFolder folder;
    for (const std::string other : {"my notes", "a,b\r\n1,2\r\n"}) {
        const std::string path = folder.Write("run.csv", other);
        EXPECT_THROW(RunTable(path, OldTable::GoOn, NO_REMARK), Fault);
        EXPECT_EQ(BytesOf(path), other);
    }
}

TEST(RunTable, ARowThatDoesNotFitOnTheDiskLeavesTheRowsBefore) {
    const TempFolder folder;
    const std::string path = folder.Path("run.csv");
    RunTable table(path, OldTable::Refuse, NO_REMARK);
    table.Add("a.npd", Row(1, "a.npd"));
    const std::string before = BytesOf(path);

    rlimit own{};
    ::getrlimit(RLIMIT_FSIZE, &own);
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    const rlimit tight{before.size() + 10, own.rlim_max};
    ::setrlimit(RLIMIT_FSIZE, &tight);
    EXPECT_THROW(table.Add("b.npd", Row(2, "b.npd")), Fault);
    ::setrlimit(RLIMIT_FSIZE, &own);
    std::signal(SIGXFSZ, handler);

    EXPECT_EQ(BytesOf(path), before);
    EXPECT_FALSE(table.Has("b.npd"));
    table.Add("b.npd", Row(2, "b.npd"));
    EXPECT_EQ(BytesOf(path), before + Row(2, "b.npd"));
}
