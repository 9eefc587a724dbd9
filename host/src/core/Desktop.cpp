// The desktop services the host gives the plug-in (platform/Desktop.h): the local clock, which
// tests pin, and opening a file with its associated program, which is recorded and really done
// (xdg-open on POSIX, ShellExecuteA on Windows) only when the runner asks for it.
#include <cctype>
#include <cstdlib>
#include <ctime>
#include <string>

#ifdef _WIN32
#include <windows.h>
#include <shellapi.h>
#else
#include <spawn.h>
#include <sys/wait.h>
extern char** environ;
#endif

#include "Driver.hpp"
#include "HostSession.hpp"
#include "core/Core.hpp"
#include "platform/Desktop.h"

namespace {

#ifdef _WIN32

// Windows opens the path the plug-in names as it stands.
void OpenForReal(const std::string& path) {
    ShellExecuteA(nullptr, "open", path.c_str(), nullptr, nullptr, SW_SHOWNORMAL);
}

platform::LocalTime Now() {
    SYSTEMTIME now;
    ::GetLocalTime(&now);
    return platform::LocalTime{now.wYear, now.wMonth,  now.wDay,         now.wHour,
                               now.wMinute, now.wSecond, now.wMilliseconds};
}

#else

void OpenWithXdgOpen(const std::string& path) {
    pid_t child = 0;
    char program[] = "xdg-open";
    std::string argument = path;
    char* argv[] = {program, argument.data(), nullptr};
    if (posix_spawnp(&child, program, nullptr, nullptr, argv, environ) == 0) waitpid(child, nullptr, 0);
}

void OpenForReal(const std::string& path) { OpenWithXdgOpen(host::LocalPath(path)); }

platform::LocalTime Now() {
    timespec now{};
    clock_gettime(CLOCK_REALTIME, &now);
    std::tm local{};
    localtime_r(&now.tv_sec, &local);
    return platform::LocalTime{local.tm_year + 1900, local.tm_mon + 1, local.tm_mday, local.tm_hour,
                               local.tm_min,         local.tm_sec,     static_cast<int>(now.tv_nsec / 1000000)};
}

#endif

}  // namespace

namespace platform {

LocalTime GetLocalTime() {
    host::core::SessionState& state = host::core::State();
    if (!state.pinnedClock) return Now();
    const LocalTime read = *state.pinnedClock;
    LocalTime& next = *state.pinnedClock;
    // Moves on within the day; a test's steps never cross midnight.
    long ms = ((next.hour * 60L + next.minute) * 60 + next.second) * 1000 + next.milliseconds + state.clockStepMilliseconds;
    ms %= 24L * 3600 * 1000;
    next.milliseconds = static_cast<int>(ms % 1000);
    next.second = static_cast<int>(ms / 1000 % 60);
    next.minute = static_cast<int>(ms / 60000 % 60);
    next.hour = static_cast<int>(ms / 3600000);
    return read;
}

void OpenWithAssociatedProgram(const std::string& path) {
    host::core::SessionState& state = host::core::State();
    state.openedFiles.push_back(path);
    if (state.reallyOpenFiles) OpenForReal(path);
}

}  // namespace platform

namespace host {

void PinClock(const platform::LocalTime& time, int stepMilliseconds) {
    core::State().pinnedClock = time;
    core::State().clockStepMilliseconds = stepMilliseconds;
}
void UnpinClock() { core::State().pinnedClock.reset(); }
const std::vector<std::string>& OpenedFiles() { return core::State().openedFiles; }

const std::vector<RefusedAttribute>& RefusedAttributes() { return core::State().refusedAttributes; }
void SetReallyOpenFiles(bool reallyOpen) { core::State().reallyOpenFiles = reallyOpen; }

std::string LocalPath(const std::string& windowsPath) {
    std::string path = host::GbkToUtf8(windowsPath);
    for (char& c : path)
        if (c == '\\') c = '/';
    const char* table = std::getenv("VORNADEL_DRIVES");
    if (path.size() < 2 || path[1] != ':' || table == nullptr) return path;
    const std::string drives = table;
    const char letter = static_cast<char>(std::toupper(static_cast<unsigned char>(path[0])));
    std::string root;
    for (size_t start = 0; start <= drives.size();) {
        size_t end = drives.find(';', start);
        if (end == std::string::npos) end = drives.size();
        const std::string entry = drives.substr(start, end - start);
        if (entry.size() > 2 && entry[1] == '=' && std::toupper(static_cast<unsigned char>(entry[0])) == letter)
            root = entry.substr(2);
        start = end + 1;
    }
    return root.empty() ? path : root + path.substr(2);
}

}  // namespace host
