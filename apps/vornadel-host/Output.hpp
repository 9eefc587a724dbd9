// The runner's output: UTF-8, either a readable rendering for people (text) or one record per
// line for programs and transcripts (tsv). The tsv lines are defined in docs/runner.md.
#pragma once

#include <ostream>
#include <string>
#include <vector>

#include "Driver.hpp"
#include "Options.hpp"
#include "Script.hpp"
#include "Views.hpp"

namespace runner {

// A text in a tsv field: TAB and newline written as \t and \n, nothing else escaped.
std::string TsvField(const std::string& utf8);

// The width of UTF-8 text on a terminal: East Asian wide characters take two columns.
int DisplayWidth(const std::string& utf8);

// "error", "warning", "information" or "question".
const char* MessageTypeName(NXOpen::NXMessageBox::DialogType type);

// Prints what the runner shows. Every text given in GBK is converted to UTF-8 here.
class Printer {
public:
    Printer(std::ostream& out, Format format) : out_(out), format_(format) {}

    void Blocks(const std::string& title, const std::vector<host::BlockView>& blocks);
    void Tree(const TreeView& tree);
    void Message(const host::MessageRecord& message);
    void Messages(const std::vector<host::MessageRecord>& messages);
    void Part(const PartView& part);
    void TreeState(const TreeStateView& state);
    // A selection dialog the plug-in showed.
    void Selection(const host::SelectionRequest& request);
    // A file the plug-in asked to open with its program (path in GBK).
    void Opened(const std::string& path);
    // An edit whose text the cell did not take (text as written in the script, UTF-8).
    void EditRefused(const RowAddress& row, int column, const std::string& utf8Text);
    // A menu item that could not be chosen: "missing", "disabled" or "hidden".
    void MenuRefused(const RowAddress& row, int itemId, const std::string& why);

private:
    std::ostream& out_;
    Format format_;
};

}  // namespace runner
