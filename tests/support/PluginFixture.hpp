// A fixture for tests of the plug-in inside the host: a fresh NX session with a small work part,
// a private folder tree standing for the machine's drives and per-user folders, the dialog file
// found as NX finds it, and helpers to write GBK tables and to run the user function.
// On Windows (under Wine) drive D: and the desktop are the Wine prefix's own: drive D: is one
// folder for every test (the Windows tests that use it take turns), emptied after each test.
#pragma once

#include <gtest/gtest.h>

#include "support/Posix.hpp"

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include <uf.h>

#include "Driver.hpp"
#include "HostSession.hpp"
#include "platform/Environment.h"

namespace vornadel_test {

namespace fs = std::filesystem;

// The source tree (for dialog/ and samples/), from CTest's environment or the working folder.
inline fs::path SourceDir()
{
    const char* dir = getenv("VORNADEL_SOURCE_DIR");
    return dir != nullptr ? fs::path(dir) : fs::current_path();
}

// Writes bytes exactly as given (no line-end translation).
inline void WriteBytes(const fs::path& path, const std::string& bytes)
{
    fs::create_directories(path.parent_path());
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    out << bytes;
}

inline std::string ReadBytes(const fs::path& path)
{
    std::ifstream in(path, std::ios::binary);
    return std::string((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
}

// A table as a site writes it: lines joined with CRLF. Text literals of the tests are GBK
// already (the tests are compiled with -fexec-charset=GBK).
inline std::string CrlfLines(const std::vector<std::string>& lines)
{
    std::string text;
    for (const std::string& line : lines)
        text += line + "\r\n";
    return text;
}

class PluginFixture : public ::testing::Test {
protected:
    void SetUp() override
    {
        host::ResetSession();
        std::string pattern = (fs::temp_directory_path() / "vornadel-test-XXXXXX").string();
        ASSERT_NE(mkdtemp(pattern.data()), nullptr);
        top_ = pattern;
        fs::create_directories(DriveD());
        fs::create_directories(top_ / "appdata");
        fs::create_directories(Desktop());
        setenv("VORNADEL_DRIVES", ("D=" + (top_ / "d").string()).c_str(), 1);
        setenv("LOCALAPPDATA", (top_ / "appdata").string().c_str(), 1);
        setenv("VORNADEL_DESKTOP", (top_ / "desktop").string().c_str(), 1);
        host::SetDialogSearchPath({(SourceDir() / "dialog").string()});
        host::SetEnvironmentVariable("VDConfig", Root());
        LoadPart(R"({ "format": "vornadel-part/1", "leaf": "T100", "work_layer": 1, "bodies": [] })");
    }

    void TearDown() override
    {
        std::error_code ignored;
        fs::remove_all(top_, ignored);
#ifdef _WIN32
        for (const fs::directory_entry& entry : fs::directory_iterator(DriveD(), ignored))
            fs::remove_all(entry.path(), ignored);
#endif
        unsetenv("VORNADEL_DRIVES");
        unsetenv("LOCALAPPDATA");
        unsetenv("VORNADEL_DESKTOP");
    }

    // The configuration root (value of VDConfig), as the plug-in sees it.
    std::string Root() const { return (top_ / "root").string(); }
    fs::path RootDir() const { return top_ / "root"; }
    // The folder standing for drive D:.
#ifdef _WIN32
    fs::path DriveD() const { return "D:\\"; }
    std::string Desktop() const { return platform::DesktopFolder(); }
#else
    fs::path DriveD() const { return top_ / "d"; }
    std::string Desktop() const { return (top_ / "desktop").string(); }
#endif
    fs::path AppData() const { return top_ / "appdata"; }

    // Loads a part file given as GBK text (the tests' literals), written as the UTF-8 it is.
    void LoadPart(const std::string& json)
    {
        WriteBytes(top_ / "part.part.json", host::GbkToUtf8(json));
        host::LoadWorkPart((top_ / "part.part.json").string());
    }

    // "D:\MYTOOL\config\TK\Layerwrk.txt" naming the layer table std_layers.csv, and that table.
    void WriteLayerTable(const std::vector<std::string>& layerCells)
    {
        WriteBytes(DriveD() / "MYTOOL/config/TK/Layerwrk.txt", CrlfLines({"CURRENT_LAYER_FILE = std_layers.csv"}));
        std::vector<std::string> lines = {"标准件图层"};
        lines.insert(lines.end(), layerCells.begin(), layerCells.end());
        WriteBytes(RootDir() / "config/TK/std_layers.csv", CrlfLines(lines));
    }

    // A complete, valid configuration in root\config (no selector table).
    void WriteConfiguration()
    {
        WriteLayerTable({"61", "62"});
        fs::path folder = RootDir() / "config";
        WriteBytes(folder / "bom_head_config.csv",
                   CrlfLines({"产品材质,模具编号,模具吨位,客户名称,产品厚度,模具类型,设计担当",
                              "ABS,YM-01,120T,美的,2.0,两板模,张工", "PC,,160T,格力,,三板模,"}));
        WriteBytes(folder / "smart_drawing_std_config.csv", CrlfLines({"标准件名称", "顶针"}));
        WriteBytes(folder / "config.csv", CrlfLines({"改模颜色", "186"}));
        WriteBytes(folder / "std_part_config.csv",
                   CrlfLines({"标准件名称,标准件类型,标准件名称顺序", "顶针,Φ4×200,内六角螺钉", "内六角螺钉,M6×20,顶针"}));
    }

    // Runs the user function as NX does: ufusr once, the dialog driven by script (none: the
    // designer closes it at once).
    void RunUserFunction(std::function<void(host::LiveDialog&)> script = nullptr)
    {
        host::SetDialogScript(std::move(script));
        int retcode = 0;
        char param[] = "";
        ufusr(param, &retcode, 0);
    }

    fs::path top_;
};

}  // namespace vornadel_test
