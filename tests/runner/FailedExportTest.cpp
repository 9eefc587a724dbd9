// The real plug-in through the runner when the export's workbook cannot be saved: the workbook's
// message leaves the export as a plain string, which no handler of the plug-in catches, and the
// runner, standing for NX, reports it.
#include <gtest/gtest.h>

#include <filesystem>

#include "RunHost.h"

namespace {

TEST(RunnerExport, AWorkbookThatCannotBeSavedIsReportedWithTheWorkbooksMessage) {
    namespace fs = std::filesystem;
    const fs::path scratch = runnertest::Scratch("failed-export");
    fs::create_directories(scratch / "c/out");
    fs::create_directories(scratch / "c/appdata");
    // The bundled template (9,728 bytes) is copied whole; the filled workbook (about 13,800
    // bytes for the sample mould) outgrows the 11 KiB the shell allows a file.
    const std::vector<std::string> args = {
        "/bin/bash", "-c", "trap '' XFSZ; ulimit -f 11; exec \"$0\" \"$@\"",
        (runnertest::BinaryFolder() / "vornadel-host").string(), "run", "--drive", "C=" + (scratch / "c").string(),
        "--localappdata", "C:\\appdata", "--time", "2000-01-01T00:00:00", "-e", "folder C:\\out", "-e",
        "press button01"};
    // The plug-in's dialog object is left behind when the exception passes its ufusr, as in NX
    // (the DLL goes with it): a leak by design, which the sanitizer build must not count here.
    const int status = runnertest::Spawn(args, {"ASAN_OPTIONS=detect_leaks=0"}, "/dev/null", (scratch / "out").string(), (scratch / "err").string(),
                                         runnertest::SourceFolder().string());
    const std::string out = runnertest::ReadText(scratch / "out");
    const std::string err = runnertest::ReadText(scratch / "err");
    EXPECT_EQ(1, status) << err;
    EXPECT_NE(std::string::npos,
              err.find(u8"a plain string (const char*) thrown by the plug-in escaped ufusr: C:\\out\\A100\\A100标准件BOM.xls: "))
        << err;
    EXPECT_EQ(std::string::npos, out.find(u8"导出标准件BOM成功")) << "no success message";
    EXPECT_EQ(std::string::npos, out.find("Opened")) << "nothing opened";
}

}  // namespace
