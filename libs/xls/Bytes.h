#ifndef VORNADEL_XLS_BYTES_H
#define VORNADEL_XLS_BYTES_H

// Fixed-width integers and little-endian access for the workbook engine. Every field of the
// compound file and of BIFF8 is little-endian; buffers are never cast to structs.

#include <limits.h>
#include <stddef.h>
#include <string.h>
#include <vector>

namespace xls {

typedef unsigned char u8;
typedef unsigned short u16;
#if UINT_MAX == 0xFFFFFFFFu
typedef unsigned int u32;
#else
typedef unsigned long u32;
#endif
typedef std::vector<u8> Bytes;

// A negative array size stops the build when a type has the wrong width.
typedef char U16HasTwoBytes[sizeof(u16) == 2 ? 1 : -1];
typedef char U32HasFourBytes[sizeof(u32) == 4 ? 1 : -1];

inline u16 getU16(const u8* p) { return static_cast<u16>(p[0] | (p[1] << 8)); }

inline u32 getU32(const u8* p)
{
    return static_cast<u32>(p[0]) | (static_cast<u32>(p[1]) << 8) | (static_cast<u32>(p[2]) << 16) |
           (static_cast<u32>(p[3]) << 24);
}

inline void putU16(u8* p, u32 v)
{
    p[0] = static_cast<u8>(v);
    p[1] = static_cast<u8>(v >> 8);
}

inline void putU32(u8* p, u32 v)
{
    p[0] = static_cast<u8>(v);
    p[1] = static_cast<u8>(v >> 8);
    p[2] = static_cast<u8>(v >> 16);
    p[3] = static_cast<u8>(v >> 24);
}

inline void appendU8(Bytes& b, u32 v) { b.push_back(static_cast<u8>(v)); }

inline void appendU16(Bytes& b, u32 v)
{
    b.push_back(static_cast<u8>(v));
    b.push_back(static_cast<u8>(v >> 8));
}

inline void appendU32(Bytes& b, u32 v)
{
    appendU16(b, v & 0xFFFFu);
    appendU16(b, v >> 16);
}

inline void appendBytes(Bytes& b, const u8* p, size_t n)
{
    if (n == 0) return;
    size_t at = b.size();
    b.resize(at + n);
    memcpy(&b[at], p, n);
}

}  // namespace xls

#endif
