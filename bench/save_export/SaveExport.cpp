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
#include <utility>
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

// The head fields as a designer fills them in: values the bundled option lists offer (narrow
// literals are GBK in this build, as the dialog takes them).
const std::pair<const char*, const char*> kHead[] = {
    {"string03", "SO-0517"},       {"string02", "E24-091"},     {"string031", "PA66+GF30"},
    {"string033", "P-88231"},      {"string01", "YM-2405"},     {"string032", "280T"},
    {"string0", "海尔智家"},       {"string034", "3.0"},        {"string035", "两板模"},
    {"string036", "陈明"},         {"string04", "洗衣机门把手"},
};

// The configuration root's tables copied into the scratch folder (typing a head field may rewrite
// its option table), and the folder of drive E:, where the designer exports.
fs::path ConfigRoot(const Scratch& scratch) { return scratch.Path() / "root"; }
fs::path DriveE(const Scratch& scratch) { return scratch.Path() / "out"; }

void CopyConfiguration(const Options& options, const Scratch& scratch) {
    fs::create_directories(ConfigRoot(scratch));
    fs::create_directories(DriveE(scratch));
    fs::copy(options.source / "samples" / "config", ConfigRoot(scratch) / "config", fs::copy_options::recursive);
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
    SetUpSession(options, scratch, ConfigRoot(scratch), "E=" + DriveE(scratch).string());
    host::LoadWorkPart(mould.string());
    UF_initialize();
    Vornadel* dialog = new Vornadel();
    // The output folder the designer picks (the export makes only the part's folder inside it).
    const fs::path folder = DriveE(scratch) / "BOM";
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
