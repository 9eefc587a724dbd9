// Loading: which workbooks the engine opens, which it refuses and with what message, and the
// sheet operations the export uses (active sheet, getSheet, writeStr's limits).

#include "CompoundFile.h"
#include "XlsBook.h"
#include "XlsTestSupport.h"

#include <gtest/gtest.h>

#include <random>

using namespace xlstest;

namespace {

// Loads bytes; on refusal returns the message, on success "loaded".
std::string loadMessage(const Bytes& bytes)
{
    xls::Book book;
    if (book.loadBuffer(bytes.data(), bytes.size())) return "loaded";
    std::string message = book.errorMessage();
    EXPECT_FALSE(message.empty()) << "a refusal has a message";
    return message;
}

bool contains(const std::string& text, const std::string& part) { return text.find(part) != std::string::npos; }

void setU32(Bytes& b, size_t at, uint32_t v)
{
    for (int k = 0; k < 4; ++k) b[at + k] = static_cast<unsigned char>(v >> (8 * k));
}

// File offset of directory entry `id` of a version 3 file whose directory fits one sector.
size_t entryOffset(const Bytes& file, size_t id) { return (u32at(file, 0x30) + 1) * 512 + id * 128; }

// Directory id of the entry named name (ASCII) in a version 3 file's first directory sector.
size_t entryId(const Bytes& file, const std::string& name)
{
    for (size_t id = 0; id < 4; ++id) {
        const size_t e = entryOffset(file, id);
        bool same = file[e + 0x40] == 2 * (name.size() + 1);
        for (size_t k = 0; k < name.size() && same; ++k) same = file[e + 2 * k] == static_cast<unsigned char>(name[k]);
        if (same) return id;
    }
    ADD_FAILURE() << "no entry " << name;
    return 0;
}

// Sets FAT entry `sector` of a version 3 file to value.
void setFat(Bytes& file, uint32_t sector, uint32_t value)
{
    const uint32_t fatSector = u32at(file, 0x4C + 4 * (sector / 128));
    setU32(file, (fatSector + 1) * 512 + 4 * (sector % 128), value);
}

const Bytes& templateBytes()
{
    static const Bytes bytes = readBytes(bundledTemplate());
    return bytes;
}

}  // namespace

TEST(XlsLoad, OpensTheBundledTemplate)
{
    xls::Book book;
    ASSERT_TRUE(book.load(osPath(bundledTemplate()).c_str())) << book.errorMessage();
    EXPECT_EQ(2, book.sheetCount());
    EXPECT_EQ(0, book.activeSheet());
    EXPECT_NE(nullptr, book.getSheet(0));
    EXPECT_STREQ("", book.errorMessage());
}

TEST(XlsLoad, OpensAVersion4CompoundFile)
{
    const Bytes v4 = asVersion4(templateBytes());
    ASSERT_EQ(4, v4[0x1A]);
    TempDir dir;
    writeBytes(dir / "v4.xls", v4);
    ASSERT_NO_FATAL_FAILURE(writeWorkbook(dir / "v4.xls", dir / "out.xls", bomCells(3)));
    expectOnlyWrittenCellsChanged(xlrdDump(bundledTemplate()), xlrdDump(dir / "out.xls"), 0, bomCells(3));
    EXPECT_EQ(3, readBytes(dir / "out.xls")[0x1A]) << "saved as version 3, the version LibreOffice opens";
}

TEST(XlsLoad, OpensAWorkbookStreamInTheMiniStream)
{
    const Bytes file = BookBuilder().sheet("S").file();
    ASSERT_LT(workbookStream(file).size(), 4096u);
    writeAndCompare(file, {{{0, 0}, u"小"}});
}

TEST(XlsLoad, RefusesAMissingFile)
{
    xls::Book book;
    EXPECT_FALSE(book.load("/no/such/folder/book.xls"));
    EXPECT_TRUE(contains(book.errorMessage(), "cannot open")) << book.errorMessage();
}

TEST(XlsLoad, RefusesAnEmptyFile) { EXPECT_TRUE(contains(loadMessage({}), "not a compound file")); }

TEST(XlsLoad, RefusesAWrongSignature)
{
    Bytes bytes = templateBytes();
    bytes[0] = 'P';
    EXPECT_TRUE(contains(loadMessage(bytes), "no OLE2 signature"));
}

TEST(XlsLoad, RefusesAnXlsxOrTextFile)
{
    const std::string zip = "PK\x03\x04 not really a zip", text = "name,size\n顶针,5\n";
    EXPECT_NE("loaded", loadMessage(Bytes(zip.begin(), zip.end())));
    EXPECT_NE("loaded", loadMessage(Bytes(text.begin(), text.end())));
}

TEST(XlsLoad, RefusesATruncatedFile)
{
    const Bytes& whole = templateBytes();
    for (size_t size : {size_t(8), size_t(511), size_t(512), size_t(1000), whole.size() / 2, whole.size() - 3000}) {
        const std::string message = loadMessage(Bytes(whole.begin(), whole.begin() + size));
        EXPECT_NE("loaded", message) << "cut to " << size << " bytes";
    }
}

TEST(XlsLoad, ToleratesAFileCutInsideItsLastSector)
{
    // Some writers end the file short of a whole sector; the missing bytes read as zeros.
    const Bytes file = BookBuilder().sheet("S").file();
    Bytes cut(file.begin(), file.end() - 100);
    EXPECT_EQ("loaded", loadMessage(cut));
}

TEST(XlsLoad, RefusesACyclicSectorChain)
{
    Bytes bytes = templateBytes();
    const size_t e = entryOffset(bytes, entryId(bytes, "Workbook"));
    const uint32_t start = u32at(bytes, e + 0x74);
    setFat(bytes, start + 3, start + 1);  // the stream's 4th sector leads back to its 2nd
    EXPECT_TRUE(contains(loadMessage(bytes), "loops")) << loadMessage(bytes);
}

TEST(XlsLoad, RefusesAChainThatLeavesTheFile)
{
    Bytes bytes = templateBytes();
    const size_t e = entryOffset(bytes, entryId(bytes, "Workbook"));
    setFat(bytes, u32at(bytes, e + 0x74), 0x00FFFFFF);
    EXPECT_TRUE(contains(loadMessage(bytes), "not in the file")) << loadMessage(bytes);
}

TEST(XlsLoad, RefusesStreamsThatShareSectors)
{
    // \x01CompObj claims the Workbook stream's first 4096 bytes as its own.
    Bytes bytes = templateBytes();
    const size_t workbook = entryOffset(bytes, entryId(bytes, "Workbook"));
    const size_t compObj = entryOffset(bytes, entryId(bytes, "\x01" "CompObj"));
    setU32(bytes, compObj + 0x74, u32at(bytes, workbook + 0x74));
    setU32(bytes, compObj + 0x78, 4096);
    EXPECT_TRUE(contains(loadMessage(bytes), "shares sector")) << loadMessage(bytes);
}

TEST(XlsLoad, RefusesADirectoryTreeThatLoops)
{
    Bytes bytes = templateBytes();
    const uint32_t child = u32at(bytes, entryOffset(bytes, 0) + 0x4C);
    setU32(bytes, entryOffset(bytes, child) + 0x44, child);
    EXPECT_TRUE(contains(loadMessage(bytes), "directory tree loops")) << loadMessage(bytes);
}

TEST(XlsLoad, RefusesADifatChainThatLoops)
{
    // 300 sectors, 240 FAT sectors claimed: 109 in the header, the rest in DIFAT sector 5, whose
    // "next" field names itself.
    Bytes bytes(512 * 301, 0);
    std::copy(templateBytes().begin(), templateBytes().begin() + 0x4C, bytes.begin());
    setU32(bytes, 0x2C, 240);
    setU32(bytes, 0x44, 5);
    setU32(bytes, 0x48, 2);
    for (uint32_t k = 0; k < 109; ++k) setU32(bytes, 0x4C + 4 * k, 10 + k);
    for (uint32_t k = 0; k < 127; ++k) setU32(bytes, 6 * 512 + 4 * k, 150 + k);
    setU32(bytes, 6 * 512 + 508, 5);
    EXPECT_TRUE(contains(loadMessage(bytes), "DIFAT chain loops")) << loadMessage(bytes);
}

TEST(XlsLoad, RefusesAHugeStreamSize)
{
    Bytes bytes = templateBytes();
    setU32(bytes, entryOffset(bytes, entryId(bytes, "Workbook")) + 0x78, 0x7FFFFFF0u);
    EXPECT_TRUE(contains(loadMessage(bytes), "larger than the file")) << loadMessage(bytes);
    Bytes v4 = asVersion4(templateBytes());
    const size_t dir = (u32at(v4, 0x30) + 1) * 4096;
    for (size_t id = 1; id < 4; ++id) setU32(v4, dir + id * 128 + 0x7C, 1);  // sizes above 4 GiB
    EXPECT_TRUE(contains(loadMessage(v4), "larger than the file")) << loadMessage(v4);
}

TEST(XlsLoad, RefusesRandomBytes)
{
    std::mt19937 random(20240506);
    const Bytes& model = templateBytes();
    for (int round = 0; round < 300; ++round) {
        Bytes bytes(random() % 20000);
        for (auto& b : bytes) b = static_cast<unsigned char>(random());
        if (round % 2 == 1 && bytes.size() >= 0x4C) std::copy(model.begin(), model.begin() + 0x4C, bytes.begin());
        EXPECT_NE("loaded", loadMessage(bytes)) << "round " << round;
    }
}

TEST(XlsLoad, SurvivesRandomDamageToARealWorkbook)
{
    std::mt19937 random(7);
    for (int round = 0; round < 300; ++round) {
        Bytes bytes = templateBytes();
        for (int k = 0; k < 1 + round % 8; ++k) bytes[random() % bytes.size()] = static_cast<unsigned char>(random());
        xls::Book book;
        if (!book.loadBuffer(bytes.data(), bytes.size())) {
            EXPECT_STRNE("", book.errorMessage());
            continue;
        }
        if (xls::Sheet* sheet = book.getSheet(book.activeSheet())) sheet->writeStr(6, 1, L"顶针");
        std::vector<unsigned char> out;
        EXPECT_TRUE(book.saveBuffer(out)) << book.errorMessage();
    }
}

TEST(XlsLoad, RefusesAnExcel95Workbook)
{
    const Bytes bof = cat({le16({0x0809, 8, 0x0500, 0x0005, 0x0DBB, 0x07CC})});
    EXPECT_TRUE(contains(loadMessage(compoundFile({{"Book", bof}})), "BIFF5"));
    EXPECT_TRUE(contains(loadMessage(compoundFile({{"Workbook", bof}})), "BIFF5"));
}

TEST(XlsLoad, RefusesAnExcel4OrOlderWorkbook)
{
    for (unsigned bofType : {0x0009u, 0x0209u, 0x0409u}) {
        const Bytes bof = le16({bofType, 6, 0x0000, 0x0010, 0});
        EXPECT_TRUE(contains(loadMessage(compoundFile({{"Book", bof}})), "Excel 2.x-4.0")) << bofType;
        EXPECT_TRUE(contains(loadMessage(bof), "Excel 2.x-4.0")) << bofType << ", a bare stream as Excel saved it";
    }
}

TEST(XlsLoad, TheBofRecordDecidesTheFormatWhateverTheStreamIsCalled)
{
    const Bytes stream = BookBuilder().sheet("S").record(0x0201, le16({2, 3, 15})).stream();
    for (const char* name : {"Book", "BOOK", "book", "WORKBOOK"}) {
        const Bytes file = compoundFile({{name, stream}});
        xls::Book book;
        ASSERT_TRUE(book.loadBuffer(file.data(), file.size())) << name << ": " << book.errorMessage();
        ASSERT_TRUE(book.getSheet(0)->writeStr(2, 3, L"x"));
        std::vector<unsigned char> out;
        ASSERT_TRUE(book.saveBuffer(out));
        // Saved under its own name, with the cell written.
        xls::CompoundFile saved;
        std::string error;
        ASSERT_TRUE(saved.read(out.data(), out.size(), error)) << error;
        const int id = saved.findRootStream(name);
        ASSERT_GE(id, 1) << name;
        for (size_t k = 0; name[k] != '\0'; ++k) EXPECT_EQ(name[k], saved.entries[id].raw[2 * k]) << name;
        bool label = false;
        for (const Rec& r : records(saved.entries[id].data))
            label = label || (r.type == 0x00FD && u16at(r.data, 0) == 2 && u16at(r.data, 2) == 3);
        EXPECT_TRUE(label) << name;
    }
    // Both streams, as Excel's "97 & 5.0/95" format saves them: the BIFF8 one is edited.
    const Bytes biff5 = cat({le16({0x0809, 8, 0x0500, 0x0005, 0x0DBB, 0x07CC})});
    const Bytes dual = compoundFile({{"Book", biff5}, {"Workbook", stream}});
    EXPECT_EQ("loaded", loadMessage(dual));
}

TEST(XlsLoad, RefusesAnEncryptedWorkbook)
{
    const Bytes file = BookBuilder().globalsRecord(0x002F, le16({0, 1, 1})).sheet("S").file();
    EXPECT_TRUE(contains(loadMessage(file), "encrypted"));
}

TEST(XlsLoad, RefusesACompoundFileWithoutAWorkbook)
{
    EXPECT_TRUE(contains(loadMessage(compoundFile({{"WordDocument", Bytes(600, 0)}})), "no Workbook stream"));
}

TEST(XlsLoad, RefusesAWorkbookStreamThatIsNotBiff)
{
    EXPECT_TRUE(contains(loadMessage(compoundFile({{"Workbook", Bytes(5000, 0x41)}})), "BOF"));
}

TEST(XlsLoad, RefusesAWorkbookCutShort)
{
    Bytes stream = BookBuilder().sheet("A").sheet("B").stream();
    Bytes noSheetEnd(stream.begin(), stream.end() - 4);
    EXPECT_TRUE(contains(loadMessage(compoundFile({{"Workbook", noSheetEnd}})), "no end (EOF)"));
    Bytes globalsOnly(stream.begin(), stream.begin() + 300);
    EXPECT_TRUE(contains(loadMessage(compoundFile({{"Workbook", globalsOnly}})), "globals have no end"));
}

TEST(XlsLoad, AFailedLoadKeepsTheBookLoadedBefore)
{
    xls::Book book;
    ASSERT_TRUE(book.load(osPath(bundledTemplate()).c_str()));
    xls::Sheet* sheet = book.getSheet(0);
    ASSERT_NE(nullptr, sheet);
    EXPECT_FALSE(book.loadBuffer("garbage", 7));
    EXPECT_EQ(2, book.sheetCount());
    EXPECT_TRUE(sheet->writeStr(1, 1, L"仍可写"));
    std::vector<unsigned char> out;
    EXPECT_TRUE(book.saveBuffer(out));
}

TEST(XlsSheet, ActiveSheetIsTheTabSelectedWhenSaved)
{
    xls::Book book;
    ASSERT_TRUE(book.load(osPath(dataDir() / "features-gnumeric.xls").c_str()));
    EXPECT_EQ(1, book.activeSheet());
}

TEST(XlsSheet, ActiveSheetOutOfRangeMeansTheFirst)
{
    const Bytes file = BookBuilder().activeTab(7).sheet("A").sheet("B").file();
    xls::Book book;
    ASSERT_TRUE(book.loadBuffer(file.data(), file.size()));
    EXPECT_EQ(0, book.activeSheet());
}

TEST(XlsSheet, GetSheetGivesTheSameSheetEachTime)
{
    xls::Book book;
    ASSERT_TRUE(book.load(osPath(bundledTemplate()).c_str()));
    EXPECT_EQ(book.getSheet(1), book.getSheet(1));
    EXPECT_NE(book.getSheet(0), book.getSheet(1));
}

TEST(XlsSheet, GetSheetRefusesAnIndexWithoutSheet)
{
    xls::Book book;
    EXPECT_EQ(nullptr, book.getSheet(0));
    EXPECT_TRUE(contains(book.errorMessage(), "no workbook is loaded"));
    ASSERT_TRUE(book.load(osPath(bundledTemplate()).c_str()));
    EXPECT_EQ(nullptr, book.getSheet(2));
    EXPECT_TRUE(contains(book.errorMessage(), "no sheet 2")) << book.errorMessage();
    EXPECT_EQ(nullptr, book.getSheet(-1));
}

TEST(XlsSheet, AWorkbookWithSheetsOfEveryKindLoadsAndOnlyItsWorksheetsCanBeWritten)
{
    const Bytes wsBoolDialog = le16({0x04C1 | 0x0010});  // WSBOOL with fDialog
    const Bytes file = BookBuilder()
                           .sheet("Data")
                           .sheet("Chart1", 2, 0x0020)
                           .record(0x1033, {})  // a chart's BEGIN and END
                           .record(0x1034, {})
                           .sheet("Macro1", 1, 0x0040)
                           .record(0x0201, le16({0, 0, 15}))
                           .sheet("Module1", 6, 0x0006)
                           .sheet("Dialog1")
                           .record(0x0081, wsBoolDialog)
                           .file();
    xls::Book book;
    ASSERT_TRUE(book.loadBuffer(file.data(), file.size())) << book.errorMessage();
    EXPECT_EQ(5, book.sheetCount());
    ASSERT_NE(nullptr, book.getSheet(0)) << book.errorMessage();
    const char* kinds[] = {nullptr, "\"Chart1\" is a chart sheet", "\"Macro1\" is an Excel 4.0 macro sheet",
                           "\"Module1\" is a Visual Basic module", "\"Dialog1\" is a dialog sheet"};
    for (int k = 1; k < 5; ++k) {
        EXPECT_EQ(nullptr, book.getSheet(k)) << k;
        EXPECT_TRUE(contains(book.errorMessage(), "sheet " + std::to_string(k) + " " + kinds[k])) << book.errorMessage();
        EXPECT_TRUE(contains(book.errorMessage(), "only worksheets can be written")) << book.errorMessage();
    }
    // Nothing was written, so the workbook saves as it was loaded.
    std::vector<unsigned char> out;
    ASSERT_TRUE(book.saveBuffer(out)) << book.errorMessage();
    EXPECT_TRUE(workbookStream(out) == workbookStream(file));
}

TEST(XlsSheet, ASheetNameOutsideAsciiIsShownWithQuestionMarks)
{
    // BOUNDSHEET8 of a chart sheet named 图表1 in UTF-16, as Excel writes Chinese names.
    Bytes file = BookBuilder().sheet("Data").sheet("XXX1", 2, 0x0020).file();
    Bytes stream = workbookStream(file);
    for (const Rec& r : records(stream)) {
        if (r.type != 0x0085 || r.data[8] != 'X') continue;
        Bytes data = cat({Bytes(r.data.begin(), r.data.begin() + 6), Bytes{3, 1}, le16({0x56FE, 0x8868, '1'})});
        Bytes rebuilt(stream.begin(), stream.begin() + r.pos);
        Bytes header = le16({0x0085, static_cast<unsigned>(data.size())});
        rebuilt.insert(rebuilt.end(), header.begin(), header.end());
        rebuilt.insert(rebuilt.end(), data.begin(), data.end());
        rebuilt.insert(rebuilt.end(), stream.begin() + r.pos + 4 + r.data.size(), stream.end());
        // The name grew by two bytes: the sheets' substreams move with it.
        for (const Rec& b : records(rebuilt))
            if (b.type == 0x0085) setU32(rebuilt, b.pos + 4, u32at(b.data, 0) + 2);
        file = compoundFile({{"Workbook", rebuilt}});
        break;
    }
    xls::Book book;
    ASSERT_TRUE(book.loadBuffer(file.data(), file.size())) << book.errorMessage();
    EXPECT_EQ(nullptr, book.getSheet(1));
    EXPECT_TRUE(contains(book.errorMessage(), "sheet 1 \"??1\" is a chart sheet")) << book.errorMessage();
}

TEST(XlsSheet, GetSheetRefusesASheetWithDamagedCells)
{
    // A MULBLANK running past column IV.
    const Bytes file = BookBuilder().sheet("S").record(0x00BE, le16({0, 250, 15, 15, 15, 15, 15, 15, 15, 15, 257})).file();
    xls::Book book;
    ASSERT_TRUE(book.loadBuffer(file.data(), file.size()));
    EXPECT_EQ(nullptr, book.getSheet(0));
    EXPECT_TRUE(contains(book.errorMessage(), "column IV")) << book.errorMessage();
}

TEST(XlsSheet, WriteStrRefusesCellsOutsideTheSheet)
{
    xls::Book book;
    ASSERT_TRUE(book.load(osPath(bundledTemplate()).c_str()));
    xls::Sheet* sheet = book.getSheet(0);
    EXPECT_FALSE(sheet->writeStr(65536, 0, L"x"));
    EXPECT_TRUE(contains(book.errorMessage(), "row 65536 is outside the sheet")) << book.errorMessage();
    EXPECT_FALSE(sheet->writeStr(0, 256, L"x"));
    EXPECT_TRUE(contains(book.errorMessage(), "column 256 is outside the sheet")) << book.errorMessage();
    EXPECT_FALSE(sheet->writeStr(-1, 0, L"x"));
    EXPECT_FALSE(sheet->writeStr(0, -1, L"x"));
    EXPECT_TRUE(sheet->writeStr(65535, 255, L"x"));
    EXPECT_STREQ("", book.errorMessage()) << "a successful call clears the message";
}

TEST(XlsSheet, WriteStrRefusesNullTextAndTakesEmptyText)
{
    xls::Book book;
    ASSERT_TRUE(book.load(osPath(bundledTemplate()).c_str()));
    xls::Sheet* sheet = book.getSheet(0);
    EXPECT_FALSE(sheet->writeStr(1, 1, nullptr));
    EXPECT_TRUE(contains(book.errorMessage(), "NULL"));
    EXPECT_TRUE(sheet->writeStr(1, 1, L""));
}

TEST(XlsSheet, WriteStrRefusesTextLongerThanACellHolds)
{
    xls::Book book;
    ASSERT_TRUE(book.load(osPath(bundledTemplate()).c_str()));
    xls::Sheet* sheet = book.getSheet(0);
    EXPECT_TRUE(sheet->writeStr(1, 1, std::wstring(32767, L'长').c_str()));
    EXPECT_FALSE(sheet->writeStr(1, 1, std::wstring(32768, L'长').c_str()));
    EXPECT_TRUE(contains(book.errorMessage(), "32767")) << book.errorMessage();
    // A character above U+FFFF takes two UTF-16 units (one wchar_t on Linux, two on Windows).
    std::wstring faces;
    for (int i = 0; i < 16384; ++i) faces += L"\U0001F600";
    EXPECT_FALSE(sheet->writeStr(1, 1, faces.c_str()));
}
