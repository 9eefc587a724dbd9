#include "XlsTestSupport.h"

#include "CompoundFile.h"
#include "XlsBook.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <ctime>
#include <fstream>
#include <functional>
#include <random>
#include <sstream>
#ifdef _WIN32
#include <windows.h>
#else
#include <sys/wait.h>
#endif

#include "support/Posix.hpp"
#include "support/WideText.hpp"

namespace xlstest {

fs::path sourceDir()
{
    const char* dir = std::getenv("VORNADEL_SOURCE_DIR");
    return dir != nullptr ? fs::path(dir) : fs::current_path();
}

fs::path binaryDir()
{
    const char* dir = std::getenv("VORNADEL_BINARY_DIR");
    return dir != nullptr ? fs::path(dir) : fs::current_path() / "build";
}

fs::path dataDir() { return sourceDir() / "tests" / "xls" / "data"; }

fs::path bundledTemplate() { return sourceDir() / fs::u8path(u8"samples/config/塑胶模/模具标准件申购表.xls"); }

Bytes readBytes(const fs::path& path)
{
    std::ifstream in(path, std::ios::binary);
    EXPECT_TRUE(in.good()) << "cannot read " << path;
    return Bytes(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

void writeBytes(const fs::path& path, const Bytes& bytes)
{
    std::ofstream out(path, std::ios::binary);
    out.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    EXPECT_TRUE(out.good()) << "cannot write " << path;
}

TempDir::TempDir()
{
    static std::mt19937_64 random(static_cast<unsigned long>(getpid()) * 7919u + static_cast<unsigned long>(time(nullptr)));
    path_ = fs::temp_directory_path() / ("vornadel-xls-" + std::to_string(getpid()) + "-" + std::to_string(random()));
    fs::create_directories(path_);
}

TempDir::~TempDir()
{
    std::error_code ignored;
    fs::remove_all(path_, ignored);
}

DriveX::DriveX()
{
    const char* old = std::getenv("VORNADEL_DRIVES");
    hadDrives_ = old != nullptr;
    saved_ = hadDrives_ ? old : "";
    setenv("VORNADEL_DRIVES", ("X=" + folder_.path().u8string()).c_str(), 1);
}

DriveX::~DriveX()
{
    if (hadDrives_)
        setenv("VORNADEL_DRIVES", saved_.c_str(), 1);
    else
        unsetenv("VORNADEL_DRIVES");
}

std::string DriveX::path(const std::string& rest) const
{
#ifdef _WIN32
    return osPath(folder_.path()) + "\\" + rest;
#else
    return "X:\\" + rest;
#endif
}

#ifdef _WIN32

namespace {

// Wine's name on the Linux side for a Windows path (kernel32's wine_get_unix_file_name), which the
// Linux programs the tests start can open.
std::string unixName(const fs::path& path)
{
    typedef char*(CDECL * UnixFileName)(LPCWSTR);
    static const UnixFileName convert =
        reinterpret_cast<UnixFileName>(reinterpret_cast<void*>(GetProcAddress(GetModuleHandleA("kernel32"), "wine_get_unix_file_name")));
    if (convert == nullptr) {
        ADD_FAILURE() << "not running under Wine: no Linux program can be started";
        return path.u8string();
    }
    char* name = convert(path.wstring().c_str());
    if (name == nullptr) {
        ADD_FAILURE() << "Wine has no Linux name for " << path;
        return path.u8string();
    }
    std::string text = name;
    HeapFree(GetProcessHeap(), 0, name);
    return text;
}

}  // namespace

std::string osPath(const fs::path& path)
{
    const std::wstring text = path.wstring();
    std::string out(WideCharToMultiByte(CP_ACP, 0, text.data(), static_cast<int>(text.size()), nullptr, 0, nullptr, nullptr), '\0');
    WideCharToMultiByte(CP_ACP, 0, text.data(), static_cast<int>(text.size()), &out[0], static_cast<int>(out.size()), nullptr, nullptr);
    return out;
}

#else

std::string osPath(const fs::path& path) { return path.string(); }

#endif

namespace {

std::string shellWord(const std::string& text)
{
    std::string out = "'";
    for (char c : text) out += c == '\'' ? std::string("'\\''") : std::string(1, c);
    return out + "'";
}

}  // namespace

std::string quote(const fs::path& path)
{
#ifdef _WIN32
    return shellWord(unixName(path));
#else
    return shellWord(path.u8string());
#endif
}

std::string toolCommand(const std::string& name)
{
#ifdef _WIN32
    // A Windows program is started by Wine, in the suite's prefix (tools/wine/wine.sh).
    return quote(sourceDir() / "tools" / "wine" / "wine.sh") + " " + quote(binaryDir()) + " run " +
           quote(binaryDir() / "bin" / (name + ".exe"));
#else
    return quote(binaryDir() / "bin" / name);
#endif
}

std::string toolArgument(const fs::path& path) { return shellWord(path.u8string()); }

CommandResult run(const std::string& command, const std::string& input)
{
    TempDir dir;
    const fs::path in = dir.path() / "in", out = dir.path() / "out", err = dir.path() / "err";
    writeBytes(in, Bytes(input.begin(), input.end()));
    CommandResult result;
    const std::string redirected = "(" + command + "\n) <" + quote(in) + " >" + quote(out) + " 2>" + quote(err);
#ifdef _WIN32
    // Under Wine cmd.exe cannot start a Linux program, but CreateProcess can, given its Linux path;
    // the process handle does not follow it, though. So sh runs the command and leaves its exit
    // status in a file, which is waited for. Nothing of sh's reaches the test's own outputs.
    const fs::path script = dir.path() / "command.sh", status = dir.path() / "status";
    const std::string text = "exec </dev/null >/dev/null 2>&1\n" + redirected + "\necho $? >" + quote(dir.path() / "status.part") +
                             " && mv " + quote(dir.path() / "status.part") + " " + quote(status) + "\n";
    writeBytes(script, Bytes(text.begin(), text.end()));
    std::wstring line = WideFromUtf8("/bin/sh \"" + unixName(script) + "\"");
    STARTUPINFOW startup = {};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process = {};
    if (!CreateProcessW(nullptr, &line[0], nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup, &process)) {
        ADD_FAILURE() << "cannot start /bin/sh for: " << command << " (error " << GetLastError() << ")";
        return result;
    }
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    // Ten minutes is far beyond any reader's time on any workbook of the tests.
    for (int waited = 0; !fs::exists(status) && waited < 600000; waited += 10) Sleep(10);
    if (!fs::exists(status)) {
        ADD_FAILURE() << "no exit status after ten minutes: " << command;
        return result;
    }
    std::ifstream(status) >> result.status;
#else
    int status = std::system(redirected.c_str());
    result.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
#endif
    Bytes o = readBytes(out), e = readBytes(err);
    result.out.assign(o.begin(), o.end());
    result.err.assign(e.begin(), e.end());
    return result;
}

bool haveProgram(const std::string& name)
{
    return run("command -v " + name).status == 0;
}

nlohmann::json xlrdDump(const fs::path& book)
{
    const fs::path script = sourceDir() / "tests" / "xls" / "xlrd_dump.py";
    CommandResult r = run("/usr/bin/python3 " + quote(script) + " " + quote(book));
    if (r.status != 0) {
        ADD_FAILURE() << "xlrd cannot read " << book << ": " << r.err;
        return nullptr;
    }
    return nlohmann::json::parse(r.out);
}

namespace {

Grid parseCsv(const std::string& text)
{
    Grid grid(1);
    std::string cell;
    bool quoted = false, any = false;
    for (size_t i = 0; i < text.size(); ++i) {
        char c = text[i];
        if (quoted) {
            if (c == '"' && i + 1 < text.size() && text[i + 1] == '"') {
                cell += '"';
                ++i;
            } else if (c == '"') {
                quoted = false;
            } else {
                cell += c;
            }
        } else if (c == '"') {
            quoted = any = true;
        } else if (c == ',') {
            grid.back().push_back(cell);
            cell.clear();
        } else if (c == '\n' || c == '\r') {
            if (c == '\r' && i + 1 < text.size() && text[i + 1] == '\n') ++i;
            grid.back().push_back(cell);
            cell.clear();
            grid.emplace_back();
        } else {
            cell += c;
            any = true;
        }
    }
    if (!cell.empty() || !grid.back().empty()) grid.back().push_back(cell);
    if (grid.back().empty()) grid.pop_back();
    return grid;
}

}  // namespace

std::map<std::string, Grid> libreOfficeCsv(const fs::path& book, const fs::path& workDir, bool formulas)
{
    const fs::path outDir = workDir / ("csv-" + book.stem().u8string() + (formulas ? "-formulas" : ""));
    fs::create_directories(outDir);
    // 44 comma, 34 quote, 76 UTF-8, values as stored (not as shown), formulas or their values, -1
    // every sheet to its own file
    const std::string filter = std::string("csv:Text - txt - csv (StarCalc):44,34,76,1,,0,false,true,false,") +
                               (formulas ? "true" : "false") + ",false,-1";
    CommandResult r = run("soffice -env:UserInstallation=file://" + quote(workDir / "lo-profile") +
                          " --headless --convert-to '" + filter + "' --outdir " + quote(outDir) + " " + quote(book));
    std::map<std::string, Grid> sheets;
    const std::string prefix = book.stem().u8string() + "-";
    for (const auto& entry : fs::directory_iterator(outDir)) {
        std::string name = entry.path().stem().u8string();
        if (name.rfind(prefix, 0) != 0) continue;
        Bytes bytes = readBytes(entry.path());
        sheets[name.substr(prefix.size())] = parseCsv(std::string(bytes.begin(), bytes.end()));
    }
    if (sheets.empty()) ADD_FAILURE() << "LibreOffice gave no CSV for " << book << ": " << r.err;
    return sheets;
}

std::vector<std::string> gnumericWarnings(const fs::path& book, const fs::path& workDir)
{
    CommandResult r = run("ssconvert -S " + quote(book) + " " + quote(workDir / "gnumeric_%n.csv"));
    std::vector<std::string> lines;
    std::istringstream in(r.err);
    for (std::string line; std::getline(in, line);) {
        // "** (ssconvert:1234): WARNING **: 12:34:56.789: text" -> "WARNING: text"
        size_t kind = line.find("): ");
        if (kind == std::string::npos || line.empty()) continue;
        std::string rest = line.substr(kind + 3);
        size_t stars = rest.find(" **: ");
        std::string level = rest.substr(0, stars);
        std::string text = stars == std::string::npos ? rest : rest.substr(stars + 5);
        if (text.size() > 14 && text[2] == ':' && text[5] == ':') text = text.substr(text.find(": ") + 2);
        lines.push_back(level + ": " + text);
    }
    if (r.status != 0) lines.push_back("ssconvert failed with status " + std::to_string(r.status));
    return lines;
}

std::string utf8(const std::u16string& text)
{
    std::string out;
    for (size_t i = 0; i < text.size(); ++i) {
        char32_t c = text[i];
        if (c >= 0xD800 && c <= 0xDBFF && i + 1 < text.size()) c = 0x10000 + ((c - 0xD800) << 10) + (text[++i] - 0xDC00);
        if (c < 0x80) {
            out += static_cast<char>(c);
        } else if (c < 0x800) {
            out += static_cast<char>(0xC0 | (c >> 6));
            out += static_cast<char>(0x80 | (c & 0x3F));
        } else if (c < 0x10000) {
            out += static_cast<char>(0xE0 | (c >> 12));
            out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
            out += static_cast<char>(0x80 | (c & 0x3F));
        } else {
            out += static_cast<char>(0xF0 | (c >> 18));
            out += static_cast<char>(0x80 | ((c >> 12) & 0x3F));
            out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
            out += static_cast<char>(0x80 | (c & 0x3F));
        }
    }
    return out;
}

std::u16string utf16(const std::string& text)
{
    std::u16string out;
    for (size_t i = 0; i < text.size();) {
        unsigned char b = static_cast<unsigned char>(text[i]);
        int extra = b < 0x80 ? 0 : b < 0xE0 ? 1 : b < 0xF0 ? 2 : 3;
        char32_t c = extra == 0 ? b : b & (0x3F >> extra);
        for (int k = 1; k <= extra; ++k) c = (c << 6) | (static_cast<unsigned char>(text[i + k]) & 0x3F);
        i += extra + 1;
        if (c >= 0x10000) {
            c -= 0x10000;
            out += static_cast<char16_t>(0xD800 + (c >> 10));
            out += static_cast<char16_t>(0xDC00 + (c & 0x3FF));
        } else {
            out += static_cast<char16_t>(c);
        }
    }
    return out;
}

Written bomCells(int rows)
{
    Written cells;
    const std::pair<std::pair<int, int>, const char16_t*> head[] = {
        {{1, 4}, u"宁波精密模塑有限公司"}, {{1, 8}, u"M24-0516"}, {{2, 1}, u"P-88231"},  {{2, 11}, u"王工"},
        {{4, 8}, u"280T"},                {{1, 1}, u"汽车门把手外壳"}, {{3, 1}, u"PA66+GF30"}, {{4, 1}, u"2.5mm"},
        {{3, 4}, u"两板模"},              {{2, 8}, u"ERP-2024-0091"}, {{3, 8}, u"SO-7781"}};
    for (const auto& h : head) cells[h.first] = h.second;
    const int columns[] = {0, 1, 3, 5, 7, 9, 11, 13, 14, 15, 16, 17};
    for (int i = 0; i < rows; ++i) {
        const std::string n = std::to_string(i + 1);
        const std::string texts[] = {n,
                                     u8"顶针" + n,
                                     u8"Φ" + std::to_string(2 + i % 10) + "x" + std::to_string(100 + i),
                                     i % 3 == 0 ? "MISUMI" : u8"盘起",
                                     std::to_string(1 + i % 8),
                                     i % 2 == 0 ? u8"淬火" : u8"氮化",
                                     u8"备注" + n,
                                     i % 2 == 0 ? "SKD61" : "SUJ2",
                                     u8"供应商" + std::to_string(i % 7),
                                     std::to_string(3 + i % 20),
                                     u8"待采购",
                                     "2024-05-06 12:" + std::to_string(10 + i % 50)};
        for (int k = 0; k < 12; ++k) cells[{6 + i, columns[k]}] = utf16(texts[k]);
    }
    return cells;
}

void writeWorkbook(const fs::path& from, const fs::path& to, const Written& cells, int sheetIndex)
{
    xls::Book book;
    ASSERT_TRUE(book.load(osPath(from).c_str())) << from << ": " << book.errorMessage();
    xls::Sheet* sheet = book.getSheet(sheetIndex < 0 ? book.activeSheet() : sheetIndex);
    ASSERT_NE(nullptr, sheet) << book.errorMessage();
    for (const auto& cell : cells) {
        const std::u16string& text = cell.second;
        ASSERT_TRUE(sheet->writeStrUtf16(cell.first.first, cell.first.second,
                                         reinterpret_cast<const unsigned short*>(text.data()), text.size()))
            << book.errorMessage();
    }
    ASSERT_TRUE(book.save(osPath(to).c_str())) << book.errorMessage();
}

nlohmann::json writeAndCompare(const Bytes& file, const Written& cells)
{
    TempDir dir;
    writeBytes(dir / "in.xls", file);
    writeWorkbook(dir / "in.xls", dir / "out.xls", cells, 0);
    if (::testing::Test::HasFatalFailure()) return nullptr;
    nlohmann::json after = xlrdDump(dir / "out.xls");
    expectOnlyWrittenCellsChanged(xlrdDump(dir / "in.xls"), after, 0, cells);
    expectWellFormedStream(workbookStream(readBytes(dir / "out.xls")), 0);
    return after;
}

void expectOnlyWrittenCellsChanged(const nlohmann::json& before, const nlohmann::json& after, int sheet,
                                   const Written& written)
{
    ASSERT_FALSE(before.is_null());
    ASSERT_FALSE(after.is_null());
    for (const char* key : {"names", "xf_count", "font_count", "format_count", "active"})
        EXPECT_EQ(before[key], after[key]) << key << " changed";
    ASSERT_EQ(before["sheets"].size(), after["sheets"].size());
    for (size_t s = 0; s < before["sheets"].size(); ++s) {
        const auto& b = before["sheets"][s];
        const auto& a = after["sheets"][s];
        if (static_cast<int>(s) != sheet) {
            EXPECT_EQ(b, a) << "sheet " << s << " (" << b["name"].get<std::string>() << ") changed";
            continue;
        }
        for (const char* key : {"name", "visibility", "merged", "colinfo", "default_row_height"})
            EXPECT_EQ(b[key], a[key]) << key << " of the written sheet changed";
        // Expected cells: the template's, with the written ones replaced or added.
        std::map<std::pair<int, int>, nlohmann::json> expected, got;
        for (const auto& c : b["cells"]) expected[{c[0].get<int>(), c[1].get<int>()}] = c;
        for (const auto& c : a["cells"]) got[{c[0].get<int>(), c[1].get<int>()}] = c;
        int rows = b["nrows"].get<int>(), cols = b["ncols"].get<int>();
        for (const auto& w : written) {
            const int r = w.first.first, c = w.first.second;
            int xf = 15;
            auto old = expected.find(w.first);
            const std::string rowKey = std::to_string(r), colKey = std::to_string(c);
            if (old != expected.end())
                xf = old->second[4].get<int>();
            else if (b["rowinfo"].contains(rowKey) && b["rowinfo"][rowKey][2].get<int>() >= 0)
                xf = b["rowinfo"][rowKey][2].get<int>();
            else if (b["colinfo"].contains(colKey))
                xf = b["colinfo"][colKey][1].get<int>();
            expected[w.first] = nlohmann::json::array({r, c, 1, utf8(w.second), xf});
            rows = std::max(rows, r + 1);
            cols = std::max(cols, c + 1);
        }
        EXPECT_EQ(rows, a["nrows"].get<int>());
        EXPECT_EQ(cols, a["ncols"].get<int>());
        for (const auto& e : expected) {
            auto g = got.find(e.first);
            if (g == got.end()) {
                ADD_FAILURE() << "cell (" << e.first.first << ", " << e.first.second << ") is missing";
                continue;
            }
            EXPECT_EQ(e.second, g->second) << "cell (" << e.first.first << ", " << e.first.second << ")";
        }
        for (const auto& g : got)
            EXPECT_TRUE(expected.count(g.first)) << "unexpected cell (" << g.first.first << ", " << g.first.second << ")";
        for (const auto& row : b["rowinfo"].items())
            EXPECT_EQ(row.value(), a["rowinfo"][row.key()]) << "row " << row.key() << " format or height changed";
        // A new row has the sheet's default height; 255 twips when the sheet gives none.
        const nlohmann::json height = b["default_row_height"].is_null() ? nlohmann::json(255) : b["default_row_height"];
        for (const auto& row : a["rowinfo"].items()) {
            if (b["rowinfo"].contains(row.key())) continue;
            EXPECT_EQ(height, row.value()[0]) << "new row " << row.key() << " height";
        }
    }
}

Bytes le16(std::initializer_list<unsigned> values)
{
    Bytes out;
    for (unsigned v : values) {
        out.push_back(static_cast<unsigned char>(v));
        out.push_back(static_cast<unsigned char>(v >> 8));
    }
    return out;
}

Bytes le32(std::initializer_list<uint32_t> values)
{
    Bytes out;
    for (uint32_t v : values)
        for (int k = 0; k < 4; ++k) out.push_back(static_cast<unsigned char>(v >> (8 * k)));
    return out;
}

Bytes cat(std::initializer_list<Bytes> parts)
{
    Bytes out;
    for (const Bytes& p : parts) out.insert(out.end(), p.begin(), p.end());
    return out;
}

BookBuilder& BookBuilder::activeTab(int tab)
{
    activeTab_ = tab;
    return *this;
}

BookBuilder& BookBuilder::cellXfs(int count)
{
    cellXfs_ = count;
    return *this;
}

BookBuilder& BookBuilder::globalsRecord(uint16_t type, const Bytes& data)
{
    globals_.emplace_back(type, data);
    return *this;
}

BookBuilder& BookBuilder::sheet(const std::string& name)
{
    return sheet(name, 0, 0x0010);
}

BookBuilder& BookBuilder::sheet(const std::string& name, uint8_t listedType, uint16_t bofType)
{
    sheets_.push_back({name, listedType, bofType, {}});
    return *this;
}

BookBuilder& BookBuilder::record(uint16_t type, const Bytes& data)
{
    sheets_.back().records.emplace_back(type, data);
    return *this;
}

namespace {

void put(Bytes& out, uint16_t type, const Bytes& data)
{
    Bytes header = le16({type, static_cast<unsigned>(data.size())});
    out.insert(out.end(), header.begin(), header.end());
    out.insert(out.end(), data.begin(), data.end());
}

}  // namespace

Bytes BookBuilder::stream() const
{
    Bytes out;
    put(out, 0x0809, cat({le16({0x0600, 0x0005, 0x0DBB, 0x07CC}), le32({0, 6})}));
    put(out, 0x0042, le16({1200}));
    put(out, 0x003D, le16({0, 0, 0x3000, 0x2000, 0x38, static_cast<unsigned>(activeTab_), 0, 1, 0x258}));
    Bytes font = cat({le16({200, 0, 0x7FFF, 400, 0}), Bytes{0, 0, 0, 0, 5, 0, 'A', 'r', 'i', 'a', 'l'}});
    for (int i = 0; i < 5; ++i) put(out, 0x0031, font);
    for (int i = 0; i < 15 + cellXfs_; ++i)
        put(out, 0x00E0, cat({le16({0, 0, i < 15 ? 0xFFF5u : 0x0001u, 0x20, 0}), le32({0, 0}), le16({0x20C0})}));
    put(out, 0x0293, cat({le16({0x8000}), Bytes{0, 0xFF}}));
    for (const auto& r : globals_) put(out, r.first, r.second);
    std::vector<size_t> boundSheets;
    for (const Sheet& s : sheets_) {
        boundSheets.push_back(out.size());
        Bytes data = cat({le32({0}), Bytes{0, s.listedType,
                                           static_cast<unsigned char>(s.name.size()), 0}});
        data.insert(data.end(), s.name.begin(), s.name.end());
        put(out, 0x0085, data);
    }
    put(out, 0x000A, {});
    for (size_t k = 0; k < sheets_.size(); ++k) {
        const uint32_t pos = static_cast<uint32_t>(out.size());
        for (int i = 0; i < 4; ++i) out[boundSheets[k] + 4 + i] = static_cast<unsigned char>(pos >> (8 * i));
        put(out, 0x0809, cat({le16({0x0600, sheets_[k].bofType, 0x0DBB, 0x07CC}), le32({0, 6})}));
        for (const auto& r : sheets_[k].records) put(out, r.first, r.second);
        put(out, 0x000A, {});
    }
    return out;
}

Bytes BookBuilder::file() const { return compoundFile({{"Workbook", stream()}}); }

Bytes compoundFile(const std::vector<std::pair<std::string, Bytes>>& streams)
{
    xls::CompoundFile cf;
    cf.entries.resize(1 + streams.size());
    auto entry = [](xls::DirEntry& e, const std::string& name, unsigned type) {
        std::fill(std::begin(e.raw), std::end(e.raw), 0);
        for (size_t i = 0; i < name.size(); ++i) e.raw[2 * i] = static_cast<unsigned char>(name[i]);
        e.raw[0x40] = static_cast<unsigned char>(2 * (name.size() + 1));
        e.raw[0x42] = static_cast<unsigned char>(type);
        e.raw[0x43] = 1;
        for (int off : {0x44, 0x48, 0x4C})
            for (int k = 0; k < 4; ++k) e.raw[off + k] = 0xFF;
    };
    auto link = [](xls::DirEntry& e, int off, uint32_t id) {
        for (int k = 0; k < 4; ++k) e.raw[off + k] = static_cast<unsigned char>(id >> (8 * k));
    };
    entry(cf.entries[0], "Root Entry", xls::kEntryRoot);
    // Directory order: shorter names first, then by upper-cased code units.
    std::vector<size_t> order(streams.size());
    for (size_t i = 0; i < order.size(); ++i) order[i] = i;
    std::sort(order.begin(), order.end(), [&](size_t a, size_t b) {
        std::string x = streams[a].first, y = streams[b].first;
        if (x.size() != y.size()) return x.size() < y.size();
        std::transform(x.begin(), x.end(), x.begin(), ::toupper);
        std::transform(y.begin(), y.end(), y.begin(), ::toupper);
        return x < y;
    });
    for (size_t i = 0; i < streams.size(); ++i) {
        entry(cf.entries[1 + i], streams[i].first, xls::kEntryStream);
        cf.entries[1 + i].data = streams[i].second;
    }
    if (!order.empty()) link(cf.entries[0], 0x4C, static_cast<uint32_t>(1 + order[0]));
    for (size_t k = 0; k + 1 < order.size(); ++k)
        link(cf.entries[1 + order[k]], 0x48, static_cast<uint32_t>(1 + order[k + 1]));
    Bytes out;
    cf.write(out, -1, Bytes());
    return out;
}

std::vector<Rec> records(const Bytes& stream)
{
    std::vector<Rec> out;
    for (size_t pos = 0; pos + 4 <= stream.size();) {
        uint16_t type = static_cast<uint16_t>(stream[pos] | (stream[pos + 1] << 8));
        size_t size = stream[pos + 2] | (stream[pos + 3] << 8);
        if (pos + 4 + size > stream.size()) break;
        out.push_back({static_cast<uint32_t>(pos), type, Bytes(stream.begin() + pos + 4, stream.begin() + pos + 4 + size)});
        pos += 4 + size;
    }
    return out;
}

Bytes workbookStream(const Bytes& file)
{
    xls::CompoundFile cf;
    std::string error;
    EXPECT_TRUE(cf.read(file.data(), file.size(), error)) << error;
    int id = cf.findRootStream("Workbook");
    EXPECT_GE(id, 0);
    return id >= 0 ? cf.entries[id].data : Bytes();
}

uint16_t u16at(const Bytes& d, size_t at) { return static_cast<uint16_t>(d.at(at) | (d.at(at + 1) << 8)); }
uint32_t u32at(const Bytes& d, size_t at) { return u16at(d, at) | (static_cast<uint32_t>(u16at(d, at + 2)) << 16); }

namespace {

bool isCell(uint16_t type)
{
    switch (type) {
    case 0x0201: case 0x00BE: case 0x027E: case 0x00BD: case 0x0203: case 0x00FD: case 0x0204:
    case 0x00D6: case 0x0205: case 0x0006:
        return true;
    default:
        return false;
    }
}

// Reads the SST chain starting at record `first`; returns the string starts (stream positions)
// and the start of the record holding each.
void checkSst(const std::vector<Rec>& recs, size_t first, std::vector<uint32_t>& starts, std::vector<uint32_t>& holders)
{
    std::vector<const Rec*> chain{&recs[first]};
    for (size_t i = first + 1; i < recs.size() && recs[i].type == 0x003C; ++i) chain.push_back(&recs[i]);
    size_t k = 0, off = 8;
    const uint32_t unique = u32at(chain[0]->data, 4);
    auto byte = [&](bool raw) -> int {
        while (off >= chain[k]->data.size()) {
            if (!raw || ++k >= chain.size()) return -1;
            off = 0;
        }
        return chain[k]->data[off++];
    };
    for (uint32_t s = 0; s < unique; ++s) {
        if (off >= chain[k]->data.size() && k + 1 < chain.size()) {
            ++k;
            off = 0;
        }
        ASSERT_LT(off, chain[k]->data.size()) << "string " << s << " of " << unique << " is missing";
        starts.push_back(chain[k]->pos + 4 + static_cast<uint32_t>(off));
        holders.push_back(chain[k]->pos);
        const Bytes& d = chain[k]->data;
        const size_t cch = u16at(d, off);
        const int flags = d.at(off + 2);
        size_t header = 3 + ((flags & 8) ? 2 : 0) + ((flags & 4) ? 4 : 0);
        const size_t runs = (flags & 8) ? u16at(d, off + 3) : 0;
        const size_t ext = (flags & 4) ? u32at(d, off + 3 + ((flags & 8) ? 2 : 0)) : 0;
        size_t width = (flags & 1) ? 2 : 1;
        ASSERT_LE(off + header + (cch > 0 ? width : 0), d.size()) << "string " << s << ": header and first character split";
        off += header;
        for (size_t left = cch; left > 0;) {
            if (off == chain[k]->data.size()) {
                ASSERT_LT(k + 1, chain.size()) << "string " << s << " runs past the SST";
                ++k;
                off = 0;
                width = (byte(false) & 1) ? 2 : 1;
                continue;
            }
            ASSERT_GE(chain[k]->data.size() - off, width) << "string " << s << ": a UTF-16 unit is split";
            const size_t take = std::min(left, (chain[k]->data.size() - off) / width);
            if (width == 2 && take < left) {
                const uint16_t last = u16at(chain[k]->data, off + 2 * (take - 1));
                EXPECT_FALSE(last >= 0xD800 && last <= 0xDBFF) << "string " << s << ": a surrogate pair is split";
            }
            off += take * width;
            left -= take;
        }
        for (size_t n = 4 * runs + ext; n > 0; --n) ASSERT_GE(byte(true), 0) << "string " << s << " runs past the SST";
    }
    EXPECT_TRUE(k == chain.size() - 1 && off == chain[k]->data.size()) << "bytes after the last string of the SST";
}

}  // namespace

void expectWellFormedStream(const Bytes& stream, int writtenSheet)
{
    const std::vector<Rec> recs = records(stream);
    std::map<uint32_t, size_t> at;
    for (size_t i = 0; i < recs.size(); ++i) {
        at[recs[i].pos] = i;
        EXPECT_LE(recs[i].data.size(), 8224u) << "record " << i << " type " << recs[i].type;
    }
    auto typeAt = [&](uint32_t pos) -> int { return at.count(pos) ? recs[at[pos]].type : -1; };
    // Globals.
    std::vector<uint32_t> sheetStarts, starts, holders;
    size_t i = 0;
    for (; i < recs.size() && recs[i].type != 0x000A; ++i) {
        if (recs[i].type == 0x0085) {
            sheetStarts.push_back(u32at(recs[i].data, 0));
            EXPECT_EQ(0x0809, typeAt(sheetStarts.back())) << "BOUNDSHEET8 " << sheetStarts.size() - 1;
        } else if (recs[i].type == 0x00FC) {
            ASSERT_NO_FATAL_FAILURE(checkSst(recs, i, starts, holders));
        } else if (recs[i].type == 0x00FF) {
            const uint32_t dsst = u16at(recs[i].data, 0);
            for (size_t b = 0; 2 + 8 * b + 8 <= recs[i].data.size(); ++b) {
                const uint32_t ib = u32at(recs[i].data, 2 + 8 * b), cb = u16at(recs[i].data, 6 + 8 * b);
                ASSERT_LT(b * dsst, starts.size());
                EXPECT_EQ(starts[b * dsst], ib) << "EXTSST bucket " << b;
                EXPECT_EQ(starts[b * dsst] - holders[b * dsst], cb) << "EXTSST bucket " << b;
            }
        }
    }
    // Sheets.
    for (size_t sheet = 0; sheet < sheetStarts.size(); ++sheet) {
        size_t s = at[sheetStarts[sheet]], depth = 0;
        const bool written = static_cast<int>(sheet) == writtenSheet;
        std::vector<uint32_t> dbcells;
        uint32_t dims[4] = {0, 0, 0, 0};
        std::map<int, std::pair<int, int>> rowRanges;
        int lastRow = -1, lastCol = -1;
        for (size_t j = s; j < recs.size(); ++j) {
            const Rec& r = recs[j];
            if (r.type == 0x0809) ++depth;
            if (r.type == 0x000A && --depth == 0) break;
            if (depth != 1) continue;
            if (!written && r.type != 0x020B) continue;
            if (r.type == 0x020B) {
                for (size_t k = 16; k + 4 <= r.data.size(); k += 4) dbcells.push_back(u32at(r.data, k));
            } else if (r.type == 0x0200) {
                for (int k = 0; k < 2; ++k) dims[k] = u32at(r.data, 4 * k);
                for (int k = 0; k < 2; ++k) dims[2 + k] = u16at(r.data, 8 + 2 * k);
            } else if (r.type == 0x0208) {
                rowRanges[u16at(r.data, 0)] = {u16at(r.data, 2), u16at(r.data, 4)};
            } else if (r.type == 0x00D7) {
                const uint32_t firstRow = r.pos - u32at(r.data, 0);
                ASSERT_EQ(0x0208, typeAt(firstRow)) << "DBCELL at " << r.pos << " does not lead to a ROW";
                uint32_t p = firstRow + 20;
                for (size_t k = 4; k + 2 <= r.data.size(); k += 2) {
                    p += u16at(r.data, k);
                    const uint16_t rw = u16at(recs[at[firstRow] + (k - 4) / 2].data, 0);
                    const int t = typeAt(p);
                    // A row with cells: its first cell starts there; a row without: the next row's, or the DBCELL.
                    EXPECT_TRUE(t == 0x00D7 || isCell(static_cast<uint16_t>(t))) << "DBCELL offset to row " << rw;
                    if (isCell(static_cast<uint16_t>(t))) {
                        EXPECT_GE(u16at(recs[at[p]].data, 0), rw) << "DBCELL offset to row " << rw;
                    }
                }
            } else if (isCell(r.type)) {
                const int row = u16at(r.data, 0), col = u16at(r.data, 2);
                int last = col;
                if (r.type == 0x00BE || r.type == 0x00BD) {
                    last = u16at(r.data, r.data.size() - 2);
                    EXPECT_EQ(r.data.size(), 6u + (r.type == 0x00BE ? 2u : 6u) * (last - col + 1)) << "run length";
                    EXPECT_GT(last, col) << "a run of one cell";
                }
                EXPECT_TRUE(row > lastRow || (row == lastRow && col > lastCol))
                    << "cell (" << row << ", " << col << ") out of order or twice";
                lastRow = row;
                lastCol = last;
                EXPECT_TRUE(row >= static_cast<int>(dims[0]) && row < static_cast<int>(dims[1]) &&
                            col >= static_cast<int>(dims[2]) && last < static_cast<int>(dims[3]))
                    << "cell (" << row << ", " << col << ") outside DIMENSIONS";
                if (rowRanges.count(row)) {
                    EXPECT_GE(col, rowRanges[row].first) << "cell (" << row << ", " << col << ") before its ROW's colMic";
                    EXPECT_LT(last, rowRanges[row].second) << "cell (" << row << ", " << last << ") after its ROW's colMac";
                }
            }
        }
        for (uint32_t p : dbcells) EXPECT_EQ(0x00D7, typeAt(p)) << "INDEX entry " << p << " is not a DBCELL";
    }
}

// Header (4096 bytes) | large streams | mini stream | MiniFAT | directory | FAT; at most 109 FAT
// sectors, which covers any fixture.
Bytes asVersion4(const Bytes& file)
{
    const size_t ss = 4096, per = ss / 4;
    xls::CompoundFile cf;
    std::string error;
    EXPECT_TRUE(cf.read(file.data(), file.size(), error)) << error;
    std::vector<Bytes> sectors;
    std::vector<uint32_t> fat;
    auto chain = [&](const Bytes& data) -> uint32_t {
        if (data.empty()) return 0xFFFFFFFEu;
        const uint32_t first = static_cast<uint32_t>(sectors.size());
        for (size_t at = 0; at < data.size(); at += ss) {
            Bytes s(ss, 0);
            std::copy(data.begin() + at, data.begin() + std::min(data.size(), at + ss), s.begin());
            sectors.push_back(s);
            fat.push_back(at + ss < data.size() ? static_cast<uint32_t>(sectors.size()) : 0xFFFFFFFEu);
        }
        return first;
    };
    Bytes mini, miniFat;
    std::vector<uint32_t> starts(cf.entries.size(), 0xFFFFFFFEu);
    for (size_t i = 1; i < cf.entries.size(); ++i) {
        const Bytes& d = cf.entries[i].data;
        if (cf.entries[i].raw[0x42] != xls::kEntryStream || d.empty()) continue;
        if (d.size() >= 4096) {
            starts[i] = chain(d);
            continue;
        }
        starts[i] = static_cast<uint32_t>(mini.size() / 64);
        const size_t count = (d.size() + 63) / 64;
        for (size_t k = 0; k < count; ++k) {
            Bytes id = le32({k + 1 < count ? starts[i] + static_cast<uint32_t>(k) + 1 : 0xFFFFFFFEu});
            miniFat.insert(miniFat.end(), id.begin(), id.end());
        }
        mini.insert(mini.end(), d.begin(), d.end());
        mini.resize(starts[i] * 64 + count * 64, 0);
    }
    const uint32_t miniStart = chain(mini), miniFatStart = chain(miniFat);
    Bytes dir;
    for (size_t i = 0; i < cf.entries.size(); ++i) {
        Bytes e(cf.entries[i].raw, cf.entries[i].raw + 128);
        uint32_t start = i == 0 ? miniStart : starts[i];
        uint32_t size = static_cast<uint32_t>(i == 0 ? mini.size() : cf.entries[i].data.size());
        if (i == 0 || e[0x42] == xls::kEntryStream) {
            for (int k = 0; k < 4; ++k) e[0x74 + k] = static_cast<unsigned char>(start >> (8 * k));
            for (int k = 0; k < 4; ++k) e[0x78 + k] = static_cast<unsigned char>(size >> (8 * k));
            for (int k = 0; k < 4; ++k) e[0x7C + k] = 0;
        }
        dir.insert(dir.end(), e.begin(), e.end());
    }
    while (dir.size() % ss != 0) {
        Bytes e(128, 0);
        for (int k = 0x44; k < 0x50; ++k) e[k] = 0xFF;
        dir.insert(dir.end(), e.begin(), e.end());
    }
    const uint32_t dirSectors = static_cast<uint32_t>(dir.size() / ss), dirStart = chain(dir);
    const size_t fatSectors = (sectors.size() + per) / per;  // room for the FAT's own sectors
    const uint32_t fatStart = static_cast<uint32_t>(sectors.size());
    for (size_t k = 0; k < fatSectors; ++k) {
        sectors.emplace_back(ss, 0);
        fat.push_back(0xFFFFFFFDu);
    }
    fat.resize(fatSectors * per, 0xFFFFFFFFu);
    for (size_t k = 0; k < fatSectors; ++k)
        for (size_t j = 0; j < per; ++j)
            for (int b = 0; b < 4; ++b) sectors[fatStart + k][4 * j + b] = static_cast<unsigned char>(fat[k * per + j] >> (8 * b));
    Bytes out(ss, 0);
    std::copy(file.begin(), file.begin() + 8, out.begin());
    Bytes h = cat({le16({0x3E, 4, 0xFFFE, 12, 6, 0, 0, 0}), le32({dirSectors, static_cast<uint32_t>(fatSectors), dirStart, 0,
                                                                 4096, miniFat.empty() ? 0xFFFFFFFEu : miniFatStart,
                                                                 static_cast<uint32_t>((miniFat.size() + ss - 1) / ss),
                                                                 0xFFFFFFFEu, 0})});
    std::copy(h.begin(), h.end(), out.begin() + 0x18);
    for (size_t k = 0; k < 109; ++k) {
        Bytes id = le32({k < fatSectors ? fatStart + static_cast<uint32_t>(k) : 0xFFFFFFFFu});
        std::copy(id.begin(), id.end(), out.begin() + 0x4C + 4 * k);
    }
    for (const Bytes& s : sectors) out.insert(out.end(), s.begin(), s.end());
    return out;
}

std::map<std::string, Bytes> otherStreams(const Bytes& file)
{
    xls::CompoundFile cf;
    std::string error;
    EXPECT_TRUE(cf.read(file.data(), file.size(), error)) << error;
    std::map<std::string, Bytes> out;
    std::function<void(uint32_t, const std::string&)> walk = [&](uint32_t id, const std::string& folder) {
        if (id >= cf.entries.size()) return;
        const unsigned char* raw = cf.entries[id].raw;
        std::string name;
        for (int k = 0; k < 32 && (raw[2 * k] != 0 || raw[2 * k + 1] != 0); ++k) name += static_cast<char>(raw[2 * k]);
        walk(u32at(Bytes(raw, raw + 128), 0x44), folder);
        walk(u32at(Bytes(raw, raw + 128), 0x48), folder);
        if (raw[0x42] == xls::kEntryStorage) walk(u32at(Bytes(raw, raw + 128), 0x4C), folder + name + "/");
        if (raw[0x42] == xls::kEntryStream && !(folder.empty() && name == "Workbook"))
            out[folder + name] = cf.entries[id].data;
    };
    walk(u32at(Bytes(cf.entries[0].raw, cf.entries[0].raw + 128), 0x4C), "");
    return out;
}

std::vector<std::pair<uint16_t, Bytes>> otherSubstreams(const Bytes& stream)
{
    std::vector<std::pair<uint16_t, Bytes>> out;
    int depth = 0, count = 0;
    for (const Rec& r : records(stream)) {
        if (r.type == 0x0809 && depth++ == 0) ++count;
        if (count > 2) out.emplace_back(r.type, r.type == 0x020B ? Bytes() : r.data);
        if (r.type == 0x000A && depth > 0) --depth;
    }
    return out;
}

}  // namespace xlstest
