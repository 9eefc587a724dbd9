// The workbook side of the BOM export, timed: load the bundled template, write the 11 head cells
// and N part rows of 12 string cells, save. Run on demand (not a test):
//   build/bin/bench_xls_export [rows...]    default rows: 100 1000 2000 10000 30000 60000
// Each size is run several times; the table gives the fastest run, split into its steps, and the
// cells written per second over the whole run (load + writes + save).

#include "BomJob.hpp"

#include <algorithm>
#include <cstdlib>
#include <cstdio>
#include <string>
#include <vector>

int main(int argc, char** argv)
{
    const std::vector<unsigned char> templateBytes = readTemplate();
    std::vector<int> sizes;
    for (int i = 1; i < argc; ++i) sizes.push_back(std::atoi(argv[i]));
    if (sizes.empty()) sizes = {100, 1000, 2000, 10000, 30000, 60000};

    std::printf("%8s %9s %9s %9s %9s %9s %12s %10s\n", "rows", "cells", "load ms", "write ms", "save ms", "total ms",
                "cells/s", "file KiB");
    for (int rows : sizes) {
        const std::vector<Cell> cells = bomCells(rows);
        const int repeats = std::max(3, 20000 / std::max(rows, 1));
        Run best = once(templateBytes, cells);
        for (int k = 1; k < repeats; ++k) {
            Run r = once(templateBytes, cells);
            if (r.total < best.total) best = r;
        }
        std::printf("%8d %9zu %9.2f %9.2f %9.2f %9.2f %12.0f %10zu\n", rows, cells.size(), best.load, best.write,
                    best.save, best.total, cells.size() / (best.total / 1000.0), best.bytes / 1024);
    }
    return 0;
}
