// The generator makes the same bytes from the same arguments, other bytes from other arguments,
// and the command line writes exactly what the library makes.
#include <sys/wait.h>

#include <cstdint>
#include <cstdlib>
#include <stdexcept>

#include "Mould.hpp"
#include "MoldgenFixture.hpp"

namespace {

using moldgen_test::BinaryDir;
using moldgen_test::ReadBytes;
using moldgen_test::ScratchTest;

std::string Text(int bodies, std::uint64_t seed, const std::string& leaf = "") {
    moldgen::Options options;
    options.bodies = bodies;
    options.seed = seed;
    options.leaf = leaf;
    return moldgen::PartFileText(moldgen::Generate(options));
}

// FNV-1a, 64 bits: a digest that is the same on every machine.
std::uint64_t Digest(const std::string& bytes) {
    std::uint64_t hash = 0xCBF29CE484222325ULL;
    for (unsigned char c : bytes) hash = (hash ^ c) * 0x100000001B3ULL;
    return hash;
}

// The exit status of the generator run with these arguments (the shell's quoting is enough for
// the arguments the tests pass).
int RunMoldgen(const std::string& arguments) {
    const std::string command = (BinaryDir() / "bin" / "moldgen").string() + " " + arguments + " >/dev/null 2>&1";
    const int status = std::system(command.c_str());
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

TEST(MoldgenReproducibility, SameArgumentsGiveTheSameBytes) {
    for (int bodies : {1, 100, 1000})
        EXPECT_EQ(Text(bodies, 42), Text(bodies, 42)) << "a mould of " << bodies << " bodies is made again byte for byte";
}

TEST(MoldgenReproducibility, AnotherSeedGivesAnotherMould) {
    EXPECT_NE(Text(100, 1), Text(100, 2)) << "the seed chooses the mould";
}

TEST(MoldgenReproducibility, AnotherSizeGivesAnotherMould) {
    EXPECT_NE(Text(100, 1), Text(101, 1)) << "the body count is part of the arguments";
}

// Pins the bytes of one small mould, so that a standard library or compiler that draws other
// numbers, or an unintended change of the generator, shows here. A deliberate change of the
// generator changes the digest: put the new one here.
TEST(MoldgenReproducibility, SmallMouldHasItsKnownDigest) {
    EXPECT_EQ(0x9813B8448E3054A4ULL, Digest(Text(100, 1))) << "moldgen --bodies 100 --seed 1 gives the same bytes everywhere";
}

TEST(MoldgenReproducibility, DefaultLeafNamesSizeAndSeed) {
    EXPECT_NE(std::string::npos, Text(100, 7).find("\"leaf\": \"MOULD-100-7\"")) << "the leaf names the arguments";
}

TEST(MoldgenReproducibility, LeafIsTheOneAsked) {
    EXPECT_NE(std::string::npos, Text(100, 7, u8"模具A100").find(u8"\"leaf\": \"模具A100\"")) << "--leaf names the part";
}

TEST(MoldgenReproducibility, NoBodiesIsRefused) {
    moldgen::Options options;
    options.bodies = 0;
    EXPECT_THROW(moldgen::Generate(options), std::invalid_argument) << "a mould has at least one standard part";
}

class MoldgenCommandLine : public ScratchTest {};

TEST_F(MoldgenCommandLine, WritesWhatTheLibraryMakes) {
    const std::string out = (scratch_ / "m.part.json").string();
    ASSERT_EQ(0, RunMoldgen("--bodies 250 --seed 9 --leaf A250 --out " + out)) << "the generator succeeds";
    EXPECT_EQ(Text(250, 9, "A250"), ReadBytes(out)) << "the file holds the library's text";
}

TEST_F(MoldgenCommandLine, WritesToStandardOutputWithoutOut) {
    const std::string out = (scratch_ / "stdout.json").string();
    const std::string command = (BinaryDir() / "bin" / "moldgen").string() + " --bodies 30 --seed 3 >" + out;
    ASSERT_EQ(0, std::system(command.c_str())) << "the generator succeeds";
    EXPECT_EQ(Text(30, 3), ReadBytes(out)) << "standard output holds the library's text";
}

TEST_F(MoldgenCommandLine, RefusesBadArguments) {
    EXPECT_EQ(2, RunMoldgen("--seed 3")) << "--bodies is required";
    EXPECT_EQ(2, RunMoldgen("--bodies 0")) << "a mould has at least one standard part";
    EXPECT_EQ(2, RunMoldgen("--bodies 10x")) << "the count is a decimal number";
    EXPECT_EQ(2, RunMoldgen("--bodies 10 --seed -1")) << "the seed is an unsigned number";
    EXPECT_EQ(2, RunMoldgen("--bodies 10 --colour 3")) << "unknown options are refused";
    EXPECT_EQ(2, RunMoldgen("--bodies")) << "an option without its value is refused";
}

TEST_F(MoldgenCommandLine, UnwritableOutputFails) {
    EXPECT_EQ(1, RunMoldgen("--bodies 10 --out " + (scratch_ / "missing" / "m.json").string())) << "a file that cannot be written is an error";
}

}  // namespace
