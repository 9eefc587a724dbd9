// The dialog's blocks: UIBlock and its NX classes, the top block's FindBlock, and the property
// lists through which NX exposes a block's properties by name.
#include <variant>

#include <NXOpen/BlockStyler_PropertyList.hxx>

#include "HostSession.hpp"
#include "ui/Ui.hpp"

namespace host::ui {
namespace {

using Objects = std::vector<NXOpen::TaggedObject*>;
using Strings = std::vector<std::string>;
using Value = std::variant<std::string, bool, int, Strings, Objects>;

const char* TypeName(size_t index) {
    static const char* const names[] = {"string", "logical", "integer", "string list", "object list"};
    return names[index];
}

// One property as NX Open names it (the "sname" of the dialog file). A property without a setter
// is read-only.
struct Property {
    std::string name;
    std::function<Value()> get;
    std::function<void(const Value&)> set;
};

template <class T>
Property Field(const char* name, T& field) {
    return {name, [&field] { return Value(field); }, [&field](const Value& v) { field = std::get<T>(v); }};
}

// The properties each block class exposes, those the plug-in may use at least.
std::vector<Property> PropertiesOf(BlockImpl& b) {
    std::vector<Property> list = {
        {"BlockID", [&b] { return Value(b.id); }, nullptr},
        {"Label", [&b] { return Value(b.label); }, [&b](const Value& v) { b.SetLabel(std::get<std::string>(v)); }},
        Field("Show", b.show),
        Field("Enable", b.enable),
        Field("Expanded", b.expanded),
        Field("Group", b.group),
    };
    if (auto* s = dynamic_cast<StringBlockImpl*>(&b)) {
        list.push_back(Field("Value", s->value));
        list.push_back(Field("WideValue", s->value));
        list.push_back(Field("ListItems", s->items));
        list.push_back(Field("ReadOnlyString", s->readOnly));
        list.push_back(Field("MaxTextLength", s->maxLength));
    } else if (auto* c = dynamic_cast<BodyCollectorImpl*>(&b)) {
        list.push_back(Field("SelectedObjects", c->selected));
    } else if (auto* f = dynamic_cast<FolderSelectionImpl*>(&b)) {
        list.push_back(Field("Path", f->path));
    } else if (auto* t = dynamic_cast<TreeImpl*>(&b)) {
        list.push_back(Field("ShowToolTips", t->showToolTips));
        list.push_back(Field("ShowHeader", t->showHeader));
        list.push_back(Field("SortRootNodes", t->sortRootNodes));
        list.push_back(Field("Height", t->height));
    }
    return list;
}

BlockImpl& Owner(NXOpen::BlockStyler::PropertyList* list) { return *static_cast<BlockImpl*>(list->GetHandle()); }

// NX throws for a property the block does not have, and for one of another type.
Property Find(NXOpen::BlockStyler::PropertyList* list, const std::string& name, size_t type) {
    BlockImpl& b = Owner(list);
    for (Property& p : PropertiesOf(b)) {
        if (p.name != name) continue;
        size_t actual = p.get().index();
        if (actual != type) Fail("PropertyList: property " + name + " of block " + b.id + " is a " + TypeName(actual) + ", not a " + TypeName(type));
        return p;
    }
    Fail("PropertyList: block " + b.id + " has no property " + name);
}

Property Find(NXOpen::BlockStyler::PropertyList* list, int index, size_t type) {
    BlockImpl& b = Owner(list);
    std::vector<Property> all = PropertiesOf(b);
    if (index < 0 || index >= static_cast<int>(all.size())) Fail("PropertyList: block " + b.id + " has no property " + std::to_string(index));
    return Find(list, all[index].name, type);
}

template <class T, class Key>
T Get(NXOpen::BlockStyler::PropertyList* list, const Key& key) {
    return std::get<T>(Find(list, key, Value(T()).index()).get());
}

template <class T>
void Set(NXOpen::BlockStyler::PropertyList* list, const std::string& name, const T& value) {
    Property p = Find(list, name, Value(T()).index());
    if (!p.set) Fail("PropertyList: property " + name + " of block " + Owner(list).id + " is read-only");
    p.set(Value(value));
}

std::vector<NXOpen::NXString> ToNX(const Strings& texts) {
    return std::vector<NXOpen::NXString>(texts.begin(), texts.end());
}

Strings FromNX(const std::vector<NXOpen::NXString>& texts) {
    Strings result;
    for (const NXOpen::NXString& t : texts) result.push_back(t.GetLocaleText());
    return result;
}

const char* const kPresentationStyles[] = {"KeyIn", "Wide", "List", "Combo", "Autocomplete"};

template <class ImplClass, class NxClass>
ImplClass& As(NxClass* block) {
    return static_cast<ImplClass&>(Impl(block));
}

}  // namespace
}  // namespace host::ui

namespace NXOpen {
namespace BlockStyler {

using host::ui::As;
using host::ui::Fail;
using host::ui::Impl;
using host::ui::Text;

UIBlock::UIBlock() {}
UIBlock::~UIBlock() {}
NXString UIBlock::Type() { HOST_NX_CALL("UIBlock::Type"); return NXString(Impl(this).className); }
NXString UIBlock::Name() { HOST_NX_CALL("UIBlock::Name"); return NXString(Impl(this).id); }
PropertyList* UIBlock::GetProperties() { HOST_NX_CALL("UIBlock::GetProperties"); return new PropertyList(&Impl(this)); }
void UIBlock::Focus() { HOST_NX_CALL("UIBlock::Focus");}
bool UIBlock::Enable() { HOST_NX_CALL("UIBlock::Enable"); return Impl(this).enable; }
void UIBlock::SetEnable(bool enable) { HOST_NX_CALL("UIBlock::SetEnable"); Impl(this).enable = enable; }
bool UIBlock::Expanded() { HOST_NX_CALL("UIBlock::Expanded"); return Impl(this).expanded; }
void UIBlock::SetExpanded(bool expanded) { HOST_NX_CALL("UIBlock::SetExpanded"); Impl(this).expanded = expanded; }
bool UIBlock::Group() { HOST_NX_CALL("UIBlock::Group"); return Impl(this).group; }
void UIBlock::SetGroup(bool group) { HOST_NX_CALL("UIBlock::SetGroup"); Impl(this).group = group; }
NXString UIBlock::Label() { HOST_NX_CALL("UIBlock::Label"); return NXString(Impl(this).label); }
void UIBlock::SetLabel(const NXString& label) { HOST_NX_CALL("UIBlock::SetLabel"); Impl(this).SetLabel(label.GetLocaleText()); }
void UIBlock::SetLabel(const char* label) { HOST_NX_CALL("UIBlock::SetLabel"); Impl(this).SetLabel(Text(label)); }
bool UIBlock::Show() { HOST_NX_CALL("UIBlock::Show"); return Impl(this).show; }
void UIBlock::SetShow(bool show) { HOST_NX_CALL("UIBlock::SetShow"); Impl(this).show = show; }

CompositeBlock::CompositeBlock() {}
CompositeBlock::~CompositeBlock() {}

UIBlock* CompositeBlock::FindBlock(const NXString& blockName) { HOST_NX_CALL("CompositeBlock::FindBlock"); return FindBlock(blockName.GetLocaleText()); }

// NX throws for an id that no block of the dialog has; it never returns NULL.
UIBlock* CompositeBlock::FindBlock(const char* blockName) {
    HOST_NX_CALL("CompositeBlock::FindBlock");
    host::ui::BlockImpl* block = Impl(this).dialog.FindBlock(Text(blockName));
    if (block == nullptr) Fail("CompositeBlock::FindBlock: the dialog has no block \"" + Text(blockName) + "\"");
    return block->Ui();
}

std::vector<UIBlock*> CompositeBlock::GetBlocks() {
    HOST_NX_CALL("CompositeBlock::GetBlocks");
    std::vector<UIBlock*> blocks;
    for (host::ui::BlockImpl* member : Impl(this).members) blocks.push_back(member->Ui());
    return blocks;
}

StringBlock::StringBlock() {}
StringBlock::~StringBlock() {}
NXString StringBlock::Value() { HOST_NX_CALL("StringBlock::Value"); return NXString(As<host::ui::StringBlockImpl>(this).value); }
void StringBlock::SetValue(const NXString& valueString) { HOST_NX_CALL("StringBlock::SetValue"); As<host::ui::StringBlockImpl>(this).value = valueString.GetLocaleText(); }
void StringBlock::SetValue(const char* valueString) { HOST_NX_CALL("StringBlock::SetValue"); As<host::ui::StringBlockImpl>(this).value = Text(valueString); }
NXString StringBlock::WideValue() { HOST_NX_CALL("StringBlock::WideValue"); return Value(); }
void StringBlock::SetWideValue(const NXString& wideValueString) { HOST_NX_CALL("StringBlock::SetWideValue"); SetValue(wideValueString); }
void StringBlock::SetWideValue(const char* wideValueString) { HOST_NX_CALL("StringBlock::SetWideValue"); SetValue(wideValueString); }
std::vector<NXString> StringBlock::GetListItems() { HOST_NX_CALL("StringBlock::GetListItems"); return host::ui::ToNX(As<host::ui::StringBlockImpl>(this).items); }
void StringBlock::SetListItems(std::vector<NXString>& itemStrings) { HOST_NX_CALL("StringBlock::SetListItems"); As<host::ui::StringBlockImpl>(this).items = host::ui::FromNX(itemStrings); }
NXString StringBlock::PresentationStyleAsString() { HOST_NX_CALL("StringBlock::PresentationStyleAsString"); return NXString(As<host::ui::StringBlockImpl>(this).style); }
void StringBlock::SetPresentationStyleAsString(const NXString& enumString) { HOST_NX_CALL("StringBlock::SetPresentationStyleAsString"); SetPresentationStyleAsString(enumString.GetLocaleText()); }

void StringBlock::SetPresentationStyleAsString(const char* enumString) {
    HOST_NX_CALL("StringBlock::SetPresentationStyleAsString");
    std::string style = Text(enumString);
    for (const char* known : host::ui::kPresentationStyles) {
        if (style == known) {
            As<host::ui::StringBlockImpl>(this).style = style;
            return;
        }
    }
    Fail("StringBlock::SetPresentationStyleAsString: \"" + style + "\" is not a presentation style");
}

bool StringBlock::ReadOnlyString() { HOST_NX_CALL("StringBlock::ReadOnlyString"); return As<host::ui::StringBlockImpl>(this).readOnly; }
void StringBlock::SetReadOnlyString(bool readonly) { HOST_NX_CALL("StringBlock::SetReadOnlyString"); As<host::ui::StringBlockImpl>(this).readOnly = readonly; }
int StringBlock::MaxTextLength() { HOST_NX_CALL("StringBlock::MaxTextLength"); return As<host::ui::StringBlockImpl>(this).maxLength; }
void StringBlock::SetMaxTextLength(int textLength) { HOST_NX_CALL("StringBlock::SetMaxTextLength"); As<host::ui::StringBlockImpl>(this).maxLength = textLength; }

Button::Button() {}
Button::~Button() {}
Group::Group() {}
Group::~Group() {}
ScrolledWindow::ScrolledWindow() {}
ScrolledWindow::~ScrolledWindow() {}

BodyCollector::BodyCollector() {}
BodyCollector::~BodyCollector() {}
std::vector<TaggedObject*> BodyCollector::GetSelectedObjects() { HOST_NX_CALL("BodyCollector::GetSelectedObjects"); return As<host::ui::BodyCollectorImpl>(this).selected; }
void BodyCollector::SetSelectedObjects(const std::vector<TaggedObject*>& objectVector) { HOST_NX_CALL("BodyCollector::SetSelectedObjects"); As<host::ui::BodyCollectorImpl>(this).selected = objectVector; }

FolderSelection::FolderSelection() {}
FolderSelection::~FolderSelection() {}
NXString FolderSelection::Path() { HOST_NX_CALL("FolderSelection::Path"); return NXString(As<host::ui::FolderSelectionImpl>(this).path); }
void FolderSelection::SetPath(const NXString& path) { HOST_NX_CALL("FolderSelection::SetPath"); As<host::ui::FolderSelectionImpl>(this).path = path.GetLocaleText(); }
void FolderSelection::SetPath(const char* path) { HOST_NX_CALL("FolderSelection::SetPath"); As<host::ui::FolderSelectionImpl>(this).path = Text(path); }

// The list reads and writes the block itself; deleting the list leaves the block alone.
PropertyList::PropertyList(void* ptr) : TransientObject(ptr) {}
PropertyList::~PropertyList() {}

using host::ui::Get;
using host::ui::Objects;
using host::ui::Set;
using host::ui::Strings;

std::vector<TaggedObject*> PropertyList::GetTaggedObjectVector(const NXString& propertyName) { HOST_NX_CALL("PropertyList::GetTaggedObjectVector"); return Get<Objects>(this, std::string(propertyName.GetLocaleText())); }
std::vector<TaggedObject*> PropertyList::GetTaggedObjectVector(const char* propertyName) { HOST_NX_CALL("PropertyList::GetTaggedObjectVector"); return Get<Objects>(this, Text(propertyName)); }
std::vector<TaggedObject*> PropertyList::GetTaggedObjectVector(int propertyIndex) { HOST_NX_CALL("PropertyList::GetTaggedObjectVector"); return Get<Objects>(this, propertyIndex); }
void PropertyList::SetTaggedObjectVector(const NXString& propertyName, const std::vector<TaggedObject*>& tagVector) { HOST_NX_CALL("PropertyList::SetTaggedObjectVector"); Set(this, propertyName.GetLocaleText(), tagVector); }
void PropertyList::SetTaggedObjectVector(const char* propertyName, const std::vector<TaggedObject*>& tagVector) { HOST_NX_CALL("PropertyList::SetTaggedObjectVector"); Set(this, Text(propertyName), tagVector); }
NXString PropertyList::GetString(const NXString& propertyName) { HOST_NX_CALL("PropertyList::GetString"); return NXString(Get<std::string>(this, std::string(propertyName.GetLocaleText()))); }
NXString PropertyList::GetString(const char* propertyName) { HOST_NX_CALL("PropertyList::GetString"); return NXString(Get<std::string>(this, Text(propertyName))); }
NXString PropertyList::GetString(int propertyIndex) { HOST_NX_CALL("PropertyList::GetString"); return NXString(Get<std::string>(this, propertyIndex)); }
void PropertyList::SetString(const NXString& propertyName, const NXString& value) { HOST_NX_CALL("PropertyList::SetString"); Set(this, propertyName.GetLocaleText(), std::string(value.GetLocaleText())); }
void PropertyList::SetString(const char* propertyName, const char* value) { HOST_NX_CALL("PropertyList::SetString"); Set(this, Text(propertyName), Text(value)); }
bool PropertyList::GetLogical(const NXString& propertyName) { HOST_NX_CALL("PropertyList::GetLogical"); return Get<bool>(this, std::string(propertyName.GetLocaleText())); }
bool PropertyList::GetLogical(const char* propertyName) { HOST_NX_CALL("PropertyList::GetLogical"); return Get<bool>(this, Text(propertyName)); }
bool PropertyList::GetLogical(int propertyIndex) { HOST_NX_CALL("PropertyList::GetLogical"); return Get<bool>(this, propertyIndex); }
void PropertyList::SetLogical(const NXString& propertyName, bool value) { HOST_NX_CALL("PropertyList::SetLogical"); Set(this, propertyName.GetLocaleText(), value); }
void PropertyList::SetLogical(const char* propertyName, bool value) { HOST_NX_CALL("PropertyList::SetLogical"); Set(this, Text(propertyName), value); }
int PropertyList::GetInteger(const NXString& propertyName) { HOST_NX_CALL("PropertyList::GetInteger"); return Get<int>(this, std::string(propertyName.GetLocaleText())); }
int PropertyList::GetInteger(const char* propertyName) { HOST_NX_CALL("PropertyList::GetInteger"); return Get<int>(this, Text(propertyName)); }
int PropertyList::GetInteger(int propertyIndex) { HOST_NX_CALL("PropertyList::GetInteger"); return Get<int>(this, propertyIndex); }
void PropertyList::SetInteger(const NXString& propertyName, int value) { HOST_NX_CALL("PropertyList::SetInteger"); Set(this, propertyName.GetLocaleText(), value); }
void PropertyList::SetInteger(const char* propertyName, int value) { HOST_NX_CALL("PropertyList::SetInteger"); Set(this, Text(propertyName), value); }
std::vector<NXString> PropertyList::GetStrings(const NXString& propertyName) { HOST_NX_CALL("PropertyList::GetStrings"); return host::ui::ToNX(Get<Strings>(this, std::string(propertyName.GetLocaleText()))); }
std::vector<NXString> PropertyList::GetStrings(const char* propertyName) { HOST_NX_CALL("PropertyList::GetStrings"); return host::ui::ToNX(Get<Strings>(this, Text(propertyName))); }
std::vector<NXString> PropertyList::GetStrings(int propertyIndex) { HOST_NX_CALL("PropertyList::GetStrings"); return host::ui::ToNX(Get<Strings>(this, propertyIndex)); }
void PropertyList::SetStrings(const NXString& propertyName, std::vector<NXString>& stringArray) { HOST_NX_CALL("PropertyList::SetStrings"); Set(this, propertyName.GetLocaleText(), host::ui::FromNX(stringArray)); }
void PropertyList::SetStrings(const char* propertyName, std::vector<NXString>& stringArray) { HOST_NX_CALL("PropertyList::SetStrings"); Set(this, Text(propertyName), host::ui::FromNX(stringArray)); }

}  // namespace BlockStyler
}  // namespace NXOpen
