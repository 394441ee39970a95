// The lines of the report file and the label of the curve, to the letter.
#include "calibration/calibreport.h"

#include <gtest/gtest.h>

#include <vector>

using namespace vael;

namespace {

const std::vector<std::string> PATHS{"/data/run 7/Ag.npd", "/data/Co57.xbm"};

}  // namespace

TEST(CalibReport, OfALine) {
    EXPECT_EQ(CalibReport(PATHS, CalibCurveKind::Line, {0.05694, 0.03162861, 0.0}),
              "Ag.npd,  /data/run 7/\r\n"
              "Co57.xbm,  /data/\r\n"
              " \r\n"
              "E = A + Bx\r\n"
              " \r\n"
              "0.05694\r\n"
              "0.03162861\r\n");
}

TEST(CalibReport, OfAParabolaWithoutASpectrum) {
    EXPECT_EQ(CalibReport({}, CalibCurveKind::Parabola, {-0.05, 0.0316, 1.25e-9}),
              " \r\n"
              "E = A + Bx + Cx^2\r\n"
              " \r\n"
              "-0.05\r\n"
              "0.0316\r\n"
              "1.25E-09\r\n");
}

TEST(CalibLabel, NamesTheConstantsInScientificForm) {
    EXPECT_EQ(CalibLabel(CalibCurveKind::Line, {0.05694, 0.03162861, 0.0}),
              "Energy(keV) = (5.694e-002) + (3.1629e-002)*Ch");
    EXPECT_EQ(CalibLabel(CalibCurveKind::Parabola, {-0.05, 0.03, 1.2e-9}),
              "Energy(keV) = (-5.e-002) + (3.e-002)*Ch + (1.2e-009)*Ch^2");
}
