// vornadel-bomdiff: what changed between two exported purchase BOMs (docs/bomdiff.md).
#include <iostream>
#include <optional>

#include "Bom.hpp"
#include "ChangeBook.hpp"
#include "Compare.hpp"
#include "Output.hpp"
#include "Platform.hpp"
#include "Report.hpp"

namespace {

namespace fs = std::filesystem;

const int kExitOk = 0;
const int kExitFailed = 1;  // the change workbook could not be written
const int kExitBadInput = 2;

const char* const kUsage =
    "usage: vornadel-bomdiff OLD.xls NEW.xls [--all] [--format text|tsv] [-o CHANGES.xls]\n"
    "       vornadel-bomdiff FOLDER [options]   (the two newest exports of the part in FOLDER)\n"
    "  --all             list the unchanged lines too\n"
    "  --format tsv      one tab-separated line per change, for programs\n"
    "  -o CHANGES.xls    also write the change workbook (never over an existing file)\n";

struct Options {
    std::vector<fs::path> inputs;
    bool all = false, tsv = false, help = false;
    std::optional<fs::path> output;
};

struct UsageError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

fs::path PathArgument(const std::string& utf8) { return fs::u8path(utf8); }

Options Parse(const std::vector<std::string>& args) {
    Options options;
    for (size_t i = 0; i < args.size(); ++i) {
        const std::string& a = args[i];
        auto value = [&](const std::string& name) {
            if (i + 1 >= args.size()) throw UsageError(name + " needs a value");
            return args[++i];
        };
        if (a == "-h" || a == "--help") {
            options.help = true;
        } else if (a == "--all") {
            options.all = true;
        } else if (a == "--format" || a.rfind("--format=", 0) == 0) {
            const std::string format = a == "--format" ? value(a) : a.substr(9);
            if (format != "text" && format != "tsv") throw UsageError("--format is text or tsv, not \"" + format + "\"");
            options.tsv = format == "tsv";
        } else if (a == "-o" || a == "--output") {
            options.output = PathArgument(value(a));
        } else if (a.size() > 1 && a[0] == '-') {
            throw UsageError("unknown option " + a);
        } else {
            options.inputs.push_back(PathArgument(a));
        }
    }
    if (!options.help && (options.inputs.empty() || options.inputs.size() > 2))
        throw UsageError("give two exported BOMs, or the folder of one part's exports");
    return options;
}

int Run(const Options& options, std::ostream& out, std::ostream& err) {
    std::pair<fs::path, fs::path> files;
    std::error_code error;
    if (options.inputs.size() == 1)
        files = bomdiff::NewestExports(options.inputs[0]);
    else
        files = {options.inputs[0], options.inputs[1]};
    if (options.output && fs::exists(*options.output, error))
        throw bomdiff::BadInput(bomdiff::Utf8Path(*options.output) + " exists already: give the name of a new file");
    const bomdiff::Bom older = bomdiff::ReadBom(files.first), newer = bomdiff::ReadBom(files.second);
    const bomdiff::Comparison comparison = bomdiff::Compare(older, newer, options.all);
    if (comparison.differentMoulds)
        err << "vornadel-bomdiff: warning: the mould numbers differ (" << older.head[bomdiff::kMouldNo] << " in "
            << bomdiff::Utf8Path(files.first) << ", " << newer.head[bomdiff::kMouldNo] << " in "
            << bomdiff::Utf8Path(files.second) << "): two different moulds are compared\n";
    if (options.tsv)
        bomdiff::PrintTsv(out, comparison);
    else
        bomdiff::PrintText(out, older, newer, comparison);
    out.flush();
    if (options.output) {
        const std::string problem = bomdiff::WriteChangeBook(bomdiff::ChangeBookTemplate(), *options.output, older, newer, comparison);
        if (!problem.empty()) {
            err << "vornadel-bomdiff: " << problem << '\n';
            return kExitFailed;
        }
        if (!options.tsv) out << u8"变更单: " << bomdiff::Utf8Path(*options.output) << '\n';
    }
    return kExitOk;
}

}  // namespace

int main(int argc, char** argv) {
    runner::UseBinaryStandardStreams();
    // Names and texts that are not UTF-8 are shown as \xHH, as the runner shows them.
    runner::Utf8Filter outFilter(std::cout), errFilter(std::cerr);
    std::ostream out(&outFilter), err(&errFilter);
    Options options;
    try {
        options = Parse(runner::Arguments(argc, argv));
    } catch (const UsageError& e) {
        err << "vornadel-bomdiff: " << e.what() << '\n' << kUsage;
        return kExitBadInput;
    }
    if (options.help) {
        out << kUsage;
        return kExitOk;
    }
    try {
        return Run(options, out, err);
    } catch (const bomdiff::BadInput& e) {
        err << "vornadel-bomdiff: " << e.what() << '\n';
        return kExitBadInput;
    } catch (const std::exception& e) {
        err << "vornadel-bomdiff: " << e.what() << '\n';
        return kExitFailed;
    }
}
