// The geometry of a body: a solid of a few exact shapes, placed in the part, and its mass
// properties in closed form. Lengths are millimetres.
#pragma once

#include <array>
#include <vector>

namespace host::core {

using Vec3 = std::array<double, 3>;
using Mat3 = std::array<std::array<double, 3>, 3>;

// One coaxial cylinder of a stack.
struct CylinderSection {
    double d = 0;  // diameter
    double l = 0;  // length along the local z axis
};

// A solid in its own frame.
//  - Box: from the origin to (x, y, z).
//  - Cylinder: axis on the local z axis, from z = 0 to z = l (one section).
//  - Stack: coaxial cylinders on the local z axis, the first from z = 0, each starting where
//    the one before ends (screws, pins, bushes).
struct Solid {
    enum class Shape { Box, Cylinder, Stack };
    Shape shape = Shape::Box;
    Vec3 size{1, 1, 1};                     // Box
    std::vector<CylinderSection> sections;  // Cylinder (exactly one) and Stack
};

// Where the solid sits in the part: first rotated about the part's x, then y, then z axis (in
// degrees, about the origin), then moved by at.
struct Placement {
    Vec3 at{0, 0, 0};
    Vec3 rotate{0, 0, 0};
};

// Geometric properties of a placed solid (per unit density: multiply the inertia by the density
// to get mass moments).
struct SolidProperties {
    double area = 0;
    double volume = 0;
    Vec3 centroid{0, 0, 0};
    // Inertia tensor about the centroid for unit density: the integral over the volume of
    // (r.r I - r r^T), r measured from the centroid, in part axes.
    Mat3 inertia{};
};

SolidProperties ComputeProperties(const Solid& solid, const Placement& placement);

}  // namespace host::core
