// vornadel-bomdiff's work on two BOM exports of N lines, timed: read both workbooks, compare,
// print the tsv list, write the change workbook. Run on demand (not a test):
//   build/bin/bench_bomdiff [lines...]    default lines: 1000 5000 20000
// The BOMs are made with the workbook engine from the bundled requisition form, as the export
// fills it. The newer one has every 20th line removed, every 10th re-counted, every 25th
// re-sourced and N/20 lines added. Each size runs 5 times; the table gives the fastest run.
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>

#include <unistd.h>

#include "Bom.hpp"
#include "ChangeBook.hpp"
#include "Compare.hpp"
#include "Report.hpp"
#include "XlsBook.h"

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

namespace {

const char* const kNames[] = {u8"顶针", u8"内六角螺钉", u8"导柱", u8"导套", u8"弹簧", u8"水嘴", u8"密封圈", u8"定位销"};

void WriteBom(const fs::path& path, int lines, bool newer) {
    const fs::path form = fs::u8path(VORNADEL_SOURCE_DIR) / "samples" / "config" / fs::u8path(u8"塑胶模") /
                          fs::u8path(u8"模具标准件申购表.xls");
    std::ifstream in(form, std::ios::binary);
    const std::vector<unsigned char> bytes((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    xls::Book book;
    if (!book.loadBuffer(bytes.data(), bytes.size())) {
        std::fprintf(stderr, "cannot load %s: %s\n", form.string().c_str(), book.errorMessage());
        std::exit(1);
    }
    xls::Sheet* sheet = book.getSheet(book.activeSheet());
    auto put = [&](int row, int column, const std::string& text) {
        const std::vector<unsigned short> units = bomdiff::Utf16(text);
        sheet->writeStrUtf16(row, column, units.data(), units.size());
    };
    for (int f = 0; f < bomdiff::kHeadFields; ++f) put(bomdiff::kHeadCells[f].row, bomdiff::kHeadCells[f].column, "YM-2403");
    int row = bomdiff::kFirstPartRow;
    const int total = newer ? lines + lines / 20 : lines;
    for (int i = 0; i < total; ++i) {
        if (newer && i < lines && i % 20 == 7) continue;  // removed
        const std::string fields[bomdiff::kPartFields] = {
            kNames[i % 8], u8"Φ" + std::to_string(2 + i % 10) + u8"×" + std::to_string(100 + i), i % 3 ? u8"盘起" : u8"龙记",
            std::to_string(1 + i % 6 + (newer && i % 10 == 3 ? 2 : 0)), u8"淬火HRC58-62", "",
            "SKD61", newer && i % 25 == 4 ? u8"东莞盘起工业" : u8"龙记集团", u8"7天", "", ""};
        put(row, 0, std::to_string(row - bomdiff::kFirstPartRow + 1));
        for (int f = 0; f < bomdiff::kPartFields; ++f) put(row, bomdiff::kPartColumns[f], fields[f]);
        ++row;
    }
    if (!book.save(path.string().c_str())) {
        std::fprintf(stderr, "cannot save %s: %s\n", path.string().c_str(), book.errorMessage());
        std::exit(1);
    }
}

double Ms(Clock::time_point a, Clock::time_point b) { return std::chrono::duration<double, std::milli>(b - a).count(); }

}  // namespace

int main(int argc, char** argv) {
    std::vector<int> sizes;
    for (int i = 1; i < argc; ++i) sizes.push_back(std::atoi(argv[i]));
    if (sizes.empty()) sizes = {1000, 5000, 20000};
    const fs::path dir = fs::temp_directory_path() / ("bench-bomdiff-" + std::to_string(::getpid()));
    fs::create_directories(dir);
    const fs::path templ = fs::u8path(VORNADEL_SOURCE_DIR) / "samples" / "bomdiff" / fs::u8path(u8"标准件变更单.xls");
    std::printf("%8s %9s %9s %9s %9s %9s %9s\n", "lines", "changes", "read ms", "compare", "print ms", "write ms", "total ms");
    for (int lines : sizes) {
        const fs::path older = dir / "old.xls", newer = dir / "new.xls", out = dir / "changes.xls";
        WriteBom(older, lines, false);
        WriteBom(newer, lines, true);
        double best[5] = {1e9, 0, 0, 0, 1e9};
        size_t changes = 0;
        for (int k = 0; k < 5; ++k) {
            fs::remove(out);
            const auto t0 = Clock::now();
            const bomdiff::Bom a = bomdiff::ReadBom(older), b = bomdiff::ReadBom(newer);
            const auto t1 = Clock::now();
            const bomdiff::Comparison comparison = bomdiff::Compare(a, b, false);
            const auto t2 = Clock::now();
            std::ostringstream tsv;
            bomdiff::PrintTsv(tsv, comparison);
            const auto t3 = Clock::now();
            const std::string problem = bomdiff::WriteChangeBook(templ, out, a, b, comparison);
            const auto t4 = Clock::now();
            if (!problem.empty()) {
                std::fprintf(stderr, "%s\n", problem.c_str());
                return 1;
            }
            changes = comparison.changes.size();
            if (Ms(t0, t4) < best[4]) {
                best[0] = Ms(t0, t1), best[1] = Ms(t1, t2), best[2] = Ms(t2, t3), best[3] = Ms(t3, t4), best[4] = Ms(t0, t4);
            }
        }
        std::printf("%8d %9zu %9.2f %9.2f %9.2f %9.2f %9.2f\n", lines, changes, best[0], best[1], best[2], best[3], best[4]);
    }
    fs::remove_all(dir);
    return 0;
}
