// The part of the file operations that the C runtime does alike on every system.

#include "platform/Files.h"

#include <stdio.h>

#include <vector>

namespace platform {

bool ReadWholeFile(const std::string& path, std::string& bytes) {
    bytes.clear();
    FILE* file = fopen(OsPath(path).c_str(), "rb");
    if (file == NULL) return false;
    std::string content;
    std::vector<char> buffer(65536);
    size_t got;
    while ((got = fread(&buffer[0], 1, buffer.size(), file)) > 0) {
        content.append(&buffer[0], got);
    }
    // A folder opens on POSIX but cannot be read; on Windows it does not even open.
    const bool ok = ferror(file) == 0;
    fclose(file);
    if (ok) bytes.swap(content);
    return ok;
}

}  // namespace platform
