// NXMessageBox: every box is recorded in order (title, type, text in GBK) and handed to the
// listener as it is shown; Show returns the button NX returns.
#include <NXOpen/NXMessageBox.hxx>
#include <NXOpen/UI.hxx>

#include "UiFixture.hpp"

namespace {

using NXOpen::NXMessageBox;
using NXOpen::NXString;

class MessageBoxes : public UiTest {
protected:
    NXMessageBox* Box() { return NXOpen::UI::GetUI()->NXMessageBox(); }
};

TEST_F(MessageBoxes, AllFourOverloadsAreRecordedInOrder) {
    std::vector<NXString> lines = {NXString("第一行"), NXString(u8"第二行", NXString::UTF8)};
    Box()->Show("标准件BOM", NXMessageBox::DialogTypeInformation, "保存BOM属性成功！");
    Box()->Show(NXString(u8"提示", NXString::UTF8), NXMessageBox::DialogTypeError, NXString("出错"));
    Box()->Show("Block Styler", NXMessageBox::DialogTypeWarning, lines);
    Box()->Show(NXString("问题"), NXMessageBox::DialogTypeQuestion, lines);
    const std::vector<host::MessageRecord>& m = host::Messages();
    ASSERT_EQ(4u, m.size()) << "four boxes shown";
    EXPECT_EQ("标准件BOM", m[0].title) << "the title as given";
    EXPECT_EQ(NXMessageBox::DialogTypeInformation, m[0].type) << "the type";
    EXPECT_EQ("保存BOM属性成功！", m[0].text) << "the text as given";
    EXPECT_EQ("提示", m[1].title) << "an NXString is recorded as its locale text";
    EXPECT_EQ(NXMessageBox::DialogTypeError, m[1].type) << "the type";
    EXPECT_EQ("第一行\n第二行", m[2].text) << "host: the lines of the vector overload joined with newlines";
    EXPECT_EQ("问题", m[3].title) << "the fourth overload's title";
    EXPECT_EQ(NXMessageBox::DialogTypeQuestion, m[3].type) << "the type";
}

TEST_F(MessageBoxes, ListenerSeesEachBoxAsItIsShown) {
    std::vector<std::string> heard;
    host::SetMessageListener([&](const host::MessageRecord& r) {
        heard.push_back(r.text + " #" + std::to_string(host::Messages().size()));
    });
    Box()->Show("标准件BOM", NXMessageBox::DialogTypeError, "一");
    Box()->Show("标准件BOM", NXMessageBox::DialogTypeError, "二");
    std::vector<std::string> expected = {"一 #1", "二 #2"};
    EXPECT_EQ(expected, heard) << "the listener is called once per box, after it is recorded";
}

TEST_F(MessageBoxes, ShowReturnsTheButton) {
    EXPECT_EQ(-2, Box()->Show("标准件BOM", NXMessageBox::DialogTypeInformation, "好")) << "NX: -2 for a box without a choice";
    EXPECT_EQ(-2, Box()->Show("标准件BOM", NXMessageBox::DialogTypeError, "错")) << "NX: -2 for a box without a choice";
    EXPECT_EQ(1, Box()->Show("标准件BOM", NXMessageBox::DialogTypeQuestion, "是否?")) << "host choice: the designer answers yes (1)";
}

TEST_F(MessageBoxes, ResetSessionForgetsTheBoxes) {
    Box()->Show("标准件BOM", NXMessageBox::DialogTypeError, "一");
    host::ResetSession();
    EXPECT_TRUE(host::Messages().empty()) << "a fresh session has shown no box";
}

}  // namespace
