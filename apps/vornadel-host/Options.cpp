#include "Options.hpp"

#include "Platform.hpp"
#include "Script.hpp"

#include <cctype>

namespace runner {

namespace {

bool IsLeapYear(int year) {
    return (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
}

int DaysInMonth(int year, int month) {
    static const int days[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    return month == 2 && IsLeapYear(year) ? 29 : days[month - 1];
}

// Reads exactly count digits of text at pos into value.
bool Digits(const std::string& text, size_t pos, size_t count, int& value) {
    if (pos + count > text.size()) return false;
    value = 0;
    for (size_t i = pos; i < pos + count; ++i) {
        if (!std::isdigit(static_cast<unsigned char>(text[i]))) return false;
        value = value * 10 + (text[i] - '0');
    }
    return true;
}

// The arguments, with "--name=value" split into "--name" and "value".
class ArgumentList {
public:
    explicit ArgumentList(const std::vector<std::string>& args) : args_(args) {}

    bool Done() const { return next_ >= args_.size(); }

    // The next argument; an attached "=value" is kept for Value().
    std::string Take() {
        std::string arg = args_[next_++];
        attached_.reset();
        const size_t eq = arg.find('=');
        if (arg.rfind("--", 0) == 0 && eq != std::string::npos) {
            attached_ = arg.substr(eq + 1);
            arg.erase(eq);
        }
        return arg;
    }

    // The value of the option just taken: attached, or the next argument.
    std::string Value(const std::string& option) {
        if (attached_) {
            std::string value = *attached_;
            attached_.reset();
            return value;
        }
        if (Done()) throw UsageError(option + " needs a value");
        return args_[next_++];
    }

    // An option that takes no value must not have one attached.
    void NoValue(const std::string& option) const {
        if (attached_) throw UsageError(option + " takes no value");
    }

private:
    const std::vector<std::string>& args_;
    size_t next_ = 0;
    std::optional<std::string> attached_;
};

}  // namespace

std::optional<platform::LocalTime> ParseTime(const std::string& text) {
    platform::LocalTime t = {0, 0, 0, 0, 0, 0, 0};
    if (text.size() != 19 && text.size() != 23) return std::nullopt;
    if (!Digits(text, 0, 4, t.year) || text[4] != '-' || !Digits(text, 5, 2, t.month) || text[7] != '-' ||
        !Digits(text, 8, 2, t.day) || text[10] != 'T' || !Digits(text, 11, 2, t.hour) || text[13] != ':' ||
        !Digits(text, 14, 2, t.minute) || text[16] != ':' || !Digits(text, 17, 2, t.second)) {
        return std::nullopt;
    }
    if (text.size() == 23 && (text[19] != '.' || !Digits(text, 20, 3, t.milliseconds))) return std::nullopt;
    if (t.year < 1601 || t.month < 1 || t.month > 12 || t.day < 1 || t.day > DaysInMonth(t.year, t.month) ||
        t.hour > 23 || t.minute > 59 || t.second > 59) {
        return std::nullopt;
    }
    return t;
}

Options ParseArguments(const std::vector<std::string>& args) {
    Options options;
    ArgumentList list(args);
    bool first = true;
    while (!list.Done()) {
        const std::string arg = list.Take();
        const bool isFirst = first;
        first = false;
        if (arg == "-h" || arg == "--help") {
            list.NoValue(arg);
            options.help = true;
        } else if (arg == "--config") {
            options.configRoot = list.Value(arg);
        } else if (arg == "--drive") {
            if (!kMapsDrives) throw UsageError("--drive maps nothing on Windows: the plug-in uses the machine's own drives");
            const std::string value = list.Value(arg);
            if (value.size() < 3 || value[1] != '=' || !std::isalpha(static_cast<unsigned char>(value[0]))) {
                throw UsageError("--drive needs X=DIR (a drive letter and a folder), not \"" + value + "\"");
            }
            options.drives[static_cast<char>(std::toupper(static_cast<unsigned char>(value[0])))] = value.substr(2);
        } else if (arg == "--localappdata") {
            options.localAppData = list.Value(arg);
        } else if (arg == "--desktop") {
            if (!kMapsDrives) throw UsageError("--desktop is not for Windows: the desktop is the user's own desktop folder");
            options.desktop = list.Value(arg);
        } else if (arg == "--time") {
            const std::string value = list.Value(arg);
            options.time = ParseTime(value);
            if (!options.time) {
                throw UsageError("--time needs a local time YYYY-MM-DDTHH:MM:SS.mmm, not \"" + value + "\"");
            }
        } else if (arg == "--script") {
            if (options.scriptFile) throw UsageError("--script is given twice");
            options.scriptFile = list.Value(arg);
        } else if (arg == "-e") {
            options.commands.push_back(list.Value(arg));
        } else if (arg == "--save") {
            // Never a value: "--save mine.part.json" must not read as "save the sample over mine".
            list.NoValue(arg);
            options.save = true;
        } else if (arg == "--save-as") {
            options.saveAs = list.Value(arg);
        } else if (arg == "--format") {
            const std::string value = list.Value(arg);
            if (value == "text") {
                options.format = Format::Text;
            } else if (value == "tsv") {
                options.format = Format::Tsv;
            } else {
                throw UsageError("--format is text or tsv, not \"" + value + "\"");
            }
        } else if (arg == "--ambiguous-width") {
            const std::string value = list.Value(arg);
            if (value != "1" && value != "2") throw UsageError("--ambiguous-width is 1 or 2, not \"" + value + "\"");
            options.ambiguousWidth = value[0] - '0';
        } else if (arg == "--plugin") {
            options.plugin = list.Value(arg);
        } else if (arg == "--nx-calls") {
            list.NoValue(arg);
            options.nxCalls = true;
        } else if (arg == "--open") {
            list.NoValue(arg);
            options.reallyOpen = true;
        } else if (arg == "run" && isFirst) {
            // the only command; it may be left out
        } else if (!arg.empty() && arg[0] == '-' && arg != "-") {
            throw UsageError("unknown option " + arg);
        } else {
            if (options.part) throw UsageError("more than one part file: " + *options.part + " and " + arg);
            options.part = arg;
        }
    }
    if (options.scriptFile && !options.commands.empty()) {
        throw UsageError("--script and -e cannot be used together");
    }
    if (options.save && options.saveAs) throw UsageError("--save and --save-as cannot be used together");
    return options;
}

std::string UsageText() {
    const std::string mapped = kMapsDrives ? "  --drive X=DIR          map drive X: to the folder DIR (repeatable)\n" : "";
    const std::string desktop = kMapsDrives ? "  --desktop DIR          the desktop folder\n" : "";
    return "usage: vornadel-host [run] [PART.part.json] [options]\n"
           "  --config ROOT          configuration root (the NX variable VDConfig)\n" +
           mapped + "  --localappdata DIR     the per-user folder LOCALAPPDATA\n" + desktop +
           "  --time YYYY-MM-DDTHH:MM:SS.mmm   pin the local clock\n"
           "  --script FILE          run the commands of FILE (\"-\": standard input)\n"
           "  -e COMMAND             run one command (repeatable)\n"
           "  --save                 save the work part over the part file after the run\n"
           "  --save-as OUT.part.json  save the work part to OUT after the run\n"
           "  --format text|tsv      output for people (default) or for programs\n"
           "  --ambiguous-width 1|2  columns the terminal gives \u00d7 \u03a6 \u00b0 \u2460 (default 1, or\n"
           "                         VORNADEL_AMBIGUOUS_WIDTH)\n"
           "  --plugin FILE          the plug-in library (default: " + kDefaultPlugin + " beside the runner)\n"
           "  --open                 really open the files the plug-in opens\n"
           "  --nx-calls             at the end, how often the plug-in called each NX entry point\n"
           "Without a script or -e the commands come from the terminal. See docs/runner.md.\n"
           "Commands:\n" +
           CommandHelp();
}

}  // namespace runner
