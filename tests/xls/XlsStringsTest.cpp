// Strings: what the engine writes reads back exactly through xlrd, and the shared string table's
// records follow BIFF8's splitting rules to the byte.

#include "Records.h"
#include "SharedStrings.h"
#include "Utf16.h"
#include "XlsBook.h"
#include "XlsTestSupport.h"

#include <gtest/gtest.h>

using namespace xlstest;

namespace {

// SST and CONTINUE records written by a table into which texts were added.
std::vector<Rec> sstRecords(const std::vector<std::u16string>& texts, xls::SstLayout* layout = nullptr)
{
    xls::SharedStrings table;
    for (const auto& t : texts) table.add(reinterpret_cast<const xls::u16*>(t.data()), t.size());
    xls::SstLayout unused;
    Bytes out;
    table.write(out, layout != nullptr ? *layout : unused);
    return records(out);
}

// cstTotal and cstUnique of a saved file's SST.
std::pair<uint32_t, uint32_t> sstCounts(const Bytes& file)
{
    for (const Rec& r : records(workbookStream(file)))
        if (r.type == 0x00FC) return {u32at(r.data, 0), u32at(r.data, 4)};
    return {0, 0};
}

}  // namespace

TEST(XlsStrings, ReadBackExactly)
{
    std::u16string long255, long30000;
    for (int i = 0; long255.size() < 255; ++i) long255 += u"模具标准件"[i % 5];
    for (int i = 0; long30000.size() < 30000; ++i) long30000 += (i % 3 == 0) ? u'A' + i % 26 : u"顶针导柱弹簧"[i % 6];
    Written cells = {{{1, 1}, u"汽车门把手外壳"},
                     {{1, 4}, u""},
                     {{1, 8}, long255},
                     {{2, 1}, long30000},
                     {{2, 8}, u"café naïve ½"},                 // Latin-1: stored one byte per character
                     {{2, 11}, u"表情\U0001F600与𠀋"},           // characters above U+FFFF
                     {{3, 1}, u"line 1\nline 2\ttab \\ back"},
                     {{3, 4}, std::u16string(32767, u'满')},
                     {{6, 0}, u"1"}};
    TempDir dir;
    ASSERT_NO_FATAL_FAILURE(writeWorkbook(bundledTemplate(), dir / "out.xls", cells));
    expectOnlyWrittenCellsChanged(xlrdDump(bundledTemplate()), xlrdDump(dir / "out.xls"), 0, cells);
    expectWellFormedStream(workbookStream(readBytes(dir / "out.xls")), 0);
}

TEST(XlsStrings, ManyDistinctStringsSpanSeveralContinueRecords)
{
    Written cells;
    for (int i = 0; i < 4000; ++i) cells[{6 + i / 12, i % 12}] = u"零件名称" + utf16(std::to_string(i)) + u"号";
    TempDir dir;
    ASSERT_NO_FATAL_FAILURE(writeWorkbook(bundledTemplate(), dir / "out.xls", cells));
    expectOnlyWrittenCellsChanged(xlrdDump(bundledTemplate()), xlrdDump(dir / "out.xls"), 0, cells);
    const Bytes stream = workbookStream(readBytes(dir / "out.xls"));
    expectWellFormedStream(stream, 0);
    const std::vector<Rec> recs = records(stream);
    size_t continues = 0;
    for (size_t i = 0; i < recs.size(); ++i) {
        if (recs[i].type != 0x00FC) continue;
        while (i + 1 < recs.size() && recs[i + 1].type == 0x003C) ++i, ++continues;
    }
    EXPECT_GE(continues, 5u);
}

TEST(XlsStrings, ReusesAStringTheTableHasAlready)
{
    xls::Book book;
    ASSERT_TRUE(book.load(osPath(bundledTemplate()).c_str()));
    std::vector<unsigned char> before, after;
    ASSERT_TRUE(book.saveBuffer(before));
    xls::Sheet* sheet = book.getSheet(0);
    ASSERT_TRUE(sheet->writeStr(1, 1, L"产品名称"));  // the label of A2
    ASSERT_TRUE(sheet->writeStr(6, 1, L"新名称"));
    ASSERT_TRUE(sheet->writeStr(7, 1, L"新名称"));
    ASSERT_TRUE(book.saveBuffer(after));
    EXPECT_EQ(sstCounts(before).second + 1, sstCounts(after).second) << "one new string: cstUnique";
    EXPECT_EQ(sstCounts(before).first + 3, sstCounts(after).first) << "three more string cells: cstTotal";
}

TEST(XlsStrings, OverwritingAStringCellKeepsTheCellCount)
{
    xls::Book book;
    ASSERT_TRUE(book.load(osPath(bundledTemplate()).c_str()));
    std::vector<unsigned char> before, after;
    ASSERT_TRUE(book.saveBuffer(before));
    ASSERT_TRUE(book.getSheet(0)->writeStr(1, 0, L"改过的标签"));  // A2 holds a string already
    ASSERT_TRUE(book.saveBuffer(after));
    EXPECT_EQ(sstCounts(before).first, sstCounts(after).first);
}

// Record-level bytes. A string is cch (u16), flags (u8, bit 0: two bytes per character), then the
// characters; LibreOffice's template holds the same layout, e.g. its first string 模具标准件申购表 at
// offset 12 of the SST record: 08 00 01 21 6A 77 51 ...
TEST(XlsStrings, WritesCompressedAndTwoByteStrings)
{
    const std::vector<Rec> recs = sstRecords({u"ab", u"中", u""});
    ASSERT_EQ(1u, recs.size());
    EXPECT_EQ(0x00FC, recs[0].type);
    // cstTotal counts string cells, which the table alone does not know of: 0.
    EXPECT_EQ(cat({le32({0, 3}), Bytes{2, 0, 0, 'a', 'b', 1, 0, 1, 0x2D, 0x4E, 0, 0, 0}}), recs[0].data);
}

TEST(XlsStrings, ContinuesALongStringWithAFlagsByte)
{
    // 5000 two-byte characters: 4106 fit after the SST header (8) and the string header (3).
    const std::vector<Rec> recs = sstRecords({std::u16string(5000, u'中')});
    ASSERT_EQ(2u, recs.size());
    EXPECT_EQ(8u + 3u + 2u * 4106u, recs[0].data.size());
    EXPECT_EQ(0x003C, recs[1].type);
    EXPECT_EQ(1u + 2u * (5000u - 4106u), recs[1].data.size());
    EXPECT_EQ(1, recs[1].data[0]) << "flags byte: the rest is two bytes per character";
    EXPECT_EQ(0x2D, recs[1].data[1]);
}

TEST(XlsStrings, NeverSplitsAHeaderFromItsFirstCharacter)
{
    // The first string leaves 4 bytes in the record: a string header (3) and a two-byte first
    // character (2) do not fit, so the second string starts the CONTINUE, without a flags byte.
    const std::vector<Rec> recs = sstRecords({std::u16string(8224 - 8 - 3 - 4, u'a'), u"中文"});
    ASSERT_EQ(2u, recs.size());
    EXPECT_EQ(8224u - 4u, recs[0].data.size());
    EXPECT_EQ((Bytes{2, 0, 1, 0x2D, 0x4E, 0x87, 0x65}), recs[1].data);
}

TEST(XlsStrings, NeverSplitsASurrogatePair)
{
    // After the SST header (8), "x" (4) and the string header (3) there is room for 4104 units:
    // unit 4104 would be the high half of a pair, so the record ends one unit early and the pair
    // starts the CONTINUE.
    std::u16string text(4103, u'中');
    text += u"\U0001F600";
    text += u"尾";
    const std::vector<Rec> recs = sstRecords({u"x", text});
    ASSERT_EQ(2u, recs.size());
    EXPECT_EQ(8u + 4u + 3u + 2u * 4103u, recs[0].data.size());
    EXPECT_EQ((Bytes{1, 0x3D, 0xD8, 0x00, 0xDE, 0x3E, 0x5C}), recs[1].data);
}

TEST(XlsStrings, IndexesEveryEighthStringInExtSst)
{
    xls::SstLayout layout;
    std::vector<std::u16string> texts;
    for (int i = 0; i < 20; ++i) texts.push_back(u"s" + utf16(std::to_string(i)));
    sstRecords(texts, &layout);
    EXPECT_EQ(8u, layout.stringsPerBucket);
    Bytes data;
    xls::SharedStrings::extSst(layout, 1000, data);
    // From the SST record's header: "s0".."s9" take 5 bytes each, "s10".. 6, the first starts at 12.
    const uint32_t s0 = 12, s8 = 12 + 8 * 5, s16 = 12 + 10 * 5 + 6 * 6;
    EXPECT_EQ(cat({le16({8}), le32({1000 + s0}), le16({s0, 0}), le32({1000 + s8}), le16({s8, 0}), le32({1000 + s16}),
                   le16({s16, 0})}),
              data);
    EXPECT_EQ(data.size(), xls::SharedStrings::extSstSize(20));
}

TEST(XlsStrings, ExtSstBucketsGrowWithTheTable)
{
    // Excel's bucket size: max(8, strings / 128 + 1); 2000 strings give buckets of 16, 125 of them.
    xls::SstLayout layout;
    std::vector<std::u16string> texts;
    for (int i = 0; i < 2000; ++i) texts.push_back(u"s" + utf16(std::to_string(i)));
    sstRecords(texts, &layout);
    EXPECT_EQ(16u, layout.stringsPerBucket) << "dsst of 2000 strings";
    EXPECT_EQ(125u, layout.stringOffset.size()) << "one entry per bucket";
    EXPECT_EQ(2u + 8u * 125u, xls::SharedStrings::extSstSize(2000)) << "EXTSST size of 2000 strings";
}

TEST(XlsStrings, LoadingCutsATableAfterItsLastWholeString)
{
    // cstUnique says 3, the data holds two whole strings and half of a third.
    const Bytes sst = cat({le32({3, 3}), Bytes{1, 0, 0, 'a', 1, 0, 0, 'b', 5, 0, 0, 'c'}});
    xls::SharedStrings table;
    std::vector<const xls::u8*> parts{sst.data()};
    std::vector<size_t> sizes{sst.size()};
    table.load(parts, sizes);
    EXPECT_EQ(2u, table.count());
    const xls::u16 c[] = {'c'};
    EXPECT_EQ(2u, table.add(c, 1)) << "the next string is appended after the two whole ones";
    Bytes out;
    xls::SstLayout layout;
    table.write(out, layout);
    EXPECT_EQ(cat({le16({0x00FC, 20}), le32({3, 3}), Bytes{1, 0, 0, 'a', 1, 0, 0, 'b', 1, 0, 0, 'c'}}), out);
}

TEST(XlsStrings, WideTextBecomesUtf16)
{
    std::vector<xls::u16> units;
    xls::wideToUtf16(L"A中\U0001F600", units);
    EXPECT_EQ((std::vector<xls::u16>{0x41, 0x4E2D, 0xD83D, 0xDE00}), units);
    const wchar_t lone[] = {0xD800, 0x41, 0};
    xls::wideToUtf16(lone, units);
    EXPECT_EQ((std::vector<xls::u16>{0xFFFD, 0x41}), units) << "a lone surrogate becomes U+FFFD";
}

TEST(XlsStrings, ACharacterBecomesOneOrTwoUnits)
{
    std::vector<xls::u16> units;
    xls::appendUtf16(0x4E2D, units);
    EXPECT_EQ((std::vector<xls::u16>{0x4E2D}), units) << "a character up to U+FFFF is one unit";
    xls::appendUtf16(0x10FFFF, units);
    EXPECT_EQ((std::vector<xls::u16>{0x4E2D, 0xDBFF, 0xDFFF}), units) << "above U+FFFF: a surrogate pair, appended";
    units.clear();
    xls::appendUtf16(0xDC00, units);
    xls::appendUtf16(0x110000, units);
    EXPECT_EQ((std::vector<xls::u16>{0xFFFD, 0xFFFD}), units) << "a surrogate or a value beyond U+10FFFF: U+FFFD";
}
