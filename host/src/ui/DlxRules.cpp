#include "ui/DlxRules.hpp"

#include <algorithm>
#include <sstream>

namespace host::ui {

// DlxRules.tsv, made into a string by cmake/host.cmake.
extern const char kDlxRulesTable[];

std::string BareItemClass(const std::string& itemClass) {
    return itemClass.compare(0, 12, "UGS::UICOMP_") == 0 ? itemClass.substr(5) : itemClass;
}


namespace {

std::vector<std::string> Split(const std::string& text, char separator) {
    std::vector<std::string> parts;
    std::string part;
    std::istringstream in(text);
    while (std::getline(in, part, separator)) parts.push_back(part);
    if (!text.empty() && text.back() == separator) parts.push_back("");
    return parts;
}

// A whole number as NX writes one; at most nine digits, so that it fits an int.
bool IsInteger(const std::string& text) {
    size_t sign = text.compare(0, 1, "-") == 0 ? 1 : 0;
    return text.size() > sign && text.size() - sign <= 9 && text.find_first_not_of("0123456789", sign) == std::string::npos;
}

std::string Quoted(const std::string& text) { return "\"" + text + "\""; }

}  // namespace

std::optional<unsigned long> ParseMask(const std::string& text) {
    if (text.empty() || text.size() > 10 || text.find_first_not_of("0123456789") != std::string::npos) return std::nullopt;
    unsigned long long value = std::stoull(text);
    if (value > 0xFFFFFFFFull) return std::nullopt;
    return static_cast<unsigned long>(value);
}

std::string DlxPropertyRule::DefaultText() const {
    if (defaultValue == "*" || defaultValue == "-") return "";
    for (const auto& [name, value] : options) {
        if (value == defaultValue) return name;
    }
    return defaultValue;
}

std::string DlxPropertyRule::ValueProblem(const XmlElement& property) const {
    std::string value = property.AttributeOr("value", "");
    if (type == "logical" && value != "True" && value != "False") return "the value " + Quoted(value) + " is not True or False";
    if (type == "integer" && !IsInteger(value)) return "the value " + Quoted(value) + " is not a whole number of at most nine digits";
    if (type == "bits" && (value.compare(0, 2, "0x") != 0 || value.size() == 2 ||
                           value.find_first_not_of("0123456789abcdefABCDEF", 2) != std::string::npos)) {
        return "the value " + Quoted(value) + " is not a hexadecimal number 0x...";
    }
    if (type == "attachment") {
        for (const char* number : {"loc", "offset"}) {
            if (!IsInteger(property.AttributeOr(number, ""))) return std::string("the attachment's ") + number + " is not a whole number";
        }
    }
    if (type == "enum") {
        std::string selected = property.AttributeOr("selected", "");
        bool known = std::any_of(options.begin(), options.end(), [&](const auto& o) { return o.second == selected; });
        if (!known) return "the selected option " + Quoted(selected) + " is none of NX's options";
        std::vector<std::pair<std::string, std::string>> written;
        for (const XmlElement& option : property.children) {
            if (option.name == "Option") written.emplace_back(option.AttributeOr("name", ""), option.AttributeOr("value", ""));
        }
        if (!written.empty() && written != options) return "its options are not NX's (" + evidence + ")";
    }
    return "";
}

const DlxRules& DlxRules::Nx85() {
    static const DlxRules* rules = new DlxRules(Parse(kDlxRulesTable, "DlxRules.tsv"));
    return *rules;
}

DlxRules DlxRules::Parse(const std::string& table, const std::string& name) {
    DlxRules rules;
    std::istringstream in(table);
    std::string line;
    for (int number = 1; std::getline(in, line); ++number) {
        if (line.empty() || line[0] == '#') continue;
        std::vector<std::string> f = Split(line, '\t');
        auto fail = [&](const std::string& what) { throw DlxError(name + ":" + std::to_string(number) + ": " + what); };
        const std::map<std::string, size_t> widths = {{"rule", 3}, {"order", 4}, {"value", 5}, {"class", 6}, {"property", 13}};
        auto width = widths.find(f[0]);
        if (width == widths.end()) fail("unknown row kind " + Quoted(f[0]));
        if (f.size() != width->second) fail(f[0] + " rows have " + std::to_string(width->second) + " columns, this one " + std::to_string(f.size()));
        if (f.back().empty()) fail("the row names no file it was read from");
        if (f[0] == "rule") {
            rules.rules.push_back(f[1]);
        } else if (f[0] == "order") {
            rules.orders[f[1]] = Split(f[2], ' ');
        } else if (f[0] == "value") {
            rules.dialogValues.emplace_back(f[2], f[3]);
        } else if (f[0] == "class") {
            rules.classes.push_back({f[1], f[2], f[3], f[4] == "1", f[5]});
        } else {
            DlxPropertyRule r{f[1], f[2], f[3], f[4], f[5], f[6], f[7], f[8], {}, f[10] == "\"\"" ? "" : f[10], {}, f[12]};
            for (const std::string& mask : Split(f[9], ',')) {
                std::optional<unsigned long> m = ParseMask(mask);
                if (!m) fail("the mask " + Quoted(mask) + " is not a number");
                r.masks.push_back(*m);
            }
            if (f[11] != "-") {
                for (const std::string& option : Split(f[11], '|')) {
                    size_t eq = option.rfind('=');
                    if (eq == std::string::npos) fail("the option " + Quoted(option) + " is not name=value");
                    r.options.emplace_back(option.substr(0, eq), option.substr(eq + 1));
                }
            }
            if (!rules.index_.emplace(std::make_pair(BareItemClass(r.itemClass), r.id), rules.properties.size()).second) {
                fail("property " + r.id + " of " + r.itemClass + " appears twice");
            }
            rules.properties.push_back(std::move(r));
        }
    }
    return rules;
}

const DlxPropertyRule* DlxRules::Property(const std::string& itemClass, const std::string& id) const {
    auto it = index_.find(std::make_pair(BareItemClass(itemClass), id));
    return it == index_.end() ? nullptr : &properties[it->second];
}

const DlxClassRule* DlxRules::Class(const std::string& itemClass) const {
    for (const DlxClassRule& c : classes) {
        if (BareItemClass(c.itemClass) == BareItemClass(itemClass)) return &c;
    }
    return nullptr;
}

const std::vector<std::string>* DlxRules::Order(const std::string& element) const {
    auto it = orders.find(element);
    return it == orders.end() ? nullptr : &it->second;
}

bool DlxRules::HasRule(const std::string& name) const { return std::find(rules.begin(), rules.end(), name) != rules.end(); }

namespace {

// Holds one parsed dialog file against the rules and collects every difference.
class FormCheck {
public:
    explicit FormCheck(const DlxRules& rules) : rules_(rules) {}

    // rule one-line: the declaration, an empty line, the dialog on one line (only the Saved time
    // stamp keeps its line feed), "</Dialog>" on a line of its own.
    void Layout(const std::string& text) {
        const std::string head = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n\n<Dialog ";
        const std::string tail = "\n</Dialog>\n";
        if (text.compare(0, head.size(), head) != 0) {
            Problem("the file does not begin as NX writes it: the XML declaration, an empty line, then <Dialog");
            return;
        }
        if (text.size() < head.size() + tail.size() || text.compare(text.size() - tail.size(), tail.size(), tail) != 0) {
            Problem("the file does not end as NX writes it: </Dialog> alone on the last line");
            return;
        }
        size_t saved = text.find(" Saved=\"", head.size());
        size_t tagEnd = text.find('>', head.size());
        size_t savedEnd = saved < tagEnd ? text.find('"', saved + 8) : std::string::npos;
        for (size_t at = text.find('\n', head.size()); at < text.size() - tail.size(); at = text.find('\n', at + 1)) {
            if (saved < tagEnd && at > saved && at < savedEnd) continue;
            Problem("the dialog is written over several lines; NX 8.5 writes it on one line");
            return;
        }
    }

    void Dialog(const XmlElement& root) {
        Order(root, "Dialog", "the dialog");
        for (const auto& [attribute, expected] : rules_.dialogValues) {
            std::string actual = root.AttributeOr(attribute.c_str(), "");
            if (expected == "+" ? actual.empty() : actual != expected) {
                Problem("the dialog's " + attribute + " is " + Quoted(actual) + "; NX writes " + (expected == "+" ? "a text" : Quoted(expected)));
            }
        }
        for (const XmlElement& child : root.children) {
            if (child.name == "item") Item(child);
            if (child.name == "PropertyList") List(child, "Dialog", "the dialog");
            if (child.name == "AutoGenData") {
                for (const XmlElement& list : child.children) List(list, "AutoGenData", "the code generator settings");
            }
        }
    }

    std::vector<std::string> problems;

private:
    void Problem(const std::string& what) { problems.push_back(what); }

    // The element's attributes are ones NX writes on it, in NX's order.
    void Order(const XmlElement& element, const std::string& kind, const std::string& where) {
        const std::vector<std::string>* order = rules_.Order(kind);
        if (order == nullptr) return;
        size_t last = 0;
        for (const auto& attribute : element.attributes) {
            size_t at = std::find(order->begin(), order->end(), attribute.first) - order->begin();
            if (at == order->size()) {
                Problem(where + ": NX writes no attribute " + attribute.first + " on <" + element.name + ">");
                return;
            }
            if (at < last) {
                Problem(where + ": attribute " + attribute.first + " comes after " + (*order)[last] + "; NX writes it before");
                return;
            }
            last = at;
        }
    }

    void Item(const XmlElement& item) {
        std::string id = item.AttributeOr("id", "");
        std::string where = "block " + id;
        std::string itemClass = item.AttributeOr("class", "");
        Order(item, "item", where);
        if (item.AttributeOr("name", "") != id) Problem(where + ": name and id differ");
        const DlxClassRule* c = rules_.Class(itemClass);
        if (c == nullptr || c->itemClass != itemClass) {
            Problem(where + ": class " + Quoted(itemClass) + " is not written so by NX");
        } else {
            if (item.AttributeOr("presentation", "") != c->presentation) Problem(where + ": presentation is not " + Quoted(c->presentation));
            if (c->icon != "-" && item.AttributeOr("icon", "") != c->icon) Problem(where + ": icon is not " + Quoted(c->icon));
        }
        if (const XmlElement* list = item.FirstChild("PropertyList")) {
            Order(*list, "PropertyList", where);
            List(*list, itemClass, where);
        }
    }

    void List(const XmlElement& list, const std::string& itemClass, const std::string& owner) {
        for (const XmlElement& p : list.children) {
            if (p.name != "Property" || p.attributes.empty()) continue;  // selection blocks hold empty <Property/>
            std::string id = p.AttributeOr("id", "");
            std::string where = owner + ", property " + Quoted(id);
            Order(p, "Property", where);
            const DlxPropertyRule* rule = rules_.Property(itemClass, id);
            if (rule == nullptr) {
                Problem(where + ": NX 8.5 has no such property for " + itemClass);
                continue;
            }
            Attributes(p, *rule, where);
            for (const XmlElement& entry : p.children) {
                if (entry.name == "Option" || entry.name == "Strings") Order(entry, entry.name, where);
            }
            if (id == "Members") Members(p, itemClass, where);
        }
    }

    void Attributes(const XmlElement& p, const DlxPropertyRule& rule, const std::string& where) {
        const std::pair<const char*, const std::string*> fixed[] = {
            {"name", &rule.id}, {"sname", &rule.sname}, {"type", &rule.type}, {"group", &rule.group},
            {"ClassID", &rule.classId}, {"hierarchy", &rule.hierarchy}, {"source", &rule.source}};
        for (const auto& [attribute, expected] : fixed) {
            std::string actual = p.AttributeOr(attribute, "");
            if (actual != *expected) Problem(where + ": " + attribute + " is " + Quoted(actual) + "; NX writes " + Quoted(*expected));
        }
        std::string problem = rule.ValueProblem(p);
        if (!problem.empty()) Problem(where + ": " + problem);
        if (rule.type == "enum" && p.FirstChild("Option") == nullptr) Problem(where + ": NX writes every option of an enum");
        std::optional<unsigned long> mask = ParseMask(p.AttributeOr("mask", ""));
        if (!mask) {
            Problem(where + ": the mask " + Quoted(p.AttributeOr("mask", "")) + " is not a decimal number");
            return;
        }
        unsigned long base = *mask & ~256ul;
        if (std::find(rule.masks.begin(), rule.masks.end(), base) == rule.masks.end()) {
            Problem(where + ": NX writes no mask " + std::to_string(*mask) + " for this property (" + rule.evidence + ")");
        }
        if (!rules_.HasRule("changed-flag") || rule.defaultValue == "*" || rule.defaultValue == "-") return;
        std::string value = p.AttributeOr(rule.type == "enum" ? "selected" : "value", "");
        if (value != rule.defaultValue && (*mask & 256ul) == 0) {
            Problem(where + ": the value " + Quoted(value) + " differs from NX's default " + Quoted(rule.defaultValue) +
                    " but the mask lacks the changed flag 256, so NX keeps its default");
        }
    }

    // rule wrapper-hierarchy: each member sits in a uicomp wrapper that repeats its id and class,
    // with mask 256 and the container's class as hierarchy.
    void Members(const XmlElement& members, const std::string& containerClass, const std::string& where) {
        const XmlElement* items = members.FirstChild("PropertyList");
        if (items == nullptr) return;
        Order(*items, "PropertyList", where);
        for (const XmlElement& child : items->children) {
            if (child.name == "item") {
                Problem(where + ": member " + child.AttributeOr("id", "") + " has no uicomp wrapper");
                Item(child);
                continue;
            }
            const XmlElement* item = child.FirstChild("item");
            if (item == nullptr) continue;
            std::string wrapper = "the wrapper of block " + item->AttributeOr("id", "");
            Order(child, "wrapper", wrapper);
            if (rules_.HasRule("wrapper-hierarchy")) {
                if (child.AttributeOr("hierarchy", "") != containerClass) Problem(wrapper + ": hierarchy is not the container's class " + containerClass);
                if (child.AttributeOr("mask", "") != "256") Problem(wrapper + ": mask is not 256");
                for (const char* attribute : {"id", "class", "presentation"}) {
                    if (child.AttributeOr(attribute, "") != item->AttributeOr(attribute, "")) Problem(wrapper + ": " + attribute + " differs from the block's");
                }
            }
            Item(*item);
        }
    }

    const DlxRules& rules_;
};

}  // namespace

std::vector<std::string> CheckNxForm(const std::string& text, const std::string& name) {
    XmlElement root = ParseXml(text, name);
    FormCheck check(DlxRules::Nx85());
    if (DlxRules::Nx85().HasRule("one-line")) check.Layout(text);
    check.Dialog(root);
    return check.problems;
}

}  // namespace host::ui
