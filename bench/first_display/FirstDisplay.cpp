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
#include <algorithm>
#include <iostream>
#include <string>
#include <vector>

#include <NXOpen/BlockStyler_Tree.hxx>
#include <uf.h>

#include "../MouldBench.hpp"
#include "shell/Vornadel.h"
#include "stdparts/StdPartCollection.h"

namespace {

using namespace bench;

// One opening of the dialog.
struct Sample {
    int collected = 0;  // standard-part bodies the first display lists
    int groups = 0;     // top-level nodes
    int nodes = 0;      // every node
    double load = 0, construct = 0, firstDisplay = 0, build = 0, collect = 0;
};

// Loads the mould, makes the dialog object and shows the dialog; while it is shown, builds the
// tree once more and collects the records once more, each timed.
Sample OpenDialog(const Options& options, const Scratch& scratch, const fs::path& mould) {
    Sample sample;
    SetUpSession(options, scratch, options.source / "samples");
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

void Report(const std::vector<Result<Sample>>& results, const Options& options) {
    std::cout << "first display of the standard-part tree in the host (moldgen --seed " << options.seed << "; " << options.repeat
              << " openings of the dialog per mould: median and least time)\n\n";
    // Right-aligned columns; the timed ones as "median (least)".
    const std::vector<std::string> titles = {"bodies", "listed", "groups", "nodes", "load ms", "dialog ms", "first display ms",
                                             "build ms", "collect+records ms", "match+tree+snapshot ms"};
    std::vector<std::vector<std::string>> rows;
    for (const Result<Sample>& r : results) {
        const Sample& m = r.median;
        rows.push_back({std::to_string(r.bodies), std::to_string(m.collected), std::to_string(m.groups), std::to_string(m.nodes),
                        Fixed(m.load, 1), Fixed(m.construct, 1), Fixed(m.firstDisplay, 1) + " (" + Fixed(r.least.firstDisplay, 1) + ")",
                        Fixed(m.build, 1) + " (" + Fixed(r.least.build, 1) + ")", Fixed(m.collect, 1), Fixed(m.build - m.collect, 1)});
    }
    PrintTable(titles, rows);
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

}  // namespace

int main(int argc, char** argv) {
    return Main("bench_first_display", argc, argv, [](const Options& options, const Scratch& scratch) {
        Report(MeasureMoulds(options, scratch, OpenDialog,
                             {&Sample::load, &Sample::construct, &Sample::firstDisplay, &Sample::build, &Sample::collect}),
               options);
    });
}
