#include "ui/Dlx.hpp"

#include <algorithm>
#include <fstream>
#include <set>
#include <sstream>
#include <utility>

#include "ui/DlxRules.hpp"
#include "ui/Xml.hpp"

namespace host::ui {

namespace {

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
