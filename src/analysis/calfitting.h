// The Express fitter: one peak shape with its background in one region, by Poisson likelihood.
#pragma once

#include "analysis/fitmatrix.h"
#include "core/records.h"
#include "core/talk.h"

#include <cstdint>
#include <span>
#include <string>

namespace vael {

/// Status values of a fit; 5 and above is the number of a fault inside a shape.
inline constexpr int FIT_CONVERGED = 0;
inline constexpr int FIT_STOPPED = 2;  // an iteration limit
inline constexpr int FIT_ERROR = 4;

/// What a fit says beside its coefficients.
struct FitOutcome {
    int Status = FIT_CONVERGED;
    std::string Message;  // empty where the fit converged
    FitVector Err{};      // standard errors of the coefficients
};

/// Derivatives of the shapes of calc.h at the local channel x with respect to the m coefficients
/// `a`, both from index 0, into the first m of d (the Mix's slope is there at m = 6). A floating
/// failure clears d and writes the fault's number into `status`, which is left alone otherwise.
/// Faults: Subscript (vectors shorter than m).
void GaussDeriv(double x, std::span<const double> a, std::span<double> d, int m, int& status);
void LorentzDeriv(double x, std::span<const double> a, std::span<double> d, int m, int& status);
void MixDeriv(double x, std::span<const double> a, std::span<double> d, int m, int& status);

/// Poisson log-likelihood of the counts y under the model f, without the term of y alone: the sum
/// of y ln f - f. A model that is not positive somewhere gives 0 and sets `status` to 1.
[[nodiscard]] double LogLikelihood(std::span<const double> y, std::span<const double> f,
                                   int& status);

/// The sum of ln(y!), which makes the likelihood of the convergence test a whole one: the product
/// y, y - 1, ... while above 1 for counts up to 50, above them Stirling's series to 1 / (12 y).
[[nodiscard]] double SumOfFactorials(std::span<const double> y);

/// Maximises the Poisson likelihood of the counts y at the channels x (as many as y) over the m
/// coefficients `a` of a shape: SHAPE_GAUSS and SHAPE_LORENTZ with m = 3, 4, 5, SHAPE_MIX with 4,
/// 5, 6, in the order of calc.h from index 0. Damping after D. W. Marquardt, J. SIAM 11, 431
/// (1963), steered as by R. Fletcher, AERE-R 6799 (1971); each step by `QRDecomp` of the damped,
/// scaled design, the errors from the inverse of the observed information. `a` comes back with the
/// last accepted coefficients, the caller's own where the start is refused. `Message` has the
/// words of the outcome; a design whose inverse has no trace is said. Holds nothing between calls.
[[nodiscard]] FitOutcome CFDQR2(std::span<const double> x, std::span<const double> y, int type,
                                FitVector& a, int m, const Talk& talk);

/// `CFDQR2` with a start of its own where `a` has no height (a[0] <= 0), a half width of 10 for a
/// negative one, and a centre that left the region put back to its middle. That start of a Mix has
/// the centre and the half width one place behind the shape's own order, and the centre's test
/// looks at a Mix's half width; both are meant to stay.
[[nodiscard]] FitOutcome FitData(std::span<const double> x, std::span<const double> y, int type,
                                 int m, FitVector& a, const Talk& talk);

/// Fits row k (from 0) of a peak table with m coefficients of a shape to the counts of its region
/// and rewrites the record, whatever the status. results[k] becomes 65535 where the fit can stand
/// (height and half width above 0, height below three times its start), otherwise 0. Where the
/// status is 0, `Message` lists the first four errors. A shape outside 1 to 3 is said; it and a row
/// that is not there leave record and results alone. Faults: Subscript (a region outside the
/// channels; results shorter than k).
FitOutcome FitOnePeak(const SpectrumData& spectrum, PeakTable& peaks, int k, int type, int m,
                      std::span<std::uint16_t> results, const Talk& talk);

}  // namespace vael
