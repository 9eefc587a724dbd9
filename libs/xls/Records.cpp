#include "Records.h"

namespace xls {

void splitRecords(const Bytes& stream, std::vector<RecordRef>& records, size_t* end)
{
    records.clear();
    size_t pos = 0;
    while (stream.size() - pos >= kRecordHeaderSize) {
        u16 size = getU16(&stream[pos + 2]);
        if (stream.size() - pos - kRecordHeaderSize < size) break;
        RecordRef r;
        r.type = getU16(&stream[pos]);
        r.size = size;
        r.pos = static_cast<u32>(pos);
        records.push_back(r);
        pos += kRecordHeaderSize + size;
    }
    *end = pos;
}

void appendRecord(Bytes& out, u32 type, const u8* data, size_t size)
{
    appendU16(out, type);
    appendU16(out, static_cast<u32>(size));
    appendBytes(out, data, size);
}

}  // namespace xls
