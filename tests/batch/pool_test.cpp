// The pool of worker processes: order, deaths, renewal.
#include "batch/pool.h"

#include <gtest/gtest.h>

#include <unistd.h>
#include <csignal>
#include <set>
#include <vector>

using namespace vael;

namespace {

struct Outcome {
    std::vector<int> Order;
    std::vector<std::string> Bytes;
    std::vector<std::string> Lost;
};

Outcome RunJobs(int workers, int count, const PoolJob& job, int jobsAWorker = 1000) {
    Outcome out;
    RunPool(workers, count, jobsAWorker, job,
            [&](int index, const std::string& bytes, const std::string& lost) {
                out.Order.push_back(index);
                out.Bytes.push_back(bytes);
                out.Lost.push_back(lost);
            });
    return out;
}

}  // namespace

TEST(Pool, ResultsComeInOrderWhateverTheNumberOfWorkers) {
    const PoolJob job = [](int index) {
        ::usleep(static_cast<useconds_t>((7 * index) % 5) * 1000);  // later jobs end earlier
        return std::string(static_cast<std::size_t>(index) * 1000, 'x') + std::to_string(index);
    };
    const Outcome one = RunJobs(1, 20, job);
    const Outcome four = RunJobs(4, 20, job);
    EXPECT_EQ(one.Bytes, four.Bytes);
    for (int i = 0; i < 20; ++i) EXPECT_EQ(four.Order[static_cast<std::size_t>(i)], i);
}

TEST(Pool, AWorkerThatDiesCostsItsJobAndIsReplaced) {
    const PoolJob job = [](int index) {
        if (index == 3) ::raise(SIGKILL);
        if (index == 5) ::_exit(4);
        return std::to_string(index);
    };
    const Outcome out = RunJobs(2, 9, job);
    ASSERT_EQ(out.Order.size(), 9u);
    for (std::size_t i = 0; i < 9; ++i) {
        if (i == 3 || i == 5) continue;
        EXPECT_EQ(out.Bytes[i], std::to_string(i));
        EXPECT_EQ(out.Lost[i], "");
    }
    EXPECT_NE(out.Lost[3].find("signal 9"), std::string::npos) << out.Lost[3];
    EXPECT_EQ(out.Lost[5], "its worker ended with status 4");
}

TEST(Pool, EveryWorkerDyingStillEnds) {
    const Outcome out = RunJobs(3, 6, [](int) -> std::string { ::_exit(1); });
    EXPECT_EQ(out.Lost.size(), 6u);
}

TEST(Pool, AWorkerIsRenewedAfterItsShare) {
    const Outcome out = RunJobs(
        1, 6, [](int) { return std::to_string(::getpid()); }, 2);
    EXPECT_EQ(out.Bytes[0], out.Bytes[1]);
    EXPECT_EQ(std::set<std::string>(out.Bytes.begin(), out.Bytes.end()).size(), 3u);
}

TEST(Pool, NoJobsAreNoTrouble) {
    EXPECT_TRUE(RunJobs(2, 0, [](int) { return std::string(); }).Order.empty());
}
