// The workbook job of the BOM export, shared by the workbook benchmarks: load the bundled
// template, write the 11 head cells and 12 string cells per purchase line into its active sheet,
// as the export does, and save.
#pragma once

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "XlsBook.h"

struct Cell {
    int row, col;
    std::wstring text;
};

// The cells the export writes for `rows` purchase lines: texts like a real BOM's, some repeated
// (brands, materials, status), most different (numbers, names, sizes, times).
inline std::vector<Cell> bomCells(int rows)
{
    std::vector<Cell> cells = {{1, 4, L"宁波精密模塑有限公司"}, {1, 8, L"M24-0516"}, {2, 1, L"P-88231"},
                               {2, 11, L"王工"},               {4, 8, L"280T"},     {1, 1, L"汽车门把手外壳"},
                               {3, 1, L"PA66+GF30"},          {4, 1, L"2.5mm"},    {3, 4, L"两板模"},
                               {2, 8, L"ERP-2024-0091"},      {3, 8, L"SO-7781"}};
    const wchar_t* names[] = {L"顶针", L"司筒", L"导柱", L"导套", L"弹簧", L"螺丝", L"水嘴", L"定位圈"};
    const wchar_t* brands[] = {L"MISUMI", L"盘起", L"DME", L"HASCO"};
    for (int i = 0; i < rows; ++i) {
        const int r = 6 + i;
        const std::wstring n = std::to_wstring(i + 1);
        cells.push_back({r, 0, n});
        cells.push_back({r, 1, names[i % 8]});
        cells.push_back({r, 3, L"Φ" + std::to_wstring(2 + i % 20) + L"x" + std::to_wstring(50 + i % 300)});
        cells.push_back({r, 5, brands[i % 4]});
        cells.push_back({r, 7, std::to_wstring(1 + i % 12)});
        cells.push_back({r, 9, i % 2 == 0 ? L"淬火" : L"氮化"});
        cells.push_back({r, 11, i % 5 == 0 ? L"加急" : L""});
        cells.push_back({r, 13, i % 3 == 0 ? L"SKD61" : L"SUJ2"});
        cells.push_back({r, 14, L"供应商" + std::to_wstring(i % 7)});
        cells.push_back({r, 15, std::to_wstring(3 + i % 20) + L"天"});
        cells.push_back({r, 16, L"待采购"});
        cells.push_back({r, 17, L"2024-05-06 " + std::to_wstring(8 + i % 10) + L":" + std::to_wstring(10 + i % 50)});
    }
    return cells;
}

// The bundled template's bytes, read from the checkout the bench was built from; ends the
// program when it cannot be read.
inline std::vector<unsigned char> readTemplate()
{
    // u8: narrow literals are GBK in this build, file names on this system UTF-8.
    const std::string path = std::string(VORNADEL_SOURCE_DIR) + u8"/samples/config/塑胶模/模具标准件申购表.xls";
    std::ifstream in(path, std::ios::binary);
    const std::vector<unsigned char> bytes((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    if (bytes.empty()) {
        std::fprintf(stderr, "cannot read %s\n", path.c_str());
        std::exit(1);
    }
    return bytes;
}

using Clock = std::chrono::steady_clock;

inline double ms(Clock::duration d) { return std::chrono::duration<double, std::milli>(d).count(); }

// One run of the job with libs/xls, all in memory: times of its steps, the size of the saved
// book, and the book itself when `output` is given.
struct Run {
    double load, write, save, total;
    size_t bytes;
};

inline Run once(const std::vector<unsigned char>& templateBytes, const std::vector<Cell>& cells,
                std::vector<unsigned char>* output = nullptr)
{
    Run run;
    const Clock::time_point t0 = Clock::now();
    xls::Book book;
    if (!book.loadBuffer(templateBytes.data(), templateBytes.size())) {
        std::fprintf(stderr, "load: %s\n", book.errorMessage());
        std::exit(1);
    }
    xls::Sheet* sheet = book.getSheet(book.activeSheet());
    const Clock::time_point t1 = Clock::now();
    for (const Cell& c : cells) {
        if (!sheet->writeStr(c.row, c.col, c.text.c_str())) {
            std::fprintf(stderr, "write: %s\n", book.errorMessage());
            std::exit(1);
        }
    }
    const Clock::time_point t2 = Clock::now();
    std::vector<unsigned char> out;
    if (!book.saveBuffer(out)) {
        std::fprintf(stderr, "save: %s\n", book.errorMessage());
        std::exit(1);
    }
    const Clock::time_point t3 = Clock::now();
    run.load = ms(t1 - t0);
    run.write = ms(t2 - t1);
    run.save = ms(t3 - t2);
    run.total = ms(t3 - t0);
    run.bytes = out.size();
    if (output != nullptr) output->swap(out);
    return run;
}
