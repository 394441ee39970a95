// An independent least-squares minimiser: Levenberg and Marquardt's method with derivatives by
// differences and Householder triangles, to judge fits by a second road.
#pragma once

#include <algorithm>
#include <cmath>
#include <functional>
#include <vector>

namespace judge {

using Vector = std::vector<double>;
using Residuals = std::function<Vector(const Vector&)>;

struct Minimum {
    Vector At;
    Vector Errors;  // square roots of the diagonal of the inverse curvature
    double Squares = 0.0;
};

inline double Norm2(const Vector& v) {
    double sum = 0.0;
    for (const double x : v) sum += x * x;
    return sum;
}

/// Columns of the Jacobian by central differences.
inline std::vector<Vector> Jacobian(const Residuals& f, const Vector& p) {
    std::vector<Vector> columns;
    for (std::size_t k = 0; k < p.size(); ++k) {
        const double h = 1e-5 * std::max(std::fabs(p[k]), 0.01);
        Vector up = p;
        Vector down = p;
        up[k] += h;
        down[k] -= h;
        Vector a = f(up);
        const Vector b = f(down);
        for (std::size_t i = 0; i < a.size(); ++i) a[i] = (a[i] - b[i]) / (2.0 * h);
        columns.push_back(std::move(a));
    }
    return columns;
}

/// Turns columns (of equal length, at least as many rows as columns) and the right side into a
/// triangle by Householder reflections; r[c][i] for i <= c.
inline void Triangle(std::vector<Vector>& columns, Vector& right) {
    const std::size_t rows = right.size();
    for (std::size_t c = 0; c < columns.size(); ++c) {
        Vector v(rows, 0.0);
        double norm = 0.0;
        for (std::size_t i = c; i < rows; ++i) norm += columns[c][i] * columns[c][i];
        norm = std::sqrt(norm);
        for (std::size_t i = c; i < rows; ++i) v[i] = columns[c][i];
        v[c] += v[c] >= 0.0 ? norm : -norm;
        const double length = Norm2(v);
        if (length == 0.0) continue;
        const auto reflect = [&](Vector& w) {
            double dot = 0.0;
            for (std::size_t i = c; i < rows; ++i) dot += v[i] * w[i];
            for (std::size_t i = c; i < rows; ++i) w[i] -= 2.0 * dot / length * v[i];
        };
        for (std::size_t k = c; k < columns.size(); ++k) reflect(columns[k]);
        reflect(right);
    }
}

inline Vector BackSolve(const std::vector<Vector>& triangle, const Vector& right) {
    const std::size_t n = triangle.size();
    Vector x(n, 0.0);
    for (std::size_t s = n; s-- > 0;) {
        double sum = right[s];
        for (std::size_t c = s + 1; c < n; ++c) sum -= triangle[c][s] * x[c];
        x[s] = sum / triangle[s][s];
    }
    return x;
}

inline Minimum Minimise(const Residuals& f, Vector p) {
    double lambda = 1e-3;
    Vector r = f(p);
    double squares = Norm2(r);
    for (int step = 0; step < 500 && lambda < 1e12; ++step) {
        const std::vector<Vector> jacobian = Jacobian(f, p);
        std::vector<Vector> columns = jacobian;
        Vector right;
        for (const double x : r) right.push_back(-x);
        for (std::size_t k = 0; k < p.size(); ++k) {
            const double scale = std::sqrt(lambda * Norm2(jacobian[k]));
            for (std::size_t j = 0; j < p.size(); ++j) columns[j].push_back(j == k ? scale : 0.0);
            right.push_back(0.0);
        }
        Triangle(columns, right);
        const Vector d = BackSolve(columns, right);
        Vector trial = p;
        for (std::size_t k = 0; k < p.size(); ++k) trial[k] += d[k];
        const Vector rt = f(trial);
        const double there = Norm2(rt);
        if (there <= squares) {
            const bool still = squares - there < 1e-13 * squares;
            p = trial;
            r = rt;
            squares = there;
            lambda = std::max(lambda / 10.0, 1e-12);
            if (still) break;
        } else {
            lambda *= 10.0;
        }
    }
    Minimum minimum{.At = p, .Errors = Vector(p.size()), .Squares = squares};
    std::vector<Vector> triangle = Jacobian(f, p);
    Vector unused(r.size(), 0.0);
    Triangle(triangle, unused);
    // Errors: the inverse curvature is inv(R) inv(R)'. Row k of inv(R) by solving R' y = e_k.
    for (std::size_t k = 0; k < p.size(); ++k) {
        Vector y(p.size(), 0.0);
        for (std::size_t s = 0; s < p.size(); ++s) {
            double sum = s == k ? 1.0 : 0.0;
            for (std::size_t c = 0; c < s; ++c) sum -= triangle[s][c] * y[c];
            y[s] = sum / triangle[s][s];
        }
        minimum.Errors[k] = std::sqrt(Norm2(y));
    }
    return minimum;
}

}  // namespace judge
