// The matching rule: which bodies describe the same purchased item as a reference body. Group
// identifiers decide first; else the six descriptive attributes, byte for byte.

#include "StdPartsFixture.hpp"

using namespace stdparts_test;

namespace {

class MatchingRule : public StdPartsFixture {
protected:
    // GetSameBodies of the reference's body against the candidates' bodies, as tags.
    std::vector<unsigned> Same(unsigned reference, const std::vector<unsigned>& candidates)
    {
        Vornadel dialog;
        std::vector<BodyInfo*> infos = Wrap(candidates);
        return Tags(dialog.GetSameBodies(Wrap({reference})[0], infos));
    }
};

TEST_F(MatchingRule, SameGroupIdentifierMatchesDespiteDifferentNames)
{
    LoadBodies({{1001, With(ScrewM6x20(), {{"组ID", "G1"}})},
                {1002, Marked({{"名称", "司筒针"}, {"组ID", "G1"}})}});
    EXPECT_EQ(std::vector<unsigned>{1002}, Same(1001, {1002}));
}

TEST_F(MatchingRule, DifferentGroupIdentifiersNeverMatchEvenWithEqualData)
{
    LoadBodies({{1001, With(ScrewM6x20(), {{"组ID", "G1"}})}, {1002, With(ScrewM6x20(), {{"组ID", "G2"}})}});
    EXPECT_TRUE(Same(1001, {1002}).empty());
}

TEST_F(MatchingRule, GroupedAndUngroupedBodiesMatchWhenTheSixAttributesAreEqual)
{
    LoadBodies({{1001, With(ScrewM6x20(), {{"组ID", "G1"}})}, {1002, ScrewM6x20()}});
    EXPECT_EQ(std::vector<unsigned>{1002}, Same(1001, {1002})) << "grouped reference, ungrouped candidate";
    EXPECT_EQ(std::vector<unsigned>{1001}, Same(1002, {1001})) << "ungrouped reference, grouped candidate";
}

TEST_F(MatchingRule, GroupedAndUngroupedBodiesWithOtherDataDoNotMatch)
{
    LoadBodies({{1001, With(ScrewM6x20(), {{"组ID", "G1"}})}, {1002, With(ScrewM6x20(), {{"类型", "M6×25"}})}});
    EXPECT_TRUE(Same(1001, {1002}).empty());
}

TEST_F(MatchingRule, UnnamedReferenceMatchesNothingWithoutGroupIdentifiers)
{
    LoadBodies({{1001, Marked()}, {1002, Marked()}, {1003, With(Marked(), {{"组ID", "G1"}})}});
    EXPECT_TRUE(Same(1001, {1002, 1003}).empty()) << "not even an identical unnamed body";
}

TEST_F(MatchingRule, UnnamedReferenceMatchesWhenBothCarryTheSameGroupIdentifier)
{
    LoadBodies({{1001, With(Marked(), {{"组ID", "G1"}})}, {1002, With(Marked(), {{"组ID", "G1"}})},
                {1003, Marked()}});
    EXPECT_EQ(std::vector<unsigned>{1002}, Same(1001, {1002, 1003}));
}

TEST_F(MatchingRule, EachDescriptiveAttributeIsComparedByteForByte)
{
    const std::vector<std::pair<std::string, std::string>> changes = {
        {"名称", "内六角螺钉 "}, {"类型", "m6×20"}, {"品牌", "盘起 "}, {"材质", "12.9"},
        {"热处理", ""}, {"供应商", "盘起工业有限公司"}};
    std::vector<PartBody> bodies = {{1001, ScrewM6x20()}};
    for (size_t i = 0; i < changes.size(); ++i)
        bodies.push_back({static_cast<unsigned>(1002 + i), With(ScrewM6x20(), {{changes[i].first, changes[i].second}})});
    LoadBodies(bodies);
    for (size_t i = 0; i < changes.size(); ++i)
        EXPECT_TRUE(Same(1001, {static_cast<unsigned>(1002 + i)}).empty()) << "a different " << i;
}

TEST_F(MatchingRule, MissingAttributeEqualsAnEmptyOne)
{
    Attributes noBrand = Marked({{"名称", "内六角螺钉"}, {"类型", "M6×20"}});
    LoadBodies({{1001, noBrand}, {1002, With(noBrand, {{"品牌", ""}})}});
    EXPECT_EQ(std::vector<unsigned>{1002}, Same(1001, {1002}));
}

TEST_F(MatchingRule, QuantityLeadTimeRemarkStatusDateAndIdentifierPlayNoPart)
{
    Attributes other = ScrewM6x20();
    other.insert(other.end(), {{"数量", "9"}, {"采购周期", "30天"}, {"备注", "另购"}, {"状态", "改模"},
                               {"修改日期", "2024-01-01"}, {"标准件ID", "01010000000000"}});
    LoadBodies({{1001, ScrewM6x20()}, {1002, other}});
    EXPECT_EQ(std::vector<unsigned>{1002}, Same(1001, {1002}));
}

TEST_F(MatchingRule, ShapePlaysNoPart)
{
    PartBody longer{1002, ScrewM6x20()};
    longer.solid = Screw(6, 40);
    LoadBodies({{1001, ScrewM6x20()}, longer});
    EXPECT_EQ(std::vector<unsigned>{1002}, Same(1001, {1002})) << "equal attributes describe one purchased item";
}

TEST_F(MatchingRule, MatchesComeInCandidateOrder)
{
    LoadBodies({{1001, ScrewM6x20()}, {1002, ScrewM6x20()}, {1003, Marked()}, {1004, ScrewM6x20()}});
    EXPECT_EQ((std::vector<unsigned>{1004, 1002}), Same(1001, {1004, 1003, 1002}));
}

TEST_F(MatchingRule, ReferenceIsAddedOnlyWhenItIsACandidate)
{
    LoadBodies({{1001, ScrewM6x20()}});
    EXPECT_TRUE(Same(1001, {}).empty());
    EXPECT_EQ(std::vector<unsigned>{1001}, Same(1001, {1001}));
}

TEST_F(MatchingRule, AttributesAreReadFromTheBodiesAtEachCall)
{
    LoadBodies({{1001, ScrewM6x20()}, {1002, ScrewM6x20()}});
    Vornadel dialog;
    BodyInfo reference(Body(1001));
    BodyInfo candidate(Body(1002));
    std::vector<BodyInfo*> candidates = {&candidate};
    EXPECT_EQ(1u, dialog.GetSameBodies(&reference, candidates).size());
    Body(1002)->SetUserAttribute("品牌", -1, "米思米", NXOpen::Update::OptionNow);
    EXPECT_TRUE(dialog.GetSameBodies(&reference, candidates).empty()) << "the changed brand is seen at once";
}

}  // namespace
