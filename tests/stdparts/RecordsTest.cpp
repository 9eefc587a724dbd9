// The records: a name's place in the configured name order, the reading of string
// attributes (a value of another type counts as missing), and swapping two records.

#include <cstdint>
#include <sstream>
#include <string>

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

namespace {

// Every field of a record, as text, in declaration order.
std::string Fields(const StandardPartParam& r)
{
    std::ostringstream out;
    out << r.bodyInfo << '|' << r.name << '|' << r.type << '|' << r.brand << '|' << r.material << '|'
        << r.heatTreatment << '|' << r.supplier << '|' << r.quantity << '|' << r.leadTime << '|' << r.status << '|'
        << r.modifyDate << '|' << r.remark << '|' << r.stdPartId << '|' << r.groupId << '|' << r.nameOrderIndex;
    return out.str();
}

StandardPartParam Filled(const std::string& tag, int number)
{
    StandardPartParam r;
    r.bodyInfo = reinterpret_cast<BodyInfo*>(static_cast<std::uintptr_t>(number * 16));
    r.name = tag + "name";
    r.type = tag + "type";
    r.brand = tag + "brand";
    r.material = tag + "material";
    r.heatTreatment = tag + "heat";
    r.supplier = tag + "supplier";
    r.quantity = number + 1;
    r.leadTime = tag + "lead";
    r.status = tag + "status";
    r.modifyDate = tag + "date";
    r.remark = tag + "a remark longer than a short string's room";
    r.stdPartId = tag + "id";
    r.groupId = tag + "group";
    r.nameOrderIndex = number + 2;
    return r;
}

}  // namespace

// The tree builder sorts records by swapping them into place: a swap exchanges every field.
TEST_F(StdPartRecords, SwapExchangesEveryField)
{
    StandardPartParam a = Filled("a", 1), b = Filled("b", 2);
    const std::string fieldsOfA = Fields(a), fieldsOfB = Fields(b);
    a.swap(b);
    EXPECT_EQ(fieldsOfB, Fields(a));
    EXPECT_EQ(fieldsOfA, Fields(b));
}
