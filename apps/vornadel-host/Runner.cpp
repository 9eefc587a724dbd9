#include "Runner.hpp"

#include <stdlib.h>

#include <cctype>

#include <filesystem>
#include <fstream>
#include <iostream>
#include <memory>
#include <optional>
#include <random>
#include <sstream>

#include <NXOpen/Selection.hxx>

#include "Driver.hpp"
#include "HostSession.hpp"
#include "LineEditor.hpp"
#include "Outcomes.hpp"
#include "Output.hpp"
#include "Platform.hpp"
#include "Plugin.hpp"
#include "Progress.hpp"
#include "Script.hpp"
#include "Snapshot.hpp"

#ifndef VORNADEL_SOURCE_DIR
#define VORNADEL_SOURCE_DIR ""
#endif

namespace fs = std::filesystem;

namespace runner {

namespace {

// Where commands come from: a parsed script, or the terminal line by line.
class CommandSource {
public:
    virtual ~CommandSource() = default;
    // The next command; nothing at the end of the input. Throws ScriptError (with the place) for
    // a line typed at the terminal that does not parse.
    virtual std::optional<Command> Next() = 0;
    virtual bool Interactive() const = 0;
    // "script.txt:3" for messages about a command.
    virtual std::string Where(const Command& c) const = 0;
};

class ListSource : public CommandSource {
public:
    ListSource(std::vector<Command> commands, std::string name) : commands_(std::move(commands)), name_(std::move(name)) {}
    std::optional<Command> Next() override {
        if (next_ >= commands_.size()) return std::nullopt;
        return commands_[next_++];
    }
    bool Interactive() const override { return false; }
    std::string Where(const Command& c) const override { return Place(name_, c.line); }

private:
    std::vector<Command> commands_;
    std::string name_;
    size_t next_ = 0;
};

const char kStandardInput[] = "stdin";

const char kPrompt[] = "vornadel> ";

// Lines typed at the terminal: edited (libedit, LineEditor.hpp) when they come from the process's
// own terminal, else read from in after the prompt.
class TerminalSource : public CommandSource {
public:
    TerminalSource(std::istream& in, std::ostream& out, bool editLines) : in_(in), out_(out), editLines_(editLines) {}
    std::optional<Command> Next() override {
        for (;;) {
            std::optional<std::string> typed = Read();
            if (!typed) {
                out_ << '\n' << std::flush;
                return std::nullopt;
            }
            const std::string& line = *typed;
            ++lines_;
            try {
                std::optional<Command> c = ParseLine(line, lines_);
                if (c) return c;
            } catch (const ScriptError& e) {
                throw ScriptError(Place(kStandardInput, lines_) + ": " + e.what());
            }
        }
    }
    bool Interactive() const override { return true; }
    std::string Where(const Command& c) const override { return Place(kStandardInput, c.line); }

private:
    std::optional<std::string> Read() {
        out_.flush();
        if (editLines_) return ReadEditedLine(kPrompt);
        out_ << kPrompt << std::flush;
        std::string line;
        if (!std::getline(in_, line)) return std::nullopt;
        return line;
    }

    std::istream& in_;
    std::ostream& out_;
    const bool editLines_;
    int lines_ = 0;
};

// Prints the selection dialogs and opened files the host recorded since the last call.
class EventLog {
public:
    EventLog(Printer& printer, bool reallyOpen) : printer_(printer), reallyOpen_(reallyOpen) {}
    void Flush() {
        const std::vector<host::SelectionRequest>& requests = host::SelectionRequests();
        for (; selections_ < requests.size(); ++selections_) printer_.Selection(requests[selections_]);
        const std::vector<std::string>& opened = host::OpenedFiles();
        for (; opened_ < opened.size(); ++opened_) printer_.Opened(opened[opened_], reallyOpen_);
    }

private:
    Printer& printer_;
    bool reallyOpen_;
    size_t selections_ = 0;
    size_t opened_ = 0;
};

// Runs commands: inside the dialog while it is shown, and the rest after ufusr returned. A script
// stops at its first failing command. At the terminal a failing command is reported and the
// session goes on until the dialog closes or the input ends; the run then fails if any command
// did. The terminal draws the dialog when it appears; after a command it only says what changed,
// and "show" prints it again (a mould of thousands of bodies is not printed after every click).
class Executor {
public:
    Executor(CommandSource& source, Printer& printer, Format format, EventLog& events, Outcomes& outcomes,
             Progress& progress, std::ostream& out, std::ostream& err)
        : source_(source), printer_(printer), format_(format), events_(events), outcomes_(outcomes),
          progress_(progress), out_(out), err_(err) {}

    // The dialog script: runs commands until "close", the end of the input or a failure.
    void InDialog(host::LiveDialog& dialog) {
        if (source_.Interactive()) {
            printer_.Blocks(dialog.Title(), dialog.Blocks());
            printer_.Tree(ReadTree(dialog));
            drawnBlocks_ = RenderedBlocks(dialog);
            drawnTree_ = RenderedTree(dialog);
        }
        while (!stopped_) {
            std::optional<Command> c = NextCommand();
            if (!c) {
                exhausted_ = true;
                return;
            }
            if (!Execute(*c, &dialog)) {
                // At the terminal, the session ends with the dialog.
                ended_ = source_.Interactive();
                return;
            }
            if (source_.Interactive()) SayWhatChanged(dialog, *c);
        }
    }

    // The commands left once no dialog is shown any more.
    void AfterDialog() {
        while (!stopped_ && !exhausted_ && !ended_) {
            std::optional<Command> c = NextCommand();
            if (!c) return;
            Execute(*c, nullptr);
        }
    }

    bool Failed() const { return failed_; }

private:
    std::optional<Command> NextCommand() {
        for (;;) {
            try {
                return source_.Next();
            } catch (const ScriptError& e) {
                err_ << e.what() << '\n' << std::flush;
                failed_ = true;
            }
        }
    }

    // Runs one command; false when the dialog is gone after it (closed, or a failure closed it).
    bool Execute(const Command& c, host::LiveDialog* dialog) {
        outcomes_.BeforeCommand();
        const std::string where = source_.Where(c);
        const long rowsBefore = host::CurrentActivity().treeRowsInserted;
        progress_.Start([where, rowsBefore] {
            const long rows = host::CurrentActivity().treeRowsInserted - rowsBefore;
            return where + " runs" + (rows > 0 ? ": " + Thousands(rows) + " tree rows inserted" : std::string());
        });
        try {
            Run(c, dialog);
            progress_.Stop();
            events_.Flush();
            outcomes_.AfterCommand(c, source_.Where(c), dialog);
            return c.kind != CommandKind::Close;
        } catch (const ScriptError& e) {
            progress_.Stop();
            events_.Flush();
            err_ << source_.Where(c) << ": " << e.what() << '\n' << std::flush;
            failed_ = true;
            if (source_.Interactive()) return true;
            // A script stops at its first failing command; its dialog closes as with "close".
            stopped_ = true;
            if (dialog != nullptr) dialog->Close();
            return false;
        }
    }

    std::string RenderedBlocks(host::LiveDialog& dialog) const {
        std::ostringstream text;
        Printer(text, format_).Blocks(dialog.Title(), dialog.Blocks());
        return text.str();
    }

    std::string RenderedTree(host::LiveDialog& dialog) const {
        std::ostringstream text;
        Printer(text, format_).Tree(ReadTree(dialog));
        return text.str();
    }

    // After a command at the terminal: one line for the blocks and one for the tree when they are
    // no longer what was last printed ("show" prints them and says nothing).
    void SayWhatChanged(host::LiveDialog& dialog, const Command& c) {
        if (dialog.Closed()) return;
        const bool shown = c.kind == CommandKind::Show;
        const std::string blocks = RenderedBlocks(dialog);
        if (blocks != drawnBlocks_ && !(shown && c.show == ShowWhat::Blocks))
            out_ << "(the blocks changed: show blocks prints them)\n";
        drawnBlocks_ = blocks;
        const std::string tree = RenderedTree(dialog);
        if (tree != drawnTree_ && !(shown && c.show == ShowWhat::Tree))
            out_ << "(the tree changed: show tree prints it)\n";
        drawnTree_ = tree;
        out_.flush();
    }

    static host::LiveDialog& Shown(host::LiveDialog* dialog) {
        if (dialog == nullptr) throw ScriptError("no dialog is shown");
        return *dialog;
    }

    static NXOpen::BlockStyler::Node* Row(host::LiveDialog& dialog, const RowAddress& row) {
        NXOpen::BlockStyler::Node* node = FindRow(dialog.Tree(), row);
        if (node == nullptr) throw ScriptError(dialog.Tree() ? "the tree has no row " + RowText(row) : "the dialog has no tree");
        return node;
    }

    // Runs a designer's action through the driver. The host refuses what the designer cannot do
    // (an unknown or hidden block, a text a list does not offer, a body the part lacks) before
    // anything runs, and the dialog stays open: that is the script's mistake. An exception from
    // a plug-in handler ends the dialog instead and passes on to the plug-in, as in NX.
    template <class Action>
    static auto Act(host::LiveDialog* dialog, Action action) {
        try {
            return action();
        } catch (const std::exception& e) {
            if (dialog != nullptr && dialog->Closed()) throw;
            throw ScriptError(e.what());
        }
    }

    // What the commands take in this dialog: block ids, tree column numbers, and the menu items as
    // a right click in the tree's empty space shows them (the plug-in's menu handler runs, as for
    // a designer who right-clicks to look; nothing is chosen).
    void DialogHelp(host::LiveDialog& dialog) {
        out_ << "\nBlocks of this dialog (set, press and folder take the id):\n";
        for (const host::BlockView& block : dialog.Blocks()) {
            if (block.blockClass == "Group" || block.blockClass == "ScrolledWindow") continue;  // layout only
            out_ << "  " << Pad(block.id, 26) << Pad(block.blockClass, 18) << host::GbkToUtf8(block.label) << '\n';
        }
        if (dialog.Tree() == nullptr) return;
        out_ << "Tree columns (click and edit take the number):\n";
        for (const host::ColumnView& column : dialog.Columns()) {
            out_ << "  " << Pad(std::to_string(column.id), 4) << host::GbkToUtf8(column.title)
                 << (column.visible ? "" : "  (hidden: not editable)") << '\n';
        }
        const std::vector<host::LiveDialog::MenuItemView> menu = Act(&dialog, [&] { return dialog.RightClick(nullptr, 0); });
        out_ << "Menu items (menu <row> <id> chooses one; menu <row> lists what a row offers):\n";
        if (menu.empty()) out_ << "  (the plug-in shows no menu in the tree's empty space)\n";
        for (const host::LiveDialog::MenuItemView& item : menu) {
            out_ << "  " << Pad(std::to_string(item.id), 4) << host::GbkToUtf8(item.text)
                 << (item.hidden ? "  (hidden here)" : item.disabled ? "  (disabled here)" : "") << '\n';
        }
    }

    void Run(const Command& c, host::LiveDialog* dialog) {
        switch (c.kind) {
        case CommandKind::Set:
            Act(&Shown(dialog), [&] { dialog->SetText(c.blockId, host::Utf8ToGbk(c.text)); });
            return;
        case CommandKind::Press:
            Act(&Shown(dialog), [&] { dialog->Press(c.blockId); });
            return;
        case CommandKind::Folder:
            Act(&Shown(dialog), [&] { dialog->PickFolder("nativeFolderBrowser0", host::Utf8ToGbk(c.text)); });
            return;
        case CommandKind::SelectBodies:
            Act(&Shown(dialog), [&] { dialog->SelectBodies("bodySelect0", c.tags); });
            return;
        case CommandKind::AnswerSelection: {
            const NXOpen::Selection::Response response = c.answer == SelectionAnswer::Ok ? NXOpen::Selection::ResponseOk
                                                         : c.answer == SelectionAnswer::Cancel
                                                             ? NXOpen::Selection::ResponseCancel
                                                             : NXOpen::Selection::ResponseBack;
            Act(nullptr, [&] { host::QueueSelectionAnswer(response, c.tags); });
            return;
        }
        case CommandKind::Click: {
            NXOpen::BlockStyler::Node* node = Row(Shown(dialog), c.row);
            Act(dialog, [&] { dialog->Click(node, c.column); });
            return;
        }
        case CommandKind::Edit: {
            NXOpen::BlockStyler::Node* node = Row(Shown(dialog), c.row);
            if (!Act(dialog, [&] { return dialog->Edit(node, c.column, host::Utf8ToGbk(c.text)); })) {
                printer_.EditRefused(c.row, c.column, c.text);
            }
            return;
        }
        case CommandKind::Menu: {
            NXOpen::BlockStyler::Node* node = Row(Shown(dialog), c.row);
            const std::vector<host::LiveDialog::MenuItemView> menu =
                Act(dialog, [&] { return dialog->RightClick(node, 0); });
            if (!c.menuItem) {
                printer_.Menu("row " + RowText(c.row), RowText(c.row), menu);  // looked at, then dismissed
                return;
            }
            std::string refused = "missing";
            for (const host::LiveDialog::MenuItemView& item : menu) {
                if (item.id == *c.menuItem) refused = item.hidden ? "hidden" : item.disabled ? "disabled" : "";
            }
            if (!refused.empty()) {
                printer_.MenuRefused(c.row, *c.menuItem, refused);
            } else {
                Act(dialog, [&] { dialog->ChooseMenuItem(*c.menuItem); });
            }
            return;
        }
        case CommandKind::Show:
            switch (c.show) {
            case ShowWhat::Tree: printer_.Tree(ReadTree(Shown(dialog))); break;
            case ShowWhat::Selection: printer_.TreeState(ReadTreeState(Shown(dialog))); break;
            case ShowWhat::Blocks: {
                // Shown() first: it refuses the command when no dialog is shown.
                const std::string title = Shown(dialog).Title();
                printer_.Blocks(title, dialog->Blocks());
                break;
            }
            case ShowWhat::Messages: printer_.Messages(host::Messages()); break;
            case ShowWhat::Part:
                if (host::WorkPart() == nullptr) throw ScriptError("no work part is loaded");
                printer_.Part(ReadPart(*host::WorkPart()));
                break;
            }
            return;
        case CommandKind::Close:
            Shown(dialog).Close();
            return;
        case CommandKind::Help:
            out_ << CommandHelp();
            if (dialog != nullptr && !dialog->Closed()) DialogHelp(*dialog);
            out_.flush();
            return;
        }
    }

    CommandSource& source_;
    Printer& printer_;
    const Format format_;
    EventLog& events_;
    Outcomes& outcomes_;
    Progress& progress_;
    std::ostream& out_;
    std::ostream& err_;
    bool failed_ = false;     // a command failed: the run fails
    bool stopped_ = false;    // a script command failed: nothing more runs
    bool exhausted_ = false;  // the input ended while the dialog was shown
    bool ended_ = false;      // the dialog closed at the terminal: the session is over
    std::string drawnBlocks_;  // the blocks and the tree as the terminal last showed them
    std::string drawnTree_;
};

bool IsFolder(const std::string& path) {
    std::error_code ec;
    return !path.empty() && fs::is_directory(fs::u8path(path), ec);
}

std::string Absolute(const std::string& path) {
    std::error_code ec;
    const fs::path absolute = fs::absolute(fs::u8path(path), ec);
    return ec ? path : absolute.lexically_normal().u8string();
}

// VORNADEL_DRIVES: the bundled drive D, then the process's own table, then --drive. A later
// entry for a letter replaces an earlier one wherever the table is read, so the entries are
// simply put one after the other.
std::string DriveTable(const Options& options, const Installation& installation) {
    std::string table = "D=" + installation.sourceRoot + "/samples/drive-d";
    if (const char* own = getenv("VORNADEL_DRIVES")) table += std::string(";") + own;
    for (const auto& [letter, folder] : options.drives) table += ";" + std::string(1, letter) + "=" + Absolute(folder);
    return table;
}

// LOCALAPPDATA: --localappdata, else the process's own, else a per-user folder made on demand.
std::string LocalAppData(const Options& options) {
    if (options.localAppData) return *options.localAppData;
    if (const char* own = getenv("LOCALAPPDATA")) return own;
    const char* home = getenv("HOME");
    const std::string folder = std::string(home ? home : ".") + "/.local/share/vornadel";
    std::error_code ec;
    fs::create_directories(fs::u8path(folder), ec);
    return folder;
}

// The runner's own per-user folder: LOCALAPPDATA\vornadel on Windows (and wherever the process
// has LOCALAPPDATA), else ~/.local/share/vornadel.
fs::path RunnerUserFolder() {
    if (const char* local = getenv("LOCALAPPDATA")) return fs::u8path(local) / "vornadel";
    const char* home = getenv("HOME");
    return fs::u8path(home ? home : ".") / ".local" / "share" / "vornadel";
}

// Without --config the plug-in works on a per-user copy of the bundled configuration root, made
// the first time (and said then), so that typing a new head value grows the copy's option lists
// and never the checkout's tables. Several runs at once: each copies into a folder of its own and
// the first to rename it into place wins. Throws std::runtime_error when it cannot be made.
std::string BundledConfigurationCopy(const std::string& bundledRoot, std::ostream& err) {
    const fs::path copy = RunnerUserFolder() / "VDConfig";
    std::error_code ec;
    if (fs::is_directory(copy, ec)) return copy.u8string();
    const fs::path staging = copy.parent_path() / ("VDConfig.new-" + std::to_string(std::random_device{}()));
    fs::remove_all(staging, ec);
    fs::create_directories(staging, ec);
    if (!ec) fs::copy(fs::u8path(bundledRoot) / "config", staging / "config", fs::copy_options::recursive, ec);
    if (ec) {
        fs::remove_all(staging, ec);
        throw std::runtime_error("cannot make the per-user copy of the bundled configuration in " + copy.u8string() +
                                 "; name a configuration root with --config");
    }
    fs::rename(staging, copy, ec);
    if (ec) {
        fs::remove_all(staging, ec);  // another run made it first
    } else {
        err << "vornadel-host: without --config the plug-in works on a copy of the bundled configuration, made now: "
            << copy.u8string() << " (delete it to start again from the bundled one)\n";
    }
    return copy.u8string();
}

// How long work runs before its progress line shows: VORNADEL_PROGRESS_AFTER_MS, else a second.
std::chrono::milliseconds ProgressDelay() {
    const char* after = getenv("VORNADEL_PROGRESS_AFTER_MS");
    return std::chrono::milliseconds(after != nullptr ? std::atol(after) : 1000);
}

// Columns of × Φ ° ① in text tables: --ambiguous-width, else VORNADEL_AMBIGUOUS_WIDTH (1 or 2), else 1.
int AmbiguousWidth(const Options& options) {
    if (options.ambiguousWidth) return *options.ambiguousWidth;
    const char* variable = getenv("VORNADEL_AMBIGUOUS_WIDTH");
    return variable != nullptr && std::string(variable) == "2" ? 2 : 1;
}

// Vornadel's export button: the runner checks what each press of it left behind.
const char kExportButton[] = "button01";

// The plug-in is Vornadel (the default one, or a library of that name) rather than another
// user function, whose buttons mean something else.
bool RunsVornadel(const Options& options) {
    if (!options.plugin) return true;
    std::string stem = fs::u8path(*options.plugin).stem().u8string();
    for (char& c : stem) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return stem == "vornadel" || stem == "libvornadel";
}

std::string ReadAll(std::istream& in) {
    std::ostringstream content;
    content << in.rdbuf();
    return content.str();
}

// With --save or --save-as, says on standard error that the part was not saved, and why.
void SayNothingSaved(const Options& options, std::ostream& err, const std::string& why) {
    if (!options.save && !options.saveAs) return;
    err << "vornadel-host: nothing was saved";
    if (options.saveAs) err << " to " << *options.saveAs;
    err << ": " << why << '\n';
}

// Where the commands come from. Throws ScriptError naming the place of the first bad line.
std::unique_ptr<CommandSource> MakeSource(const Options& options, std::istream& in, bool interactive,
                                          std::ostream& out) {
    if (!options.commands.empty()) {
        std::vector<Command> commands;
        for (size_t i = 0; i < options.commands.size(); ++i) {
            const int number = static_cast<int>(i + 1);
            try {
                if (std::optional<Command> c = ParseLine(options.commands[i], number)) commands.push_back(*c);
            } catch (const ScriptError& e) {
                throw ScriptError(Place("-e", number) + ": " + e.what());
            }
        }
        return std::make_unique<ListSource>(commands, "-e");
    }
    // Lines are edited when they come from the process's own terminal (the runner's tests pass
    // a stream of their own).
    if (!options.scriptFile && interactive) return std::make_unique<TerminalSource>(in, out, &in == &std::cin);
    // A script file, "-", or standard input that is not a terminal.
    std::string name = kStandardInput;
    std::string text;
    if (options.scriptFile && *options.scriptFile != "-") {
        name = *options.scriptFile;
        std::ifstream file(fs::u8path(name), std::ios::binary);
        if (!file) throw ScriptError("vornadel-host: cannot read the script " + name);
        text = ReadAll(file);
    } else {
        text = ReadAll(in);
    }
    return std::make_unique<ListSource>(ParseScript(text, name), name);
}

}  // namespace

Installation FindInstallation() {
    Installation installation;
    const std::string exePath = ExecutablePath();
    const fs::path exe = fs::u8path(exePath);
    installation.runnerFolder = exePath.empty() ? std::string(".") : exe.parent_path().u8string();
    const std::string compiled = VORNADEL_SOURCE_DIR;
    const std::string beside = exePath.empty() ? std::string() : exe.parent_path().parent_path().parent_path().u8string();
    if (IsFolder(compiled + "/samples")) {
        installation.sourceRoot = compiled;
    } else if (IsFolder(beside + "/samples")) {
        installation.sourceRoot = beside;
    } else {
        std::error_code ec;
        installation.sourceRoot = fs::current_path(ec).u8string();
    }
    return installation;
}

int Run(const Options& options, const Installation& installation, std::istream& in, bool interactive,
        std::ostream& rawOut, std::ostream& rawErr) {
    // Long work shows a progress line at a terminal, wiped before anything is printed.
    Progress progress(rawErr, &rawErr == &std::cerr && StandardErrorIsTerminal(), ProgressDelay());
    // Everything printed is UTF-8: a byte of a file name, a script or a message that is not is
    // shown escaped.
    Utf8Filter outFilter(rawOut);
    Utf8Filter errFilter(rawErr);
    outFilter.BeforeWriting([&progress] { progress.Stop(); });
    errFilter.BeforeWriting([&progress] { progress.Stop(); });
    std::ostream out(&outFilter);
    std::ostream err(&errFilter);

    // The commands first: a script that does not parse runs nothing.
    std::unique_ptr<CommandSource> source;
    try {
        source = MakeSource(options, in, interactive, out);
    } catch (const ScriptError& e) {
        err << e.what() << '\n';
        SayNothingSaved(options, err, "the script does not parse, so nothing ran");
        return kExitUsage;
    }

    const std::string sample = installation.sourceRoot + "/samples/parts/A100.part.json";
    const std::string partFile = options.part ? *options.part : sample;
    std::error_code ec;
    if (options.save && fs::equivalent(fs::u8path(partFile), fs::u8path(sample), ec)) {
        err << "vornadel-host: --save would overwrite the bundled sample part; use --save-as OUT.part.json\n";
        return kExitUsage;
    }

    host::ResetSession();
    const std::string partName = fs::u8path(partFile).filename().u8string();
    progress.Start([partName] {
        const host::Activity& activity = host::CurrentActivity();
        if (activity.bodiesInFile == 0) return "reading " + partName;
        return "reading " + partName + ": " + Thousands(activity.bodiesLoaded) + " of " +
               Thousands(activity.bodiesInFile) + " bodies";
    });
    try {
        host::LoadWorkPart(partFile);
        progress.Stop();
    } catch (const host::PartFileError& e) {
        err << "vornadel-host: " << e.what() << '\n';
        return kExitFailed;
    }

    // The machine the plug-in runs on: NX's environment, the process environment, the clock.
    std::string configRoot;
    try {
        configRoot = options.configRoot ? *options.configRoot : BundledConfigurationCopy(installation.sourceRoot + "/samples", err);
    } catch (const std::runtime_error& e) {
        err << "vornadel-host: " << e.what() << '\n';
        return kExitFailed;
    }
    host::SetEnvironmentVariable("VDConfig", host::Utf8ToGbk(configRoot));
    if (kMapsDrives) SetProcessVariable("VORNADEL_DRIVES", DriveTable(options, installation));
    // The plug-in reports a missing configuration in its own words, which do not say which
    // folder it looked in: the runner says so first.
    const std::string configFolder = kMapsDrives ? host::LocalPath(host::Utf8ToGbk(configRoot)) : configRoot;
    if (!IsFolder(configFolder)) {
        err << "vornadel-host: the configuration root (VDConfig) " << configRoot;
        if (configFolder != configRoot) err << " (" << configFolder << ")";
        err << " is not an existing folder\n";
    } else if (RunsVornadel(options) && !fs::exists(fs::u8path(configFolder) / "config" / "standard.csv", ec)) {
        // Without its selector table Vornadel takes ROOT\config itself as the active folder and
        // names only the tables it then misses there.
        err << "vornadel-host: the configuration root (VDConfig) " << configRoot << " has no config\\standard.csv"
            << " (the table that chooses the active configuration folder): the plug-in looks for its tables in "
            << configRoot << "\\config itself\n";
    }
    SetProcessVariable("LOCALAPPDATA", LocalAppData(options));
    if (options.desktop) SetProcessVariable("VORNADEL_DESKTOP", *options.desktop);
    if (options.time) host::PinClock(*options.time);
    host::SetReallyOpenFiles(options.reallyOpen);
    // NX finds Vornadel.dlx in its application folder; the host finds it in the checkout.
    host::SetDialogSearchPath({installation.sourceRoot + "/dialog"});

    Printer printer(out, options.format, AmbiguousWidth(options));
    EventLog events(printer, options.reallyOpen);
    Outcomes outcomes(RunsVornadel(options) ? kExportButton : "",
                      kMapsDrives ? std::optional<std::string>(DriveTable(options, installation)) : std::nullopt);
    Executor executor(*source, printer, options.format, events, outcomes, progress, out, err);
    host::SetMessageListener([&](const host::MessageRecord& m) {
        events.Flush();
        printer.Message(m);
        outcomes.Message(m);
    });
    host::SetDialogScript([&](host::LiveDialog& dialog) {
        progress.Stop();
        executor.InDialog(dialog);
    });

    int status = kExitOk;
    {
        std::unique_ptr<Plugin> plugin;
        try {
            plugin = std::make_unique<Plugin>(options.plugin ? *options.plugin
                                                             : installation.runnerFolder + "/" + kDefaultPlugin);
        } catch (const PluginError& e) {
            err << "vornadel-host: " << e.what() << '\n';
            status = kExitFailed;
        }
        if (plugin) {
            bool escaped = false;
            const long bodies = host::CurrentActivity().bodiesLoaded;
            progress.Start([bodies] {
                return "the plug-in builds its dialog for " + Thousands(bodies) + " bodies: " +
                       Thousands(host::CurrentActivity().treeRowsInserted) + " tree rows so far";
            });
            try {
                plugin->RunUfusr();
            } catch (const std::exception& e) {
                err << "vornadel-host: an exception escaped ufusr: " << host::GbkToUtf8(e.what()) << '\n';
                escaped = true;
            } catch (const char* text) {
                // What a workbook save that fails throws out of the export (NX shows no box).
                err << "vornadel-host: a plain string (const char*) thrown by the plug-in escaped ufusr: "
                    << (text != nullptr ? host::GbkToUtf8(text) : std::string("(null)")) << '\n';
                escaped = true;
            } catch (...) {
                err << "vornadel-host: an exception that is not a std::exception escaped ufusr\n";
                escaped = true;
            }
            progress.Stop();
            events.Flush();
            plugin->UnloadIfAsked();
            if (escaped) {
                status = kExitFailed;
            } else {
                executor.AfterDialog();
                if (executor.Failed()) status = kExitFailed;
            }
        }
        for (const std::string& call : host::UninitializedCalls()) {
            err << "vornadel-host: the plug-in called " << call
                << " before UF_initialize: NX refuses it (UF_err_program_not_initialized)\n";
        }
        if (outcomes.Report(err) && status == kExitOk) status = kExitLost;
        if (status == kExitFailed) SayNothingSaved(options, err, "the run failed (above)");
        if (status != kExitFailed && (options.save || options.saveAs)) {
            try {
                host::SaveWorkPart(options.saveAs ? *options.saveAs : partFile);
            } catch (const host::PartFileError& e) {
                err << "vornadel-host: " << e.what() << '\n';
                status = kExitFailed;
            }
        }
        // The plug-in, if still loaded, goes now, as at the end of the NX session.
    }
    events.Flush();
    if (options.nxCalls) printer.NxCalls(host::NxCallCounts());
    host::SetDialogScript(nullptr);
    host::SetMessageListener(nullptr);
    return status;
}

}  // namespace runner
