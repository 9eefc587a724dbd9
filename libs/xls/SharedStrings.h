#ifndef VORNADEL_XLS_SHAREDSTRINGS_H
#define VORNADEL_XLS_SHAREDSTRINGS_H

// The shared string table (SST with its CONTINUE records) and its index (EXTSST).
// The loaded table is kept byte for byte; new strings are appended after it. Strings are
// UTF-16 code units throughout.

#include "Bytes.h"

#include <map>
#include <string>

namespace xls {

// Where the strings that EXTSST points at ended up in written SST records.
struct SstLayout {
    u32 stringsPerBucket;           // EXTSST.dsst
    std::vector<u32> stringOffset;  // per bucket: first string's offset from the SST record's header
    std::vector<u32> recordOffset;  // per bucket: offset of the record holding that string, same origin
};

class SharedStrings {
public:
    SharedStrings();

    // Takes the data of the SST record and of its CONTINUE records, in order. Never fails: a
    // table cut short or carrying bytes after its last string is cut after its last whole string,
    // so that strings appended later are read where they are written.
    void load(const std::vector<const u8*>& data, const std::vector<size_t>& sizes);

    // True when the workbook has a table to write: it had one, or strings were added.
    bool present() const { return !chain_.empty() || !newStart_.empty(); }
    // True when strings were added since loading.
    bool grown() const { return !newStart_.empty(); }
    // True when the table written differs from the one loaded: strings were added, or a damaged
    // end was cut off.
    bool changed() const { return grown() || cut_; }
    // Number of strings in the table (cstUnique).
    u32 count() const { return loadedCount_ + static_cast<u32>(newStart_.size()); }

    // Index of the string; a new one is appended unless an identical string without formatting
    // runs or phonetic data is already there.
    u32 add(const u16* units, size_t length);

    // The text of string index, formatting runs and phonetic data left out. False for an index
    // beyond the table.
    bool text(u32 index, std::vector<u16>& units) const;

    // Reads the string (XLUnicodeString: cch, flags, runs and phonetic sizes, characters) that
    // starts at offset in records[record], whose characters may go on in the records after it (a
    // record that carries on characters starts with a flags byte). units receives the
    // characters; false when the records end first.
    static bool readString(const std::vector<Bytes>& records, size_t record, size_t offset, std::vector<u16>& units);

    // Keeps cstTotal (the number of LABELSST cells in the workbook) right: delta cells were added.
    void countCells(long delta) { totalDelta_ += delta; }

    // Appends the SST record and its CONTINUE records to out, each at most 8224 bytes of data.
    void write(Bytes& out, SstLayout& layout) const;

    // Data of the EXTSST record for a table laid out as layout whose SST header sits at sstPos
    // in the Workbook stream.
    static void extSst(const SstLayout& layout, u32 sstPos, Bytes& data);
    // Size of that data for a table of count strings.
    static size_t extSstSize(u32 count);

private:
    static std::string key(const u16* units, size_t length);

    std::vector<Bytes> chain_;      // data of SST and its CONTINUEs as loaded (cut as described)
    u32 loadedCount_;               // complete strings in chain_
    u32 loadedTotal_;               // cstTotal as loaded
    long totalDelta_;
    bool cut_;
    std::vector<u32> loadedRecord_;  // per loaded string: record of chain_ where it starts
    std::vector<u32> loadedOffset_;  // ... and its offset in that record's data
    std::vector<u16> newUnits_;      // appended strings, one after the other
    std::vector<u32> newStart_;      // start of each appended string in newUnits_
    std::map<std::string, u32> index_;  // plain strings by their UTF-16LE bytes
};

}  // namespace xls

#endif
