// vornadel-host end to end: the runner as a separate process, running the test plug-in
// (tests/testplugin) on the fixture part tests/runner/parts/bracket.part.json.
#include <gtest/gtest.h>

#include <algorithm>
#include <clocale>
#include <cstdlib>
#include <cwchar>
#include <map>

#include "Output.hpp"
#include "RunHost.h"

using runnertest::Event;
using runnertest::FixturePart;
using runnertest::HostRun;
using runnertest::Lines;
using runnertest::RunHost;
using runnertest::RunTestPlugin;

namespace {

// What every run of the test plug-in prints before the first command, and after the last.
const std::vector<std::string> kStart = {Event("ufusr"), Event("initialize_cb"), Event("dialogShown_cb")};
const std::vector<std::string> kEnd = {Event("ufusr_ask_unload"), Event("ufusr_cleanup"), Event("unloaded")};

std::vector<std::string> Sequence(std::vector<std::string> middle) {
    std::vector<std::string> all = kStart;
    all.insert(all.end(), middle.begin(), middle.end());
    all.insert(all.end(), kEnd.begin(), kEnd.end());
    return all;
}

bool Contains(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
}

bool HasLine(const HostRun& run, const std::string& line) {
    const std::vector<std::string> lines = Lines(run.out);
    return std::find(lines.begin(), lines.end(), line) != lines.end();
}

}  // namespace

// ---- command line ------------------------------------------------------------------------------

TEST(RunnerCommandLine, HelpPrintsTheUsage) {
    const HostRun run = RunHost({"--help"});
    EXPECT_EQ(0, run.status) << "--help is a normal run";
    EXPECT_TRUE(Contains(run.out, "usage: vornadel-host")) << "the usage text goes to standard output";
    EXPECT_TRUE(Contains(RunHost({"-h"}).out, "Commands:\n  set <blockId> <text>")) << "-h lists the commands too";
}

TEST(RunnerCommandLine, UnknownOptionExitsWithStatusTwoAndTheUsage) {
    const HostRun run = RunHost({"run", "--frobnicate"});
    EXPECT_EQ(2, run.status) << "bad arguments exit with 2";
    EXPECT_TRUE(Contains(run.err, "unknown option --frobnicate")) << "the message names the option";
    EXPECT_TRUE(Contains(run.err, "usage: vornadel-host")) << "the usage follows the message";
    EXPECT_EQ("", run.out) << "nothing ran";
}

TEST(RunnerCommandLine, BytesThatAreNotUtf8AreShownEscaped) {
    const HostRun command = RunTestPlugin({"-e", "jump\xFF\xB1\xEA"});
    EXPECT_TRUE(Contains(command.err, "-e:1: unknown command \"jump\\xFF\\xB1\\xEA\"")) << command.err;
    const HostRun part = RunHost({"gone\xFF.part.json", "-e", "close"});
    EXPECT_TRUE(Contains(part.err, "gone\\xFF.part.json: cannot be read")) << part.err;
    const HostRun option = RunHost({"--\xFF"});
    EXPECT_TRUE(Contains(option.err, "unknown option --\\xFF")) << option.err;
}

TEST(RunnerCommandLine, BadTimeIsRefusedBeforeAnythingRuns) {
    const HostRun run = RunTestPlugin({"--time", "2024-02-30T00:00:00.000", "-e", "close"});
    EXPECT_EQ(2, run.status) << "a date that does not exist is a bad argument";
    EXPECT_TRUE(Contains(run.err, "--time")) << "the message names the option";
    EXPECT_EQ("", run.out) << "the plug-in never ran";
}

TEST(RunnerCommandLine, ScriptThatDoesNotParseRunsNothing) {
    const std::filesystem::path dir = runnertest::Scratch("bad-script");
    runnertest::WriteText(dir / "bad.txt", "show tree\njump 3\nclose\n");
    const HostRun run = RunTestPlugin({"--script", (dir / "bad.txt").string()});
    EXPECT_EQ(2, run.status) << "a script that does not parse exits with 2";
    EXPECT_TRUE(Contains(run.err, "bad.txt:2: unknown command \"jump\"")) << "the file and line are named";
    EXPECT_EQ("", run.out) << "not even ufusr ran";
}

TEST(RunnerCommandLine, MissingScriptIsAUsageError) {
    const HostRun run = RunTestPlugin({"--script", "/nonexistent/script.txt"});
    EXPECT_EQ(2, run.status) << "a script that cannot be read exits with 2";
    EXPECT_TRUE(Contains(run.err, "cannot read the script /nonexistent/script.txt")) << "the script is named";
}

TEST(RunnerCommandLine, BadCommandInDashEIsNamedByItsNumber) {
    const HostRun run = RunTestPlugin({"-e", "show tree", "-e", "click x"});
    EXPECT_EQ(2, run.status) << "-e commands parse before the run";
    EXPECT_TRUE(Contains(run.err, "-e:2: \"x\" is not a row")) << "the second -e is named";
}

// ---- part files --------------------------------------------------------------------------------

TEST(RunnerPartFile, MissingPartFileExitsWithTheHostsMessage) {
    const HostRun run = RunTestPlugin({"-e", "close"}, {}, "/nonexistent/gone.part.json");
    EXPECT_EQ(1, run.status) << "a part file that cannot be loaded exits with 1";
    EXPECT_TRUE(Contains(run.err, "gone.part.json")) << "the message names the file";
    EXPECT_EQ("", run.out) << "the plug-in never ran";
}

TEST(RunnerPartFile, MalformedPartFileExitsWithTheHostsMessage) {
    const HostRun run = RunTestPlugin({"-e", "close"}, {}, FixturePart("broken.part.json"));
    EXPECT_EQ(1, run.status) << "malformed JSON exits with 1";
    EXPECT_TRUE(Contains(run.err, "broken.part.json")) << "the message names the file";
    EXPECT_EQ("", run.out) << "the plug-in never ran";
}

TEST(RunnerPartFile, PartFilesThatOnceEndedTheRunnerAreRefusedWithAMessage) {
    // A number out of range ended the runner with an uncaught exception (134), deep nesting with
    // a stack overflow (139); a NUL reached the plug-in as the end of the text.
    const std::filesystem::path dir = runnertest::Scratch("bad-parts");
    const std::string head = u8R"({"format": "vornadel-part/1", "leaf": )";
    const std::vector<std::pair<std::string, std::string>> cases = {
        {head + u8R"("A", "x": 1e999})", "number overflow parsing '1e999'"},
        {head + u8R"("A", "zz": )" + std::string(100000, '[') + std::string(100000, ']') + "}",
         "nested deeper than 100 levels"},
        {head + u8R"("T\u0000X"})", "leaf: text holds a NUL character"},
        // A leaf that is no file name made the export write outside the output folder.
        {head + u8R"("..\\..\\evil"})", u8R"(leaf: "..\\..\\evil" is not a file name in NX: it holds '\')"},
    };
    for (const auto& [json, message] : cases) {
        runnertest::WriteText(dir / "bad.part.json", json);
        const HostRun run = RunTestPlugin({"-e", "close"}, {}, (dir / "bad.part.json").string());
        EXPECT_EQ(1, run.status) << message;
        EXPECT_TRUE(Contains(run.err, "bad.part.json:") && Contains(run.err, message)) << run.err;
        EXPECT_EQ("", run.out) << "the plug-in never ran";
    }
}

// ---- the plug-in's life ------------------------------------------------------------------------

TEST(RunnerPlugin, UnloadsRightAfterTheRunWhenAsked) {
    const HostRun run = RunTestPlugin({"-e", "close"});
    EXPECT_EQ(0, run.status) << "a normal run";
    EXPECT_EQ(Sequence({}), Lines(run.out))
        << "ufusr, the initialize and dialog-shown handlers, then NX asks to unload, calls "
           "ufusr_cleanup and unloads the library (its statics go)";
}

TEST(RunnerPlugin, StaysLoadedUntilTheEndWhenItAsksTo) {
    const HostRun run = RunTestPlugin({"-e", "close", "-e", "show part"}, {"VORNADEL_TESTPLUGIN=stay-loaded"});
    EXPECT_EQ(0, run.status) << "a normal run";
    const std::vector<std::string> lines = Lines(run.out);
    const auto asked = std::find(lines.begin(), lines.end(), Event("ufusr_ask_unload"));
    const auto part = std::find(lines.begin(), lines.end(), "part\tbracket");
    const auto cleanup = std::find(lines.begin(), lines.end(), Event("ufusr_cleanup"));
    EXPECT_TRUE(asked < part && part < cleanup)
        << "with UF_UNLOAD_UG_TERMINATE the commands after close run before the library is unloaded";
    EXPECT_EQ(Event("unloaded"), lines.back()) << "it is unloaded at the end of the run";
}

TEST(RunnerPlugin, MissingLibraryIsAClearError) {
    const HostRun run = RunHost({"run", FixturePart("bracket.part.json"), "--plugin", "/nonexistent/libX.so"});
    EXPECT_EQ(1, run.status) << "a plug-in that cannot be loaded exits with 1";
    EXPECT_TRUE(Contains(run.err, "cannot load the plug-in /nonexistent/libX.so")) << "the library is named";
}

TEST(RunnerPlugin, LibraryWithoutUfusrIsAClearError) {
    const std::string library = (runnertest::BinaryFolder() / "libnxhost.so").string();
    const HostRun run = RunHost({"run", FixturePart("bracket.part.json"), "--plugin", library});
    EXPECT_EQ(1, run.status) << "a library without ufusr exits with 1";
    EXPECT_TRUE(Contains(run.err, "has no entry point ufusr")) << "the missing entry point is named";
}

TEST(RunnerPlugin, StdExceptionEscapingUfusrIsReported) {
    const HostRun run = RunTestPlugin({}, {"VORNADEL_TESTPLUGIN=throw-std"});
    EXPECT_EQ(1, run.status) << "an exception out of ufusr fails the run";
    EXPECT_TRUE(Contains(run.err, u8"an exception escaped ufusr: 测试插件失败")) << "its message, in UTF-8";
    EXPECT_EQ(Event("unloaded"), Lines(run.out).back()) << "the library is still unloaded";
}

TEST(RunnerPlugin, OtherExceptionEscapingUfusrIsReported) {
    const HostRun run = RunTestPlugin({}, {"VORNADEL_TESTPLUGIN=throw-other"});
    EXPECT_EQ(1, run.status) << "an exception out of ufusr fails the run";
    EXPECT_TRUE(Contains(run.err, "an exception that is not a std::exception escaped ufusr")) << "said so";
}

TEST(RunnerPlugin, HandlerExceptionEndsTheDialogAndReachesThePlugin) {
    const HostRun run = RunTestPlugin({"-e", "press button02", "-e", "show tree"});
    EXPECT_TRUE(HasLine(run, u8"message\tBlock Styler\terror\t按钮出错"))
        << "the update handler's exception ends Show and the plug-in's ufusr catches it";
    EXPECT_EQ(1, run.status) << "the script's next dialog command fails";
    EXPECT_TRUE(Contains(run.err, "-e:2: no dialog is shown")) << "the dialog is gone";
}

TEST(RunnerPlugin, PluginWithoutDialogStillRunsTheCommands) {
    const HostRun run = RunTestPlugin({"-e", "show messages"}, {"VORNADEL_TESTPLUGIN=no-dialog"});
    EXPECT_EQ(0, run.status) << "show messages needs no dialog";
    const std::vector<std::string> once = {Event("ufusr"), Event("ufusr_ask_unload"), Event("ufusr_cleanup"),
                                           Event("unloaded")};
    std::vector<std::string> twice = once;
    twice.insert(twice.end(), once.begin(), once.end());
    EXPECT_EQ(twice, Lines(run.out))
        << "the commands run after the unload; show messages repeats every message box so far";
}

// ---- commands ----------------------------------------------------------------------------------

TEST(RunnerCommands, SetTypesIntoAStringBlock) {
    const HostRun run = RunTestPlugin({"-e", u8"set string03 SO-9 第二批", "-e", "show blocks", "-e", "close"});
    EXPECT_EQ(0, run.status) << "a normal run";
    EXPECT_TRUE(HasLine(run, Event(u8"update_cb string03 SO-9 第二批"))) << "the update handler runs with the block";
    EXPECT_TRUE(HasLine(run, u8"string03\tStringBlock\t订单编号\tSO-9 第二批\t")) << "the block holds the text";
}

TEST(RunnerCommands, SetOnAButtonFailsAndStopsTheScript) {
    const HostRun run = RunTestPlugin({"-e", "set button01 x", "-e", "show part"});
    EXPECT_EQ(1, run.status) << "a command the host refuses fails the run";
    EXPECT_TRUE(Contains(run.err, "-e:1: button01 is a Button, not a StringBlock")) << "the host's reason";
    EXPECT_EQ(Sequence({}), Lines(run.out)) << "nothing more runs; the dialog closes and the plug-in unloads";
}

TEST(RunnerCommands, PressRunsTheUpdateHandler) {
    const HostRun run = RunTestPlugin({"-e", "press button03", "-e", "close"});
    EXPECT_TRUE(HasLine(run, Event("update_cb button03"))) << "the update handler runs with the button";
}

TEST(RunnerCommands, FolderPicksTheOutputFolder) {
    const HostRun run = RunTestPlugin({"-e", u8"folder D:\\出图 目录", "-e", "show blocks", "-e", "close"});
    EXPECT_TRUE(HasLine(run, Event(u8"update_cb nativeFolderBrowser0 D:\\出图 目录"))) << "the handler gets the path";
    EXPECT_TRUE(HasLine(run, u8"nativeFolderBrowser0\tFolderSelection\t输出文件夹\tD:\\出图 目录\t"))
        << "the folder block shows the path, backslashes as they are";
}

TEST(RunnerCommands, SelectBodiesUsesTheBodyCollector) {
    const HostRun run = RunTestPlugin({"-e", "select-bodies 1002 1001", "-e", "close"});
    EXPECT_TRUE(HasLine(run, Event("update_cb bodySelect0 1002 1001"))) << "the collector holds the bodies in order";
}

TEST(RunnerCommands, SelectBodiesWithoutTagsClearsTheCollector) {
    const HostRun run = RunTestPlugin({"-e", "select-bodies 1001", "-e", "select-bodies", "-e", "close"});
    EXPECT_TRUE(HasLine(run, Event("update_cb bodySelect0 1001"))) << "first the collector holds body 1001";
    EXPECT_TRUE(HasLine(run, Event("update_cb bodySelect0"))) << "then it holds nothing";
}

TEST(RunnerCommands, SelectBodiesOfAnUnknownTagFails) {
    const HostRun run = RunTestPlugin({"-e", "select-bodies 999"});
    EXPECT_EQ(1, run.status) << "a body the part lacks";
    EXPECT_TRUE(Contains(run.err, "-e:1: no body of the work part has tag 999")) << "the host's reason";
}

TEST(RunnerCommands, AnswerSelectionOkGivesTheObjects) {
    const HostRun run = RunTestPlugin({"-e", "answer-selection ok 1002", "-e", "press button01", "-e", "close"});
    EXPECT_TRUE(HasLine(run, u8"selection\t选择\t选择标准件")) << "the selection dialog is printed as it occurs";
    EXPECT_TRUE(HasLine(run, Event("selection 3 1002"))) << "ResponseOk (3) with the queued body";
}

TEST(RunnerCommands, AnswerSelectionCancelAndBack) {
    const HostRun run = RunTestPlugin({"-e", "answer-selection cancel", "-e", "answer-selection back", "-e",
                                       "press button01", "-e", "press button01", "-e", "press button01", "-e", "close"});
    const std::vector<std::string> lines = Lines(run.out);
    std::vector<std::string> answers;
    for (const std::string& line : lines) {
        if (line.rfind(Event("selection "), 0) == 0) answers.push_back(line.substr(Event("").size()));
    }
    EXPECT_EQ((std::vector<std::string>{"selection 2", "selection 1", "selection 2"}), answers)
        << "answers are used in order: ResponseCancel (2), ResponseBack (1), then none left: cancelled";
}

TEST(RunnerCommands, ClickSelectsTheRowAndDeselectsTheOther) {
    const HostRun run = RunTestPlugin({"-e", "click 1.2", "-e", "click 2 1", "-e", "close"});
    EXPECT_EQ(Sequence({Event(u8"OnPreSelectCallback 螺钉-2 0 true"), Event(u8"OnSelectCallback 螺钉-2 0 true"),
                        Event(u8"OnSelectCallback 螺钉-2 1 false"), Event(u8"OnPreSelectCallback 弹簧 1 true"),
                        Event(u8"OnSelectCallback 弹簧 1 true")}),
              Lines(run.out))
        << "row 1.2 is the second child of the first row; a click on another row deselects it first";
}

TEST(RunnerCommands, MissingRowFails) {
    const HostRun run = RunTestPlugin({"-e", "click 1.5"});
    EXPECT_EQ(1, run.status) << "a row the tree lacks";
    EXPECT_TRUE(Contains(run.err, "-e:1: the tree has no row 1.5")) << "the row is named";
}

TEST(RunnerCommands, EditTypesFreeText) {
    const HostRun run = RunTestPlugin({"-e", u8"edit 1.1 4 左侧 M6", "-e", "show tree", "-e", "close"});
    EXPECT_TRUE(HasLine(run, Event(u8"OnEndLabelEditCallback 螺钉-1 4 左侧 M6")))
        << "the end-label-edit handler gets the text (as UTF-8 bytes, which the plug-in converts)";
    EXPECT_TRUE(HasLine(run, u8"1\t螺钉-1\t\t\t1001\t左侧 M6\t\t\t\t\t\t\t\t\t-\t1001")) << "the cell keeps the text";
}

TEST(RunnerCommands, EditChoosesAnEditOption) {
    const HostRun run = RunTestPlugin({"-e", u8"edit 1 1 乙", "-e", "close"});
    EXPECT_TRUE(HasLine(run, Event(u8"OnEditOptionSelectedCallback 螺钉 1 1 乙 1")))
        << "the second option of the combo box (ControlTypeComboBox = 1) is chosen";
}

TEST(RunnerCommands, RejectedTextRestoresTheCell) {
    const HostRun run = RunTestPlugin({"-e", u8"edit 2 4 拒绝", "-e", "show tree", "-e", "close"});
    EXPECT_TRUE(HasLine(run, Event(u8"OnEndLabelEditCallback 弹簧 4 拒绝"))) << "the handler sees the text";
    EXPECT_TRUE(HasLine(run, u8"edit-refused\t2\t4\t拒绝")) << "and rejects it: the cell does not take the text";
    EXPECT_TRUE(HasLine(run, u8"0\t弹簧\t1\t\t\t\t\t\t\t\t\t\t\t\t186\t-")) << "it keeps the text it had";
}

TEST(RunnerCommands, RefusedEditsAreReported) {
    const HostRun run = RunTestPlugin({"-e", "edit 1 0 x", "-e", "edit 1.1 2 maybe", "-e", "close"});
    EXPECT_EQ(0, run.status) << "a refused edit is what the plug-in's tree does, not a failure";
    EXPECT_TRUE(HasLine(run, "edit-refused\t1\t0\tx")) << "the begin-label-edit handler refuses column 0";
    EXPECT_TRUE(HasLine(run, "edit-refused\t1.1\t2\tmaybe")) << "a list box takes only its options";
}

TEST(RunnerCommands, MenuChoosesAnItem) {
    const HostRun run = RunTestPlugin({"-e", "menu 1.2 1", "-e", "close"});
    EXPECT_EQ(Sequence({Event(u8"OnMenuCallback 螺钉-2 0"), Event(u8"OnMenuSelectionCallback 螺钉-2 1")}),
              Lines(run.out))
        << "a right click on column 0 builds the menu, then the item is chosen";
}

TEST(RunnerCommands, MenuItemsThatCannotBeChosenAreReported) {
    const HostRun run = RunTestPlugin({"-e", "menu 1 2", "-e", "menu 1 3", "-e", "menu 1 9", "-e", "close"});
    EXPECT_EQ(0, run.status) << "a menu item that cannot be chosen is not a failure";
    EXPECT_TRUE(HasLine(run, "menu-refused\t1\t2\tdisabled")) << "a disabled item";
    EXPECT_TRUE(HasLine(run, "menu-refused\t1\t3\thidden")) << "a hidden item";
    EXPECT_TRUE(HasLine(run, "menu-refused\t1\t9\tmissing")) << "an item the menu lacks";
    EXPECT_FALSE(Contains(run.out, "OnMenuSelectionCallback")) << "nothing runs";
}

TEST(RunnerCommands, CommandsAfterCloseRunWithoutTheDialog) {
    const HostRun part = RunTestPlugin({"-e", "close", "-e", "show part"});
    EXPECT_EQ(0, part.status) << "show part needs no dialog";
    EXPECT_TRUE(HasLine(part, "part\tbracket")) << "the part is shown after the dialog closed";
    const HostRun answer = RunTestPlugin({"-e", "close", "-e", "answer-selection cancel"});
    EXPECT_EQ(0, answer.status) << "answer-selection needs no dialog";
    const HostRun tree = RunTestPlugin({"-e", "close", "-e", "show tree"});
    EXPECT_EQ(1, tree.status) << "show tree needs the dialog";
    EXPECT_TRUE(Contains(tree.err, "-e:2: no dialog is shown")) << "said so";
}

TEST(RunnerCommands, ScriptFromStandardInput) {
    const HostRun run =
        RunTestPlugin({"--script", "-"}, {}, FixturePart("bracket.part.json"), "press button03\nclose\n");
    EXPECT_EQ(0, run.status) << "--script - reads standard input";
    EXPECT_TRUE(HasLine(run, Event("update_cb button03"))) << "its commands ran";
}

TEST(RunnerCommands, StandardInputThatIsNotATerminalIsAScript) {
    const HostRun run = RunTestPlugin({}, {}, FixturePart("bracket.part.json"), "press button03\nclick 9\nclose\n");
    EXPECT_TRUE(HasLine(run, Event("update_cb button03"))) << "without --script and -e the commands come from standard input";
    EXPECT_FALSE(Contains(run.out, "vornadel>")) << "no prompt when standard input is not a terminal";
    EXPECT_EQ(1, run.status) << "a failing command ends the run, as in a script";
    EXPECT_TRUE(Contains(run.err, "stdin:2: the tree has no row 9")) << "the place is standard input's line";
}

TEST(RunnerCommands, FailingScriptCommandIsNamedByItsFileAndLine) {
    const std::filesystem::path script = runnertest::Scratch("failing-script") / "steps.txt";
    runnertest::WriteText(script, "# first press, then a row the tree lacks\npress button03\nclick 9\nshow part\n");
    const HostRun run = RunTestPlugin({"--script", script.string()});
    EXPECT_EQ(1, run.status) << "a failing command fails the run";
    EXPECT_TRUE(Contains(run.err, script.string() + ":3: the tree has no row 9"))
        << "the script and the line, comment lines counted";
    EXPECT_FALSE(HasLine(run, "part\tbracket")) << "nothing after it runs";
}

TEST(RunnerCommands, ScriptSavedWithAByteOrderMarkRuns) {
    const std::filesystem::path script = runnertest::Scratch("marked-script") / "steps.txt";
    runnertest::WriteText(script, "\xEF\xBB\xBFpress button03\nclose\n");
    const HostRun run = RunTestPlugin({"--script", script.string()});
    EXPECT_EQ(0, run.status) << run.err;
    EXPECT_TRUE(HasLine(run, Event("update_cb button03"))) << "the first command, behind Notepad's UTF-8 mark, ran";
}

TEST(RunnerCommands, GroupButtonWithNoSelectionAnswerQueuedSaysTheSelectionWasCancelled) {
    const HostRun run = RunHost({"run", "-e", "press button04", "-e", "close"});
    EXPECT_EQ(0, run.status) << run.err;
    EXPECT_TRUE(HasLine(run, u8"Selection dialog: 设置组: 选择需要设置为同一组的实体 (no answer-selection was queued: cancelled)"))
        << run.out;
    const HostRun answered = RunHost({"run", "-e", "answer-selection cancel", "-e", "press button04", "-e", "close"});
    EXPECT_TRUE(HasLine(answered, u8"Selection dialog: 设置组: 选择需要设置为同一组的实体")) << "a queued cancel is the designer's";
}

// ---- output ------------------------------------------------------------------------------------

TEST(RunnerOutput, TsvTreeOfTheTestPlugin) {
    const HostRun run = RunTestPlugin({"-e", "show tree", "-e", "close"});
    EXPECT_EQ(Sequence({u8"0\t螺钉\t2\t\t\t\t\t\t\t\t\t\t\t\t-\t-",
                        u8"1\t螺钉-1\t\t\t1001\t\t\t\t\t\t\t\t\t\t-\t1001",
                        u8"1\t螺钉-2\t\t\t1002\t\t\t\t\t\t\t\t\t\t-\t1002",
                        u8"0\t弹簧\t1\t\t\t\t\t\t\t\t\t\t\t\t186\t-"}),
              Lines(run.out))
        << "pre-order; 13 columns (hidden column 3 included); colour 186 on the second group; bodies by tag";
}

TEST(RunnerOutput, TsvBlocksListsTheDialogsTwentySixBlocks) {
    const HostRun run = RunTestPlugin({"-e", "show blocks", "-e", "close"});
    std::vector<std::string> blocks;
    for (const std::string& line : Lines(run.out)) {
        if (line.rfind("message\t", 0) != 0) blocks.push_back(line);
    }
    EXPECT_EQ(26u, blocks.size()) << "Vornadel.dlx has 26 blocks, one line each";
    for (const std::string& line : blocks) {
        EXPECT_EQ(4, std::count(line.begin(), line.end(), '\t')) << "five fields: " << line;
    }
    EXPECT_TRUE(HasLine(run, "tree_control0\tTree\t\t\t")) << "the tree: id and class, no value or choices";
}

TEST(RunnerOutput, TsvPartOfTheFixture) {
    const HostRun run = RunTestPlugin({"-e", "close", "-e", "show part"});
    const std::vector<std::string> part = {
        "part\tbracket",
        u8"attribute\tpart\t订单编号\tstring\tSO-1",
        u8"attribute\tpart\t版本\tinteger\t3",
        "layer\t1\twork",
        "layer\t20\tvisible",
        "layer\t30\tinvisible",
        "body\t1001\t10\t6\tshown\tplain",
        u8"attribute\t1001\t名称\tstring\t内六角螺钉",
        u8"attribute\t1001\t数量\tstring\t4",
        "body\t1002\t30\t6\tblanked\tplain",
    };
    const std::vector<std::string> lines = Lines(run.out);
    const auto first = std::find(lines.begin(), lines.end(), part.front());
    ASSERT_GE(lines.end() - first, static_cast<long>(part.size())) << run.out;
    EXPECT_EQ(part, std::vector<std::string>(first, first + static_cast<long>(part.size())))
        << "part, attributes, the work layer and the layers that are not selectable, bodies with their attributes";
}

TEST(RunnerOutput, RealAttributesInTheirShortestExactForm) {
    const std::filesystem::path part = runnertest::Scratch("real") / "real.part.json";
    runnertest::WriteText(part, u8R"({"format": "vornadel-part/1", "leaf": "real",
        "attributes": {"重量": {"real": 0.1}, "长度": {"real": 20}},
        "work_layer": 1, "layer_states": {}, "bodies": []})");
    const HostRun run = RunTestPlugin({"-e", "close", "-e", "show part"}, {}, part.string());
    EXPECT_TRUE(HasLine(run, u8"attribute\tpart\t重量\treal\t0.1")) << "0.1, not 0.10000000000000001";
    EXPECT_TRUE(HasLine(run, u8"attribute\tpart\t长度\treal\t20")) << "a whole number without a decimal point";
}

TEST(RunnerOutput, TextIsTheDefaultFormat) {
    const std::filesystem::path home = runnertest::Scratch("text-home");
    const HostRun run = RunHost({"run", FixturePart("bracket.part.json"), "--plugin", runnertest::TestPlugin(),
                                 "--localappdata", home.string(), "-e", "show tree", "-e", "close"});
    EXPECT_TRUE(Contains(run.out, "+-- information: testplugin\n| ufusr\n+--\n")) << "message boxes as boxes";
    EXPECT_TRUE(Contains(run.out, u8"名称      数量  状态  备注  颜色  实体\n")) << "the visible columns as a header";
    EXPECT_TRUE(Contains(run.out, u8"  螺钉-1                    -     1001\n")) << "children indented";
}

// ---- save, clock, environment ------------------------------------------------------------------

TEST(RunnerSave, SaveWritesWhatThePluginChanged) {
    const std::filesystem::path dir = runnertest::Scratch("save");
    const std::string out = (dir / "out.part.json").string();
    const HostRun run = RunTestPlugin({"-e", "press button0", "-e", "close", "--save-as", out});
    ASSERT_EQ(0, run.status) << run.err;
    const HostRun again = RunTestPlugin({"-e", "close", "-e", "show part"}, {}, out);
    EXPECT_TRUE(HasLine(again, u8"attribute\tpart\t测试\tstring\t已保存")) << "the part attribute was saved";
    EXPECT_TRUE(HasLine(again, "body\t1001\t10\t186\tshown\tplain")) << "the new colour of body 1001 was saved";
    EXPECT_TRUE(HasLine(again, u8"attribute\t1002\t测试\tstring\t已保存")) << "the body attribute was saved";
}

TEST(RunnerSave, SaveOverwritesThePartFileThatWasRun) {
    const std::filesystem::path dir = runnertest::Scratch("save-in-place");
    const std::filesystem::path part = dir / "bracket.part.json";
    std::filesystem::copy_file(FixturePart("bracket.part.json"), part);
    const HostRun run = RunTestPlugin({"-e", "press button0", "--save"}, {}, part.string());
    ASSERT_EQ(0, run.status) << run.err;
    EXPECT_TRUE(Contains(runnertest::ReadText(part), u8"已保存")) << "the part file itself holds the change";
}

TEST(RunnerSave, FailedRunSavesNothing) {
    const std::filesystem::path dir = runnertest::Scratch("save-failed");
    const std::filesystem::path part = dir / "bracket.part.json";
    std::filesystem::copy_file(FixturePart("bracket.part.json"), part);
    const std::string before = runnertest::ReadText(part);
    const HostRun run = RunTestPlugin({"-e", "press button0", "-e", "click 7", "--save"}, {}, part.string());
    EXPECT_EQ(1, run.status) << "the click fails";
    EXPECT_EQ(before, runnertest::ReadText(part)) << "a failed run leaves the part file alone";
    EXPECT_TRUE(Contains(run.err, "vornadel-host: nothing was saved: the run failed (above)")) << run.err;
}

TEST(RunnerSave, ScriptThatDoesNotParseSaysNothingWasSaved) {
    const std::filesystem::path dir = runnertest::Scratch("save-typo");
    const std::filesystem::path script = dir / "steps.txt";
    runnertest::WriteText(script, "press button0\npres button0\n");
    const std::string out = (dir / "out.part.json").string();
    const HostRun run = RunTestPlugin({"--script", script.string(), "--save-as", out});
    EXPECT_EQ(2, run.status) << "a line that does not parse";
    EXPECT_TRUE(Contains(run.err, script.string() + ":2: unknown command")) << run.err;
    EXPECT_TRUE(Contains(run.err, "vornadel-host: nothing was saved to " + out + ": the script does not parse, so nothing ran"))
        << run.err;
    EXPECT_FALSE(std::filesystem::exists(out)) << "no file was written";
}

TEST(RunnerSave, AFileAfterSaveIsThePartThatRunsNotATarget) {
    // "--save mine.part.json" once ran the bundled sample and wrote it over mine.part.json.
    const std::filesystem::path dir = runnertest::Scratch("save-mine");
    const std::filesystem::path mine = dir / "mine.part.json";
    std::filesystem::copy_file(FixturePart("bracket.part.json"), mine);
    const HostRun run = RunHost({"--plugin", runnertest::TestPlugin(), "--format", "tsv", "--localappdata",
                                 dir.string(), "--save", mine.string(), "-e", "press button0", "-e", "close"});
    ASSERT_EQ(0, run.status) << run.err;
    EXPECT_TRUE(Contains(runnertest::ReadText(mine), u8"已保存")) << "mine.part.json ran and was saved";
    EXPECT_TRUE(Contains(runnertest::ReadText(mine), "\"tag\": 1001")) << "and it still holds its own bodies";
}

TEST(RunnerSave, TheBundledSampleIsNeverOverwritten) {
    const std::filesystem::path sample = runnertest::SourceFolder() / "samples/parts/A100.part.json";
    const std::string before = runnertest::ReadText(sample);
    for (const std::vector<std::string>& args : {std::vector<std::string>{"-e", "close", "--save"},
                                                  {sample.string(), "-e", "close", "--save"}}) {
        const HostRun run = RunHost(args);
        EXPECT_EQ(2, run.status) << "refused before anything runs";
        EXPECT_TRUE(Contains(run.err, "--save would overwrite the bundled sample part")) << run.err;
        EXPECT_EQ("", run.out) << "nothing ran";
    }
    EXPECT_EQ(before, runnertest::ReadText(sample));
}

TEST(RunnerSave, FailedSaveExitsWithOneAndNamesTheFile) {
    const HostRun run = RunTestPlugin({"-e", "close", "--save-as", "/nonexistent/out.part.json"});
    EXPECT_EQ(1, run.status) << "a save that fails fails the run";
    EXPECT_TRUE(Contains(run.err, "/nonexistent/out.part.json: cannot be written")) << "the host's message names the file";
}

TEST(RunnerClock, TimePinsTheLocalClock) {
    const HostRun run = RunTestPlugin({"--time", "2024-05-06T07:08:09.010", "-e", "press button03", "-e", "close"});
    EXPECT_TRUE(HasLine(run, Event("time 2024-05-06 07:08:09.010"))) << "the plug-in reads the pinned time";
}

TEST(RunnerEnvironment, OptionsReachThePlugin) {
    const std::filesystem::path dir = runnertest::Scratch("environment");
    std::filesystem::create_directories(dir / "cfg");
    runnertest::WriteText(dir / "cfg" / "probe.txt", "x");
    const HostRun run = RunHost({"run", FixturePart("bracket.part.json"), "--plugin", runnertest::TestPlugin(),
                                 "--format", "tsv", "--config", "V:", "--drive", "V=" + (dir / "cfg").string(),
                                 "--localappdata", (dir / "lad").string(), "--desktop", "C:\\Users\\d\\Desktop",
                                 "-e", "press button04", "-e", "close"});
    EXPECT_TRUE(HasLine(run, Event("VDConfig V:"))) << "--config sets the NX variable VDConfig";
    EXPECT_TRUE(HasLine(run, Event("probe found"))) << "--drive maps V: for the plug-in's file calls";
    EXPECT_TRUE(HasLine(run, Event("LOCALAPPDATA " + (dir / "lad").string()))) << "--localappdata";
    EXPECT_TRUE(HasLine(run, Event("desktop C:\\Users\\d\\Desktop"))) << "--desktop";
}

TEST(RunnerEnvironment, DriveTableIsTheBundledDriveThenTheProcessTableThenDriveOptions) {
    const std::filesystem::path dir = runnertest::Scratch("drive-table");
    std::filesystem::create_directories(dir / "with");
    std::filesystem::create_directories(dir / "without");
    runnertest::WriteText(dir / "with" / "probe.txt", "x");
    const std::string with = (dir / "with").string();
    const std::string without = (dir / "without").string();
    auto probe = [](const std::vector<std::string>& args, const std::string& table) {
        std::vector<std::string> all = args;
        all.insert(all.end(), {"-e", "press button04", "-e", "close"});
        return RunTestPlugin(all, {"VORNADEL_DRIVES=" + table});
    };
    EXPECT_TRUE(HasLine(probe({"--config", "V:"}, "V=" + with), Event("probe found")))
        << "the process's own VORNADEL_DRIVES maps V:";
    EXPECT_TRUE(HasLine(probe({"--config", "V:"}, "V=" + without), Event("probe missing")))
        << "the probe is found only where it is";
    EXPECT_TRUE(HasLine(probe({"--config", "D:"}, "D=" + with), Event("probe found")))
        << "the process's own table replaces the bundled drive D:";
    EXPECT_TRUE(HasLine(probe({"--config", "V:", "--drive", "V=" + with}, "V=" + without), Event("probe found")))
        << "--drive replaces the process's own mapping of the letter";
}

TEST(RunnerEnvironment, AConfigurationRootThatIsNoFolderIsNamedBeforeTheRun) {
    const std::filesystem::path dir = runnertest::Scratch("missing-config");
    const HostRun missing = RunTestPlugin({"--config", "V:\\cfg", "--drive", "V=" + dir.string(), "-e", "press button04", "-e", "close"});
    EXPECT_EQ(0, missing.status) << "the plug-in still runs and reports it in its own words";
    EXPECT_TRUE(Contains(missing.err, "the configuration root (VDConfig) V:\\cfg (" + dir.string() + "/cfg) is not an existing folder"))
        << missing.err;
    EXPECT_TRUE(HasLine(missing, Event("VDConfig V:\\cfg"))) << "the plug-in gets the root as given";
    std::filesystem::create_directories(dir / "cfg");
    const HostRun present = RunTestPlugin({"--config", "V:\\cfg", "--drive", "V=" + dir.string(), "-e", "close"});
    EXPECT_FALSE(Contains(present.err, "VDConfig")) << "nothing is said of a folder that exists";
}

TEST(RunnerEnvironment, LocalAppDataIsTheProcessOwnElseAFolderUnderHome) {
    const std::filesystem::path dir = runnertest::Scratch("local-app-data");
    const std::vector<std::string> args = {"run", FixturePart("bracket.part.json"), "--plugin", runnertest::TestPlugin(),
                                           "--format", "tsv", "-e", "press button04", "-e", "close"};
    const std::string own = (dir / "own").string();
    EXPECT_TRUE(HasLine(RunHost(args, {"LOCALAPPDATA=" + own}), Event("LOCALAPPDATA " + own)))
        << "without --localappdata the process's own LOCALAPPDATA";
    const std::filesystem::path folder = dir / "home/.local/share/vornadel";
    const HostRun home = RunHost(args, {"LOCALAPPDATA", "HOME=" + (dir / "home").string()});
    EXPECT_TRUE(HasLine(home, Event("LOCALAPPDATA " + folder.string()))) << "without either, a folder under HOME";
    EXPECT_TRUE(std::filesystem::is_directory(folder)) << "the folder under HOME is made";
}

TEST(RunnerEnvironment, WithoutConfigThePluginWorksOnAPerUserCopyOfTheBundledConfiguration) {
    const std::filesystem::path home = runnertest::Scratch("fresh-user") / "home";
    const std::vector<std::string> user = {"LOCALAPPDATA", "HOME=" + home.string()};
    const std::filesystem::path copy = home / ".local/share/vornadel/VDConfig";
    const HostRun first = RunTestPlugin({"-e", "press button04", "-e", "close"}, user);
    EXPECT_EQ(0, first.status) << first.err;
    EXPECT_TRUE(HasLine(first, Event("VDConfig " + copy.string()))) << "the configuration root is the copy";
    EXPECT_TRUE(Contains(first.err, "vornadel-host: without --config the plug-in works on a copy of the bundled "
                                    "configuration, made now: " + copy.string()))
        << first.err;
    const std::filesystem::path bundled = runnertest::SourceFolder() / "samples/config/standard.csv";
    EXPECT_EQ(runnertest::ReadText(bundled), runnertest::ReadText(copy / "config/standard.csv")) << "a copy of the tables";
    const HostRun second = RunTestPlugin({"-e", "press button04", "-e", "close"}, user);
    EXPECT_TRUE(HasLine(second, Event("VDConfig " + copy.string()))) << "later runs use the same copy";
    EXPECT_FALSE(Contains(second.err, "made now")) << "and say nothing of it";
}

TEST(RunnerEnvironment, TypingAHeadValueWithoutConfigLeavesTheCheckoutAlone) {
    // The option lists grow as designed, in the copy: the checkout's tracked tables stay.
    const std::filesystem::path samples = runnertest::SourceFolder() / "samples/config";
    std::map<std::string, std::string> before;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(samples))
        if (entry.is_regular_file()) before[entry.path().string()] = runnertest::ReadText(entry.path());
    const std::filesystem::path home = runnertest::Scratch("typing-user") / "home";
    const HostRun run = RunHost({"run", "-e", "set string01 M-试-" + std::to_string(::getpid()), "-e", "close"},
                                {"LOCALAPPDATA", "HOME=" + home.string()});
    EXPECT_EQ(0, run.status) << run.err;
    for (const auto& [path, text] : before)
        EXPECT_EQ(text, runnertest::ReadText(path)) << path << " is not changed";
    bool grown = false;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(home / ".local/share/vornadel/VDConfig"))
        if (entry.is_regular_file() && Contains(runnertest::ReadText(entry.path()), "M-")) grown = true;
    EXPECT_TRUE(grown) << "the typed mould number went into the copy's option list";
}

// ---- menus and help ----------------------------------------------------------------------------

TEST(RunnerMenu, AMenuWithoutAnItemIsListedAndNothingIsChosen) {
    const HostRun run = RunTestPlugin({"-e", "menu 1.1"});
    EXPECT_EQ(0, run.status) << run.err;
    EXPECT_TRUE(HasLine(run, u8"menu-item\t1.1\t1\t添加到组\tenabled")) << run.out;
    EXPECT_TRUE(HasLine(run, u8"menu-item\t1.1\t2\t解散组\tdisabled")) << run.out;
    EXPECT_TRUE(HasLine(run, u8"menu-item\t1.1\t3\t隐藏项\thidden")) << run.out;
    EXPECT_FALSE(Contains(run.out, "OnMenuSelectionCallback")) << "looked at, not chosen";
}

TEST(RunnerMenu, HelpAfterTheDialogListsTheCommandsOnly) {
    const HostRun run = RunTestPlugin({"-e", "close", "-e", "help"});
    EXPECT_EQ(0, run.status) << run.err;
    EXPECT_TRUE(Contains(run.out, "  click <row> [<column>]"));
    EXPECT_FALSE(Contains(run.out, "Tree columns")) << "no dialog, nothing of it";
}

// ---- the tree as a table -----------------------------------------------------------------------

// The table of a 5,000-body mould (model texts such as "Φ6×500", Chinese names) lines up as a
// UTF-8 terminal shows it: every line's last column (the body) starts at the same place, measured
// by the C library's wcswidth, which knows nothing of the runner.
TEST(RunnerTreeTable, AFiveThousandBodyTreeLinesUpOnAUtf8Terminal) {
    if (std::setlocale(LC_CTYPE, "C.UTF-8") == nullptr) GTEST_SKIP() << "no C.UTF-8 locale";
    const std::filesystem::path dir = runnertest::Scratch("tree-table");
    const std::filesystem::path part = dir / "m5000.part.json";
    ASSERT_EQ(0, runnertest::Spawn({(runnertest::BinaryFolder() / "moldgen").string(), "--bodies", "5000", "--out",
                                    part.string()},
                                   {}, "/dev/null", (dir / "gen.out").string(), (dir / "gen.err").string(),
                                   runnertest::SourceFolder().string()));
    const HostRun run = RunHost({"run", part.string(), "--localappdata", dir.string(), "-e", "show tree", "-e", "close"},
                                {"VORNADEL_AMBIGUOUS_WIDTH"});
    ASSERT_EQ(0, run.status) << run.err;
    const std::vector<std::string> lines = Lines(run.out);
    auto width = [](const std::string& utf8) {
        std::wstring wide(utf8.size() + 1, L'\0');
        const size_t n = std::mbstowcs(&wide[0], utf8.c_str(), wide.size());
        return n == static_cast<size_t>(-1) ? -1 : wcswidth(wide.c_str(), n);
    };
    size_t rows = 0, ambiguous = 0;
    int bodyColumn = -1;
    for (const std::string& line : lines) {
        if (line.find_first_not_of('-') == std::string::npos) continue;  // the rule under the head
        const size_t last = line.rfind("  ");
        ASSERT_NE(std::string::npos, last) << line;
        const int at = width(line.substr(0, last + 2));
        if (bodyColumn < 0) bodyColumn = at;
        EXPECT_EQ(bodyColumn, at) << line;
        ++rows;
        if (line.find(u8"×") != std::string::npos) ++ambiguous;
        if (HasFailure()) break;
    }
    EXPECT_GT(rows, 5000u) << "the head, the purchase lines and every body row";
    EXPECT_GT(ambiguous, 1000u) << "rows with ambiguous-width characters were measured";
}

// On a terminal set to wide ambiguous characters: "Φ6×500" takes eight columns.
TEST(RunnerTreeTable, WideAmbiguousCharactersOnRequest) {
    const std::filesystem::path dir = runnertest::Scratch("tree-table-wide");
    auto table = [&](const std::vector<std::string>& more, const std::vector<std::string>& env) {
        std::vector<std::string> args = {"run", "--localappdata", dir.string(), "-e", "show tree", "-e", "close"};
        args.insert(args.end(), more.begin(), more.end());
        return RunHost(args, env).out;
    };
    const std::string narrow = table({}, {"VORNADEL_AMBIGUOUS_WIDTH"});
    const std::string wide = table({"--ambiguous-width", "2"}, {"VORNADEL_AMBIGUOUS_WIDTH"});
    EXPECT_NE(narrow, wide);
    EXPECT_EQ(wide, table({}, {"VORNADEL_AMBIGUOUS_WIDTH=2"})) << "the variable says the same";
    EXPECT_EQ(narrow, table({"--ambiguous-width", "1"}, {"VORNADEL_AMBIGUOUS_WIDTH=2"})) << "the option wins";
    for (const std::string& line : Lines(wide)) {
        if (line.find_first_not_of('-') == std::string::npos) continue;
        EXPECT_EQ(runner::DisplayWidth(Lines(wide)[0], 2) - 4,
                  runner::DisplayWidth(line.substr(0, line.rfind("  ") + 2), 2))
            << line;
    }
    const HostRun bad = RunHost({"--ambiguous-width", "3"});
    EXPECT_EQ(2, bad.status);
    EXPECT_TRUE(Contains(bad.err, "--ambiguous-width is 1 or 2, not \"3\"")) << bad.err;
}

// ---- user-function library start-up ----------------------------------------------------------

TEST(RunnerInitialization, ACallBeforeUfInitializeIsRefusedAndSaid) {
    const HostRun run = RunTestPlugin({"-e", "press button04"}, {"VORNADEL_TESTPLUGIN=no-initialize"});
    EXPECT_EQ(0, run.status) << run.err;
    EXPECT_TRUE(Contains(run.err, "vornadel-host: the plug-in called UF_translate_variable before UF_initialize: NX "
                                  "refuses it (UF_err_program_not_initialized)\n"))
        << run.err;
}

// Every command of the designer's full session, through the real plug-in: no user-function call
// comes before UF_initialize.
TEST(RunnerInitialization, ThePluginAlwaysInitialisesFirst) {
    const std::filesystem::path dir = runnertest::Scratch("initialises-first");
    for (const char* script : {"samples/scripts/a100-full.txt", "samples/scripts/remembered-group.txt",
                               "samples/scripts/group-menu.txt", "samples/scripts/display-buttons.txt"}) {
        const HostRun run = RunHost({"run", "--script", script, "--localappdata", dir.string(), "--drive",
                                     "C=" + dir.string(), "--time", "2024-06-03T14:05:09.027"});
        EXPECT_FALSE(Contains(run.err, "before UF_initialize")) << script << ": " << run.err;
        EXPECT_NE(1, run.status) << script << ": " << run.err;
        EXPECT_FALSE(run.out.empty()) << script << ": the plug-in ran";
    }
}

// ---- NX calls ----------------------------------------------------------------------------------

// The counts the plug-in makes on the sample mould, against the documented algorithms: the first
// display creates and inserts one node per row (R rows: the purchase lines and their body rows);
// the save writes the twelve purchase columns of every row through UF_ATTR_assign, each followed
// by one UF_MODL_update, and the eleven head fields and the marker through SetUserAttribute.
TEST(RunnerNxCalls, TheCountsOfTheSampleMouldFollowTheAlgorithms) {
    const std::filesystem::path dir = runnertest::Scratch("nx-calls");
    std::filesystem::create_directories(dir / "out");
    auto run = [&](std::vector<std::string> commands) {
        std::vector<std::string> args = {"run", "--format", "tsv", "--nx-calls", "--localappdata", dir.string(),
                                         "--drive", "C=" + dir.string(), "--time", "2024-06-03T14:05:09.027"};
        commands.push_back("show tree");
        commands.push_back("close");
        for (const std::string& c : commands) {
            args.push_back("-e");
            args.push_back(c);
        }
        return RunHost(args);
    };
    auto counts = [](const HostRun& r) {
        std::map<std::string, long> all;
        for (const std::string& line : Lines(r.out)) {
            if (line.rfind("nx-call\t", 0) != 0) continue;
            const size_t tab = line.rfind('\t');
            all[line.substr(8, tab - 8)] = std::stol(line.substr(tab + 1));
        }
        return all;
    };
    // The rows and purchase lines of the tree "show tree" printed (it runs last).
    auto shape = [](const HostRun& r) {
        long rows = 0, lines = 0;
        for (const std::string& line : Lines(r.out)) {
            rows += line.rfind("0\t", 0) == 0 || line.rfind("1\t", 0) == 0;
            lines += line.rfind("0\t", 0) == 0;
        }
        return std::make_pair(rows, lines);
    };
    auto operation = [&](const HostRun& with, const HostRun& without, const std::string& name) {
        std::map<std::string, long> after = counts(with), before = counts(without);
        return after[name] - before[name];
    };
    const HostRun shown = run({});
    ASSERT_EQ(0, shown.status) << shown.err;
    const auto [R, G] = shape(shown);
    ASSERT_GT(R, 40);
    std::map<std::string, long> first = counts(shown);
    EXPECT_EQ(R, first["Tree::CreateNode"]) << "the first display: one node per row";
    EXPECT_EQ(R, first["Tree::InsertNode"]);
    EXPECT_EQ(0, first["UF_ATTR_assign"]) << "the first display writes nothing";

    const HostRun saved = run({"press button0"});
    ASSERT_EQ(0, saved.status) << saved.err;
    EXPECT_EQ(12 * R, operation(saved, shown, "UF_ATTR_assign")) << "twelve columns of every row";
    EXPECT_EQ(12 * R, operation(saved, shown, "UF_MODL_update")) << "an update after each";
    EXPECT_EQ(11 + 1, operation(saved, shown, "NXObject::SetUserAttribute")) << "the head and the marker";
    EXPECT_EQ(0, operation(saved, shown, "Tree::CreateNode")) << "the save builds nothing";

    const HostRun exported = run({"folder C:\\out", "press button01"});
    ASSERT_EQ(0, exported.status) << exported.err;
    EXPECT_EQ(12 * R, operation(exported, shown, "UF_ATTR_assign")) << "the export saves first";
    EXPECT_EQ(12 * R + 11 * G, operation(exported, shown, "Node::GetColumnDisplayText"))
        << "the save's twelve cells of every row, then eleven of every purchase line for the sheet";

    const HostRun grouped = run({"answer-selection ok 1011 1012", "press button04"});
    ASSERT_EQ(0, grouped.status) << grouped.err;
    const auto [R1, G1] = shape(grouped);
    EXPECT_EQ(2, operation(grouped, shown, "NXObject::SetUserAttribute")) << "the two bodies chosen";
    EXPECT_EQ(G, operation(grouped, shown, "Tree::DeleteNode")) << "each line of the old tree";
    EXPECT_EQ(R1, operation(grouped, shown, "Tree::CreateNode")) << "each row of the new tree";

    // Line 018 of the rebuilt tree is the new group (1011 and 1012): its body and two body rows.
    const HostRun dissolved = run({"answer-selection ok 1011 1012", "press button04", "menu 18 1"});
    ASSERT_EQ(0, dissolved.status) << dissolved.err;
    const auto [R2, G2] = shape(dissolved);
    EXPECT_EQ(1 + 2, operation(dissolved, grouped, "NXObject::DeleteUserAttribute"));
    EXPECT_EQ(G1, operation(dissolved, grouped, "Tree::DeleteNode"));
    EXPECT_EQ(R2, operation(dissolved, grouped, "Tree::CreateNode"));
    EXPECT_EQ(G, G2) << "the tree is as it was before the group";
}

TEST(RunnerNxCalls, TextListsTheCountsWithTheirSum) {
    const std::filesystem::path dir = runnertest::Scratch("nx-calls-text");
    const HostRun run = RunHost({"run", "--nx-calls", "--localappdata", dir.string(), "-e", "close"});
    ASSERT_EQ(0, run.status) << run.err;
    EXPECT_TRUE(Contains(run.out, "NX calls of the plug-in (")) << run.out;
    EXPECT_TRUE(Contains(run.out, "  Tree::InsertNode\n")) << run.out;
    EXPECT_FALSE(Contains(RunHost({"run", "--localappdata", dir.string(), "-e", "close"}).out, "NX calls"))
        << "only on request";
}
