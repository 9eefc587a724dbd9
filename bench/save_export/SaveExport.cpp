// bench_save_export: how long saving and exporting the BOM take in the host, for generated moulds
// of 100, 1,000 and 5,000 standard-part bodies (bench/README.md).
//
// For each size: a mould from moldgen, loaded as the work part; the dialog object made as NX
// makes it (a copy of the bundled configuration root, drive D: mapped to samples/drive-d, the
// dialog file found in dialog/); then the dialog shown and, as the designer would, the eleven head
// fields typed, the output folder picked, "save" (button0) pressed and then "export" (button01).
// Each opening takes, per command, the time from the press until the command is done (message
// box included) and the model updates it made (host::ModelUpdateCount()); the export saves
// first, so its time less the save's is the export's own: head check, folder, file name, copy of
// the template, the workbook filled and saved. The dialog is opened several times per mould; the
// medians and the least times are reported.
#include <stdlib.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <sstream>
#include <string>
#include <vector>

#include <NXOpen/BlockStyler_Node.hxx>
#include <NXOpen/BlockStyler_Tree.hxx>
#include <uf.h>

#include "Driver.hpp"
#include "HostSession.hpp"
#include "Mould.hpp"
#include "shell/Vornadel.h"

namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

double Milliseconds(Clock::duration d) { return std::chrono::duration<double, std::milli>(d).count(); }

double Median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    const size_t n = values.size();
    return n % 2 == 1 ? values[n / 2] : (values[n / 2 - 1] + values[n / 2]) / 2;
}

struct Options {
    std::vector<int> sizes = {100, 1000, 5000};
    std::uint64_t seed = 1;
    int repeat = 5;
    fs::path source = VORNADEL_SOURCE_DIR;
};

// One opening of the dialog: save, then export.
struct Sample {
    int lines = 0;          // purchase lines (top-level nodes): the workbook's part rows
    int rows = 0;           // every row of the tree: the rows the save writes onto bodies
    int saveUpdates = 0;    // model updates of the save
    int exportUpdates = 0;  // model updates of the export (its own save included)
    double save = 0, exportAll = 0;
    std::uintmax_t fileBytes = 0;
};

struct Result {
    int bodies = 0;
    Sample median, least;
};

// The head fields as a designer fills them in: values the bundled option lists offer (narrow
// literals are GBK in this build, as the dialog takes them).
const std::pair<const char*, const char*> kHead[] = {
    {"string03", "SO-2024-0517"},  {"string02", "ERP-24-0091"}, {"string031", "PA66+GF30"},
    {"string033", "P-88231"},      {"string01", "YM-2405"},     {"string032", "280T"},
    {"string0", "海尔智家"},       {"string034", "3.0"},        {"string035", "两板模"},
    {"string036", "陈明"},         {"string04", "洗衣机门把手"},
};

// A scratch folder for the moulds, a copy of the configuration root's tables (typing a head field may
// rewrite its option table), the per-user folder, the desktop and the output folder (drive E:),
// removed at the end.
class Scratch {
public:
    explicit Scratch(const Options& options) {
        char pattern[] = "/tmp/vornadel-bench-XXXXXX";
        if (mkdtemp(pattern) == nullptr) throw std::runtime_error("cannot make a scratch folder");
        path_ = pattern;
        for (const char* folder : {"appdata", "desktop", "out"}) fs::create_directories(path_ / folder);
        fs::create_directories(path_ / "root");
        fs::copy(options.source / "samples" / "config", path_ / "root" / "config", fs::copy_options::recursive);
    }
    ~Scratch() {
        std::error_code ignored;
        fs::remove_all(path_, ignored);
    }
    const fs::path& Path() const { return path_; }

private:
    fs::path path_;
};

int CountNodes(NXOpen::BlockStyler::Tree* tree, bool rootsOnly) {
    int count = 0;
    for (NXOpen::BlockStyler::Node* node = tree->RootNode(); node != nullptr;
         node = rootsOnly ? node->NextSiblingNode() : node->NextNode())
        ++count;
    return count;
}

void SetUpSession(const Options& options, const Scratch& scratch) {
    host::ResetSession();
    setenv("VORNADEL_DRIVES",
           ("D=" + (options.source / "samples" / "drive-d").string() + ";E=" + (scratch.Path() / "out").string()).c_str(), 1);
    setenv("LOCALAPPDATA", (scratch.Path() / "appdata").c_str(), 1);
    setenv("VORNADEL_DESKTOP", (scratch.Path() / "desktop").c_str(), 1);
    host::SetDialogSearchPath({(options.source / "dialog").string()});
    host::SetEnvironmentVariable("VDConfig", host::Utf8ToGbk((scratch.Path() / "root").string()));
}

// The message boxes since `from` must be the one success message of the command.
void ExpectSuccess(size_t from, const char* command) {
    const std::vector<host::MessageRecord>& messages = host::Messages();
    for (size_t i = from; i < messages.size(); ++i) {
        if (messages[i].type != NXOpen::NXMessageBox::DialogTypeInformation)
            throw std::runtime_error(std::string(command) + " showed a message box, " + host::GbkToUtf8(messages[i].title) +
                                     ": " + host::GbkToUtf8(messages[i].text));
    }
    if (messages.size() != from + 1) throw std::runtime_error(std::string(command) + " did not confirm");
}

// Loads the mould, makes the dialog object, shows the dialog; while it is shown, fills the head,
// picks the output folder, presses save and then export, each timed.
Sample OpenDialog(const Options& options, const Scratch& scratch, const fs::path& mould) {
    Sample sample;
    SetUpSession(options, scratch);
    host::LoadWorkPart(mould.string());
    UF_initialize();
    Vornadel* dialog = new Vornadel();
    // The output folder the designer picks (the export makes only the part's folder inside it).
    const fs::path folder = scratch.Path() / "out" / "BOM";
    fs::create_directories(folder);

    bool shown = false;
    host::SetDialogScript([&](host::LiveDialog& live) {
        shown = true;
        sample.lines = CountNodes(live.Tree(), true);
        sample.rows = CountNodes(live.Tree(), false);
        for (const auto& [block, text] : kHead) live.SetText(block, text);
        live.PickFolder("nativeFolderBrowser0", "E:\\BOM");

        size_t messages = host::Messages().size();
        int updates = host::ModelUpdateCount();
        Clock::time_point start = Clock::now();
        live.Press("button0");
        sample.save = Milliseconds(Clock::now() - start);
        sample.saveUpdates = host::ModelUpdateCount() - updates;
        ExpectSuccess(messages, "save");

        messages = host::Messages().size();
        updates = host::ModelUpdateCount();
        start = Clock::now();
        live.Press("button01");
        sample.exportAll = Milliseconds(Clock::now() - start);
        sample.exportUpdates = host::ModelUpdateCount() - updates;
        ExpectSuccess(messages, "export");
        live.Close();
    });
    dialog->Show();
    delete dialog;
    host::SetDialogScript(nullptr);
    if (!shown) throw std::runtime_error("the dialog was not shown");

    // The one workbook of the export; removed, so that every opening exports under the plain name.
    int workbooks = 0;
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(folder)) {
        if (entry.is_regular_file() && entry.path().extension() == ".xls") {
            ++workbooks;
            sample.fileBytes += entry.file_size();
        }
    }
    if (workbooks != 1) throw std::runtime_error("the export did not write one workbook");
    fs::remove_all(folder);
    return sample;
}

Result Measure(const Options& options, int bodies, const Scratch& scratch) {
    moldgen::Options mould;
    mould.bodies = bodies;
    mould.seed = options.seed;
    const fs::path file = scratch.Path() / ("mould-" + std::to_string(bodies) + ".part.json");
    std::ofstream(file, std::ios::binary) << moldgen::PartFileText(moldgen::Generate(mould));

    std::vector<Sample> samples;
    for (int i = 0; i < options.repeat; ++i) samples.push_back(OpenDialog(options, scratch, file));
    Result result;
    result.bodies = bodies;
    result.median = result.least = samples.front();
    for (double Sample::*field : {&Sample::save, &Sample::exportAll}) {
        std::vector<double> values;
        for (const Sample& sample : samples) values.push_back(sample.*field);
        result.median.*field = Median(values);
        result.least.*field = *std::min_element(values.begin(), values.end());
    }
    return result;
}

std::string Fixed(double value, int decimals) {
    char text[32];
    std::snprintf(text, sizeof text, "%.*f", decimals, value);
    return text;
}

void Report(const std::vector<Result>& results, const Options& options) {
    std::cout << "save and export of the BOM in the host (moldgen --seed " << options.seed << "; " << options.repeat
              << " openings of the dialog per mould: median and least time)\n\n";
    const std::vector<std::string> titles = {"bodies", "lines", "rows", "save updates", "save ms", "export updates",
                                             "export ms", "export less save ms", "workbook KiB"};
    std::vector<std::vector<std::string>> rows;
    for (const Result& r : results) {
        const Sample& m = r.median;
        rows.push_back({std::to_string(r.bodies), std::to_string(m.lines), std::to_string(m.rows),
                        std::to_string(m.saveUpdates), Fixed(m.save, 1) + " (" + Fixed(r.least.save, 1) + ")",
                        std::to_string(m.exportUpdates), Fixed(m.exportAll, 1) + " (" + Fixed(r.least.exportAll, 1) + ")",
                        Fixed(r.least.exportAll - r.least.save, 1), std::to_string(m.fileBytes / 1024)});
    }
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
    std::cout << "\nexport less save: the export's own work (head check, folder, file name, template copy, workbook),\n"
                 "from the least times\n";
    std::cout << "\ngrowth of the least times (a linear step grows as the rows of the tree):\n";
    for (size_t i = 1; i < results.size(); ++i) {
        const Result& a = results[i - 1];
        const Result& b = results[i];
        std::cout << "  " << a.bodies << " -> " << b.bodies << " bodies: save x" << Fixed(b.least.save / a.least.save, 1)
                  << ", export x" << Fixed(b.least.exportAll / a.least.exportAll, 1) << "   (rows x"
                  << Fixed(static_cast<double>(b.median.rows) / a.median.rows, 1) << ", lines x"
                  << Fixed(static_cast<double>(b.median.lines) / a.median.lines, 1) << ")\n";
    }
}

const char kUsage[] =
    "usage: bench_save_export [--sizes N,N,...] [--seed S] [--repeat R] [--source DIR]\n"
    "  --sizes   standard-part bodies of the moulds measured (default 100,1000,5000)\n"
    "  --seed    moldgen seed of the moulds (default 1)\n"
    "  --repeat  openings of the dialog per mould (default 5)\n"
    "  --source  the checkout with samples/ and dialog/ (default: the one built from)\n";

Options Parse(int argc, char** argv) {
    Options options;
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

}  // namespace

int main(int argc, char** argv) {
    Options options;
    try {
        options = Parse(argc, argv);
    } catch (const std::exception& e) {
        if (*e.what() != '\0') std::cerr << "bench_save_export: " << e.what() << "\n";
        std::cerr << kUsage;
        return 2;
    }
    try {
        Scratch scratch(options);
        // What the process sets up once (code-page tables, the dialog file) is paid by a small
        // mould saved and exported once, not measured.
        Options warmUp = options;
        warmUp.repeat = 1;
        Measure(warmUp, 20, scratch);
        std::vector<Result> results;
        for (int bodies : options.sizes) results.push_back(Measure(options, bodies, scratch));
        Report(results, options);
    } catch (const std::exception& e) {
        std::cerr << "bench_save_export: " << e.what() << "\n";
        return 1;
    }
    return 0;
}
