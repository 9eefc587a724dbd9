// The records' lookups: a name's place in the configured name order and the reading of string
// attributes, where a value of another type counts as missing.

#include "StdPartsFixture.hpp"

#include "stdparts/StdPartRecords.h"

using namespace stdparts_test;

namespace {

class StdPartRecords : public StdPartsFixture {};

TEST_F(StdPartRecords, GetStringValueIndexOfAnEmptyListIs99999)
{
    Vornadel dialog;
    std::vector<std::string> list;
    EXPECT_EQ(99999, dialog.GetStringValueIndex(list, "顶针"));
}

TEST_F(StdPartRecords, GetStringValueIndexOfAnUnlistedValueIs99999)
{
    Vornadel dialog;
    std::vector<std::string> list = {"内六角螺钉", "顶针"};
    EXPECT_EQ(99999, dialog.GetStringValueIndex(list, "弹簧"));
}

TEST_F(StdPartRecords, GetStringValueIndexGivesTheFirstOfTwoEqualElements)
{
    Vornadel dialog;
    std::vector<std::string> list = {"弹簧", "顶针", "导柱", "顶针"};
    EXPECT_EQ(1, dialog.GetStringValueIndex(list, "顶针"));
}

TEST_F(StdPartRecords, GetStringValueIndexDoesNotTrimATrailingBlank)
{
    Vornadel dialog;
    std::vector<std::string> list = {"顶针"};
    EXPECT_EQ(99999, dialog.GetStringValueIndex(list, "顶针 "));
}

TEST_F(StdPartRecords, GetStringValueIndexOfTheEmptyNameIsItsPlaceWhenListed)
{
    Vornadel dialog;
    std::vector<std::string> list = {"顶针", ""};
    EXPECT_EQ(1, dialog.GetStringValueIndex(list, "")) << "compared byte for byte, empty text included";
}

TEST_F(StdPartRecords, ReadStringAttributeReadsAStringValue)
{
    LoadBodies({{1001, Marked({{"名称", "内六角螺钉"}})}});
    std::string value = "sentinel";
    EXPECT_TRUE(ReadStringAttribute(Body(1001), "名称", value));
    EXPECT_EQ("内六角螺钉", value);
}

TEST_F(StdPartRecords, ReadStringAttributeReadsAnEmptyStringValue)
{
    LoadBodies({{1001, Marked({{"名称", ""}})}});
    std::string value = "sentinel";
    EXPECT_TRUE(ReadStringAttribute(Body(1001), "名称", value)) << "an empty string attribute exists";
    EXPECT_EQ("", value);
}

TEST_F(StdPartRecords, ReadStringAttributeOfAMissingTitleLeavesTheValueUntouched)
{
    LoadBodies({{1001, Marked()}});
    std::string value = "sentinel";
    EXPECT_FALSE(ReadStringAttribute(Body(1001), "名称", value));
    EXPECT_EQ("sentinel", value);
}

TEST_F(StdPartRecords, ReadStringAttributeCountsAnIntegerValueAsMissing)
{
    LoadBodies({{1001, Marked({{"数量", Json{{"integer", 12}}}})}});
    std::string value = "sentinel";
    EXPECT_FALSE(ReadStringAttribute(Body(1001), "数量", value));
    EXPECT_EQ("sentinel", value);
}

TEST_F(StdPartRecords, ReadStringAttributeCountsARealValueAsMissing)
{
    LoadBodies({{1001, Marked({{"数量", Json{{"real", 2.5}}}})}});
    std::string value = "sentinel";
    EXPECT_FALSE(ReadStringAttribute(Body(1001), "数量", value));
    EXPECT_EQ("sentinel", value);
}

TEST_F(StdPartRecords, ReadStringAttributeReadsThePartToo)
{
    LoadBodies({}, 61, {}, {{"订单编号", "SO-7"}});
    std::string value;
    EXPECT_TRUE(ReadStringAttribute(host::WorkPart(), "订单编号", value));
    EXPECT_EQ("SO-7", value);
}

}  // namespace
