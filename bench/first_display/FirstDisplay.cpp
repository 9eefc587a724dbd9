// bench_first_display: how long the first display of the standard-part tree takes in the host,
// for generated moulds of 100, 1,000 and 5,000 standard-part bodies (bench/README.md).
//
// For each size: a mould from moldgen, loaded as the work part; the dialog object made as NX
// makes it (the bundled configuration root samples/, drive D: mapped to samples/drive-d, the
// dialog file found in dialog/); then the dialog shown. Each opening takes three times:
//  - first display: from BlockDialog::Show to the moment the designer could act, i.e. the
//    initialize handler and the whole dialog-shown handler (columns, head fields, layers, and the
//    tree built with its snapshot);
//  - build: CreatStdPartNodes(false, true) once more on the shown dialog, as the first display
//    calls it: collection + records + matching + tree + snapshot;
//  - collection + records: CollectWorkPartBodies, the marker filter and GetStdPartParams alone,
//    so that build minus this is the matching, the tree and the snapshot.
// The dialog is opened several times per mould; the medians and the least times are reported.
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
#include "stdparts/StdPartCollection.h"

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

// One opening of the dialog.
struct Sample {
    int collected = 0;  // standard-part bodies the first display lists
    int groups = 0;     // top-level nodes
    int nodes = 0;      // every node
    double load = 0, construct = 0, firstDisplay = 0, build = 0, collect = 0;
};

// The medians and the minimums of the samples of one mould.
struct Result {
    int bodies = 0;
    Sample median, least;
};

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

// The configuration root, drive D:, the per-user folder and the desktop of the run; the dialog
// file found in dialog/.
void SetUpSession(const Options& options, const Scratch& scratch) {
    host::ResetSession();
    setenv("VORNADEL_DRIVES", ("D=" + (options.source / "samples" / "drive-d").string()).c_str(), 1);
    setenv("LOCALAPPDATA", (scratch.Path() / "appdata").c_str(), 1);
    setenv("VORNADEL_DESKTOP", (scratch.Path() / "desktop").c_str(), 1);
    host::SetDialogSearchPath({(options.source / "dialog").string()});
    host::SetEnvironmentVariable("VDConfig", host::Utf8ToGbk((options.source / "samples").string()));
}

// Loads the mould, makes the dialog object and shows the dialog; while it is shown, builds the
// tree once more and collects the records once more, each timed.
Sample OpenDialog(const Options& options, const Scratch& scratch, const fs::path& mould) {
    Sample sample;
    SetUpSession(options, scratch);
    Clock::time_point start = Clock::now();
    host::LoadWorkPart(mould.string());
    sample.load = Milliseconds(Clock::now() - start);

    UF_initialize();
    start = Clock::now();
    Vornadel* dialog = new Vornadel();
    sample.construct = Milliseconds(Clock::now() - start);

    bool shown = false;
    Clock::time_point shownAt;
    host::SetDialogScript([&](host::LiveDialog& live) {
        shownAt = Clock::now();
        shown = true;
        NXOpen::BlockStyler::Tree* tree = live.Tree();
        sample.groups = CountNodes(tree, true);
        sample.nodes = CountNodes(tree, false);

        Clock::time_point t = Clock::now();
        dialog->CreatStdPartNodes(false, true);
        sample.build = Milliseconds(Clock::now() - t);

        t = Clock::now();
        std::vector<NXOpen::Body*> marked = KeepStdPartBodies(CollectWorkPartBodies(*dialog));
        sample.collected = static_cast<int>(dialog->GetStdPartParams(marked, dialog->stdPartConfig.nameOrder).size());
        sample.collect = Milliseconds(Clock::now() - t);
        live.Close();
    });
    start = Clock::now();
    dialog->Show();
    sample.firstDisplay = Milliseconds(shownAt - start);
    delete dialog;
    host::SetDialogScript(nullptr);

    for (const host::MessageRecord& message : host::Messages())
        throw std::runtime_error("the dialog showed a message box, " + host::GbkToUtf8(message.title) + ": " +
                                 host::GbkToUtf8(message.text));
    if (!shown) throw std::runtime_error("the dialog was not shown");
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
    for (double Sample::*field : {&Sample::load, &Sample::construct, &Sample::firstDisplay, &Sample::build, &Sample::collect}) {
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
    std::cout << "first display of the standard-part tree in the host (moldgen --seed " << options.seed << "; " << options.repeat
              << " openings of the dialog per mould: median and least time)\n\n";
    // Right-aligned columns; the timed ones as "median (least)".
    const std::vector<std::string> titles = {"bodies", "listed", "groups", "nodes", "load ms", "dialog ms", "first display ms",
                                             "build ms", "collect+records ms", "match+tree+snapshot ms"};
    std::vector<std::vector<std::string>> rows;
    for (const Result& r : results) {
        const Sample& m = r.median;
        rows.push_back({std::to_string(r.bodies), std::to_string(m.collected), std::to_string(m.groups), std::to_string(m.nodes),
                        Fixed(m.load, 1), Fixed(m.construct, 1), Fixed(m.firstDisplay, 1) + " (" + Fixed(r.least.firstDisplay, 1) + ")",
                        Fixed(m.build, 1) + " (" + Fixed(r.least.build, 1) + ")", Fixed(m.collect, 1), Fixed(m.build - m.collect, 1)});
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
    std::cout << "\ngrowth of the least times (a linear step grows as the body count, a quadratic one as its square):\n";
    for (size_t i = 1; i < results.size(); ++i) {
        const Sample& a = results[i - 1].least;
        const Sample& b = results[i].least;
        const double n = static_cast<double>(results[i].bodies) / results[i - 1].bodies;
        std::cout << "  " << results[i - 1].bodies << " -> " << results[i].bodies << " bodies: first display x"
                  << Fixed(b.firstDisplay / a.firstDisplay, 1) << ", build x" << Fixed(b.build / a.build, 1) << "   (linear x" << Fixed(n, 1)
                  << ", quadratic x" << Fixed(n * n, 1) << ")\n";
    }
}

const char kUsage[] =
    "usage: bench_first_display [--sizes N,N,...] [--seed S] [--repeat R] [--source DIR]\n"
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
        if (*e.what() != '\0') std::cerr << "bench_first_display: " << e.what() << "\n";
        std::cerr << kUsage;
        return 2;
    }
    try {
        Scratch scratch;
        // The first opening in a process pays for what the host and the C library set up once
        // (code-page tables, the dialog file): a small mould opened once, not measured.
        Options warmUp = options;
        warmUp.repeat = 1;
        Measure(warmUp, 20, scratch);
        std::vector<Result> results;
        for (int bodies : options.sizes) results.push_back(Measure(options, bodies, scratch));
        Report(results, options);
    } catch (const std::exception& e) {
        std::cerr << "bench_first_display: " << e.what() << "\n";
        return 1;
    }
    return 0;
}
