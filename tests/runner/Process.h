// A program run as a separate process, and the files it wrote: what the runner's end-to-end
// tests (RunHost.h) and the transcript driver (transcript/Transcript.cpp) share.
#pragma once

#include <sys/wait.h>
#include <fcntl.h>
#include <unistd.h>

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

// Runs the program args[0] with args: standard input read from inFile, standard output and
// errors written to outFile and errFile, in folder when one is given. Each env entry "NAME=VALUE"
// is added to its environment; an entry "NAME" without "=" removes NAME from it. Its exit
// status; 127 when it could not be started, -1 when it did not exit normally.
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

}  // namespace runnertest
