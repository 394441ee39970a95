// An independent maximiser of a Poisson likelihood: Newton's method on second-order Taylor numbers,
// to judge the single-peak fit by a second road.
#pragma once

#include <array>
#include <cmath>
#include <cstddef>
#include <functional>
#include <limits>
#include <optional>
#include <span>

namespace judge {

inline constexpr std::size_t UNKNOWNS = 6;
using Row = std::array<double, UNKNOWNS>;
using Square = std::array<Row, UNKNOWNS>;

/// A value with its first and second derivatives by the unknowns, by the chain rule alone.
struct Taylor {
    double V = 0.0;
    Row G{};
    Square H{};

    Taylor() = default;
    Taylor(double value) : V(value) {}  // NOLINT: a plain number is a constant
    static Taylor Unknown(double value, std::size_t index) {
        Taylor t(value);
        t.G[index] = 1.0;
        return t;
    }
    /// u(this) from the value, first and second derivative of u.
    [[nodiscard]] Taylor Chain(double u, double u1, double u2) const {
        Taylor t(u);
        for (std::size_t i = 0; i < UNKNOWNS; ++i) {
            t.G[i] = u1 * G[i];
            for (std::size_t j = 0; j < UNKNOWNS; ++j) t.H[i][j] = u1 * H[i][j] + u2 * G[i] * G[j];
        }
        return t;
    }
};

inline Taylor operator+(Taylor a, const Taylor& b) {
    a.V += b.V;
    for (std::size_t i = 0; i < UNKNOWNS; ++i) {
        a.G[i] += b.G[i];
        for (std::size_t j = 0; j < UNKNOWNS; ++j) a.H[i][j] += b.H[i][j];
    }
    return a;
}
inline Taylor operator*(const Taylor& a, const Taylor& b) {
    Taylor t(a.V * b.V);
    for (std::size_t i = 0; i < UNKNOWNS; ++i) {
        t.G[i] = a.V * b.G[i] + b.V * a.G[i];
        for (std::size_t j = 0; j < UNKNOWNS; ++j)
            t.H[i][j] = a.V * b.H[i][j] + b.V * a.H[i][j] + a.G[i] * b.G[j] + a.G[j] * b.G[i];
    }
    return t;
}
inline Taylor operator-(const Taylor& a, const Taylor& b) { return a + Taylor(-1.0) * b; }
inline Taylor Inverse(const Taylor& a) {
    const double u = 1.0 / a.V;
    return a.Chain(u, -u * u, 2.0 * u * u * u);
}
inline Taylor Exp(const Taylor& a) {
    const double u = std::exp(a.V);
    return a.Chain(u, u, u);
}
inline Taylor Log(const Taylor& a) { return a.Chain(std::log(a.V), 1.0 / a.V, -1.0 / (a.V * a.V)); }

using Unknowns = std::array<Taylor, UNKNOWNS>;
/// A model at channel x of the unknowns.
using Model = std::function<Taylor(double x, const Unknowns& a)>;

inline Unknowns At(const Row& a, std::size_t m) {
    Unknowns u;
    for (std::size_t k = 0; k < UNKNOWNS; ++k)
        u[k] = k < m ? Taylor::Unknown(a[k], k) : Taylor(a[k]);
    return u;
}

/// ln of the probability of the counts, with ln(y!); least of all where the model is not positive.
inline Taylor LogProbability(const Model& model, std::span<const double> y, const Row& a,
                             std::size_t m) {
    Taylor sum;
    const Unknowns u = At(a, m);
    for (std::size_t i = 0; i < y.size(); ++i) {
        const Taylor f = model(static_cast<double>(i + 1), u);
        if (!(f.V > 0.0)) return Taylor(-std::numeric_limits<double>::infinity());
        sum = sum + Taylor(y[i]) * Log(f) - f - Taylor(std::lgamma(y[i] + 1.0));
    }
    return sum;
}

/// Solves S x = b for a symmetric positive matrix of order m by Cholesky's triangle.
inline std::optional<Row> SolvePositive(Square s, Row b, std::size_t m) {
    for (std::size_t j = 0; j < m; ++j) {
        for (std::size_t k = 0; k < j; ++k) s[j][j] -= s[j][k] * s[j][k];
        if (!(s[j][j] > 0.0)) return std::nullopt;
        s[j][j] = std::sqrt(s[j][j]);
        for (std::size_t i = j + 1; i < m; ++i) {
            for (std::size_t k = 0; k < j; ++k) s[i][j] -= s[i][k] * s[j][k];
            s[i][j] /= s[j][j];
        }
    }
    for (std::size_t i = 0; i < m; ++i) {
        for (std::size_t k = 0; k < i; ++k) b[i] -= s[i][k] * b[k];
        b[i] /= s[i][i];
    }
    for (std::size_t i = m; i-- > 0;) {
        for (std::size_t k = i + 1; k < m; ++k) b[i] -= s[k][i] * b[k];
        b[i] /= s[i][i];
    }
    return b;
}

struct Maximum {
    Row At{};
    double Value = 0.0;
    bool Reached = false;
};

/// Newton's step damped by mu times the diagonal, and the gain that it promises.
struct NewtonStep {
    Row To{};
    double Promise = 0.0;
};

inline std::optional<NewtonStep> StepFrom(const Taylor& here, const Row& a, std::size_t m,
                                          double mu) {
    Square s{};
    for (std::size_t i = 0; i < m; ++i)
        for (std::size_t j = 0; j < m; ++j)
            s[i][j] = i == j ? -here.H[i][i] + mu * std::fabs(here.H[i][i]) : -here.H[i][j];
    const std::optional<Row> d = SolvePositive(s, here.G, m);
    if (!d) return std::nullopt;
    NewtonStep step{.To = a};
    for (std::size_t k = 0; k < m; ++k) {
        step.To[k] += (*d)[k];
        step.Promise += 0.5 * (*d)[k] * here.G[k];
    }
    return step;
}

/// Uphill from a. It has arrived where the curvature is negative throughout and an undamped step
/// promises less than 1e-8; two such steps more then square away what is left.
inline Maximum Maximise(const Model& model, std::span<const double> y, Row a, std::size_t m) {
    double mu = 1e-3;
    Taylor here = LogProbability(model, y, a, m);
    for (int step = 0; step < 2000 && mu < 1e15; ++step) {
        if (auto last = StepFrom(here, a, m, 0.0); last && last->Promise < 1e-8) {
            for (int more = 0; more < 2 && last; ++more) {
                a = last->To;
                last = StepFrom(LogProbability(model, y, a, m), a, m, 0.0);
            }
            return {
                .At = a, .Value = LogProbability(model, y, a, 0).V, .Reached = last.has_value()};
        }
        const std::optional<NewtonStep> trial = StepFrom(here, a, m, mu);
        const Taylor there = trial ? LogProbability(model, y, trial->To, m) : here;
        if (trial && there.V > here.V) {
            a = trial->To;
            here = there;
            mu /= 10.0;
        } else {
            mu *= 10.0;
        }
    }
    return {.At = a, .Value = here.V, .Reached = false};
}

}  // namespace judge
