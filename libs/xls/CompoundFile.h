#ifndef VORNADEL_XLS_COMPOUNDFILE_H
#define VORNADEL_XLS_COMPOUNDFILE_H

// The compound file (OLE2 / CFB) that holds an .xls: sectors, FAT, DIFAT, MiniFAT, mini stream and
// the directory. Reading accepts versions 3 (512-byte sectors) and 4 (4096-byte sectors); writing
// always gives version 3, the only one LibreOffice's storage reader opens. The directory is kept
// exactly as loaded (ids, names, tree links, colours, CLSIDs, times): only start sectors and sizes
// are rewritten, so every stream and storage we do not edit comes out byte for byte.

#include "Bytes.h"

#include <string>

namespace xls {

enum {
    kDirEntrySize = 128,
    kMiniStreamCutoff = 4096  // streams shorter than this live in the mini stream
};

enum DirEntryType { kEntryUnused = 0, kEntryStorage = 1, kEntryStream = 2, kEntryRoot = 5 };

struct DirEntry {
    u8 raw[kDirEntrySize];  // the entry as loaded
    Bytes data;             // contents of a stream entry
};

class CompoundFile {
public:
    // Reads the container in data. False, with a message in error, when it is not a compound
    // file or is damaged (bad header, chains that leave the file, end early or loop, a directory
    // that loops, a stream larger than the file).
    bool read(const u8* data, size_t size, std::string& error);

    // Id of the stream among the root storage's direct children whose name equals asciiName
    // without regard to ASCII case; -1 when there is none.
    int findRootStream(const char* asciiName) const;

    // Writes the container as version 3. Entry replaceId (-1: none) takes replacement as its
    // contents instead of its own data.
    void write(Bytes& out, int replaceId, const Bytes& replacement) const;

    std::vector<DirEntry> entries;
};

}  // namespace xls

#endif
