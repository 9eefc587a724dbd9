// NXString: text that remembers whether it was given as locale text (GBK) or UTF-8. GetText()
// returns the bytes as given; the other side is converted when first asked for. A Locale string
// hands back its bytes unchanged from GetLocaleText(), whatever they are: NX 8.5 builds the text
// of an edited tree cell as a Locale string holding UTF-8 bytes, and the plug-in relies on it.
#include <NXOpen/NXString.hxx>

#include "HostSession.hpp"

namespace NXOpen {
namespace {

enum { kLocaleFilled = 1, kUtf8Filled = 2 };

std::string Bytes(const char* text) { return text == nullptr ? std::string() : std::string(text); }

// The text converted to the other side, made on first use and kept in cache; the bit of
// converted says that cache is filled.
const char* Converted(const std::string& text, std::string& cache, int& converted, int bit,
                      std::string (*convert)(const std::string&)) {
    if ((converted & bit) == 0) {
        cache = convert(text);
        converted |= bit;
    }
    return cache.c_str();
}

}  // namespace

NXString::NXString(const char* text, NXStringMode mode)
    : m_text(Bytes(text)), m_mode(mode), m_locale(), m_utf8(), m_converted(0) {}

NXString::NXString(const std::string& text, NXStringMode mode)
    : m_text(text), m_mode(mode), m_locale(), m_utf8(), m_converted(0) {}

NXString::NXString(const NXString& other)
    : m_text(other.m_text), m_mode(other.m_mode), m_locale(), m_utf8(), m_converted(0) {}

NXString& NXString::operator=(const NXString& other) {
    if (this != &other) {
        m_text = other.m_text;
        m_mode = other.m_mode;
        m_locale.clear();
        m_utf8.clear();
        m_converted = 0;
    }
    return *this;
}

NXString::~NXString() = default;

NXString::NXStringMode NXString::GetMode() const { return m_mode; }
NXString::NXStringMode NXString::getMode() const { return GetMode(); }
const char* NXString::GetText() const { return m_text.c_str(); }
const char* NXString::getText() const { return GetText(); }

const char* NXString::GetLocaleText() const {
    return m_mode == Locale ? m_text.c_str() : Converted(m_text, m_locale, m_converted, kLocaleFilled, host::Utf8ToGbk);
}
const char* NXString::getLocaleText() const { return GetLocaleText(); }

const char* NXString::GetUTF8Text() const {
    return m_mode == UTF8 ? m_text.c_str() : Converted(m_text, m_utf8, m_converted, kUtf8Filled, host::GbkToUtf8);
}
const char* NXString::getUTF8Text() const { return GetUTF8Text(); }

NXString& NXString::operator+=(const char* s) { return *this += NXString(s, Locale); }

NXString& NXString::operator+=(const NXString& s) {
    std::string tail = m_mode == Locale ? s.GetLocaleText() : s.GetUTF8Text();  // s may be *this
    m_text += tail;
    m_locale.clear();
    m_utf8.clear();
    m_converted = 0;
    return *this;
}

NXString operator+(const NXString& a, const NXString& b) {
    if (a.GetMode() == NXString::Locale && b.GetMode() == NXString::Locale)
        return NXString(std::string(a.GetText()) + b.GetText(), NXString::Locale);
    return NXString(std::string(a.GetUTF8Text()) + b.GetUTF8Text(), NXString::UTF8);
}

NXString operator+(const NXString& a, const char* b) { return a + NXString(b, NXString::Locale); }

NXString operator+(const char* a, const NXString& b) { return NXString(a, NXString::Locale) + b; }

}  // namespace NXOpen
