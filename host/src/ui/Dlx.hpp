// Reading a Block UI Styler dialog file (.dlx): the dialog title and, per block, its id, class,
// label, parent and the few properties the host honours, read from the file's XML (Xml.hpp). A
// property that NX 8.5 does not know for the block's class and a mask or value NX could not read
// are refused, by the table of NX's form (DlxRules.hpp). The dependency runs one way: this reader
// uses the table, and both use the XML reader.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "ui/Xml.hpp"

namespace host::ui {

// One Property of a block: its type and value as written. For an enum, value is the name of the
// selected Option (e.g. "Combo"); for strings/utfstrings, strings holds the entries.
struct DlxProperty {
    std::string type;
    std::string value;
    std::vector<std::string> strings;
};

// The NX Open classes a dialog file may use in the host.
enum class BlockKind { Group, StringBlock, ScrolledWindow, Tree, Button, BodyCollector, FolderSelection };

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
