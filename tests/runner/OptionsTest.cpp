// The runner's command line.
#include <gtest/gtest.h>

#include "Options.hpp"

using runner::Options;
using runner::ParseArguments;
using runner::UsageError;

namespace {

Options Parse(std::vector<std::string> args) {
    return ParseArguments(args);
}

}  // namespace

TEST(RunnerOptions, RunWithAPartFile) {
    const Options o = Parse({"run", "a.part.json"});
    ASSERT_TRUE(o.part.has_value()) << "the argument after run is the part file";
    EXPECT_EQ("a.part.json", *o.part) << "the part file is kept as given";
}

TEST(RunnerOptions, RunMayBeLeftOut) {
    const Options o = Parse({"a.part.json"});
    ASSERT_TRUE(o.part.has_value()) << "run is the only command and may be left out";
    EXPECT_EQ("a.part.json", *o.part) << "the part file is the one positional argument";
}

TEST(RunnerOptions, NoArgumentsUseTheBundledDefaults) {
    const Options o = Parse({});
    EXPECT_FALSE(o.part.has_value()) << "no part file: the bundled sample part";
    EXPECT_FALSE(o.configRoot.has_value()) << "no --config: the bundled configuration root";
    EXPECT_TRUE(o.drives.empty()) << "no --drive: only the bundled drive D";
    EXPECT_EQ(runner::Format::Text, o.format) << "the default output is for people";
    EXPECT_FALSE(o.save) << "nothing is saved unless asked";
    EXPECT_FALSE(o.reallyOpen) << "files are not really opened unless asked";
}

TEST(RunnerOptions, EveryOptionTakesItsValue) {
    const Options o = Parse({"run", "p.part.json", "--config", "root", "--localappdata", "lad", "--desktop", "desk",
                             "--script", "s.txt", "--format", "tsv", "--plugin", "lib.so", "--open"});
    EXPECT_EQ("root", o.configRoot.value_or("")) << "--config ROOT";
    EXPECT_EQ("lad", o.localAppData.value_or("")) << "--localappdata DIR";
    EXPECT_EQ("desk", o.desktop.value_or("")) << "--desktop DIR";
    EXPECT_EQ("s.txt", o.scriptFile.value_or("")) << "--script FILE";
    EXPECT_EQ(runner::Format::Tsv, o.format) << "--format tsv";
    EXPECT_EQ("lib.so", o.plugin.value_or("")) << "--plugin FILE";
    EXPECT_TRUE(o.reallyOpen) << "--open";
}

TEST(RunnerOptions, ValueMayBeAttachedWithEquals) {
    const Options o = Parse({"--config=some root", "--format=tsv"});
    EXPECT_EQ("some root", o.configRoot.value_or("")) << "--config=ROOT is --config ROOT";
    EXPECT_EQ(runner::Format::Tsv, o.format) << "--format=tsv is --format tsv";
}

TEST(RunnerOptions, DrivesAreKeyedByUpperCaseLetterAndTheLastOneWins) {
    const Options o = Parse({"--drive", "d=/a", "--drive", "C=/c", "--drive", "D=/b"});
    ASSERT_EQ(2u, o.drives.size()) << "two letters are mapped";
    EXPECT_EQ("/b", o.drives.at('D')) << "drive letters ignore case and a later --drive replaces an earlier one";
    EXPECT_EQ("/c", o.drives.at('C')) << "each letter keeps its own folder";
}

TEST(RunnerOptions, DriveNeedsALetterAndAFolder) {
    EXPECT_THROW(Parse({"--drive", "D"}), UsageError) << "a drive without a folder";
    EXPECT_THROW(Parse({"--drive", "D="}), UsageError) << "an empty folder";
    EXPECT_THROW(Parse({"--drive", "1=/a"}), UsageError) << "a digit is not a drive letter";
}

TEST(RunnerOptions, CommandsAreKeptInOrder) {
    const Options o = Parse({"-e", "show tree", "-e", "close"});
    ASSERT_EQ(2u, o.commands.size()) << "each -e adds one command";
    EXPECT_EQ("show tree", o.commands[0]) << "first -e first";
    EXPECT_EQ("close", o.commands[1]) << "then the second";
}

TEST(RunnerOptions, ScriptAndCommandsExcludeEachOther) {
    EXPECT_THROW(Parse({"--script", "s.txt", "-e", "close"}), UsageError) << "commands come from one place";
    EXPECT_THROW(Parse({"--script", "a.txt", "--script", "b.txt"}), UsageError) << "one script";
}

TEST(RunnerOptions, SaveOverwritesThePartFileThatWasRun) {
    const Options o = Parse({"p.part.json", "--save", "--format", "tsv"});
    EXPECT_TRUE(o.save) << "--save asks for a save";
    EXPECT_FALSE(o.saveAs.has_value()) << "over the part file";
    EXPECT_EQ("p.part.json", o.part.value_or("")) << "the part file stays the part file";
}

TEST(RunnerOptions, SaveTakesNoFileSoTheFollowingArgumentIsThePart) {
    // "--save mine.part.json" once meant "run the sample and write it over mine.part.json".
    const Options o = Parse({"--save", "mine.part.json", "-e", "close"});
    EXPECT_TRUE(o.save);
    EXPECT_EQ("mine.part.json", o.part.value_or("")) << "the file after --save is the part that runs";
    EXPECT_FALSE(o.saveAs.has_value());
    EXPECT_THROW(Parse({"p.part.json", "--save=out.part.json"}), UsageError) << "--save takes no value";
}

TEST(RunnerOptions, SaveAsWritesElsewhere) {
    const Options o = Parse({"p.part.json", "--save-as", "out.part.json"});
    EXPECT_FALSE(o.save);
    EXPECT_EQ("out.part.json", o.saveAs.value_or("")) << "--save-as OUT";
    const Options attached = Parse({"--save-as=out2.part.json", "p.part.json"});
    EXPECT_EQ("out2.part.json", attached.saveAs.value_or("")) << "--save-as=OUT";
    EXPECT_EQ("p.part.json", attached.part.value_or(""));
    EXPECT_EQ("out.part.json", Parse({"--save-as", "out.part.json"}).saveAs.value_or(""))
        << "the bundled sample may be saved elsewhere";
    EXPECT_THROW(Parse({"p.part.json", "--save-as"}), UsageError) << "--save-as needs its file";
    EXPECT_THROW(Parse({"p.part.json", "--save", "--save-as", "o.part.json"}), UsageError) << "one target";
}

TEST(RunnerOptions, MistakesAreUsageErrors) {
    EXPECT_THROW(Parse({"--nonsense"}), UsageError) << "an unknown option";
    EXPECT_THROW(Parse({"a.part.json", "b.part.json"}), UsageError) << "two part files";
    EXPECT_THROW(Parse({"--format", "xml"}), UsageError) << "a format that is neither text nor tsv";
    EXPECT_THROW(Parse({"--config"}), UsageError) << "an option without its value";
    EXPECT_THROW(Parse({"--open=yes"}), UsageError) << "a value for an option that takes none";
    EXPECT_THROW(Parse({"--time", "yesterday"}), UsageError) << "a time that is not a time";
}

TEST(RunnerOptions, RunIsACommandOnlyInFirstPlace) {
    const Options o = Parse({"a.part.json", "--format", "tsv"});
    EXPECT_EQ("a.part.json", o.part.value_or("")) << "a part file in first place";
    EXPECT_THROW(Parse({"a.part.json", "run"}), UsageError) << "a later \"run\" is a second part file";
}

TEST(RunnerTime, MillisecondsAreOptional) {
    const auto t = runner::ParseTime("2024-05-06T07:08:09.010");
    ASSERT_TRUE(t.has_value()) << "YYYY-MM-DDTHH:MM:SS.mmm";
    EXPECT_EQ(2024, t->year) << "year";
    EXPECT_EQ(5, t->month) << "month";
    EXPECT_EQ(6, t->day) << "day";
    EXPECT_EQ(7, t->hour) << "hour";
    EXPECT_EQ(8, t->minute) << "minute";
    EXPECT_EQ(9, t->second) << "second";
    EXPECT_EQ(10, t->milliseconds) << "milliseconds";
    const auto whole = runner::ParseTime("2024-05-06T07:08:09");
    ASSERT_TRUE(whole.has_value()) << "the milliseconds may be left out";
    EXPECT_EQ(0, whole->milliseconds) << "left out, they are 0";
}

TEST(RunnerTime, DatesMustExist) {
    EXPECT_TRUE(runner::ParseTime("2024-02-29T00:00:00.000").has_value()) << "2024 is a leap year";
    EXPECT_FALSE(runner::ParseTime("2023-02-29T00:00:00.000").has_value()) << "2023 is not";
    EXPECT_FALSE(runner::ParseTime("2024-13-01T00:00:00.000").has_value()) << "month 13";
    EXPECT_FALSE(runner::ParseTime("2024-04-31T00:00:00.000").has_value()) << "April has 30 days";
    EXPECT_FALSE(runner::ParseTime("2024-01-01T24:00:00.000").has_value()) << "hour 24";
    EXPECT_FALSE(runner::ParseTime("2024-01-01T00:60:00.000").has_value()) << "minute 60";
    EXPECT_FALSE(runner::ParseTime("2024-01-01 00:00:00.000").has_value()) << "a blank instead of T";
    EXPECT_FALSE(runner::ParseTime("2024-01-01T00:00:00.5").has_value()) << "milliseconds have three digits";
}
