#include "Plugin.hpp"

#include <dlfcn.h>

#include <uf_ugopenint.h>

namespace runner {

namespace {

template <class F>
F Symbol(void* handle, const char* name) {
    return reinterpret_cast<F>(dlsym(handle, name));
}

}  // namespace

Plugin::Plugin(const std::string& path) : path_(path) {
    handle_ = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (handle_ == nullptr) {
        const char* cause = dlerror();
        throw PluginError("cannot load the plug-in " + path + ": " + (cause ? cause : "unknown cause"));
    }
    ufusr_ = Symbol<void (*)(char*, int*, int)>(handle_, "ufusr");
    askUnload_ = Symbol<int (*)()>(handle_, "ufusr_ask_unload");
    cleanup_ = Symbol<void (*)()>(handle_, "ufusr_cleanup");
    if (ufusr_ == nullptr) {
        dlclose(handle_);
        handle_ = nullptr;
        throw PluginError("the plug-in " + path + " has no entry point ufusr");
    }
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
    if (handle_ == nullptr || askUnload_ == nullptr || askUnload_() != UF_UNLOAD_IMMEDIATELY) return false;
    Unload();
    return true;
}

void Plugin::Unload() {
    if (handle_ == nullptr) return;
    // NX calls ufusr_cleanup only in libraries that have ufusr_ask_unload.
    if (askUnload_ != nullptr && cleanup_ != nullptr) cleanup_();
    dlclose(handle_);
    handle_ = nullptr;
}

}  // namespace runner
