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

TEST(RunnerInteractive, PromptsAndRedrawsTheDialogAfterEachCommand) {
    const Session s = Type("press button03\nset string03 A\n");
    EXPECT_EQ(0, s.status) << "the end of input closes the dialog: a normal run";
    EXPECT_EQ(3u, Count(s.out, "vornadel> ")) << "a prompt before each command and before the end of input";
    EXPECT_EQ(3u, Count(s.out, "tree_control0\tTree")) << "the dialog drawn when it appears and after each command";
    EXPECT_EQ(1u, Count(s.out, u8"string03\tStringBlock\t订单编号\tA\t")) << "the last drawing shows the new text";
}

TEST(RunnerInteractive, MistakesAreReportedAndTheSessionGoesOn) {
    const Session s = Type("jump\nclick 9\npress button03\nclose\n");
    EXPECT_EQ(0, s.status) << "mistakes at the terminal do not fail the run";
    EXPECT_NE(std::string::npos, s.err.find("unknown command \"jump\"")) << "a line that does not parse";
    EXPECT_NE(std::string::npos, s.err.find("input line 2: the tree has no row 9")) << "a command that fails";
    EXPECT_NE(std::string::npos, s.out.find(runnertest::Event("update_cb button03"))) << "later commands still run";
}
