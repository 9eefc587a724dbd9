// One run of a plug-in inside the host: the part loaded, the environment set, ufusr called as NX
// calls it, the dialog driven by commands, the part saved on request.
#pragma once

#include <istream>
#include <ostream>
#include <string>

#include "Options.hpp"

namespace runner {

// Exit statuses of the runner.
enum ExitStatus {
    kExitOk = 0,
    kExitFailed = 1,  // the run failed: part file, plug-in, script command, an exception out of ufusr, save
    kExitUsage = 2,   // bad arguments or a script that does not parse; nothing was run
    kExitLost = 3,    // the run went through, but an export left no filled BOM or a value was not stored
};

// Where the runner finds what it bundles.
struct Installation {
    std::string sourceRoot;    // holds samples/ and dialog/
    std::string runnerFolder;  // holds the default plug-in (kDefaultPlugin)
};

// The installation of the running executable: the source root compiled in when it still holds
// the samples, else the folder two levels above the executable (build/bin -> the checkout), else
// the working folder.
Installation FindInstallation();

// Runs the plug-in as options say. Output goes to out, problems to err; without a script or
// -e, commands come from in (with a prompt and a redrawn dialog when interactive is true).
int Run(const Options& options, const Installation& installation, std::istream& in, bool interactive,
        std::ostream& out, std::ostream& err);

}  // namespace runner
