// UF_MODL_ask_mass_props_3d: mass properties from each body's exact solid, so that a moved or
// rotated copy of a solid is recognised as the same solid and a different size is not.
#include <cmath>
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

Props Ask(std::vector<tag_t> tags, int units = kKilogramsMetres) {
    Props p;
    for (double& v : p.values) v = -999;  // sentinel
    double accuracy[11] = {0.99, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0};
    double statistics[13];
    p.status = UF_MODL_ask_mass_props_3d(tags.data(), static_cast<int>(tags.size()), kSolids, units, 1.0, 1,
                                         accuracy, p.values, statistics);
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

}  // namespace
