// The tests' way of starting the readers: a shell command with its input, outputs and exit status
// (on Windows started through sh under Wine, with paths as Wine's Linux names for them).

#include "XlsTestSupport.h"

#include <gtest/gtest.h>

using namespace xlstest;

TEST(CommandRun, GivesTheCommandsExitStatusAndBothOutputs)
{
    CommandResult r = run("printf 'out:'; cat; printf err >&2; exit 3", u8"输入\n");
    EXPECT_EQ(3, r.status);
    EXPECT_EQ(u8"out:输入\n", r.out);
    EXPECT_EQ("err", r.err);
    EXPECT_EQ(0, run("true").status);
}

TEST(CommandRun, AQuotedPathNamesTheFileForTheCommand)
{
    TempDir dir;
    writeBytes(dir / u8"模具 it's.txt", Bytes{'o', 'k'});
    CommandResult r = run("cat " + quote(dir / u8"模具 it's.txt"));
    EXPECT_EQ(0, r.status) << r.err;
    EXPECT_EQ("ok", r.out);
}
