#ifndef NXOpen_NXSTRING_HXX_INCLUDED
#define NXOpen_NXSTRING_HXX_INCLUDED

#include <string>
#include <stddef.h>
#include <NXOpen/libnxopencpp_exports.hxx>

namespace NXOpen
{
    // Text that remembers whether it was given as locale text (the system code page, GBK) or as
    // UTF-8. No comparison and no conversion operators: compare GetLocaleText() bytes.
    class NXOPENCPPEXPORT NXString
    {
    public:
        enum NXStringMode
        {
            UTF8,
            Locale
        };

        NXString() : m_text(), m_mode(Locale), m_locale(), m_utf8(), m_converted(0) {}
        NXString(const char *text, NXOpen::NXString::NXStringMode mode = Locale);
        NXString(const std::string &text, NXOpen::NXString::NXStringMode mode = Locale);
        NXString(const NXString &other);
        NXString &operator=(const NXString &other);
        ~NXString();

        NXOpen::NXString::NXStringMode GetMode() const;
        NXOpen::NXString::NXStringMode getMode() const;
        // The bytes exactly as given to the constructor.
        const char *GetText() const;
        const char *getText() const;
        // The text in the system code page; owned by this string.
        const char *GetLocaleText() const;
        const char *getLocaleText() const;
        // The text in UTF-8; owned by this string.
        const char *GetUTF8Text() const;
        const char *getUTF8Text() const;

        // Appends locale text.
        NXString &operator+=(const char *s);
        // Appends another string, keeping this string's mode.
        NXString &operator+=(const NXString &s);

    private:
        std::string m_text;
        NXStringMode m_mode;
        mutable std::string m_locale;
        mutable std::string m_utf8;
        mutable int m_converted;  // bit 0: m_locale filled, bit 1: m_utf8 filled
    };

    // Concatenation; the result is UTF-8 when either side is.
    NXOPENCPPEXPORT NXString operator+(const NXString &a, const NXString &b);
    // Concatenation; the plain text is taken as locale text.
    NXOPENCPPEXPORT NXString operator+(const NXString &a, const char *b);
    NXOPENCPPEXPORT NXString operator+(const char *a, const NXString &b);
}

#endif
