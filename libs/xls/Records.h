#ifndef VORNADEL_XLS_RECORDS_H
#define VORNADEL_XLS_RECORDS_H

// BIFF8 records of the Workbook stream: ids, the split of the stream into records, and writing a
// record. A record is `u16 type, u16 size, data`; data holds at most 8224 bytes, longer contents
// go on in CONTINUE records.

#include "Bytes.h"

namespace xls {

enum RecordType {
    kFormula = 0x0006,
    kBof2 = 0x0009,  // BOF of Excel 2.x; kBof3, kBof4: of Excel 3.0 and 4.0
    kEof = 0x000A,
    kFilePass = 0x002F,
    kContinue = 0x003C,
    kWindow1 = 0x003D,
    kDefColWidth = 0x0055,
    kUncalced = 0x005E,
    kColInfo = 0x007D,
    kWsBool = 0x0081,
    kBoundSheet = 0x0085,
    kMulRk = 0x00BD,
    kMulBlank = 0x00BE,
    kRString = 0x00D6,
    kDbCell = 0x00D7,
    kXf = 0x00E0,
    kSst = 0x00FC,
    kLabelSst = 0x00FD,
    kExtSst = 0x00FF,
    kDimensions = 0x0200,
    kBlank = 0x0201,
    kNumber = 0x0203,
    kLabel = 0x0204,
    kBoolErr = 0x0205,
    kFormula3 = 0x0206,  // FORMULA under its Excel 3.0 id (kFormula4: 4.0), which some writers still use
    kString = 0x0207,
    kRow = 0x0208,
    kBof3 = 0x0209,
    kIndex = 0x020B,
    kArray = 0x0221,
    kDefaultRowHeight = 0x0225,
    kTable = 0x0236,
    kWindow2 = 0x023E,
    kRk = 0x027E,
    kFormula4 = 0x0406,
    kBof4 = 0x0409,
    kShrFmla = 0x04BC,
    kBof = 0x0809
};

enum {
    kRecordHeaderSize = 4,
    kMaxRecordData = 8224,  // MS-XLS 2.1.4: longer contents continue in CONTINUE records
    kBiff8Version = 0x0600,
    kBiff5Version = 0x0500,
    kBofGlobals = 0x0005,  // BOF.dt: what the substream holds
    kBofVbaModule = 0x0006,
    kBofWorksheet = 0x0010,  // also a dialog sheet
    kBofChart = 0x0020,
    kBofMacroSheet = 0x0040
};

// One record of the loaded stream: its data starts at pos + 4 in that stream.
struct RecordRef {
    u16 type;
    u16 size;
    u32 pos;
};

// Splits stream into records. Bytes after the last whole record (zero padding from some
// writers, or a record cut short) are left for the caller: *end is where they start.
void splitRecords(const Bytes& stream, std::vector<RecordRef>& records, size_t* end);

// Appends a record with the given data to out.
void appendRecord(Bytes& out, u32 type, const u8* data, size_t size);

}  // namespace xls

#endif
