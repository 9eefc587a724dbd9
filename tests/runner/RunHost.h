// Runs build/bin/vornadel-host as a separate process, as a person or a script would, and keeps
// what it printed.
#pragma once

#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "Process.h"

namespace runnertest {

struct HostRun {
    int status = -1;  // the exit status; -1 when the runner did not exit normally
    std::string out;  // standard output (UTF-8)
    std::string err;  // standard error
};

inline std::filesystem::path BinaryFolder() {
    if (const char* dir = std::getenv("VORNADEL_BINARY_DIR")) return std::filesystem::path(dir) / "bin";
    return std::filesystem::read_symlink("/proc/self/exe").parent_path();
}

inline std::filesystem::path SourceFolder() {
    if (const char* dir = std::getenv("VORNADEL_SOURCE_DIR")) return dir;
    return VORNADEL_TEST_SOURCE_DIR;
}

inline std::string TestPlugin() {
    return (BinaryFolder() / "libvornadel-testplugin.so").string();
}

inline std::string FixturePart(const char* name) {
    return (SourceFolder() / "tests/runner/parts" / name).string();
}

inline void WriteText(const std::filesystem::path& path, const std::string& text) {
    std::ofstream(path, std::ios::binary) << text;
}

// The folder of this test process's scratch folders, removed when the process ends.
inline const std::filesystem::path& ScratchRoot() {
    struct Root {
        std::filesystem::path path =
            std::filesystem::temp_directory_path() / ("vornadel-runner-" + std::to_string(getpid()));
        ~Root() {
            std::error_code ignored;
            std::filesystem::remove_all(path, ignored);
        }
    };
    static const Root root;
    return root.path;
}

// A folder of its own for one test, emptied first.
inline std::filesystem::path Scratch(const std::string& name) {
    const std::filesystem::path dir = ScratchRoot() / name;
    std::filesystem::remove_all(dir);
    std::filesystem::create_directories(dir);
    return dir;
}

// Runs vornadel-host with args; env entries ("NAME=VALUE") are added to its environment ("NAME"
// removes NAME), input is its standard input. Runs from the checkout's root.
// The per-user folder the runs of a test share (LOCALAPPDATA), with the runner's copy of the
// bundled configuration made beforehand: no run says it made one, and none touches the user's.
inline std::filesystem::path TestUserFolder() {
    const std::filesystem::path user = ScratchRoot() / "user";
    const std::filesystem::path copy = user / "vornadel" / "VDConfig" / "config";
    if (!std::filesystem::is_directory(copy)) {
        std::filesystem::create_directories(copy.parent_path());
        std::filesystem::copy(SourceFolder() / "samples" / "config", copy, std::filesystem::copy_options::recursive);
    }
    return user;
}

inline HostRun RunHost(const std::vector<std::string>& args, const std::vector<std::string>& env = {},
                       const std::string& input = "") {
    const std::filesystem::path dir = Scratch("process");
    WriteText(dir / "in", input);
    std::vector<std::string> all{(BinaryFolder() / "vornadel-host").string()};
    all.insert(all.end(), args.begin(), args.end());
    std::vector<std::string> environment{"LOCALAPPDATA=" + TestUserFolder().string()};
    environment.insert(environment.end(), env.begin(), env.end());
    HostRun run;
    run.status = Spawn(all, environment, dir / "in", dir / "out", dir / "err", SourceFolder());
    run.out = ReadText(dir / "out");
    run.err = ReadText(dir / "err");
    return run;
}

// The runner on the test plug-in and a part (default: the fixture bracket.part.json) in tsv, with
// LOCALAPPDATA and the desktop kept in a scratch folder, then args; input is its standard input.
inline HostRun RunTestPlugin(const std::vector<std::string>& args, const std::vector<std::string>& env = {},
                             const std::string& part = FixturePart("bracket.part.json"), const std::string& input = "") {
    const std::filesystem::path home = Scratch("home");
    std::vector<std::string> all{"run", part, "--plugin", TestPlugin(), "--format", "tsv",
                                 "--localappdata", home.string(), "--desktop", (home / "desktop").string()};
    all.insert(all.end(), args.begin(), args.end());
    return RunHost(all, env, input);
}

// The line "message<TAB>testplugin<TAB>information<TAB>event".
inline std::string Event(const std::string& event) {
    return "message\ttestplugin\tinformation\t" + event;
}

}  // namespace runnertest
