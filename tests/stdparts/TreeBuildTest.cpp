// Building the tree from the work part: purchase lines (groups) in name order with their bodies
// as children, quantities, sequence numbers, colours and the snapshot.

#include "StdPartsFixture.hpp"

#include "stdparts/StdPartTree.h"

using namespace stdparts_test;

namespace {

class TreeBuild : public StdPartsFixture {
protected:
    static Attributes Named(const std::string& name, const std::string& type = "")
    {
        return Marked({{"名称", name}, {"类型", type}});
    }
};

TEST_F(TreeBuild, NoMarkedBodyLeavesTheTreeEmptyAndTheSnapshotEmpty)
{
    LoadBodies({{1001, {{"名称", "定模板"}}}});
    WithDialog([](Vornadel& dialog, host::LiveDialog&) {
        EXPECT_EQ(nullptr, dialog.tree_control0->RootNode());
        EXPECT_TRUE(dialog.initialParams.empty());
        EXPECT_TRUE(dialog.initialParamsTaken) << "the empty tree was read back";
    });
}

TEST_F(TreeBuild, ThreeIdenticalLabelledBodiesMakeOneGroupOfThreeWithItsOwnBodyFirst)
{
    PartBody turned{1002, ScrewM6x20()};
    turned.rotate = {180, 0, 0};
    LoadBodies({{1001, ScrewM6x20()}, turned, {1003, ScrewM6x20()}});
    std::vector<Row> rows = FirstDisplayRows();
    EXPECT_EQ((std::vector<std::string>{"001 1001", "  001 1001", "  001 1002", "  001 1003"}), Outline(rows));
    ASSERT_FALSE(rows.empty());
    EXPECT_EQ("3", rows[0].text[4]);
}

TEST_F(TreeBuild, LabelledBodyWithTwoUnlabelledCopiesMakesOneGroupOfThree)
{
    PartBody moved{1002, Marked()};
    moved.at = {100, 0, 0};
    PartBody turned{1003, Marked()};
    turned.rotate = {90, 0, 45};
    LoadBodies({{1001, ScrewM6x20()}, moved, turned});
    std::vector<Row> rows = FirstDisplayRows();
    EXPECT_EQ((std::vector<std::string>{"001 1001", "  001 1001", "  001 1002", "  001 1003"}), Outline(rows))
        << "the copies are not listed again";
    ASSERT_FALSE(rows.empty());
    EXPECT_EQ("3", rows[0].text[4]);
}

TEST_F(TreeBuild, UnlabelledCopyOfAnotherSizeStaysApart)
{
    PartBody longer{1002, Marked()};
    longer.solid = Screw(6, 25);
    LoadBodies({{1001, ScrewM6x20()}, longer});
    EXPECT_EQ((std::vector<std::string>{"001 1001", "002 1002"}), Outline(FirstDisplayRows()));
}

TEST_F(TreeBuild, LabelledCopyWithAnotherNameMakesTwoGroupsOfOne)
{
    LoadBodies({{1001, ScrewM6x20()}, {1002, Named("螺钉", "M6×20")}});
    std::vector<Row> rows = FirstDisplayRows();
    EXPECT_EQ((std::vector<std::string>{"001 1001", "002 1002"}), Outline(rows));
    ASSERT_EQ(2u, rows.size());
    EXPECT_EQ("1", rows[0].text[4]);
    EXPECT_EQ("1", rows[1].text[4]);
}

TEST_F(TreeBuild, UnlabelledCopiesJoinOnlyAGroupWhoseAttributesMatchNothing)
{
    LoadBodies({{1001, ScrewM6x20()}, {1002, ScrewM6x20()}, {1003, Marked()}});
    std::vector<Row> rows = FirstDisplayRows();
    EXPECT_EQ((std::vector<std::string>{"001 1001", "  001 1001", "  001 1002", "002 1003"}), Outline(rows));
    ASSERT_EQ(4u, rows.size());
    EXPECT_EQ("2", rows[0].text[4]);
    EXPECT_EQ("1", rows[3].text[4]);
}

TEST_F(TreeBuild, CopyCarryingAGroupIdentifierWaitsForItsOwnGroup)
{
    LoadBodies({{1001, ScrewM6x20()}, {1002, Marked({{"组ID", "G1"}})}});
    EXPECT_EQ((std::vector<std::string>{"001 1001", "002 1002"}), Outline(FirstDisplayRows()));
}

TEST_F(TreeBuild, CopyWithAnEmptyNameAndGroupIdentifierJoinsLikeAnUnlabelledOne)
{
    LoadBodies({{1001, ScrewM6x20()}, {1002, Marked({{"名称", ""}, {"组ID", ""}})}});
    std::vector<Row> rows = FirstDisplayRows();
    EXPECT_EQ((std::vector<std::string>{"001 1001", "  001 1001", "  001 1002"}), Outline(rows))
        << "only a non-empty 名称 or 组ID keeps an identical copy apart";
    ASSERT_FALSE(rows.empty());
    EXPECT_EQ("2", rows[0].text[4]);
}

TEST_F(TreeBuild, NamesSortByTheConfiguredOrderThenUnlistedThenUnnamed)
{
    std::vector<PartBody> bodies = {{1001, Marked()}, {1002, Named("弹簧")}, {1003, Named("顶针")}, {1004, Named("导柱")},
                                    {1005, Named("内六角螺钉")}};
    for (PartBody& b : bodies)
        b.solid = Box(10, 10, b.tag - 990);  // no two the same solid
    LoadBodies(bodies);
    EXPECT_EQ((std::vector<std::string>{"001 1005", "002 1003", "003 1002", "004 1004", "005 1001"}),
              Outline(FirstDisplayRows()))
        << "内六角螺钉 and 顶针 are listed; 弹簧 and 导柱 are not and keep their part order";
}

TEST_F(TreeBuild, EqualNamesKeepTheirCollectionOrder)
{
    LoadBodies({{1001, Named("顶针", "A")}, {1002, Named("内六角螺钉", "M6")}, {1003, Named("顶针", "C")},
                {1004, Named("顶针", "B")}});
    EXPECT_EQ((std::vector<std::string>{"001 1002", "002 1001", "003 1003", "004 1004"}), Outline(FirstDisplayRows()));
}

TEST_F(TreeBuild, UnnamedBodiesComeLastInCollectionOrder)
{
    PartBody a{1001, Marked()};
    a.solid = Screw(8, 30);
    PartBody b{1003, Marked()};
    b.solid = Screw(10, 40);
    LoadBodies({a, {1002, Named("弹簧")}, b});
    EXPECT_EQ((std::vector<std::string>{"001 1002", "002 1001", "003 1003"}), Outline(FirstDisplayRows()));
}

TEST_F(TreeBuild, GroupOfOneBodyHasNoChild)
{
    LoadBodies({{1001, ScrewM6x20()}});
    std::vector<Row> rows = FirstDisplayRows();
    EXPECT_EQ(std::vector<std::string>{"001 1001"}, Outline(rows));
}

TEST_F(TreeBuild, GroupShowsItsRecordInTheColumnsAndTheCountedQuantity)
{
    Attributes pin = Marked({{"名称", "顶针"}, {"类型", "Φ4×200"}, {"品牌", "米思米"}, {"数量", "9"}, {"材质", "SKD61"},
                             {"热处理", "淬火"}, {"备注", "加长"}, {"供应商", "米思米中国"}, {"采购周期", "3天"},
                             {"状态", "正常"}, {"修改日期", "2024-05-18"}, {"标准件ID", "05201030150001"}});
    LoadBodies({{1001, pin}, {1002, pin}});
    std::vector<Row> rows = FirstDisplayRows();
    ASSERT_FALSE(rows.empty());
    EXPECT_EQ((std::vector<std::string>{"001", "顶针", "Φ4×200", "米思米", "2", "SKD61", "淬火", "加长", "米思米中国",
                                        "3天", "正常", "2024-05-18", "05201030150001"}),
              rows[0].text)
        << "column 4 is the counted quantity, not the attribute 数量";
}

TEST_F(TreeBuild, GroupShowsAFreshIdentifierForABodyWithoutOne)
{
    host::PinClock({2024, 5, 20, 10, 30, 15, 7});
    LoadBodies({{1001, ScrewM6x20()}});
    std::vector<Row> rows = FirstDisplayRows();
    ASSERT_EQ(1u, rows.size());
    EXPECT_EQ("05201030150007", rows[0].text[12]);
}

TEST_F(TreeBuild, ChildrenRepeatTheGroupTextsNotTheirOwnAttributes)
{
    Attributes first = With(ScrewM6x20(), {{"备注", "甲"}, {"标准件ID", "01"}});
    Attributes second = With(ScrewM6x20(), {{"备注", "乙"}, {"标准件ID", "02"}});
    LoadBodies({{1001, first}, {1002, second}});
    std::vector<Row> rows = FirstDisplayRows();
    ASSERT_EQ(3u, rows.size());
    EXPECT_EQ(rows[0].text, rows[1].text);
    EXPECT_EQ(rows[0].text, rows[2].text) << "the second body's remark and identifier are not shown";
    EXPECT_EQ(1002u, rows[2].tag);
}

TEST_F(TreeBuild, ChildInTheModificationColourShowsGaiMoAndTheColourButItsGroupDoesNot)
{
    PartBody modified{1002, ScrewM6x20()};
    modified.color = 186;
    LoadBodies({{1001, ScrewM6x20()}, modified});
    std::vector<Row> rows = FirstDisplayRows();
    ASSERT_EQ(3u, rows.size());
    EXPECT_EQ("", rows[0].text[10]);
    EXPECT_EQ(0, rows[0].colour) << "the group keeps the normal colour";
    EXPECT_EQ("", rows[1].text[10]);
    EXPECT_EQ(0, rows[1].colour);
    EXPECT_EQ("改模", rows[2].text[10]);
    EXPECT_EQ(186, rows[2].colour);
}

TEST_F(TreeBuild, GroupIsColouredOnlyWhenItsColumn11ReadsGaiMo)
{
    PartBody modified{1001, With(Named("顶针", "A"), {{"修改日期", "2024-05-18"}})};
    modified.color = 186;
    LoadBodies({modified, {1002, With(Named("顶针", "B"), {{"修改日期", "改模"}})}});
    std::vector<Row> rows = FirstDisplayRows();
    ASSERT_EQ(2u, rows.size());
    EXPECT_EQ("改模", rows[0].text[10]) << "the status of a body in the modification colour";
    EXPECT_EQ(0, rows[0].colour) << "column 11 holds a date: normal colour";
    EXPECT_EQ("改模", rows[1].text[11]);
    EXPECT_EQ(186, rows[1].colour);
}

TEST_F(TreeBuild, BodyNodeIsColouredByItsBodyColourOnly)
{
    Attributes dated = With(ScrewM6x20(), {{"修改日期", "改模"}});
    LoadBodies({{1001, dated}, {1002, dated}});
    std::vector<Row> rows = FirstDisplayRows();
    ASSERT_EQ(3u, rows.size());
    EXPECT_EQ(186, rows[0].colour);
    EXPECT_EQ("改模", rows[1].text[11]) << "copied from the group";
    EXPECT_EQ(0, rows[1].colour) << "a body node's colour follows its body, not column 11";
    EXPECT_EQ(0, rows[2].colour);
}

TEST_F(TreeBuild, HandMadeGroupCountsOnlyItsIdenticalSolidsButListsEveryMember)
{
    PartBody sleeve{1001, Marked({{"名称", "司筒"}, {"组ID", "G1"}})};
    sleeve.solid = Stack({{10, 4}, {6, 150}});
    PartBody sleeve2 = sleeve;
    sleeve2.tag = 1002;
    PartBody corePin{1003, Marked({{"名称", "司筒针"}, {"组ID", "G1"}})};
    corePin.solid = Stack({{6, 4}, {3, 180}});
    LoadBodies({sleeve, sleeve2, corePin});
    std::vector<Row> rows = FirstDisplayRows();
    EXPECT_EQ((std::vector<std::string>{"001 1001", "  001 1001", "  001 1002", "  001 1003"}), Outline(rows));
    ASSERT_FALSE(rows.empty());
    EXPECT_EQ("2", rows[0].text[4]) << "the core pin is a member but another solid";
}

TEST_F(TreeBuild, SkippedRecordConsumesNoSequenceNumber)
{
    LoadBodies({{1001, Named("内六角螺钉", "M6")}, {1002, Named("内六角螺钉", "M6")}, {1003, Named("顶针", "A")}});
    EXPECT_EQ((std::vector<std::string>{"001 1001", "  001 1001", "  001 1002", "002 1003"}), Outline(FirstDisplayRows()));
}

TEST_F(TreeBuild, SequenceTextsHaveThreeDigitsUntil999Then1000)
{
    std::vector<PartBody> bodies;
    for (unsigned i = 0; i < 1000; ++i) {
        PartBody b{2001 + i, Named("弹簧", "T" + std::to_string(i))};
        b.solid = Box(10, 10, 10 + i);
        bodies.push_back(b);
    }
    LoadBodies(bodies);
    std::vector<Row> rows = FirstDisplayRows();
    ASSERT_EQ(1000u, rows.size());
    EXPECT_EQ("001", rows[0].text[0]);
    EXPECT_EQ("099", rows[98].text[0]);
    EXPECT_EQ("999", rows[998].text[0]);
    EXPECT_EQ("1000", rows[999].text[0]);
    EXPECT_EQ(3000u, rows[999].tag) << "groups appear in the order they are made";
}

TEST_F(TreeBuild, FirstFlagHasNoEffect)
{
    PartBody copy{1002, Marked()};
    LoadBodies({{1001, ScrewM6x20()}, copy, {1003, Named("顶针")}});
    WithDialog([](Vornadel& dialog, host::LiveDialog&) {
        dialog.CreatStdPartNodes(false, true);
        std::vector<Row> withFalse = Rows(dialog.tree_control0);
        dialog.CreatStdPartNodes(true, true);
        EXPECT_EQ(Outline(withFalse), Outline(Rows(dialog.tree_control0)));
    });
}

TEST_F(TreeBuild, RebuildStartsFromAnEmptyTree)
{
    LoadBodies({{1001, ScrewM6x20()}, {1002, ScrewM6x20()}});
    WithDialog([](Vornadel& dialog, host::LiveDialog&) {
        dialog.CreatStdPartNodes(true, true);
        dialog.CreatStdPartNodes(true, true);
        EXPECT_EQ((std::vector<std::string>{"001 1001", "  001 1001", "  001 1002"}), Outline(Rows(dialog.tree_control0)));
    });
}

TEST_F(TreeBuild, RebuildFollowsAttributesChangedOnTheBodies)
{
    LoadBodies({{1001, ScrewM6x20()}, {1002, ScrewM6x20()}});
    WithDialog([](Vornadel& dialog, host::LiveDialog&) {
        Body(1002)->SetUserAttribute("组ID", -1, "G9", NXOpen::Update::OptionNow);
        Body(1001)->SetUserAttribute("组ID", -1, "G1", NXOpen::Update::OptionNow);
        dialog.CreatStdPartNodes(true, true);
        EXPECT_EQ((std::vector<std::string>{"001 1001", "002 1002"}), Outline(Rows(dialog.tree_control0)))
            << "different group identifiers part the two screws";
    });
}

TEST_F(TreeBuild, SnapshotIsReplacedOnlyWhenAsked)
{
    LoadBodies({{1001, ScrewM6x20()}, {1002, Named("顶针")}});
    WithDialog([](Vornadel& dialog, host::LiveDialog&) {
        ASSERT_EQ(2u, dialog.initialParams.size()) << "the first display takes the snapshot";
        const std::vector<NodeParam*> first = dialog.initialParams;
        Body(1002)->Blank();
        dialog.CreatStdPartNodes(true, false);
        EXPECT_EQ(std::vector<std::string>{"001 1001"}, Outline(Rows(dialog.tree_control0)));
        EXPECT_EQ(first, dialog.initialParams) << "(true, false) keeps the snapshot";
        dialog.CreatStdPartNodes(true, true);
        EXPECT_EQ(1u, dialog.initialParams.size()) << "(true, true) takes a new one";
    });
}

TEST_F(TreeBuild, NoNodeIsExpanded)
{
    LoadBodies({{1001, ScrewM6x20()}, {1002, ScrewM6x20()}});
    WithDialog([](Vornadel& dialog, host::LiveDialog&) {
        for (NXOpen::BlockStyler::Node* node = dialog.tree_control0->RootNode(); node != nullptr; node = node->NextNode())
            EXPECT_FALSE(node->IsExpanded());
    });
}

TEST_F(TreeBuild, BlankedAndInvisibleBodiesAreNotListed)
{
    PartBody blanked{1002, Named("顶针")};
    blanked.layer = 20;
    blanked.blanked = true;
    PartBody elsewhere{1003, Named("顶针")};
    elsewhere.layer = 30;
    LoadBodies({{1001, ScrewM6x20()}, blanked, elsewhere});
    EXPECT_EQ(std::vector<std::string>{"001 1001"}, Outline(FirstDisplayRows()))
        << "layers the configuration does not name are made invisible before the build";
}

TEST(TreeBuildHelpers, IntToStringIsDecimal)
{
    EXPECT_EQ("0", IntToString(0));
    EXPECT_EQ("1000", IntToString(1000));
    EXPECT_EQ("-12", IntToString(-12));
}

TEST(TreeBuildHelpers, CompareByNameOrderPutsNamedRecordsByTheirPlace)
{
    StandardPartParam a, b;
    a.name = "顶针";
    a.nameOrderIndex = 1;
    b.name = "内六角螺钉";
    b.nameOrderIndex = 0;
    EXPECT_FALSE(CompareByNameOrder(a, b));
    EXPECT_TRUE(CompareByNameOrder(b, a));
}

TEST(TreeBuildHelpers, CompareByNameOrderPutsUnnamedRecordsAfterNamedOnes)
{
    StandardPartParam named, unnamed;
    named.name = "弹簧";
    named.nameOrderIndex = 99999;
    unnamed.nameOrderIndex = 0;
    EXPECT_TRUE(CompareByNameOrder(named, unnamed));
    EXPECT_FALSE(CompareByNameOrder(unnamed, named));
    EXPECT_FALSE(CompareByNameOrder(unnamed, unnamed)) << "two unnamed records are equal";
}

TEST(TreeBuildHelpers, CompareByNameOrderHoldsEqualPlacesEqual)
{
    StandardPartParam a, b;
    a.name = "弹簧";
    b.name = "导柱";
    EXPECT_FALSE(CompareByNameOrder(a, b));
    EXPECT_FALSE(CompareByNameOrder(b, a)) << "both unlisted: equal, collection order decides";
}

}  // namespace
