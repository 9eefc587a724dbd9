// What the runner does differently on Windows and on POSIX: its arguments, standard streams,
// process environment and own path, and loading the plug-in library. Everything else of the
// runner is the same source on both.
#pragma once

#include <string>
#include <vector>

namespace runner {

// The plug-in the runner runs when --plugin is not given, in the runner's own folder:
// Vornadel.dll on Windows, libVornadel.so on POSIX.
extern const char* const kDefaultPlugin;

// POSIX maps the drive letters of the plug-in's Windows paths to folders through a drive table
// (VORNADEL_DRIVES, --drive) and takes the desktop folder from VORNADEL_DESKTOP (--desktop). On
// Windows the plug-in uses the machine's own drives and the user's desktop folder: nothing is
// mapped, and both options are refused.
extern const bool kMapsDrives;

// The arguments after the program name, as UTF-8 (on Windows from the wide command line).
std::vector<std::string> Arguments(int argc, char** argv);

// Standard input, output and errors pass bytes unchanged (no line-end translation on Windows).
void UseBinaryStandardStreams();

bool StandardInputIsTerminal();
bool StandardErrorIsTerminal();

// The full path of the running executable (UTF-8); "" when it cannot be found.
std::string ExecutablePath();

// Sets a variable of the process environment (name and value UTF-8), where the plug-in's getenv
// reads it.
void SetProcessVariable(const std::string& name, const std::string& value);

// A loaded shared library (the plug-in), as the platform loads it: dlopen, or LoadLibraryW as NX
// loads the DLL.
class SharedLibrary {
public:
    // Loads path (UTF-8). On failure handle() is null and error() says why, in the system's words.
    explicit SharedLibrary(const std::string& path);
    ~SharedLibrary();
    SharedLibrary(const SharedLibrary&) = delete;
    SharedLibrary& operator=(const SharedLibrary&) = delete;

    void* handle() const { return handle_; }
    const std::string& error() const { return error_; }
    // The address of an exported function; null when the library has none of that name.
    void* Symbol(const char* name) const;
    // Unloads the library (dlclose, FreeLibrary); handle() is null afterwards.
    void Unload();

private:
    void* handle_ = nullptr;
    std::string error_;
};

}  // namespace runner
