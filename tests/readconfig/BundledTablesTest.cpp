// Every bundled configuration table reads the same whether it is saved in GBK (as shipped), as
// UTF-8 without a byte-order mark (what most editors write) or as UTF-8 with one (a spreadsheet
// program's "CSV UTF-8").

#include "platform/MappedDrives.h"

#include "platform/CodePage.h"
#include "platform/ReadConfigFile.h"

#include <stdlib.h>

#include <filesystem>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;
using Strings = std::vector<std::string>;
using Rows = std::vector<Strings>;

class BundledTables : public MappedDrives {
protected:
    void Read(const std::string& bytes, Strings& names, Rows& rows) {
        WriteBytes(C() / "t.csv", bytes);
        ReadConfigFile table;
        ASSERT_TRUE(table.OpenConfigFile("C:\\t.csv"));
        names = table.GetColumnNames();
        rows = table.GetColumnValues();
    }
};

fs::path SamplesDir() {
    const char* dir = getenv("VORNADEL_SOURCE_DIR");
    return (dir != nullptr ? fs::path(dir) : fs::current_path()) / "samples";
}

TEST_F(BundledTables, ReadTheSameInGbkAndInUtf8) {
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
