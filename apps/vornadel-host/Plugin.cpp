#include "Plugin.hpp"

#include <uf_ugopenint.h>

namespace runner {

namespace {

template <class F>
F Symbol(const SharedLibrary& library, const char* name) {
    return reinterpret_cast<F>(library.Symbol(name));
}

}  // namespace

Plugin::Plugin(const std::string& path) : library_(path) {
    if (library_.handle() == nullptr) throw PluginError("cannot load the plug-in " + path + ": " + library_.error());
    ufusr_ = Symbol<void (*)(char*, int*, int)>(library_, "ufusr");
    askUnload_ = Symbol<int (*)()>(library_, "ufusr_ask_unload");
    cleanup_ = Symbol<void (*)()>(library_, "ufusr_cleanup");
    if (ufusr_ == nullptr) throw PluginError("the plug-in " + path + " has no entry point ufusr");
}

Plugin::~Plugin() {
    Unload();
}

void Plugin::RunUfusr() {
    char param[1] = {'\0'};
    int retcode = 0;
    ufusr_(param, &retcode, 0);
}

bool Plugin::UnloadIfAsked() {
    if (library_.handle() == nullptr || askUnload_ == nullptr || askUnload_() != UF_UNLOAD_IMMEDIATELY) return false;
    Unload();
    return true;
}

void Plugin::Unload() {
    if (library_.handle() == nullptr) return;
    // NX calls ufusr_cleanup only in libraries that have ufusr_ask_unload.
    if (askUnload_ != nullptr && cleanup_ != nullptr) cleanup_();
    library_.Unload();
}

}  // namespace runner
