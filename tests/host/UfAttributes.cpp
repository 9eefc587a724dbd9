// UF_ATTR_read_value and UF_ATTR_assign: the older attribute calls, on bodies and on the part.
#include <cstring>
#include <string>

#include <gtest/gtest.h>

#include <NXOpen/Body.hxx>
#include <NXOpen/Part.hxx>
#include <NXOpen/Session.hxx>
#include <uf.h>
#include <uf_attr.h>

#include "CoreFixture.hpp"

namespace {

using NXOpen::NXObject;

class UfAttr : public HostCoreTest {
protected:
    void SetUp() override {
        HostCoreTest::SetUp();
        part_ = LoadSmallMould();
        body_ = Body(1001)->Tag();
        UF_initialize();
    }

    static UF_ATTR_value_t StringValue(const char* text) {
        UF_ATTR_value_t v;
        v.type = UF_ATTR_string;
        v.value.string = const_cast<char*>(text);
        return v;
    }

    NXOpen::Part* part_ = nullptr;
    tag_t body_ = NULL_TAG;
};

TEST_F(UfAttr, ReadValueOfMissingTitleGivesTypeZero) {
    UF_ATTR_value_t v;
    v.type = 12345;  // sentinel: proves the call wrote the field
    char title[] = "不存在";
    EXPECT_EQ(0, UF_ATTR_read_value(body_, title, UF_ATTR_any, &v)) << "NX: a missing attribute is no error";
    EXPECT_EQ(0, v.type) << "NX: no attribute gives value.type == 0";
}

TEST_F(UfAttr, ReadValueAnyAllocatesTheString) {
    UF_ATTR_value_t v;
    v.type = 12345;
    v.value.string = nullptr;
    char title[] = "名称";
    EXPECT_EQ(0, UF_ATTR_read_value(body_, title, UF_ATTR_any, &v)) << "NX: reading succeeds";
    EXPECT_EQ(UF_ATTR_string, v.type) << "NX: a string attribute reads as UF_ATTR_string";
    ASSERT_NE(nullptr, v.value.string) << "NX: the string is allocated for the caller";
    EXPECT_STREQ("内六角螺钉", v.value.string) << "NX: the value in the code page";
    UF_free(v.value.string);
}

TEST_F(UfAttr, ReadValueAnyOfAnIntegerGivesTheInteger) {
    UF_ATTR_value_t v;
    v.type = 12345;
    v.value.integer = -1;
    char title[] = "版本";
    UF_ATTR_read_value(part_->Tag(), title, UF_ATTR_any, &v);
    EXPECT_EQ(UF_ATTR_integer, v.type) << "NX: an integer attribute reads as UF_ATTR_integer";
    EXPECT_EQ(3, v.value.integer) << "NX: its value";
}

TEST_F(UfAttr, ReadValueOfThePartTagReadsAPartAttribute) {
    UF_ATTR_value_t v;
    v.type = 12345;
    char title[] = "订单编号";
    UF_ATTR_read_value(part_->Tag(), title, UF_ATTR_any, &v);
    ASSERT_EQ(UF_ATTR_string, v.type) << "NX: a part tag reads the part's attributes";
    EXPECT_STREQ("SO-1", v.value.string) << "NX: the part attribute's value";
    UF_free(v.value.string);
}

TEST_F(UfAttr, ReadValueAsStringOfAnIntegerAttributeGivesTypeZero) {
    UF_ATTR_value_t v;
    v.type = 12345;
    v.value.string = nullptr;
    char title[] = "版本";
    UF_ATTR_read_value(part_->Tag(), title, UF_ATTR_string, &v);
    EXPECT_EQ(0, v.type) << "NX: no attribute of the type asked for gives type 0";
}

TEST_F(UfAttr, ReadValueAsStringCopiesIntoTheCallersBuffer) {
    char buffer[UF_ATTR_MAX_STRING_LEN + 1];
    std::memset(buffer, 'x', sizeof buffer);
    UF_ATTR_value_t v;
    v.type = 12345;
    v.value.string = buffer;
    char title[] = "数量";
    UF_ATTR_read_value(body_, title, UF_ATTR_string, &v);
    EXPECT_EQ(buffer, v.value.string) << "NX: a given buffer is filled, not replaced";
    EXPECT_STREQ("4", buffer) << "NX: the value is copied into it";
}

TEST_F(UfAttr, ReadValueAsStringWithoutABufferAllocatesTheString) {
    UF_ATTR_value_t v;
    v.type = 12345;
    v.value.string = nullptr;
    char title[] = "名称";
    EXPECT_EQ(0, UF_ATTR_read_value(body_, title, UF_ATTR_string, &v)) << "NX: reading succeeds";
    EXPECT_EQ(UF_ATTR_string, v.type) << "NX: a string attribute";
    ASSERT_NE(nullptr, v.value.string) << "host: with no buffer given the string is allocated for the caller";
    EXPECT_STREQ("内六角螺钉", v.value.string) << "NX: the value in the code page";
    UF_free(v.value.string);
}

TEST_F(UfAttr, ReadValueAsStringIntoABufferCopiesAt132Bytes) {
    std::string value(200, 'a');
    Body(1001)->SetUserAttribute("备注", -1, value.c_str(), NXOpen::Update::OptionNow);
    char buffer[UF_ATTR_MAX_STRING_LEN + 8];
    std::memset(buffer, 'x', sizeof buffer);
    UF_ATTR_value_t v;
    v.type = 12345;
    v.value.string = buffer;
    char title[] = "备注";
    UF_ATTR_read_value(body_, title, UF_ATTR_string, &v);
    EXPECT_EQ(std::string(UF_ATTR_MAX_STRING_LEN, 'a'), buffer) << "host: at most 132 bytes and a NUL are copied";
    EXPECT_EQ('x', buffer[UF_ATTR_MAX_STRING_LEN + 1]) << "host: nothing is written after the NUL";
}

TEST_F(UfAttr, ReadValueOfUnknownTagFailsAndWritesNothing) {
    UF_ATTR_value_t v;
    v.type = 12345;
    char title[] = "名称";
    EXPECT_NE(0, UF_ATTR_read_value(424242, title, UF_ATTR_any, &v)) << "NX: an unknown tag is an error";
    EXPECT_EQ(12345, v.type) << "host: a failed read leaves the value alone";
}

TEST_F(UfAttr, ReadValueOfAnObjectWithoutAttributesFailsAndWritesNothing) {
    UF_ATTR_value_t v;
    v.type = 12345;
    char title[] = "名称";
    EXPECT_NE(0, UF_ATTR_read_value(NXOpen::Session::GetSession()->Tag(), title, UF_ATTR_any, &v))
        << "host: only the part and its bodies carry attributes; the session's tag is an error";
    EXPECT_EQ(12345, v.type) << "host: a failed read leaves the value alone";
}

TEST_F(UfAttr, AssignWritesAStringThatNXOpenReads) {
    char title[] = "品牌";
    EXPECT_EQ(0, UF_ATTR_assign(body_, title, StringValue("米思米"))) << "NX: assigning succeeds";
    EXPECT_STREQ("米思米", Body(1001)->GetStringUserAttribute("品牌", -1).GetLocaleText())
        << "NX: both interfaces see the same attributes";
}

TEST_F(UfAttr, AssignOnThePartTagWritesAPartAttribute) {
    char title[] = "客户名称";
    UF_ATTR_assign(part_->Tag(), title, StringValue("客户甲"));
    EXPECT_STREQ("客户甲", part_->GetStringUserAttribute("客户名称", -1).GetLocaleText())
        << "NX: a part tag writes a part attribute";
}

TEST_F(UfAttr, AssignValueOf132BytesIsAccepted) {
    std::string value(UF_ATTR_MAX_STRING_LEN, 'a');
    char title[] = "备注";
    EXPECT_EQ(0, UF_ATTR_assign(body_, title, StringValue(value.c_str()))) << "NX: 132 bytes is the limit";
    EXPECT_EQ(value, Body(1001)->GetStringUserAttribute("备注", -1).GetLocaleText()) << "NX: all 132 bytes kept";
}

// NX names the code for a longer value (UF_err_attr_value_too_big); the host refuses it with that
// code and writes nothing (the old value stays).
TEST_F(UfAttr, AssignValueOf133BytesIsRefusedAndWritesNothing) {
    std::string value(UF_ATTR_MAX_STRING_LEN + 1, 'a');
    char title[] = "数量";
    EXPECT_EQ(1105035, UF_ATTR_assign(body_, title, StringValue(value.c_str()))) << "NX 8.5: UF_err_attr_value_too_big";
    EXPECT_STREQ("4", Body(1001)->GetStringUserAttribute("数量", -1).GetLocaleText())
        << "host choice: the old value stays";
}

TEST_F(UfAttr, AssignCountsBytesNotCharacters) {
    std::string value;
    for (int i = 0; i < 67; ++i) value += "螺";  // 134 GBK bytes
    char title[] = "备注";
    EXPECT_NE(0, UF_ATTR_assign(body_, title, StringValue(value.c_str())))
        << "NX: 67 Chinese characters are 134 bytes, over the limit";
    EXPECT_FALSE(Body(1001)->HasUserAttribute("备注", NXObject::AttributeTypeAny, -1)) << "host choice: nothing written";
}

TEST_F(UfAttr, AssignTitleOf51BytesIsRefused) {
    std::string title(UF_ATTR_MAX_TITLE_LEN + 1, 't');
    EXPECT_EQ(1105034, UF_ATTR_assign(body_, title.data(), StringValue("x"))) << "NX 8.5: UF_err_attr_title_too_big";
    EXPECT_FALSE(Body(1001)->HasUserAttribute(title.c_str(), NXObject::AttributeTypeAny, -1)) << "host: nothing written";
}

TEST_F(UfAttr, AssignEmptyTitleIsRefused) {
    char title[] = "";
    EXPECT_NE(0, UF_ATTR_assign(body_, title, StringValue("x"))) << "NX: an attribute needs a title";
    EXPECT_EQ(3u, Body(1001)->GetUserAttributes().size()) << "host: nothing written";
}

TEST_F(UfAttr, AssignTitleOf50BytesIsAccepted) {
    std::string title(UF_ATTR_MAX_TITLE_LEN, 't');
    EXPECT_EQ(0, UF_ATTR_assign(body_, title.data(), StringValue("x"))) << "NX: 50 bytes is the limit";
}

TEST_F(UfAttr, AssignToUnknownTagFails) {
    char title[] = "名称";
    EXPECT_NE(0, UF_ATTR_assign(424242, title, StringValue("x"))) << "NX: an unknown tag is an error";
}

TEST_F(UfAttr, AssignToAnObjectWithoutAttributesFails) {
    char title[] = "名称";
    EXPECT_NE(0, UF_ATTR_assign(NXOpen::Session::GetSession()->Tag(), title, StringValue("x")))
        << "host: only the part and its bodies carry attributes; the session's tag is an error";
}

TEST_F(UfAttr, AssignReplacesAnAttributeOfAnotherType) {
    char title[] = "版本";
    UF_ATTR_assign(part_->Tag(), title, StringValue("B"));
    EXPECT_STREQ("B", part_->GetStringUserAttribute("版本", -1).GetLocaleText())
        << "host choice: the string replaces the integer under the same title";
    EXPECT_FALSE(part_->HasUserAttribute("版本", NXObject::AttributeTypeInteger, -1)) << "host choice: one per title";
}

TEST_F(UfAttr, AssignIntegerReadsBackAsInteger) {
    UF_ATTR_value_t v;
    v.type = UF_ATTR_integer;
    v.value.integer = 12;
    char title[] = "件数";
    UF_ATTR_assign(body_, title, v);
    EXPECT_EQ(12, Body(1001)->GetIntegerUserAttribute("件数", -1)) << "NX: an integer attribute";
}

TEST_F(UfAttr, AssignRealBooleanAndNullKeepTheirTypes) {
    UF_ATTR_value_t v;
    v.type = UF_ATTR_real;
    v.value.real = 2.5;
    char length[] = "长度";
    EXPECT_EQ(0, UF_ATTR_assign(body_, length, v)) << "NX: assigning a real succeeds";
    v.type = UF_ATTR_bool;
    v.value.boolean = true;
    char checked[] = "已检查";
    EXPECT_EQ(0, UF_ATTR_assign(body_, checked, v)) << "NX: assigning a boolean succeeds";
    v.type = UF_ATTR_null;
    char mark[] = "标记";
    EXPECT_EQ(0, UF_ATTR_assign(body_, mark, v)) << "NX: assigning a null attribute succeeds";
    EXPECT_DOUBLE_EQ(2.5, Body(1001)->GetRealUserAttribute("长度", -1)) << "NX: a real attribute";
    EXPECT_TRUE(Body(1001)->GetUserAttribute("已检查", NXObject::AttributeTypeBoolean, -1).BooleanValue)
        << "NX: a boolean attribute";
    EXPECT_TRUE(Body(1001)->HasUserAttribute("标记", NXObject::AttributeTypeNull, -1)) << "NX: a null attribute";
}

// Where the host differs from NX: it keeps no time values of its own (only their text), so
// UF_ATTR_assign refuses them.
TEST_F(UfAttr, AssignOfATimeValueIsRefusedAndWritesNothing) {
    UF_ATTR_value_t v;
    v.type = UF_ATTR_time;
    v.value.time[0] = 1;
    v.value.time[1] = 2;
    char title[] = "检查时间";
    EXPECT_NE(0, UF_ATTR_assign(body_, title, v)) << "host differs: time values are refused";
    EXPECT_FALSE(Body(1001)->HasUserAttribute("检查时间", NXObject::AttributeTypeAny, -1)) << "host: nothing written";
}

}  // namespace
