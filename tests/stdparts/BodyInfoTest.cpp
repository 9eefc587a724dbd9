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
