// A program run as a separate process, and the files it wrote: what the runner's end-to-end
// tests (RunHost.h) and the transcript driver (transcript/Transcript.cpp) share.
#pragma once

#ifdef _WIN32
#include <windows.h>
#include <wchar.h>

#include "../support/WideText.hpp"
#else
#include <sys/wait.h>
#include <fcntl.h>
#include <unistd.h>
#endif

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

namespace runnertest {

inline std::string ReadText(const std::filesystem::path& path) {
    std::ifstream in(path, std::ios::binary);
    std::ostringstream content;
    content << in.rdbuf();
    return content.str();
}

// The lines of a text, without their line ends.
inline std::vector<std::string> Lines(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream in(text);
    std::string line;
    while (std::getline(in, line)) lines.push_back(line);
    return lines;
}

#ifdef _WIN32
inline constexpr const char* kNullDevice = "NUL";
#else
inline constexpr const char* kNullDevice = "/dev/null";
#endif

// Runs the program args[0] with args: standard input read from inFile, standard output and
// errors written to outFile and errFile, in folder when one is given. Each env entry "NAME=VALUE"
// is added to its environment; an entry "NAME" without "=" removes NAME from it. Its exit
// status; 127 when it could not be started, -1 when it did not exit normally.
#ifdef _WIN32

// One argument of a command line, quoted so that CommandLineToArgvW gives it back unchanged.
inline std::wstring QuoteArgument(const std::wstring& arg) {
    if (!arg.empty() && arg.find_first_of(L" \t\n\v\"") == std::wstring::npos) return arg;
    std::wstring quoted = L"\"";
    size_t backslashes = 0;
    for (wchar_t c : arg) {
        if (c == L'\\') {
            ++backslashes;
            continue;
        }
        // Backslashes before a quote are doubled, and the quote escaped.
        quoted.append(c == L'"' ? backslashes * 2 + 1 : backslashes, L'\\');
        quoted.push_back(c);
        backslashes = 0;
    }
    quoted.append(backslashes * 2, L'\\');
    return quoted + L"\"";
}

// The environment block of a child: this process's variables with env's changes.
inline std::wstring EnvironmentBlock(const std::vector<std::string>& env) {
    std::vector<std::wstring> variables;
    if (wchar_t* own = GetEnvironmentStringsW()) {
        for (const wchar_t* v = own; *v != L'\0'; v += wcslen(v) + 1) variables.push_back(v);
        FreeEnvironmentStringsW(own);
    }
    for (const std::string& e : env) {
        const std::wstring change = WideFromUtf8(e);
        const std::wstring name = change.substr(0, change.find(L'='));
        for (size_t i = variables.size(); i-- > 0;) {
            const std::wstring& v = variables[i];
            // Names are compared without case, as Windows does; "=C:=..." entries have no name.
            if (v.size() > name.size() && v[name.size()] == L'=' && _wcsnicmp(v.c_str(), name.c_str(), name.size()) == 0) {
                variables.erase(variables.begin() + static_cast<long>(i));
            }
        }
        if (change.find(L'=') != std::wstring::npos) variables.push_back(change);
    }
    std::wstring block;
    for (const std::wstring& v : variables) block += v + L'\0';
    return block + L'\0';
}

inline int Spawn(const std::vector<std::string>& args, const std::vector<std::string>& env, const std::string& inFile,
                 const std::string& outFile, const std::string& errFile, const std::string& folder = "") {
    SECURITY_ATTRIBUTES inherit = {sizeof(SECURITY_ATTRIBUTES), nullptr, TRUE};
    const DWORD share = FILE_SHARE_READ | FILE_SHARE_WRITE;
    HANDLE in = CreateFileW(WideFromUtf8(inFile).c_str(), GENERIC_READ, share, &inherit, OPEN_EXISTING, 0, nullptr);
    HANDLE out = CreateFileW(WideFromUtf8(outFile).c_str(), GENERIC_WRITE, share, &inherit, CREATE_ALWAYS, 0, nullptr);
    HANDLE err = CreateFileW(WideFromUtf8(errFile).c_str(), GENERIC_WRITE, share, &inherit, CREATE_ALWAYS, 0, nullptr);
    int status = 127;
    if (in != INVALID_HANDLE_VALUE && out != INVALID_HANDLE_VALUE && err != INVALID_HANDLE_VALUE) {
        std::wstring commandLine;
        for (const std::string& a : args) commandLine += (commandLine.empty() ? L"" : L" ") + QuoteArgument(WideFromUtf8(a));
        std::wstring environment = EnvironmentBlock(env);
        const std::wstring where = WideFromUtf8(folder);
        STARTUPINFOW startup = {};
        startup.cb = sizeof(startup);
        startup.dwFlags = STARTF_USESTDHANDLES;
        startup.hStdInput = in;
        startup.hStdOutput = out;
        startup.hStdError = err;
        PROCESS_INFORMATION process = {};
        if (CreateProcessW(WideFromUtf8(args[0]).c_str(), &commandLine[0], nullptr, nullptr, TRUE, CREATE_UNICODE_ENVIRONMENT,
                           &environment[0], folder.empty() ? nullptr : where.c_str(), &startup, &process)) {
            DWORD code = 0;
            WaitForSingleObject(process.hProcess, INFINITE);
            status = GetExitCodeProcess(process.hProcess, &code) ? static_cast<int>(code) : -1;
            CloseHandle(process.hThread);
            CloseHandle(process.hProcess);
        }
    }
    for (HANDLE h : {in, out, err}) {
        if (h != INVALID_HANDLE_VALUE) CloseHandle(h);
    }
    return status;
}

#else

inline int Spawn(const std::vector<std::string>& args, const std::vector<std::string>& env, const std::string& inFile,
                 const std::string& outFile, const std::string& errFile, const std::string& folder = "") {
    const pid_t pid = fork();
    if (pid < 0) return -1;
    if (pid == 0) {
        const int in = open(inFile.c_str(), O_RDONLY);
        const int out = open(outFile.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
        const int err = open(errFile.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
        if (in < 0 || out < 0 || err < 0) _exit(127);
        dup2(in, 0);
        dup2(out, 1);
        dup2(err, 2);
        if (!folder.empty() && chdir(folder.c_str()) != 0) _exit(127);
        for (const std::string& e : env) {
            if (e.find('=') == std::string::npos) {
                unsetenv(e.c_str());
            } else {
                putenv(const_cast<char*>(e.c_str()));
            }
        }
        std::vector<char*> argv;
        for (const std::string& a : args) argv.push_back(const_cast<char*>(a.c_str()));
        argv.push_back(nullptr);
        execv(argv[0], argv.data());
        _exit(127);
    }
    int status = 0;
    if (waitpid(pid, &status, 0) != pid || !WIFEXITED(status)) return -1;
    return WEXITSTATUS(status);
}

#endif

}  // namespace runnertest
