// A second way to refine a cell: 8-byte floats, another solver, errors by differences.
#pragma once

#include <array>
#include <cmath>
#include <vector>

namespace vael::testing8 {

struct Row {
    int H, K, L;
    double D;
};

struct Refined {
    std::array<double, 7> Cell{};  // a, b, c, cosines of the angles, V
    std::array<double, 7> Error{};
    std::vector<double> Param, ParamErr;
};

/// Design of one row: what multiplies the free parameters of a system (0 cubic to 5 triclinic).
inline std::vector<double> DesignOf(int system, const Row& r) {
    const double h = r.H, k = r.K, l = r.L;
    switch (system) {
        case 0: return {h * h + k * k + l * l};
        case 1: return {h * h + k * k, l * l};
        case 2: return {h * h + k * k + h * k, l * l};
        case 3: return {h * h, k * k, l * l};
        case 4: return {h * h, k * k, l * l, h * l};
        default: return {h * h, k * k, l * l, k * l, h * l, h * k};
    }
}

/// The reciprocal metric (a*a*, b*b*, c*c*, 2b*c*, 2a*c*, 2a*b* with their cosines) of the
/// solution.
inline std::array<double, 6> MetricOf(int system, const std::vector<double>& p) {
    switch (system) {
        case 0: return {p[0], p[0], p[0], 0, 0, 0};
        case 1: return {p[0], p[0], p[1], 0, 0, 0};
        case 2: return {p[0], p[0], p[1], 0, 0, p[0]};
        case 3: return {p[0], p[1], p[2], 0, 0, 0};
        case 4: return {p[0], p[1], p[2], 0, p[3], 0};
        default: return {p[0], p[1], p[2], p[3], p[4], p[5]};
    }
}

/// Direct cell by inverting the metric tensor: a, b, c, cosines, V.
inline std::array<double, 7> CellOf(const std::array<double, 6>& m) {
    const double g11 = m[0], g22 = m[1], g33 = m[2];
    const double g23 = m[3] / 2, g13 = m[4] / 2, g12 = m[5] / 2;
    const double det = g11 * (g22 * g33 - g23 * g23) - g12 * (g12 * g33 - g23 * g13) +
                       g13 * (g12 * g23 - g22 * g13);
    const double aa = (g22 * g33 - g23 * g23) / det, bb = (g11 * g33 - g13 * g13) / det;
    const double cc = (g11 * g22 - g12 * g12) / det;
    const double bc = (g12 * g13 - g11 * g23) / det, ac = (g12 * g23 - g22 * g13) / det;
    const double ab = (g13 * g23 - g33 * g12) / det;
    const double a = std::sqrt(aa), b = std::sqrt(bb), c = std::sqrt(cc);
    return {a, b, c, bc / (b * c), ac / (a * c), ab / (a * b), 1.0 / std::sqrt(det)};
}

/// Derivative of output `row` by free parameter `j` by central differences.
inline double Slope(int system, const std::vector<double>& p, std::size_t row, std::size_t j) {
    const double step = 1e-6 * (std::fabs(p[j]) + 1e-4);
    std::vector<double> up = p, down = p;
    up[j] += step;
    down[j] -= step;
    return (CellOf(MetricOf(system, up))[row] - CellOf(MetricOf(system, down))[row]) / (2 * step);
}

/// Gauss-Jordan on the normal equations, the inverse carried along.
inline Refined Refine(int system, const std::vector<Row>& rows) {
    const std::size_t n = DesignOf(system, rows[0]).size();
    std::vector<std::vector<double>> a(n, std::vector<double>(2 * n, 0.0));
    std::vector<double> g(n, 0.0);
    for (const Row& r : rows) {
        const auto x = DesignOf(system, r);
        for (std::size_t i = 0; i < n; ++i) {
            g[i] += x[i] / (r.D * r.D);
            for (std::size_t j = 0; j < n; ++j) a[i][j] += x[i] * x[j];
        }
    }
    for (std::size_t i = 0; i < n; ++i) a[i][n + i] = 1.0;
    for (std::size_t c = 0; c < n; ++c) {
        const double pivot = a[c][c];
        for (double& v : a[c]) v /= pivot;
        for (std::size_t r = 0; r < n; ++r) {
            if (r == c) continue;
            const double factor = a[r][c];
            for (std::size_t j = 0; j < 2 * n; ++j) a[r][j] -= factor * a[c][j];
        }
    }
    Refined out;
    out.Param.assign(n, 0.0);
    for (std::size_t i = 0; i < n; ++i)
        for (std::size_t j = 0; j < n; ++j) out.Param[i] += a[i][n + j] * g[j];
    double residual = 0.0;
    for (const Row& r : rows) {
        const auto x = DesignOf(system, r);
        double rest = 1.0 / (r.D * r.D);
        for (std::size_t i = 0; i < n; ++i) rest -= x[i] * out.Param[i];
        residual += rest * rest;
    }
    out.ParamErr.assign(n, 0.0);
    if (rows.size() > n)
        for (std::size_t i = 0; i < n; ++i)
            out.ParamErr[i] =
                std::sqrt(residual / static_cast<double>(rows.size() - n) * a[i][n + i]);
    out.Cell = CellOf(MetricOf(system, out.Param));
    for (std::size_t row = 0; row < 7; ++row) {
        double sum = 0.0;
        for (std::size_t j = 0; j < n; ++j) {
            const double term = Slope(system, out.Param, row, j) * out.ParamErr[j];
            sum += term * term;
        }
        out.Error[row] = std::sqrt(sum);
    }
    return out;
}

}  // namespace vael::testing8
