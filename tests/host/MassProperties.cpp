// UF_MODL_ask_mass_props_3d: mass properties from each body's exact solid, so that a moved or
// rotated copy of a solid is recognised as the same solid and a different size is not; and,
// switched on, the error of NX's numerical integration.
#include <cmath>
#include <cstdlib>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <NXOpen/Part.hxx>
#include <uf.h>
#include <uf_modl.h>

#include "CoreFixture.hpp"

namespace {

constexpr double kPi = 3.14159265358979323846;
constexpr int kSolids = 1;
constexpr int kKilogramsMetres = 4;
constexpr int kGramsCentimetres = 3;

struct Props {
    int status = -1;
    double values[47];
};

constexpr int kUseAccuracy = 1;
constexpr int kUseRelativeTolerances = 2;

// acc_value: an accuracy value (accuracy 1) or relative tolerances in NX's order (accuracy 2):
// area, volume, first moments, centroidal moments, centroidal products; missing entries are 0.
using Request = std::vector<double>;

Props Ask(std::vector<tag_t> tags, int units = kKilogramsMetres, int accuracy = kUseAccuracy,
          Request request = {0.99}) {
    Props p;
    for (double& v : p.values) v = -999;  // sentinel
    request.resize(11, 0);
    double statistics[13];
    p.status = UF_MODL_ask_mass_props_3d(tags.data(), static_cast<int>(tags.size()), kSolids, units, 1.0, accuracy,
                                         request.data(), p.values, statistics);
    return p;
}

// Equal within a relative 1e-9 (the values pass through trigonometry).
::testing::AssertionResult Same(double a, double b) {
    if (std::fabs(a - b) <= 1e-9 * std::max(std::fabs(a), std::fabs(b))) return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure() << a << " differs from " << b;
}

class MassProperties : public HostCoreTest {
protected:
    void SetUp() override {
        HostCoreTest::SetUp();
        LoadSmallMould();
        UF_initialize();
    }
};

TEST_F(MassProperties, BoxHasItsClosedFormVolumeAreaAndMass) {
    Props p = Ask({1004});
    ASSERT_EQ(0, p.status) << "NX: mass properties of a solid body";
    EXPECT_TRUE(Same(200 * 150 * 25 * 1e-9, p.values[1])) << "NX: [1] is the volume, here in m^3";
    EXPECT_TRUE(Same(2 * (200 * 150 + 150 * 25 + 25 * 200) * 1e-6, p.values[0])) << "NX: [0] is the area, in m^2";
    EXPECT_TRUE(Same(200 * 150 * 25 * 7.85e-6, p.values[2])) << "NX: [2] is the mass, in kg (steel)";
    EXPECT_TRUE(Same(0.1, p.values[3])) << "NX: [3..5] is the centre of mass";
    EXPECT_TRUE(Same(0.075, p.values[4])) << "NX: [3..5] is the centre of mass";
    EXPECT_TRUE(Same(-0.0125, p.values[5])) << "NX: [3..5] is the centre of mass";
}

TEST_F(MassProperties, StackAreaCountsTheEndsTheSidesAndTheStep) {
    Props p = Ask({1001}, kGramsCentimetres);
    // ends pi*5^2 + pi*3^2, sides pi*10*6 + pi*6*20, step pi*(5^2 - 3^2): 230 pi mm^2
    EXPECT_TRUE(Same(230 * kPi * 0.01, p.values[0])) << "NX: the area of the whole surface, in cm^2";
    EXPECT_TRUE(Same((150 + 180) * kPi * 0.001, p.values[1])) << "NX: the volume of both cylinders, in cm^3";
}

TEST_F(MassProperties, CylinderHasItsClosedFormArea) {
    Props p = Ask({1005}, kGramsCentimetres);
    EXPECT_TRUE(Same((320 + 32) * kPi * 0.01, p.values[0])) << "NX: side and both ends, in cm^2";
}

TEST_F(MassProperties, MovedAndRotatedCopyHasTheSameVolumeAreaAndPrincipalMoments) {
    Props screw = Ask({1001});
    Props copy = Ask({1003});
    EXPECT_TRUE(Same(screw.values[1], copy.values[1])) << "NX: a moved, rotated copy has the same volume";
    EXPECT_TRUE(Same(screw.values[0], copy.values[0])) << "NX: and the same area";
    for (int i = 31; i <= 33; ++i)
        EXPECT_TRUE(Same(screw.values[i], copy.values[i])) << "NX: and the same principal moment [" << i << "]";
    EXPECT_FALSE(Same(screw.values[3], copy.values[3])) << "NX: but another centre of mass";
}

TEST_F(MassProperties, LongerScrewDiffers) {
    Props screw = Ask({1001});
    Props longer = Ask({1002});
    EXPECT_FALSE(Same(screw.values[1], longer.values[1])) << "NX: a longer screw has another volume";
    EXPECT_FALSE(Same(screw.values[33], longer.values[33])) << "NX: and another largest principal moment";
}

TEST_F(MassProperties, BoxTurnedByNinetyDegreesSwapsItsAxisMomentsButKeepsItsPrincipalMoments) {
    LoadPart(u8R"({"format": "vornadel-part/1", "leaf": "C1", "bodies": [
        {"tag": 1, "layer": 1, "color": 1, "solid": {"shape": "box", "x": 40, "y": 10, "z": 5}},
        {"tag": 2, "layer": 1, "color": 1, "solid": {"shape": "box", "x": 40, "y": 10, "z": 5},
         "at": [100, 0, 0], "rotate": [0, 0, 90]}]})",
             "C1.part.json");
    Props box = Ask({1});
    Props turned = Ask({2});
    for (int i = 31; i <= 33; ++i)
        EXPECT_TRUE(Same(box.values[i], turned.values[i])) << "NX: the same principal moment [" << i << "]";
    EXPECT_TRUE(Same(box.values[12], turned.values[13])) << "NX: the centroidal Ixx of one is the Iyy of the other";
    EXPECT_FALSE(Same(box.values[12], turned.values[12])) << "NX: the axis moments themselves differ";
}

TEST_F(MassProperties, PrincipalMomentsAscend) {
    Props p = Ask({1004});
    EXPECT_LE(p.values[31], p.values[32]) << "host choice: principal moments in ascending order";
    EXPECT_LE(p.values[32], p.values[33]) << "host choice: principal moments in ascending order";
}

TEST_F(MassProperties, UnitsScaleLengthsAndMasses) {
    Props metres = Ask({1004}, kKilogramsMetres);
    Props centimetres = Ask({1004}, kGramsCentimetres);
    EXPECT_TRUE(Same(metres.values[1] * 1e6, centimetres.values[1])) << "NX: units 3 gives cm^3, units 4 m^3";
    EXPECT_TRUE(Same(metres.values[2] * 1e3, centimetres.values[2])) << "NX: units 3 gives grams, units 4 kg";
    EXPECT_TRUE(Same(metres.values[33] * 1e7, centimetres.values[33])) << "NX: moments in g cm^2 against kg m^2";
}

TEST_F(MassProperties, SeveralBodiesAddUp) {
    Props both = Ask({1001, 1002});
    Props one = Ask({1001});
    Props other = Ask({1002});
    EXPECT_TRUE(Same(one.values[1] + other.values[1], both.values[1])) << "NX: the volumes of the bodies add up";
    EXPECT_TRUE(Same(one.values[2] + other.values[2], both.values[2])) << "NX: and their masses";
}

TEST_F(MassProperties, SomethingThatIsNotABodyIsRefusedAndNothingIsWritten) {
    Props p = Ask({host::WorkPart()->Tag()});
    EXPECT_NE(0, p.status) << "NX: only bodies have mass properties";
    EXPECT_EQ(-999, p.values[1]) << "host: a refused call writes nothing";
    EXPECT_NE(0, Ask({424242}).status) << "NX: an unknown tag is an error";
}

TEST_F(MassProperties, UnknownUnitsAreRefused) {
    EXPECT_NE(0, Ask({1004}, 9).status) << "NX: units are 1..4";
}

// Numerical mass properties: with "mass_props": "numerical" (or the session switch), each body's
// mass properties err as NX's integration may, within the accuracy asked for, by where the body
// lies; without it they are exact.

Request Tolerances(double area, double volume, double moments) {
    return {area, volume, 0, 0, 0, moments, moments, moments, 0, 0, 0};
}

double Relative(double value, double exact) { return std::fabs(value - exact) / std::fabs(exact); }

// The placements of the copies: at the origin, far from it, turned, both.
struct Place {
    const char* at;
    const char* rotate;
};
const std::vector<Place> kPlaces = {{"[0, 0, 0]", "[0, 0, 0]"},        {"[500, 0, 0]", "[0, 0, 0]"},
                                    {"[0, -800, 300]", "[0, 0, 0]"},     {"[12.5, 40, -7]", "[0, 90, 0]"},
                                    {"[1000, 1000, 1000]", "[30, 60, 90]"}, {"[-640, 220, 75]", "[180, 0, 45]"},
                                    {"[300, 300, 0]", "[0, 0, 90]"},     {"[-50, -50, 400]", "[90, 0, 0]"}};

// A part of one ejector pin (a head and a 4 x 400 shank) at each place, tags 1, 2, ...;
// massProps is the part's "mass_props" member ("" for none).
std::string Pins(const std::string& massProps) {
    std::string json = R"({"format": "vornadel-part/1", "leaf": "P1", )";
    if (!massProps.empty()) json += R"("mass_props": ")" + massProps + R"(", )";
    json += R"("bodies": [)";
    for (size_t i = 0; i < kPlaces.size(); ++i) {
        json += (i ? ", " : "") + std::string(R"({"tag": )") + std::to_string(i + 1) +
                R"(, "layer": 1, "color": 1, "solid": {"shape": "stack", "parts": [{"d": 8, "l": 4}, {"d": 4, "l": 400}]},)" +
                R"( "at": )" + kPlaces[i].at + R"(, "rotate": )" + kPlaces[i].rotate + "}";
    }
    return json + "]}";
}

class NumericalMassProperties : public HostCoreTest {
protected:
    void SetUp() override {
        HostCoreTest::SetUp();
        UF_initialize();
    }

    // The values of every pin of Pins(massProps), asked with the request.
    std::vector<Props> AskPins(const std::string& massProps, int accuracy, const Request& request) {
        LoadPart(Pins(massProps), "P1.part.json");
        std::vector<Props> all;
        for (size_t i = 0; i < kPlaces.size(); ++i) {
            all.push_back(Ask({static_cast<tag_t>(i + 1)}, kGramsCentimetres, accuracy, request));
            EXPECT_EQ(0, all.back().status);
        }
        return all;
    }

    // The largest relative error of mass_props[index] over the pins, against the exact values.
    static double LargestError(const std::vector<Props>& pins, const std::vector<Props>& exact, int index) {
        double largest = 0;
        for (size_t i = 0; i < pins.size(); ++i)
            largest = std::max(largest, Relative(pins[i].values[index], exact[i].values[index]));
        return largest;
    }

    // The largest relative difference of mass_props[index] between any pin and the first.
    static double LargestDifference(const std::vector<Props>& pins, int index) {
        double largest = 0;
        for (const Props& p : pins) largest = std::max(largest, Relative(p.values[index], pins[0].values[index]));
        return largest;
    }
};

TEST_F(NumericalMassProperties, WithoutTheSettingValuesAreExactWhateverTheAccuracy) {
    std::vector<Props> rough = AskPins("exact", kUseAccuracy, {0.5});
    std::vector<Props> none = AskPins("", kUseRelativeTolerances, Tolerances(0.1, 0.1, 0.1));
    for (int index : {0, 1, 2, 31, 32, 33}) {
        EXPECT_LT(LargestDifference(rough, index), 1e-9) << "copies agree exactly in [" << index << "]";
        EXPECT_LT(LargestError(rough, none, index), 1e-12) << "whatever was asked, [" << index << "]";
    }
}

TEST_F(NumericalMassProperties, EachQuantityErrsWithinItsRequestedTolerance) {
    std::vector<Props> exact = AskPins("exact", kUseRelativeTolerances, Tolerances(1e-6, 1e-6, 1e-6));
    std::vector<Props> pins = AskPins("numerical", kUseRelativeTolerances, Tolerances(1e-5, 1e-6, 1e-7));
    const double rounding = 1e-12;
    EXPECT_LE(LargestError(pins, exact, 0), 1e-5 + rounding) << "area";
    EXPECT_GT(LargestError(pins, exact, 0), 1e-6) << "the area really errs, up to its bound";
    EXPECT_LE(LargestError(pins, exact, 1), 1e-6 + rounding) << "volume";
    EXPECT_GT(LargestError(pins, exact, 1), 1e-7);
    EXPECT_LE(LargestError(pins, exact, 2), 1e-6 + rounding) << "the mass follows the volume";
    for (int index : {12, 13, 14}) {
        EXPECT_LE(LargestError(pins, exact, index), 1e-7 + 1e-9) << "centroidal moment [" << index << "]";
        EXPECT_GT(LargestError(pins, exact, index), 1e-8) << "centroidal moment [" << index << "]";
    }
}

TEST_F(NumericalMassProperties, SamePlacementErrsAlikeAnotherOtherwise) {
    std::vector<Props> first = AskPins("numerical", kUseRelativeTolerances, Tolerances(1e-6, 1e-6, 1e-6));
    std::vector<Props> again = AskPins("numerical", kUseRelativeTolerances, Tolerances(1e-6, 1e-6, 1e-6));
    for (size_t i = 0; i < first.size(); ++i)
        for (int index = 0; index < 47; ++index)
            EXPECT_EQ(first[i].values[index], again[i].values[index]) << "pin " << i << " [" << index << "]";
    for (size_t i = 1; i < first.size(); ++i)
        EXPECT_NE(first[0].values[1], first[i].values[1]) << "the copy at " << kPlaces[i].at << " errs otherwise";
}

TEST_F(NumericalMassProperties, AccuracyValueErrsByOneMinusTheValue) {
    std::vector<Props> exact = AskPins("exact", kUseAccuracy, {0.999});
    std::vector<Props> pins = AskPins("numerical", kUseAccuracy, {0.999});
    EXPECT_LE(LargestError(pins, exact, 1), 1e-3 + 1e-12);
    EXPECT_GT(LargestDifference(pins, 1), 1e-4) << "copies differ by more than 1e-4 at accuracy 0.999";
}

TEST_F(NumericalMassProperties, UntestedQuantityErrsLikeTheLargestTolerance) {
    std::vector<Props> exact = AskPins("exact", kUseRelativeTolerances, Tolerances(0, 1e-4, 0));
    std::vector<Props> pins = AskPins("numerical", kUseRelativeTolerances, Tolerances(0, 1e-4, 0));
    EXPECT_LE(LargestError(pins, exact, 0), 1e-4 + 1e-12) << "area, not tested";
    EXPECT_GT(LargestError(pins, exact, 0), 1e-5) << "area, computed with the same accuracy";
}

TEST_F(NumericalMassProperties, SmallestMomentOfALongPinLyingAskewErrsWithTheWholeTensor) {
    std::vector<Props> exact = AskPins("exact", kUseRelativeTolerances, Tolerances(1e-6, 1e-6, 1e-6));
    std::vector<Props> pins = AskPins("numerical", kUseRelativeTolerances, Tolerances(1e-6, 1e-6, 1e-6));
    const Props& askew = pins[4];  // turned about all three axes
    const double sum = exact[4].values[31] + exact[4].values[32] + exact[4].values[33];
    EXPECT_GT(Relative(askew.values[31], exact[4].values[31]), 1e-4) << "about the axis: far off relative to itself";
    for (int index : {31, 32, 33})
        EXPECT_LE(std::fabs(askew.values[index] - exact[4].values[index]), 3e-6 * sum)
            << "but close relative to the moments' sum [" << index << "]";
}

TEST_F(NumericalMassProperties, SessionSwitchMakesEveryPartNumerical) {
    std::vector<Props> exact = AskPins("", kUseRelativeTolerances, Tolerances(1e-6, 1e-6, 1e-6));
    setenv("VORNADEL_HOST_MASS_PROPS", "numerical", 1);
    std::vector<Props> pins = AskPins("", kUseRelativeTolerances, Tolerances(1e-6, 1e-6, 1e-6));
    unsetenv("VORNADEL_HOST_MASS_PROPS");
    EXPECT_GT(LargestError(pins, exact, 1), 1e-7);
    EXPECT_LE(LargestError(pins, exact, 1), 1e-6 + 1e-12);
}

TEST_F(NumericalMassProperties, SettingIsSavedOnlyWhenNumerical) {
    AskPins("numerical", kUseAccuracy, {0.9});
    const std::string saved = (folder_ / "saved.part.json").string();
    host::SaveWorkPart(saved);
    const std::string text = ReadFile(saved);
    EXPECT_NE(std::string::npos, text.find("  \"layer_states\": {},\n  \"mass_props\": \"numerical\",\n  \"bodies\": [\n"))
        << text;
    host::LoadWorkPart(saved);
    host::SaveWorkPart(saved);
    EXPECT_EQ(text, ReadFile(saved)) << "the saved form loads and saves to itself";

    AskPins("exact", kUseAccuracy, {0.9});
    host::SaveWorkPart(saved);
    EXPECT_EQ(std::string::npos, ReadFile(saved).find("mass_props")) << "exact is the default and not written";
}

TEST_F(NumericalMassProperties, UnknownSettingIsRefused) {
    for (const auto& [value, message] : std::vector<std::pair<std::string, std::string>>{
             {R"("rough")", R"(bad.part.json: mass_props: "rough" is not "exact" or "numerical")"},
             {"true", R"(bad.part.json: mass_props: true is not "exact" or "numerical")"}}) {
        try {
            LoadPart(R"({"format": "vornadel-part/1", "leaf": "A", "mass_props": )" + value + "}", "bad.part.json");
            ADD_FAILURE() << value << " loads";
        } catch (const host::PartFileError& e) {
            EXPECT_NE(std::string::npos, std::string(e.what()).find(message)) << e.what();
        }
    }
}

}  // namespace
