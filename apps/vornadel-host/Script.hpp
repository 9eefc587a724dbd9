// The runner's commands: what the designer does in the dialog, one command per line
// (docs/runner.md). Scripts are UTF-8 text; '#' starts a comment line.
#pragma once

#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

namespace runner {

// A script that cannot be read or run; what() says why, without the line number.
class ScriptError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

// A tree row: the N-th top-level node (from 1), or the M-th child of it when child > 0.
struct RowAddress {
    int top = 0;
    int child = 0;
};

enum class CommandKind {
    Set,              // set <blockId> <text>
    Press,            // press <blockId>
    Folder,           // folder <path>
    SelectBodies,     // select-bodies <tag>...
    AnswerSelection,  // answer-selection ok <tag>... | cancel | back
    Click,            // click <row> [<column>]
    Edit,             // edit <row> <column> <text>
    Menu,             // menu <row> [<itemId>]
    Show,             // show tree | blocks | messages | part | selection
    Close,            // close
    Help,             // help | ?
};

enum class ShowWhat { Tree, Blocks, Messages, Part, Selection };
enum class SelectionAnswer { Ok, Cancel, Back };

struct Command {
    CommandKind kind = CommandKind::Close;
    int line = 0;           // line number in its script, from 1
    std::string source;     // the line as written
    std::string blockId;    // set, press
    std::string text;       // set, edit: the text; folder: the path (UTF-8, as written)
    std::vector<unsigned int> tags;  // select-bodies, answer-selection ok
    SelectionAnswer answer = SelectionAnswer::Ok;
    RowAddress row;         // click, edit, menu
    int column = 0;         // click (default 0), edit
    std::optional<int> menuItem;  // menu: the item to choose; none lists the menu
    ShowWhat show = ShowWhat::Tree;
};

// One line: a command, or nothing for a blank or comment line. Throws ScriptError.
std::optional<Command> ParseLine(const std::string& line, int lineNumber);

// A whole script: every command in order. A carriage return before a line end is dropped.
// Throws ScriptError naming the first bad line by its place ("script.txt:3: ...").
std::vector<Command> ParseScript(const std::string& text, const std::string& source);

// Where a command is, for every message about it: "script.txt:3", "-e:2", "stdin:4".
std::string Place(const std::string& source, int line);

// The commands, one line each ("help" prints it; so does -h after the options).
const char* CommandHelp();

// "3" or "3.2"; nothing when text is not a row.
std::optional<RowAddress> ParseRow(const std::string& text);
std::string RowText(const RowAddress& row);

}  // namespace runner
