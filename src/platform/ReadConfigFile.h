#ifndef VORNADEL_PLATFORM_READCONFIGFILE_H
#define VORNADEL_PLATFORM_READCONFIGFILE_H

#include <string>
#include <vector>

#if defined(_WIN32)
#  if defined(READCONFIG_BUILD)
#    define READCONFIG_API __declspec(dllexport)
#  else
#    define READCONFIG_API __declspec(dllimport)
#  endif
#else
#  define READCONFIG_API
#endif

// Reader of one configuration table (CSV), addressed by column name. Lives in its own library
// (readconfig) beside the plug-in. One object per use, on the stack.
//
// Encoding: the values are handed out in the system code page (GBK). A table is read as UTF-8
// and converted when
//   - it starts with a UTF-8 byte-order mark (a spreadsheet program's "CSV UTF-8"), or
//   - its bytes are well-formed UTF-8 and hold at least one character beyond ASCII (what most
//     text editors save);
// otherwise its bytes are taken as GBK as they stand. Chinese GBK text is almost never
// well-formed UTF-8 as well (its lead bytes 0x81-0xFE would each need continuation bytes
// 0x80-0xBF after them), so the two cannot be confused in practice. A character of a UTF-8 table
// that GBK cannot hold reads as "?", ill-formed UTF-8 after a byte-order mark as "?" too.
class READCONFIG_API ReadConfigFile {
public:
    ReadConfigFile();
    virtual ~ReadConfigFile();

    // Opens and reads the table. False when it cannot be read; the object then behaves as an
    // empty table (no columns, no values).
    bool OpenConfigFile(const std::string& path);

    // The names of the header line, in file order.
    std::vector<std::string> GetColumnNames();

    // The cells of the named column below the header, one per row in row order ("" for an empty
    // or missing cell); empty when no column has that name. The first column of that name wins.
    std::vector<std::string> GetColumnValue(const std::string& name);

    // Every cell below the header, row by row, each row as long as the header.
    std::vector<std::vector<std::string> > GetColumnValues();

    // Ends the use of the file; the object is an empty table again.
    void CloseConfigFile();

private:
    ReadConfigFile(const ReadConfigFile&);
    ReadConfigFile& operator=(const ReadConfigFile&);

    std::vector<std::string> names_;
    std::vector<std::vector<std::string> > rows_;
};

#endif
