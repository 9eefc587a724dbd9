// The configuration table reader. A table is comma-separated text; its encoding is told apart
// as described in platform/ReadConfigFile.h (UTF-8 with or without a byte-order mark, else the
// system code page), and UTF-8 text is converted to the system code page before it is split:
//   - the first record names the columns; blank lines are skipped wherever they are;
//   - records end with CRLF, LF or a lone CR;
//   - a comma at the very end of a record closes the last cell and opens none: the plug-in's
//     own table writer ends every line with one, and reading it as an extra unnamed column
//     would grow the table by a column at every rewrite;
//   - a cell that starts with a double quote is quoted: up to the closing quote it may hold
//     commas and line breaks, and "" stands for one quote; anything after the closing quote
//     up to the next comma is kept as it stands. A quote that never closes is an ordinary
//     character, so one stray quote cannot swallow the rest of the table;
//   - cells are kept byte for byte: no trimming, no check of the GBK encoding, NUL bytes stay.
// No separator byte (comma, quote, CR, LF) can be the second byte of a GBK character, so the
// text is split byte by byte.

#include "platform/ReadConfigFile.h"

#include "platform/CodePage.h"
#include "platform/Files.h"

namespace {

// Utf8ToAnsi ends its result at the first NUL; a table keeps its NUL bytes, so each stretch
// between them is converted on its own.
std::string Utf8TableToAnsi(const std::string& utf8) {
    std::string ansi;
    size_t start = 0;
    for (;;) {
        const size_t end = utf8.find('\0', start);
        ansi += platform::Utf8ToAnsi(utf8.substr(start, end == std::string::npos ? end : end - start));
        if (end == std::string::npos) return ansi;
        ansi += '\0';
        start = end + 1;
    }
}

// True when text is well-formed UTF-8 (no overlong form, surrogate or value above U+10FFFF)
// and holds at least one character beyond ASCII.
bool IsUtf8BeyondAscii(const std::string& text) {
    bool beyondAscii = false;
    size_t i = 0;
    while (i < text.size()) {
        const unsigned char lead = static_cast<unsigned char>(text[i++]);
        if (lead < 0x80) continue;
        beyondAscii = true;
        int following;
        unsigned char low = 0x80;
        unsigned char high = 0xBF;
        if (lead >= 0xC2 && lead <= 0xDF) {
            following = 1;
        } else if (lead >= 0xE0 && lead <= 0xEF) {
            following = 2;
            if (lead == 0xE0) low = 0xA0;
            if (lead == 0xED) high = 0x9F;
        } else if (lead >= 0xF0 && lead <= 0xF4) {
            following = 3;
            if (lead == 0xF0) low = 0x90;
            if (lead == 0xF4) high = 0x8F;
        } else {
            return false;
        }
        for (; following > 0; --following, ++i) {
            if (i >= text.size()) return false;
            const unsigned char c = static_cast<unsigned char>(text[i]);
            if (c < low || c > high) return false;
            low = 0x80;
            high = 0xBF;
        }
    }
    return beyondAscii;
}

bool IsLineEnd(char c) {
    return c == '\r' || c == '\n';
}

// Reads the records of a table one after the other.
class RecordReader {
public:
    explicit RecordReader(const std::string& text) : text_(text), pos_(0) {}

    // The cells of the next record that is not a blank line; false at the end of the text.
    bool Next(std::vector<std::string>& cells) {
        while (pos_ < text_.size() && IsLineEnd(text_[pos_])) ++pos_;
        if (pos_ >= text_.size()) return false;
        cells.clear();
        bool lastQuoted = false;
        for (;;) {
            cells.push_back(std::string());
            lastQuoted = ReadCell(cells.back());
            if (pos_ < text_.size() && text_[pos_] == ',') {
                ++pos_;
                continue;
            }
            break;
        }
        if (pos_ < text_.size() && text_[pos_] == '\r') ++pos_;
        if (pos_ < text_.size() && text_[pos_] == '\n') ++pos_;
        if (cells.size() > 1 && cells.back().empty() && !lastQuoted) cells.pop_back();
        return true;
    }

private:
    // Reads one cell up to (not including) the comma or line end that follows it; true when it
    // was quoted.
    bool ReadCell(std::string& cell) {
        bool quoted = false;
        if (pos_ < text_.size() && text_[pos_] == '"') {
            std::string value;
            size_t p = pos_ + 1;
            while (p < text_.size()) {
                if (text_[p] == '"') {
                    if (p + 1 < text_.size() && text_[p + 1] == '"') {
                        value += '"';
                        p += 2;
                        continue;
                    }
                    quoted = true;
                    ++p;
                    break;
                }
                value += text_[p++];
            }
            if (quoted) {
                cell.swap(value);
                pos_ = p;
            }
        }
        const size_t start = pos_;
        while (pos_ < text_.size() && text_[pos_] != ',' && !IsLineEnd(text_[pos_])) ++pos_;
        cell.append(text_, start, pos_ - start);
        return quoted;
    }

    const std::string& text_;
    size_t pos_;
};

}  // namespace

ReadConfigFile::ReadConfigFile() {}

ReadConfigFile::~ReadConfigFile() {}

bool ReadConfigFile::OpenConfigFile(const std::string& path) {
    CloseConfigFile();
    std::string text;
    if (!platform::ReadWholeFile(path, text)) return false;
    static const char kUtf8Mark[] = "\xEF\xBB\xBF";
    if (text.compare(0, 3, kUtf8Mark) == 0) {
        text = Utf8TableToAnsi(text.substr(3));
    } else if (IsUtf8BeyondAscii(text)) {
        text = Utf8TableToAnsi(text);
    }

    RecordReader reader(text);
    if (!reader.Next(names_)) return true;
    std::vector<std::string> cells;
    while (reader.Next(cells)) {
        // Cells beyond the header have no name and are dropped; missing ones read as "".
        cells.resize(names_.size());
        rows_.push_back(std::vector<std::string>());
        rows_.back().swap(cells);
    }
    return true;
}

std::vector<std::string> ReadConfigFile::GetColumnNames() {
    return names_;
}

std::vector<std::string> ReadConfigFile::GetColumnValue(const std::string& name) {
    std::vector<std::string> values;
    for (size_t column = 0; column < names_.size(); ++column) {
        if (names_[column] != name) continue;
        values.reserve(rows_.size());
        for (size_t row = 0; row < rows_.size(); ++row) {
            values.push_back(rows_[row][column]);
        }
        break;
    }
    return values;
}

std::vector<std::vector<std::string> > ReadConfigFile::GetColumnValues() {
    return rows_;
}

void ReadConfigFile::CloseConfigFile() {
    names_.clear();
    rows_.clear();
}
