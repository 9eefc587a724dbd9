// The runner's command line: vornadel-host [run] [PART.part.json] [options] (docs/runner.md).
#pragma once

#include <map>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "platform/Desktop.h"

namespace runner {

// A command line the runner cannot use; what() says why, in one line.
class UsageError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

enum class Format { Text, Tsv };

struct Options {
    bool help = false;
    std::optional<std::string> part;        // the part file; default: the bundled sample part
    std::optional<std::string> configRoot;  // --config: the NX variable VDConfig
    std::map<char, std::string> drives;     // --drive X=DIR, by upper-case letter; later wins
    std::optional<std::string> localAppData;
    std::optional<std::string> desktop;
    std::optional<platform::LocalTime> time;
    std::optional<std::string> scriptFile;  // --script FILE ("-": standard input)
    std::vector<std::string> commands;      // -e COMMAND, in order
    bool save = false;                      // --save: the part file that was run is overwritten
    std::optional<std::string> saveAs;      // --save-as OUT: the work part is written to OUT
    Format format = Format::Text;
    std::optional<std::string> plugin;      // --plugin FILE; default: kDefaultPlugin beside the runner
    bool reallyOpen = false;                // --open
    std::optional<int> ambiguousWidth;
    bool nxCalls = false;                   // --nx-calls: print how often the plug-in called each NX entry point      // --ambiguous-width 1|2: columns of × Φ ° ① in text tables
};

// Parses the arguments after the program name. Throws UsageError.
Options ParseArguments(const std::vector<std::string>& args);

// "YYYY-MM-DDTHH:MM:SS[.mmm]" as a local time; nothing when the text is not such a time.
std::optional<platform::LocalTime> ParseTime(const std::string& text);

// The usage text printed by --help and after a usage error: the options, then the commands.
std::string UsageText();

}  // namespace runner
