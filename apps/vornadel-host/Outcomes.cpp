#include "Outcomes.hpp"

#include <cctype>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>

#ifdef _WIN32
#include <io.h>
#else
#include <unistd.h>
#endif

#include <uf_attr.h>

#include "HostSession.hpp"
#include "Snapshot.hpp"
#include "XlsBook.h"

namespace fs = std::filesystem;

namespace runner {

namespace {

// The export's success box: its title, and its text up to the workbook's path.
const char kExportTitle[] = u8"标准件BOM";
const char kExportSaid[] = u8"导出标准件BOM成功！\n文件路径：";

// "C:\out\A100\x.xls" -> "C:\out\A100"; "" when there is no "\".
std::string WindowsParent(const std::string& path) {
    const size_t slash = path.find_last_of('\\');
    return slash == std::string::npos ? std::string() : path.substr(0, slash);
}

bool DriveMapped(const std::string& table, char letter) {
    const char upper = static_cast<char>(std::toupper(static_cast<unsigned char>(letter)));
    for (size_t start = 0; start <= table.size();) {
        size_t end = table.find(';', start);
        if (end == std::string::npos) end = table.size();
        if (end - start > 2 && table[start + 1] == '=' &&
            std::toupper(static_cast<unsigned char>(table[start])) == upper)
            return true;
        start = end + 1;
    }
    return false;
}

bool Writable(const fs::path& folder) {
#ifdef _WIN32
    return _waccess(folder.c_str(), 2) == 0;
#else
    return access(folder.c_str(), W_OK) == 0;
#endif
}

// The tree rows (as "2.1") and column titles whose cell holds value, in the rows that stand for
// the body with this tag.
std::vector<std::string> CellsHolding(host::LiveDialog& dialog, unsigned int tag, const std::string& value) {
    const TreeView tree = ReadTree(dialog);
    std::vector<std::string> cells;
    RowAddress row;
    for (const TreeRow& r : tree.rows) {
        if (r.depth == 0) row = {row.top + 1, 0};
        else ++row.child;
        if (r.bodyTag != tag) continue;
        for (const host::ColumnView& column : tree.columns) {
            const auto text = r.texts.find(column.id);
            if (text != r.texts.end() && text->second == value)
                cells.push_back("row " + RowText(row) + " column " + std::to_string(column.id) + " (" +
                                host::GbkToUtf8(column.title) + ")");
        }
    }
    return cells;
}

}  // namespace

void Outcomes::Message(const host::MessageRecord& message) {
    const std::string text = host::GbkToUtf8(message.text);
    if (host::GbkToUtf8(message.title) == kExportTitle && text.rfind(kExportSaid, 0) == 0)
        exported_.push_back(host::Utf8ToGbk(text.substr(sizeof kExportSaid - 1)));
}

void Outcomes::BeforeCommand() {
    messagesBefore_ = host::Messages().size();
    exportedBefore_ = exported_.size();
}

void Outcomes::AfterCommand(const Command& c, const std::string& where, host::LiveDialog* dialog) {
    if (c.kind == CommandKind::Press && !exportButton_.empty() && c.blockId == exportButton_ &&
        exported_.size() == exportedBefore_) {
        std::string said;
        const std::vector<host::MessageRecord>& messages = host::Messages();
        for (size_t i = messagesBefore_; i < messages.size(); ++i)
            said += (said.empty() ? "" : "; ") + host::GbkToUtf8(messages[i].text);
        lost_.push_back("vornadel-host: " + where + ": the export wrote no BOM" +
                        (said.empty() ? std::string(" and said nothing") : ": the plug-in said \"" + said + "\""));
    }
    const std::vector<host::RefusedAttribute>& refused = host::RefusedAttributes();
    std::set<std::string> named;  // a body's cells are saved from its row and again from its group's
    for (; refusedSeen_ < refused.size(); ++refusedSeen_) {
        const host::RefusedAttribute& r = refused[refusedSeen_];
        std::vector<std::string> cells;
        if (dialog != nullptr && !dialog->Closed()) cells = CellsHolding(*dialog, r.tag, r.value);
        std::string what = cells.empty() ? "body " + std::to_string(r.tag) : cells.front();
        for (size_t i = 1; i < cells.size(); ++i) what += ", " + cells[i];
        if (!named.insert(what + r.title).second) continue;
        const bool longTitle = r.title.size() > UF_ATTR_MAX_TITLE_LEN;
        lost_.push_back("vornadel-host: " + where + ": not stored on the part: " + what + ", attribute \"" +
                        host::GbkToUtf8(r.title) + "\" of body " + std::to_string(r.tag) + ": " +
                        std::to_string(longTitle ? r.title.size() : r.value.size()) + " bytes, and an NX " +
                        (longTitle ? "attribute title" : "string attribute") + " holds " +
                        std::to_string(longTitle ? UF_ATTR_MAX_TITLE_LEN : UF_ATTR_MAX_STRING_LEN) + " (error " +
                        std::to_string(r.code) + ")");
    }
}

std::optional<std::string> Outcomes::Local(const std::string& windowsPath, std::string& why) const {
    if (!driveTable_) return host::GbkToUtf8(windowsPath);
    if (windowsPath.size() >= 2 && windowsPath[1] == ':' && !DriveMapped(*driveTable_, windowsPath[0])) {
        why = "drive " + windowsPath.substr(0, 2) + " is not mapped to a folder (--drive " + windowsPath.substr(0, 1) +
              "=DIR maps it)";
        return std::nullopt;
    }
    return host::LocalPath(windowsPath);
}

// Why the export's workbook is not there: what is wrong with the output folder it was to go in
// (the workbook goes in a folder of the part's own, made in the output folder).
std::string Outcomes::WhyMissing(const std::string& workbook) const {
    const std::string partFolder = WindowsParent(workbook);
    const std::string outputFolder = WindowsParent(partFolder);
    std::string why;
    const std::optional<std::string> local = Local(outputFolder, why);
    if (!local) return why;
    const std::string shown = host::GbkToUtf8(outputFolder) +
                              (*local != host::GbkToUtf8(outputFolder) ? " (" + *local + ")" : std::string());
    std::error_code ec;
    const fs::path output = fs::u8path(*local);
    const fs::path part = fs::u8path(*Local(partFolder, why));
    if (!fs::exists(output, ec)) return "the output folder " + shown + " does not exist";
    if (!fs::is_directory(output, ec)) return "the output folder " + shown + " is a file, not a folder";
    if (fs::exists(part, ec) && !fs::is_directory(part, ec))
        return host::GbkToUtf8(partFolder) + " is a file, not the part's folder";
    if (!Writable(fs::is_directory(part, ec) ? part : output)) return "the output folder " + shown + " is not writable";
    return "the plug-in could not write it";
}

bool Outcomes::Report(std::ostream& err) {
    for (const std::string& workbook : exported_) {
        const std::string name = host::GbkToUtf8(workbook);
        std::string why;
        const std::optional<std::string> local = Local(workbook, why);
        std::error_code ec;
        if (!local || !fs::is_regular_file(fs::u8path(*local), ec)) {
            lost_.push_back("vornadel-host: the export said it wrote " + name + ", which does not exist: " +
                            (local ? WhyMissing(workbook) : why));
            continue;
        }
        std::ifstream file(fs::u8path(*local), std::ios::binary);
        const std::string bytes((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
        xls::Book book;
        if (!book.loadBuffer(bytes.data(), bytes.size())) {
            lost_.push_back("vornadel-host: the export left no filled BOM in " + name +
                            ": it is the template as copied, which is no workbook the engine reads (" +
                            book.errorMessage() + ")");
        }
    }
    exported_.clear();
    for (const std::string& line : lost_) err << line << '\n';
    const bool lost = !lost_.empty();
    lost_.clear();
    return lost;
}

}  // namespace runner
