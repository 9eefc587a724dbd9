// The compound file, byte by byte: header, FAT, DIFAT, mini stream and directory of what the engine
// writes, and the directory of a file LibreOffice wrote.

#include "CompoundFile.h"
#include "XlsTestSupport.h"

#include <gtest/gtest.h>

using namespace xlstest;

namespace {

uint32_t fatEntry(const Bytes& file, uint32_t sector)
{
    return u32at(file, (u32at(file, 0x4C + 4 * (sector / 128)) + 1) * 512 + 4 * (sector % 128));
}

const uint32_t kEnd = 0xFFFFFFFEu, kFree = 0xFFFFFFFFu, kFatSect = 0xFFFFFFFDu;

}  // namespace

TEST(XlsCompoundFile, WritesTheVersion3HeaderAndFat)
{
    Bytes stream(5000);
    for (size_t i = 0; i < stream.size(); ++i) stream[i] = static_cast<unsigned char>(i * 7);
    const Bytes file = compoundFile({{"Workbook", stream}});
    // Sectors: 0-9 the stream (5000 bytes), 10 the directory, 11 the FAT.
    ASSERT_EQ(13u * 512u, file.size());
    const Bytes header = cat({Bytes{0xD0, 0xCF, 0x11, 0xE0, 0xA1, 0xB1, 0x1A, 0xE1}, Bytes(16, 0),
                              le16({0x3E, 3, 0xFFFE, 9, 6, 0, 0, 0}),
                              le32({0, 1, 10, 0, 4096, kEnd, 0, kEnd, 0, 11, kFree})});
    EXPECT_EQ(header, Bytes(file.begin(), file.begin() + header.size()));
    for (uint32_t s = 0; s < 9; ++s) EXPECT_EQ(s + 1, fatEntry(file, s));
    EXPECT_EQ(kEnd, fatEntry(file, 9));
    EXPECT_EQ(kEnd, fatEntry(file, 10));
    EXPECT_EQ(kFatSect, fatEntry(file, 11));
    EXPECT_EQ(kFree, fatEntry(file, 12));
    EXPECT_EQ(stream, Bytes(file.begin() + 512, file.begin() + 512 + 5000));
    // The Workbook entry: start sector 0, size 5000, high half of the size 0.
    const size_t entry = 11 * 512 + 128;
    EXPECT_EQ(cat({le32({0, 5000, 0})}), Bytes(file.begin() + entry + 0x74, file.begin() + entry + 0x80));
}

TEST(XlsCompoundFile, PutsShortStreamsInTheMiniStream)
{
    const Bytes small(100, 0x5A);
    const Bytes file = compoundFile({{"Workbook", Bytes(4096, 1)}, {"\x05SummaryInformation", small}, {"Empty", {}}});
    // Sectors: 0-7 Workbook, 8 the mini stream (2 mini sectors), 9 the MiniFAT, 10 the directory.
    EXPECT_EQ(cat({le32({9, 1})}), Bytes(file.begin() + 0x3C, file.begin() + 0x44));
    EXPECT_EQ(cat({le32({1, kEnd, kFree})}), Bytes(file.begin() + 10 * 512, file.begin() + 10 * 512 + 12));
    EXPECT_EQ(small, Bytes(file.begin() + 9 * 512, file.begin() + 9 * 512 + 100));
    const size_t dir = 11 * 512;
    EXPECT_EQ(cat({le32({8, 128, 0})}), Bytes(file.begin() + dir + 0x74, file.begin() + dir + 0x80)) << "root: the mini stream";
    EXPECT_EQ(cat({le32({0, 100, 0})}), Bytes(file.begin() + dir + 2 * 128 + 0x74, file.begin() + dir + 2 * 128 + 0x80));
    EXPECT_EQ(cat({le32({kEnd, 0, 0})}), Bytes(file.begin() + dir + 3 * 128 + 0x74, file.begin() + dir + 3 * 128 + 0x80))
        << "an empty stream has no sector";

    xls::CompoundFile back;
    std::string error;
    ASSERT_TRUE(back.read(file.data(), file.size(), error)) << error;
    EXPECT_EQ(small, back.entries[2].data);
    EXPECT_TRUE(back.entries[3].data.empty());
}

TEST(XlsCompoundFile, ListsFatSectorsBeyond109InTheDifat)
{
    // 8 MiB: 16384 stream sectors and a directory sector need 130 FAT sectors, 21 of them listed
    // in one DIFAT sector after the header's 109.
    Bytes stream(8u << 20);
    for (size_t i = 0; i < stream.size(); i += 4096) stream[i] = static_cast<unsigned char>(i >> 12);
    const Bytes file = compoundFile({{"Workbook", stream}});
    EXPECT_EQ(cat({le32({130})}), Bytes(file.begin() + 0x2C, file.begin() + 0x30));
    EXPECT_EQ(cat({le32({16515, 1})}), Bytes(file.begin() + 0x44, file.begin() + 0x4C));
    const size_t difat = (16515 + 1) * 512;
    for (uint32_t k = 0; k < 21; ++k) EXPECT_EQ(16385 + 109 + k, u32at(file, difat + 4 * k));
    EXPECT_EQ(kFree, u32at(file, difat + 4 * 21));
    EXPECT_EQ(kEnd, u32at(file, difat + 508));
    // The DIFAT sector is marked DIFSECT in FAT sector 129 (sector 16385 + 129), listed in the DIFAT.
    EXPECT_EQ(0xFFFFFFFCu, u32at(file, (16385 + 129 + 1) * 512 + 4 * (16515 % 128))) << "DIFSECT";
    xls::CompoundFile back;
    std::string error;
    ASSERT_TRUE(back.read(file.data(), file.size(), error)) << error;
    EXPECT_EQ(stream, back.entries[1].data);
}

// samples/config/塑胶模/模具标准件申购表.xls as LibreOffice wrote it: six directory entries in this
// order, every one red (colour byte 0), the root's child being Workbook (id 1).
TEST(XlsCompoundFile, ReadsTheDirectoryLibreOfficeWrote)
{
    const Bytes file = readBytes(bundledTemplate());
    xls::CompoundFile cf;
    std::string error;
    ASSERT_TRUE(cf.read(file.data(), file.size(), error)) << error;
    const char* names[] = {"Root Entry", "Workbook", "\x01" "CompObj", "\x01" "Ole", "\x05" "SummaryInformation",
                           "\x05" "DocumentSummaryInformation"};
    ASSERT_LE(6u, cf.entries.size());
    for (size_t i = 0; i < 6; ++i) {
        std::string name;
        for (size_t k = 0; cf.entries[i].raw[2 * k] != 0; ++k) name += static_cast<char>(cf.entries[i].raw[2 * k]);
        EXPECT_EQ(names[i], name);
        EXPECT_EQ(0, cf.entries[i].raw[0x43]) << "colour";
    }
    EXPECT_EQ(1, cf.findRootStream("WORKBOOK")) << "names compare without regard to case";
    EXPECT_EQ(-1, cf.findRootStream("Book"));
}
