#ifndef VORNADEL_TESTS_XLS_SUPPORT_H
#define VORNADEL_TESTS_XLS_SUPPORT_H

// Helpers of the workbook engine's tests: fixture paths, files, external readers (xlrd,
// LibreOffice, Gnumeric), a builder of small BIFF8 workbooks record by record, and the check that
// a saved workbook differs from its template only in the cells written.

#include <nlohmann/json.hpp>

#include <cstdint>
#include <filesystem>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace xlstest {

namespace fs = std::filesystem;
using Bytes = std::vector<unsigned char>;

fs::path sourceDir();
fs::path dataDir();         // tests/xls/data
fs::path bundledTemplate(); // samples/config/塑胶模/模具标准件申购表.xls
fs::path binaryDir();       // the build's top folder

Bytes readBytes(const fs::path& path);
void writeBytes(const fs::path& path, const Bytes& bytes);

// A fresh folder under the system's temporary folder, removed with everything in it.
class TempDir {
public:
    TempDir();
    ~TempDir();
    const fs::path& path() const { return path_; }
    fs::path operator/(const std::string& name) const { return path_ / fs::u8path(name); }

private:
    fs::path path_;
};

// Drive X: on a fresh temporary folder while the object lives, through the drive table of the
// POSIX layer (VORNADEL_DRIVES). Windows has no drive table: there a path "on X:" is the
// folder's own Windows path.
class DriveX {
public:
    DriveX();
    ~DriveX();
    const TempDir& folder() const { return folder_; }
    // "X:\\" + rest, rest in GBK with backslashes, as the plug-in forms paths.
    std::string path(const std::string& rest) const;

private:
    TempDir folder_;
    std::string saved_;
    bool hadDrives_ = false;
};

struct CommandResult {
    int status = -1;
    std::string out, err;
};
// Runs a shell command (sh, on Windows too: there Wine starts it) with the given standard input;
// captures both outputs.
CommandResult run(const std::string& command, const std::string& input = "");
// A path as a word of such a command (on Windows: Wine's Linux name for it).
std::string quote(const fs::path& path);
// The command word that starts the build's own program bin/<name> (on Windows: through Wine),
// and a path as a word of its arguments (on Windows: the Windows path).
std::string toolCommand(const std::string& name);
std::string toolArgument(const fs::path& path);
// A path as the engine and the C library take it: on Windows in the system code page.
std::string osPath(const fs::path& path);
bool haveProgram(const std::string& name);

// xlrd's view of a workbook (tests/xls/xlrd_dump.py). Fails the test (and returns null) when xlrd
// cannot open it.
nlohmann::json xlrdDump(const fs::path& book);

// LibreOffice's CSV of every sheet, by sheet name: rows of cells (UTF-8).
using Grid = std::vector<std::vector<std::string>>;
// With formulas, a formula cell gives its formula (e.g. "=C3*1.5") instead of its value.
std::map<std::string, Grid> libreOfficeCsv(const fs::path& book, const fs::path& workDir, bool formulas = false);
// The lines Gnumeric's ssconvert writes to standard error when it reads the workbook.
std::vector<std::string> gnumericWarnings(const fs::path& book, const fs::path& workDir);

std::string utf8(const std::u16string& text);
std::u16string utf16(const std::string& utf8Text);

// Cells to write, (row, col) -> text.
using Written = std::map<std::pair<int, int>, std::u16string>;

// The cells of the export: the 11 head cells and `rows` part rows of 12 cells from row 6, every
// text different (Chinese, ASCII, digits), as the BOM export writes them.
Written bomCells(int rows);

// Loads from, writes every cell into sheet `sheet` (the active one when -1), saves to to; fails
// the test on any engine error.
void writeWorkbook(const fs::path& from, const fs::path& to, const Written& cells, int sheet = -1);

// Writes the cells into the first sheet of the workbook `file` (bytes), saves, and compares xlrd's
// views of input and output as expectOnlyWrittenCellsChanged does; returns the output's view.
nlohmann::json writeAndCompare(const Bytes& file, const Written& cells);

// Compares xlrd's views: `after` must equal `before` but for the written cells of sheet `sheet`,
// which must hold their text as string cells with the XF Excel's rules give (the cell's own,
// else the row's, else the column's, else 15); new rows have the default height.
void expectOnlyWrittenCellsChanged(const nlohmann::json& before, const nlohmann::json& after, int sheet,
                                   const Written& written);

// A workbook assembled record by record, for record-level tests.
class BookBuilder {
public:
    // Globals: BOF, CODEPAGE, WINDOW1 (active tab), 5 FONTs, 15 style XFs and cellXfs cell XFs,
    // STYLE, BOUNDSHEET8 per sheet, optional SST records, EOF.
    BookBuilder& activeTab(int tab);
    BookBuilder& cellXfs(int count);
    BookBuilder& globalsRecord(uint16_t type, const Bytes& data);  // before the BOUNDSHEETs
    BookBuilder& sheet(const std::string& asciiName);                // a worksheet
    // A sheet of another kind: BOUNDSHEET8.dt listedType (1 macro, 2 chart, 6 module), BOF.dt bofType.
    BookBuilder& sheet(const std::string& asciiName, uint8_t listedType, uint16_t bofType);
    // Records of the current sheet after its BOF (the builder adds nothing else but EOF).
    BookBuilder& record(uint16_t type, const Bytes& data);
    Bytes stream() const;          // the Workbook stream
    Bytes file() const;            // the stream in a compound file
private:
    struct Sheet {
        std::string name;
        uint8_t listedType = 0;
        uint16_t bofType = 0x0010;
        std::vector<std::pair<uint16_t, Bytes>> records;
    };
    int activeTab_ = 0, cellXfs_ = 1;
    std::vector<std::pair<uint16_t, Bytes>> globals_;
    std::vector<Sheet> sheets_;
};

// Little-endian field builders for record data.
Bytes le16(std::initializer_list<unsigned> values);
Bytes le32(std::initializer_list<uint32_t> values);
Bytes cat(std::initializer_list<Bytes> parts);
// Little-endian fields read back, at a byte offset (out of range: std::out_of_range).
uint16_t u16at(const Bytes& bytes, size_t at);
uint32_t u32at(const Bytes& bytes, size_t at);

// A compound file (version 3) holding the given streams under the root, in this order.
Bytes compoundFile(const std::vector<std::pair<std::string, Bytes>>& streams);

// The same compound file rewritten as version 4 (4096-byte sectors), as Excel writes large files.
Bytes asVersion4(const Bytes& file);

// Records of a Workbook stream: (position, type, data).
struct Rec {
    uint32_t pos;
    uint16_t type;
    Bytes data;
};
std::vector<Rec> records(const Bytes& stream);
// The Workbook stream of a saved file, read with the engine's compound-file reader.
Bytes workbookStream(const Bytes& file);

// Each stream of a compound file by its path ("_VBA_PROJECT_CUR/VBA/dir"), Workbook left out.
std::map<std::string, Bytes> otherStreams(const Bytes& file);
// Every record of a Workbook stream after the first sheet's substream (the globals' and the first
// sheet's are the first two BOFs), INDEX without its stream positions, which move when the string
// table grows.
std::vector<std::pair<uint16_t, Bytes>> otherSubstreams(const Bytes& stream);

// Checks what Excel relies on and the other readers ignore, record by record: no record data
// above 8224 bytes; each BOUNDSHEET8 position lands on its sheet's BOF; the SST holds exactly
// cstUnique strings, split by the CONTINUE rules, and each EXTSST entry points at its string; in
// each sheet each INDEX entry lands on a DBCELL. In the sheet that was written (its cell table is
// the engine's; the others keep their writer's), each DBCELL leads back to its first ROW and to
// the first cell of each of its rows, and cells are in ascending order without duplicates, inside
// DIMENSIONS and their ROW's column range.
void expectWellFormedStream(const Bytes& stream, int writtenSheet);

}  // namespace xlstest

#endif
