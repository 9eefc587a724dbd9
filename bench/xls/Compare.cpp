// bench_xls_compare: the workbook job of the BOM export done by libs/xls and by the libraries one
// would otherwise use, in one run on the same job and the same machine (bench/README.md):
//   - libs/xls, in this process;
//   - Apache POI HSSF (Debian's libapache-poi-java), through bench/xls/peers/PoiExport.java;
//   - SheetJS (the npm package "xlsx"), through bench/xls/peers/sheetjs-export.js.
// The job: load the bundled template from memory, write the 11 head cells and ROWS part rows of 12
// string cells into its active sheet, save into memory. Each library first runs the job WARMUP
// times untimed (the JVM's and V8's compilers warm up), then REPEAT timed runs, all in one
// process of its own; the times are taken inside that process, so starting it does not count.
// Missing peers are installed (apt-get, npm into the work folder under build/); a peer that cannot
// be had is skipped with a line saying so. Each library's last book is read back with xlrd
// (bench/xls/peers/check-output.py): the job's cells and what is left of the template.

#include <stdlib.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <optional>
#include <string>
#include <vector>

#include "BomJob.hpp"
#include "HostSession.hpp"

namespace {

namespace fs = std::filesystem;

struct Options {
    int rows = 2000;
    int warmup = 50;
    int repeat = 25;
    fs::path work = fs::path(VORNADEL_BINARY_DIR) / "bench-peers";
    bool install = true;
};

// One library's part of the run.
struct Outcome {
    std::string library;
    std::string version = "-";
    std::vector<double> times;  // ms of the timed runs
    fs::path output;            // the book of its last run
    std::string readBack;       // check-output.py's line, or why there is none
    bool readBackOk = true;
};

const fs::path kSource = VORNADEL_SOURCE_DIR;
const fs::path kPeers = kSource / "bench" / "xls" / "peers";
const char kJavaLibs[] = "/usr/share/java";
const char* const kPoiJars[] = {"poi.jar", "commons-collections4.jar", "commons-math3.jar", "commons-codec.jar",
                                "commons-logging.jar"};

std::string Quote(const std::string& text)
{
    std::string quoted = "'";
    for (char c : text) quoted += c == '\'' ? std::string("'\\''") : std::string(1, c);
    return quoted + "'";
}

int Shell(const std::string& command)
{
    const int status = std::system(command.c_str());
    return status != -1 && WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

bool Have(const std::string& program) { return Shell("command -v " + program + " >/dev/null 2>&1") == 0; }

// The standard output of a command, by lines, and whether it ended with status 0.
struct CommandOutput {
    std::vector<std::string> lines;
    bool ok = false;
};

CommandOutput Output(const std::string& command)
{
    CommandOutput output;
    FILE* pipe = popen(command.c_str(), "r");
    if (pipe == nullptr) return output;
    std::string line;
    for (int c; (c = std::fgetc(pipe)) != EOF;) {
        if (c != '\n') {
            line += static_cast<char>(c);
        } else {
            output.lines.push_back(line);
            line.clear();
        }
    }
    if (!line.empty()) output.lines.push_back(line);
    const int status = pclose(pipe);
    output.ok = status != -1 && WIFEXITED(status) && WEXITSTATUS(status) == 0;
    return output;
}

// Installs a Debian package with apt-get (through sudo when not root), as dev.sh does.
bool AptInstall(const Options& options, const std::string& package)
{
    if (!options.install || !Have("apt-get")) return false;
    std::string root;
    if (geteuid() != 0) {
        if (!Have("sudo")) return false;
        root = "sudo ";
    }
    std::cerr << "installing " << package << " with apt-get\n";
    return Shell(root + "apt-get update -qq >&2 && DEBIAN_FRONTEND=noninteractive " + root +
                 "apt-get install -y -qq --no-install-recommends " + package + " >&2") == 0;
}

void WriteFile(const fs::path& path, const std::string& bytes)
{
    std::ofstream out(path, std::ios::binary);
    out << bytes;
    if (!out) throw std::runtime_error("cannot write " + path.string());
}

// The job for the peers: one cell a line, "row<TAB>column<TAB>text", UTF-8.
std::string JobText(const std::vector<Cell>& cells)
{
    std::string text;
    for (const Cell& c : cells) {
        text += std::to_string(c.row) + "\t" + std::to_string(c.col) + "\t";
        for (wchar_t w : c.text) host::AppendUtf8(text, static_cast<unsigned long>(w));
        text += "\n";
    }
    return text;
}

Outcome RunOurs(const Options& options, const std::vector<unsigned char>& templateBytes, const std::vector<Cell>& cells)
{
    Outcome outcome;
    outcome.library = "libs/xls (ours)";
    for (int k = 0; k < options.warmup; ++k) once(templateBytes, cells);
    std::vector<unsigned char> book;
    for (int k = 0; k < options.repeat; ++k) outcome.times.push_back(once(templateBytes, cells, &book).total);
    outcome.output = options.work / "libs-xls.xls";
    WriteFile(outcome.output, std::string(book.begin(), book.end()));
    return outcome;
}

// Runs a peer's program: "version V" and one "ms T" line per timed run on its standard output.
std::optional<Outcome> RunPeer(const std::string& library, const std::string& command, const fs::path& output)
{
    std::cerr << "running " << library << "\n";
    const CommandOutput run = Output(command);
    if (!run.ok) return std::nullopt;
    Outcome outcome;
    outcome.library = library;
    outcome.output = output;
    for (const std::string& line : run.lines) {
        if (line.rfind("version ", 0) == 0) outcome.version = line.substr(8);
        if (line.rfind("ms ", 0) == 0) outcome.times.push_back(std::stod(line.substr(3)));
    }
    if (outcome.times.empty()) return std::nullopt;
    return outcome;
}

std::string PeerArguments(const Options& options, const fs::path& output)
{
    return Quote((options.work / "template.xls").string()) + " " + Quote((options.work / "job.tsv").string()) + " " +
           std::to_string(options.warmup) + " " + std::to_string(options.repeat) + " " + Quote(output.string());
}

// Apache POI HSSF from Debian's jars, the Java program compiled into the work folder.
std::optional<Outcome> RunPoi(const Options& options, std::string& skipped)
{
    const fs::path poi = fs::path(kJavaLibs) / "poi.jar";
    if (!fs::exists(poi) && !AptInstall(options, "libapache-poi-java")) {
        skipped = "Apache POI HSSF skipped: " + poi.string() + " is missing" +
                  (options.install ? " and libapache-poi-java could not be installed" : " (--no-install)");
        return std::nullopt;
    }
    if (!Have("javac") || !Have("java")) {
        skipped = "Apache POI HSSF skipped: no Java compiler (javac) and runtime (java) on the PATH";
        return std::nullopt;
    }
    std::string classPath;
    for (const char* jar : kPoiJars) classPath += (fs::path(kJavaLibs) / jar).string() + ":";
    const fs::path classes = options.work / "poi";
    fs::create_directories(classes);
    if (Shell("javac -nowarn -d " + Quote(classes.string()) + " -cp " + Quote(classPath) + " " +
              Quote((kPeers / "PoiExport.java").string()) + " >&2") != 0) {
        skipped = "Apache POI HSSF skipped: PoiExport.java did not compile against " + poi.string();
        return std::nullopt;
    }
    const fs::path output = options.work / "poi.xls";
    std::optional<Outcome> outcome = RunPeer("Apache POI HSSF", "java -cp " + Quote(classPath + classes.string()) +
                                                                    " PoiExport " + PeerArguments(options, output),
                                             output);
    if (!outcome) skipped = "Apache POI HSSF failed: PoiExport gave no times (its messages are above)";
    return outcome;
}

// SheetJS from npm, installed into the work folder.
std::optional<Outcome> RunSheetJs(const Options& options, std::string& skipped)
{
    if (!Have("node")) {
        skipped = "SheetJS skipped: no Node.js (node) on the PATH";
        return std::nullopt;
    }
    const fs::path prefix = options.work / "sheetjs";
    const fs::path package = prefix / "node_modules" / "xlsx" / "package.json";
    if (!fs::exists(package) && options.install && Have("npm")) {
        fs::create_directories(prefix);
        std::cerr << "installing the npm package xlsx into " << prefix.string() << "\n";
        Shell("npm install --prefix " + Quote(prefix.string()) + " --no-save --no-audit --no-fund --loglevel=error xlsx >&2");
    }
    if (!fs::exists(package)) {
        skipped = "SheetJS skipped: the npm package xlsx is not in " + prefix.string() +
                  (options.install ? " and could not be installed" : " (--no-install)");
        return std::nullopt;
    }
    const fs::path output = options.work / "sheetjs.xls";
    std::optional<Outcome> outcome =
        RunPeer("SheetJS (xlsx)", "NODE_PATH=" + Quote((prefix / "node_modules").string()) + " node " +
                                      Quote((kPeers / "sheetjs-export.js").string()) + " " + PeerArguments(options, output),
                output);
    if (!outcome) skipped = "SheetJS failed: sheetjs-export.js gave no times (its messages are above)";
    return outcome;
}

// Reads each library's last book back with xlrd.
void ReadBack(const Options& options, std::vector<Outcome>& outcomes)
{
    const bool xlrd = Shell("/usr/bin/python3 -c 'import xlrd' 2>/dev/null") == 0;
    for (Outcome& outcome : outcomes) {
        if (!xlrd) {
            outcome.readBack = "not read back: /usr/bin/python3 has no xlrd (python3-xlrd)";
            continue;
        }
        const std::string command = "/usr/bin/python3 " + Quote((kPeers / "check-output.py").string()) + " " +
                                    Quote((options.work / "job.tsv").string()) + " " +
                                    Quote((options.work / "template.xls").string()) + " " + Quote(outcome.output.string());
        const CommandOutput check = Output(command);
        outcome.readBack = check.lines.empty() ? "no answer" : check.lines.front();
        outcome.readBackOk = check.ok;
    }
}

double Median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    const size_t n = values.size();
    return n % 2 == 1 ? values[n / 2] : (values[n / 2 - 1] + values[n / 2]) / 2;
}

double Least(const std::vector<double>& values) { return *std::min_element(values.begin(), values.end()); }

std::string Load()
{
    double load[3];
    if (getloadavg(load, 3) != 3) return "unknown";
    char text[64];
    std::snprintf(text, sizeof text, "%.1f %.1f %.1f", load[0], load[1], load[2]);
    return text;
}

void Report(const Options& options, size_t cellCount, const std::vector<Outcome>& outcomes,
            const std::vector<std::string>& skipped)
{
    std::printf("workbook job of the BOM export: the bundled template, 11 head cells and %d part rows of 12 string\n"
                "cells (%zu cells), loaded from and saved to memory; per library %d untimed warm-up runs, then %d\n"
                "timed runs in one process; times in ms\n\n",
                options.rows, cellCount, options.warmup, options.repeat);
    std::printf("%-17s %-9s %10s %9s %15s %13s %9s\n", "library", "version", "median ms", "best ms", "median / ours",
                "best / ours", "file KiB");
    const Outcome& ours = outcomes.front();
    for (const Outcome& o : outcomes) {
        std::printf("%-17s %-9s %10.2f %9.2f %15.1f %13.1f %9ju\n", o.library.c_str(), o.version.c_str(), Median(o.times),
                    Least(o.times), Median(o.times) / Median(ours.times), Least(o.times) / Least(ours.times),
                    static_cast<uintmax_t>(fs::file_size(o.output) / 1024));
    }
    for (const std::string& line : skipped) std::printf("%s\n", line.c_str());
    std::printf("\nread back with xlrd (the job's cells; the template's other cells' formats, the head cells'\n"
                "formats, merged cells and column widths of the active sheet; the sheets):\n");
    for (const Outcome& o : outcomes)
        std::printf("  %-17s %s%s\n", o.library.c_str(), o.readBackOk ? "" : "WRONG: ", o.readBack.c_str());
    std::printf("\nload average (1, 5, 15 min) at the end: %s\n", Load().c_str());
}

const char kUsage[] =
    "usage: bench_xls_compare [--rows N] [--warmup W] [--repeat R] [--work DIR] [--no-install]\n"
    "  --rows        part rows of the job (default 2000)\n"
    "  --warmup      untimed runs per library before the timed ones (default 50)\n"
    "  --repeat      timed runs per library (default 25)\n"
    "  --work        folder for the job, the peers' programs and packages and the books (default build/bench-peers)\n"
    "  --no-install  use only the peers already there\n";

Options Parse(int argc, char** argv)
{
    Options options;
    for (int i = 1; i < argc; ++i) {
        const std::string option = argv[i];
        if (option == "--help" || option == "-h") throw std::invalid_argument("");
        if (option == "--no-install") {
            options.install = false;
            continue;
        }
        if (i + 1 >= argc) throw std::invalid_argument(option + " wants a value");
        const std::string value = argv[++i];
        if (option == "--rows") {
            options.rows = std::stoi(value);
        } else if (option == "--warmup") {
            options.warmup = std::max(0, std::stoi(value));
        } else if (option == "--repeat") {
            options.repeat = std::max(1, std::stoi(value));
        } else if (option == "--work") {
            options.work = fs::absolute(value);
        } else {
            throw std::invalid_argument("unknown option " + option);
        }
    }
    if (options.rows < 0 || options.rows > 65536 - 6) throw std::invalid_argument("--rows wants 0 to 65530");
    return options;
}

}  // namespace

int main(int argc, char** argv)
{
    Options options;
    try {
        options = Parse(argc, argv);
    } catch (const std::exception& e) {
        if (*e.what() != '\0') std::cerr << "bench_xls_compare: " << e.what() << "\n";
        std::cerr << kUsage;
        return 2;
    }
    try {
        const std::vector<unsigned char> templateBytes = readTemplate();
        const std::vector<Cell> cells = bomCells(options.rows);
        fs::create_directories(options.work);
        WriteFile(options.work / "template.xls", std::string(templateBytes.begin(), templateBytes.end()));
        WriteFile(options.work / "job.tsv", JobText(cells));

        std::vector<Outcome> outcomes = {RunOurs(options, templateBytes, cells)};
        std::vector<std::string> skipped;
        for (auto peer : {RunPoi, RunSheetJs}) {
            std::string why;
            if (std::optional<Outcome> outcome = peer(options, why)) {
                outcomes.push_back(*outcome);
            } else {
                skipped.push_back(why);
            }
        }
        ReadBack(options, outcomes);
        Report(options, cells.size(), outcomes, skipped);
    } catch (const std::exception& e) {
        std::cerr << "bench_xls_compare: " << e.what() << "\n";
        return 1;
    }
    return 0;
}
