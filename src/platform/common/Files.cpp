// The file operations that are the same on every system once the path is mapped.

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

bool ReplaceTextFile(const std::string& path, const std::string& text) {
    std::string crlf;
    crlf.reserve(text.size() + text.size() / 16);
    for (size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '\n') crlf += '\r';
        crlf += text[i];
    }
    return ReplaceFileBytes(path, crlf);
}

}  // namespace platform
