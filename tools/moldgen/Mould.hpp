// moldgen: realistic plastic-injection moulds as host part files (docs/part-file.md), of any
// size, reproducible from the arguments.
//
// A generated mould is a two-plate mould as a designer leaves it after a first save and some
// later edits: the plate stack and inserts (bodies without the standard-part marker) and
// `bodies` standard-part bodies marked "转图标识" = "Y" - socket head cap screws, ejector pins and
// sleeves, guide pillars and bushes, return pins and springs, dowels, water nipples, O-rings,
// stop blocks, stop pins, sprue pullers, one locating ring and one sprue bush - placed on the
// plate grid as translated and rotated copies. Most copies carry the twelve purchase attributes
// that saving writes; some are unlabelled copies (marker only), some form hand-made groups
// ("组ID"), some are modified (colour 186, "状态" "改模"), a few are blanked or lie on a
// visible-only (70) or invisible (71) layer, a few are unnamed, and some purchase lines carry
// names outside the configured name order. Names, types, brands, materials, heat treatments,
// suppliers, lead times and layers (61, 62, 63, 65) follow the bundled configuration
// samples/config/塑胶模 and samples/config/TK/std_layers.csv.
#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace moldgen {

// Every length and place is a whole number of tenths of a millimetre, so that the file holds
// exact, short decimals and the same arguments give the same bytes everywhere.
using Tenths = int;

// Tenths as millimetres in the shortest decimal: 25 -> "2.5", 300 -> "30", -5 -> "-0.5".
std::string Mm(Tenths t);

struct Section {
    Tenths d = 0;  // diameter
    Tenths l = 0;  // length along the axis
};

// The host's shapes: a box from its corner, a cylinder or a stack of coaxial cylinders on the
// local z axis from z = 0.
struct Solid {
    enum class Shape { Box, Cylinder, Stack };
    Shape shape = Shape::Box;
    Tenths x = 0, y = 0, z = 0;     // Box
    std::vector<Section> sections;  // Cylinder (one section) and Stack

    bool operator==(const Solid& other) const;
};

// A string attribute; title and value are UTF-8.
struct Attribute {
    std::string title;
    std::string value;
};

struct Body {
    unsigned tag = 0;
    int layer = 1;
    int color = 1;
    bool blanked = false;
    std::vector<Attribute> attributes;
    Solid solid;
    std::array<Tenths, 3> at{0, 0, 0};  // translation
    std::array<int, 3> rotate{0, 0, 0};  // degrees about x, then y, then z

    // The value of a title, or NULL when the body has no such attribute.
    const std::string* Find(const std::string& title) const;
};

struct Mould {
    std::string leaf;                        // UTF-8
    std::vector<Attribute> attributes;       // the work part's
    int workLayer = 1;
    std::map<int, std::string> layerStates;  // layer -> "visible" | "invisible"
    std::vector<Body> bodies;                // in part order
};

struct Options {
    int bodies = 0;          // standard-part bodies (marked "Y"), at least 1
    std::uint64_t seed = 1;
    std::string leaf;        // UTF-8; empty: "MOULD-<bodies>-<seed>"
};

// The largest mould the generator makes: a mould of a million standard parts has no designer.
constexpr int kMaxBodies = 1000000;

// The mould of these options. Throws std::invalid_argument when bodies is outside
// 1..kMaxBodies. The same options always give the same mould.
Mould Generate(const Options& options);

// The mould as a part file, in the canonical form the host saves (a file the host loads and
// saves back unchanged).
std::string PartFileText(const Mould& mould);

}  // namespace moldgen
