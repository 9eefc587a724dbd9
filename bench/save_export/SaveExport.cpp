// bench_save_export: how long saving and exporting the BOM take in the host, for generated moulds
// of 100, 1,000 and 5,000 standard-part bodies (bench/README.md).
//
// For each size: a mould from moldgen, loaded as the work part; the dialog object made as NX
// makes it (a copy of the bundled configuration root, drive D: mapped to samples/drive-d, the
// dialog file found in dialog/); then the dialog shown and, as the designer would, the eleven head
// fields typed, the output folder picked, "save" (button0) pressed and then "export" (button01).
// Each opening takes, per command, the time from the press until the command is done (message
// box included) and the model updates it made (host::ModelUpdateCount()); the export saves
// first, then checks the head, makes the folder and the file name, copies the template, fills
// and saves the workbook. The dialog is opened several times per mould; the medians and the
// least times are reported.
#include <iostream>
#include <string>
#include <vector>

#include <uf.h>

#include "../MouldBench.hpp"
#include "shell/Vornadel.h"

namespace {

using namespace bench;

// One opening of the dialog: save, then export.
struct Sample {
    int lines = 0;          // purchase lines (top-level nodes): the workbook's part rows
    int rows = 0;           // every row of the tree: the rows the save writes onto bodies
    int saveUpdates = 0;    // model updates of the save
    int exportUpdates = 0;  // model updates of the export (its own save included)
    double save = 0, exportAll = 0;
    std::uintmax_t fileBytes = 0;
};

// Loads the mould, makes the dialog object, shows the dialog; while it is shown, fills the head,
// picks the output folder, presses save and then export, each timed.
Sample OpenDialog(const Options& options, const Scratch& scratch, const fs::path& mould) {
    Sample sample;
    SetUpExportSession(options, scratch);
    host::LoadWorkPart(mould.string());
    UF_initialize();
    Vornadel* dialog = new Vornadel();

    bool shown = false;
    host::SetDialogScript([&](host::LiveDialog& live) {
        shown = true;
        sample.lines = CountNodes(live.Tree(), true);
        sample.rows = CountNodes(live.Tree(), false);
        FillHead(live);

        int updates = host::ModelUpdateCount();
        sample.save = PressConfirmed(live, "button0", "save");
        sample.saveUpdates = host::ModelUpdateCount() - updates;

        updates = host::ModelUpdateCount();
        sample.exportAll = PressConfirmed(live, "button01", "export");
        sample.exportUpdates = host::ModelUpdateCount() - updates;
        live.Close();
    });
    dialog->Show();
    delete dialog;
    host::SetDialogScript(nullptr);
    if (!shown) throw std::runtime_error("the dialog was not shown");
    sample.fileBytes = TakeWorkbook(scratch);
    return sample;
}

void Report(const std::vector<Result<Sample>>& results, const Options& options) {
    std::cout << "save and export of the BOM in the host (moldgen --seed " << options.seed << "; " << options.repeat
              << " openings of the dialog per mould: median and least time)\n\n";
    const std::vector<std::string> titles = {"bodies", "lines", "rows", "save updates", "save ms", "export updates",
                                             "export ms", "workbook KiB"};
    std::vector<std::vector<std::string>> rows;
    for (const Result<Sample>& r : results) {
        const Sample& m = r.median;
        rows.push_back({std::to_string(r.bodies), std::to_string(m.lines), std::to_string(m.rows),
                        std::to_string(m.saveUpdates), Fixed(m.save, 1) + " (" + Fixed(r.least.save, 1) + ")",
                        std::to_string(m.exportUpdates), Fixed(m.exportAll, 1) + " (" + Fixed(r.least.exportAll, 1) + ")",
                        std::to_string(m.fileBytes / 1024)});
    }
    PrintTable(titles, rows);
    std::cout << "\ngrowth of the least times (a linear step grows as the rows of the tree):\n";
    for (size_t i = 1; i < results.size(); ++i) {
        const Result<Sample>& a = results[i - 1];
        const Result<Sample>& b = results[i];
        std::cout << "  " << a.bodies << " -> " << b.bodies << " bodies: save x" << Fixed(b.least.save / a.least.save, 1)
                  << ", export x" << Fixed(b.least.exportAll / a.least.exportAll, 1) << "   (rows x"
                  << Fixed(static_cast<double>(b.median.rows) / a.median.rows, 1) << ", lines x"
                  << Fixed(static_cast<double>(b.median.lines) / a.median.lines, 1) << ")\n";
    }
}

}  // namespace

int main(int argc, char** argv) {
    return Main("bench_save_export", argc, argv, [](const Options& options, const Scratch& scratch) {
        CopyConfiguration(options, scratch);
        Report(MeasureMoulds(options, scratch, OpenDialog,
                             {&Sample::save, &Sample::exportAll}),
               options);
    });
}
