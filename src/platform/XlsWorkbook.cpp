// The Workbook interface over the template workbook engine (libs/xls). The engine takes paths as
// the operating system does; Workbook takes Windows paths in the system code page, which OsPath
// maps (unchanged on Windows). The engine's messages are ASCII, hence valid GBK as they stand.

#include "platform/Files.h"
#include "platform/Workbook.h"

#include "XlsBook.h"

#include <map>
#include <new>
#include <string>

namespace {

class XlsWorksheet : public Worksheet {
public:
    XlsWorksheet(xls::Sheet* sheet, std::string* bookMessage) : sheet_(sheet), bookMessage_(bookMessage) {}
    virtual ~XlsWorksheet() {}

    // A failure leaves its message in the engine's book, where errorMessage() finds it.
    virtual bool writeStr(int row, int col, const wchar_t* text) {
        bookMessage_->clear();
        return sheet_->writeStr(row, col, text);
    }

private:
    xls::Sheet* sheet_;         // borrowed from the book
    std::string* bookMessage_;  // the workbook's own message, borrowed
};

class XlsWorkbook : public Workbook {
public:
    XlsWorkbook() {}

    virtual bool load(const char* path) {
        message_.clear();
        std::string os;
        if (!MapPath(path, os)) return false;
        if (!book_.load(os.c_str())) return Fail(path, book_.errorMessage());
        // The engine's sheets of the book loaded before are gone.
        ForgetSheets();
        return true;
    }

    virtual int activeSheet() { return book_.activeSheet(); }

    virtual Worksheet* getSheet(int index) {
        message_.clear();
        xls::Sheet* sheet = book_.getSheet(index);
        if (sheet == NULL) {
            message_ = book_.errorMessage();
            return NULL;
        }
        std::map<xls::Sheet*, XlsWorksheet*>::iterator known = sheets_.find(sheet);
        if (known != sheets_.end()) return known->second;
        XlsWorksheet* wrapper = new (std::nothrow) XlsWorksheet(sheet, &message_);
        if (wrapper == NULL) {
            message_ = "out of memory";
            return NULL;
        }
        sheets_[sheet] = wrapper;
        return wrapper;
    }

    virtual bool save(const char* path) {
        message_.clear();
        std::string os;
        if (!MapPath(path, os)) return false;
        return book_.save(os.c_str()) || Fail(path, book_.errorMessage());
    }

    // The message of the workbook's last call, else of the engine (a sheet's writeStr).
    virtual const char* errorMessage() {
        return message_.empty() ? book_.errorMessage() : message_.c_str();
    }

    virtual void release() { delete this; }

private:
    virtual ~XlsWorkbook() { ForgetSheets(); }

    bool MapPath(const char* path, std::string& os) {
        if (path == NULL) return Fail("", "no file name given");
        os = platform::OsPath(path);
        return !os.empty() || Fail(path, "no such drive");
    }

    // Keeps "path: reason" as the message; false.
    bool Fail(const std::string& path, const std::string& reason) {
        message_ = path.empty() ? reason : path + ": " + reason;
        return false;
    }

    void ForgetSheets() {
        for (std::map<xls::Sheet*, XlsWorksheet*>::iterator i = sheets_.begin(); i != sheets_.end(); ++i) {
            delete i->second;
        }
        sheets_.clear();
    }

    xls::Book book_;
    std::map<xls::Sheet*, XlsWorksheet*> sheets_;  // owned wrappers of the book's sheets
    std::string message_;

    XlsWorkbook(const XlsWorkbook&);  // not copyable
    XlsWorkbook& operator=(const XlsWorkbook&);
};

}  // namespace

Workbook* CreateXlsBook() {
    return new (std::nothrow) XlsWorkbook;
}
