// Files on Windows: the paths the plug-in forms go to the C runtime and Win32 unchanged.

#include "platform/Files.h"

#include <windows.h>

#include <direct.h>
#include <io.h>
#include <stdio.h>

#include <vector>

namespace platform {

namespace {

// The folder part of path, with its final separator, for GetTempFileNameA: "." when path names
// no folder. A "\" byte may be the second byte of a double-byte character, so the text is
// walked character by character.
std::string FolderOf(const std::string& path) {
    size_t end = std::string::npos;
    for (size_t i = 0; i < path.size(); ++i) {
        if (IsDBCSLeadByte(static_cast<BYTE>(path[i])) && i + 1 < path.size()) {
            ++i;
        } else if (path[i] == '\\' || path[i] == '/' || (i == 1 && path[i] == ':')) {
            end = i + 1;
        }
    }
    return end == std::string::npos ? std::string(".") : path.substr(0, end);
}

}  // namespace

std::string OsPath(const std::string& path) {
    return path;
}

bool PathExists(const std::string& path) {
    return _access(path.c_str(), 0) == 0;
}

bool MakeFolder(const std::string& path) {
    return _mkdir(path.c_str()) == 0;
}

bool RemoveFile(const std::string& path) {
    return remove(path.c_str()) == 0;
}

bool CopyOneFile(const std::string& from, const std::string& to, bool failIfExists) {
    return CopyFileA(from.c_str(), to.c_str(), failIfExists ? TRUE : FALSE) != FALSE;
}

bool ReplaceFileBytes(const std::string& path, const std::string& bytes) {
    // The bytes go to a fresh file in the same folder, so that MoveFileExA is a rename on one
    // volume and the file is never seen half written.
    std::vector<char> temporary(MAX_PATH + 1, '\0');
    if (GetTempFileNameA(FolderOf(path).c_str(), "vdn", 0, &temporary[0]) == 0) return false;
    FILE* file = fopen(&temporary[0], "wb");
    bool ok = file != NULL;
    if (ok) {
        ok = fwrite(bytes.data(), 1, bytes.size(), file) == bytes.size();
        ok = fclose(file) == 0 && ok;
    }
    ok = ok && MoveFileExA(&temporary[0], path.c_str(), MOVEFILE_REPLACE_EXISTING) != FALSE;
    if (!ok) DeleteFileA(&temporary[0]);
    return ok;
}

}  // namespace platform
