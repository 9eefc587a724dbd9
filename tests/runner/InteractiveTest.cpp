// vornadel-host at a terminal: runner::Run with interactive input, in this process.
#include <gtest/gtest.h>

#include <sstream>

#include "Runner.hpp"
#include "RunHost.h"

namespace {

struct Session {
    int status;
    std::string out;
    std::string err;
};

Session Type(const std::string& typed) {
    runner::Options options;
    options.part = runnertest::FixturePart("bracket.part.json");
    options.plugin = runnertest::TestPlugin();
    options.localAppData = runnertest::Scratch("interactive").string();
    options.configRoot = (runnertest::TestUserFolder() / "vornadel" / "VDConfig").string();
    options.format = runner::Format::Tsv;
    runner::Installation installation{runnertest::SourceFolder().string(), runnertest::BinaryFolder().string()};
    std::istringstream in(typed);
    std::ostringstream out;
    std::ostringstream err;
    const int status = runner::Run(options, installation, in, true, out, err);
    return Session{status, out.str(), err.str()};
}

size_t Count(const std::string& text, const std::string& part) {
    size_t n = 0;
    for (size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) ++n;
    return n;
}

}  // namespace

TEST(RunnerInteractive, DrawsTheDialogOnceAndThenSaysWhatChanged) {
    const Session s = Type("press button03\nset string03 A\nshow blocks\nclick 1\n");
    EXPECT_EQ(0, s.status) << "the end of input closes the dialog: a normal run";
    EXPECT_EQ(5u, Count(s.out, "vornadel> ")) << "a prompt before each command and before the end of input";
    EXPECT_EQ(2u, Count(s.out, "tree_control0\tTree")) << "the dialog drawn when it appears, then only on request";
    EXPECT_EQ(1u, Count(s.out, u8"string03\tStringBlock\t订单编号\tA\t")) << "show blocks shows the new text";
    EXPECT_EQ(1u, Count(s.out, "(the blocks changed: show blocks prints them)\n")) << "after set, not after show";
    EXPECT_EQ(1u, Count(s.out, "\t1001\n")) << "the tree: drawn when the dialog appears, never again unasked";
}

TEST(RunnerInteractive, ShowPrintsOnceAndSaysNothingMore) {
    const Session s = Type("show tree\nshow tree\n");
    EXPECT_EQ(1u, Count(s.out, "tree_control0\tTree")) << "the blocks: drawn when the dialog appears";
    EXPECT_EQ(3u, Count(s.out, "\t-\t1001\n")) << "the tree: drawn when the dialog appears, then once per show";
    EXPECT_EQ(0u, Count(s.out, "changed")) << "nothing changed";
}

TEST(RunnerInteractive, MistakesAreReportedAndTheSessionGoesOn) {
    const Session s = Type("jump\nclick 9\npress button03\n");
    EXPECT_EQ(1, s.status) << "the session goes on, but the run reports that commands failed";
    EXPECT_NE(std::string::npos, s.err.find("stdin:1: unknown command \"jump\"")) << "a line that does not parse";
    EXPECT_NE(std::string::npos, s.err.find("stdin:2: the tree has no row 9")) << "a command that fails, in the script's form";
    EXPECT_NE(std::string::npos, s.out.find(runnertest::Event("update_cb button03"))) << "later commands still run";
}

TEST(RunnerInteractive, CloseEndsTheSession) {
    const Session s = Type("close\nshow messages\n");
    EXPECT_EQ(0, s.status);
    EXPECT_EQ(1u, Count(s.out, "vornadel> ")) << "no prompt after close";
    EXPECT_EQ(1u, Count(s.out, runnertest::Event("ufusr") + "\n")) << "show messages after close never ran";
}

TEST(RunnerInteractive, HelpListsTheCommands) {
    for (const char* typed : {"help\n", "?\n"}) {
        const Session s = Type(typed);
        for (const char* command : {"set <blockId>", "press <blockId>", "folder <path>", "select-bodies", "answer-selection",
                                    "click <row>", "edit <row>", "menu <row>", "show tree|blocks|messages|part|selection", "close", "help,"})
            EXPECT_NE(std::string::npos, s.out.find("  " + std::string(command) + " ")) << typed << command;
        EXPECT_EQ("", s.err);
    }
}

// help names what the commands take in the dialog shown: block ids, column numbers as click and
// edit take them (the test plug-in's column 3 is hidden), the menu items with their ids.
TEST(RunnerInteractive, HelpListsTheBlocksColumnsAndMenuItemsOfTheDialog) {
    const Session s = Type("help\n");
    EXPECT_EQ(0, s.status) << s.err;
    EXPECT_EQ(1u, Count(s.out, "  click <row> [<column>]")) << "the commands first";
    EXPECT_EQ(1u, Count(s.out, u8"  button01                  Button            导出BOM\n")) << s.out;
    EXPECT_EQ(1u, Count(s.out, u8"Tree columns (click and edit take the number):\n  0   名称\n  1   数量\n  2   状态\n"
                               u8"  3   ID  (hidden: not editable)\n  4   备注\n"))
        << s.out;
    EXPECT_EQ(1u, Count(s.out, u8"\n  1   添加到组\n")) << "the menu's items with their ids: " << s.out;
    EXPECT_EQ(1u, Count(s.out, "OnMenuCallback")) << "the menu comes from the plug-in's handler, run once";
}
