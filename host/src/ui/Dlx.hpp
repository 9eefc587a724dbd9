// Reading a Block UI Styler dialog file (.dlx): the dialog title and, per block, its id, class,
// label, parent and the few properties the host honours. The file is XML; this reader is a small
// tokenizer of its own (declaration, BOM, comments, entities, both quote styles) because the
// format uses nothing else of XML. A property that NX 8.5 does not know for the block's class
// (DlxRules.tsv) and a mask or value NX could not read are refused.
#pragma once

#include <map>
#include <utility>
#include <stdexcept>
#include <string>
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

// One Property of a block: its type and value as written. For an enum, value is the name of the
// selected Option (e.g. "Combo"); for strings/utfstrings, strings holds the entries.
struct DlxProperty {
    std::string type;
    std::string value;
    std::vector<std::string> strings;
};

// The NX Open classes a dialog file may use in the host.
enum class BlockKind { Group, StringBlock, ScrolledWindow, Tree, Button, BodyCollector, FolderSelection };

// An item class without the "UGS::" the Styler writes before some "UICOMP_" classes and not
// before others: "UGS::UICOMP_group" and "UICOMP_group" are one class.
std::string BareItemClass(const std::string& itemClass);

// The NX Open class name of a kind ("StringBlock", "Tree", ...).
const char* KindName(BlockKind kind);

struct DlxBlock {
    std::string id;
    BlockKind kind;
    std::string itemClass;  // as the file writes it ("UICOMP_string", "UGS::UICOMP_group", ...)
    std::string label;     // UTF-8, as in the file
    std::string parentId;  // "" at top level
    std::map<std::string, DlxProperty> properties;  // by property id ("Visibility", "PresentationStyle", ...)

    // The value of a property, or fallback when the block does not have it.
    std::string Value(const std::string& propertyId, const std::string& fallback) const;
    // The value of a property, or NX 8.5's default for the block's class when the file leaves it
    // out (DlxRules.tsv; "" when no NX file shows the default).
    std::string Setting(const std::string& propertyId) const;
};

struct DlxDialog {
    std::string title;             // UTF-8
    std::vector<DlxBlock> blocks;  // pre-order of the file: a container, then its members, then the next
};

// Reads the text of a dialog file; name is used in messages. Throws DlxError.
DlxDialog ParseDlx(const std::string& text, const std::string& name);

// Reads a dialog file from a native path. Throws DlxError (also when it cannot be read).
DlxDialog ReadDlxFile(const std::string& path);

}  // namespace host::ui
