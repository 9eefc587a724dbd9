// moldgen --bodies N [--seed S] [--leaf NAME] [--out FILE]
// Writes a generated mould of N standard-part bodies as a part file (UTF-8 JSON) to FILE or to
// standard output. The same arguments always give the same bytes.
#include <cerrno>
#include <cstring>
#include <fstream>
#include <iostream>
#include <stdexcept>
#include <string>

#include "Mould.hpp"

namespace {

const char kUsage[] =
    "usage: moldgen --bodies N [--seed S] [--leaf NAME] [--out FILE]\n"
    "  --bodies N   standard-part bodies (marked \"Y\"), 1..1000000\n"
    "  --seed S     seed of the mould, 0..18446744073709551615 (default 1)\n"
    "  --leaf NAME  leaf name of the part (default MOULD-<N>-<S>)\n"
    "  --out FILE   where to write the part file (default: standard output)\n";

struct UsageError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

unsigned long long Unsigned(const std::string& option, const std::string& text) {
    if (text.empty() || text.find_first_not_of("0123456789") != std::string::npos)
        throw UsageError(option + " wants a decimal number, not \"" + text + "\"");
    errno = 0;
    const unsigned long long value = std::strtoull(text.c_str(), nullptr, 10);
    if (errno == ERANGE) throw UsageError(option + " " + text + " is too large");
    return value;
}

}  // namespace

int main(int argc, char** argv) {
    moldgen::Options options;
    std::string out;
    bool haveBodies = false;
    try {
        for (int i = 1; i < argc; ++i) {
            const std::string option = argv[i];
            if (option == "--help" || option == "-h") {
                std::cout << kUsage;
                return 0;
            }
            if (option != "--bodies" && option != "--seed" && option != "--leaf" && option != "--out")
                throw UsageError("unknown option " + option);
            if (i + 1 >= argc) throw UsageError(option + " wants a value");
            const std::string value = argv[++i];
            if (option == "--bodies") {
                const unsigned long long bodies = Unsigned(option, value);
                if (bodies < 1 || bodies > static_cast<unsigned long long>(moldgen::kMaxBodies))
                    throw UsageError("--bodies must be 1.." + std::to_string(moldgen::kMaxBodies));
                options.bodies = static_cast<int>(bodies);
                haveBodies = true;
            } else if (option == "--seed") {
                options.seed = Unsigned(option, value);
            } else if (option == "--leaf") {
                if (value.empty()) throw UsageError("--leaf wants a name");
                options.leaf = value;
            } else {
                out = value;
            }
        }
        if (!haveBodies) throw UsageError("--bodies is required");
    } catch (const UsageError& e) {
        std::cerr << "moldgen: " << e.what() << "\n" << kUsage;
        return 2;
    }

    const std::string text = moldgen::PartFileText(moldgen::Generate(options));
    if (out.empty()) {
        std::cout << text;
        std::cout.flush();
        return std::cout ? 0 : 1;
    }
    std::ofstream file(out, std::ios::binary | std::ios::trunc);
    file << text;
    file.close();
    if (!file) {
        std::cerr << "moldgen: cannot write " << out << ": " << std::strerror(errno) << "\n";
        return 1;
    }
    return 0;
}
