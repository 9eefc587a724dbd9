#include "Script.hpp"

#include <cerrno>
#include <climits>
#include <cstdint>
#include <cstdlib>

namespace runner {

namespace {

bool IsBlank(char c) {
    return c == ' ' || c == '\t';
}

// Splits a line into words and keeps, for each word, where the text after it starts: a text
// argument runs from just after the one blank that ends the previous word to the end of the line.
class Words {
public:
    explicit Words(const std::string& line) : line_(line) {
        size_t i = 0;
        while (i < line.size()) {
            while (i < line.size() && IsBlank(line[i])) ++i;
            if (i == line.size()) break;
            const size_t start = i;
            while (i < line.size() && !IsBlank(line[i])) ++i;
            words_.push_back(line.substr(start, i - start));
            rest_.push_back(i < line.size() ? i + 1 : i);
        }
    }
    size_t Count() const { return words_.size(); }
    const std::string& operator[](size_t i) const { return words_[i]; }
    // The text after word i, as written.
    std::string RestAfter(size_t i) const { return line_.substr(rest_[i]); }

private:
    const std::string& line_;
    std::vector<std::string> words_;
    std::vector<size_t> rest_;
};

// long long: a tag runs up to UINT_MAX, which a long of Windows does not hold.
std::optional<long long> ParseInteger(const std::string& text, long long min, long long max) {
    if (text.empty()) return std::nullopt;
    errno = 0;
    char* end = nullptr;
    const long long value = std::strtoll(text.c_str(), &end, 10);
    if (errno != 0 || *end != '\0' || value < min || value > max || text[0] == '+' || IsBlank(text[0])) {
        return std::nullopt;
    }
    return value;
}

RowAddress Row(const std::string& text) {
    const std::optional<RowAddress> row = ParseRow(text);
    if (!row) throw ScriptError("\"" + text + "\" is not a row (N or N.M, counted from 1)");
    return *row;
}

int Column(const std::string& text) {
    const std::optional<long long> column = ParseInteger(text, 0, INT_MAX);
    if (!column) throw ScriptError("\"" + text + "\" is not a column number (0 or more)");
    return static_cast<int>(*column);
}

std::vector<unsigned int> Tags(const Words& words, size_t first) {
    std::vector<unsigned int> tags;
    for (size_t i = first; i < words.Count(); ++i) {
        const std::optional<long long> tag = ParseInteger(words[i], 1, UINT_MAX);
        if (!tag) throw ScriptError("\"" + words[i] + "\" is not a body tag");
        tags.push_back(static_cast<unsigned int>(*tag));
    }
    return tags;
}

void ExpectWords(const Words& words, size_t min, size_t max, const char* usage) {
    if (words.Count() < min || words.Count() > max) throw ScriptError(std::string("usage: ") + usage);
}

}  // namespace

std::optional<RowAddress> ParseRow(const std::string& text) {
    const size_t dot = text.find('.');
    RowAddress row;
    const std::optional<long long> top = ParseInteger(text.substr(0, dot), 1, INT_MAX);
    if (!top) return std::nullopt;
    row.top = static_cast<int>(*top);
    if (dot != std::string::npos) {
        const std::optional<long long> child = ParseInteger(text.substr(dot + 1), 1, INT_MAX);
        if (!child) return std::nullopt;
        row.child = static_cast<int>(*child);
    }
    return row;
}

std::string RowText(const RowAddress& row) {
    return std::to_string(row.top) + (row.child > 0 ? "." + std::to_string(row.child) : "");
}

std::optional<Command> ParseLine(const std::string& rawLine, int lineNumber) {
    std::string line = rawLine;
    if (!line.empty() && line[line.size() - 1] == '\r') line.erase(line.size() - 1);
    const Words words(line);
    if (words.Count() == 0 || words[0][0] == '#') return std::nullopt;

    Command c;
    c.line = lineNumber;
    c.source = line;
    const std::string& name = words[0];
    if (name == "set") {
        ExpectWords(words, 2, SIZE_MAX, "set <blockId> <text>");
        c.kind = CommandKind::Set;
        c.blockId = words[1];
        c.text = words.RestAfter(1);
    } else if (name == "press") {
        ExpectWords(words, 2, 2, "press <blockId>");
        c.kind = CommandKind::Press;
        c.blockId = words[1];
    } else if (name == "folder") {
        ExpectWords(words, 2, SIZE_MAX, "folder <path>");
        c.kind = CommandKind::Folder;
        c.text = words.RestAfter(0);
    } else if (name == "select-bodies") {
        c.kind = CommandKind::SelectBodies;
        c.tags = Tags(words, 1);
    } else if (name == "answer-selection") {
        ExpectWords(words, 2, SIZE_MAX, "answer-selection ok <tag>... | cancel | back");
        c.kind = CommandKind::AnswerSelection;
        if (words[1] == "ok") {
            c.answer = SelectionAnswer::Ok;
            c.tags = Tags(words, 2);
        } else if (words[1] == "cancel" || words[1] == "back") {
            ExpectWords(words, 2, 2, "answer-selection cancel | back (no tags)");
            c.answer = words[1] == "cancel" ? SelectionAnswer::Cancel : SelectionAnswer::Back;
        } else {
            throw ScriptError("usage: answer-selection ok <tag>... | cancel | back");
        }
    } else if (name == "click") {
        ExpectWords(words, 2, 3, "click <row> [<column>]");
        c.kind = CommandKind::Click;
        c.row = Row(words[1]);
        c.column = words.Count() == 3 ? Column(words[2]) : 0;
    } else if (name == "edit") {
        ExpectWords(words, 3, SIZE_MAX, "edit <row> <column> <text>");
        c.kind = CommandKind::Edit;
        c.row = Row(words[1]);
        c.column = Column(words[2]);
        c.text = words.RestAfter(2);
    } else if (name == "menu") {
        ExpectWords(words, 2, 3, "menu <row> [<itemId>]");
        c.kind = CommandKind::Menu;
        c.row = Row(words[1]);
        if (words.Count() == 3) {
            const std::optional<long long> item = ParseInteger(words[2], INT_MIN, INT_MAX);
            if (!item) throw ScriptError("\"" + words[2] + "\" is not a menu item id");
            c.menuItem = static_cast<int>(*item);
        }
    } else if (name == "show") {
        ExpectWords(words, 2, 2, "show tree | blocks | messages | part | selection");
        c.kind = CommandKind::Show;
        if (words[1] == "tree") {
            c.show = ShowWhat::Tree;
        } else if (words[1] == "blocks") {
            c.show = ShowWhat::Blocks;
        } else if (words[1] == "messages") {
            c.show = ShowWhat::Messages;
        } else if (words[1] == "part") {
            c.show = ShowWhat::Part;
        } else if (words[1] == "selection") {
            c.show = ShowWhat::Selection;
        } else {
            throw ScriptError("usage: show tree | blocks | messages | part | selection");
        }
    } else if (name == "close") {
        ExpectWords(words, 1, 1, "close");
        c.kind = CommandKind::Close;
    } else if (name == "help" || name == "?") {
        ExpectWords(words, 1, 1, "help");
        c.kind = CommandKind::Help;
    } else {
        throw ScriptError("unknown command \"" + name + "\" (help lists the commands)");
    }
    return c;
}

std::vector<Command> ParseScript(const std::string& text, const std::string& source) {
    std::vector<Command> commands;
    // Notepad saves UTF-8 with a byte-order mark; it is no part of the first command.
    static const char kUtf8Mark[] = "\xEF\xBB\xBF";
    size_t start = text.rfind(kUtf8Mark, 0) == 0 ? sizeof kUtf8Mark - 1 : 0;
    int lineNumber = 0;
    while (start < text.size()) {
        size_t end = text.find('\n', start);
        if (end == std::string::npos) end = text.size();
        ++lineNumber;
        try {
            std::optional<Command> c = ParseLine(text.substr(start, end - start), lineNumber);
            if (c) commands.push_back(*c);
        } catch (const ScriptError& e) {
            throw ScriptError(Place(source, lineNumber) + ": " + e.what());
        }
        start = end + 1;
    }
    return commands;
}

std::string Place(const std::string& source, int line) {
    return source + ":" + std::to_string(line);
}

const char* CommandHelp() {
    return "  set <blockId> <text>        type the text into a string block\n"
           "  press <blockId>             press a button\n"
           "  folder <path>               pick a folder in the folder block\n"
           "  select-bodies <tag>...      select these bodies (none: clear the selection)\n"
           "  answer-selection ok <tag>... | cancel | back   answer the next selection dialog\n"
           "  click <row> [<column>]      click a tree cell (row N or N.M, column 0 by default)\n"
           "  edit <row> <column> <text>  edit a tree cell and enter the text\n"
           "  menu <row> [<itemId>]       right-click the row and choose the menu item (none: list the menu)\n"
           "  show tree|blocks|messages|part|selection   print the tree, the blocks, the message boxes,\n"
           "                              the work part, the tree's selected and expanded rows\n"
           "  close                       close the dialog (at the terminal: and end the session)\n"
           "  help, ?                     list the commands (and, with a dialog shown, its blocks, tree\n"
           "                              columns and menu items)\n";
}

}  // namespace runner
