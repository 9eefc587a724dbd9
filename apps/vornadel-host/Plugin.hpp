// A user-function library run the way NX runs it: loaded, ufusr called once, then unloaded as
// its ufusr_ask_unload asks.
#pragma once

#include <stdexcept>
#include <string>

#include "Platform.hpp"

namespace runner {

// A library that cannot be loaded or lacks ufusr; what() names the file and the cause.
class PluginError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

class Plugin {
public:
    // Loads the library (LoadLibraryW on Windows, as NX loads the DLL; dlopen on POSIX). Throws
    // PluginError.
    explicit Plugin(const std::string& path);
    // Unloads the library if it is still loaded (NX ending), calling ufusr_cleanup first when
    // the library has ufusr_ask_unload.
    ~Plugin();
    Plugin(const Plugin&) = delete;
    Plugin& operator=(const Plugin&) = delete;

    // ufusr(param, &retcode, 0) with an empty param. Whatever it throws passes on.
    void RunUfusr();

    // NX's question after ufusr: a library whose ufusr_ask_unload answers UF_UNLOAD_IMMEDIATELY
    // is unloaded now (ufusr_cleanup first, when present). True when it was unloaded. A library
    // without ufusr_ask_unload, or with another answer, stays loaded until the end of the run.
    bool UnloadIfAsked();

private:
    void Unload();

    SharedLibrary library_;
    void (*ufusr_)(char*, int*, int) = nullptr;
    int (*askUnload_)() = nullptr;
    void (*cleanup_)() = nullptr;
};

}  // namespace runner
