// ReadConfigFile on generated input: tables of random cells written in the table writer's form
// read back cell for cell, random byte soup never breaks the reader and reads the same again
// after a rewrite, and the bundled tables converted to UTF-8 read as they do in GBK.

#include "platform/MappedDrives.h"

#include "platform/CodePage.h"
#include "platform/ReadConfigFile.h"

#include <stdlib.h>

#include <filesystem>
#include <random>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;
using Strings = std::vector<std::string>;
using Rows = std::vector<Strings>;

// The writer's form: every cell followed by a comma; a cell holding a comma, a quote or a line
// break quoted with its quotes doubled.
std::string WriteTable(const Strings& names, const Rows& rows, const std::string& lineEnd) {
    auto line = [&](const Strings& cells) {
        std::string text;
        for (const std::string& cell : cells) {
            if (cell.find_first_of(",\"\r\n") == std::string::npos) {
                text += cell;
            } else {
                text += '"';
                for (char c : cell) text += c == '"' ? std::string("\"\"") : std::string(1, c);
                text += '"';
            }
            text += ',';
        }
        return text + lineEnd;
    };
    std::string text = line(names);
    for (const Strings& row : rows) text += line(row);
    return text;
}

class ReadConfigFileGenerated : public MappedDrives {
protected:
    void Read(const std::string& bytes, Strings& names, Rows& rows) {
        WriteBytes(C() / "t.csv", bytes);
        ReadConfigFile table;
        ASSERT_TRUE(table.OpenConfigFile(W("C:\\t.csv")));
        names = table.GetColumnNames();
        rows = table.GetColumnValues();
    }

    std::mt19937 random_{20260101u};
};

TEST_F(ReadConfigFileGenerated, WrittenTablesReadBackCellForCell) {
    // Pieces a cell is made of: GBK text, separators, quotes, spaces, a NUL byte.
    const Strings pieces = {"a", "12", " ", "\t", ",", "\"", "\r\n", "\n", "\r", "标准件", "誠", "\xFF", std::string(1, '\0')};
    const Strings lineEnds = {"\r\n", "\n", "\r"};
    for (int round = 0; round < 300; ++round) {
        const size_t columns = 1 + random_() % 5;
        auto cell = [&] {
            std::string text;
            for (size_t n = random_() % 4; n > 0; --n) text += pieces[random_() % pieces.size()];
            return text;
        };
        Strings names(columns);
        for (std::string& name : names) name = cell();
        Rows rows(random_() % 6, Strings(columns));
        for (Strings& row : rows) {
            for (std::string& value : row) value = cell();
        }
        Strings readNames;
        Rows readRows;
        Read(WriteTable(names, rows, lineEnds[random_() % lineEnds.size()]), readNames, readRows);
        ASSERT_EQ(names, readNames) << "round " << round;
        ASSERT_EQ(rows, readRows) << "round " << round;
    }
}

TEST_F(ReadConfigFileGenerated, ByteSoupReadsTheSameAfterARewrite) {
    const std::string alphabet("ab ,,\"\"\r\n\n\xB1\xEA\xFF\x81\x5C", 15);
    for (int round = 0; round < 300; ++round) {
        std::string soup;
        for (size_t n = random_() % 200; n > 0; --n) soup += alphabet[random_() % alphabet.size()];
        Strings names;
        Rows rows;
        Read(soup, names, rows);
        for (const Strings& row : rows) ASSERT_EQ(names.size(), row.size()) << "round " << round;
        if (names.empty()) continue;

        Strings again;
        Rows againRows;
        Read(WriteTable(names, rows, "\r\n"), again, againRows);
        ASSERT_EQ(names, again) << "round " << round;
        ASSERT_EQ(rows, againRows) << "round " << round;
    }
}

fs::path SamplesDir() {
    const char* dir = getenv("VORNADEL_SOURCE_DIR");
    return (dir != nullptr ? fs::path(dir) : fs::current_path()) / "samples";
}

// Every bundled table reads the same saved in GBK (as shipped), as UTF-8 without a byte-order
// mark (what most editors write) and as UTF-8 with one (a spreadsheet program's "CSV UTF-8").
TEST_F(ReadConfigFileGenerated, BundledTablesReadTheSameInGbkAndInUtf8) {
    size_t tables = 0;
    for (const auto& entry : fs::recursive_directory_iterator(SamplesDir())) {
        if (entry.path().extension() != ".csv") continue;
        ++tables;
        const std::string gbk = ReadBytes(entry.path());
        const std::string utf8 = platform::AnsiToUtf8(gbk);
        ASSERT_NE(gbk, utf8) << entry.path() << " has no Chinese text to tell the encodings apart";
        Strings names, utf8Names, markedNames;
        Rows rows, utf8Rows, markedRows;
        Read(gbk, names, rows);
        Read(utf8, utf8Names, utf8Rows);
        Read("\xEF\xBB\xBF" + utf8, markedNames, markedRows);
        ASSERT_FALSE(names.empty()) << entry.path();
        EXPECT_EQ(names, utf8Names) << entry.path();
        EXPECT_EQ(rows, utf8Rows) << entry.path();
        EXPECT_EQ(names, markedNames) << entry.path();
        EXPECT_EQ(rows, markedRows) << entry.path();
    }
    EXPECT_GT(tables, 0u);
}

}  // namespace
