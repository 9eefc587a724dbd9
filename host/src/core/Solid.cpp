// Mass properties of the host's solids in closed form, and UF_MODL_ask_mass_props_3d on top.
// Because every quantity comes from the exact shape and is then carried through the body's
// rotation and translation, a moved or rotated copy of a solid gives the same volume, area
// and principal moments. NX integrates numerically instead, and its values err within the
// accuracy asked for: with numerical mass properties switched on, the host adds such an error.
#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>

#include <uf_modl.h>

#include "HostSession.hpp"
#include "core/Core.hpp"
#include "core/Model.hpp"
#include "core/Solid.hpp"
#include "core/UfErrors.hpp"

namespace host::core {
namespace {

constexpr double kPi = 3.14159265358979323846;

Mat3 Multiply(const Mat3& a, const Mat3& b) {
    Mat3 c{};
    for (int i = 0; i < 3; ++i)
        for (int j = 0; j < 3; ++j)
            for (int k = 0; k < 3; ++k) c[i][j] += a[i][k] * b[k][j];
    return c;
}

Mat3 Transpose(const Mat3& a) {
    Mat3 t{};
    for (int i = 0; i < 3; ++i)
        for (int j = 0; j < 3; ++j) t[i][j] = a[j][i];
    return t;
}

Vec3 Apply(const Mat3& m, const Vec3& v) {
    Vec3 r{0, 0, 0};
    for (int i = 0; i < 3; ++i)
        for (int k = 0; k < 3; ++k) r[i] += m[i][k] * v[k];
    return r;
}

// Properties in the solid's own frame.
SolidProperties LocalProperties(const Solid& solid) {
    SolidProperties p;
    if (solid.shape == Solid::Shape::Box) {
        const double x = solid.size[0], y = solid.size[1], z = solid.size[2];
        p.volume = x * y * z;
        p.area = 2 * (x * y + y * z + z * x);
        p.centroid = {x / 2, y / 2, z / 2};
        p.inertia[0][0] = p.volume * (y * y + z * z) / 12;
        p.inertia[1][1] = p.volume * (x * x + z * z) / 12;
        p.inertia[2][2] = p.volume * (x * x + y * y) / 12;
        return p;
    }
    // Coaxial cylinders along z: end faces, side faces, and the ring where the diameter steps.
    const std::vector<CylinderSection>& sections = solid.sections;
    double zStart = 0, momentZ = 0;
    for (size_t i = 0; i < sections.size(); ++i) {
        const double r = sections[i].d / 2, l = sections[i].l;
        const double v = kPi * r * r * l;
        p.volume += v;
        momentZ += v * (zStart + l / 2);
        p.area += kPi * sections[i].d * l;
        if (i > 0) p.area += std::fabs(kPi * (r * r - sections[i - 1].d * sections[i - 1].d / 4));
        zStart += l;
    }
    if (!sections.empty()) {
        const double r0 = sections.front().d / 2, rn = sections.back().d / 2;
        p.area += kPi * (r0 * r0 + rn * rn);
    }
    const double zc = p.volume > 0 ? momentZ / p.volume : 0;
    p.centroid = {0, 0, zc};
    zStart = 0;
    for (const CylinderSection& s : sections) {
        const double r = s.d / 2, l = s.l;
        const double v = kPi * r * r * l;
        const double offset = zStart + l / 2 - zc;
        const double transverse = v * (3 * r * r + l * l) / 12 + v * offset * offset;
        p.inertia[0][0] += transverse;
        p.inertia[1][1] += transverse;
        p.inertia[2][2] += v * r * r / 2;
        zStart += l;
    }
    return p;
}

// The rotation matrix of Placement::rotate.
Mat3 RotationMatrix(const Vec3& degrees) {
    const double a = degrees[0] * kPi / 180, b = degrees[1] * kPi / 180, c = degrees[2] * kPi / 180;
    const Mat3 rx{{{1, 0, 0}, {0, std::cos(a), -std::sin(a)}, {0, std::sin(a), std::cos(a)}}};
    const Mat3 ry{{{std::cos(b), 0, std::sin(b)}, {0, 1, 0}, {-std::sin(b), 0, std::cos(b)}}};
    const Mat3 rz{{{std::cos(c), -std::sin(c), 0}, {std::sin(c), std::cos(c), 0}, {0, 0, 1}}};
    return Multiply(rz, Multiply(ry, rx));  // x first, then y, then z, about the part's axes
}

}  // namespace

SolidProperties ComputeProperties(const Solid& solid, const Placement& placement) {
    SolidProperties p = LocalProperties(solid);
    const Mat3 r = RotationMatrix(placement.rotate);
    const Vec3 c = Apply(r, p.centroid);
    for (int i = 0; i < 3; ++i) p.centroid[i] = c[i] + placement.at[i];
    p.inertia = Multiply(r, Multiply(p.inertia, Transpose(r)));
    return p;
}

namespace {

// Eigenvalues (ascending) and unit eigenvectors (rows, in the same order) of a symmetric matrix,
// by cyclic Jacobi rotations; a 3x3 matrix converges in a handful of sweeps.
void SymmetricEigen(const Mat3& m, Vec3& values, Mat3& vectors) {
    Mat3 a = m;
    Mat3 v{{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}};  // columns are the eigenvectors
    for (int sweep = 0; sweep < 50; ++sweep) {
        const double off = a[0][1] * a[0][1] + a[0][2] * a[0][2] + a[1][2] * a[1][2];
        const double scale = a[0][0] * a[0][0] + a[1][1] * a[1][1] + a[2][2] * a[2][2];
        if (off <= 1e-30 * scale || off == 0) break;
        for (int p = 0; p < 2; ++p)
            for (int q = p + 1; q < 3; ++q) {
                if (a[p][q] == 0) continue;
                const double theta = (a[q][q] - a[p][p]) / (2 * a[p][q]);
                const double t = (theta >= 0 ? 1 : -1) / (std::fabs(theta) + std::sqrt(theta * theta + 1));
                const double cs = 1 / std::sqrt(t * t + 1), sn = t * cs;
                for (int k = 0; k < 3; ++k) {  // a = a * J
                    const double akp = a[k][p], akq = a[k][q];
                    a[k][p] = cs * akp - sn * akq;
                    a[k][q] = sn * akp + cs * akq;
                }
                for (int k = 0; k < 3; ++k) {  // a = J^T * a
                    const double apk = a[p][k], aqk = a[q][k];
                    a[p][k] = cs * apk - sn * aqk;
                    a[q][k] = sn * apk + cs * aqk;
                }
                for (int k = 0; k < 3; ++k) {
                    const double vkp = v[k][p], vkq = v[k][q];
                    v[k][p] = cs * vkp - sn * vkq;
                    v[k][q] = sn * vkp + cs * vkq;
                }
            }
    }
    int order[3] = {0, 1, 2};
    std::sort(order, order + 3, [&a](int i, int j) { return a[i][i] < a[j][j]; });
    for (int i = 0; i < 3; ++i) {
        values[i] = a[order[i]][order[i]];
        for (int k = 0; k < 3; ++k) vectors[i][k] = v[k][order[i]];
    }
}

}  // namespace
}  // namespace host::core

namespace {

using namespace host::core;

// Length (from mm) and mass (from kg) factors of the units argument.
bool UnitFactors(int units, double& length, double& mass) {
    constexpr double kPound = 0.45359237;  // kg
    switch (units) {
    case 1: length = 1 / 25.4; mass = 1 / kPound; return true;   // pounds, inches
    case 2: length = 1 / 304.8; mass = 1 / kPound; return true;  // pounds, feet
    case 3: length = 0.1; mass = 1000; return true;              // grams, centimetres
    case 4: length = 0.001; mass = 1; return true;               // kilograms, metres
    default: return false;
    }
}

// Numerical mass properties: the relative error NX may make in each quantity, taken from the
// request. accuracy 2 gives relative tolerances (area, volume, first moments, centroidal
// moments, centroidal products); one of 0 is not tested by NX but computed alike, so it takes the
// largest tolerance given. Any other accuracy uses acc_value[0] in 0..1, for which NX states no
// error figure: the host takes 1 - acc_value[0]. Without acc_value the values stay exact.
struct ErrorBounds {
    double area = 0;
    double volume = 0;
    Vec3 moments{0, 0, 0};   // xx, yy, zz
    Vec3 products{0, 0, 0};  // xy, yz, zx
};

double Fraction(double value) { return std::isfinite(value) ? std::clamp(value, 0.0, 1.0) : 0.0; }

ErrorBounds RequestedBounds(int accuracy, const double* accValue) {
    ErrorBounds bounds;
    if (accValue == nullptr) return bounds;
    if (accuracy != 2) {
        const double e = Fraction(1 - accValue[0]);
        bounds.area = bounds.volume = e;
        bounds.moments = bounds.products = {e, e, e};
        return bounds;
    }
    double largest = 0;
    for (int i = 0; i < 11; ++i) largest = std::max(largest, Fraction(accValue[i]));
    auto bound = [&](double given) { return Fraction(given) > 0 ? Fraction(given) : largest; };
    bounds.area = bound(accValue[0]);
    bounds.volume = bound(accValue[1]);
    for (int k = 0; k < 3; ++k) {
        bounds.moments[k] = bound(accValue[5 + k]);
        bounds.products[k] = bound(accValue[8 + k]);
    }
    return bounds;
}

// Session-wide switch, for running whole suites and the runner with numerical mass properties.
bool NumericalEverywhere() {
    const char* mode = std::getenv("VORNADEL_HOST_MASS_PROPS");
    return mode != nullptr && std::string(mode) == "numerical";
}

uint64_t Mix(uint64_t x) {  // the splitmix64 finaliser
    x = (x ^ (x >> 30)) * 0xBF58476D1CE4E5B9ull;
    x = (x ^ (x >> 27)) * 0x94D049BB133111EBull;
    return x ^ (x >> 31);
}

// A number in [-1, 1) fixed by where the body lies and which quantity it is for: the same
// placement always errs alike, another placement (moved or turned) otherwise.
double Deviation(const Placement& placement, int quantity) {
    uint64_t h = Mix(static_cast<uint64_t>(quantity) + 1);
    for (const Vec3* v : {&placement.at, &placement.rotate})
        for (double x : *v) {
            x += 0.0;  // -0 as 0
            uint64_t bits;
            std::memcpy(&bits, &x, sizeof bits);
            h = Mix(h ^ bits);
        }
    return static_cast<double>(h >> 11) * 0x1.0p-52 - 1;
}

// Area, volume and the centroidal tensor, each off by at most its bound: a moment relative to
// itself, a product relative to the smaller of its two moments (a product of a symmetric solid is
// 0, which no numerical integration hits exactly). The centre of mass stays exact.
void AddNumericalError(SolidProperties& p, const Placement& placement, const ErrorBounds& e) {
    p.area *= 1 + e.area * Deviation(placement, 0);
    p.volume *= 1 + e.volume * Deviation(placement, 1);
    const Mat3 exact = p.inertia;
    for (int k = 0; k < 3; ++k) {
        p.inertia[k][k] = exact[k][k] * (1 + e.moments[k] * Deviation(placement, 2 + k));
        const int i = k, j = (k + 1) % 3;
        const double d = e.products[k] * Deviation(placement, 5 + k) * std::min(exact[i][i], exact[j][j]);
        p.inertia[i][j] += d;
        p.inertia[j][i] += d;
    }
}

}  // namespace

extern "C" {

// Solid bodies only (type 1); the bodies' density (Body::Density, steel) is used and the density
// argument, as in NX for solids, is not. The values are exact unless numerical mass properties
// are on (the body's part, or the session); then each body errs within the accuracy asked for.
// Statistics are zero. Products of inertia are the integrals of xy, yz and zx dm (host choice);
// principal moments ascend, the principal axes are the rows of [22..30] in the same order.
int UF_MODL_ask_mass_props_3d(tag_t* objects, int num_objs, int type, int units, double, int accuracy,
                              double acc_value[11], double mass_props[47], double statistics[13]) {
    HOST_NX_CALL("UF_MODL_ask_mass_props_3d");
    if (int code = RequireInitialized("UF_MODL_ask_mass_props_3d")) return code;
    if (objects == nullptr || mass_props == nullptr) return kUfNullArgument;
    double lf = 0, mf = 0;
    if (num_objs <= 0 || type != 1 || !UnitFactors(units, lf, mf)) return kUfBadMassPropsArguments;

    std::vector<const BodyImpl*> bodies;
    for (int i = 0; i < num_objs; ++i) {
        const BodyImpl* body = dynamic_cast<const BodyImpl*>(host::Tags::Find(objects[i]));
        if (body == nullptr) return host::Tags::Find(objects[i]) == nullptr ? kUfBadTag : kUfNotABody;
        bodies.push_back(body);
    }

    // Totals in mm and kg, about the common centroid.
    double area = 0, volume = 0, mass = 0;
    Vec3 centroid{0, 0, 0};
    std::vector<SolidProperties> parts;
    const ErrorBounds bounds = RequestedBounds(accuracy, acc_value);
    const bool everywhere = NumericalEverywhere();
    for (const BodyImpl* body : bodies) {
        parts.push_back(ComputeProperties(body->solid, body->placement));
        if (everywhere || body->part->numericalMassProps) AddNumericalError(parts.back(), body->placement, bounds);
        const SolidProperties& p = parts.back();
        area += p.area;
        volume += p.volume;
        mass += p.volume * kSteelDensity;
        for (int k = 0; k < 3; ++k) centroid[k] += p.volume * kSteelDensity * p.centroid[k];
    }
    for (int k = 0; k < 3; ++k) centroid[k] /= mass;
    Mat3 central{};
    for (size_t b = 0; b < bodies.size(); ++b) {
        const double m = parts[b].volume * kSteelDensity;
        Vec3 d;
        for (int k = 0; k < 3; ++k) d[k] = parts[b].centroid[k] - centroid[k];
        const double dd = d[0] * d[0] + d[1] * d[1] + d[2] * d[2];
        for (int i = 0; i < 3; ++i)
            for (int j = 0; j < 3; ++j)
                central[i][j] += kSteelDensity * parts[b].inertia[i][j] + m * ((i == j ? dd : 0) - d[i] * d[j]);
    }
    Mat3 origin = central;  // about the WCS origin
    const double cc = centroid[0] * centroid[0] + centroid[1] * centroid[1] + centroid[2] * centroid[2];
    for (int i = 0; i < 3; ++i)
        for (int j = 0; j < 3; ++j) origin[i][j] += mass * ((i == j ? cc : 0) - centroid[i] * centroid[j]);
    Vec3 principal;
    Mat3 axes;
    SymmetricEigen(central, principal, axes);

    const double inertiaUnit = mf * lf * lf;
    const double massOut = mass * mf;
    std::fill(mass_props, mass_props + 47, 0.0);
    mass_props[0] = area * lf * lf;
    mass_props[1] = volume * lf * lf * lf;
    mass_props[2] = massOut;
    for (int k = 0; k < 3; ++k) {
        mass_props[3 + k] = centroid[k] * lf;
        mass_props[6 + k] = mass * centroid[k] * mf * lf;
        mass_props[9 + k] = origin[k][k] * inertiaUnit;
        mass_props[12 + k] = central[k][k] * inertiaUnit;
        mass_props[31 + k] = principal[k] * inertiaUnit;
        mass_props[34 + k] = std::sqrt(mass_props[9 + k] / massOut);
        mass_props[37 + k] = std::sqrt(mass_props[12 + k] / massOut);
        for (int j = 0; j < 3; ++j) mass_props[22 + 3 * k + j] = axes[k][j];
    }
    mass_props[15] = (central[0][0] + central[1][1] + central[2][2]) / 2 * inertiaUnit;
    mass_props[16] = -origin[0][1] * inertiaUnit;
    mass_props[17] = -origin[1][2] * inertiaUnit;
    mass_props[18] = -origin[2][0] * inertiaUnit;
    mass_props[19] = -central[0][1] * inertiaUnit;
    mass_props[20] = -central[1][2] * inertiaUnit;
    mass_props[21] = -central[2][0] * inertiaUnit;
    mass_props[40] = std::sqrt(mass_props[15] / massOut);
    mass_props[46] = massOut / mass_props[1];
    if (statistics != nullptr) std::fill(statistics, statistics + 13, 0.0);
    return 0;
}

}  // extern "C"
