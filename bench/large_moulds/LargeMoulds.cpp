// bench_large_moulds: how the dialog copes with large moulds in the host, for generated moulds of
// 5,000, 20,000 and 50,000 standard-part bodies (bench/README.md).
//
// For each size: a mould from moldgen, loaded as the work part (timed: milliseconds and MB/s of
// the part file's JSON); the dialog object made with a copy of the bundled configuration, as
// bench_save_export makes it; then the dialog shown. Each opening takes, while the dialog is shown:
//  - first display: from BlockDialog::Show until the dialog waits for the designer;
//  - group: two bodies of two different purchase lines answered to the group button's selection
//    dialog ("button04"), until the rebuilt tree is shown; both must carry one group id then;
//  - dissolve: a right click on the line of that group and its menu item 1, until the tree is
//    rebuilt; no body of that line may keep a group id;
//  - save ("button0") and export ("button01", the head filled and E:\BOM picked first), each
//    until its confirmation, the export's workbook checked.
// The first opening of each mould also takes the memory: heap in use (malloc's) and resident set
// after the first display, and again after ten group operations in a row, each of two other
// bodies, made before the timed steps. The least times of the openings are reported, memory as
// the first opening has it. A step that did not do its work (an unexpected message box among
// others) stops the bench with a message.
#include <malloc.h>
#include <unistd.h>

#include <exception>
#include <fstream>
#include <iostream>
#include <string>
#include <vector>

#include <NXOpen/BlockStyler_Node.hxx>
#include <NXOpen/BlockStyler_Tree.hxx>
#include <NXOpen/Body.hxx>
#include <NXOpen/Selection.hxx>
#include <uf.h>

#include "../MouldBench.hpp"
#include "shell/Vornadel.h"
#include "stdparts/StdPartRecords.h"
#include "stdparts/TreeReadBack.h"

namespace {

using namespace bench;

constexpr int kGroupsInARow = 10;  // group operations between the two memory readings

// Bytes of memory in use: malloc's (blocks in use and mapped blocks) and the resident set.
struct Memory {
    double heap = 0, resident = 0;
};

Memory MemoryNow() {
    Memory memory;
    const struct mallinfo2 info = mallinfo2();
    memory.heap = static_cast<double>(info.uordblks + info.hblkhd);
    long pages = 0, residentPages = 0;
    std::ifstream("/proc/self/statm") >> pages >> residentPages;
    memory.resident = static_cast<double>(residentPages) * sysconf(_SC_PAGESIZE);
    return memory;
}

// One opening of the dialog.
struct Sample {
    int lines = 0;  // purchase lines (top-level nodes) of the first display
    int rows = 0;   // every row of the tree
    double jsonBytes = 0;
    double load = 0, firstDisplay = 0, group = 0, dissolve = 0, save = 0, exportAll = 0;
    Memory shown, afterGroups;  // first opening only
};

// The tag of the node's body, 0 for a row without a body.
unsigned int BodyTagOf(NXOpen::BlockStyler::Node* node) {
    const NXOpen::Body* body = GetNodeBody(node);
    return body != nullptr ? body->Tag() : 0;
}

// The body's group id ("" when it has none).
std::string GroupIdOf(unsigned int tag) {
    NXOpen::Body* body = host::FindBody(tag);
    if (!body->HasUserAttribute(StdPartTitle::GroupId, NXOpen::NXObject::AttributeTypeString, -1)) return "";
    return body->GetUserAttribute(StdPartTitle::GroupId, NXOpen::NXObject::AttributeTypeString, -1).StringValue.GetLocaleText();
}

std::string Pair(unsigned int a, unsigned int b) { return "bodies " + std::to_string(a) + " and " + std::to_string(b); }

// The group button with the two bodies answered to its selection dialog; the milliseconds of the
// press. Both bodies must then carry one group id, and no message box may show. (Where the rebuilt
// tree puts them is the matching's: a grouped body joins an earlier line of equal description.)
double Group(host::LiveDialog& live, unsigned int a, unsigned int b) {
    const size_t messages = host::Messages().size();
    const size_t selections = host::SelectionRequests().size();
    host::QueueSelectionAnswer(NXOpen::Selection::ResponseOk, {a, b});
    const Clock::time_point start = Clock::now();
    live.Press("button04");
    const double ms = Milliseconds(Clock::now() - start);
    ExpectMessages(messages, "the group of " + Pair(a, b), false);
    if (host::SelectionRequests().size() != selections + 1 || host::SelectionRequests().back().unanswered)
        throw std::runtime_error("the group button did not take the selection of " + Pair(a, b));
    if (GroupIdOf(a).empty() || GroupIdOf(a) != GroupIdOf(b))
        throw std::runtime_error("the group did not give " + Pair(a, b) + " one group id");
    return ms;
}

// The dissolve of the group of body a (the line whose row carries its group id, its menu item 1);
// the milliseconds from the right click until the item's handler returned. Afterwards no body of
// that line may carry a group id.
double Dissolve(host::LiveDialog& live, unsigned int a) {
    const std::string id = GroupIdOf(a);
    NXOpen::BlockStyler::Node* line = live.Tree()->RootNode();
    while (line != nullptr && (BodyTagOf(line) == 0 || GroupIdOf(BodyTagOf(line)) != id)) line = line->NextSiblingNode();
    if (line == nullptr) throw std::runtime_error("no line carries the group id of body " + std::to_string(a));
    std::vector<unsigned int> members = {BodyTagOf(line)};
    for (NXOpen::BlockStyler::Node* row = line->FirstChildNode(); row != nullptr; row = row->NextSiblingNode())
        members.push_back(BodyTagOf(row));

    const size_t messages = host::Messages().size();
    const Clock::time_point start = Clock::now();
    live.RightClick(line, 0);
    if (!live.ChooseMenuItem(1)) throw std::runtime_error("the line of the group of body " + std::to_string(a) + " offers no dissolve");
    const double ms = Milliseconds(Clock::now() - start);
    ExpectMessages(messages, "the dissolve of the group of body " + std::to_string(a), false);
    for (unsigned int tag : members)
        if (tag != 0 && !GroupIdOf(tag).empty())
            throw std::runtime_error("the dissolve left the group id on body " + std::to_string(tag));
    return ms;
}

// While the dialog is shown: the checks of the first display, in the first opening the memory and
// the ten group operations, then the timed steps.
void Operate(host::LiveDialog& live, Sample& sample, int opening) {
    ExpectMessages(0, "the first display", false);
    sample.rows = CountNodes(live.Tree(), false);
    // Bodies of different purchase lines: the first body row of each line that has body rows.
    std::vector<unsigned int> bodies;
    for (NXOpen::BlockStyler::Node* line = live.Tree()->RootNode(); line != nullptr; line = line->NextSiblingNode()) {
        ++sample.lines;
        NXOpen::BlockStyler::Node* row = line->FirstChildNode();
        if (row != nullptr && BodyTagOf(row) != 0) bodies.push_back(BodyTagOf(row));
    }
    const size_t wanted = opening == 0 ? 2 + 2 * kGroupsInARow : 2;
    if (bodies.size() < wanted)
        throw std::runtime_error("the mould has " + std::to_string(bodies.size()) + " purchase lines with body rows, " +
                                 std::to_string(wanted) + " are needed");

    if (opening == 0) {
        sample.shown = MemoryNow();
        for (int i = 0; i < kGroupsInARow; ++i) Group(live, bodies[2 + 2 * i], bodies[3 + 2 * i]);
        sample.afterGroups = MemoryNow();
    }
    sample.group = Group(live, bodies[0], bodies[1]);
    sample.dissolve = Dissolve(live, bodies[0]);
    FillHead(live);
    sample.save = PressConfirmed(live, "button0", "save");
    sample.exportAll = PressConfirmed(live, "button01", "export");
}

Sample OpenDialog(const Options& options, const Scratch& scratch, const fs::path& mould, int opening) {
    Sample sample;
    sample.jsonBytes = static_cast<double>(fs::file_size(mould));
    SetUpExportSession(options, scratch);
    Clock::time_point start = Clock::now();
    host::LoadWorkPart(mould.string());
    sample.load = Milliseconds(Clock::now() - start);
    UF_initialize();
    Vornadel* dialog = new Vornadel();

    bool shown = false;
    Clock::time_point shownAt;
    // What goes wrong while the dialog is shown is taken past the plug-in, which would show it in
    // a message box of its own.
    std::exception_ptr failure;
    host::SetDialogScript([&](host::LiveDialog& live) {
        shownAt = Clock::now();
        shown = true;
        try {
            Operate(live, sample, opening);
        } catch (...) {
            failure = std::current_exception();
        }
        live.Close();
    });
    start = Clock::now();
    dialog->Show();
    sample.firstDisplay = Milliseconds(shownAt - start);
    delete dialog;
    host::SetDialogScript(nullptr);
    if (failure) std::rethrow_exception(failure);
    if (!shown) throw std::runtime_error("the dialog was not shown");
    TakeWorkbook(scratch);
    return sample;
}

std::string Megabytes(double bytes) { return Fixed(bytes / 1e6, 1); }
std::string Growth(double before, double after) { return Fixed(100.0 * (after - before) / before, 1); }

void Report(const std::vector<Result<Sample>>& results, const Options& options) {
    std::cout << "large moulds in the host (moldgen --seed " << options.seed << "; least time of " << options.repeat
              << " openings of the dialog per mould; memory in MB after the first display and after " << kGroupsInARow
              << " group operations in a row, in the first opening)\n\n";
    const std::vector<std::string> titles = {"bodies",      "lines",    "rows",    "JSON MB",   "load ms",   "load MB/s",
                                             "display ms",  "group ms", "dissolve ms", "save ms", "export ms", "heap MB",
                                             "heap+10 MB",  "heap %",   "RSS MB",  "RSS+10 MB", "RSS %"};
    std::vector<std::vector<std::string>> rows;
    for (const Result<Sample>& r : results) {
        const Sample& l = r.least;
        const Sample& first = r.median;  // the untimed fields are the first opening's
        rows.push_back({std::to_string(r.bodies), std::to_string(first.lines), std::to_string(first.rows),
                        Megabytes(first.jsonBytes), Fixed(l.load, 1), Fixed(first.jsonBytes / 1e3 / l.load, 1),
                        Fixed(l.firstDisplay, 1), Fixed(l.group, 1), Fixed(l.dissolve, 1), Fixed(l.save, 1),
                        Fixed(l.exportAll, 1), Megabytes(first.shown.heap), Megabytes(first.afterGroups.heap),
                        Growth(first.shown.heap, first.afterGroups.heap), Megabytes(first.shown.resident),
                        Megabytes(first.afterGroups.resident), Growth(first.shown.resident, first.afterGroups.resident)});
    }
    PrintTable(titles, rows);
}

}  // namespace

int main(int argc, char** argv) {
    Options defaults;
    defaults.sizes = {5000, 20000, 50000};
    defaults.repeat = 3;
    return Main(
        "bench_large_moulds", argc, argv,
        [](const Options& options, const Scratch& scratch) {
            CopyConfiguration(options, scratch);
            Report(MeasureMoulds<Sample>(options, scratch, OpenDialog,
                                         {&Sample::load, &Sample::firstDisplay, &Sample::group, &Sample::dissolve,
                                          &Sample::save, &Sample::exportAll}),
                   options);
        },
        defaults);
}
