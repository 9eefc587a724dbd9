// What a run really left behind, set against what the plug-in said. The export ends with its
// success box whether or not a workbook could be written, and the save ignores the result of each
// attribute call: inside NX a designer finds out later. The runner checks instead, and says each
// loss on standard error, one line each:
// - each workbook a success box names: it exists and is a workbook the engine reads (a copy of a
//   template the engine cannot read is left unfilled), else why not (the output folder is
//   missing, a file, not writable, or on a drive the drive table does not map);
// - each press of Vornadel's export button after which no success box came (a missing template,
//   an empty required field): the plug-in's own message;
// - each attribute value the host refused for NX's limits: the tree row and column it came from.
#pragma once

#include <optional>
#include <ostream>
#include <string>
#include <vector>

#include "Driver.hpp"
#include "Script.hpp"

namespace runner {

class Outcomes {
public:
    // exportButton: the block whose press exports (Vornadel's "button01"), or "" for a plug-in
    // whose buttons mean something else. driveTable: VORNADEL_DRIVES as the run set it, or nothing
    // where Windows paths are the machine's own.
    Outcomes(std::string exportButton, std::optional<std::string> driveTable)
        : exportButton_(std::move(exportButton)), driveTable_(std::move(driveTable)) {}

    // Every message box, as it occurs.
    void Message(const host::MessageRecord& message);
    // Around each command; where is "script.txt:7", dialog the dialog shown during it (or NULL).
    void BeforeCommand();
    void AfterCommand(const Command& c, const std::string& where, host::LiveDialog* dialog);

    // After the run: checks each exported workbook, then prints every loss; true when there was one.
    bool Report(std::ostream& err);

private:
    // A Windows path of the plug-in (GBK) as a file of this machine (UTF-8); nothing, with why,
    // when its drive is not mapped.
    std::optional<std::string> Local(const std::string& windowsPath, std::string& why) const;
    std::string WhyMissing(const std::string& workbook) const;

    const std::string exportButton_;
    const std::optional<std::string> driveTable_;
    std::vector<std::string> exported_;  // the workbooks the success boxes named (GBK)
    std::vector<std::string> lost_;      // lines already known (UTF-8)
    size_t messagesBefore_ = 0;
    size_t exportedBefore_ = 0;
    size_t refusedSeen_ = 0;
};

}  // namespace runner
