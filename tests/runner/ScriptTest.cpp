// The runner's script commands.
#include <gtest/gtest.h>

#include "Script.hpp"

using runner::Command;
using runner::CommandKind;
using runner::ParseLine;
using runner::ParseScript;
using runner::ScriptError;

namespace {

Command One(const std::string& line) {
    const std::optional<Command> c = ParseLine(line, 1);
    if (!c) throw std::logic_error("no command in: " + line);
    return *c;
}

std::string ErrorOf(const std::string& script) {
    try {
        ParseScript(script, "s.txt");
    } catch (const ScriptError& e) {
        return e.what();
    }
    return "(no error)";
}

}  // namespace

TEST(RunnerScript, SetKeepsTheRestOfTheLineAsText) {
    const Command c = One(u8"set string03 SO-1 第二 段 ");
    EXPECT_EQ(CommandKind::Set, c.kind) << "set";
    EXPECT_EQ("string03", c.blockId) << "the block id is the first word";
    EXPECT_EQ(u8"SO-1 第二 段 ", c.text) << "the text runs to the end of the line, blanks included";
}

TEST(RunnerScript, SetWithoutTextSetsAnEmptyText) {
    EXPECT_EQ("", One("set string03").text) << "no text is the empty text";
    EXPECT_EQ(" x", One("set string03  x").text) << "only the one blank after the block id separates";
}

TEST(RunnerScript, PressFolderAndClose) {
    const Command press = One("press button01");
    EXPECT_EQ(CommandKind::Press, press.kind) << "press";
    EXPECT_EQ("button01", press.blockId) << "press names its button";
    const Command folder = One(u8"folder D:\\出图 目录");
    EXPECT_EQ(CommandKind::Folder, folder.kind) << "folder";
    EXPECT_EQ(u8"D:\\出图 目录", folder.text) << "the path runs to the end of the line; a backslash is a backslash";
    EXPECT_EQ(CommandKind::Close, One("close").kind) << "close";
    EXPECT_THROW(One("close now"), ScriptError) << "close takes nothing";
    EXPECT_THROW(One("press"), ScriptError) << "press needs a block";
}

TEST(RunnerScript, SelectBodiesTakesTags) {
    const Command c = One("select-bodies 1001 1002");
    EXPECT_EQ(CommandKind::SelectBodies, c.kind) << "select-bodies";
    EXPECT_EQ((std::vector<unsigned int>{1001, 1002}), c.tags) << "the tags in order";
    EXPECT_TRUE(One("select-bodies").tags.empty()) << "no tags clears the selection";
    EXPECT_THROW(One("select-bodies 10x"), ScriptError) << "a tag is a number";
    EXPECT_THROW(One("select-bodies 0"), ScriptError) << "tag 0 is NULL_TAG, no body";
}

TEST(RunnerScript, AnswerSelection) {
    const Command ok = One("answer-selection ok 7 8");
    EXPECT_EQ(CommandKind::AnswerSelection, ok.kind) << "answer-selection";
    EXPECT_EQ(runner::SelectionAnswer::Ok, ok.answer) << "ok";
    EXPECT_EQ((std::vector<unsigned int>{7, 8}), ok.tags) << "ok with its objects";
    EXPECT_EQ(runner::SelectionAnswer::Cancel, One("answer-selection cancel").answer) << "cancel";
    EXPECT_EQ(runner::SelectionAnswer::Back, One("answer-selection back").answer) << "back";
    EXPECT_THROW(One("answer-selection cancel 7"), ScriptError) << "cancel selects nothing";
    EXPECT_THROW(One("answer-selection maybe"), ScriptError) << "only ok, cancel or back";
}

TEST(RunnerScript, ClickEditAndMenuAddressRows) {
    const Command click = One("click 2");
    EXPECT_EQ(CommandKind::Click, click.kind) << "click";
    EXPECT_EQ(2, click.row.top) << "row N is the N-th top-level node";
    EXPECT_EQ(0, click.row.child) << "no child";
    EXPECT_EQ(0, click.column) << "the column defaults to 0";
    EXPECT_EQ(4, One("click 2 4").column) << "an explicit column";

    const Command edit = One(u8"edit 1.3 5 不锈钢 304");
    EXPECT_EQ(CommandKind::Edit, edit.kind) << "edit";
    EXPECT_EQ(1, edit.row.top) << "row N.M: node N";
    EXPECT_EQ(3, edit.row.child) << "row N.M: its M-th child";
    EXPECT_EQ(5, edit.column) << "the column";
    EXPECT_EQ(u8"不锈钢 304", edit.text) << "the text runs to the end of the line";

    const Command menu = One("menu 1.1 2");
    EXPECT_EQ(CommandKind::Menu, menu.kind) << "menu";
    EXPECT_EQ(2, menu.menuItem.value_or(-1)) << "the menu item id";
    EXPECT_FALSE(One("menu 1").menuItem.has_value()) << "without an item the menu is listed";
    EXPECT_THROW(One("menu 1 x"), ScriptError) << "an item id is a number";
    EXPECT_THROW(One("menu 1 2 3"), ScriptError) << "one item at most";
    EXPECT_THROW(One("click 1 x"), ScriptError) << "a column is a number";
}

TEST(RunnerScript, RowsCountFromOne) {
    EXPECT_TRUE(runner::ParseRow("1").has_value()) << "1 is the first row";
    EXPECT_TRUE(runner::ParseRow("12.34").has_value()) << "N.M";
    for (const char* bad : {"0", "1.0", "3.", ".2", "a", "-1", "1.2.3", "", "+1"}) {
        EXPECT_FALSE(runner::ParseRow(bad).has_value()) << "\"" << bad << "\" is not a row";
    }
    EXPECT_EQ("3.2", runner::RowText(*runner::ParseRow("3.2"))) << "a row prints as written";
}

TEST(RunnerScript, ShowTakesWhatToShow) {
    EXPECT_EQ(runner::ShowWhat::Tree, One("show tree").show) << "show tree";
    EXPECT_EQ(runner::ShowWhat::Blocks, One("show blocks").show) << "show blocks";
    EXPECT_EQ(runner::ShowWhat::Messages, One("show messages").show) << "show messages";
    EXPECT_EQ(runner::ShowWhat::Part, One("show part").show) << "show part";
    EXPECT_EQ(runner::ShowWhat::Selection, One("show selection").show) << "show selection";
    EXPECT_THROW(One("show everything"), ScriptError) << "nothing else";
}

TEST(RunnerScript, CommentsAndBlankLinesAreSkippedButCounted) {
    const std::vector<Command> commands = ParseScript("# a comment\n\n   \nshow tree\r\n  # indented comment\nclose", "s.txt");
    ASSERT_EQ(2u, commands.size()) << "two commands";
    EXPECT_EQ(4, commands[0].line) << "line numbers count comment and blank lines";
    EXPECT_EQ("show tree", commands[0].source) << "a carriage return before the line end is dropped";
    EXPECT_EQ(6, commands[1].line) << "the last line needs no line end";
}

TEST(RunnerScript, AUtf8ByteOrderMarkAtTheHeadIsSkipped) {
    const std::vector<Command> commands = ParseScript("\xEF\xBB\xBFshow tree\nclose\n", "s.txt");
    ASSERT_EQ(2u, commands.size()) << "the mark is no command of its own";
    EXPECT_EQ("show tree", commands[0].source) << "nor part of the first";
    EXPECT_EQ(1, commands[0].line) << "and no line";
    EXPECT_EQ("s.txt:2: unknown command \"\xEF\xBB\xBF" "close\" (help lists the commands)",
              ErrorOf("show tree\n\xEF\xBB\xBF" "close\n"))
        << "only at the head of the script";
}

TEST(RunnerScript, ABadLineIsNamedByNumber) {
    EXPECT_EQ("s.txt:2: unknown command \"jump\" (help lists the commands)", ErrorOf("show tree\njump 3\n"))
        << "an unknown command";
    EXPECT_EQ("s.txt:1: \"9.x\" is not a row (N or N.M, counted from 1)", ErrorOf("click 9.x")) << "a bad row";
}
