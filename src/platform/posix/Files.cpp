// Files on POSIX. The plug-in forms Windows paths; OsPath maps them onto this machine's folders
// (docs/paths.md) and each operation then behaves as its Windows counterpart does.

#include "platform/Files.h"

#include "platform/CodePage.h"

#include <errno.h>
#include <fcntl.h>
#include <stdio.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <sys/types.h>
#include <unistd.h>

#include <vector>

namespace platform {

namespace {

bool IsDriveLetter(char c) {
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}

char UpperLetter(char c) {
    return (c >= 'a' && c <= 'z') ? static_cast<char>(c - 'a' + 'A') : c;
}

// The folder that stands for drive letter in VORNADEL_DRIVES ("C=/home/u/c;D=/srv/d"), without
// a trailing "/"; "" when the drive is not mapped. A later entry for a letter replaces an
// earlier one; entries that are not "X=folder" are ignored. The table is UTF-8 like the rest of
// the environment, so the folder is used as it stands.
std::string DriveRoot(char letter) {
    const char* table = getenv("VORNADEL_DRIVES");
    std::string root;
    if (table == NULL) return root;
    const std::string entries(table);
    size_t start = 0;
    while (start <= entries.size()) {
        size_t end = entries.find(';', start);
        if (end == std::string::npos) end = entries.size();
        const std::string entry = entries.substr(start, end - start);
        if (entry.size() >= 2 && entry[1] == '=' && IsDriveLetter(entry[0]) &&
            UpperLetter(entry[0]) == UpperLetter(letter)) {
            root = entry.substr(2);
        }
        start = end + 1;
    }
    while (root.size() > 1 && root[root.size() - 1] == '/') {
        root.erase(root.size() - 1);
    }
    return root;
}

char CurrentDrive() {
    const char* drive = getenv("VORNADEL_CURRENT_DRIVE");
    return (drive != NULL && IsDriveLetter(drive[0])) ? drive[0] : 'C';
}

// The part of a drive path after "X:", resolved as Windows resolves it: "." and empty
// components vanish and ".." never climbs above the drive's root, so no path leaves the folder
// its drive is mapped to. A trailing "/" stays.
std::string ResolveInDrive(const std::string& rest) {
    std::vector<std::string> parts;
    size_t start = 0;
    while (start <= rest.size()) {
        size_t end = rest.find('/', start);
        if (end == std::string::npos) end = rest.size();
        const std::string part = rest.substr(start, end - start);
        if (part == "..") {
            if (!parts.empty()) parts.pop_back();
        } else if (!part.empty() && part != ".") {
            parts.push_back(part);
        }
        start = end + 1;
    }
    std::string resolved;
    for (size_t i = 0; i < parts.size(); ++i) {
        resolved += "/" + parts[i];
    }
    if (!parts.empty() && rest[rest.size() - 1] == '/') resolved += "/";
    return resolved;
}

// Closes a file descriptor on every exit unless released.
class FileDescriptor {
public:
    explicit FileDescriptor(int fd) : fd_(fd) {}
    ~FileDescriptor() { if (fd_ >= 0) close(fd_); }
    int get() const { return fd_; }
    // Closes now and reports whether everything written reached the file.
    bool Close() {
        const int fd = fd_;
        fd_ = -1;
        return close(fd) == 0;
    }

private:
    FileDescriptor(const FileDescriptor&);
    FileDescriptor& operator=(const FileDescriptor&);

    int fd_;
};

bool WriteAll(int fd, const char* data, size_t size) {
    while (size > 0) {
        const ssize_t written = write(fd, data, size);
        if (written < 0) {
            if (errno == EINTR) continue;
            return false;
        }
        data += written;
        size -= static_cast<size_t>(written);
    }
    return true;
}

}  // namespace

std::string OsPath(const std::string& path) {
    std::string os = AnsiToUtf8(path);
    for (size_t i = 0; i < os.size(); ++i) {
        if (os[i] == '\\') os[i] = '/';
    }
    char drive;
    std::string rest;
    if (os.size() >= 2 && IsDriveLetter(os[0]) && os[1] == ':') {
        drive = os[0];
        rest = os.substr(2);
    } else if (!path.empty() && path[0] == '\\') {
        // "\\server\share" names a network share, which has no counterpart here.
        if (os.size() >= 2 && os[1] == '/') return "";
        drive = CurrentDrive();
        rest = os;
    } else {
        return os;  // already a POSIX path, or relative to the working folder
    }
    const std::string root = DriveRoot(drive);
    if (root.empty()) return "";
    const std::string resolved = ResolveInDrive(rest);
    if (resolved.empty()) return root;
    return root == "/" ? resolved : root + resolved;
}

bool PathExists(const std::string& path) {
    return access(OsPath(path).c_str(), F_OK) == 0;
}

bool MakeFolder(const std::string& path) {
    return mkdir(OsPath(path).c_str(), 0777) == 0;
}

bool RemoveFile(const std::string& path) {
    // unlink, not remove: the C runtime's remove() on Windows never deletes a folder.
    return unlink(OsPath(path).c_str()) == 0;
}

bool CopyOneFile(const std::string& from, const std::string& to, bool failIfExists) {
    const std::string source = OsPath(from);
    const std::string target = OsPath(to);
    FileDescriptor in(open(source.c_str(), O_RDONLY));
    struct stat sourceInfo;
    if (in.get() < 0 || fstat(in.get(), &sourceInfo) != 0 || !S_ISREG(sourceInfo.st_mode)) {
        return false;
    }
    // Copying a file onto itself fails on Windows; here truncating the target would destroy it.
    struct stat targetInfo;
    if (stat(target.c_str(), &targetInfo) == 0 && targetInfo.st_dev == sourceInfo.st_dev &&
        targetInfo.st_ino == sourceInfo.st_ino) {
        return false;
    }
    const int flags = O_WRONLY | O_CREAT | (failIfExists ? O_EXCL : O_TRUNC);
    FileDescriptor out(open(target.c_str(), flags, sourceInfo.st_mode & 0777));
    if (out.get() < 0) return false;
    std::vector<char> buffer(65536);
    bool ok = true;
    for (;;) {
        const ssize_t got = read(in.get(), &buffer[0], buffer.size());
        if (got < 0 && errno == EINTR) continue;
        if (got <= 0) {
            ok = got == 0;
            break;
        }
        if (!WriteAll(out.get(), &buffer[0], static_cast<size_t>(got))) {
            ok = false;
            break;
        }
    }
    ok = out.Close() && ok;
    // As CopyFileA, a failed copy leaves no partial target behind.
    if (!ok) unlink(target.c_str());
    return ok;
}

bool ReplaceFileBytes(const std::string& path, const std::string& bytes) {
    const std::string target = OsPath(path);
    if (target.empty()) return false;
    // The bytes go to a fresh file in the same folder, so that the final rename cannot cross
    // file systems and the file is never seen half written.
    static unsigned long counter = 0;
    std::string temporary;
    int fd = -1;
    for (int attempt = 0; attempt < 100 && fd < 0; ++attempt) {
        char suffix[64];
        sprintf(suffix, ".~%ld-%lu", static_cast<long>(getpid()), ++counter);
        temporary = target + suffix;
        fd = open(temporary.c_str(), O_WRONLY | O_CREAT | O_EXCL, 0666);
        if (fd < 0 && errno != EEXIST) return false;
    }
    FileDescriptor out(fd);
    if (out.get() < 0) return false;
    struct stat old;
    bool ok = WriteAll(out.get(), bytes.data(), bytes.size());
    if (ok && stat(target.c_str(), &old) == 0) fchmod(out.get(), old.st_mode & 07777);
    ok = out.Close() && ok;
    ok = ok && rename(temporary.c_str(), target.c_str()) == 0;
    if (!ok) unlink(temporary.c_str());
    return ok;
}

}  // namespace platform
