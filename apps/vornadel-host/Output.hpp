// The runner's output: UTF-8, either a readable rendering for people (text) or one record per
// line for programs and transcripts (tsv). The tsv lines are defined in docs/runner.md.
#pragma once

#include <functional>
#include <ostream>
#include <streambuf>
#include <string>
#include <vector>

#include "Driver.hpp"
#include "Options.hpp"
#include "Script.hpp"
#include "Views.hpp"

namespace runner {

// A text in a tsv field: TAB and newline written as \t and \n, nothing else escaped.
std::string TsvField(const std::string& utf8);

// The width of UTF-8 text on a terminal: East Asian wide characters (Chinese) take two columns.
// The East Asian ambiguous ones that GBK holds in two bytes (× U+00D7, Φ U+03A6, ° U+00B0, ①,
// Greek and Cyrillic letters) take ambiguousWidth: 1 as UTF-8 terminals show them by default
// (Windows Terminal, GNOME's, xterm, glibc's wcwidth), 2 on one set to wide ambiguous characters
// and on a GBK console. Any other character takes one.
int DisplayWidth(const std::string& utf8, int ambiguousWidth = 1);
// The text followed by blanks up to width columns (DisplayWidth); a wider text as it is.
std::string Pad(const std::string& utf8, int width, int ambiguousWidth = 1);

// A stream buffer in front of another stream's that keeps what reaches it UTF-8: a byte that
// does not belong to a well-formed UTF-8 sequence is written as \xHH instead. It passes text on
// at each line end and flush, so a character is never cut in two by the buffer itself.
class Utf8Filter : public std::streambuf {
public:
    explicit Utf8Filter(std::ostream& target) : target_(target) {}
    ~Utf8Filter() override { sync(); }
    // Called before any text is passed on (the runner wipes its progress line there).
    void BeforeWriting(std::function<void()> hook) { beforeWriting_ = std::move(hook); }

protected:
    int_type overflow(int_type c) override;
    std::streamsize xsputn(const char* text, std::streamsize count) override;
    int sync() override;

private:
    std::ostream& target_;
    std::string pending_;
    std::function<void()> beforeWriting_;
};

// "error", "warning", "information" or "question".
const char* MessageTypeName(NXOpen::NXMessageBox::DialogType type);

// Prints what the runner shows. Every text given in GBK is converted to UTF-8 here.
class Printer {
public:
    // ambiguousWidth: as DisplayWidth takes it, for the text tables.
    Printer(std::ostream& out, Format format, int ambiguousWidth = 1)
        : out_(out), format_(format), ambiguousWidth_(ambiguousWidth) {}

    void Blocks(const std::string& title, const std::vector<host::BlockView>& blocks);
    void Tree(const TreeView& tree);
    void Message(const host::MessageRecord& message);
    void Messages(const std::vector<host::MessageRecord>& messages);
    void Part(const PartView& part);
    void TreeState(const TreeStateView& state);
    // A selection dialog the plug-in showed.
    void Selection(const host::SelectionRequest& request);
    // A file the plug-in asked to open with its program (path in GBK); really opened only with
    // --open, otherwise only recorded.
    void Opened(const std::string& path, bool reallyOpened);
    // An edit whose text the cell did not take (text as written in the script, UTF-8).
    void EditRefused(const RowAddress& row, int column, const std::string& utf8Text);
    // How often the plug-in called each NX entry point, by name.
    void NxCalls(const std::map<std::string, long>& counts);
    // The menu a right click showed (where: "row 1.2"; row as the tsv line names it).
    void Menu(const std::string& where, const std::string& row, const std::vector<host::LiveDialog::MenuItemView>& items);
    // A menu item that could not be chosen: "missing", "disabled" or "hidden".
    void MenuRefused(const RowAddress& row, int itemId, const std::string& why);

private:
    std::ostream& out_;
    Format format_;
    int ambiguousWidth_;
};

}  // namespace runner
