// What the benchmarks of the dialog on generated moulds share (bench_first_display,
// bench_save_export, bench_large_moulds; bench/README.md): their options, a scratch folder, the
// session set up as NX has it, the moulds from moldgen, the designer's save and export, medians
// and least times, and their tables.
#pragma once

#include <stdlib.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <functional>
#include <initializer_list>
#include <iostream>
#include <sstream>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include <NXOpen/BlockStyler_Node.hxx>
#include <NXOpen/BlockStyler_Tree.hxx>

#include "Driver.hpp"
#include "HostSession.hpp"
#include "Mould.hpp"

namespace bench {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

inline double Milliseconds(Clock::duration d) { return std::chrono::duration<double, std::milli>(d).count(); }

inline double Median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    const size_t n = values.size();
    return n % 2 == 1 ? values[n / 2] : (values[n / 2 - 1] + values[n / 2]) / 2;
}

inline std::string Fixed(double value, int decimals) {
    char text[32];
    std::snprintf(text, sizeof text, "%.*f", decimals, value);
    return text;
}

// Rows of texts under their titles, in right-aligned columns.
inline void PrintTable(const std::vector<std::string>& titles, const std::vector<std::vector<std::string>>& rows) {
    std::vector<size_t> widths;
    for (const std::string& title : titles) widths.push_back(title.size());
    for (const auto& row : rows)
        for (size_t c = 0; c < row.size(); ++c) widths[c] = std::max(widths[c], row[c].size());
    auto print = [&](const std::vector<std::string>& cells) {
        for (size_t c = 0; c < cells.size(); ++c) std::cout << std::string(2 + widths[c] - cells[c].size(), ' ') << cells[c];
        std::cout << "\n";
    };
    print(titles);
    for (const auto& row : rows) print(row);
}

struct Options {
    std::vector<int> sizes = {100, 1000, 5000};
    std::uint64_t seed = 1;
    int repeat = 5;
    fs::path source = VORNADEL_SOURCE_DIR;
};

inline std::string Usage(const char* program, const Options& defaults) {
    std::string sizes;
    for (int size : defaults.sizes) sizes += (sizes.empty() ? "" : ",") + std::to_string(size);
    return std::string("usage: ") + program +
           " [--sizes N,N,...] [--seed S] [--repeat R] [--source DIR]\n"
           "  --sizes   standard-part bodies of the moulds measured (default " + sizes + ")\n"
           "  --seed    moldgen seed of the moulds (default 1)\n"
           "  --repeat  openings of the dialog per mould (default " + std::to_string(defaults.repeat) + ")\n"
           "  --source  the checkout with samples/ and dialog/ (default: the one built from)\n";
}

// The options given, the others as in `options`. Throws std::invalid_argument: with an empty text
// for --help.
inline Options Parse(int argc, char** argv, Options options) {
    for (int i = 1; i < argc; ++i) {
        const std::string option = argv[i];
        if (option == "--help" || option == "-h") throw std::invalid_argument("");
        if (i + 1 >= argc) throw std::invalid_argument(option + " wants a value");
        const std::string value = argv[++i];
        if (option == "--sizes") {
            options.sizes.clear();
            std::istringstream list(value);
            for (std::string size; std::getline(list, size, ',');) options.sizes.push_back(std::stoi(size));
        } else if (option == "--seed") {
            options.seed = std::stoull(value);
        } else if (option == "--repeat") {
            options.repeat = std::max(1, std::stoi(value));
        } else if (option == "--source") {
            options.source = value;
        } else {
            throw std::invalid_argument("unknown option " + option);
        }
    }
    return options;
}

// A scratch folder for the moulds, the per-user folder and the desktop, removed at the end.
class Scratch {
public:
    Scratch() {
        char pattern[] = "/tmp/vornadel-bench-XXXXXX";
        if (mkdtemp(pattern) == nullptr) throw std::runtime_error("cannot make a scratch folder");
        path_ = pattern;
        fs::create_directories(path_ / "appdata");
        fs::create_directories(path_ / "desktop");
    }
    ~Scratch() {
        std::error_code ignored;
        fs::remove_all(path_, ignored);
    }
    Scratch(const Scratch&) = delete;
    Scratch& operator=(const Scratch&) = delete;
    const fs::path& Path() const { return path_; }

private:
    fs::path path_;
};

// A fresh session: the configuration root configRoot (VDConfig), drive D: mapped to
// samples/drive-d (then moreDrives, "E=/folder;..."), the per-user folder and the desktop of the
// scratch folder, the dialog file found in dialog/.
inline void SetUpSession(const Options& options, const Scratch& scratch, const fs::path& configRoot,
                         const std::string& moreDrives = "") {
    host::ResetSession();
    setenv("VORNADEL_DRIVES", ("D=" + (options.source / "samples" / "drive-d").string() + ";" + moreDrives).c_str(), 1);
    setenv("LOCALAPPDATA", (scratch.Path() / "appdata").c_str(), 1);
    setenv("VORNADEL_DESKTOP", (scratch.Path() / "desktop").c_str(), 1);
    host::SetDialogSearchPath({(options.source / "dialog").string()});
    host::SetEnvironmentVariable("VDConfig", host::Utf8ToGbk(configRoot.string()));
}

// The part file of a mould with this many standard-part bodies (moldgen), in the scratch folder.
inline fs::path WriteMould(const Options& options, int bodies, const Scratch& scratch) {
    moldgen::Options mould;
    mould.bodies = bodies;
    mould.seed = options.seed;
    const fs::path file = scratch.Path() / ("mould-" + std::to_string(bodies) + ".part.json");
    std::ofstream(file, std::ios::binary) << moldgen::PartFileText(moldgen::Generate(mould));
    return file;
}

// The designer's save and export (bench_save_export, bench_large_moulds): the configuration
// root's tables copied into the scratch folder (typing a head field may rewrite its option table),
// and the folder of drive E:, where the designer exports into E:\BOM.
inline fs::path ConfigRoot(const Scratch& scratch) { return scratch.Path() / "root"; }
inline fs::path DriveE(const Scratch& scratch) { return scratch.Path() / "out"; }
inline fs::path ExportFolder(const Scratch& scratch) { return DriveE(scratch) / "BOM"; }

inline void CopyConfiguration(const Options& options, const Scratch& scratch) {
    fs::create_directories(ConfigRoot(scratch));
    fs::create_directories(DriveE(scratch));
    fs::copy(options.source / "samples" / "config", ConfigRoot(scratch) / "config", fs::copy_options::recursive);
}

// A session for saving and exporting: SetUpSession with the copied configuration and drive E:,
// and an empty output folder.
inline void SetUpExportSession(const Options& options, const Scratch& scratch) {
    SetUpSession(options, scratch, ConfigRoot(scratch), "E=" + DriveE(scratch).string());
    fs::remove_all(ExportFolder(scratch));
    fs::create_directories(ExportFolder(scratch));
}

// The head fields as a designer fills them in: values the bundled option lists offer (narrow
// literals are GBK in this build, as the dialog takes them); then the output folder picked.
inline void FillHead(host::LiveDialog& live) {
    static const std::pair<const char*, const char*> head[] = {
        {"string03", "SO-0517"},       {"string02", "E24-091"},     {"string031", "PA66+GF30"},
        {"string033", "P-88231"},      {"string01", "YM-2405"},     {"string032", "280T"},
        {"string0", "海尔智家"},       {"string034", "3.0"},        {"string035", "两板模"},
        {"string036", "陈明"},         {"string04", "洗衣机门把手"},
    };
    for (const auto& [block, text] : head) live.SetText(block, text);
    live.PickFolder("nativeFolderBrowser0", "E:\\BOM");
}

// The message boxes since `from`: none with wantConfirmation false, else exactly one information
// box (the command's confirmation). Throws naming the command otherwise.
inline void ExpectMessages(size_t from, const std::string& command, bool wantConfirmation) {
    const std::vector<host::MessageRecord>& messages = host::Messages();
    for (size_t i = from; i < messages.size(); ++i) {
        if (!wantConfirmation || messages[i].type != NXOpen::NXMessageBox::DialogTypeInformation)
            throw std::runtime_error(command + " showed a message box, " + host::GbkToUtf8(messages[i].title) + ": " +
                                     host::GbkToUtf8(messages[i].text));
    }
    if (wantConfirmation && messages.size() != from + 1) throw std::runtime_error(command + " did not confirm");
}

// Presses a button whose command ends with its one information box (save "button0", export
// "button01"); the milliseconds until it returned.
inline double PressConfirmed(host::LiveDialog& live, const std::string& button, const std::string& command) {
    const size_t messages = host::Messages().size();
    const Clock::time_point start = Clock::now();
    live.Press(button);
    const double ms = Milliseconds(Clock::now() - start);
    ExpectMessages(messages, command, true);
    return ms;
}

// The bytes of the one workbook the export wrote into the output folder, which is then emptied, so
// that the next export takes the plain file name. Throws when there is not exactly one.
inline std::uintmax_t TakeWorkbook(const Scratch& scratch) {
    int workbooks = 0;
    std::uintmax_t bytes = 0;
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(ExportFolder(scratch))) {
        if (entry.is_regular_file() && entry.path().extension() == ".xls") {
            ++workbooks;
            bytes += entry.file_size();
        }
    }
    if (workbooks != 1) throw std::runtime_error("the export did not write one workbook");
    fs::remove_all(ExportFolder(scratch));
    fs::create_directories(ExportFolder(scratch));
    return bytes;
}

inline int CountNodes(NXOpen::BlockStyler::Tree* tree, bool rootsOnly) {
    int count = 0;
    for (NXOpen::BlockStyler::Node* node = tree->RootNode(); node != nullptr;
         node = rootsOnly ? node->NextSiblingNode() : node->NextNode())
        ++count;
    return count;
}

// What one mould gave: the median and the least of each timed field over the openings of the
// dialog; the other fields as the first opening has them.
template <class Sample>
struct Result {
    int bodies = 0;
    Sample median, least;
};

// For each size of the options, a mould made by moldgen and opened `repeat` times with `open`
// (the mould's options, the scratch folder and its part file give one sample). The first opening
// in a process pays for what the host and the C library set up once (code-page tables, the dialog
// file): a small mould is opened once before, not measured.
template <class Sample>
std::vector<Result<Sample>> MeasureMoulds(const Options& options, const Scratch& scratch,
                                          Sample (*open)(const Options&, const Scratch&, const fs::path&),
                                          std::initializer_list<double Sample::*> timed) {
    return MeasureMoulds<Sample>(
        options, scratch, [open](const Options& o, const Scratch& s, const fs::path& file, int) { return open(o, s, file); },
        timed);
}

// The same, `open` also given the opening's number: 0 for the first opening of each mould, -1 for
// the small mould opened before measuring.
template <class Sample>
std::vector<Result<Sample>> MeasureMoulds(const Options& options, const Scratch& scratch,
                                          const std::function<Sample(const Options&, const Scratch&, const fs::path&, int)>& open,
                                          std::initializer_list<double Sample::*> timed) {
    open(options, scratch, WriteMould(options, 20, scratch), -1);
    std::vector<Result<Sample>> results;
    for (int bodies : options.sizes) {
        const fs::path file = WriteMould(options, bodies, scratch);
        std::vector<Sample> samples;
        for (int i = 0; i < options.repeat; ++i) samples.push_back(open(options, scratch, file, i));
        Result<Sample> result;
        result.bodies = bodies;
        result.median = result.least = samples.front();
        for (double Sample::*field : timed) {
            std::vector<double> values;
            for (const Sample& sample : samples) values.push_back(sample.*field);
            result.median.*field = Median(values);
            result.least.*field = *std::min_element(values.begin(), values.end());
        }
        results.push_back(result);
    }
    return results;
}

// A bench's main: parses the options, the others as in `defaults` (exit status 2 and the usage on
// a mistake), then runs the bench with a scratch folder (exit status 1 and the message when it
// fails).
inline int Main(const char* program, int argc, char** argv,
                const std::function<void(const Options&, const Scratch&)>& bench, const Options& defaults = Options()) {
    Options options;
    try {
        options = Parse(argc, argv, defaults);
    } catch (const std::exception& e) {
        if (*e.what() != '\0') std::cerr << program << ": " << e.what() << "\n";
        std::cerr << Usage(program, defaults);
        return 2;
    }
    try {
        Scratch scratch;
        bench(options, scratch);
    } catch (const std::exception& e) {
        std::cerr << program << ": " << e.what() << "\n";
        return 1;
    }
    return 0;
}

}  // namespace bench
