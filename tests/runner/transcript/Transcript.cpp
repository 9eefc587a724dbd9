// vornadel-transcript: runs one script through vornadel-host --format tsv and compares what it
// prints with the expected transcript beside the script (NAME.txt -> NAME.expected).
//
// usage: vornadel-transcript --runner EXE --source DIR --bin DIR --scratch DIR [--testplugin FILE]
//                            [--update] SCRIPT
//
// The script's leading comment lines may say how to run it:
//   # part: PATH                 the part file (default: the runner's bundled sample part)
//   # options: ARGS...           more runner options (split at blanks; "..." keeps blanks)
//   # env: NAME=VALUE...         process environment of the run
//   # exit: N                    the expected exit status (default 0)
//   # remove: PATH               a file removed before the run (e.g. from the configuration copy)
// In these lines {source}, {bin}, {scratch} and {testplugin} stand for what the command line gives,
// and {drive-c} for the folder that is drive C: of the run. The scratch folder is emptied first.
// The run gets a Windows user of its own, so that the paths it prints are the same in every
// checkout and on every platform: LOCALAPPDATA is C:\Users\designer\AppData\Local and the
// desktop C:\Users\designer\Desktop (both made empty). Unless the options give --config, the
// configuration root is C:\VDConfig, a copy of the bundled samples/config, so that a run that
// rewrites a table never touches the checkout. On POSIX drive C: is {scratch}/c and the runner
// maps it (--drive), drive D: is the runner's bundled samples/drive-d. On Windows the runner maps
// nothing: drives C: and D: are the machine's own (under Wine those of the test prefix, whose
// user's desktop folder is C:\Users\designer\Desktop), so the driver fills D: with a copy of
// samples/drive-d before the run and leaves the user's folders, C:\VDConfig and D: empty after it;
// the tests that use them take turns.
// Unless the options say otherwise the clock is pinned to 2000-01-01T00:00:00.000. With --update
// the expected transcript is rewritten from the run.
// Exit status: 0 same, 1 different, 2 the run could not be made.
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <map>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

#include "../Process.h"

namespace fs = std::filesystem;

using runnertest::Lines;
using runnertest::ReadText;
using runnertest::Spawn;

namespace {

struct Header {
    std::string part;
    std::vector<std::string> options;
    std::vector<std::string> env;
    std::vector<std::string> remove;
    int exit = 0;
};

std::string Expand(std::string text, const std::map<std::string, std::string>& folders) {
    for (const auto& [name, folder] : folders) {
        for (size_t at = text.find(name); at != std::string::npos; at = text.find(name, at + folder.size())) {
            text.replace(at, name.size(), folder);
        }
    }
    return text;
}

// Splits at blanks; a double-quoted stretch keeps its blanks.
std::vector<std::string> SplitArguments(const std::string& text) {
    std::vector<std::string> args;
    std::string current;
    bool quoted = false;
    bool any = false;
    for (char c : text) {
        if (c == '"') {
            quoted = !quoted;
            any = true;
        } else if ((c == ' ' || c == '\t') && !quoted) {
            if (any) args.push_back(current);
            current.clear();
            any = false;
        } else {
            current += c;
            any = true;
        }
    }
    if (any) args.push_back(current);
    return args;
}

Header ReadHeader(const std::string& script, const std::map<std::string, std::string>& folders) {
    Header header;
    std::istringstream lines(script);
    std::string line;
    while (std::getline(lines, line)) {
        if (!line.empty() && line.back() == '\r') line.pop_back();
        if (line.empty()) continue;
        if (line[0] != '#') break;
        auto value = [&](const std::string& key) -> std::optional<std::string> {
            const std::string prefix = "# " + key + ":";
            if (line.rfind(prefix, 0) != 0) return std::nullopt;
            return Expand(line.substr(prefix.size()), folders);
        };
        if (auto part = value("part")) {
            const std::vector<std::string> words = SplitArguments(*part);
            if (!words.empty()) header.part = words[0];
        } else if (auto options = value("options")) {
            for (const std::string& o : SplitArguments(*options)) header.options.push_back(o);
        } else if (auto env = value("env")) {
            for (const std::string& e : SplitArguments(*env)) header.env.push_back(e);
        } else if (auto exit = value("exit")) {
            header.exit = std::stoi(*exit);
        } else if (auto remove = value("remove")) {
            for (const std::string& r : SplitArguments(*remove)) header.remove.push_back(r);
        }
    }
    return header;
}

bool Has(const std::vector<std::string>& args, const std::string& option) {
    for (const std::string& a : args) {
        if (a == option || a.rfind(option + "=", 0) == 0) return true;
    }
    return false;
}

void ReportDifferences(const std::string& expected, const std::string& actual) {
    const std::vector<std::string> e = Lines(expected);
    const std::vector<std::string> a = Lines(actual);
    int shown = 0;
    for (size_t i = 0; i < std::max(e.size(), a.size()) && shown < 20; ++i) {
        const std::string* el = i < e.size() ? &e[i] : nullptr;
        const std::string* al = i < a.size() ? &a[i] : nullptr;
        if (el && al && *el == *al) continue;
        std::cout << "line " << i + 1 << ":\n"
                  << "  expected: " << (el ? *el : "(nothing)") << "\n"
                  << "  actual:   " << (al ? *al : "(nothing)") << "\n";
        ++shown;
    }
}

int Usage() {
    std::cerr << "usage: vornadel-transcript --runner EXE --source DIR --bin DIR --scratch DIR [--testplugin FILE] "
                 "[--update] SCRIPT\n";
    return 2;
}

#ifdef _WIN32
const bool kOwnDrives = true;
#else
const bool kOwnDrives = false;
#endif

// Empties the run user's folders, the configuration copy and (Windows) drive D:, keeping the
// folders. driveC is the folder that is drive C: (no trailing slash).
void EmptyOwnFolders(const std::string& driveC) {
    const fs::path user = fs::u8path(driveC + "/Users/designer");
    std::vector<fs::path> folders = {user / "AppData/Local", user / "Desktop", fs::u8path(driveC + "/VDConfig")};
    if (kOwnDrives) folders.push_back("D:/");
    for (const fs::path& folder : folders) {
        std::error_code ec;
        for (const fs::directory_entry& entry : fs::directory_iterator(folder, ec)) fs::remove_all(entry.path(), ec);
        fs::create_directories(folder, ec);
    }
}

}  // namespace

int main(int argc, char** argv) {
    std::map<std::string, std::string> given;
    std::string script;
    bool update = false;
    for (int i = 1; i < argc; ++i) {
        const std::string arg = argv[i];
        if (arg == "--update") {
            update = true;
        } else if (arg.rfind("--", 0) == 0 && i + 1 < argc) {
            given[arg.substr(2)] = argv[++i];
        } else if (script.empty()) {
            script = arg;
        } else {
            return Usage();
        }
    }
    for (const char* required : {"runner", "source", "bin", "scratch"}) {
        if (given.count(required) == 0) return Usage();
    }
    if (script.empty()) return Usage();

    const fs::path scratch = fs::absolute(given["scratch"]);
    std::error_code ec;
    fs::remove_all(scratch, ec);
    fs::create_directories(scratch);
    const std::string driveC = kOwnDrives ? std::string("C:") : (scratch / "c").u8string();
    EmptyOwnFolders(driveC);
    std::map<std::string, std::string> folders = {{"{source}", given["source"]},
                                                  {"{bin}", given["bin"]},
                                                  {"{scratch}", scratch.u8string()},
                                                  {"{drive-c}", driveC}};
    // Without --testplugin, "{testplugin}" stays as it is and the runner names it.
    if (given.count("testplugin") != 0) folders["{testplugin}"] = given["testplugin"];

    if (!fs::exists(script)) {
        std::cerr << "vornadel-transcript: no script " << script << '\n';
        return 2;
    }
    const Header header = ReadHeader(ReadText(script), folders);
    const fs::path source = fs::u8path(given["source"]);
    fs::copy(source / "samples/config", fs::u8path(driveC + "/VDConfig/config"), fs::copy_options::recursive);
    if (kOwnDrives) fs::copy(source / "samples/drive-d", "D:/", fs::copy_options::recursive);
    for (const std::string& path : header.remove) fs::remove(fs::u8path(path));
    std::vector<std::string> args = {fs::absolute(fs::u8path(given["runner"])).u8string(), "run"};
    if (!header.part.empty()) args.push_back(header.part);
    if (!kOwnDrives) {
        args.insert(args.end(), {"--drive", "C=" + driveC, "--desktop", "C:\\Users\\designer\\Desktop"});
    }
    args.insert(args.end(), {"--localappdata", "C:\\Users\\designer\\AppData\\Local"});
    if (!Has(header.options, "--time")) args.insert(args.end(), {"--time", "2000-01-01T00:00:00.000"});
    if (!Has(header.options, "--config")) args.insert(args.end(), {"--config", "C:\\VDConfig"});
    args.insert(args.end(), header.options.begin(), header.options.end());
    args.insert(args.end(), {"--format", "tsv", "--script", script});

    const std::string outFile = (scratch / "actual.tsv").u8string();
    const std::string errFile = (scratch / "stderr.txt").u8string();
    const int status = Spawn(args, header.env, runnertest::kNullDevice, outFile, errFile);
    // What a run on the machine's own drives leaves there goes; the scratch folder keeps its own.
    if (kOwnDrives) EmptyOwnFolders(driveC);
    if (status < 0 || status == 127) {
        std::cerr << "vornadel-transcript: could not run " << args[0] << '\n';
        return 2;
    }
    const std::string actual = ReadText(outFile);
    const std::string expectedFile = fs::path(script).replace_extension(".expected").string();

    bool same = true;
    if (status != header.exit) {
        std::cout << script << ": the runner exited with " << status << ", expected " << header.exit << '\n'
                  << ReadText(errFile);
        same = false;
    }
    if (update) {
        std::ofstream(expectedFile, std::ios::binary) << actual;
        std::cout << "wrote " << expectedFile << '\n';
    } else {
        const std::string expected = ReadText(expectedFile);
        if (expected != actual) {
            std::cout << script << ": the transcript differs from " << expectedFile << " (whole output: " << outFile
                      << ")\n";
            ReportDifferences(expected, actual);
            same = false;
        }
    }
    return same ? 0 : 1;
}
