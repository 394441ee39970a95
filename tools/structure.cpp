// Crystal structures by symmetry and atoms: which reflections there are, and how strong they are.
#include "structure.h"

#include "core/fault.h"

#include <algorithm>
#include <cmath>
#include <complex>
#include <cstdlib>
#include <numbers>

namespace vael::tools {
namespace {

constexpr int UNIT = 24;  // translations are whole numbers of 24ths
constexpr double SAME_PLACE = 1e-4;
constexpr double SAME_D = 1e-9;
constexpr double EXTINCT_F = 1e-6;  // relative to all electrons of the cell

int Wrapped(int t) { return ((t % UNIT) + UNIT) % UNIT; }

SymmetryOp Product(const SymmetryOp& a, const SymmetryOp& b) {
    SymmetryOp out;
    for (std::size_t i = 0; i < 3; ++i) {
        out.T[i] = a.T[i];
        for (std::size_t j = 0; j < 3; ++j) {
            out.T[i] += a.R[i][j] * b.T[j];
            for (std::size_t k = 0; k < 3; ++k) out.R[i][j] += a.R[i][k] * b.R[k][j];
        }
        out.T[i] = Wrapped(out.T[i]);
    }
    return out;
}

std::vector<std::string> Pieces(std::string_view text, char separator) {
    std::vector<std::string> out{""};
    for (const char c : text) {
        if (c == separator) {
            out.emplace_back();
        } else {
            out.back() += c;
        }
    }
    return out;
}

using Place = std::array<double, 3>;

double Fraction(double x) {
    const double rest = x - std::floor(x);
    return rest > 1.0 - SAME_PLACE ? rest - 1.0 : rest;
}

/// All places of an atom in the cell, each once.
std::vector<Place> Orbit(const Atom& atom, const std::vector<SymmetryOp>& group) {
    std::vector<Place> places;
    for (const SymmetryOp& op : group) {
        Place place;
        for (std::size_t i = 0; i < 3; ++i)
            place[i] = Fraction(op.R[i][0] * atom.X + op.R[i][1] * atom.Y +
                                op.R[i][2] * atom.ZFrac + static_cast<double>(op.T[i]) / UNIT);
        const bool known = std::any_of(places.begin(), places.end(), [&](const Place& other) {
            return std::fabs(Fraction(place[0] - other[0])) < SAME_PLACE &&
                   std::fabs(Fraction(place[1] - other[1])) < SAME_PLACE &&
                   std::fabs(Fraction(place[2] - other[2])) < SAME_PLACE;
        });
        if (!known) places.push_back(place);
    }
    return places;
}

struct Scatterer {
    int Z;
    std::vector<Place> Places;
};

std::complex<double> StructureFactor(const std::vector<Scatterer>& atoms, int h, int k, int l,
                                     double s) {
    std::complex<double> sum;
    for (const Scatterer& atom : atoms)
        for (const Place& place : atom.Places)
            sum +=
                std::polar(ScatteringFactor(atom.Z, s),
                           2.0 * std::numbers::pi * (h * place[0] + k * place[1] + l * place[2]));
    return sum;
}

/// The reciprocal metric tensor (a*a*, b*b*, c*c*, b*c*, a*c*, a*b*), by inverting the direct one.
std::array<double, 6> ReciprocalMetric(const Cell& cell) {
    const auto cosine = [](double degrees) {
        if (degrees == 90.0) return 0.0;
        return std::cos(degrees * std::numbers::pi / 180.0);
    };
    const double aa = cell[0] * cell[0], bb = cell[1] * cell[1], cc = cell[2] * cell[2];
    const double bc = cell[1] * cell[2] * cosine(cell[3]);
    const double ac = cell[0] * cell[2] * cosine(cell[4]);
    const double ab = cell[0] * cell[1] * cosine(cell[5]);
    const double det =
        aa * (bb * cc - bc * bc) - ab * (ab * cc - bc * ac) + ac * (ab * bc - bb * ac);
    return {(bb * cc - bc * bc) / det, (aa * cc - ac * ac) / det, (aa * bb - ab * ab) / det,
            (ab * ac - aa * bc) / det, (ab * bc - ac * bb) / det, (ac * bc - ab * cc) / det};
}

struct Reflection {
    std::array<int, 3> Hkl;
    double D;
    double F2;
};

/// Whether `a` names a line better than `b`.
bool NamesBetter(const std::array<int, 3>& a, const std::array<int, 3>& b) {
    const auto negatives = [](const std::array<int, 3>& index) {
        return std::count_if(index.begin(), index.end(), [](int i) { return i < 0; });
    };
    const auto ranked = [&](const std::array<int, 3>& i) {
        return std::array<long, 6>{-negatives(i), i[2] >= 0, i[1] >= 0, i[0], i[1], i[2]};
    };
    return ranked(a) > ranked(b);
}

std::vector<Reflection> AllowedReflections(const Structure& structure, const Cell& cell,
                                           double dMin) {
    const std::vector<SymmetryOp> group = MakeGroup(structure.Generators);
    const auto metric = ReciprocalMetric(cell);
    std::vector<Scatterer> atoms;
    double electrons = 0.0;
    for (const Atom& atom : structure.Atoms) {
        atoms.push_back({atom.Z, Orbit(atom, group)});
        electrons += atom.Z * static_cast<double>(atoms.back().Places.size());
    }
    // |h| <= a / dMin holds for every lattice, since h = a . (reciprocal vector of length 1/d).
    const auto most = [&](std::size_t i) { return static_cast<int>(cell[i] / dMin); };
    std::vector<Reflection> out;
    for (int h = -most(0); h <= most(0); ++h)
        for (int k = -most(1); k <= most(1); ++k)
            for (int l = -most(2); l <= most(2); ++l) {
                if (h == 0 && k == 0 && l == 0) continue;
                const double q = metric[0] * h * h + metric[1] * k * k + metric[2] * l * l +
                                 2.0 * (metric[3] * k * l + metric[4] * h * l + metric[5] * h * k);
                const double d = 1.0 / std::sqrt(q);
                if (d < dMin || IsExtinct(group, h, k, l)) continue;
                double f2 = 0.0;
                if (!atoms.empty()) {
                    // Which lines are extinct is asked of atoms that scatter with all electrons.
                    if (std::abs(StructureFactor(atoms, h, k, l, 0.0)) < EXTINCT_F * electrons)
                        continue;
                    f2 = std::norm(StructureFactor(atoms, h, k, l, 0.5 / d));
                }
                out.push_back({{h, k, l}, d, f2});
            }
    return out;
}

}  // namespace

SymmetryOp ParseOp(std::string_view text) {
    const auto rows = Pieces(text, ',');
    if (rows.size() != 3) throw Fault(FaultNumber::Argument, "no operation: " + std::string(text));
    SymmetryOp op;
    for (std::size_t i = 0; i < 3; ++i) {
        int sign = 1;
        for (std::size_t at = 0; at < rows[i].size(); ++at) {
            const char c = rows[i][at];
            if (c == '+' || c == '-') {
                sign = c == '+' ? 1 : -1;
            } else if (c >= 'x' && c <= 'z') {
                op.R[i][static_cast<std::size_t>(c - 'x')] = sign;
            } else if (c >= '1' && c <= '9' && at + 2 < rows[i].size() && rows[i][at + 1] == '/') {
                op.T[i] = Wrapped(sign * UNIT * (c - '0') / (rows[i][at + 2] - '0'));
                at += 2;
            } else {
                throw Fault(FaultNumber::Argument, "no operation: " + std::string(text));
            }
        }
    }
    return op;
}

std::vector<SymmetryOp> MakeGroup(std::string_view generators) {
    SymmetryOp identity;
    for (std::size_t i = 0; i < 3; ++i) identity.R[i][i] = 1;
    std::vector<SymmetryOp> made;
    for (const std::string& text : Pieces(generators, ' '))
        if (!text.empty()) made.push_back(ParseOp(text));
    std::vector<SymmetryOp> group{identity};
    for (std::size_t i = 0; i < group.size(); ++i)
        for (const SymmetryOp& generator : made) {
            const SymmetryOp next = Product(generator, group[i]);
            if (std::find(group.begin(), group.end(), next) == group.end()) group.push_back(next);
        }
    return group;
}

bool IsExtinct(const std::vector<SymmetryOp>& group, int h, int k, int l) {
    const std::array<int, 3> index{h, k, l};
    for (const SymmetryOp& op : group) {
        bool stays = true;
        int phase = 0;
        for (std::size_t j = 0; j < 3; ++j) {
            const int turned = h * op.R[0][j] + k * op.R[1][j] + l * op.R[2][j];
            stays = stays && turned == index[j];
            phase += index[j] * op.T[j];
        }
        if (stays && Wrapped(phase) != 0) return true;
    }
    return false;
}

double ScatteringFactor(int z, double s) {
    const double ratio = s / (0.27 * std::cbrt(static_cast<double>(z)));
    return z / (1.0 + ratio * ratio);
}

std::vector<PowderLine> PowderLines(const Structure& structure, const Cell& cell, double dMin) {
    std::vector<Reflection> all = AllowedReflections(structure, cell, dMin);
    std::sort(all.begin(), all.end(), [](const Reflection& a, const Reflection& b) {
        return a.D != b.D ? a.D > b.D : a.Hkl > b.Hkl;
    });
    std::vector<PowderLine> lines;
    std::array<int, 3> best{};
    for (const Reflection& reflection : all) {
        if (lines.empty() || lines.back().D - reflection.D > SAME_D * reflection.D) {
            lines.push_back({{}, reflection.D, 0, 0.0});
            best = reflection.Hkl;
        }
        if (NamesBetter(reflection.Hkl, best)) best = reflection.Hkl;
        PowderLine& line = lines.back();
        for (std::size_t i = 0; i < 3; ++i) line.Hkl[i] = static_cast<std::int16_t>(best[i]);
        ++line.Multiplicity;
        line.SumF2 += reflection.F2;
    }
    return lines;
}

}  // namespace vael::tools
