// What the runner says after the real plug-in's export, whose success box appears whether or not
// a workbook was written, and after a save that the part did not fully take: one line each on
// standard error and status 3 when an export left no filled BOM or a value was not stored.
#include <gtest/gtest.h>

#include <unistd.h>

#include <algorithm>

#include <filesystem>

#include "RunHost.h"

namespace fs = std::filesystem;

using runnertest::HostRun;

namespace {

bool Contains(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
}

size_t LineCount(const std::string& text) {
    return static_cast<size_t>(std::count(text.begin(), text.end(), '\n'));
}

// A designer of the test's own: drive C: is scratch/c (with an output folder C:\out) and the
// configuration root is a copy of the bundled one in scratch/cfg.
class ExportOutcome : public ::testing::Test {
protected:
    void SetUp() override {
        scratch_ = runnertest::Scratch(::testing::UnitTest::GetInstance()->current_test_info()->name());
        fs::create_directories(scratch_ / "c" / "out");
        fs::create_directories(scratch_ / "cfg");
        fs::copy(runnertest::SourceFolder() / "samples" / "config", scratch_ / "cfg" / "config",
                 fs::copy_options::recursive);
    }

    fs::path Template() const { return scratch_ / "cfg" / "config" / u8"塑胶模" / u8"模具标准件申购表.xls"; }
    fs::path Exported(const std::string& name = u8"A100标准件BOM.xls") const {
        return scratch_ / "c" / "out" / "A100" / name;
    }

    // The runner on the sample mould with these commands.
    HostRun Run(const std::vector<std::string>& commands) const {
        std::vector<std::string> args = {"run", "--drive", "C=" + (scratch_ / "c").string(), "--config",
                                         (scratch_ / "cfg").string(), "--localappdata", "C:\\appdata",
                                         "--time", "2000-01-01T00:00:00"};
        for (const std::string& c : commands) {
            args.push_back("-e");
            args.push_back(c);
        }
        return runnertest::RunHost(args);
    }

    HostRun ExportTo(const std::string& folder) const { return Run({"folder " + folder, "press button01"}); }

    fs::path scratch_;
};

TEST_F(ExportOutcome, AFilledBomIsNotReported) {
    const HostRun run = ExportTo("C:\\out");
    EXPECT_EQ(0, run.status) << run.err;
    EXPECT_EQ("", run.err);
    EXPECT_TRUE(fs::is_regular_file(Exported()));
}

TEST_F(ExportOutcome, AMissingOutputFolderIsNamed) {
    const HostRun run = ExportTo("C:\\nope");
    EXPECT_EQ(3, run.status) << run.err;
    EXPECT_TRUE(Contains(run.out, u8"导出标准件BOM成功")) << "the plug-in's own box is as it is";
    EXPECT_TRUE(Contains(run.err, u8"vornadel-host: the export said it wrote C:\\nope\\A100\\A100标准件BOM.xls, which "
                                  u8"does not exist: the output folder C:\\nope (" +
                                      (scratch_ / "c" / "nope").string() + ") does not exist\n"))
        << run.err;
    EXPECT_EQ(1u, LineCount(run.err)) << run.err;
}

TEST_F(ExportOutcome, AnOutputFolderThatIsAFileIsNamed) {
    runnertest::WriteText(scratch_ / "c" / "afile", "x");
    const HostRun run = ExportTo("C:\\afile");
    EXPECT_EQ(3, run.status) << run.err;
    EXPECT_TRUE(Contains(run.err, ") is a file, not a folder\n")) << run.err;
}

TEST_F(ExportOutcome, AnOutputFolderOnADriveTheTableDoesNotMapIsNamed) {
    const HostRun run = ExportTo("Q:\\out");
    EXPECT_EQ(3, run.status) << run.err;
    EXPECT_TRUE(Contains(run.err, "which does not exist: drive Q: is not mapped to a folder (--drive Q=DIR maps it)\n"))
        << run.err;
}

TEST_F(ExportOutcome, AnOutputFolderThatIsNotWritableIsNamed) {
    if (geteuid() == 0) GTEST_SKIP() << "root writes into any folder";
    fs::permissions(scratch_ / "c" / "out", fs::perms::owner_write, fs::perm_options::remove);
    const HostRun run = ExportTo("C:\\out");
    fs::permissions(scratch_ / "c" / "out", fs::perms::owner_write, fs::perm_options::add);
    EXPECT_EQ(3, run.status) << run.err;
    EXPECT_TRUE(Contains(run.err, ") is not writable\n")) << run.err;
}

// Templates the engine does not take: the export leaves the bare copy and still says it succeeded.
TEST_F(ExportOutcome, ATemplateThatIsNoWorkbookLeavesNoFilledBom) {
    const std::string bundled = runnertest::ReadText(Template());
    const std::vector<std::pair<const char*, std::string>> templates = {
        {"a text file renamed .xls", "customer,mould\n"},
        {"0 bytes", ""},
        {"an .xlsx workbook", std::string("PK\x03\x04\x14\x00\x06\x00", 8) + std::string(200, '\0')},
        {"a truncated file", bundled.substr(0, 5000)},
    };
    for (size_t i = 0; i < templates.size(); ++i) {
        runnertest::WriteText(Template(), templates[i].second);
        const HostRun run = ExportTo("C:\\out");
        const std::string name = i == 0 ? u8"A100标准件BOM.xls" : u8"A100标准件BOM-" + std::to_string(i) + ".xls";
        EXPECT_EQ(3, run.status) << templates[i].first << ": " << run.err;
        EXPECT_TRUE(Contains(run.err, "vornadel-host: the export left no filled BOM in C:\\out\\A100\\" + name +
                                          ": it is the template as copied, which is no workbook the engine reads ("))
            << templates[i].first << ": " << run.err;
        EXPECT_EQ(1u, LineCount(run.err)) << templates[i].first << ": " << run.err;
        EXPECT_EQ(templates[i].second, runnertest::ReadText(Exported(name))) << "the bare copy, as the plug-in left it";
    }
}

TEST_F(ExportOutcome, AMissingTemplateSaysTheExportWroteNothing) {
    fs::remove(Template());
    const HostRun run = ExportTo("C:\\out");
    EXPECT_EQ(3, run.status) << run.err;
    EXPECT_TRUE(Contains(run.out, u8"模具标准件申购表.xls 配置文件不存在")) << "the plug-in's own error box";
    EXPECT_TRUE(Contains(run.err, u8"vornadel-host: -e:2: the export wrote no BOM: the plug-in said \"")) << run.err;
    EXPECT_TRUE(Contains(run.err, u8"模具标准件申购表.xls 配置文件不存在\"\n")) << run.err;
}

TEST_F(ExportOutcome, AnExportStoppedByAnEmptyRequiredFieldWroteNothing) {
    const HostRun run = Run({"folder C:\\out", "set string036 ", "press button01"});
    EXPECT_EQ(3, run.status) << run.err;
    EXPECT_TRUE(Contains(run.err, "vornadel-host: -e:3: the export wrote no BOM: the plug-in said \"")) << run.err;
}

// GBK holds a Chinese character in two bytes: 66 of them are the 132 bytes an NX string attribute
// holds, 67 are two too many. A remark typed on a purchase line goes onto each of its body rows.
TEST_F(ExportOutcome, AValueLongerThanAnAttributeHoldsNamesItsRowAndColumn) {
    std::string fits;
    for (int i = 0; i < 66; ++i) fits += u8"长";
    const HostRun stored = Run({"edit 1 7 " + fits, "press button0"});
    EXPECT_EQ(0, stored.status) << stored.err;
    EXPECT_EQ("", stored.err);

    const HostRun run = Run({"edit 1 7 " + fits + u8"长", "press button0"});
    EXPECT_EQ(3, run.status) << run.err;
    EXPECT_TRUE(Contains(run.err, u8"vornadel-host: -e:2: not stored on the part: row 1 column 7 (备注), row 1.1 column "
                                  u8"7 (备注), attribute \"备注\" of body "))
        << "the line's own row holds its first body: " << run.err;
    EXPECT_TRUE(Contains(run.err, u8"vornadel-host: -e:2: not stored on the part: row 1.2 column 7 (备注), attribute "
                                  u8"\"备注\" of body "))
        << run.err;
    for (const std::string& line : runnertest::Lines(run.err))
        EXPECT_TRUE(Contains(line, ": 134 bytes, and an NX string attribute holds 132 (error ")) << line;
    EXPECT_FALSE(Contains(run.err, "row 2")) << "the other lines were stored: " << run.err;
}

TEST_F(ExportOutcome, AnotherPluginsButtonIsNoExport) {
    const HostRun run = runnertest::RunTestPlugin({"-e", "press button01"});
    EXPECT_EQ(0, run.status) << run.err;
    EXPECT_EQ("", run.err);
}

// The plug-in reads a configuration root without its selector table as if the active folder were
// ROOT\config and names the tables it misses there: the runner names the selector first.
using ConfigurationRoot = ExportOutcome;

TEST_F(ConfigurationRoot, AMissingSelectorTableIsNamed) {
    fs::remove(scratch_ / "cfg" / "config" / "standard.csv");
    const HostRun run = Run({"close"});
    EXPECT_TRUE(Contains(run.err, "vornadel-host: the configuration root (VDConfig) " + (scratch_ / "cfg").string() +
                                      " has no config\\standard.csv (the table that chooses the active configuration "
                                      "folder): the plug-in looks for its tables in " +
                                      (scratch_ / "cfg").string() + "\\config itself\n"))
        << run.err;
    EXPECT_TRUE(Contains(run.out, "bom_head_config.csv")) << "the plug-in's own message follows";
}

}  // namespace
