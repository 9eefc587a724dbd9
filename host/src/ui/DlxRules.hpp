// The form of a dialog file as NX 8.5 writes it, from the table DlxRules.tsv (read from the
// dialog files of the NX 8.5 SDK; each row names its file): the properties each block class
// has, their attributes and defaults, the order of attributes and the whole-file rules. The
// reader uses it to refuse what NX could not read; CheckNxForm holds a whole file against it.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "ui/Xml.hpp"

namespace host::ui {

// An item class without the "UGS::" the Styler writes before some "UICOMP_" classes and not
// before others: "UGS::UICOMP_group" and "UICOMP_group" are one class.
std::string BareItemClass(const std::string& itemClass);


// One property of one class, as NX 8.5 writes it.
struct DlxPropertyRule {
    std::string itemClass, id, sname, type, group, classId, hierarchy, source;
    std::vector<unsigned long> masks;  // the masks of the default value; a changed value adds 256
    std::string defaultValue;          // as written ("True", "0" for an enum's first option); "*" unknown, "-" none
    std::vector<std::pair<std::string, std::string>> options;  // an enum's Option name and value, in order
    std::string evidence;

    // The default as the reader gives a value: an enum's option name; "" when unknown or none.
    std::string DefaultText() const;
    // What is wrong with the value of this Property element for its type; "" when nothing.
    std::string ValueProblem(const XmlElement& property) const;
};

// An item class: its Styler presentation, navigator icon ("-" when no file shows it) and
// whether it holds members.
struct DlxClassRule {
    std::string itemClass, presentation, icon;
    bool container = false;
    std::string evidence;
};

class DlxRules {
public:
    // The table compiled into the host (DlxRules.tsv).
    static const DlxRules& Nx85();
    // Reads a table in the form of DlxRules.tsv; name is used in messages. Throws DlxError.
    static DlxRules Parse(const std::string& table, const std::string& name);

    // The rule of a property of a class ("Dialog" for the dialog's own list, "AutoGenData"),
    // or nullptr. "UICOMP_x" and "UGS::UICOMP_x" name the same class.
    const DlxPropertyRule* Property(const std::string& itemClass, const std::string& id) const;
    const DlxClassRule* Class(const std::string& itemClass) const;
    // The attributes of an element ("Dialog", "item", "wrapper", "Property", ...) in NX's order.
    const std::vector<std::string>* Order(const std::string& element) const;
    bool HasRule(const std::string& name) const;

    std::map<std::string, std::vector<std::string>> orders;
    std::vector<std::pair<std::string, std::string>> dialogValues;  // root attribute, value ("+": non-empty)
    std::vector<DlxClassRule> classes;
    std::vector<DlxPropertyRule> properties;
    std::vector<std::string> rules;

private:
    std::map<std::pair<std::string, std::string>, size_t> index_;  // (bare class, id) -> properties
};

// A mask as NX writes it: a decimal number.
std::optional<unsigned long> ParseMask(const std::string& text);

// Every way the text of a dialog file differs from the form NX 8.5 writes, one message each;
// empty when it has the form. Throws DlxError when the text is no dialog file at all.
std::vector<std::string> CheckNxForm(const std::string& text, const std::string& name);

}  // namespace host::ui
