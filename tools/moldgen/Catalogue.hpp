// The catalogue the generator buys from: each kind of standard part with its name, layer,
// colour, the purchase data a designer enters for it, and its catalogue sizes as solids. The
// names, brands, materials, heat treatments, suppliers, lead times and layers are those of the
// bundled configuration (samples/config/塑胶模/std_part_config.csv, samples/config/TK/
// std_layers.csv); the sizes follow the usual series (ISO 4762 screws, DIN 1530 ejector pins,
// die springs, PT water nipples ...). Text is UTF-8.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "Mould.hpp"

namespace moldgen {

enum class Kind {
    Screw,         // 内六角螺钉
    EjectorPin,    // 顶针
    Sleeve,        // 司筒
    GuidePillar,   // 导柱
    GuideBush,     // 导套
    ReturnPin,     // 回针 (not in the configured name order)
    Spring,        // 弹簧
    Dowel,         // 定位销
    WaterNipple,   // 水嘴
    ORing,         // 密封圈
    StopBlock,     // 限位块
    StopPin,       // 垃圾钉 (listed, not in the name order)
    SpruePuller,   // 拉料杆 (listed, not in the name order)
    LocatingRing,  // 定位圈 (listed, not in the name order)
    SprueBush,     // 唧嘴 (listed, not in the name order)
};

// What a purchase line says besides its name and type.
struct Supply {
    const char* brand;
    const char* material;
    const char* heatTreatment;
    const char* supplier;
    const char* leadTime;
};

struct KindInfo {
    const char* name;
    int layer;
    int color;
    std::vector<std::pair<Supply, int>> supplies;  // with their weights
};

const KindInfo& Info(Kind kind);

// The standard-part layers of the bundled configuration, in its order.
const std::vector<int>& StandardPartLayers();

// A catalogue item: its solid and the type text that names its size ("M8×30", "Φ6×200").
struct Item {
    Solid solid;
    std::string type;
};

// Socket head cap screw, ISO 4762: sizes M4..M16; the length is the smallest of the length
// series of that size not shorter than wantedLength (the longest of the size when none is).
// The solid is the head then the shank.
Item Screw(int metric, int wantedLength);

// Ejector pin with a cylindrical head (DIN 1530), d in tenths (20..120); the length is the next
// catalogue length (100..500) not shorter than wantedLength. Head first.
Item EjectorPin(Tenths d, int wantedLength);
const std::vector<Tenths>& EjectorPinDiameters();
// An ejector pin of exactly this length, cut to length (for one-off bodies).
Item CutEjectorPin(Tenths d, int length);

// Ejector sleeve, outer diameter d in tenths (40..120), the next catalogue length. Head first.
Item Sleeve(Tenths d, int wantedLength);
const std::vector<Tenths>& SleeveDiameters();

// Guide pillar with collar, d 16..50 mm, length rounded up to 10 mm. Collar first.
Item GuidePillar(int d, int wantedLength);
// The guide bush of a pillar of diameter d, length rounded up to 5 mm. Collar first.
Item GuideBush(int d, int wantedLength);
const std::vector<int>& GuideDiameters();

// Return pin, d 12..25 mm, length rounded up to 10 mm. Head first.
Item ReturnPin(int d, int wantedLength);

// Die spring of outer diameter d (20..50 mm) and the next catalogue free length: a plain
// cylinder, or a stack with ground end coils.
Item Spring(int d, int wantedLength, bool stack);

// Dowel pin d 6..20 mm, the next catalogue length.
Item Dowel(int d, int wantedLength);
const std::vector<int>& DowelDiameters();

// Water nipple PT1/8, PT1/4 or PT3/8 (size 0, 1, 2): thread, hexagon, hose nipple.
Item WaterNipple(int size);
// The length of its thread, the part inside the plate.
Tenths WaterNippleThread(int size);

// O-ring, by catalogue index: inner diameter x cross-section, a thin stack.
Item ORing(int index);
int ORingCount();

// Stop block (a box), by catalogue index.
Item StopBlock(int index);
int StopBlockCount();

// Stop pin (head then shank), by catalogue index 0..2.
Item StopPin(int index);

// Locating ring (flange then spigot), by catalogue index 0..3.
Item LocatingRing(int index);

// Sprue bush: head Φ35 x 10, then the body d (12, 16, 20) rounded up to 10 mm.
Item SprueBush(int d, int wantedLength);

// "Φ6", "Φ2.5": the diameter sign and the size in millimetres.
std::string Phi(Tenths d);

}  // namespace moldgen
