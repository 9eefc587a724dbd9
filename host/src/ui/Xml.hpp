// The XML of dialog files as far as they need it: elements with attributes and children, read
// by a small tokenizer of its own (declaration, BOM, comments, entities, both quote styles),
// because the format uses nothing else of XML. Shared by the dialog reader (Dlx.hpp) and the
// table of NX's form (DlxRules.hpp), which both build on it.
#pragma once

#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace host::ui {

// A malformed or unusable dialog file. what() names the file and, where there is one, the line:
// "Vornadel.dlx:12: end tag </item> does not match <Property>".
class DlxError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

// An XML element as far as dialog files need it: name, attributes in the order written, child
// elements. Text content is never meaningful in a dialog file and is dropped.
struct XmlElement {
    std::string name;
    std::vector<std::pair<std::string, std::string>> attributes;
    std::vector<XmlElement> children;
    size_t offset = 0;  // of its '<' in the file, for messages

    const std::string* Attribute(const char* attributeName) const;
    std::string AttributeOr(const char* attributeName, const std::string& fallback) const;
    const XmlElement* FirstChild(const char* childName) const;
};

// The root element of a dialog file's text; name is used in messages. Throws DlxError.
XmlElement ParseXml(const std::string& text, const std::string& name);

// The line (from 1) of an offset in a text, for messages.
int LineAt(const std::string& text, size_t offset);

}  // namespace host::ui
