// The runner's output formats, from views made by hand. Views hold GBK text as the host does;
// the expected output is UTF-8.
#include <gtest/gtest.h>

#include <sstream>

#include "Output.hpp"

using runner::Format;
using runner::Printer;

namespace {

std::string Print(Format format, const std::function<void(Printer&)>& print) {
    std::ostringstream out;
    Printer printer(out, format);
    print(printer);
    return out.str();
}

runner::TreeView SampleTree() {
    runner::TreeView tree;
    tree.columns = {{0, "名称", 100, true}, {1, "数量", 60, true}, {12, "ID", 40, false}};
    runner::TreeRow group;
    group.texts = {{0, "螺钉"}, {1, "2"}, {12, "G1"}};
    group.colour = 186;
    runner::TreeRow body;
    body.depth = 1;
    body.texts = {{0, "M6\tx20"}, {1, "1"}, {12, "a\\b\nc"}};
    body.bodyTag = 1001;
    tree.rows = {group, body};
    return tree;
}

std::vector<host::BlockView> SampleBlocks() {
    return {host::BlockView{"group", "Group", "基本信息", "", "", {}},
            host::BlockView{"string031", "StringBlock", "产品材质", "group", "钢", {"钢", "铝"}}};
}

runner::PartView SamplePart() {
    runner::PartView part;
    part.leaf = "A100";
    part.attributes = {{"订单编号", "string", "SO-1"}, {"版本", "integer", "3"}};
    part.layers = {{1, "work"}, {30, "invisible"}};
    runner::BodyView body;
    body.tag = 1001;
    body.layer = 10;
    body.colour = 6;
    body.blanked = true;
    body.highlighted = true;
    body.attributes = {{"名称", "string", "内六角\t螺钉"}};
    part.bodies = {body};
    return part;
}

host::SelectionRequest SampleSelection() {
    return {"选择标准件", "选择", NXOpen::Selection::SelectionScopeWorkPart,
            NXOpen::Selection::SelectionActionClearAndEnableSpecific, false, false, {}, {}};
}

// Every event line the runner prints besides message boxes, in one format.
std::string PrintEvents(Format format) {
    return Print(format, [](Printer& p) {
        p.EditRefused({1, 2}, 3, u8"文本");
        p.MenuRefused({2, 0}, 5, "disabled");
        p.Opened("D:\\out\\测试.xls", true);
        p.Opened("D:\\out\\测试-1.xls", false);
        p.Selection(SampleSelection());
        host::SelectionRequest unanswered = SampleSelection();
        unanswered.unanswered = true;
        p.Selection(unanswered);
    });
}

}  // namespace

TEST(RunnerOutput, TsvFieldEscapesOnlyTabAndNewline) {
    EXPECT_EQ("a\\tb\\nc", runner::TsvField("a\tb\nc")) << "TAB and newline become \\t and \\n";
    EXPECT_EQ("C:\\out\\x", runner::TsvField("C:\\out\\x")) << "a backslash stays as it is";
    EXPECT_EQ("a\rb", runner::TsvField("a\rb")) << "nothing else is escaped";
}

TEST(RunnerOutput, ChineseCharactersTakeTwoColumns) {
    EXPECT_EQ(4, runner::DisplayWidth(u8"螺钉")) << "two wide characters";
    EXPECT_EQ(5, runner::DisplayWidth(u8"M螺钉")) << "narrow and wide mixed";
    EXPECT_EQ(3, runner::DisplayWidth("abc")) << "ASCII is one column each";
}

TEST(RunnerOutput, AmbiguousCharactersTakeOneColumnAsUtf8TerminalsShowThem) {
    EXPECT_EQ(6, runner::DisplayWidth(u8"Φ4×200")) << "Φ and × are ambiguous-width: one column by default";
    EXPECT_EQ(2, runner::DisplayWidth(u8"①°"));
}

TEST(RunnerOutput, AmbiguousCharactersOfGbkTakeTwoColumnsOnAWideAmbiguousTerminal) {
    EXPECT_EQ(8, runner::DisplayWidth(u8"Φ4×200", 2)) << "Φ and × are ambiguous-width; GBK holds them in two bytes";
    EXPECT_EQ(4, runner::DisplayWidth(u8"①°", 2)) << "so are ① and °";
    EXPECT_EQ(1, runner::DisplayWidth(u8"€", 2)) << "the euro sign is one byte (0x80) in GBK";
    EXPECT_EQ(1, runner::DisplayWidth(u8"\u0E01", 2)) << "a character GBK lacks and that is not wide";
    EXPECT_EQ(2, runner::DisplayWidth(u8"\uAC00", 2)) << "a wide character GBK lacks";
    EXPECT_EQ(4, runner::DisplayWidth(u8"螺钉", 2)) << "wide characters stay two columns";
}

TEST(RunnerOutput, Utf8FilterEscapesBytesThatAreNotUtf8) {
    std::ostringstream target;
    {
        runner::Utf8Filter filter(target);
        std::ostream out(&filter);
        out << u8"螺钉 ok\n" << "jump\xFF\xB1\xEA" << u8"Φ" << "\xE8\x9E" << std::flush;
        out << "end";
    }
    EXPECT_EQ(u8"螺钉 ok\njump\\xFF\\xB1\\xEAΦ\\xE8\\x9Eend", target.str())
        << "well-formed UTF-8 passes; every other byte is \\xHH; the rest is passed on at the end";
}

TEST(RunnerOutput, TsvTreeLineHasDepthThirteenColumnsColourAndBody) {
    const std::string out = Print(Format::Tsv, [](Printer& p) { p.Tree(SampleTree()); });
    const std::string expected =
        u8"0\t螺钉\t2\t\t\t\t\t\t\t\t\t\t\tG1\t186\t-\n"
        u8"1\tM6\\tx20\t1\t\t\t\t\t\t\t\t\t\t\ta\\b\\nc\t-\t1001\n";
    EXPECT_EQ(expected, out) << "depth, columns 0..12 (missing ones empty), colour or -, body tag or -";
}

TEST(RunnerOutput, TextTreeIsAnIndentedTableOfTheVisibleColumns) {
    const std::string out = Print(Format::Text, [](Printer& p) { p.Tree(SampleTree()); });
    const std::string expected =
        u8"名称      数量  颜色  实体\n"
        u8"--------------------------\n"
        u8"螺钉      2     186   -\n"
        u8"  M6\tx20  1     -     1001\n";
    EXPECT_EQ(expected, out) << "a header of visible column titles, children indented under their group";
}

TEST(RunnerOutput, TreeStateListsSelectedThenExpandedRows) {
    runner::TreeStateView state;
    state.selected = {{1, 2}, {3, 1}};
    state.expanded = {{1, 0}};
    EXPECT_EQ("selected\t1.2\nselected\t3.1\nexpanded\t1\n", Print(Format::Tsv, [&](Printer& p) { p.TreeState(state); }));
    EXPECT_EQ("Selected rows: 1.2 3.1\nExpanded rows: 1\n", Print(Format::Text, [&](Printer& p) { p.TreeState(state); }));
    EXPECT_EQ("Selected rows: (none)\nExpanded rows: (none)\n",
              Print(Format::Text, [](Printer& p) { p.TreeState(runner::TreeStateView{}); }));
}

TEST(RunnerOutput, TsvBlocksOneLinePerBlock) {
    const std::string out = Print(Format::Tsv, [](Printer& p) { p.Blocks("标题", SampleBlocks()); });
    EXPECT_EQ(u8"group\tGroup\t基本信息\t\t\nstring031\tStringBlock\t产品材质\t钢\t钢|铝\n", out)
        << "id, class, label, value, choices joined by |";
}

TEST(RunnerOutput, TextBlocksNestUnderTheirContainers) {
    const std::string out = Print(Format::Text, [](Printer& p) { p.Blocks("标题", SampleBlocks()); });
    EXPECT_EQ(u8"Dialog: 标题\n  [Group group] 基本信息\n    [StringBlock string031] 产品材质 = 钢  (choices: 钢 | 铝)\n", out)
        << "the title, then each block indented by its nesting";
}

TEST(RunnerOutput, MessagesNameTheirType) {
    const host::MessageRecord error{"Block Styler", NXOpen::NXMessageBox::DialogTypeError, "第一行\n第二行"};
    const host::MessageRecord question{"标准件BOM", NXOpen::NXMessageBox::DialogTypeQuestion, "是否?"};
    const std::string tsv = Print(Format::Tsv, [&](Printer& p) { p.Messages({error, question}); });
    EXPECT_EQ(u8"message\tBlock Styler\terror\t第一行\\n第二行\nmessage\t标准件BOM\tquestion\t是否?\n", tsv)
        << "message, title, type, text";
    const std::string text = Print(Format::Text, [&](Printer& p) { p.Message(error); });
    EXPECT_EQ(u8"+-- error: Block Styler\n| 第一行\n| 第二行\n+--\n", text) << "a box, line by line";
    EXPECT_EQ("information",
              std::string(runner::MessageTypeName(NXOpen::NXMessageBox::DialogTypeInformation)))
        << "the information type";
    EXPECT_EQ("warning", std::string(runner::MessageTypeName(NXOpen::NXMessageBox::DialogTypeWarning)))
        << "the warning type";
}

TEST(RunnerOutput, TsvPartListsAttributesLayersAndBodies) {
    const std::string out = Print(Format::Tsv, [](Printer& p) { p.Part(SamplePart()); });
    const std::string expected =
        u8"part\tA100\n"
        u8"attribute\tpart\t订单编号\tstring\tSO-1\n"
        u8"attribute\tpart\t版本\tinteger\t3\n"
        u8"layer\t1\twork\n"
        u8"layer\t30\tinvisible\n"
        u8"body\t1001\t10\t6\tblanked\thighlighted\n"
        u8"attribute\t1001\t名称\tstring\t内六角\\t螺钉\n";
    EXPECT_EQ(expected, out) << "part, its attributes, layers, then each body and its attributes";
}

TEST(RunnerOutput, RefusalsAndEventsHaveTheirOwnLines) {
    const std::string out = PrintEvents(Format::Tsv);
    const std::string expected =
        u8"edit-refused\t1.2\t3\t文本\n"
        u8"menu-refused\t2\t5\tdisabled\n"
        u8"open\tD:\\out\\测试.xls\n"
        u8"open\tD:\\out\\测试-1.xls\n"
        u8"selection\t选择\t选择标准件\n"
        u8"selection\t选择\t选择标准件\n";
    EXPECT_EQ(expected, out) << "one line per event, its kind first";
}

TEST(RunnerOutput, TextPartIsAnIndentedList) {
    const std::string out = Print(Format::Text, [](Printer& p) { p.Part(SamplePart()); });
    const std::string expected =
        u8"Part A100\n"
        u8"  订单编号 = SO-1\n"
        u8"  版本 = 3 (integer)\n"
        u8"  layer 1: work\n"
        u8"  layer 30: invisible\n"
        u8"  body 1001: layer 10, colour 6, blanked, highlighted\n"
        u8"    名称 = 内六角\t螺钉\n";
    EXPECT_EQ(expected, out) << "attributes under their owner, a type other than string named, nothing escaped";
}

TEST(RunnerOutput, TextEventsAreSentences) {
    const std::string expected =
        u8"The cell of row 1.2, column 3 did not take the text.\n"
        u8"Menu item 5 on row 2 is disabled: nothing runs.\n"
        u8"Opened with its program: D:\\out\\测试.xls\n"
        u8"Would open with its program (--open opens it): D:\\out\\测试-1.xls\n"
        u8"Selection dialog: 选择: 选择标准件\n"
        u8"Selection dialog: 选择: 选择标准件 (no answer-selection was queued: cancelled)\n";
    EXPECT_EQ(expected, PrintEvents(Format::Text)) << "one sentence per event";
}

TEST(RunnerOutput, TextSaysWhenThereIsNothingToShow) {
    runner::TreeView empty = SampleTree();
    empty.rows.clear();
    const std::string tree = Print(Format::Text, [&](Printer& p) { p.Tree(empty); });
    EXPECT_EQ(u8"名称  数量  颜色  实体\n----------------------\n(no rows)\n", tree)
        << "the header, then a line saying the tree has no rows";
    EXPECT_EQ("(no messages)\n", Print(Format::Text, [](Printer& p) { p.Messages({}); }))
        << "show messages before any message box";
    EXPECT_EQ("", Print(Format::Tsv, [](Printer& p) {
                  p.Tree(runner::TreeView());
                  p.Messages({});
              }))
        << "tsv prints no line for an empty tree or no messages";
}
