#include "Platform.hpp"

#ifdef _WIN32
#include <windows.h>
#include <shellapi.h>
#include <fcntl.h>
#include <io.h>
#include <stdio.h>
#include <stdlib.h>
#else
#include <dlfcn.h>
#include <stdlib.h>
#include <unistd.h>

#include <filesystem>
#endif

namespace runner {

#ifdef _WIN32

namespace {

std::wstring Wide(const std::string& utf8) {
    if (utf8.empty()) return std::wstring();
    const int size = MultiByteToWideChar(CP_UTF8, 0, utf8.data(), static_cast<int>(utf8.size()), nullptr, 0);
    std::wstring wide(static_cast<size_t>(size), L'\0');
    MultiByteToWideChar(CP_UTF8, 0, utf8.data(), static_cast<int>(utf8.size()), &wide[0], size);
    return wide;
}

std::string Utf8(const std::wstring& wide) {
    if (wide.empty()) return std::string();
    const int size =
        WideCharToMultiByte(CP_UTF8, 0, wide.data(), static_cast<int>(wide.size()), nullptr, 0, nullptr, nullptr);
    std::string utf8(static_cast<size_t>(size), '\0');
    WideCharToMultiByte(CP_UTF8, 0, wide.data(), static_cast<int>(wide.size()), &utf8[0], size, nullptr, nullptr);
    return utf8;
}

// The system's words for a Win32 error code, without the line end it ends with.
std::string ErrorText(DWORD code) {
    wchar_t* text = nullptr;
    const DWORD length = FormatMessageW(
        FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr, code, 0,
        reinterpret_cast<wchar_t*>(&text), 0, nullptr);
    std::wstring message = length > 0 ? std::wstring(text, length) : std::wstring();
    if (text != nullptr) LocalFree(text);
    while (!message.empty() && (message.back() == L'\n' || message.back() == L'\r' || message.back() == L' ')) {
        message.pop_back();
    }
    const std::string number = "Windows error " + std::to_string(code);
    return message.empty() ? number : Utf8(message) + " (" + number + ")";
}

}  // namespace

const char* const kDefaultPlugin = "Vornadel.dll";
const bool kMapsDrives = false;

std::vector<std::string> Arguments(int, char**) {
    std::vector<std::string> args;
    int count = 0;
    wchar_t** wide = CommandLineToArgvW(GetCommandLineW(), &count);
    if (wide == nullptr) return args;
    for (int i = 1; i < count; ++i) args.push_back(Utf8(wide[i]));
    LocalFree(wide);
    return args;
}

void UseBinaryStandardStreams() {
    _setmode(_fileno(stdin), _O_BINARY);
    _setmode(_fileno(stdout), _O_BINARY);
    _setmode(_fileno(stderr), _O_BINARY);
}

bool StandardInputIsTerminal() { return _isatty(_fileno(stdin)) != 0; }
bool StandardErrorIsTerminal() { return _isatty(_fileno(stderr)) != 0; }

std::string ExecutablePath() {
    std::wstring path(MAX_PATH, L'\0');
    for (;;) {
        const DWORD length = GetModuleFileNameW(nullptr, &path[0], static_cast<DWORD>(path.size()));
        if (length == 0) return std::string();
        if (length < path.size()) return Utf8(path.substr(0, length));
        path.resize(path.size() * 2);
    }
}

void SetProcessVariable(const std::string& name, const std::string& value) {
    // The C runtime's own copy of the environment (which getenv reads) and the process's.
    _wputenv_s(Wide(name).c_str(), Wide(value).c_str());
}

SharedLibrary::SharedLibrary(const std::string& path) {
    std::wstring wide = Wide(path);
    for (wchar_t& c : wide) {
        if (c == L'/') c = L'\\';
    }
    handle_ = LoadLibraryW(wide.c_str());
    if (handle_ == nullptr) error_ = ErrorText(GetLastError());
}

void* SharedLibrary::Symbol(const char* name) const {
    return reinterpret_cast<void*>(GetProcAddress(static_cast<HMODULE>(handle_), name));
}

void SharedLibrary::Unload() {
    if (handle_ != nullptr) FreeLibrary(static_cast<HMODULE>(handle_));
    handle_ = nullptr;
}

#else

const char* const kDefaultPlugin = "libVornadel.so";
const bool kMapsDrives = true;

std::vector<std::string> Arguments(int argc, char** argv) { return std::vector<std::string>(argv + 1, argv + argc); }

void UseBinaryStandardStreams() {}

bool StandardInputIsTerminal() { return isatty(STDIN_FILENO) != 0; }
bool StandardErrorIsTerminal() { return isatty(STDERR_FILENO) != 0; }

std::string ExecutablePath() {
    std::error_code ec;
    const std::filesystem::path exe = std::filesystem::read_symlink("/proc/self/exe", ec);
    return ec ? std::string() : exe.string();
}

void SetProcessVariable(const std::string& name, const std::string& value) { setenv(name.c_str(), value.c_str(), 1); }

SharedLibrary::SharedLibrary(const std::string& path) {
    handle_ = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (handle_ == nullptr) {
        const char* cause = dlerror();
        error_ = cause ? cause : "unknown cause";
    }
}

void* SharedLibrary::Symbol(const char* name) const { return dlsym(handle_, name); }

void SharedLibrary::Unload() {
    if (handle_ != nullptr) dlclose(handle_);
    handle_ = nullptr;
}

#endif

SharedLibrary::~SharedLibrary() { Unload(); }

}  // namespace runner
