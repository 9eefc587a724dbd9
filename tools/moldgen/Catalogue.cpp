// Catalogue sizes and purchase data of the standard parts (see Catalogue.hpp).
#include "Catalogue.hpp"

#include <algorithm>
#include <stdexcept>

namespace moldgen {
namespace {

constexpr Tenths Mm10(int mm) { return mm * 10; }

Solid Stack(std::vector<Section> sections) {
    Solid solid;
    solid.shape = Solid::Shape::Stack;
    solid.sections = std::move(sections);
    return solid;
}

Solid Cylinder(Tenths d, Tenths l) {
    Solid solid;
    solid.shape = Solid::Shape::Cylinder;
    solid.sections = {{d, l}};
    return solid;
}

Solid Box(Tenths x, Tenths y, Tenths z) {
    Solid solid;
    solid.shape = Solid::Shape::Box;
    solid.x = x;
    solid.y = y;
    solid.z = z;
    return solid;
}

// The first of the ascending series not shorter than wanted, else the last.
int NextInSeries(const std::vector<int>& series, int wanted) {
    for (int length : series)
        if (length >= wanted) return length;
    return series.back();
}

int RoundUp(int value, int step) { return (value + step - 1) / step * step; }

std::string Times(const std::string& a, const std::string& b) { return a + u8"×" + b; }

// Supplies. The first of each list is the one most designers choose.
const Supply kPanqiScrew{u8"盘起", u8"12.9级合金钢", u8"发黑", u8"东莞盘起工业", u8"现货"};
const Supply kMisumiScrew{u8"米思米", u8"12.9级合金钢", u8"发黑", u8"米思米(中国)精密机械", u8"现货"};
const Supply kMisumiPin{u8"米思米", u8"SKD61", u8"渗氮", u8"米思米(中国)精密机械", u8"3天"};
const Supply kPanqiPin{u8"盘起", u8"SKD61", u8"淬火HRC58-62", u8"东莞盘起工业", u8"3天"};
const Supply kFudebaSleeve{u8"富得巴", u8"SKD61", u8"渗氮", u8"深圳富得巴", u8"5天"};
const Supply kLungKeeGuide{u8"龙记", u8"SUJ2", u8"淬火HRC58-62", u8"龙记集团", u8"7天"};
const Supply kLungKeeBrassBush{u8"龙记", u8"黄铜", u8"无", u8"龙记集团", u8"15天"};
const Supply kMisumiSpring{u8"米思米", u8"SWP-A", u8"无", u8"米思米(中国)精密机械", u8"3天"};
const Supply kDmeSpring{u8"DME", u8"SWP-A", u8"", u8"", u8"15天"};
const Supply kMisumiDowel{u8"米思米", u8"SUJ2", u8"淬火HRC58-62", u8"米思米(中国)精密机械", u8"现货"};
const Supply kPanqiDowel{u8"盘起", u8"SUJ2", u8"淬火HRC58-62", u8"东莞盘起工业", u8"现货"};
const Supply kHascoNipple{u8"HASCO", u8"黄铜", u8"", u8"", u8"15天"};
const Supply kDmeNipple{u8"DME", u8"黄铜", u8"", u8"", u8"15天"};
const Supply kORing{u8"", u8"NBR", u8"", u8"米思米(中国)精密机械", u8"现货"};
const Supply kMisumiORing{u8"米思米", u8"NBR", u8"", u8"米思米(中国)精密机械", u8"现货"};
const Supply kPanqiBlock{u8"盘起", u8"45#钢", u8"调质", u8"东莞盘起工业", u8"5天"};
const Supply kPanqiStopPin{u8"盘起", u8"45#钢", u8"淬火HRC58-62", u8"东莞盘起工业", u8"现货"};
const Supply kLungKeeRing{u8"龙记", u8"45#钢", u8"发黑", u8"龙记集团", u8"7天"};
const Supply kLungKeeSprue{u8"龙记", u8"SKD61", u8"淬火HRC58-62", u8"龙记集团", u8"7天"};
const Supply kHascoSprue{u8"HASCO", u8"SKD61", u8"淬火HRC58-62", u8"", u8"15天"};

// Layers of the bundled std_layers.csv: 61 screws and dowels, 62 ejector pins and sleeves,
// 63 guide pillars, bushes and springs, 65 water fittings.
constexpr int kScrewLayer = 61, kEjectionLayer = 62, kGuideLayer = 63, kWaterLayer = 65;

}  // namespace

const KindInfo& Info(Kind kind) {
    static const std::vector<KindInfo> kinds = {
        {u8"内六角螺钉", kScrewLayer, 130, {{kPanqiScrew, 3}, {kMisumiScrew, 1}}},
        {u8"顶针", kEjectionLayer, 36, {{kMisumiPin, 3}, {kPanqiPin, 1}}},
        {u8"司筒", kEjectionLayer, 42, {{kFudebaSleeve, 3}, {kMisumiPin, 1}}},
        {u8"导柱", kGuideLayer, 108, {{kLungKeeGuide, 1}}},
        {u8"导套", kGuideLayer, 103, {{kLungKeeGuide, 3}, {kLungKeeBrassBush, 1}}},
        {u8"回针", kEjectionLayer, 36, {{kLungKeeGuide, 1}}},
        {u8"弹簧", kGuideLayer, 6, {{kMisumiSpring, 2}, {kDmeSpring, 1}}},
        {u8"定位销", kScrewLayer, 130, {{kMisumiDowel, 2}, {kPanqiDowel, 1}}},
        {u8"水嘴", kWaterLayer, 31, {{kHascoNipple, 1}, {kDmeNipple, 1}}},
        {u8"密封圈", kWaterLayer, 125, {{kORing, 2}, {kMisumiORing, 1}}},
        {u8"限位块", kScrewLayer, 78, {{kPanqiBlock, 1}}},
        {u8"垃圾钉", kEjectionLayer, 103, {{kPanqiStopPin, 1}}},
        // The same supply as the usual ejector pin: a puller of an ejector pin's size is the
        // same solid with the same data under another name.
        {u8"拉料杆", kEjectionLayer, 36, {{kMisumiPin, 1}}},
        {u8"定位圈", kScrewLayer, 75, {{kLungKeeRing, 1}}},
        {u8"唧嘴", kScrewLayer, 75, {{kLungKeeSprue, 2}, {kHascoSprue, 1}}},
    };
    return kinds[static_cast<size_t>(kind)];
}

const std::vector<int>& StandardPartLayers() {
    static const std::vector<int> layers = {kScrewLayer, kEjectionLayer, kGuideLayer, kWaterLayer};
    return layers;
}

std::string Phi(Tenths d) { return u8"Φ" + Mm(d); }

// ---------------------------------------------------------------------------------------------
// Screws

namespace {

struct ScrewRow {
    int metric;
    Tenths headDiameter;  // dk
    Tenths headHeight;    // k
    int shortest, longest;
};

// ISO 4762: head diameter and height, and the lengths each size comes in.
const std::vector<ScrewRow>& ScrewRows() {
    static const std::vector<ScrewRow> rows = {
        {4, 70, 40, 8, 40},      {5, 85, 50, 10, 50},     {6, 100, 60, 10, 60},    {8, 130, 80, 12, 80},
        {10, 160, 100, 16, 100}, {12, 180, 120, 20, 120}, {14, 210, 140, 25, 140}, {16, 240, 160, 25, 160},
    };
    return rows;
}

const std::vector<int> kScrewLengths = {8,  10, 12, 16, 20, 25, 30, 35,  40,  45,  50,  55,
                                        60, 65, 70, 80, 90, 100, 110, 120, 130, 140, 150, 160};

}  // namespace

Item Screw(int metric, int wantedLength) {
    for (const ScrewRow& row : ScrewRows()) {
        if (row.metric != metric) continue;
        std::vector<int> lengths;
        for (int length : kScrewLengths)
            if (length >= row.shortest && length <= row.longest) lengths.push_back(length);
        const int length = NextInSeries(lengths, wantedLength);
        return {Stack({{row.headDiameter, row.headHeight}, {Mm10(metric), Mm10(length)}}),
                Times("M" + std::to_string(metric), std::to_string(length))};
    }
    throw std::logic_error("no ISO 4762 screw M" + std::to_string(metric));
}

// ---------------------------------------------------------------------------------------------
// Ejection: pins, sleeves, return pins, stop pins

namespace {

struct HeadRow {
    Tenths d, headDiameter, headHeight;
};

// DIN 1530-1 heads.
const std::vector<HeadRow> kPinHeads = {{20, 40, 20}, {25, 50, 20}, {30, 60, 30},  {40, 80, 30},  {50, 100, 30},
                                        {60, 120, 50}, {80, 140, 50}, {100, 160, 50}, {120, 180, 70}};
const std::vector<int> kPinLengths = {100, 125, 160, 200, 250, 315, 400, 500};

const HeadRow& PinHead(Tenths d) {
    for (const HeadRow& row : kPinHeads)
        if (row.d == d) return row;
    throw std::logic_error("no ejector pin of diameter " + Mm(d));
}

}  // namespace

const std::vector<Tenths>& EjectorPinDiameters() {
    static const std::vector<Tenths> diameters = [] {
        std::vector<Tenths> list;
        for (const HeadRow& row : kPinHeads) list.push_back(row.d);
        return list;
    }();
    return diameters;
}

Item CutEjectorPin(Tenths d, int length) {
    const HeadRow& head = PinHead(d);
    return {Stack({{head.headDiameter, head.headHeight}, {d, Mm10(length) - head.headHeight}}), Times(Phi(d), std::to_string(length))};
}

Item EjectorPin(Tenths d, int wantedLength) { return CutEjectorPin(d, NextInSeries(kPinLengths, wantedLength)); }

const std::vector<Tenths>& SleeveDiameters() {
    static const std::vector<Tenths> diameters = {40, 50, 60, 80, 100, 120};
    return diameters;
}

Item Sleeve(Tenths d, int wantedLength) {
    const int length = NextInSeries(kPinLengths, wantedLength);
    const Tenths headHeight = d <= 60 ? 30 : 50;
    return {Stack({{d + 40, headHeight}, {d, Mm10(length) - headHeight}}), Times(Phi(d), std::to_string(length))};
}

Item ReturnPin(int d, int wantedLength) {
    const int length = RoundUp(wantedLength, 10);
    const Tenths headHeight = d <= 15 ? 50 : 60;
    return {Stack({{Mm10(d + 6), headHeight}, {Mm10(d), Mm10(length) - headHeight}}), Times(Phi(Mm10(d)), std::to_string(length))};
}

Item StopPin(int index) {
    struct Row {
        int head, headHeight, d, l;
    };
    static const Row rows[] = {{16, 5, 8, 10}, {20, 5, 10, 12}, {25, 6, 12, 15}};
    const Row& row = rows[index];
    return {Stack({{Mm10(row.head), Mm10(row.headHeight)}, {Mm10(row.d), Mm10(row.l)}}),
            Times(Phi(Mm10(row.head)), std::to_string(row.headHeight))};
}

// ---------------------------------------------------------------------------------------------
// Guiding

const std::vector<int>& GuideDiameters() {
    static const std::vector<int> diameters = {16, 20, 25, 30, 35, 40, 50};
    return diameters;
}

namespace {

int CollarHeight(int d) { return d <= 25 ? 6 : d <= 40 ? 8 : 10; }
int CollarAllowance(int d) { return d <= 25 ? 6 : 8; }

int BushOutside(int d) {
    switch (d) {
    case 16: return 25;
    case 20: return 30;
    case 25: return 35;
    case 30: return 42;
    case 35: return 48;
    case 40: return 55;
    default: return 70;
    }
}

}  // namespace

Item GuidePillar(int d, int wantedLength) {
    const int length = RoundUp(wantedLength, 10);
    return {Stack({{Mm10(d + CollarAllowance(d)), Mm10(CollarHeight(d))}, {Mm10(d), Mm10(length - CollarHeight(d))}}),
            Times(Phi(Mm10(d)), std::to_string(length))};
}

Item GuideBush(int d, int wantedLength) {
    const int length = RoundUp(wantedLength, 5);
    const int outside = BushOutside(d);
    return {Stack({{Mm10(outside + CollarAllowance(d)), Mm10(CollarHeight(d))}, {Mm10(outside), Mm10(length - CollarHeight(d))}}),
            Times(Phi(Mm10(d)), std::to_string(length))};
}

Item Spring(int d, int wantedLength, bool stack) {
    static const std::vector<int> lengths = {25, 30, 35, 40, 45, 50, 55, 60, 65, 70, 75, 80, 90, 100, 125, 150, 175, 200};
    const int length = NextInSeries(lengths, wantedLength);
    Item item;
    item.type = Times(Phi(Mm10(d)), std::to_string(length));
    if (!stack) {
        item.solid = Cylinder(Mm10(d), Mm10(length));
    } else {
        // Ground end coils of full diameter, the coils between drawn a wire's width inside.
        const Tenths end = Mm10(d) / 10;
        item.solid = Stack({{Mm10(d), end}, {Mm10(d) - end, Mm10(length) - 2 * end}, {Mm10(d), end}});
    }
    return item;
}

// ---------------------------------------------------------------------------------------------
// Fixing and positioning

const std::vector<int>& DowelDiameters() {
    static const std::vector<int> diameters = {6, 8, 10, 12, 16, 20};
    return diameters;
}

Item Dowel(int d, int wantedLength) {
    static const std::vector<int> lengths = {16, 20, 25, 30, 35, 40, 50, 60, 80, 100};
    const int length = NextInSeries(lengths, std::max(wantedLength, 2 * d));
    return {Cylinder(Mm10(d), Mm10(length)), Times(Phi(Mm10(d)), std::to_string(length))};
}

int StopBlockCount() { return 6; }

Item StopBlock(int index) {
    static const int sizes[][3] = {{20, 20, 10}, {25, 25, 15}, {30, 20, 15}, {40, 20, 15}, {40, 30, 20}, {50, 30, 20}};
    const int* s = sizes[index];
    return {Box(Mm10(s[0]), Mm10(s[1]), Mm10(s[2])), Times(Times(std::to_string(s[0]), std::to_string(s[1])), std::to_string(s[2]))};
}

Item LocatingRing(int index) {
    static const int sizes[][2] = {{100, 10}, {100, 15}, {120, 15}, {150, 15}};
    const int diameter = sizes[index][0], height = sizes[index][1];
    return {Stack({{Mm10(diameter), Mm10(height)}, {Mm10(diameter * 3 / 5), Mm10(5)}}),
            Times(Phi(Mm10(diameter)), std::to_string(height))};
}

Item SprueBush(int d, int wantedLength) {
    const int length = RoundUp(wantedLength, 10);
    return {Stack({{Mm10(35), Mm10(10)}, {Mm10(d), Mm10(length)}}), Times(Phi(Mm10(d)), std::to_string(length))};
}

// ---------------------------------------------------------------------------------------------
// Cooling

namespace {

struct NippleRow {
    const char* type;
    Tenths thread, threadLength, hexagon, hexagonLength, nipple, nippleLength;
};

const NippleRow kNipples[] = {
    {"PT1/8", 97, 80, 140, 80, 90, 250},
    {"PT1/4", 131, 110, 190, 100, 100, 300},
    {"PT3/8", 166, 120, 220, 120, 140, 350},
};

}  // namespace

Item WaterNipple(int size) {
    const NippleRow& row = kNipples[size];
    return {Stack({{row.thread, row.threadLength}, {row.hexagon, row.hexagonLength}, {row.nipple, row.nippleLength}}), row.type};
}

Tenths WaterNippleThread(int size) { return kNipples[size].threadLength; }

int ORingCount() { return 9; }

Item ORing(int index) {
    static const Tenths sizes[][2] = {{80, 19}, {100, 19}, {120, 24}, {150, 24}, {180, 24},
                                      {200, 31}, {250, 31}, {300, 35}, {400, 35}};
    const Tenths inner = sizes[index][0], section = sizes[index][1];
    // The round section as three rings: the middle one at full width.
    const Tenths edge = (section * 3 + 5) / 10;
    return {Stack({{inner + section, edge}, {inner + 2 * section, section - 2 * edge}, {inner + section, edge}}),
            Times(Phi(inner), Mm(section))};
}

}  // namespace moldgen
