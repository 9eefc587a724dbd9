#include "ui/Dlx.hpp"

#include <algorithm>
#include <cctype>
#include <fstream>
#include <set>
#include <sstream>
#include <utility>

#include "HostSession.hpp"
#include "ui/DlxRules.hpp"

namespace host::ui {

namespace {

int LineAt(const std::string& text, size_t offset) {
    return 1 + static_cast<int>(std::count(text.begin(), text.begin() + std::min(offset, text.size()), '\n'));
}

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

struct ClassName {
    const char* itemClass;
    BlockKind kind;
};

// The item classes of the seven NX Open block classes the host builds (the Styler writes some
// with and some without the "UGS::" prefix).
const ClassName kClasses[] = {
    {"UICOMP_group", BlockKind::Group},
    {"UICOMP_string", BlockKind::StringBlock},
    {"UGS::UI::Comp::ScrolledWindow", BlockKind::ScrolledWindow},
    {"UICOMP_tree_control", BlockKind::Tree},
    {"UICOMP_button", BlockKind::Button},
    {"UGS::UI::Comp::BodySelect", BlockKind::BodyCollector},
    {"UGS::UI::Comp::NativeFolderBrowser", BlockKind::FolderSelection},
};

class DialogBuilder {
public:
    DialogBuilder(const std::string& text, const std::string& name) : text_(text), name_(name) {}

    DlxDialog Build(const XmlElement& root) {
        if (root.name != "Dialog") Fail(root, "the root element is <" + root.name + ">, not <Dialog>");
        if (const XmlElement* list = root.FirstChild("PropertyList")) {
            CheckProperties(*list, "Dialog", "the dialog");
            auto properties = ReadProperties(*list);
            auto title = properties.find("Title");
            if (title != properties.end()) dialog_.title = title->second.value;
        }
        for (const XmlElement& child : root.children) {
            if (child.name == "item") Visit(child, "");
        }
        return std::move(dialog_);
    }

private:
    [[noreturn]] void Fail(const XmlElement& at, const std::string& what) const {
        throw DlxError(name_ + ":" + std::to_string(LineAt(text_, at.offset)) + ": " + what);
    }

    // Refuses what NX 8.5 could not read: a property the class does not have (the dialog's own
    // list counts as class "Dialog"), a mask that is not a number, a value of the wrong form.
    void CheckProperties(const XmlElement& list, const std::string& itemClass, const std::string& owner) const {
        const DlxRules& rules = DlxRules::Nx85();
        for (const XmlElement& p : list.children) {
            const std::string* id = p.Attribute("id");
            if (p.name != "Property" || id == nullptr) continue;
            std::string what = owner + ", property \"" + *id + "\": ";
            const std::string* mask = p.Attribute("mask");
            if (mask && !ParseMask(*mask)) Fail(p, what + "the mask \"" + *mask + "\" is not a number; NX writes a mask as a decimal number");
            const DlxPropertyRule* rule = rules.Property(itemClass, *id);
            if (rule == nullptr) Fail(p, what + "NX 8.5 has no such property for class " + itemClass);
            std::string problem = rule->ValueProblem(p);
            if (!problem.empty()) Fail(p, what + problem);
        }
    }

    std::map<std::string, DlxProperty> ReadProperties(const XmlElement& list) {
        std::map<std::string, DlxProperty> properties;
        for (const XmlElement& p : list.children) {
            const std::string* id = p.Attribute("id");
            if (p.name != "Property" || id == nullptr) continue;
            DlxProperty property;
            property.type = p.AttributeOr("type", "");
            property.value = p.AttributeOr("value", "");
            if (property.type == "enum") {
                std::string selected = p.AttributeOr("selected", "");
                property.value = selected;
                for (const XmlElement& option : p.children) {
                    if (option.name == "Option" && option.AttributeOr("value", "") == selected) {
                        property.value = option.AttributeOr("name", selected);
                    }
                }
            }
            for (const XmlElement& entry : p.children) {
                if (entry.name == "Strings") property.strings.push_back(entry.AttributeOr("value", ""));
            }
            properties[*id] = std::move(property);
        }
        return properties;
    }

    static const XmlElement* PropertyElement(const XmlElement& list, const char* id) {
        for (const XmlElement& p : list.children) {
            if (p.name == "Property" && p.AttributeOr("id", "") == id) return &p;
        }
        return nullptr;
    }

    BlockKind KindOf(const XmlElement& item, const std::string& id) const {
        std::string itemClass = item.AttributeOr("class", "");
        for (const ClassName& c : kClasses) {
            if (BareItemClass(itemClass) == c.itemClass) return c.kind;
        }
        Fail(item, "block " + id + " has class \"" + itemClass + "\", which the host does not build");
    }

    void Visit(const XmlElement& item, const std::string& parentId) {
        const XmlElement* list = item.FirstChild("PropertyList");
        DlxBlock block;
        if (list) block.properties = ReadProperties(*list);
        auto apiName = block.properties.find("API Name");
        block.id = apiName != block.properties.end() ? apiName->second.value : item.AttributeOr("id", "");
        if (block.id.empty()) Fail(item, "an <item> without a block id (API Name)");
        if (!ids_.insert(block.id).second) Fail(item, "block id " + block.id + " is used twice");
        block.kind = KindOf(item, block.id);
        block.itemClass = item.AttributeOr("class", "");
        if (list) CheckProperties(*list, block.itemClass, "block " + block.id);
        block.label = block.Value("Title", block.Value("Label", ""));
        block.parentId = parentId;
        const XmlElement* members = list ? PropertyElement(*list, "Members") : nullptr;
        std::string id = block.id;
        dialog_.blocks.push_back(std::move(block));
        if (!members) return;
        const XmlElement* containerItems = members->FirstChild("PropertyList");
        if (!containerItems) return;
        for (const XmlElement& child : containerItems->children) {
            if (child.name == "item") {
                Visit(child, id);
            } else if (child.name == "Property") {
                for (const XmlElement& wrapped : child.children) {
                    if (wrapped.name == "item") Visit(wrapped, id);
                }
            }
        }
    }

    const std::string& text_;
    const std::string& name_;
    DlxDialog dialog_;
    std::set<std::string> ids_;
};

}  // namespace

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

std::string BareItemClass(const std::string& itemClass) {
    return itemClass.compare(0, 12, "UGS::UICOMP_") == 0 ? itemClass.substr(5) : itemClass;
}

const char* KindName(BlockKind kind) {
    switch (kind) {
    case BlockKind::Group: return "Group";
    case BlockKind::StringBlock: return "StringBlock";
    case BlockKind::ScrolledWindow: return "ScrolledWindow";
    case BlockKind::Tree: return "Tree";
    case BlockKind::Button: return "Button";
    case BlockKind::BodyCollector: return "BodyCollector";
    case BlockKind::FolderSelection: return "FolderSelection";
    }
    return "?";
}

std::string DlxBlock::Value(const std::string& propertyId, const std::string& fallback) const {
    auto it = properties.find(propertyId);
    return it == properties.end() ? fallback : it->second.value;
}

std::string DlxBlock::Setting(const std::string& propertyId) const {
    const DlxPropertyRule* rule = DlxRules::Nx85().Property(itemClass, propertyId);
    return Value(propertyId, rule ? rule->DefaultText() : "");
}

DlxDialog ParseDlx(const std::string& text, const std::string& name) {
    XmlElement root = ParseXml(text, name);
    return DialogBuilder(text, name).Build(root);
}

DlxDialog ReadDlxFile(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    if (!in) throw DlxError(path + ": the dialog file cannot be read");
    std::ostringstream text;
    text << in.rdbuf();
    if (in.bad()) throw DlxError(path + ": the dialog file cannot be read");
    return ParseDlx(text.str(), path);
}

}  // namespace host::ui
