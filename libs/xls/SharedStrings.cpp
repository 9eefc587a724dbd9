#include "SharedStrings.h"

#include "Records.h"

namespace xls {
namespace {

enum { kHighByte = 0x01, kExtSt = 0x04, kRichSt = 0x08 };

bool isHighSurrogate(u32 unit) { return unit >= 0xD800 && unit <= 0xDBFF; }

// EXTSST.dsst, strings per bucket of the index, as Excel sizes it for a table of count strings.
u32 stringsPerBucket(u32 count) { return count / 128 + 1 < 8 ? 8 : count / 128 + 1; }

// Reads through the records of the table. Fixed parts of a string (its header, formatting runs,
// phonetic data) run on across a record boundary as they are; a run of characters that goes on in
// the next record starts there with a new flags byte that gives the width of what follows.
class Cursor {
public:
    explicit Cursor(const std::vector<Bytes>& chain) : chain_(chain), record(0), offset(0) {}

    // Steps over exhausted records; false at the end of the table.
    bool settle()
    {
        while (record < chain_.size() && offset >= chain_[record].size()) {
            ++record;
            offset = 0;
        }
        return record < chain_.size();
    }

    bool raw(u8* to, size_t n)
    {
        for (size_t i = 0; i < n; ++i) {
            if (!settle()) return false;
            if (to != NULL) to[i] = chain_[record][offset];
            ++offset;
        }
        return true;
    }

    bool skip(u32 n)
    {
        while (n > 0) {
            if (!settle()) return false;
            size_t have = chain_[record].size() - offset;
            size_t take = have < n ? have : n;
            offset += take;
            n -= static_cast<u32>(take);
        }
        return true;
    }

    // Reads count characters of the given width; plain strings also collect them in units.
    bool characters(u32 count, u32 width, std::vector<u16>* units)
    {
        while (count > 0) {
            if (offset >= chain_[record].size()) {
                ++record;
                offset = 0;
                if (record >= chain_.size() || chain_[record].empty()) return false;
                width = (chain_[record][0] & kHighByte) ? 2 : 1;
                offset = 1;
                continue;
            }
            const Bytes& data = chain_[record];
            size_t take = (data.size() - offset) / width;
            if (take > count) take = count;
            if (take == 0) return false;  // half a UTF-16 unit at the end of a record
            if (units != NULL) {
                for (size_t i = 0; i < take; ++i)
                    units->push_back(width == 2 ? getU16(&data[offset + 2 * i]) : data[offset + i]);
            }
            offset += take * width;
            count -= static_cast<u32>(take);
        }
        return true;
    }

    const std::vector<Bytes>& chain_;
    size_t record;
    size_t offset;
};

void cutAt(std::vector<Bytes>& chain, size_t record, size_t offset)
{
    chain[record].resize(offset);
    chain.resize(record + 1);
    if (record > 0 && offset == 0) chain.pop_back();
}

}  // namespace

SharedStrings::SharedStrings() : loadedCount_(0), loadedTotal_(0), totalDelta_(0), cut_(false) {}

std::string SharedStrings::key(const u16* units, size_t length)
{
    std::string k(2 * length, '\0');
    for (size_t i = 0; i < length; ++i) {
        k[2 * i] = static_cast<char>(units[i] & 0xFF);
        k[2 * i + 1] = static_cast<char>(units[i] >> 8);
    }
    return k;
}

void SharedStrings::load(const std::vector<const u8*>& data, const std::vector<size_t>& sizes)
{
    chain_.resize(data.size());
    for (size_t i = 0; i < data.size(); ++i) chain_[i].assign(data[i], data[i] + sizes[i]);
    if (chain_.empty()) return;
    if (chain_[0].size() < 8) {
        chain_.resize(1);
        chain_[0].assign(8, 0);
        cut_ = true;
        return;
    }
    loadedTotal_ = getU32(&chain_[0][0]);
    const u32 unique = getU32(&chain_[0][4]);
    Cursor at(chain_);
    at.offset = 8;
    std::vector<u16> units;
    while (loadedCount_ < unique && at.settle()) {
        const size_t startRecord = at.record, startOffset = at.offset;
        u8 header[3], count[4];
        u32 runs = 0, phonetic = 0;
        bool ok = at.raw(header, 3);
        const u32 flags = header[2];
        if (ok && (flags & kRichSt)) {
            ok = at.raw(count, 2);
            runs = getU16(count);
        }
        if (ok && (flags & kExtSt)) {
            ok = at.raw(count, 4);
            phonetic = getU32(count);
        }
        const bool plain = (flags & (kRichSt | kExtSt)) == 0;
        units.clear();
        ok = ok && at.characters(getU16(header), (flags & kHighByte) ? 2 : 1, plain ? &units : NULL) &&
             at.skip(4 * runs) && at.skip(phonetic);
        if (!ok) {
            at.record = startRecord;
            at.offset = startOffset;
            break;
        }
        loadedRecord_.push_back(static_cast<u32>(startRecord));
        loadedOffset_.push_back(static_cast<u32>(startOffset));
        if (plain) index_.insert(std::make_pair(key(units.empty() ? NULL : &units[0], units.size()), loadedCount_));
        ++loadedCount_;
    }
    if (at.settle()) {
        cutAt(chain_, at.record, at.offset);
        cut_ = true;
    }
}

bool SharedStrings::readString(const std::vector<Bytes>& records, size_t record, size_t offset,
                               std::vector<u16>& units)
{
    Cursor at(records);
    at.record = record;
    at.offset = offset;
    u8 header[3], count[4];
    if (!at.raw(header, 3)) return false;
    const u32 flags = header[2];
    if ((flags & kRichSt) && !at.raw(count, 2)) return false;
    if ((flags & kExtSt) && !at.raw(count, 4)) return false;
    units.clear();
    return at.characters(getU16(header), (flags & kHighByte) ? 2 : 1, &units);
}

bool SharedStrings::text(u32 index, std::vector<u16>& units) const
{
    if (index < loadedCount_) return readString(chain_, loadedRecord_[index], loadedOffset_[index], units);
    if (index >= count()) return false;
    const size_t k = index - loadedCount_;
    const size_t end = k + 1 < newStart_.size() ? newStart_[k + 1] : newUnits_.size();
    units.assign(newUnits_.begin() + static_cast<std::ptrdiff_t>(newStart_[k]),
                 newUnits_.begin() + static_cast<std::ptrdiff_t>(end));
    return true;
}

// Room is made before the string is indexed, so that running out of memory leaves the table as
// it was.
u32 SharedStrings::add(const u16* units, size_t length)
{
    const std::string k = key(units, length);
    std::map<std::string, u32>::const_iterator known = index_.find(k);
    if (known != index_.end()) return known->second;
    if (newStart_.size() == newStart_.capacity()) newStart_.reserve(2 * newStart_.size() + 64);
    if (newUnits_.capacity() - newUnits_.size() < length) newUnits_.reserve(2 * newUnits_.size() + length);
    const u32 index = count();
    index_.insert(std::make_pair(k, index));
    newStart_.push_back(static_cast<u32>(newUnits_.size()));
    newUnits_.insert(newUnits_.end(), units, units + length);
    return index;
}

// A string's header (cch, flags) and its first character always share a record, a UTF-16 unit
// and a surrogate pair are never cut, and each record that carries on a string's characters
// starts with the flags byte giving their width.
void SharedStrings::write(Bytes& out, SstLayout& layout) const
{
    const u32 strings = count();
    const size_t base = out.size();
    layout.stringsPerBucket = stringsPerBucket(strings);
    layout.stringOffset.clear();
    layout.recordOffset.clear();

    long total = static_cast<long>(loadedTotal_) + totalDelta_;
    if (total < 0) total = 0;
    const std::vector<Bytes> fresh(1, Bytes(8, 0));  // SST data of a workbook that had none
    const std::vector<Bytes>* chain = chain_.empty() ? &fresh : &chain_;

    std::vector<size_t> recordStart;
    for (size_t r = 0; r < chain->size(); ++r) {
        recordStart.push_back(out.size());
        appendRecord(out, r == 0 ? kSst : kContinue, (*chain)[r].empty() ? NULL : &(*chain)[r][0], (*chain)[r].size());
    }
    putU32(&out[base + 4], static_cast<u32>(total));
    putU32(&out[base + 8], strings);
    for (u32 k = 0; k < loadedCount_; k += layout.stringsPerBucket) {
        size_t record = recordStart[loadedRecord_[k]];
        layout.stringOffset.push_back(static_cast<u32>(record + kRecordHeaderSize + loadedOffset_[k] - base));
        layout.recordOffset.push_back(static_cast<u32>(record - base));
    }

    // The last record stays open for the appended strings.
    size_t open = recordStart.back();
#define XLS_ROOM() (kMaxRecordData - (out.size() - open - kRecordHeaderSize))
#define XLS_CLOSE() putU16(&out[open + 2], static_cast<u32>(out.size() - open - kRecordHeaderSize))
#define XLS_OPEN_CONTINUE() \
    do {                    \
        XLS_CLOSE();        \
        open = out.size();  \
        appendU16(out, kContinue); \
        appendU16(out, 0);  \
    } while (0)
    for (size_t s = 0; s < newStart_.size(); ++s) {
        const u16* units = newUnits_.empty() ? NULL : &newUnits_[newStart_[s]];
        const size_t length = (s + 1 < newStart_.size() ? newStart_[s + 1] : newUnits_.size()) - newStart_[s];
        u32 width = 1;
        for (size_t i = 0; i < length && width == 1; ++i)
            if (units[i] > 0xFF) width = 2;
        size_t firstCharacter = length == 0 ? 0 : (length > 1 && isHighSurrogate(units[0]) ? 2 : 1) * width;
        if (out.size() - open - kRecordHeaderSize > kMaxRecordData || XLS_ROOM() < 3 + firstCharacter)
            XLS_OPEN_CONTINUE();
        if ((loadedCount_ + s) % layout.stringsPerBucket == 0) {
            layout.stringOffset.push_back(static_cast<u32>(out.size() - base));
            layout.recordOffset.push_back(static_cast<u32>(open - base));
        }
        appendU16(out, static_cast<u32>(length));
        appendU8(out, width == 2 ? kHighByte : 0);
        size_t done = 0;
        while (done < length) {
            size_t take = XLS_ROOM() / width;
            if (take >= length - done) {
                take = length - done;
            } else if (take > 0 && isHighSurrogate(units[done + take - 1])) {
                --take;
            }
            for (size_t i = 0; i < take; ++i) {
                if (width == 2)
                    appendU16(out, units[done + i]);
                else
                    appendU8(out, units[done + i]);
            }
            done += take;
            if (done < length) {
                XLS_OPEN_CONTINUE();
                appendU8(out, width == 2 ? kHighByte : 0);
            }
        }
    }
    XLS_CLOSE();
#undef XLS_OPEN_CONTINUE
#undef XLS_CLOSE
#undef XLS_ROOM
}

size_t SharedStrings::extSstSize(u32 count)
{
    const u32 perBucket = stringsPerBucket(count);
    return 2 + 8 * ((count + perBucket - 1) / perBucket);
}

void SharedStrings::extSst(const SstLayout& layout, u32 sstPos, Bytes& data)
{
    data.clear();
    appendU16(data, layout.stringsPerBucket);
    for (size_t k = 0; k < layout.stringOffset.size(); ++k) {
        appendU32(data, sstPos + layout.stringOffset[k]);
        appendU16(data, layout.stringOffset[k] - layout.recordOffset[k]);
        appendU16(data, 0);
    }
}

}  // namespace xls
