// Numerical mass properties: with "mass_props": "numerical" (or the session switch), each body's
// mass properties err as NX's integration may, within the accuracy asked for, by where the body
// lies; without it they are exact.
#include <cmath>
#include <cstdlib>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <uf.h>
#include <uf_modl.h>

#include "CoreFixture.hpp"

namespace {

constexpr int kSolids = 1;
constexpr int kGramsCentimetres = 3;
constexpr int kUseAccuracy = 1;
constexpr int kUseRelativeTolerances = 2;

struct Props {
    int status = -1;
    double values[47];
};

// Relative tolerances in NX's order: area, volume, first moments, centroidal moments, products.
using Request = std::vector<double>;

Request Tolerances(double area, double volume, double moments) {
    return {area, volume, 0, 0, 0, moments, moments, moments, 0, 0, 0};
}

Props Ask(tag_t tag, int accuracy, Request request) {
    Props p;
    request.resize(11, 0);
    double statistics[13];
    p.status = UF_MODL_ask_mass_props_3d(&tag, 1, kSolids, kGramsCentimetres, 1.0, accuracy, request.data(), p.values,
                                         statistics);
    return p;
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
            all.push_back(Ask(static_cast<tag_t>(i + 1), accuracy, request));
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
