// User attributes through NX Open: typed values at index -1, exact titles, one attribute per
// title, on bodies and on the part.
#include <gtest/gtest.h>

#include <NXOpen/Body.hxx>
#include <NXOpen/NXException.hxx>
#include <NXOpen/Part.hxx>

#include "CoreFixture.hpp"

namespace {

using NXOpen::NXObject;
using NXOpen::NXString;
using NXOpen::Update;

class Attributes : public HostCoreTest {
protected:
    void SetUp() override {
        HostCoreTest::SetUp();
        part_ = LoadSmallMould();
        body_ = Body(1001);
    }
    NXOpen::Part* part_ = nullptr;
    NXOpen::Body* body_ = nullptr;
};

TEST_F(Attributes, StringAttributeFromThePartFileReadsBack) {
    EXPECT_TRUE(body_->HasUserAttribute("名称", NXObject::AttributeTypeString, -1)) << "NX: the body has the attribute";
    EXPECT_STREQ("内六角螺钉", body_->GetStringUserAttribute("名称", -1).GetLocaleText())
        << "NX: the value comes back as locale text";
}

TEST_F(Attributes, PartAttributesHaveTheirTypes) {
    EXPECT_TRUE(part_->HasUserAttribute("订单编号", NXObject::AttributeTypeString, -1)) << "NX: a string attribute";
    EXPECT_EQ(3, part_->GetIntegerUserAttribute("版本", -1)) << "NX: an integer attribute";
    EXPECT_DOUBLE_EQ(12.5, part_->GetRealUserAttribute("重量", -1)) << "NX: a real attribute";
}

TEST_F(Attributes, SetStringAttributeWithPlainTextReadsBack) {
    body_->SetUserAttribute("品牌", -1, "米思米", Update::OptionNow);
    EXPECT_STREQ("米思米", body_->GetStringUserAttribute("品牌", -1).GetLocaleText()) << "NX: the value set reads back";
}

TEST_F(Attributes, SetStringAttributeWithUtf8NXStringStoresTheSameText) {
    body_->SetUserAttribute(NXString(u8"品牌", NXString::UTF8), -1, NXString(u8"米思米", NXString::UTF8),
                            Update::OptionNow);
    EXPECT_STREQ("米思米", body_->GetStringUserAttribute("品牌", -1).GetLocaleText())
        << "NX: an NXString is stored as its text, whatever its mode";
}

TEST_F(Attributes, OverwritingKeepsOneAttribute) {
    body_->SetUserAttribute("数量", -1, "5", Update::OptionNow);
    EXPECT_STREQ("5", body_->GetStringUserAttribute("数量", -1).GetLocaleText()) << "NX: the new value replaces the old";
    int count = 0;
    for (const NXObject::AttributeInformation& info : body_->GetUserAttributes())
        count += std::string(info.Title.GetLocaleText()) == "数量";
    EXPECT_EQ(1, count) << "NX: a title names one attribute";
}

TEST_F(Attributes, TitleMustMatchExactly) {
    EXPECT_FALSE(body_->HasUserAttribute("名称 ", NXObject::AttributeTypeString, -1)) << "NX: a trailing blank differs";
    EXPECT_FALSE(body_->HasUserAttribute("名", NXObject::AttributeTypeString, -1)) << "NX: a prefix is not the title";
    body_->SetUserAttribute("Brand", -1, "x", Update::OptionNow);
    EXPECT_FALSE(body_->HasUserAttribute("brand", NXObject::AttributeTypeString, -1)) << "host: titles are case-exact";
}

TEST_F(Attributes, AnotherTypeUnderTheSameTitleIsNotAStringAttribute) {
    body_->SetUserAttribute("组ID", -1, 7, Update::OptionNow);
    EXPECT_FALSE(body_->HasUserAttribute("组ID", NXObject::AttributeTypeString, -1))
        << "NX: an integer attribute is not a string attribute";
    EXPECT_TRUE(body_->HasUserAttribute("组ID", NXObject::AttributeTypeInteger, -1)) << "NX: it is an integer attribute";
    EXPECT_THROW(body_->GetStringUserAttribute("组ID", -1), NXOpen::NXException)
        << "NX: reading it as a string throws";
}

TEST_F(Attributes, AnyTypeFindsEveryType) {
    EXPECT_TRUE(part_->HasUserAttribute("版本", NXObject::AttributeTypeAny, -1)) << "NX: Any matches an integer";
    EXPECT_TRUE(part_->HasUserAttribute("订单编号", NXObject::AttributeTypeAny, -1)) << "NX: Any matches a string";
}

// Host choice: a value of another type under an existing title replaces the attribute.
TEST_F(Attributes, SettingAnotherTypeReplacesTheAttribute) {
    body_->SetUserAttribute("数量", -1, 4, Update::OptionNow);
    EXPECT_FALSE(body_->HasUserAttribute("数量", NXObject::AttributeTypeString, -1)) << "host choice: the string is gone";
    EXPECT_EQ(4, body_->GetIntegerUserAttribute("数量", -1)) << "host choice: the integer took its place";
}

TEST_F(Attributes, MissingAttributeIsAbsentAndReadingItThrows) {
    EXPECT_FALSE(body_->HasUserAttribute("不存在", NXObject::AttributeTypeString, -1)) << "NX: no such attribute";
    EXPECT_THROW(body_->GetStringUserAttribute("不存在", -1), NXOpen::NXException) << "NX: reading it throws";
    EXPECT_THROW(body_->GetUserAttribute("不存在", NXObject::AttributeTypeString, -1), NXOpen::NXException)
        << "NX: GetUserAttribute throws for a missing attribute";
    EXPECT_THROW(body_->GetIntegerUserAttribute("不存在", -1), NXOpen::NXException) << "NX: integers too";
    EXPECT_THROW(body_->GetRealUserAttribute("不存在", -1), NXOpen::NXException) << "NX: reals too";
}

TEST_F(Attributes, GetUserAttributeDescribesTheStringValue) {
    NXObject::AttributeInformation info = body_->GetUserAttribute("名称", NXObject::AttributeTypeString, -1);
    EXPECT_EQ(NXObject::AttributeTypeString, info.Type) << "NX: the type of the attribute";
    EXPECT_STREQ("名称", info.Title.GetLocaleText()) << "NX: its title";
    EXPECT_STREQ("内六角螺钉", info.StringValue.GetLocaleText()) << "NX: the string value is in StringValue";
}

TEST_F(Attributes, DeleteUserAttributeRemovesIt) {
    body_->DeleteUserAttribute(NXObject::AttributeTypeString, "名称", true, Update::OptionNow);
    EXPECT_FALSE(body_->HasUserAttribute("名称", NXObject::AttributeTypeAny, -1)) << "NX: the attribute is gone";
    EXPECT_TRUE(body_->HasUserAttribute("数量", NXObject::AttributeTypeString, -1)) << "NX: the others stay";
}

TEST_F(Attributes, DeleteUserAttributeOfAnotherTypeLeavesIt) {
    body_->DeleteUserAttribute(NXObject::AttributeTypeInteger, "名称", true, Update::OptionNow);
    EXPECT_TRUE(body_->HasUserAttribute("名称", NXObject::AttributeTypeString, -1))
        << "NX: only an attribute of the type given is deleted";
}

// Host choice (the header's contract): deleting what is not there is no error.
TEST_F(Attributes, DeleteMissingAttributeIsNotAnError) {
    EXPECT_NO_THROW(body_->DeleteUserAttribute(NXObject::AttributeTypeString, "不存在", true, Update::OptionNow))
        << "host choice: nothing happens";
}

TEST_F(Attributes, DeleteUserAttributesRemovesEveryOneOfAType) {
    part_->DeleteUserAttributes(NXObject::AttributeTypeString, Update::OptionNow);
    EXPECT_FALSE(part_->HasUserAttribute("订单编号", NXObject::AttributeTypeAny, -1)) << "NX: strings are gone";
    EXPECT_TRUE(part_->HasUserAttribute("版本", NXObject::AttributeTypeInteger, -1)) << "NX: other types stay";
}

TEST_F(Attributes, GetUserAttributesListsThemInCreationOrder) {
    std::vector<NXObject::AttributeInformation> all = body_->GetUserAttributes();
    ASSERT_EQ(3u, all.size()) << "NX: every attribute of the body";
    EXPECT_STREQ("转图标识", all[0].Title.GetLocaleText()) << "host: in the order they were created";
    EXPECT_STREQ("名称", all[1].Title.GetLocaleText()) << "host: in the order they were created";
    EXPECT_STREQ("数量", all[2].Title.GetLocaleText()) << "host: in the order they were created";
}

// An object keeps the titles of its first attributes in itself and the rest beside: a long list,
// with attributes removed from both parts and from the middle, keeps its order and its values.
TEST_F(Attributes, AListLongerThanADozenKeepsOrderAndValuesThroughRemovals) {
    NXOpen::Body* body = Body(1003);  // no attributes in the part file
    for (int i = 0; i < 24; ++i)
        body->SetUserAttribute(("t" + std::to_string(i)).c_str(), -1, ("v" + std::to_string(i)).c_str(), Update::OptionNow);
    body->SetUserAttribute("t5", -1, 55, Update::OptionNow);  // replaced in its place, type included
    body->DeleteUserAttribute(NXObject::AttributeTypeString, "t2", true, Update::OptionNow);
    body->DeleteUserAttribute(NXObject::AttributeTypeString, "t20", true, Update::OptionNow);
    body->DeleteUserAttribute(NXObject::AttributeTypeString, "t16", true, Update::OptionNow);
    std::vector<NXObject::AttributeInformation> all = body->GetUserAttributes();
    std::string order;
    for (const auto& a : all) order += std::string(a.Title.GetLocaleText()) + " ";
    EXPECT_EQ("t0 t1 t3 t4 t5 t6 t7 t8 t9 t10 t11 t12 t13 t14 t15 t17 t18 t19 t21 t22 t23 ", order);
    EXPECT_EQ(55, body->GetIntegerUserAttribute("t5", -1));
    EXPECT_STREQ("v17", body->GetStringUserAttribute("t17", -1).GetLocaleText());
    EXPECT_STREQ("v23", body->GetStringUserAttribute("t23", -1).GetLocaleText());
    EXPECT_FALSE(body->HasUserAttribute("t16", NXObject::AttributeTypeAny, -1));

    body->DeleteUserAttributes(NXObject::AttributeTypeString, Update::OptionNow);
    all = body->GetUserAttributes();
    ASSERT_EQ(1u, all.size()) << "the integer stays";
    EXPECT_STREQ("t5", all[0].Title.GetLocaleText());
    body->SetUserAttribute("t23", -1, "again", Update::OptionNow);
    EXPECT_STREQ("again", body->GetStringUserAttribute("t23", -1).GetLocaleText());
    EXPECT_EQ(2u, body->GetUserAttributes().size());
}

TEST_F(Attributes, BooleanTimeAndNullAttributesKeepTheirTypes) {
    body_->SetBooleanUserAttribute("已检查", -1, true, Update::OptionNow);
    body_->SetTimeUserAttribute("检查时间", -1, "07-Mar-2024 09:05", Update::OptionNow);
    body_->SetUserAttribute("标记", -1, Update::OptionNow);
    EXPECT_TRUE(body_->HasUserAttribute("已检查", NXObject::AttributeTypeBoolean, -1)) << "NX: a boolean attribute";
    EXPECT_TRUE(body_->GetUserAttribute("已检查", NXObject::AttributeTypeBoolean, -1).BooleanValue)
        << "NX: its value";
    EXPECT_STREQ("07-Mar-2024 09:05",
                 body_->GetUserAttribute("检查时间", NXObject::AttributeTypeTime, -1).TimeValue.GetLocaleText())
        << "NX: a time attribute keeps its text";
    EXPECT_TRUE(body_->HasUserAttribute("标记", NXObject::AttributeTypeNull, -1)) << "NX: a null attribute";
}

TEST_F(Attributes, SetUserAttributeFromInformationUsesItsType) {
    NXObject::AttributeInformation info;
    info.Type = NXObject::AttributeTypeReal;
    info.Title = "长度";
    info.RealValue = 2.5;
    body_->SetUserAttribute(info, Update::OptionNow);
    EXPECT_DOUBLE_EQ(2.5, body_->GetRealUserAttribute("长度", -1)) << "NX: the description's type and value";
}

// Host choice: integers as decimal, reals in their shortest exact form, booleans TRUE/FALSE.
TEST_F(Attributes, GetUserAttributeAsStringFormatsTheValue) {
    EXPECT_STREQ("3", part_->GetUserAttributeAsString("版本", NXObject::AttributeTypeInteger, -1).GetLocaleText())
        << "host choice: an integer as decimal";
    EXPECT_STREQ("12.5", part_->GetUserAttributeAsString("重量", NXObject::AttributeTypeReal, -1).GetLocaleText())
        << "host choice: a real in its shortest form";
    EXPECT_STREQ("SO-1", part_->GetUserAttributeAsString("订单编号", NXObject::AttributeTypeAny, -1).GetLocaleText())
        << "NX: a string as itself";
}

// Where the host differs from NX: attribute arrays (index >= 0) are not kept.
TEST_F(Attributes, IndexOtherThanMinusOneIsRefused) {
    EXPECT_THROW(body_->SetUserAttribute("数组", 0, "x", Update::OptionNow), NXOpen::NXException)
        << "host differs: no attribute arrays";
    EXPECT_FALSE(body_->HasUserAttribute("名称", NXObject::AttributeTypeString, 0))
        << "host differs: no array element exists";
}

TEST_F(Attributes, EmptyTitleIsRefused) {
    EXPECT_THROW(body_->SetUserAttribute("", -1, "x", Update::OptionNow), NXOpen::NXException)
        << "NX: an attribute needs a title";
}

TEST_F(Attributes, NameIsKeptAsGiven) {
    body_->SetName("螺钉一");
    EXPECT_STREQ("螺钉一", body_->Name().GetLocaleText()) << "NX: Name() gives what SetName set";
}

}  // namespace
