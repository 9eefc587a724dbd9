#include "CompoundFile.h"

#include <stdio.h>

namespace xls {
namespace {

const u32 kFreeSect = 0xFFFFFFFFu;
const u32 kEndOfChain = 0xFFFFFFFEu;
const u32 kFatSect = 0xFFFFFFFDu;
const u32 kDifSect = 0xFFFFFFFCu;
const u32 kNoStream = 0xFFFFFFFFu;
const size_t kHeaderDifatCount = 109;
const size_t kMiniSectorSize = 64;
const size_t kOutSectorSize = 512;
const size_t kOutIdsPerSector = kOutSectorSize / 4;
const u8 kSignature[8] = {0xD0, 0xCF, 0x11, 0xE0, 0xA1, 0xB1, 0x1A, 0xE1};

std::string number(unsigned long v)
{
    char text[32];
    sprintf(text, "%lu", v);
    return text;
}

size_t ceilDiv(size_t a, size_t b) { return a / b + (a % b != 0 ? 1 : 0); }

u8 entryType(const u8* raw) { return raw[0x42]; }

// The stream's name as ASCII for messages; other characters become '?'.
std::string entryName(const u8* raw)
{
    std::string name;
    size_t bytes = getU16(raw + 0x40);
    if (bytes > 64) bytes = 64;
    for (size_t i = 0; i + 1 < bytes; i += 2) {
        u16 unit = getU16(raw + i);
        if (unit == 0) break;
        name += (unit >= 0x20 && unit < 0x7F) ? static_cast<char>(unit) : '?';
    }
    return name;
}

// Walks sector chains through a FAT or MiniFAT. Every link must name a sector that exists, and a
// chain that meets one of its own sectors again loops: both are refused, so a walk ends after at
// most `limit` steps whatever the file holds.
class ChainWalker {
public:
    ChainWalker(const std::vector<u32>& table, size_t limit)
        : table_(table), limit_(limit < table.size() ? limit : table.size()), stamps_(limit_, 0), stamp_(0),
          claimed_(limit_, 0)
    {
    }

    // wanted > 0: exactly that many sectors (whatever follows them is not ours to judge);
    // wanted == 0: every sector up to ENDOFCHAIN.
    bool follow(u32 start, size_t wanted, const std::string& what, std::vector<u32>& ids, std::string& error)
    {
        ids.clear();
        if (wanted > limit_) {
            error = what + " is larger than the file";
            return false;
        }
        ++stamp_;
        u32 id = start;
        for (;;) {
            if (wanted != 0 && ids.size() == wanted) return true;
            if (id == kEndOfChain && wanted == 0) return true;
            if (id == kEndOfChain) {
                error = what + " ends before its stated size";
                return false;
            }
            if (id >= limit_) {
                error = what + " refers to sector " + number(id) + ", which is not in the file";
                return false;
            }
            if (stamps_[id] == stamp_) {
                error = what + " loops back to sector " + number(id);
                return false;
            }
            stamps_[id] = stamp_;
            ids.push_back(id);
            id = table_[id];
        }
    }

    // Marks the sectors of a stream as its own. False when one belongs to another stream already:
    // a small file could otherwise claim its contents many times over, in memory.
    bool claim(const std::vector<u32>& ids, const std::string& what, std::string& error)
    {
        for (size_t i = 0; i < ids.size(); ++i) {
            if (claimed_[ids[i]]) {
                error = what + " shares sector " + number(ids[i]) + " with another stream";
                return false;
            }
        }
        for (size_t i = 0; i < ids.size(); ++i) claimed_[ids[i]] = 1;
        return true;
    }

private:
    const std::vector<u32>& table_;
    size_t limit_;
    std::vector<u32> stamps_;
    u32 stamp_;
    std::vector<char> claimed_;
};

// The sectors of the loaded file; a last sector cut short by the end of the file reads as if
// padded with zeros (some writers leave the file short of a whole sector).
class Sectors {
public:
    Sectors(const u8* data, size_t size, size_t sectorSize)
        : data_(data), size_(size), sectorSize_(sectorSize),
          count_(size > sectorSize ? ceilDiv(size - sectorSize, sectorSize) : 0)
    {
    }

    size_t count() const { return count_; }
    size_t size() const { return sectorSize_; }

    void copy(u32 id, u8* to, size_t max) const
    {
        size_t at = (static_cast<size_t>(id) + 1) * sectorSize_;
        size_t n = sectorSize_ < max ? sectorSize_ : max;
        size_t have = at < size_ ? size_ - at : 0;
        if (have > n) have = n;
        if (have > 0) memcpy(to, data_ + at, have);
        if (have < n) memset(to + have, 0, n - have);
    }

private:
    const u8* data_;
    size_t size_;
    size_t sectorSize_;
    size_t count_;
};

void readU32Table(const Sectors& sectors, const std::vector<u32>& ids, std::vector<u32>& table)
{
    size_t per = sectors.size() / 4;
    table.assign(ids.size() * per, 0);
    Bytes buffer(sectors.size());
    for (size_t i = 0; i < ids.size(); ++i) {
        sectors.copy(ids[i], &buffer[0], buffer.size());
        for (size_t j = 0; j < per; ++j) table[i * per + j] = getU32(&buffer[j * 4]);
    }
}

void setChain(std::vector<u32>& table, size_t first, size_t count)
{
    for (size_t i = 0; i < count; ++i)
        table[first + i] = i + 1 < count ? static_cast<u32>(first + i + 1) : kEndOfChain;
}

// Reads the contents of a stream entry from its chain of sectors or of mini sectors.
bool readStream(const u8* raw, const Sectors& sectors, const Bytes& miniStream, ChainWalker& fatWalker,
                ChainWalker& miniWalker, Bytes& out, std::string& error)
{
    const std::string what = "stream \"" + entryName(raw) + "\"";
    const size_t size = getU32(raw + 0x78);
    std::vector<u32> ids;
    if (sectors.size() == 4096 && getU32(raw + 0x7C) != 0) {  // version 4 keeps 64-bit sizes
        error = what + " is larger than the file";
        return false;
    }
    if (size >= kMiniStreamCutoff) {
        if (!fatWalker.follow(getU32(raw + 0x74), ceilDiv(size, sectors.size()), what, ids, error) ||
            !fatWalker.claim(ids, what, error))
            return false;
        out.resize(ids.size() * sectors.size());
        for (size_t k = 0; k < ids.size(); ++k) sectors.copy(ids[k], &out[k * sectors.size()], sectors.size());
    } else if (size > 0) {
        if (!miniWalker.follow(getU32(raw + 0x74), ceilDiv(size, kMiniSectorSize), what, ids, error) ||
            !miniWalker.claim(ids, what, error))
            return false;
        out.assign(ids.size() * kMiniSectorSize, 0);
        for (size_t k = 0; k < ids.size(); ++k) {
            const size_t at = ids[k] * kMiniSectorSize;
            const size_t n = miniStream.size() - at < kMiniSectorSize ? miniStream.size() - at : kMiniSectorSize;
            memcpy(&out[k * kMiniSectorSize], &miniStream[at], n);
        }
    }
    out.resize(size);
    return true;
}

}  // namespace

bool CompoundFile::read(const u8* data, size_t size, std::string& error)
{
    entries.clear();
    if (size < 512 || memcmp(data, kSignature, sizeof kSignature) != 0) {
        error = "not an Excel 97-2003 workbook: the file is not a compound file (no OLE2 signature)";
        return false;
    }
    u32 major = getU16(data + 0x1A);
    u32 shift = getU16(data + 0x1E);
    if (getU16(data + 0x1C) != 0xFFFE) {
        error = "damaged compound file: bad byte order mark";
        return false;
    }
    if (!((major == 3 && shift == 9) || (major == 4 && shift == 12))) {
        error = "unsupported compound file: version " + number(major) + " with sector shift " + number(shift);
        return false;
    }
    if (getU16(data + 0x20) != 6 || getU32(data + 0x38) != kMiniStreamCutoff) {
        error = "unsupported compound file: mini sectors other than 64 bytes below 4096";
        return false;
    }
    const size_t sectorSize = static_cast<size_t>(1) << shift;
    if (size < sectorSize) {
        error = "truncated compound file: shorter than its header";
        return false;
    }
    Sectors sectors(data, size, sectorSize);
    const size_t idsPerSector = sectorSize / 4;

    // FAT sector ids: 109 in the header, the rest in the DIFAT chain.
    u32 fatCount = getU32(data + 0x2C);
    if (fatCount == 0 || fatCount > sectors.count()) {
        error = "damaged compound file: " + number(fatCount) + " FAT sectors in a file of " +
                number(sectors.count()) + " sectors";
        return false;
    }
    std::vector<u32> fatIds;
    for (size_t i = 0; i < kHeaderDifatCount && fatIds.size() < fatCount; ++i)
        fatIds.push_back(getU32(data + 0x4C + 4 * i));
    if (fatIds.size() < fatCount) {
        std::vector<char> seen(sectors.count(), 0);
        Bytes buffer(sectorSize);
        u32 difat = getU32(data + 0x44);
        while (fatIds.size() < fatCount) {
            if (difat >= sectors.count()) {
                error = "damaged compound file: the DIFAT ends before listing all FAT sectors";
                return false;
            }
            if (seen[difat]) {
                error = "damaged compound file: the DIFAT chain loops";
                return false;
            }
            seen[difat] = 1;
            sectors.copy(difat, &buffer[0], sectorSize);
            for (size_t j = 0; j + 1 < idsPerSector && fatIds.size() < fatCount; ++j)
                fatIds.push_back(getU32(&buffer[j * 4]));
            difat = getU32(&buffer[sectorSize - 4]);
        }
    }
    for (size_t i = 0; i < fatIds.size(); ++i) {
        if (fatIds[i] >= sectors.count()) {
            error = "damaged compound file: FAT sector " + number(fatIds[i]) + " is not in the file";
            return false;
        }
    }
    std::vector<u32> fat;
    readU32Table(sectors, fatIds, fat);
    ChainWalker fatWalker(fat, sectors.count());

    // Directory.
    std::vector<u32> ids;
    if (!fatWalker.follow(getU32(data + 0x30), 0, "the directory chain", ids, error)) return false;
    size_t entryCount = ids.size() * (sectorSize / kDirEntrySize);
    if (entryCount == 0) {
        error = "damaged compound file: empty directory";
        return false;
    }
    std::vector<DirEntry> loaded(entryCount);
    {
        Bytes buffer(sectorSize);
        for (size_t i = 0; i < ids.size(); ++i) {
            sectors.copy(ids[i], &buffer[0], sectorSize);
            for (size_t j = 0; j < sectorSize / kDirEntrySize; ++j)
                memcpy(loaded[i * (sectorSize / kDirEntrySize) + j].raw, &buffer[j * kDirEntrySize], kDirEntrySize);
        }
    }
    if (entryType(loaded[0].raw) != kEntryRoot) {
        error = "damaged compound file: the first directory entry is not the root storage";
        return false;
    }

    // Which entries the tree reaches: the root, its children, and the children of each storage.
    std::vector<char> reached(entryCount, 0);
    {
        reached[0] = 1;
        std::vector<u32> stack;
        if (getU32(loaded[0].raw + 0x4C) != kNoStream) stack.push_back(getU32(loaded[0].raw + 0x4C));
        while (!stack.empty()) {
            u32 id = stack.back();
            stack.pop_back();
            if (id >= entryCount) {
                error = "damaged compound file: the directory refers to entry " + number(id) + ", which does not exist";
                return false;
            }
            if (reached[id]) {
                error = "damaged compound file: the directory tree loops";
                return false;
            }
            reached[id] = 1;
            const u8* raw = loaded[id].raw;
            if (getU32(raw + 0x44) != kNoStream) stack.push_back(getU32(raw + 0x44));
            if (getU32(raw + 0x48) != kNoStream) stack.push_back(getU32(raw + 0x48));
            if (entryType(raw) == kEntryStorage && getU32(raw + 0x4C) != kNoStream)
                stack.push_back(getU32(raw + 0x4C));
        }
    }

    // Mini stream (the root entry's contents) and MiniFAT.
    Bytes miniStream;
    std::vector<u32> miniFat;
    {
        const u8* root = loaded[0].raw;
        if (major == 4 && getU32(root + 0x7C) != 0) {
            error = "damaged compound file: the mini stream is larger than the file";
            return false;
        }
        size_t rootSize = getU32(root + 0x78);
        if (rootSize > 0) {
            if (!fatWalker.follow(getU32(root + 0x74), ceilDiv(rootSize, sectorSize), "the mini stream", ids, error) ||
                !fatWalker.claim(ids, "the mini stream", error))
                return false;
            miniStream.resize(ids.size() * sectorSize);
            for (size_t i = 0; i < ids.size(); ++i) sectors.copy(ids[i], &miniStream[i * sectorSize], sectorSize);
            miniStream.resize(rootSize);
        }
        u32 miniFatStart = getU32(data + 0x3C);
        if (miniFatStart != kEndOfChain && getU32(data + 0x40) != 0) {
            if (!fatWalker.follow(miniFatStart, 0, "the MiniFAT chain", ids, error)) return false;
            readU32Table(sectors, ids, miniFat);
        }
    }
    ChainWalker miniWalker(miniFat, ceilDiv(miniStream.size(), kMiniSectorSize));

    // Stream contents, those the tree reaches first. A stream the tree does not reach is invisible
    // to every reader: if its chain is damaged it is written back empty instead of refusing the file.
    for (int pass = 0; pass < 2; ++pass) {
        for (size_t i = 0; i < entryCount; ++i) {
            const u8* raw = loaded[i].raw;
            if (entryType(raw) != kEntryStream || reached[i] != (pass == 0)) continue;
            if (!readStream(raw, sectors, miniStream, fatWalker, miniWalker, loaded[i].data, error)) {
                if (reached[i]) {
                    error = "damaged compound file: " + error;
                    return false;
                }
                loaded[i].data.clear();
            }
        }
    }
    entries.swap(loaded);
    return true;
}

int CompoundFile::findRootStream(const char* asciiName) const
{
    if (entries.empty()) return -1;
    size_t nameLength = strlen(asciiName);
    std::vector<char> seen(entries.size(), 0);
    std::vector<u32> stack;
    stack.push_back(getU32(entries[0].raw + 0x4C));
    while (!stack.empty()) {
        u32 id = stack.back();
        stack.pop_back();
        if (id >= entries.size() || seen[id]) continue;
        seen[id] = 1;
        const u8* raw = entries[id].raw;
        stack.push_back(getU32(raw + 0x44));
        stack.push_back(getU32(raw + 0x48));
        if (entryType(raw) != kEntryStream || getU16(raw + 0x40) != 2 * (nameLength + 1)) continue;
        bool same = true;
        for (size_t k = 0; k < nameLength && same; ++k) {
            u32 unit = getU16(raw + 2 * k);
            u32 want = static_cast<u8>(asciiName[k]);
            if (unit >= 'a' && unit <= 'z') unit -= 'a' - 'A';
            if (want >= 'a' && want <= 'z') want -= 'a' - 'A';
            same = unit == want;
        }
        if (same) return static_cast<int>(id);
    }
    return -1;
}

// Layout: header | every large stream, each contiguous | mini stream | MiniFAT | directory | FAT |
// DIFAT. Each chain is exactly as long as its contents need: xlrd refuses a longer one.
void CompoundFile::write(Bytes& out, int replaceId, const Bytes& replacement) const
{
    const size_t n = entries.size();
    std::vector<const Bytes*> contents(n, static_cast<const Bytes*>(NULL));
    std::vector<u32> starts(n, kEndOfChain);
    std::vector<char> inMini(n, 0);

    size_t miniSectors = 0;
    std::vector<u32> miniFat;
    size_t next = 0;
    for (size_t i = 0; i < n; ++i) {
        if (entryType(entries[i].raw) != kEntryStream) continue;
        contents[i] = static_cast<int>(i) == replaceId ? &replacement : &entries[i].data;
        size_t size = contents[i]->size();
        if (size == 0) continue;
        if (size < kMiniStreamCutoff) {
            size_t count = ceilDiv(size, kMiniSectorSize);
            starts[i] = static_cast<u32>(miniSectors);
            inMini[i] = 1;
            miniFat.resize(miniSectors + count);
            setChain(miniFat, miniSectors, count);
            miniSectors += count;
        } else {
            starts[i] = static_cast<u32>(next);
            next += ceilDiv(size, kOutSectorSize);
        }
    }
    const size_t miniBytes = miniSectors * kMiniSectorSize;
    const size_t miniStreamStart = next;
    const size_t miniStreamSectors = ceilDiv(miniBytes, kOutSectorSize);
    next += miniStreamSectors;
    const size_t miniFatStart = next;
    const size_t miniFatSectors = ceilDiv(miniFat.size() * 4, kOutSectorSize);
    next += miniFatSectors;
    const size_t dirEntries = n < 4 ? 4 : ceilDiv(n, 4) * 4;
    const size_t dirStart = next;
    const size_t dirSectors = dirEntries / 4;
    next += dirSectors;
    const size_t dataSectors = next;

    // The FAT covers itself and the DIFAT: grow both until they stop changing.
    size_t fatSectors = 0, difatSectors = 0;
    for (;;) {
        size_t f = ceilDiv(dataSectors + fatSectors + difatSectors, kOutIdsPerSector);
        size_t d = f <= kHeaderDifatCount ? 0 : ceilDiv(f - kHeaderDifatCount, kOutIdsPerSector - 1);
        if (f == fatSectors && d == difatSectors) break;
        fatSectors = f;
        difatSectors = d;
    }
    const size_t fatStart = dataSectors;
    const size_t difatStart = fatStart + fatSectors;
    const size_t total = difatStart + difatSectors;

    std::vector<u32> fat(fatSectors * kOutIdsPerSector, kFreeSect);
    for (size_t i = 0; i < n; ++i)
        if (contents[i] != NULL && !inMini[i] && contents[i]->size() > 0)
            setChain(fat, starts[i], ceilDiv(contents[i]->size(), kOutSectorSize));
    setChain(fat, miniStreamStart, miniStreamSectors);
    setChain(fat, miniFatStart, miniFatSectors);
    setChain(fat, dirStart, dirSectors);
    for (size_t i = 0; i < fatSectors; ++i) fat[fatStart + i] = kFatSect;
    for (size_t i = 0; i < difatSectors; ++i) fat[difatStart + i] = kDifSect;

    out.assign((total + 1) * kOutSectorSize, 0);
    u8* file = &out[0];
    u8* h = file;
    memcpy(h, kSignature, sizeof kSignature);
    putU16(h + 0x18, 0x003E);
    putU16(h + 0x1A, 3);
    putU16(h + 0x1C, 0xFFFE);
    putU16(h + 0x1E, 9);
    putU16(h + 0x20, 6);
    putU32(h + 0x2C, static_cast<u32>(fatSectors));
    putU32(h + 0x30, static_cast<u32>(dirStart));
    putU32(h + 0x38, kMiniStreamCutoff);
    putU32(h + 0x3C, miniFatSectors > 0 ? static_cast<u32>(miniFatStart) : kEndOfChain);
    putU32(h + 0x40, static_cast<u32>(miniFatSectors));
    putU32(h + 0x44, difatSectors > 0 ? static_cast<u32>(difatStart) : kEndOfChain);
    putU32(h + 0x48, static_cast<u32>(difatSectors));
    for (size_t i = 0; i < kHeaderDifatCount; ++i)
        putU32(h + 0x4C + 4 * i, i < fatSectors ? static_cast<u32>(fatStart + i) : kFreeSect);

#define XLS_SECTOR(id) (file + (static_cast<size_t>(id) + 1) * kOutSectorSize)
    for (size_t d = 0; d < difatSectors; ++d) {
        u8* s = XLS_SECTOR(difatStart + d);
        for (size_t j = 0; j + 1 < kOutIdsPerSector; ++j) {
            size_t fatIndex = kHeaderDifatCount + d * (kOutIdsPerSector - 1) + j;
            putU32(s + 4 * j, fatIndex < fatSectors ? static_cast<u32>(fatStart + fatIndex) : kFreeSect);
        }
        putU32(s + kOutSectorSize - 4, d + 1 < difatSectors ? static_cast<u32>(difatStart + d + 1) : kEndOfChain);
    }
    for (size_t i = 0; i < n; ++i) {
        if (contents[i] == NULL || contents[i]->empty()) continue;
        u8* at = inMini[i] ? XLS_SECTOR(miniStreamStart) + starts[i] * kMiniSectorSize : XLS_SECTOR(starts[i]);
        memcpy(at, &(*contents[i])[0], contents[i]->size());
    }
    for (size_t i = 0; i < miniFatSectors * kOutIdsPerSector; ++i)
        putU32(XLS_SECTOR(miniFatStart) + 4 * i, i < miniFat.size() ? miniFat[i] : kFreeSect);
    for (size_t i = 0; i < dirEntries; ++i) {
        u8* e = XLS_SECTOR(dirStart) + i * kDirEntrySize;
        if (i >= n) {
            putU32(e + 0x44, kNoStream);
            putU32(e + 0x48, kNoStream);
            putU32(e + 0x4C, kNoStream);
            continue;
        }
        memcpy(e, entries[i].raw, kDirEntrySize);
        if (i == 0) {
            putU32(e + 0x74, miniSectors > 0 ? static_cast<u32>(miniStreamStart) : kEndOfChain);
            putU32(e + 0x78, static_cast<u32>(miniBytes));
            putU32(e + 0x7C, 0);
        } else if (contents[i] != NULL) {
            putU32(e + 0x74, starts[i]);
            putU32(e + 0x78, static_cast<u32>(contents[i]->size()));
            putU32(e + 0x7C, 0);
        }
    }
    for (size_t i = 0; i < fat.size(); ++i) putU32(XLS_SECTOR(fatStart) + 4 * i, fat[i]);
#undef XLS_SECTOR
}

}  // namespace xls
