// vornadel-host: runs the plug-in on a part file inside the host, driven by a script or from the
// terminal (docs/runner.md).
#include <unistd.h>

#include <iostream>

#include "Options.hpp"
#include "Output.hpp"
#include "Runner.hpp"

int main(int argc, char** argv) {
    runner::Options options;
    try {
        options = runner::ParseArguments(std::vector<std::string>(argv + 1, argv + argc));
    } catch (const runner::UsageError& e) {
        // The message may quote an argument that is not UTF-8.
        runner::Utf8Filter filter(std::cerr);
        std::ostream(&filter) << "vornadel-host: " << e.what() << '\n' << runner::UsageText();
        return runner::kExitUsage;
    }
    if (options.help) {
        std::cout << runner::UsageText();
        return runner::kExitOk;
    }
    return runner::Run(options, runner::FindInstallation(), std::cin, isatty(STDIN_FILENO) != 0, std::cout, std::cerr);
}
