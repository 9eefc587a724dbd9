#include "LineEditor.hpp"

#include <cstdio>
#include <cstdlib>
#include <iostream>

#ifdef VORNADEL_HAVE_LIBEDIT
#include <editline/readline.h>
#endif

namespace runner {

#ifdef VORNADEL_HAVE_LIBEDIT

const bool kEditsLines = true;

std::optional<std::string> ReadEditedLine(const std::string& prompt) {
    std::cout.flush();  // what the runner printed comes before the prompt
    char* typed = readline(prompt.c_str());
    if (typed == nullptr) return std::nullopt;
    std::string line = typed;
    std::free(typed);
    if (line.find_first_not_of(" \t") != std::string::npos) add_history(line.c_str());
    return line;
}

#else

const bool kEditsLines = false;

std::optional<std::string> ReadEditedLine(const std::string& prompt) {
    std::cout << prompt << std::flush;
    std::string line;
    if (!std::getline(std::cin, line)) return std::nullopt;
    return line;
}

#endif

}  // namespace runner
