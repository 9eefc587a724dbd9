// vornadel-host: runs the plug-in on a part file inside the host, driven by a script or from the
// terminal (docs/runner.md).
#include <iostream>

#include "Options.hpp"
#include "Output.hpp"
#include "Platform.hpp"
#include "Runner.hpp"

int main(int argc, char** argv) {
    runner::UseBinaryStandardStreams();
    runner::Options options;
    try {
        options = runner::ParseArguments(runner::Arguments(argc, argv));
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
    return runner::Run(options, runner::FindInstallation(), std::cin, runner::StandardInputIsTerminal(), std::cout, std::cerr);
}
