#include "ui/Xml.hpp"

#include <algorithm>
#include <cctype>

#include "HostSession.hpp"

namespace host::ui {

namespace {

// Deeper nesting than this is refused instead of recursing without bound on a hostile file.
const int kMaxDepth = 256;

class XmlReader {
public:
    XmlReader(const std::string& text, const std::string& name) : text_(text), name_(name) {}

    XmlElement ReadDocument() {
        if (text_.compare(0, 3, "\xEF\xBB\xBF") == 0) pos_ = 3;
        size_t bad = FirstInvalidUtf8(text_);
        if (bad != std::string::npos) {
            pos_ = bad;
            Fail("the file is not valid UTF-8");
        }
        SkipMisc(true);
        if (AtEnd()) Fail("the file holds no element");
        if (!LookingAt("<")) Fail("text before the root element");
        XmlElement root = ReadElement(0);
        SkipMisc(false);
        if (!AtEnd()) Fail("content after the root element </" + root.name + ">");
        return root;
    }

private:
    [[noreturn]] void Fail(const std::string& what) const {
        throw DlxError(name_ + ":" + std::to_string(LineAt(text_, pos_)) + ": " + what);
    }

    bool AtEnd() const { return pos_ >= text_.size(); }
    bool LookingAt(const char* s) const { return text_.compare(pos_, std::char_traits<char>::length(s), s) == 0; }
    static bool IsSpace(char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; }
    void SkipSpace() {
        while (!AtEnd() && IsSpace(text_[pos_])) ++pos_;
    }
    static bool IsNameStart(char c) {
        unsigned char u = static_cast<unsigned char>(c);
        return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '_' || c == ':' || u >= 0x80;
    }
    static bool IsNameChar(char c) { return IsNameStart(c) || (c >= '0' && c <= '9') || c == '-' || c == '.'; }

    // Skips up to and including terminator; fails with what when it never comes.
    void SkipPast(const char* terminator, const char* what) {
        size_t end = text_.find(terminator, pos_);
        if (end == std::string::npos) Fail(what);
        pos_ = end + std::char_traits<char>::length(terminator);
    }

    // Whitespace, comments and processing instructions (the XML declaration among them).
    void SkipMisc(bool beforeRoot) {
        for (;;) {
            SkipSpace();
            if (LookingAt("<!--")) {
                SkipPast("-->", "a comment is not closed");
            } else if (LookingAt("<?")) {
                size_t start = pos_;
                SkipPast("?>", "a processing instruction is not closed");
                CheckDeclaration(text_.substr(start, pos_ - start));
            } else if (LookingAt("<!")) {
                Fail(beforeRoot ? "document type declarations are not supported" : "unexpected <! after the root element");
            } else {
                return;
            }
        }
    }

    // Dialog files are UTF-8; a declaration naming another encoding would be misread.
    void CheckDeclaration(const std::string& pi) {
        if (pi.compare(0, 6, "<?xml ") != 0) return;
        size_t at = pi.find("encoding");
        if (at == std::string::npos) return;
        size_t quote = pi.find_first_of("\"'", at);
        if (quote == std::string::npos) return;
        size_t end = pi.find(pi[quote], quote + 1);
        std::string encoding = pi.substr(quote + 1, end == std::string::npos ? std::string::npos : end - quote - 1);
        std::string lower = encoding;
        std::transform(lower.begin(), lower.end(), lower.begin(), [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
        if (lower != "utf-8" && lower != "utf8") Fail("encoding \"" + encoding + "\" is not supported; dialog files are UTF-8");
    }

    std::string ReadName(const char* what) {
        size_t start = pos_;
        if (AtEnd() || !IsNameStart(text_[pos_])) Fail(std::string("expected ") + what);
        while (!AtEnd() && IsNameChar(text_[pos_])) ++pos_;
        return text_.substr(start, pos_ - start);
    }

    // An entity reference at pos_ (on the '&'), decoded into out.
    void ReadEntity(std::string& out) {
        size_t semi = text_.find(';', pos_);
        if (semi == std::string::npos || semi - pos_ > 12) Fail("an entity reference is not closed with ';'");
        std::string entity = text_.substr(pos_ + 1, semi - pos_ - 1);
        if (entity == "amp") out += '&';
        else if (entity == "lt") out += '<';
        else if (entity == "gt") out += '>';
        else if (entity == "quot") out += '"';
        else if (entity == "apos") out += '\'';
        else if (entity.size() >= 2 && entity[0] == '#') {
            bool hex = entity[1] == 'x';
            std::string digits = entity.substr(hex ? 2 : 1);
            const char* allowed = hex ? "0123456789abcdefABCDEF" : "0123456789";
            if (digits.empty() || digits.find_first_not_of(allowed) != std::string::npos) Fail("bad character reference &" + entity + ";");
            unsigned long cp = std::stoul(digits, nullptr, hex ? 16 : 10);
            if (cp == 0 || cp > 0x10FFFF || (cp >= 0xD800 && cp <= 0xDFFF)) Fail("character reference &" + entity + "; is not a character");
            AppendUtf8(out, cp);
        } else {
            Fail("unknown entity &" + entity + ";");
        }
        pos_ = semi + 1;
    }

    std::string ReadAttributeValue() {
        char quote = text_[pos_];
        if (quote != '"' && quote != '\'') Fail("an attribute value must be quoted");
        ++pos_;
        std::string value;
        for (;;) {
            if (AtEnd()) Fail("an attribute value is not closed");
            char c = text_[pos_];
            if (c == quote) {
                ++pos_;
                return value;
            }
            if (c == '<') Fail("'<' inside an attribute value");
            if (c == '&') {
                ReadEntity(value);
                continue;
            }
            // XML normalises literal whitespace characters in attribute values to spaces.
            value += IsSpace(c) ? ' ' : c;
            ++pos_;
        }
    }

    XmlElement ReadElement(int depth) {
        if (depth > kMaxDepth) Fail("elements nest too deeply");
        XmlElement element;
        element.offset = pos_;
        ++pos_;  // '<'
        element.name = ReadName("an element name after '<'");
        for (;;) {
            bool spaced = !AtEnd() && IsSpace(text_[pos_]);
            SkipSpace();
            if (AtEnd()) Fail("the start tag <" + element.name + "> is not closed");
            if (LookingAt("/>")) {
                pos_ += 2;
                return element;
            }
            if (text_[pos_] == '>') {
                ++pos_;
                break;
            }
            if (!spaced) Fail("attributes of <" + element.name + "> must be separated by whitespace");
            std::string key = ReadName("an attribute name");
            SkipSpace();
            if (AtEnd() || text_[pos_] != '=') Fail("attribute " + key + " of <" + element.name + "> has no '='");
            ++pos_;
            SkipSpace();
            if (AtEnd()) Fail("attribute " + key + " of <" + element.name + "> has no value");
            if (element.Attribute(key.c_str())) Fail("attribute " + key + " appears twice in <" + element.name + ">");
            element.attributes.emplace_back(key, ReadAttributeValue());
        }
        for (;;) {
            size_t lt = text_.find('<', pos_);
            if (lt == std::string::npos) {
                pos_ = text_.size();
                Fail("element <" + element.name + "> is not closed");
            }
            pos_ = lt;
            if (LookingAt("</")) {
                pos_ += 2;
                std::string endName = ReadName("an element name after '</'");
                if (endName != element.name) Fail("end tag </" + endName + "> does not match <" + element.name + ">");
                SkipSpace();
                if (AtEnd() || text_[pos_] != '>') Fail("end tag </" + endName + "> is not closed");
                ++pos_;
                return element;
            }
            if (LookingAt("<!--")) {
                SkipPast("-->", "a comment is not closed");
            } else if (LookingAt("<![CDATA[")) {
                SkipPast("]]>", "a CDATA section is not closed");
            } else if (LookingAt("<?")) {
                SkipPast("?>", "a processing instruction is not closed");
            } else if (LookingAt("<!")) {
                Fail("unexpected <! inside <" + element.name + ">");
            } else {
                element.children.push_back(ReadElement(depth + 1));
            }
        }
    }

    const std::string& text_;
    const std::string& name_;
    size_t pos_ = 0;
};

}  // namespace

int LineAt(const std::string& text, size_t offset) {
    return 1 + static_cast<int>(std::count(text.begin(), text.begin() + std::min(offset, text.size()), '\n'));
}

const std::string* XmlElement::Attribute(const char* attributeName) const {
    for (const auto& [key, value] : attributes) {
        if (key == attributeName) return &value;
    }
    return nullptr;
}

std::string XmlElement::AttributeOr(const char* attributeName, const std::string& fallback) const {
    const std::string* value = Attribute(attributeName);
    return value ? *value : fallback;
}

const XmlElement* XmlElement::FirstChild(const char* childName) const {
    for (const XmlElement& child : children) {
        if (child.name == childName) return &child;
    }
    return nullptr;
}

XmlElement ParseXml(const std::string& text, const std::string& name) { return XmlReader(text, name).ReadDocument(); }

}  // namespace host::ui
