// BodyInfo: the wrapped body, the standard-part mark, and the search for bodies that are the
// same solid, decided from NX's mass properties.

#include "StdPartsFixture.hpp"

using namespace stdparts_test;

namespace {

class BodyMatching : public StdPartsFixture {
protected:
    // GetSameBodys of the reference's body against the candidates' bodies, as tags.
    std::vector<unsigned> SameSolids(unsigned reference, const std::vector<unsigned>& candidates, bool flag = false)
    {
        std::vector<BodyInfo*> infos = Wrap(candidates);
        return Tags(Wrap({reference})[0]->GetSameBodys(infos, flag));
    }
};

TEST_F(BodyMatching, GetBodyGivesTheWrappedBody)
{
    LoadBodies({{1001, Marked()}});
    BodyInfo info(Body(1001));
    EXPECT_EQ(Body(1001), info.GetBody());
}

TEST_F(BodyMatching, MovedCopyIsTheSameSolid)
{
    PartBody copy{1002, Marked()};
    copy.at = {250, -40, 75};
    LoadBodies({{1001, Marked()}, copy});
    EXPECT_EQ(std::vector<unsigned>{1002}, SameSolids(1001, {1002}));
}

TEST_F(BodyMatching, RotatedCopyIsTheSameSolid)
{
    PartBody copy{1002, Marked()};
    copy.at = {10, 20, 30};
    copy.rotate = {37, 90, 12};
    LoadBodies({{1001, Marked()}, copy});
    EXPECT_EQ(std::vector<unsigned>{1002}, SameSolids(1001, {1002}));
}

TEST_F(BodyMatching, ScrewOneSizeLongerIsAnotherSolid)
{
    PartBody longer{1002, Marked()};
    longer.solid = Screw(6, 25);
    LoadBodies({{1001, Marked()}, longer});
    EXPECT_TRUE(SameSolids(1001, {1002}).empty()) << "M6x20 and M6x25 differ in volume";
}

TEST_F(BodyMatching, PinFiveMillimetresLongerOfFourHundredIsAnotherSolid)
{
    PartBody pin{1001, Marked()};
    pin.solid = Stack({{8, 4}, {4, 400}});
    PartBody longer{1002, Marked()};
    longer.solid = Stack({{8, 4}, {4, 405}});
    LoadBodies({pin, longer});
    EXPECT_TRUE(SameSolids(1001, {1002}).empty()) << "about 1% apart: far above the tolerance";
}

TEST_F(BodyMatching, BoxesOfEqualVolumeButAnotherShapeDiffer)
{
    PartBody cube{1001, Marked()};
    cube.solid = Box(20, 20, 20);
    PartBody slab{1002, Marked()};
    slab.solid = Box(10, 40, 20);
    LoadBodies({cube, slab});
    EXPECT_TRUE(SameSolids(1001, {1002}).empty()) << "same volume, other area and moments";
}

TEST_F(BodyMatching, BoxTurnedOntoAnotherFaceIsTheSameSolid)
{
    PartBody block{1001, Marked()};
    block.solid = Box(20, 30, 50);
    PartBody turned = block;
    turned.tag = 1002;
    turned.rotate = {90, 0, 90};
    LoadBodies({block, turned});
    EXPECT_EQ(std::vector<unsigned>{1002}, SameSolids(1001, {1002}))
        << "principal moments do not depend on which axis is which";
}

TEST_F(BodyMatching, ResultKeepsCandidateOrderAndLeavesTheCandidatesUnchanged)
{
    PartBody longer{1003, Marked()};
    longer.solid = Screw(6, 25);
    PartBody turned{1004, Marked()};
    turned.rotate = {180, 0, 0};
    LoadBodies({{1001, Marked()}, {1002, Marked()}, longer, turned});
    std::vector<BodyInfo*> infos = Wrap({1001, 1002, 1003, 1004});
    std::vector<BodyInfo*> candidates = {infos[3], infos[2], infos[1]};
    const std::vector<BodyInfo*> before = candidates;
    EXPECT_EQ((std::vector<unsigned>{1004, 1002}), Tags(infos[0]->GetSameBodys(candidates, false)));
    EXPECT_EQ(before, candidates) << "the candidate list is not changed";
}

TEST_F(BodyMatching, CandidateWrappingTheSameBodyMatches)
{
    LoadBodies({{1001, Marked()}});
    EXPECT_EQ(std::vector<unsigned>{1001}, SameSolids(1001, {1001})) << "another wrapper of the same body";
}

TEST_F(BodyMatching, EmptyCandidateListGivesNothing)
{
    LoadBodies({{1001, Marked()}});
    EXPECT_TRUE(SameSolids(1001, {}).empty());
}

TEST_F(BodyMatching, FlagTrueAcceptsMovedCopiesButNotTurnedOnes)
{
    PartBody moved{1002, Marked()};
    moved.at = {100, 0, 0};
    PartBody turned{1003, Marked()};
    turned.rotate = {0, 90, 0};
    LoadBodies({{1001, Marked()}, moved, turned});
    EXPECT_EQ(std::vector<unsigned>{1002}, SameSolids(1001, {1002, 1003}, true))
        << "true: the same solid lying the same way";
    EXPECT_EQ((std::vector<unsigned>{1002, 1003}), SameSolids(1001, {1002, 1003}, false))
        << "false: the same solid however it lies";
}

TEST_F(BodyMatching, FlagTrueDoesNotSeeATurnAboutTheAxisOfSymmetry)
{
    PartBody spun{1002, Marked()};
    spun.rotate = {0, 0, 73};
    LoadBodies({{1001, Marked()}, spun});
    EXPECT_EQ(std::vector<unsigned>{1002}, SameSolids(1001, {1002}, true)) << "a screw turned about its own axis";
}

TEST_F(BodyMatching, FlagTrueStillRejectsAnotherSolid)
{
    PartBody longer{1002, Marked()};
    longer.solid = Screw(6, 25);
    LoadBodies({{1001, Marked()}, longer});
    EXPECT_TRUE(SameSolids(1001, {1002}, true).empty());
}

// NX integrates mass properties numerically, and a copy elsewhere in the part errs otherwise:
// the part says "mass_props": "numerical", so the host's values err as NX's may, within the
// tolerances BodyInfo asks for.
class BodyMatchingUnderNumericalError : public BodyMatching {
protected:
    // Where the copies lie: at the origin, far from it, turned, both.
    static std::vector<PartBody> Placed(const Json& solid, unsigned firstTag)
    {
        const std::vector<std::pair<std::vector<double>, std::vector<double>>> places = {
            {{0, 0, 0}, {0, 0, 0}},        {{500, 0, 0}, {0, 0, 0}},      {{0, -1000, 0}, {0, 0, 0}},
            {{800, 800, 800}, {0, 0, 0}},  {{15, 40, -5}, {0, 90, 0}},    {{-640, 220, 75}, {30, 60, 90}},
            {{300, -300, 0}, {0, 0, 73}},  {{-50, -50, 900}, {90, 0, 0}}, {{1000, 1000, -1000}, {180, 45, 12}}};
        std::vector<PartBody> bodies;
        for (const auto& [at, rotate] : places) {
            PartBody body{static_cast<unsigned>(firstTag + bodies.size()), Marked()};
            body.solid = solid;
            body.at = at;
            body.rotate = rotate;
            bodies.push_back(body);
        }
        return bodies;
    }

    static std::vector<unsigned> TagsOf(const std::vector<PartBody>& bodies)
    {
        std::vector<unsigned> tags;
        for (const PartBody& b : bodies)
            tags.push_back(b.tag);
        return tags;
    }

    void LoadNumerical(const std::vector<PartBody>& bodies)
    {
        Json part = Json::parse(PartJson(bodies));
        part["mass_props"] = "numerical";
        const fs::path path = top_ / "numerical.part.json";
        vornadel_test::WriteBytes(path, part.dump());
        host::LoadWorkPart(path.string());
    }

    // Every copy of the solid, wherever it lies, matches every other.
    void ExpectEveryCopyMatches(const Json& solid)
    {
        const std::vector<PartBody> copies = Placed(solid, 1001);
        LoadNumerical(copies);
        for (unsigned reference : TagsOf(copies))
            EXPECT_EQ(TagsOf(copies), SameSolids(reference, TagsOf(copies))) << "copies of body " << reference;
    }

    // No copy of the solid matches any copy of its neighbour, wherever each lies.
    void ExpectNeighboursNeverMatch(const Json& solid, const Json& neighbour)
    {
        std::vector<PartBody> bodies = Placed(solid, 1001);
        const std::vector<PartBody> others = Placed(neighbour, 2001);
        bodies.insert(bodies.end(), others.begin(), others.end());
        LoadNumerical(bodies);
        for (unsigned reference : TagsOf(Placed(solid, 1001)))
            EXPECT_TRUE(SameSolids(reference, TagsOf(others)).empty()) << "body " << reference;
    }
};

// An ejector pin: a head of 8 x 4, then the shank.
Json EjectorPin(double length)
{
    return Stack({{8, 4}, {4, length}});
}

// A threaded rod as a B-surface model shows it: 120 steps of crest and root, then a plain end.
Json ThreadedRod()
{
    std::vector<std::pair<double, double>> sections;
    for (int i = 0; i < 60; ++i) {
        sections.push_back({10, 0.75});
        sections.push_back({8.4, 0.75});
    }
    sections.push_back({10, 12});
    return Stack(sections);
}

TEST_F(BodyMatchingUnderNumericalError, ScrewsFarFromTheOriginAndTurnedMatch)
{
    ExpectEveryCopyMatches(Screw(6, 20));
}

TEST_F(BodyMatchingUnderNumericalError, LongPinsLyingAskewMatch)
{
    ExpectEveryCopyMatches(EjectorPin(400));
}

TEST_F(BodyMatchingUnderNumericalError, StacksOfManyStepsMatch)
{
    ExpectEveryCopyMatches(ThreadedRod());
}

TEST_F(BodyMatchingUnderNumericalError, BlocksMatch)
{
    ExpectEveryCopyMatches(Box(20, 30, 50));
}

TEST_F(BodyMatchingUnderNumericalError, ScrewOneSizeLongerNeverMatches)
{
    ExpectNeighboursNeverMatch(Screw(6, 20), Screw(6, 25));
}

TEST_F(BodyMatchingUnderNumericalError, PinFiveMillimetresLongerOfFourHundredNeverMatches)
{
    ExpectNeighboursNeverMatch(EjectorPin(400), EjectorPin(405));
}

TEST_F(BodyMatchingUnderNumericalError, PinOneMillimetreLongerOfSixHundredNeverMatches)
{
    ExpectNeighboursNeverMatch(EjectorPin(600), EjectorPin(601));
}

TEST_F(BodyMatchingUnderNumericalError, FlagTrueStillTellsTurnedCopiesFromMovedOnes)
{
    std::vector<PartBody> copies = Placed(Screw(6, 20), 1001);
    LoadNumerical(copies);
    EXPECT_EQ((std::vector<unsigned>{1001, 1002, 1003, 1004, 1007}), SameSolids(1001, TagsOf(copies), true))
        << "moved copies and the one turned about the screw's own axis match, other turned ones do not";
}

TEST_F(BodyMatching, GetBodyFacetAttrFindsTheMarkAndItsValue)
{
    LoadBodies({{1001, Marked()}});
    std::string value = "sentinel";
    EXPECT_TRUE(BodyInfo::GetBodyFacetAttr(Body(1001), "转图标识", value));
    EXPECT_EQ("Y", value);
}

TEST_F(BodyMatching, GetBodyFacetAttrWithoutTheMarkGivesFalseAndLeavesTheValue)
{
    LoadBodies({{1001, {{"名称", "定模板"}}}});
    std::string value = "sentinel";
    EXPECT_FALSE(BodyInfo::GetBodyFacetAttr(Body(1001), "转图标识", value));
    EXPECT_EQ("sentinel", value) << "nothing is written when the mark is missing";
}

TEST_F(BodyMatching, GetBodyFacetAttrIgnoresAMarkOfAnotherType)
{
    LoadBodies({{1001, {{"转图标识", Json{{"integer", 1}}}}}});
    std::string value = "sentinel";
    EXPECT_FALSE(BodyInfo::GetBodyFacetAttr(Body(1001), "转图标识", value)) << "only a string attribute is a mark";
    EXPECT_EQ("sentinel", value);
}

TEST_F(BodyMatching, GetBodyFacetAttrGivesTheValueAsItStands)
{
    LoadBodies({{1001, {{"转图标识", "Y "}}}});
    std::string value;
    EXPECT_TRUE(BodyInfo::GetBodyFacetAttr(Body(1001), "转图标识", value));
    EXPECT_EQ("Y ", value) << "no trimming: the caller decides what counts";
}

}  // namespace
