// Reading a line typed at the terminal: with line editing and a history of the session's lines
// (arrow keys, Ctrl-A/E, Ctrl-R) through libedit where the build has it (POSIX), else a plain
// line of standard input after the prompt.
#pragma once

#include <optional>
#include <string>

namespace runner {

// True when this build edits lines (libedit).
extern const bool kEditsLines;

// Shows the prompt on standard output and reads one line from the terminal on standard input,
// without its line end; nothing at the end of the input (Ctrl-D). A line that is not blank goes
// into the history. Only for a process whose standard input is the terminal.
std::optional<std::string> ReadEditedLine(const std::string& prompt);

}  // namespace runner
