// The generator: a two-plate mould sized for the number of standard parts asked for, its plate
// stack and inserts, purchase lines of standard parts placed on the plate grid, then what a
// designer's later edits leave on such a mould (see Mould.hpp).
//
// Coordinates: millimetres in tenths, the parting plane at z = 0, the fixed half (top clamp
// plate, A plate, cavity inserts) above it, the moving half (B plate, support plate, spacer
// blocks, ejector plates, bottom clamp plate, core inserts) below it, the mould centred on the
// z axis.
#include <algorithm>
#include <cstdio>
#include <set>
#include <stdexcept>

#include "Catalogue.hpp"
#include "Mould.hpp"
#include "Random.hpp"

namespace moldgen {

std::string Mm(Tenths t) {
    const long long magnitude = t < 0 ? -static_cast<long long>(t) : t;
    std::string text = (t < 0 ? "-" : "") + std::to_string(magnitude / 10);
    if (magnitude % 10 != 0) text += "." + std::to_string(magnitude % 10);
    return text;
}

bool Solid::operator==(const Solid& other) const {
    if (shape != other.shape) return false;
    if (shape == Shape::Box) return x == other.x && y == other.y && z == other.z;
    if (sections.size() != other.sections.size()) return false;
    for (size_t i = 0; i < sections.size(); ++i)
        if (sections[i].d != other.sections[i].d || sections[i].l != other.sections[i].l) return false;
    return true;
}

const std::string* Body::Find(const std::string& title) const {
    for (const Attribute& a : attributes)
        if (a.title == title) return &a.value;
    return nullptr;
}

namespace {

// Attribute titles, as the plug-in reads and writes them.
const std::string kMarker = u8"转图标识";
const std::string kName = u8"名称";
const std::string kType = u8"类型";
const std::string kBrand = u8"品牌";
const std::string kMaterial = u8"材质";
const std::string kHeatTreatment = u8"热处理";
const std::string kSupplier = u8"供应商";
const std::string kQuantity = u8"数量";
const std::string kLeadTime = u8"采购周期";
const std::string kStatus = u8"状态";
const std::string kModifyDate = u8"修改日期";
const std::string kRemark = u8"备注";
const std::string kStdPartId = u8"标准件ID";
const std::string kGroupId = u8"组ID";
const std::string kModified = u8"改模";

constexpr int kModifyColour = 186;  // "改模颜色" of the bundled config.csv
constexpr int kInsertLayer = 1, kPlateLayer = 10, kSliderLayer = 20;
constexpr int kReferenceLayer = 70;  // visible only: copies kept for reference
constexpr int kOldLayer = 71;        // invisible: copies of an earlier design state
constexpr int kConstructionLayer = 100;  // invisible, holds no body

constexpr Tenths Mm10(int mm) { return mm * 10; }

using Place = std::pair<std::array<Tenths, 3>, std::array<int, 3>>;  // at, rotate

// The plate stack, in millimetres.
struct Frame {
    int width = 0, length = 0;  // plate footprint, x and y
    int clamp = 0, a = 0, b = 0, support = 0, spacer = 0, spacerWidth = 0, ejector = 0, retainer = 0;
    int cavitiesX = 1, cavitiesY = 1;
    int sliders = 0;

    int TopOfClamp() const { return a + clamp; }
    int BottomOfSupport() const { return -b - support; }
    int BottomOfSpacers() const { return BottomOfSupport() - spacer; }
    int BottomOfMould() const { return BottomOfSpacers() - clamp; }
    int TopOfEjectorPlate() const { return BottomOfSpacers() + 5 + ejector; }  // on 5 mm stop pins
    int TopOfRetainer() const { return TopOfEjectorPlate() + retainer; }
    int Cavities() const { return cavitiesX * cavitiesY; }
    // Inset of the guide pillars from the plate edges.
    int GuideInset() const { return 30 + width / 25; }
};

// One cavity's region of the insert area, in millimetres, centre and half sizes.
struct Cell {
    int x, y, halfX, halfY;
};

// One purchase line as it was designed and saved: a catalogue item bought in several copies.
struct Line {
    Kind kind;
    Item item;
    Supply supply;
    std::vector<Place> places;
    std::string id;  // 标准件ID given at the save
    std::string status, modifyDate, remark;
};

// A body being made, with what the later steps need to know of it.
struct Draft {
    Body body;
    int line = -1;            // the purchase line, -1 for plates and one-off bodies
    bool standard = false;    // carries the marker "Y"
    bool labelled = false;    // carries the saved purchase attributes
    bool grouped = false;
    bool modified = false;
    bool hidden = false;      // blanked or on the reference or old layer
};

std::string Digits(int value, int width) {
    char text[16];
    std::snprintf(text, sizeof text, "%0*d", width, value);
    return text;
}

// A standard-part identifier or group identifier as the plug-in makes them: month, day, hour,
// minute, second, milliseconds.
struct Stamp {
    int month, day, hour, minute, second, millisecond;

    std::string Id() const {
        return Digits(month, 2) + Digits(day, 2) + Digits(hour, 2) + Digits(minute, 2) + Digits(second, 2) + Digits(millisecond, 4);
    }
    std::string Date() const { return "2024-" + Digits(month, 2) + "-" + Digits(day, 2); }
};

Stamp RandomStamp(Random& random, int firstMonth, int lastMonth) {
    return {random.Between(firstMonth, lastMonth), random.Between(1, 28), random.Between(8, 20),
            random.Between(0, 59), random.Between(0, 59), random.Between(0, 999)};
}

void Set(Body& body, const std::string& title, const std::string& value) {
    for (Attribute& a : body.attributes)
        if (a.title == title) {
            a.value = value;
            return;
        }
    body.attributes.push_back({title, value});
}

// ---------------------------------------------------------------------------------------------
// The mould's size

int IntegerSquareRoot(int n) {
    int root = 0;
    while ((root + 1) * (root + 1) <= n) ++root;
    return root;
}

Frame MakeFrame(int bodies, Random& random) {
    Frame f;
    f.width = 250 + 50 * IntegerSquareRoot(bodies / 25);
    f.length = f.width + 50 * random.Between(0, 2);
    f.clamp = f.width < 400 ? 25 : f.width < 700 ? 30 : 35;
    f.a = 40 + 10 * random.Between(f.width / 100, f.width / 60);
    f.b = 40 + 10 * random.Between(f.width / 100, f.width / 60);
    f.support = f.width < 400 ? 30 : f.width < 700 ? 40 : 60;
    f.spacer = 70 + 10 * random.Between(0, 2 + f.width / 250);
    f.spacerWidth = f.width < 400 ? 50 : f.width < 700 ? 70 : 90;
    f.ejector = f.width < 500 ? 20 : 25;
    f.retainer = f.width < 500 ? 15 : 20;
    // Multi-cavity moulds for the large counts: the same inserts repeated on a grid.
    const int cavities = bodies < 200 ? 1 : bodies < 600 ? 2 : bodies < 1500 ? 4 : bodies < 4000 ? 8 : 16;
    f.cavitiesX = cavities >= 4 ? cavities / (cavities >= 16 ? 4 : 2) : cavities;
    f.cavitiesY = cavities / f.cavitiesX;
    f.sliders = bodies < 100 ? 0 : 1 + bodies / 400;
    return f;
}

std::vector<Cell> Cells(const Frame& f) {
    const int inset = f.GuideInset() + 30;
    const int areaX = f.width / 2 - inset, areaY = f.length / 2 - inset;
    const int cellX = 2 * areaX / f.cavitiesX, cellY = 2 * areaY / f.cavitiesY;
    std::vector<Cell> cells;
    for (int j = 0; j < f.cavitiesY; ++j)
        for (int i = 0; i < f.cavitiesX; ++i)
            cells.push_back({-areaX + cellX * i + cellX / 2, -areaY + cellY * j + cellY / 2, cellX / 2 - 10, cellY / 2 - 10});
    return cells;
}

// ---------------------------------------------------------------------------------------------
// Placing copies

std::array<Tenths, 3> At(int x, int y, int z) { return {Mm10(x), Mm10(y), Mm10(z)}; }

// count points spread evenly round the rectangle of half sizes (halfX, halfY) about (x, y),
// starting at a corner: the layout of screws round a plate or an insert.
std::vector<std::pair<int, int>> Ring(int count, int x, int y, int halfX, int halfY) {
    const int perimeter = 4 * (halfX + halfY);
    std::vector<std::pair<int, int>> points;
    for (int i = 0; i < count; ++i) {
        int t = perimeter * i / count;
        if (t < 2 * halfX) {
            points.push_back({x - halfX + t, y - halfY});
            continue;
        }
        t -= 2 * halfX;
        if (t < 2 * halfY) {
            points.push_back({x + halfX, y - halfY + t});
            continue;
        }
        t -= 2 * halfY;
        if (t < 2 * halfX) {
            points.push_back({x + halfX - t, y + halfY});
            continue;
        }
        t -= 2 * halfX;
        points.push_back({x - halfX, y + halfY - t});
    }
    return points;
}

// count points on a 5 mm grid inside a cell: the layout of ejector pins under a part.
std::vector<std::pair<int, int>> Scatter(int count, const Cell& cell, Random& random) {
    std::vector<std::pair<int, int>> points;
    for (int i = 0; i < count; ++i)
        points.push_back({cell.x + 5 * random.Between(-cell.halfX / 5, cell.halfX / 5), cell.y + 5 * random.Between(-cell.halfY / 5, cell.halfY / 5)});
    return points;
}

// The places of the standard parts: no two parts sit at the same point. A newcomer at a taken
// point moves by a few 5 mm steps in x and y, further the longer it finds no free point.
class Occupancy {
public:
    explicit Occupancy(Random& random) : random_(random) {}

    std::array<Tenths, 3> Claim(std::array<Tenths, 3> at) {
        for (int attempt = 0; !taken_.insert(at).second; ++attempt) {
            const int reach = 1 + attempt / 4;
            at[0] += Mm10(5 * random_.Between(-reach, reach));
            at[1] += Mm10(5 * random_.Between(-reach, reach));
        }
        return at;
    }

private:
    Random& random_;
    std::set<std::array<Tenths, 3>> taken_;
};

// A turn about the axis of a round part: copies of a screw or pin are rotated, not only moved.
int Turn(Random& random) { return 15 * random.Between(0, 23); }

// ---------------------------------------------------------------------------------------------
// Purchase lines

class Designer {
public:
    Designer(const Frame& frame, Random& random, Occupancy& occupancy)
        : f_(frame), random_(random), occupancy_(occupancy), cells_(Cells(frame)) {}

    std::vector<Line>& Lines() { return lines_; }

    // The parts every mould has, within budget: locating ring, sprue bush, guide pillars and
    // bushes, return pins and springs, stop pins, sprue pullers.
    void Essentials(int& budget) {
        // The ring's flange on the top clamp plate, its spigot in it; the sprue bush's head under it.
        const Item ring = LocatingRing(random_.Between(0, 3));
        std::array<Tenths, 3> flangeTop = At(0, 0, f_.TopOfClamp());
        flangeTop[2] += ring.solid.sections[0].l;
        Add(Kind::LocatingRing, ring, {{flangeTop, {180, 0, 0}}}, budget);
        const int sprueLength = f_.clamp + f_.a - 10;
        Add(Kind::SprueBush, SprueBush(random_.Pick(std::vector<int>{12, 16, 20}), sprueLength),
            {{At(0, 0, f_.TopOfClamp()), {180, 0, 0}}}, budget);

        ScrewLine(budget, kClampScrews);
        ScrewLine(budget, kBottomScrews);
        const int sets = 1 + f_.width / 500;
        for (int set = 0; set < sets && budget > 0; ++set) Guides(set, budget);

        const int returnPin = f_.width < 400 ? 15 : f_.width < 700 ? 20 : 25;
        const int returnInset = f_.GuideInset() + 25;
        const int returnLength = -f_.TopOfEjectorPlate();
        std::vector<Place> pins, springs;
        for (auto [x, y] : Ring(4, 0, 0, f_.width / 2 - f_.spacerWidth - returnInset / 2, f_.length / 2 - returnInset)) {
            pins.push_back({At(x, y, f_.TopOfEjectorPlate()), {0, 0, Turn(random_)}});
            springs.push_back({At(x, y, f_.TopOfRetainer()), {0, 0, Turn(random_)}});
        }
        Add(Kind::ReturnPin, ReturnPin(returnPin, returnLength), pins, budget);
        const int spring = returnPin <= 15 ? 25 : returnPin <= 20 ? 30 : 40;
        Add(Kind::Spring, Spring(spring, f_.BottomOfSupport() - f_.TopOfRetainer() + 10, random_.Chance(50)), springs, budget);

        const int stopPins = 4 + 2 * (f_.width / 300);
        std::vector<Place> stops;
        for (auto [x, y] : Ring(stopPins, 0, 0, f_.width / 2 - f_.spacerWidth - 25, f_.length / 2 - 30))
            stops.push_back({At(x, y, f_.BottomOfSpacers() + 5), {180, 0, 0}});
        Add(Kind::StopPin, StopPin(f_.width < 400 ? 0 : f_.width < 700 ? 1 : 2), stops, budget);

        // Sprue pullers under the sprue and, in multi-cavity moulds, in the runner.
        const int pullers = std::max(1, f_.Cavities() / 2);
        std::vector<Place> pullerPlaces;
        for (int i = 0; i < pullers; ++i)
            pullerPlaces.push_back({At(i == 0 ? 0 : 10 * random_.Between(-f_.width / 40, f_.width / 40), 0, f_.TopOfEjectorPlate()), {0, 0, 0}});
        Add(Kind::SpruePuller, EjectorPin(random_.Chance(50) ? 60 : 80, -f_.TopOfEjectorPlate() + 5), pullerPlaces, budget);
    }

    // Purchase lines of every kind, as likely as they are common, until the budget is spent.
    void Fill(int& budget) {
        enum Maker { Screws, Pins, Sleeves, Dowels, Nipples, ORings, Blocks, SliderSprings };
        static const std::vector<std::pair<Maker, int>> makers = {
            {Screws, 40}, {Pins, 25}, {Sleeves, 6}, {Dowels, 6}, {Nipples, 8}, {ORings, 5}, {Blocks, 3}, {SliderSprings, 3}};
        while (budget > 0) {
            switch (random_.Weighted(makers)) {
            case Screws: ScrewLine(budget, random_.Between(0, 9)); break;
            case Pins: PinLine(Kind::EjectorPin, budget); break;
            case Sleeves: PinLine(Kind::Sleeve, budget); break;
            case Dowels: DowelLine(budget); break;
            case Nipples: NippleLine(budget); break;
            case ORings: ORingLine(budget); break;
            case Blocks: BlockLine(budget); break;
            case SliderSprings: SliderSpringLine(budget); break;
            }
        }
    }

private:
    // Adds a line of the places that fit in the budget (none when none fit).
    void Add(Kind kind, const Item& item, std::vector<Place> places, int& budget) {
        if (static_cast<int>(places.size()) > budget) places.resize(static_cast<size_t>(std::max(budget, 0)));
        if (places.empty()) return;
        budget -= static_cast<int>(places.size());
        for (Place& place : places) place.first = occupancy_.Claim(place.first);
        Line line{kind, item, random_.Weighted(Info(kind).supplies), std::move(places), "", "", "", ""};
        const int status = random_.Between(0, 9);
        line.status = status == 0 ? u8"新增" : status == 1 ? u8"已下单" : "";
        if (random_.Chance(12)) line.modifyDate = RandomStamp(random_, 3, 5).Date();
        if (random_.Chance(8)) line.remark = random_.Pick(std::vector<std::string>{u8"配磨", u8"加长", u8"客供", u8"备用"});
        lines_.push_back(std::move(line));
    }

    // The cells a line of insert parts serves: all of them, as identical cavities have the same
    // parts, or one (the cavities of a family mould differ).
    std::vector<Cell> ServedCells() {
        if (random_.Chance(40)) return cells_;
        return {random_.Pick(cells_)};
    }

    // count places per cell, the same in every cell.
    std::vector<Place> PerCavity(int count, int z, bool turn) {
        const Cell& model = cells_[0];
        std::vector<std::pair<int, int>> offsets;
        for (auto [x, y] : Scatter(count, model, random_)) offsets.push_back({x - model.x, y - model.y});
        std::vector<Place> places;
        for (const Cell& cell : ServedCells())
            for (auto [dx, dy] : offsets) places.push_back({At(cell.x + dx, cell.y + dy, z), {0, 0, turn ? Turn(random_) : 0}});
        return places;
    }

    int CopiesPerCavity() { return random_.Weighted(std::vector<std::pair<int, int>>{{2, 2}, {4, 6}, {6, 3}, {8, 3}, {12, 1}, {16, 1}}); }

    void Guides(int set, int& budget) {
        const int d = std::min(50, 16 + 4 * (f_.width / 120) + 5 * set);
        const int diameter = *std::lower_bound(GuideDiameters().begin(), GuideDiameters().end() - 1, d);
        const int inset = f_.GuideInset() + 15 * set;
        std::vector<Place> pillars, bushes;
        int corner = 0;
        for (auto [x, y] : Ring(4, 0, 0, f_.width / 2 - inset, f_.length / 2 - inset)) {
            // One pillar is set off by a few millimetres so that the halves go together one way only.
            const int offset = corner++ == 0 ? 4 : 0;
            pillars.push_back({At(x + offset, y, -f_.b), {0, 0, 0}});
            bushes.push_back({At(x + offset, y, f_.a), {180, 0, 0}});
        }
        Add(Kind::GuidePillar, GuidePillar(diameter, f_.a + f_.b - 10), pillars, budget);
        Add(Kind::GuideBush, GuideBush(diameter, f_.a), bushes, budget);
    }

    // Where the screws hold (uses 0..9): the top clamp plate to the A plate, the bottom clamp
    // plate through the spacer blocks, the inserts (2..5), the ejector plates (6, 7), small parts.
    static constexpr int kClampScrews = 0, kBottomScrews = 1;

    void ScrewLine(int& budget, int use) {
        const int turn = Turn(random_);
        std::vector<Place> places;
        if (use == kClampScrews) {
            const int metric = f_.width < 400 ? 10 : f_.width < 700 ? 12 : 16;
            for (auto [x, y] : Ring(2 * random_.Between(2, 4), 0, 0, f_.width / 2 - 20, f_.length / 2 - 15))
                places.push_back({At(x, y, f_.TopOfClamp()), {180, 0, turn}});
            Add(Kind::Screw, Screw(metric, f_.clamp + metric * 2), places, budget);
        } else if (use == kBottomScrews) {
            const int metric = f_.width < 400 ? 12 : 16;
            for (auto [x, y] : Ring(2 * random_.Between(2, 4), 0, 0, f_.width / 2 - f_.spacerWidth / 2, f_.length / 2 - 30))
                places.push_back({At(x, y, f_.BottomOfMould()), {0, 0, turn}});
            Add(Kind::Screw, Screw(metric, f_.clamp + f_.spacer + f_.support / 2), places, budget);
        } else if (use <= 5) {
            const int metric = random_.Pick(std::vector<int>{6, 8, 8, 10});
            const bool cavitySide = random_.Chance(50);
            const int perInsert = 2 * random_.Between(2, 4);
            const Cell& model = cells_[0];
            for (const Cell& cell : ServedCells())
                for (auto [x, y] : Ring(perInsert, cell.x, cell.y, model.halfX - metric, model.halfY - metric))
                    places.push_back(cavitySide ? Place{At(x, y, f_.a), {180, 0, turn}} : Place{At(x, y, -f_.b), {0, 0, turn}});
            Add(Kind::Screw, Screw(metric, metric * 2 + 5 * random_.Between(2, 6)), places, budget);
        } else if (use <= 7) {
            const int metric = f_.width < 500 ? 6 : 8;
            for (auto [x, y] : Ring(2 * random_.Between(2, 4), 0, 0, f_.width / 2 - f_.spacerWidth - 20, f_.length / 2 - 25))
                places.push_back({At(x, y, f_.TopOfEjectorPlate() - f_.ejector), {0, 0, turn}});
            Add(Kind::Screw, Screw(metric, f_.ejector + f_.retainer - 5), places, budget);
        } else {
            const int metric = random_.Pick(std::vector<int>{4, 5, 6});
            const int x = 10 * random_.Between(-f_.width / 25, f_.width / 25), y = 10 * random_.Between(-f_.length / 25, f_.length / 25);
            for (auto [px, py] : Ring(random_.Between(1, 2) * 2, x, y, 15, 10)) places.push_back({At(px, py, 0), {180, 0, Turn(random_)}});
            Add(Kind::Screw, Screw(metric, random_.Pick(std::vector<int>{10, 12, 16, 20})), places, budget);
        }
    }

    // Ejector pins and sleeves stand on the ejector plate and reach the moulding through the
    // retainer, support plate, B plate and core insert; a few are tilted (pins of a lifter).
    void PinLine(Kind kind, int& budget) {
        // Cores are of different heights: pins under a rib are longer than pins at the rim.
        const int wanted = -f_.TopOfEjectorPlate() + 5 * random_.Between(1, 16);
        const Item item = kind == Kind::EjectorPin ? EjectorPin(random_.Pick(EjectorPinDiameters()), wanted)
                                                   : Sleeve(random_.Pick(SleeveDiameters()), wanted);
        std::vector<Place> places = PerCavity(CopiesPerCavity(), f_.TopOfEjectorPlate(), random_.Chance(50));
        if (random_.Chance(5))
            for (Place& place : places) place.second[1] = random_.Pick(std::vector<int>{-8, -6, 6, 8});
        Add(kind, item, places, budget);
    }

    void DowelLine(int& budget) {
        const int d = random_.Pick(DowelDiameters());
        std::vector<Place> places;
        for (const Cell& cell : ServedCells()) {
            places.push_back({At(cell.x - cell.halfX + d, cell.y - cell.halfY + d, -d * 2), {0, 0, 0}});
            places.push_back({At(cell.x + cell.halfX - d, cell.y + cell.halfY - d, -d * 2), {0, 0, 0}});
        }
        Add(Kind::Dowel, Dowel(d, d * 4), places, budget);
    }

    // Nipples in pairs (in and out) on one side of a plate, pointing out of it.
    void NippleLine(int& budget) {
        const int size = f_.width < 400 ? random_.Between(0, 1) : f_.width < 800 ? 1 : random_.Between(1, 2);
        const Tenths thread = WaterNippleThread(size);
        const bool fixedHalf = random_.Chance(50);
        const int pairs = random_.Between(1, 2 + f_.Cavities() / 2);
        const int side = random_.Between(0, 3);
        std::vector<Place> places;
        for (int i = 0; i < 2 * pairs; ++i) {
            const int z = fixedHalf ? random_.Between(10, f_.a - 10) : -random_.Between(10, f_.b - 10);
            const int reach = side < 2 ? f_.length : f_.width;  // along the side
            const int along = 10 * random_.Between(-reach / 25, reach / 25);
            std::array<Tenths, 3> at{};
            std::array<int, 3> rotate{};
            switch (side) {
            case 0: at = {Mm10(f_.width / 2) - thread, Mm10(along), Mm10(z)}, rotate = {0, 90, 0}; break;
            case 1: at = {-Mm10(f_.width / 2) + thread, Mm10(along), Mm10(z)}, rotate = {0, -90, 0}; break;
            case 2: at = {Mm10(along), Mm10(f_.length / 2) - thread, Mm10(z)}, rotate = {-90, 0, 0}; break;
            default: at = {Mm10(along), -Mm10(f_.length / 2) + thread, Mm10(z)}, rotate = {90, 0, 0}; break;
            }
            places.push_back({at, rotate});
        }
        Add(Kind::WaterNipple, WaterNipple(size), places, budget);
    }

    void ORingLine(int& budget) {
        const Item item = ORing(random_.Between(0, ORingCount() - 1));
        Add(Kind::ORing, item, PerCavity(2 * random_.Between(1, 2), -f_.b + 20, false), budget);
    }

    // Stop blocks beside the sliders, alternately turned a quarter.
    void BlockLine(int& budget) {
        const Item item = StopBlock(random_.Between(0, StopBlockCount() - 1));
        std::vector<Place> places;
        const int count = 2 * random_.Between(1, 2);
        for (int i = 0; i < count; ++i) {
            const int x = 10 * random_.Between(-f_.width / 25, f_.width / 25), y = (i % 2 == 0 ? 1 : -1) * (f_.length / 2 - 40);
            places.push_back({At(x, y, 0), {0, 0, i % 2 == 0 ? 0 : 90}});
        }
        Add(Kind::StopBlock, item, places, budget);
    }

    void SliderSpringLine(int& budget) {
        std::vector<Place> places;
        const int count = 2 * random_.Between(1, 2);
        for (int i = 0; i < count; ++i)
            places.push_back({At(10 * random_.Between(-f_.width / 25, f_.width / 25), f_.length / 2 - 30, 10), {90, 0, 0}});
        Add(Kind::Spring, Spring(random_.Pick(std::vector<int>{20, 25}), random_.Between(30, 60), random_.Chance(50)), places, budget);
    }

    const Frame& f_;
    Random& random_;
    Occupancy& occupancy_;
    std::vector<Cell> cells_;
    std::vector<Line> lines_;
};

// ---------------------------------------------------------------------------------------------
// Bodies

Body PlateBody(int x0, int y0, int z0, int x, int y, int z, int layer, int color) {
    Body body;
    body.layer = layer;
    body.color = color;
    body.solid.shape = Solid::Shape::Box;
    body.solid.x = Mm10(x);
    body.solid.y = Mm10(y);
    body.solid.z = Mm10(z);
    body.at = At(x0, y0, z0);
    return body;
}

// The plate stack, inserts and sliders: bodies without the standard-part marker; most carry a
// name and a material, a few inserts carry the marker switched off ("N").
std::vector<Draft> Plates(const Frame& f, int bodies, Random& random) {
    std::vector<Draft> plates;
    auto add = [&](const char* name, const char* material, Body body) {
        if (random.Chance(75)) {
            body.attributes.push_back({kName, name});
            body.attributes.push_back({kMaterial, material});
        }
        plates.push_back(Draft{std::move(body)});
    };
    const int w = f.width, l = f.length;
    add(u8"面板", u8"S50C", PlateBody(-w / 2, -l / 2 - 25, f.a, w, l + 50, f.clamp, kPlateLayer, 87));
    add(u8"A板", u8"S50C", PlateBody(-w / 2, -l / 2, 0, w, l, f.a, kPlateLayer, 87));
    add(u8"B板", u8"S50C", PlateBody(-w / 2, -l / 2, -f.b, w, l, f.b, kPlateLayer, 87));
    add(u8"托板", u8"S50C", PlateBody(-w / 2, -l / 2, f.BottomOfSupport(), w, l, f.support, kPlateLayer, 87));
    add(u8"方铁", u8"S50C", PlateBody(-w / 2, -l / 2, f.BottomOfSpacers(), f.spacerWidth, l, f.spacer, kPlateLayer, 87));
    add(u8"方铁", u8"S50C", PlateBody(w / 2 - f.spacerWidth, -l / 2, f.BottomOfSpacers(), f.spacerWidth, l, f.spacer, kPlateLayer, 87));
    const int ejectorWidth = w - 2 * f.spacerWidth - 10;
    add(u8"底针板", u8"S50C", PlateBody(-ejectorWidth / 2, -l / 2 + 10, f.TopOfEjectorPlate() - f.ejector, ejectorWidth, l - 20, f.ejector, kPlateLayer, 87));
    add(u8"面针板", u8"S50C", PlateBody(-ejectorWidth / 2, -l / 2 + 10, f.TopOfEjectorPlate(), ejectorWidth, l - 20, f.retainer, kPlateLayer, 87));
    add(u8"底板", u8"S50C", PlateBody(-w / 2, -l / 2 - 25, f.BottomOfMould(), w, l + 50, f.clamp, kPlateLayer, 87));

    const char* steel = random.Chance(50) ? u8"NAK80" : u8"718H";
    for (const Cell& cell : Cells(f)) {
        const int x = 2 * cell.halfX, y = 2 * cell.halfY;
        add(u8"型腔", steel, PlateBody(cell.x - cell.halfX, cell.y - cell.halfY, 0, x, y, f.a - 20, kInsertLayer, 64));
        add(u8"型芯", steel, PlateBody(cell.x - cell.halfX, cell.y - cell.halfY, -(f.b - 20), x, y, f.b - 20, kInsertLayer, 64));
    }
    for (int i = 0; i < f.sliders; ++i) {
        const int x = 10 * random.Between(-w / 25, w / 25);
        add(u8"滑块", u8"P20", PlateBody(x - 30, l / 2 - 110, 0, 60, 80, 40, kSliderLayer, 121));
    }
    // Small inserts; every twentieth once carried the standard-part marker, now switched off.
    const int inserts = 2 + bodies / 60;
    const std::vector<Cell> cells = Cells(f);
    for (int i = 0; i < inserts; ++i) {
        const Cell& cell = cells[static_cast<size_t>(i) % cells.size()];
        const int size = 10 * random.Between(2, 4);
        Body body = PlateBody(cell.x + 5 * random.Between(-cell.halfX / 10, cell.halfX / 10), cell.y + 5 * random.Between(-cell.halfY / 10, cell.halfY / 10),
                              -(f.b - 20), size, size, f.b - 20 + 10 * random.Between(0, 2), kInsertLayer, 64);
        if (i % 20 == 0) body.attributes.push_back({kMarker, "N"});
        add(u8"镶件", steel, std::move(body));
    }
    return plates;
}

// A copy of a line's item at one place: the marker, and the purchase attributes as saving
// writes them (twelve, in the order of the save) when labelled.
Draft Copy(const std::vector<Line>& lines, int lineIndex, const Place& place, bool labelled) {
    const Line& line = lines[static_cast<size_t>(lineIndex)];
    const KindInfo& info = Info(line.kind);
    Draft draft;
    draft.line = lineIndex;
    draft.standard = true;
    draft.labelled = labelled;
    Body& body = draft.body;
    body.layer = info.layer;
    body.color = info.color;
    body.solid = line.item.solid;
    body.at = place.first;
    body.rotate = place.second;
    body.attributes.push_back({kMarker, "Y"});
    if (labelled) {
        body.attributes.push_back({kName, info.name});
        body.attributes.push_back({kType, line.item.type});
        body.attributes.push_back({kBrand, line.supply.brand});
        body.attributes.push_back({kMaterial, line.supply.material});
        body.attributes.push_back({kHeatTreatment, line.supply.heatTreatment});
        body.attributes.push_back({kSupplier, line.supply.supplier});
        body.attributes.push_back({kQuantity, std::to_string(line.places.size())});
        body.attributes.push_back({kLeadTime, line.supply.leadTime});
        body.attributes.push_back({kStatus, line.status});
        body.attributes.push_back({kModifyDate, line.modifyDate});
        body.attributes.push_back({kRemark, line.remark});
        body.attributes.push_back({kStdPartId, line.id});
    }
    return draft;
}

// A place near an existing copy: copies made later are moved and turned.
Place Near(const Place& place, Random& random, Occupancy& occupancy) {
    Place moved = place;
    moved.first[0] += Mm10(5 * random.Between(-8, 8));
    moved.first[1] += Mm10(5 * random.Between(-8, 8));
    moved.first = occupancy.Claim(moved.first);
    moved.second[2] = (moved.second[2] + 90 * random.Between(1, 3)) % 360;
    return moved;
}

bool Ordinary(const Draft& d) { return d.standard && d.labelled && !d.grouped && !d.modified && !d.hidden; }

// The ordinary labelled copies, drawn at random without repetition; a copy that stopped being
// ordinary since is passed over.
class Pool {
public:
    static constexpr size_t kNone = static_cast<size_t>(-1);

    Pool(const std::vector<Draft>& drafts, Random& random) : drafts_(drafts), random_(random) {
        for (size_t i = 0; i < drafts.size(); ++i)
            if (Ordinary(drafts[i])) items_.push_back(i);
    }

    // A draft's index, or kNone when none is left.
    size_t Take() {
        while (!items_.empty()) {
            const size_t k = random_.Below(static_cast<std::uint32_t>(items_.size()));
            const size_t i = items_[k];
            items_[k] = items_.back();
            items_.pop_back();
            if (Ordinary(drafts_[i])) return i;
        }
        return kNone;
    }

private:
    const std::vector<Draft>& drafts_;
    Random& random_;
    std::vector<size_t> items_;
};

std::vector<Attribute> HeadAttributes(const Frame& f, Random& random) {
    const std::vector<std::string> tonnages = {"120T", "160T", "220T", "280T", "350T", "450T"};
    const size_t tonnage = std::min(tonnages.size() - 1, static_cast<size_t>(f.width / 150));
    return {
        {u8"订单编号", "SO24" + Digits(random.Between(1, 12), 2) + "-" + Digits(random.Between(1, 999), 3)},
        {u8"ERP编号", "ERP" + Digits(random.Between(100000, 999999), 6)},
        {u8"产品材质", random.Pick(std::vector<std::string>{"PP", "ABS", "PC", "PA66+GF30", "POM", "PC/ABS", "PMMA"})},
        {u8"模具编号", random.Pick(std::vector<std::string>{"YM-2401", "YM-2402", "YM-2403", "YM-2405"})},
        {u8"模具吨位", tonnages[tonnage]},
        {u8"产品编号", "P" + Digits(random.Between(10000, 99999), 5)},
        {u8"客户名称", random.Pick(std::vector<std::string>{u8"美的集团", u8"格力电器", u8"比亚迪", u8"海尔智家", u8"立讯精密"})},
        {u8"产品厚度", random.Pick(std::vector<std::string>{"1.5", "2.0", "2.5", "3.0"})},
        {u8"模具类型", random.Pick(std::vector<std::string>{u8"两板模", u8"三板模", u8"热流道", u8"双色模"})},
        {u8"设计担当", random.Pick(std::vector<std::string>{u8"张工", u8"李工", u8"王建国", u8"陈明"})},
        {u8"产品名称", random.Pick(std::vector<std::string>{u8"空调面板", u8"电池盒盖", u8"洗衣机底座", u8"连接器外壳", u8"门饰板", u8"中框"})},
        {u8"标准件", "Y"},
    };
}

}  // namespace

Mould Generate(const Options& options) {
    const int n = options.bodies;
    if (n < 1 || n > kMaxBodies)
        throw std::invalid_argument("the number of standard-part bodies must be 1.." + std::to_string(kMaxBodies));
    Random random(options.seed * 0x9E3779B97F4A7C15ULL + static_cast<std::uint64_t>(n));

    const Frame frame = MakeFrame(n, random);
    Mould mould;
    mould.leaf = options.leaf.empty() ? "MOULD-" + std::to_string(n) + "-" + std::to_string(options.seed) : options.leaf;
    mould.attributes = HeadAttributes(frame, random);
    mould.workLayer = random.Pick(StandardPartLayers());
    mould.layerStates = {{kSliderLayer, "visible"}, {kReferenceLayer, "visible"}, {kOldLayer, "invisible"}, {kConstructionLayer, "invisible"}};

    // What the designer's later edits add: bodies reserved out of the total.
    const bool edits = n >= 20;
    const int unnamed = edits ? std::max(1, n / 100) : 0;
    const int references = edits ? 1 + n / 300 : 0;  // on the visible-only layer
    const int olds = edits ? 1 + n / 300 : 0;        // on the invisible layer
    const int laterCopies = n >= 10 ? std::max(1, n * 2 / 100) : 0;
    int budget = n - unnamed - references - olds - laterCopies;

    Occupancy occupancy(random);
    Designer designer(frame, random, occupancy);
    designer.Essentials(budget);
    designer.Fill(budget);
    std::vector<Line>& lines = designer.Lines();

    // The first save gave every line an identifier within a few milliseconds.
    Stamp saved = RandomStamp(random, 1, 3);
    for (size_t i = 0; i < lines.size(); ++i) {
        Stamp stamp = saved;
        stamp.millisecond = (saved.millisecond + static_cast<int>(i) / 4) % 1000;
        lines[i].id = stamp.Id();
    }

    std::vector<Draft> drafts = Plates(frame, n, random);
    std::vector<std::vector<size_t>> byLine(lines.size());
    for (size_t i = 0; i < lines.size(); ++i)
        for (const Place& place : lines[i].places) {
            byLine[i].push_back(drafts.size());
            drafts.push_back(Copy(lines, static_cast<int>(i), place, true));
        }

    // Copies made after the save carry only the marker: in some lines all but the first copy
    // (they join its group), in others all but two (they form a line of their own).
    std::vector<bool> strippedLine(lines.size(), false);
    int stripped = edits ? n * 4 / 100 : 0;
    for (size_t attempt = 0; stripped > 0 && attempt < 4 * lines.size(); ++attempt) {
        const size_t line = random.Below(static_cast<std::uint32_t>(lines.size()));
        if (byLine[line].size() < 3 || strippedLine[line]) continue;
        strippedLine[line] = true;
        const size_t keep = random.Chance(70) ? 1 : 2;
        for (size_t i = keep; i < byLine[line].size() && stripped > 0; ++i, --stripped)
            drafts[byLine[line][i]] = Copy(lines, static_cast<int>(line), lines[line].places[i], false);
    }

    // Modified bodies: whole small lines, and single copies of larger ones.
    Pool pool(drafts, random);
    const Stamp modification = RandomStamp(random, 6, 9);
    std::vector<size_t> modified;
    for (bool wholeLine = true; edits && static_cast<int>(modified.size()) < std::max(2, n / 60); wholeLine = !wholeLine) {
        const size_t first = pool.Take();
        if (first == Pool::kNone) break;
        std::vector<size_t> chosen;
        for (size_t i : byLine[static_cast<size_t>(drafts[first].line)])
            if (wholeLine && Ordinary(drafts[i])) chosen.push_back(i);
        if (chosen.empty() || chosen.size() > 6) chosen = {first};
        for (size_t i : chosen) {
            drafts[i].modified = true;
            drafts[i].body.color = kModifyColour;
            modified.push_back(i);
        }
    }
    // The last one was recoloured after the save: its status is not written yet.
    for (size_t i = 0; i + 1 < modified.size(); ++i) {
        Set(drafts[modified[i]].body, kStatus, kModified);
        Set(drafts[modified[i]].body, kModifyDate, modification.Date());
    }

    // Blanked standard parts (showing the standard-part layers unblanks them again).
    for (int blanked = edits ? std::max(1, n / 100) : 0; blanked > 0; --blanked) {
        const size_t i = pool.Take();
        if (i == Pool::kNone) break;
        drafts[i].body.blanked = true;
        drafts[i].hidden = true;
    }

    // Hand-made groups: a few bodies of different lines that the designer buys as one item. A
    // group made before the save carries the group's data on every member; one made after it
    // keeps each member's own data.
    const Stamp grouping = RandomStamp(random, 4, 6);
    for (int group = 0, groups = edits ? std::max(1, n / 80) : 0; group < groups; ++group) {
        std::vector<size_t> members;
        const size_t size = static_cast<size_t>(random.Between(2, 4));
        for (int attempt = 0; attempt < 20 && members.size() < size; ++attempt) {
            const size_t pick = pool.Take();
            if (pick == Pool::kNone) break;
            bool sameLine = false;
            for (size_t member : members) sameLine = sameLine || drafts[member].line == drafts[pick].line;
            if (!sameLine) members.push_back(pick);
        }
        if (members.size() < 2) break;
        Stamp stamp = grouping;
        stamp.second = (stamp.second + group) % 60;
        stamp.millisecond = (stamp.millisecond + 7 * group) % 1000;
        const bool savedGroup = random.Chance(60);
        for (size_t member : members) {
            Body& body = drafts[member].body;
            drafts[member].grouped = true;
            if (savedGroup && member != members[0]) {
                for (const Attribute& a : drafts[members[0]].body.attributes)
                    if (a.title != kMarker) Set(body, a.title, a.value);
            }
            if (savedGroup) Set(body, kQuantity, std::to_string(members.size()));
            Set(body, kGroupId, stamp.Id());
        }
    }

    // Later edits, appended in the order they were made: copies with the marker only, copies
    // put on the reference and old layers, unnamed one-off pins.
    std::vector<Draft> later;
    std::vector<int> labelledLines, singleLines;  // singleLines: lines with one labelled copy
    for (size_t i = 0; i < lines.size(); ++i) {
        if (byLine[i].empty()) continue;
        labelledLines.push_back(static_cast<int>(i));
        int labelled = 0;
        for (size_t d : byLine[i]) labelled += drafts[d].labelled;
        if (labelled == 1) singleLines.push_back(static_cast<int>(i));
    }
    auto nearLine = [&](int line, bool labelled) {
        return Copy(lines, line, Near(random.Pick(lines[static_cast<size_t>(line)].places), random, occupancy), labelled);
    };
    // Mostly copies of a line with one labelled copy, which they join; the others form lines of
    // their own.
    for (int i = 0; i < laterCopies && !labelledLines.empty(); ++i) {
        const bool join = !singleLines.empty() && random.Chance(70);
        later.push_back(nearLine(random.Pick(join ? singleLines : labelledLines), false));
    }
    for (int i = 0; i < references + olds && !labelledLines.empty(); ++i) {
        Draft copy = nearLine(random.Pick(labelledLines), true);
        copy.body.layer = i < references ? kReferenceLayer : kOldLayer;
        copy.hidden = true;
        later.push_back(std::move(copy));
    }
    // Pins cut to lengths of whole millimetres that are no catalogue length (those are
    // multiples of 5), each diameter and length once, so that no other body is the same solid;
    // every other one with a type typed in, none with a name.
    int cutLength = -frame.TopOfEjectorPlate();
    for (int i = 0; i < unnamed; ++i) {
        static const Tenths diameters[] = {30, 40, 50, 60, 80};
        if (i % 5 == 0)
            do ++cutLength;
            while (cutLength % 5 == 0);
        const Item item = CutEjectorPin(diameters[i % 5], cutLength);
        Draft draft;
        draft.standard = true;
        draft.body.layer = Info(Kind::EjectorPin).layer;
        draft.body.color = Info(Kind::EjectorPin).color;
        draft.body.solid = item.solid;
        draft.body.at = occupancy.Claim(At(5 * random.Between(-frame.width / 12, frame.width / 12),
                                           5 * random.Between(-frame.length / 12, frame.length / 12), frame.TopOfEjectorPlate()));
        draft.body.attributes.push_back({kMarker, "Y"});
        if (i % 2 == 0) {
            draft.body.attributes.push_back({kType, item.type});
            draft.body.attributes.push_back({kMaterial, u8"SKD61"});
        }
        later.push_back(std::move(draft));
    }
    random.Shuffle(later);
    for (Draft& d : later) drafts.push_back(std::move(d));

    // Tags in part order, with the gaps other objects of the part leave.
    unsigned tag = 20000 + static_cast<unsigned>(random.Between(0, 9999));
    for (Draft& d : drafts) {
        tag += static_cast<unsigned>(random.Between(1, 6));
        d.body.tag = tag;
        mould.bodies.push_back(std::move(d.body));
    }
    return mould;
}

}  // namespace moldgen
