// The document of trust: its sums by hand, and that its command makes it.
#include "validation.h"

#include <gtest/gtest.h>

#include <cmath>

using namespace vael::tools;

TEST(Validation, PullsHaveMeanAndWidthWithTheirErrors) {
    // Mean 2, squares 4 + 0 + 4 = 8, over two: width 2.
    const Pulls pulls = PullsOf({0.0, 2.0, 4.0});
    EXPECT_EQ(pulls.Count, 3);
    EXPECT_DOUBLE_EQ(pulls.Mean, 2.0);
    EXPECT_DOUBLE_EQ(pulls.Width, 2.0);
    EXPECT_DOUBLE_EQ(pulls.MeanError, 2.0 / std::sqrt(3.0));
    EXPECT_DOUBLE_EQ(pulls.WidthError, 1.0);
    EXPECT_EQ(pulls.BeyondThree, 1);
    EXPECT_EQ(PullsOf({}).Count, 0);
    EXPECT_EQ(PullsOf({5.0}).Width, 0.0);
}

TEST(Validation, TheDocumentHasEveryMarkerByBothFittersAndDoesNotDependOnTheWorkers) {
    ValidationOptions options;
    options.Spectra = 1;
    options.DataFolder = VAEL_SOURCE_DIR "/data";
    options.Workers = 1;
    const std::string one = ValidationText(options);
    options.Workers = 3;
    EXPECT_EQ(ValidationText(options), one);
    for (const char* marker : {"NACL", "Au", "Pt", "MgO", "hBN"})
        for (const char* fitter : {"NAX", "Express"}) {
            int rows = 0;
            std::size_t at = 0;
            const std::string begin = "| " + std::string(marker) + " | ";
            while ((at = one.find(begin, at)) != std::string::npos) {
                const std::string row = one.substr(at, one.find('\n', at) - at);
                rows += row.find(fitter) != std::string::npos ? 1 : 0;
                at += row.size();
            }
            EXPECT_EQ(rows, 3) << marker << " " << fitter;
        }
    EXPECT_NE(one.find("They were not there when this was made."), std::string::npos);
}
