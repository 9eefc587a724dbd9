// vornadel-bomdiff on BOMs the real export wrote: a generated mould (moldgen) is exported by the
// plug-in through the runner, changed (a line removed, one re-counted, one re-sourced, one added)
// and exported again into the same folder. Hand edits of the exported workbooks (xlsfill) stand
// for what users type: full-width digits, repeated lines, other columns.
#include <gtest/gtest.h>

#include <fstream>
#include <map>
#include <sstream>

#include "XlsBook.h"
#include "xls/XlsTestSupport.h"

using namespace xlstest;

namespace {

// A line of the tsv output split at its TABs.
using Fields = std::vector<std::string>;

std::vector<Fields> TsvLines(const std::string& out) {
    std::vector<Fields> lines;
    std::istringstream in(out);
    for (std::string line; std::getline(in, line);) {
        Fields fields;
        std::istringstream words(line);
        for (std::string field; std::getline(words, field, '\t');) fields.push_back(field);
        if (!line.empty() && line.back() == '\t') fields.push_back("");
        lines.push_back(fields);
    }
    return lines;
}

CommandResult RunBomdiff(const std::vector<std::string>& args) {
    std::string command = toolCommand("vornadel-bomdiff");
    for (const std::string& a : args) command += " " + toolArgument(fs::u8path(a));
    return run(command);
}

std::string Arg(const fs::path& path) { return path.u8string(); }

// Writes cells (row<TAB>column<TAB>text lines) into a copy of the workbook from, saved as to.
void Edit(const fs::path& from, const fs::path& to, const std::string& cells) {
    const CommandResult r = run(toolCommand("xlsfill") + " " + quote(from) + " " + quote(to), cells);
    ASSERT_EQ(r.status, 0) << r.err;
}

// The text cells of a workbook's first sheet as xlrd reads them, by (row, column).
std::map<std::pair<int, int>, std::string> TextCells(const fs::path& book) {
    std::map<std::pair<int, int>, std::string> cells;
    const nlohmann::json view = xlrdDump(book);
    for (const auto& cell : view["sheets"][0]["cells"])
        if (cell[2] == 1) cells[{cell[0].get<int>(), cell[1].get<int>()}] = cell[3].get<std::string>();
    return cells;
}

// The part row of the line name (and model, when given) as the export wrote it; -1 when none.
int ExportedRow(const fs::path& book, const std::string& name, const std::string& model = "") {
    const auto cells = TextCells(book);
    for (const auto& [at, text] : cells) {
        if (at.first < 6 || at.second != 1 || text != name) continue;
        const auto m = cells.find({at.first, 3});
        if (model.empty() || (m != cells.end() && m->second == model)) return at.first;
    }
    return -1;
}

// The quantity the export wrote for that line.
std::string ExportedQuantity(const fs::path& book, const std::string& name, const std::string& model = "") {
    const auto cells = TextCells(book);
    const auto q = cells.find({ExportedRow(book, name, model), 7});
    return q != cells.end() ? q->second : "";
}

// Two exports of one generated mould, before and after a design change, in the part's folder.
class Bomdiff : public ::testing::Test {
protected:
    static void SetUpTestSuite() {
        dir_ = new TempDir;
        fs::create_directories(dir_->path() / "c" / "out");
        const fs::path before = *dir_ / "before.part.json", after = *dir_ / "after.part.json";
        CommandResult r = run(toolCommand("moldgen") + " --bodies 30 --seed 1 --leaf M30 --out " + quote(before));
        ASSERT_EQ(r.status, 0) << r.err;
        nlohmann::json part = nlohmann::json::parse(std::ifstream(before));
        nlohmann::json bodies = nlohmann::json::array();
        nlohmann::json pillar, screw;
        for (nlohmann::json body : part["bodies"]) {
            nlohmann::json& a = body["attributes"];
            const std::string name = a.value(u8"名称", "");
            if (name == u8"唧嘴") continue;                        // removed
            if (name == u8"定位圈") a[u8"供应商"] = u8"盘起工业";  // re-sourced
            if (name == u8"导柱" && pillar.is_null()) pillar = body;
            if (name == u8"内六角螺钉" && screw.is_null()) screw = body;
            bodies.push_back(body);
        }
        for (int i = 0; i < 2; ++i) {  // re-counted: two more guide pillars
            pillar["tag"] = 99100 + i;
            pillar["at"][0] = pillar["at"][0].get<int>() + 500 + 40 * i;
            bodies.push_back(pillar);
        }
        screw["tag"] = 99001;  // added: a screw of a size the mould did not have
        screw["attributes"][u8"类型"] = u8"M8×20";
        bodies.push_back(screw);
        part["bodies"] = bodies;
        std::ofstream(after) << part.dump();
        Export(before);
        Export(after);
    }
    static void TearDownTestSuite() { delete dir_; }

    static void Export(const fs::path& part) {
        const CommandResult r = run(toolCommand("vornadel-host") + " run " + quote(part) + " --drive C=" +
                                    quote(dir_->path() / "c") + " --localappdata 'C:\\app' --time 2000-01-01T00:00:00" +
                                    " -e 'folder C:\\out' -e 'press button01' -e close");
        ASSERT_EQ(r.status, 0) << r.err;
        ASSERT_NE(r.out.find(u8"导出标准件BOM成功"), std::string::npos) << r.out;
    }

    static fs::path Folder() { return dir_->path() / "c" / "out" / "M30"; }
    static fs::path Older() { return Folder() / fs::u8path(u8"M30标准件BOM.xls"); }
    static fs::path Newer() { return Folder() / fs::u8path(u8"M30标准件BOM-1.xls"); }
    static fs::path Scratch(const std::string& name) { return *dir_ / name; }

    static TempDir* dir_;
};

TempDir* Bomdiff::dir_ = nullptr;

TEST_F(Bomdiff, FolderGivesEveryKindOfLineOfTheDesignChange) {
    const CommandResult r = RunBomdiff({Arg(Folder()), "--format", "tsv"});
    ASSERT_EQ(r.status, 0) << r.err;
    EXPECT_EQ(r.err, "");
    const std::string pillarsBefore = ExportedQuantity(Older(), u8"导柱"), pillarsAfter = ExportedQuantity(Newer(), u8"导柱");
    ASSERT_NE(pillarsBefore, pillarsAfter) << "two more pillars change the exported quantity";
    const std::string pillarDifference = std::to_string(std::stoi(pillarsAfter) - std::stoi(pillarsBefore));
    const std::vector<Fields> expected = {
        {"added", u8"内六角螺钉", u8"M8×20", u8"盘起", u8"12.9级合金钢", u8"发黑", "", ExportedQuantity(Newer(), u8"内六角螺钉", u8"M8×20"),
         "+" + ExportedQuantity(Newer(), u8"内六角螺钉", u8"M8×20")},
        {"quantity", u8"导柱", u8"Φ25×130", u8"龙记", "SUJ2", u8"淬火HRC58-62", pillarsBefore, pillarsAfter, "+" + pillarDifference},
        {"removed", u8"唧嘴", u8"Φ12×90", "HASCO", "SKD61", u8"淬火HRC58-62", ExportedQuantity(Older(), u8"唧嘴"), "",
         "-" + ExportedQuantity(Older(), u8"唧嘴")},
        {"changed", u8"定位圈", u8"Φ120×15", u8"龙记", u8"45#钢", u8"发黑", ExportedQuantity(Older(), u8"定位圈"),
         ExportedQuantity(Older(), u8"定位圈"), "0", u8"supplier=龙记集团→盘起工业"},
    };
    EXPECT_EQ(TsvLines(r.out), expected) << r.out;
}

TEST_F(Bomdiff, TextTableCountsTheUnchangedLinesAndAllListsThem) {
    const CommandResult text = RunBomdiff({Arg(Older()), Arg(Newer())});
    ASSERT_EQ(text.status, 0) << text.err;
    EXPECT_NE(text.out.find(u8"新增 1，数量变更 1，删除 1，变更 1，未变 6\n"), std::string::npos) << text.out;
    EXPECT_NE(text.out.find(u8"供应商: 龙记集团 → 盘起工业"), std::string::npos) << text.out;
    EXPECT_NE(text.out.find(u8"类别"), std::string::npos) << text.out;
    const CommandResult all = RunBomdiff({Arg(Older()), Arg(Newer()), "--all", "--format=tsv"});
    ASSERT_EQ(all.status, 0) << all.err;
    int unchanged = 0;
    for (const Fields& f : TsvLines(all.out)) {
        if (f[0] != "unchanged") continue;
        ++unchanged;
        EXPECT_EQ(f[6], f[7]) << "same quantity";
        EXPECT_EQ(f[8], "0");
    }
    EXPECT_EQ(unchanged, 6);
    EXPECT_EQ(TsvLines(all.out).size(), 10u);
}

TEST_F(Bomdiff, FolderTakesTheTwoHighestCountersNotTheNewestFiles) {
    const fs::path folder = Scratch("counters");
    fs::create_directories(folder);
    // -10 is the older BOM, -9 the newer: compared -9 (older) with -10 (newer) everything turns round.
    fs::copy_file(Older(), folder / fs::u8path(u8"M30标准件BOM-10.xls"));
    fs::copy_file(Newer(), folder / fs::u8path(u8"M30标准件BOM-9.xls"));
    fs::copy_file(Newer(), folder / fs::u8path(u8"M30标准件BOM.xls"));
    fs::copy_file(Newer(), folder / fs::u8path(u8"M30标准件BOM-2.xls"));
    fs::last_write_time(folder / fs::u8path(u8"M30标准件BOM.xls"), fs::file_time_type::clock::now() + std::chrono::hours(1));
    const CommandResult r = RunBomdiff({Arg(folder), "--format", "tsv"});
    ASSERT_EQ(r.status, 0) << r.err;
    std::vector<std::string> kinds;
    for (const Fields& f : TsvLines(r.out)) kinds.push_back(f[0] + " " + f[1]);
    EXPECT_EQ(kinds, (std::vector<std::string>{u8"added 唧嘴", u8"quantity 导柱", u8"removed 内六角螺钉", u8"changed 定位圈"}));
}

TEST_F(Bomdiff, IdentitySumsFullWidthDigitsAndQuantitiesThatAreNoNumber) {
    const fs::path edited = Scratch("edited.xls");
    // Rows typed by hand below the export's: the pillars once more (blanks around the name,
    // full-width digits), a screw of another brand (another line), a blank row, and the M10×45
    // screws re-typed in full-width digits; the M12×110 screws counted as "若干".
    const std::string pillars = ExportedQuantity(Newer(), u8"导柱");
    const int m10 = ExportedRow(Newer(), u8"内六角螺钉", u8"M10×45"), m12 = ExportedRow(Newer(), u8"内六角螺钉", u8"M12×110");
    ASSERT_GT(m10, 0);
    ASSERT_GT(m12, 0);
    ASSERT_EQ(ExportedQuantity(Newer(), u8"内六角螺钉", u8"M10×45"), "5") << "the generated mould's count";
    const int last = TextCells(Newer()).rbegin()->first.first;
    const std::string a = std::to_string(last + 1), b = std::to_string(last + 3);
    Edit(Newer(), edited,
         a + u8"\t1\t 导柱\u3000\n" + a + u8"\t3\tΦ25×130\n" + a + u8"\t5\t龙记\n" + a + u8"\t7\t１２\n" + a +
             u8"\t9\t淬火HRC58-62\n" + a + u8"\t13\tSUJ2\n" + b + u8"\t1\t内六角螺钉\n" + b + u8"\t3\tM10×45\n" + b +
             u8"\t5\tMISUMI\n" + b + u8"\t7\t3\n" + b + u8"\t9\t发黑\n" + b + u8"\t13\t12.9级合金钢\n" +
             std::to_string(m10) + u8"\t7\t５\n" + std::to_string(m12) + u8"\t7\t若干\n");
    const CommandResult r = RunBomdiff({Arg(Older()), Arg(edited), "--format", "tsv"});
    ASSERT_EQ(r.status, 0) << r.err;
    std::map<std::string, Fields> byLine;
    for (const Fields& f : TsvLines(r.out)) byLine[f[0] + " " + f[1] + " " + f[2] + " " + f[3]] = f;
    const std::string pillarsBefore = ExportedQuantity(Older(), u8"导柱");
    const std::string sum = std::to_string(std::stoi(pillars) + 12);
    ASSERT_EQ(byLine.count(u8"quantity 导柱 Φ25×130 龙记"), 1u) << r.out;
    EXPECT_EQ(byLine[u8"quantity 导柱 Φ25×130 龙记"][7], sum) << "both rows are one line";
    EXPECT_EQ(byLine[u8"quantity 导柱 Φ25×130 龙记"][8], "+" + std::to_string(std::stoi(sum) - std::stoi(pillarsBefore)));
    ASSERT_EQ(byLine.count(u8"added 内六角螺钉 M10×45 MISUMI"), 1u) << "another brand, another line: " << r.out;
    EXPECT_EQ(byLine[u8"added 内六角螺钉 M10×45 MISUMI"][8], "+3");
    EXPECT_EQ(byLine.count(u8"quantity 内六角螺钉 M10×45 盘起"), 0u) << "５ is the 5 it was: " << r.out;
    ASSERT_EQ(byLine.count(u8"quantity 内六角螺钉 M12×110 盘起"), 1u) << r.out;
    const Fields& counted = byLine[u8"quantity 内六角螺钉 M12×110 盘起"];
    EXPECT_EQ(counted[6], ExportedQuantity(Older(), u8"内六角螺钉", u8"M12×110"));
    EXPECT_EQ(counted[7], u8"若干");
    EXPECT_EQ(counted[8], "") << "no difference of a quantity that is no number";
}

TEST_F(Bomdiff, DifferentMouldsAreAWarning) {
    const fs::path other = Scratch("other-mould.xls");
    Edit(Newer(), other, "1\t8\tYM-9999\n");
    const CommandResult r = RunBomdiff({Arg(Older()), Arg(other)});
    EXPECT_EQ(r.status, 0) << r.err;
    EXPECT_NE(r.err.find("warning: the mould numbers differ (YM-2403 in"), std::string::npos) << r.err;
    EXPECT_NE(r.err.find("YM-9999 in"), std::string::npos) << r.err;
    EXPECT_EQ(RunBomdiff({Arg(Older()), Arg(Newer())}).err, "") << "the same mould: no warning";
}

TEST_F(Bomdiff, BadInputIsRefusedWithStatus2AndAMessage) {
    const fs::path text = Scratch("notes.xls"), lonely = Scratch("lonely"), columns = Scratch("columns.xls");
    std::ofstream(text) << "not a workbook";
    fs::create_directories(lonely);
    fs::copy_file(Older(), lonely / fs::u8path(u8"M30标准件BOM.xls"));
    Edit(Newer(), columns, u8"5\t7\t件数\n");
    const std::vector<std::pair<std::vector<std::string>, std::string>> cases = {
        {{Arg(text), Arg(Newer())}, "cannot read " + Arg(text) + ": not an Excel 97-2003 workbook"},
        {{Arg(Older()), Arg(Scratch("missing.xls"))}, "cannot read " + Arg(Scratch("missing.xls"))},
        {{Arg(dataDir() / "features-libreoffice.xls"), Arg(Newer())}, u8"is not a BOM export: no head (\"模具编号\" is not in cell H2)"},
        {{Arg(Older()), Arg(columns)}, Arg(columns) + u8" is not a BOM export: the title of column H in row 6 is \"件数\", not \"数量\""},
        {{Arg(lonely)}, "holds fewer than two BOM exports"},
        {{Arg(Scratch("no-such-folder"))}, "cannot read the folder"},
        {{}, "give two exported BOMs, or the folder of one part's exports"},
        {{Arg(Older()), Arg(Newer()), "--format", "csv"}, "--format is text or tsv"},
        {{Arg(Older()), Arg(Newer()), "-o", Arg(text)}, Arg(text) + " exists already"},
    };
    for (const auto& [args, message] : cases) {
        const CommandResult r = RunBomdiff(args);
        EXPECT_EQ(r.status, 2) << message;
        EXPECT_NE(r.err.find("vornadel-bomdiff: " ), std::string::npos) << r.err;
        EXPECT_NE(r.err.find(message), std::string::npos) << r.err;
        EXPECT_EQ(r.out, "") << message;
    }
    std::ifstream kept(text);
    EXPECT_EQ(std::string(std::istreambuf_iterator<char>(kept), {}), "not a workbook") << "never overwritten";
}

TEST_F(Bomdiff, WorkbooksResavedByGnumericReadAsExported) {
    if (!haveProgram("ssconvert")) GTEST_SKIP() << "Gnumeric (ssconvert) is not installed";
    const fs::path older = Scratch("resaved-older.xls"), newer = Scratch("resaved-newer.xls");
    for (const auto& [from, to] : {std::pair{Older(), older}, std::pair{Newer(), newer}}) {
        const CommandResult r = run("ssconvert --export-type=Gnumeric_Excel:excel_biff8 " + quote(from) + " " + quote(to));
        ASSERT_EQ(r.status, 0) << r.err;
    }
    const CommandResult exported = RunBomdiff({Arg(Older()), Arg(Newer()), "--format", "tsv", "--all"});
    const CommandResult resaved = RunBomdiff({Arg(older), Arg(newer), "--format", "tsv", "--all"});
    ASSERT_EQ(resaved.status, 0) << resaved.err;
    EXPECT_EQ(resaved.out, exported.out);
    EXPECT_EQ(TsvLines(resaved.out).size(), 10u);
}

TEST_F(Bomdiff, ChangeWorkbookHoldsTheHeadAndEachKindInItsTemplateRowsFormat) {
    const fs::path out = Scratch("changes.xls");
    const CommandResult r = RunBomdiff({Arg(Older()), Arg(Newer()), "-o", Arg(out)});
    ASSERT_EQ(r.status, 0) << r.err;
    EXPECT_NE(r.out.find(u8"变更单: " + Arg(out)), std::string::npos) << r.out;
    const fs::path templ = sourceDir() / "samples" / "bomdiff" / fs::u8path(u8"标准件变更单.xls");
    const nlohmann::json before = xlrdDump(templ), after = xlrdDump(out);
    std::map<std::pair<int, int>, nlohmann::json> t, o;
    for (const auto& c : before["sheets"][0]["cells"]) t[{c[0].get<int>(), c[1].get<int>()}] = c;
    for (const auto& c : after["sheets"][0]["cells"]) o[{c[0].get<int>(), c[1].get<int>()}] = c;
    auto text = [&](int row, int col) { return o.count({row, col}) ? o[{row, col}][3].get<std::string>() : std::string(); };
    EXPECT_EQ(text(1, 8), "YM-2403") << "the newer BOM's head";
    EXPECT_EQ(text(1, 4), TextCells(Newer())[std::make_pair(1, 4)]) << "the customer";
    EXPECT_EQ(text(1, 11), u8"M30标准件BOM.xls");
    EXPECT_EQ(text(3, 11), u8"M30标准件BOM-1.xls");
    const std::vector<std::vector<std::string>> rows = {
        {"1", u8"新增", u8"内六角螺钉", u8"M8×20"}, {"2", u8"数量变更", u8"导柱", u8"Φ25×130"},
        {"3", u8"删除", u8"唧嘴", u8"Φ12×90"}, {"4", u8"变更", u8"定位圈", u8"Φ120×15"}};
    for (int k = 0; k < 4; ++k) {
        for (int c = 0; c < 4; ++c) EXPECT_EQ(text(6 + k, c), rows[k][c]) << k << ", " << c;
        for (int c = 0; c < 15; ++c)
            EXPECT_EQ(o[std::make_pair(6 + k, c)][4], t[std::make_pair(6 + k, c)][4]) << "row " << 6 + k << " column " << c << " has its template row's format";
    }
    EXPECT_EQ(text(6, 9), "+1");
    EXPECT_EQ(text(8, 9), "-" + ExportedQuantity(Older(), u8"唧嘴"));
    EXPECT_EQ(text(9, 14), u8"供应商: 龙记集团 → 盘起工业");
    EXPECT_EQ(after["sheets"][0]["merged"], before["sheets"][0]["merged"]);
    // The engine reads it back; Gnumeric converts it without a word.
    xls::Book book;
    ASSERT_TRUE(book.load(osPath(out).c_str())) << book.errorMessage();
    std::vector<unsigned short> units;
    ASSERT_TRUE(book.getSheet(book.activeSheet())->readStr(7, 2, units));
    EXPECT_EQ(utf8(std::u16string(units.begin(), units.end())), u8"导柱");
    // What only Excel relies on: record sizes, the string table's splitting, INDEX and DBCELL.
    expectWellFormedStream(workbookStream(readBytes(out)), book.activeSheet());
    if (haveProgram("ssconvert")) {
        const CommandResult convert = run("ssconvert " + quote(out) + " " + quote(Scratch("changes.csv")));
        EXPECT_EQ(convert.status, 0);
        EXPECT_EQ(convert.err, "");
        EXPECT_EQ(gnumericWarnings(out, dir_->path()), std::vector<std::string>{});
    }
    if (haveProgram("soffice")) {
        const Grid sheet = libreOfficeCsv(out, dir_->path()).begin()->second;
        ASSERT_GT(sheet.size(), 9u);
        EXPECT_EQ(sheet[7][2], u8"导柱");
        EXPECT_EQ(sheet[9][14], u8"供应商: 龙记集团 → 盘起工业");
    }
}

TEST_F(Bomdiff, ChangeWorkbookBlanksTheTemplateRowsNoChangeTook) {
    const fs::path out = Scratch("one-change.xls"), edited = Scratch("one-change-new.xls");
    Edit(Older(), edited, u8"6\t15\t30天\n");  // the first line's lead time
    const CommandResult r = RunBomdiff({Arg(Older()), Arg(edited), "-o", Arg(out), "--format", "tsv"});
    ASSERT_EQ(r.status, 0) << r.err;
    ASSERT_EQ(TsvLines(r.out).size(), 1u) << r.out;
    EXPECT_EQ(TsvLines(r.out)[0][0], "changed");
    const nlohmann::json after = xlrdDump(out);
    std::map<std::pair<int, int>, nlohmann::json> o;
    for (const auto& c : after["sheets"][0]["cells"]) o[{c[0].get<int>(), c[1].get<int>()}] = c;
    EXPECT_EQ(o[std::make_pair(6, 1)][3], u8"变更");
    for (int row = 7; row < 10; ++row)
        for (int c = 0; c < 15; ++c) {
            EXPECT_EQ(o[std::make_pair(row, c)][3], "") << row << ", " << c;
            EXPECT_EQ(o[std::make_pair(row, c)][4], 15) << "the plain format";
        }
}

}  // namespace
