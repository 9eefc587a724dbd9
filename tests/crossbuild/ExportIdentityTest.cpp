// The export writes the same workbook, byte for byte, on Windows as on Linux: the same part,
// configuration, head and pinned clock, through the Win32 platform layer (_mkdir for the per-part
// folder, CopyFileA with fail-if-exists for the free name, the C library's multibyte conversion
// for the cells) instead of the POSIX one. The Linux suite keeps its workbook in its build folder;
// the Windows suite, which ./dev.sh test runs after it, compares with that file.

#include "commands/CommandsFixture.hpp"

using namespace commands_test;
using vornadel_test::ReadBytes;
using vornadel_test::WriteBytes;

namespace {

class ExportIdentity : public CommandsFixture {};

// Where the first difference between two byte strings is, for a message that prints no binary.
std::string Difference(const std::string& a, const std::string& b)
{
    size_t at = 0;
    while (at < a.size() && at < b.size() && a[at] == b[at])
        ++at;
    return "sizes " + std::to_string(a.size()) + " and " + std::to_string(b.size()) + ", first difference at byte " +
           std::to_string(at);
}

TEST_F(ExportIdentity, TheWorkbookIsByteForByteTheOneTheLinuxBuildWrites)
{
    LoadMould();
    WithDialog([&](Vornadel&, host::LiveDialog& live) {
        FillHead(live);
        live.PickFolder("nativeFolderBrowser0", "D:\\out");
        live.Press("button01");
        live.Press("button01");
    });

    const fs::path folder = DriveD() / "out" / "T100";
    const fs::path first = folder / fs::u8path(u8"T100标准件BOM.xls");
    const fs::path second = folder / fs::u8path(u8"T100标准件BOM-1.xls");
    ASSERT_TRUE(fs::exists(first)) << "the export goes into the per-part folder";
    ASSERT_TRUE(fs::exists(second)) << "a second export takes the next free name";
    const std::string bytes = ReadBytes(first);
    EXPECT_NE(ReadBytes(TemplatePath()), bytes) << "the cells are written into the copy";
    EXPECT_TRUE(bytes == ReadBytes(second)) << "two exports of one state: " << Difference(bytes, ReadBytes(second));

#ifdef _WIN32
    const char* linuxBuild = std::getenv("VORNADEL_LINUX_BINARY_DIR");
    ASSERT_NE(nullptr, linuxBuild);
    const fs::path reference = fs::path(linuxBuild) / "crossbuild" / "T100.xls";
    ASSERT_TRUE(fs::exists(reference)) << reference << " is written by the Linux suite, which runs first";
    const std::string linuxBytes = ReadBytes(reference);
    EXPECT_TRUE(bytes == linuxBytes) << "Windows and Linux exports differ: " << Difference(bytes, linuxBytes);
#else
    const fs::path reference = fs::path(std::getenv("VORNADEL_BINARY_DIR")) / "crossbuild";
    fs::create_directories(reference);
    WriteBytes(reference / "T100.xls", bytes);
#endif
}

}  // namespace
