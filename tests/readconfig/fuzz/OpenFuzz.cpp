// libFuzzer target for ReadConfigFile::OpenConfigFile. Beyond "no crash, no hang, no read outside
// the text": the bytes are written to a table file and read; every row is as long as the header,
// every named column has one value per row, and reading the same file again gives the same table.
// Built only with -DVORNADEL_FUZZ=ON (clang); see libs/readconfig/README.md for how to run it.

#include "platform/ReadConfigFile.h"

#include <unistd.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

namespace {

const std::string& TablePath()
{
    static const std::string path = [] {
        const char* folder = getenv("TMPDIR");
        return std::string(folder != nullptr && *folder != '\0' ? folder : "/tmp") +
               "/readconfig-fuzz-" + std::to_string(getpid()) + ".csv";
    }();
    return path;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    FILE* file = fopen(TablePath().c_str(), "wb");
    if (file == nullptr) abort();
    if (size > 0 && fwrite(data, 1, size, file) != size) abort();
    if (fclose(file) != 0) abort();

    ReadConfigFile table;
    if (!table.OpenConfigFile(TablePath())) abort();
    const std::vector<std::string> names = table.GetColumnNames();
    const std::vector<std::vector<std::string> > rows = table.GetColumnValues();
    if (names.empty() && !rows.empty()) abort();
    for (size_t i = 0; i < rows.size(); ++i) {
        if (rows[i].size() != names.size()) abort();
    }
    for (size_t i = 0; i < names.size(); ++i) {
        if (table.GetColumnValue(names[i]).size() != rows.size()) abort();
    }

    ReadConfigFile again;
    if (!again.OpenConfigFile(TablePath())) abort();
    if (again.GetColumnNames() != names || again.GetColumnValues() != rows) abort();
    return 0;
}
