// User attributes of NX objects: the NX Open members of NXObject and the user-function calls
// UF_ATTR_read_value / UF_ATTR_assign. One attribute per title and object; index -1 (not an
// array) is the only index the host knows.
#include <cstdio>
#include <cstdlib>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

#include <NXOpen/NXException.hxx>
#include <NXOpen/NXObject.hxx>
#include <uf_attr.h>

#include "HostSession.hpp"
#include "core/Core.hpp"
#include "core/Model.hpp"
#include "core/UfErrors.hpp"

namespace host::core {

using NXOpen::NXObject;

std::string ShortestReal(double value) {
    char text[32];
    for (int precision = 1; precision <= 17; ++precision) {
        std::snprintf(text, sizeof text, "%.*g", precision, value);
        if (std::strtod(text, nullptr) == value) break;
    }
    return text;
}

namespace {

// The session's attribute titles, each with its number; never shrinks (a mould has a few dozen).
// Every attribute call looks its title up here: the table is open-addressed, so a look-up is mostly
// one probe.
class Titles {
public:
    static Titles& Table() {
        static Titles* table = new Titles;  // never destroyed: parts of static storage may outlive it
        return *table;
    }

    // The number of a title, false when no attribute ever had it. The title found last is tried
    // first: a read asks HasUserAttribute, then UF_ATTR_read_value, for the same title.
    bool Find(const char* title, std::uint32_t* number) const {
        if (last_ != nullptr && std::strcmp(title, last_->c_str()) == 0) {
            *number = lastNumber_;
            return true;
        }
        const std::string_view text(title);
        if (!Lookup(text, Hash(text), number)) return false;
        last_ = &texts_[*number];  // a C string's title holds no NUL, so strcmp compares it whole
        lastNumber_ = *number;
        return true;
    }

    std::uint32_t Add(const std::string& title) {
        const std::uint64_t hash = Hash(title);
        std::uint32_t number;
        if (Lookup(title, hash, &number)) return number;
        number = static_cast<std::uint32_t>(texts_.size());
        texts_.push_back(title);
        last_ = nullptr;  // the texts may have moved
        if (2 * texts_.size() > slots_.size()) {
            std::vector<Slot> old(slots_.size() * 2);
            old.swap(slots_);
            for (const Slot& slot : old)
                if (slot.used) Place(slot);
        }
        Place(Slot{hash, number, true});
        return number;
    }

    const std::string& Text(std::uint32_t number) const { return texts_[number]; }

private:
    // FNV-1a: titles are a few bytes long.
    static std::uint64_t Hash(std::string_view text) {
        std::uint64_t hash = 14695981039346656037ull;
        for (unsigned char c : text) hash = (hash ^ c) * 1099511628211ull;
        return hash;
    }

    struct Slot {
        std::uint64_t hash = 0;
        std::uint32_t number = 0;
        bool used = false;
    };

    bool Lookup(std::string_view title, std::uint64_t hash, std::uint32_t* number) const {
        for (size_t i = hash & (slots_.size() - 1); slots_[i].used; i = (i + 1) & (slots_.size() - 1)) {
            if (slots_[i].hash == hash && texts_[slots_[i].number] == title) {
                *number = slots_[i].number;
                return true;
            }
        }
        return false;
    }

    void Place(const Slot& slot) {
        size_t i = slot.hash & (slots_.size() - 1);
        while (slots_[i].used) i = (i + 1) & (slots_.size() - 1);
        slots_[i] = slot;
    }

    std::vector<std::string> texts_;  // by number
    std::vector<Slot> slots_ = std::vector<Slot>(64);  // a power of two, at most half full
    mutable const std::string* last_ = nullptr;  // the title Find found last
    mutable std::uint32_t lastNumber_ = 0;
};

}  // namespace

const AttributeValue* AttributeList::Find(const char* title, NXObject::AttributeType type) const {
    std::uint32_t number;
    if (!Titles::Table().Find(title, &number)) return nullptr;
    for (size_t i = 0; i < values_.size(); ++i)
        if (Title(i) == number)
            return type == NXObject::AttributeTypeAny || values_[i].type == type ? &values_[i] : nullptr;
    return nullptr;
}

void AttributeList::Set(const Attribute& attribute) {
    const std::uint32_t number = Titles::Table().Add(attribute.title);
    for (size_t i = 0; i < values_.size(); ++i)
        if (Title(i) == number) {
            values_[i] = attribute;
            return;
        }
    if (values_.size() < kInline) inline_[values_.size()] = number;
    else more_.push_back(number);
    values_.push_back(attribute);
}

void AttributeList::Erase(size_t i) {
    for (size_t j = i; j + 1 < values_.size(); ++j) {
        const std::uint32_t next = Title(j + 1);
        if (j < kInline) inline_[j] = next;
        else more_[j - kInline] = next;
    }
    if (!more_.empty()) more_.pop_back();
    values_.erase(values_.begin() + i);
}

bool AttributeList::Remove(const char* title, NXObject::AttributeType type) {
    std::uint32_t number;
    if (!Titles::Table().Find(title, &number)) return false;
    for (size_t i = 0; i < values_.size(); ++i)
        if (Title(i) == number) {
            if (type != NXObject::AttributeTypeAny && values_[i].type != type) return false;
            Erase(i);
            return true;
        }
    return false;
}

void AttributeList::RemoveAll(NXObject::AttributeType type) {
    for (size_t i = values_.size(); i-- > 0;)
        if (type == NXObject::AttributeTypeAny || values_[i].type == type) Erase(i);
}

std::vector<Attribute> AttributeList::All() const {
    std::vector<Attribute> all(values_.size());
    for (size_t i = 0; i < values_.size(); ++i) {
        static_cast<AttributeValue&>(all[i]) = values_[i];
        all[i].title = Titles::Table().Text(Title(i));
    }
    return all;
}

namespace {

// The attributes' owner behind an NX object: its body or part; NULL for any other object (the
// session, a block, a node) and for NULL. Cast to the two classes themselves: attribute reads ask
// this of every body, and a cast to ObjectData, across the virtual interface bases of the NX
// classes, walks the whole class graph every time.
ObjectData* FindData(NXOpen::TaggedObject* object) {
    if (BodyImpl* body = AsBody(object)) return body;
    return AsPart(object);
}

// The ObjectData of an NX object; throws NXException when the object is not one of the core's.
ObjectData& DataOf(NXObject* object) {
    ObjectData* data = FindData(object);
    if (data == nullptr) throw NXOpen::NXException::Create(kUfNotAttributeOwner);
    return *data;
}

// The host keeps no attribute arrays (the plug-in uses index -1 only).
void RequireScalarIndex(int index) {
    if (index != -1) throw NXOpen::NXException::Create("Attribute arrays are not supported by the host");
}

std::string TitleText(const char* title) {
    std::string text = title == nullptr ? "" : title;
    if (text.empty()) throw NXOpen::NXException::Create("Attribute title is empty");
    return text;
}

void SetAttribute(NXObject* object, const char* title, int index, const Attribute& value) {
    RequireScalarIndex(index);
    Attribute a = value;
    a.title = TitleText(title);
    DataOf(object).attributes.Set(a);
}

// The attribute of that title and type at index; NX throws when there is none.
const AttributeValue& FindOrThrow(NXObject* object, const char* title, NXObject::AttributeType type, int index) {
    const AttributeValue* a = index == -1 ? DataOf(object).attributes.Find(title == nullptr ? "" : title, type) : nullptr;
    if (a == nullptr)
        throw NXOpen::NXException::Create((std::string("Attribute not found: ") + (title == nullptr ? "" : title)).c_str());
    return *a;
}

// Integer as "%d", real in the shortest form that reads back the same, boolean as "TRUE" or
// "FALSE" (host choices: NX's own formatting is not documented).
std::string ValueText(const AttributeValue& a) {
    switch (a.type) {
    case NXObject::AttributeTypeInteger: return std::to_string(a.integer);
    case NXObject::AttributeTypeReal: return ShortestReal(a.real);
    case NXObject::AttributeTypeBoolean: return a.boolean ? "TRUE" : "FALSE";
    case NXObject::AttributeTypeNull: return "";
    default: return a.text;
    }
}

NXObject::AttributeInformation Information(const std::string& title, const AttributeValue& a) {
    NXObject::AttributeInformation info;
    info.Type = a.type;
    info.Title = NXOpen::NXString(title, NXOpen::NXString::Locale);
    info.BooleanValue = a.boolean;
    info.IntegerValue = a.integer;
    info.RealValue = a.real;
    if (a.type == NXObject::AttributeTypeString) info.StringValue = NXOpen::NXString(a.text, NXOpen::NXString::Locale);
    if (a.type == NXObject::AttributeTypeTime) info.TimeValue = NXOpen::NXString(a.text, NXOpen::NXString::Locale);
    return info;
}

// An attribute of each type, without its title.
Attribute Value(NXObject::AttributeType type) {
    Attribute a;
    a.type = type;
    return a;
}
Attribute IntegerValue(int value) {
    Attribute a = Value(NXObject::AttributeTypeInteger);
    a.integer = value;
    return a;
}
Attribute RealValue(double value) {
    Attribute a = Value(NXObject::AttributeTypeReal);
    a.real = value;
    return a;
}
Attribute BooleanValue(bool value) {
    Attribute a = Value(NXObject::AttributeTypeBoolean);
    a.boolean = value;
    return a;
}
// A string or a time, which the host keeps as its text.
Attribute TextValue(NXObject::AttributeType type, const char* text) {
    Attribute a = Value(type);
    a.text = text == nullptr ? "" : text;
    return a;
}

}  // namespace
}  // namespace host::core

namespace NXOpen {

using host::core::Attribute;
using host::core::DataOf;

void NXObject::SetUserAttribute(const AttributeInformation& info, Update::Option) {
    HOST_NX_CALL("NXObject::SetUserAttribute");
    Attribute a;
    switch (info.Type) {
    case AttributeTypeNull: a = host::core::Value(AttributeTypeNull); break;
    case AttributeTypeBoolean: a = host::core::BooleanValue(info.BooleanValue); break;
    case AttributeTypeInteger: a = host::core::IntegerValue(info.IntegerValue); break;
    case AttributeTypeReal: a = host::core::RealValue(info.RealValue); break;
    case AttributeTypeString: a = host::core::TextValue(AttributeTypeString, info.StringValue.GetLocaleText()); break;
    case AttributeTypeTime: a = host::core::TextValue(AttributeTypeTime, info.TimeValue.GetLocaleText()); break;
    default: throw NXException::Create("Attribute type not supported by the host");
    }
    host::core::SetAttribute(this, info.Title.GetLocaleText(), info.Array ? info.ArrayElementIndex : -1, a);
}

void NXObject::SetUserAttribute(const NXString& title, int index, int value, Update::Option option) {
    HOST_NX_CALL("NXObject::SetUserAttribute");
    SetUserAttribute(title.GetLocaleText(), index, value, option);
}
void NXObject::SetUserAttribute(const char* title, int index, int value, Update::Option) {
    HOST_NX_CALL("NXObject::SetUserAttribute");
    host::core::SetAttribute(this, title, index, host::core::IntegerValue(value));
}

void NXObject::SetUserAttribute(const NXString& title, int index, double value, Update::Option option) {
    HOST_NX_CALL("NXObject::SetUserAttribute");
    SetUserAttribute(title.GetLocaleText(), index, value, option);
}
void NXObject::SetUserAttribute(const char* title, int index, double value, Update::Option) {
    HOST_NX_CALL("NXObject::SetUserAttribute");
    host::core::SetAttribute(this, title, index, host::core::RealValue(value));
}

void NXObject::SetUserAttribute(const NXString& title, int index, const NXString& value, Update::Option option) {
    HOST_NX_CALL("NXObject::SetUserAttribute");
    SetUserAttribute(title.GetLocaleText(), index, value.GetLocaleText(), option);
}
void NXObject::SetUserAttribute(const char* title, int index, const char* value, Update::Option) {
    HOST_NX_CALL("NXObject::SetUserAttribute");
    host::core::SetAttribute(this, title, index, host::core::TextValue(AttributeTypeString, value));
}

void NXObject::SetUserAttribute(const NXString& title, int index, Update::Option option) {
    HOST_NX_CALL("NXObject::SetUserAttribute");
    SetUserAttribute(title.GetLocaleText(), index, option);
}
void NXObject::SetUserAttribute(const char* title, int index, Update::Option) {
    HOST_NX_CALL("NXObject::SetUserAttribute");
    host::core::SetAttribute(this, title, index, host::core::Value(AttributeTypeNull));
}

void NXObject::SetTimeUserAttribute(const NXString& title, int index, const NXString& value, Update::Option option) {
    HOST_NX_CALL("NXObject::SetTimeUserAttribute");
    SetTimeUserAttribute(title.GetLocaleText(), index, value.GetLocaleText(), option);
}
void NXObject::SetTimeUserAttribute(const char* title, int index, const char* value, Update::Option) {
    HOST_NX_CALL("NXObject::SetTimeUserAttribute");
    host::core::SetAttribute(this, title, index, host::core::TextValue(AttributeTypeTime, value));
}

void NXObject::SetBooleanUserAttribute(const NXString& title, int index, bool value, Update::Option option) {
    HOST_NX_CALL("NXObject::SetBooleanUserAttribute");
    SetBooleanUserAttribute(title.GetLocaleText(), index, value, option);
}
void NXObject::SetBooleanUserAttribute(const char* title, int index, bool value, Update::Option) {
    HOST_NX_CALL("NXObject::SetBooleanUserAttribute");
    host::core::SetAttribute(this, title, index, host::core::BooleanValue(value));
}

bool NXObject::HasUserAttribute(const NXString& title, AttributeType type, int index) {
    HOST_NX_CALL("NXObject::HasUserAttribute");
    return HasUserAttribute(title.GetLocaleText(), type, index);
}
bool NXObject::HasUserAttribute(const char* title, AttributeType type, int index) {
    HOST_NX_CALL("NXObject::HasUserAttribute");
    return index == -1 && DataOf(this).attributes.Find(title == nullptr ? "" : title, type) != nullptr;
}

NXObject::AttributeInformation NXObject::GetUserAttribute(const NXString& title, AttributeType type, int index) {
    HOST_NX_CALL("NXObject::GetUserAttribute");
    return GetUserAttribute(title.GetLocaleText(), type, index);
}
NXObject::AttributeInformation NXObject::GetUserAttribute(const char* title, AttributeType type, int index) {
    HOST_NX_CALL("NXObject::GetUserAttribute");
    return host::core::Information(title == nullptr ? "" : title, host::core::FindOrThrow(this, title, type, index));
}

NXString NXObject::GetStringUserAttribute(const NXString& title, int index) {
    HOST_NX_CALL("NXObject::GetStringUserAttribute");
    return GetStringUserAttribute(title.GetLocaleText(), index);
}
NXString NXObject::GetStringUserAttribute(const char* title, int index) {
    HOST_NX_CALL("NXObject::GetStringUserAttribute");
    return NXString(host::core::FindOrThrow(this, title, AttributeTypeString, index).text, NXString::Locale);
}

int NXObject::GetIntegerUserAttribute(const NXString& title, int index) {
    HOST_NX_CALL("NXObject::GetIntegerUserAttribute");
    return GetIntegerUserAttribute(title.GetLocaleText(), index);
}
int NXObject::GetIntegerUserAttribute(const char* title, int index) {
    HOST_NX_CALL("NXObject::GetIntegerUserAttribute");
    return host::core::FindOrThrow(this, title, AttributeTypeInteger, index).integer;
}

double NXObject::GetRealUserAttribute(const NXString& title, int index) {
    HOST_NX_CALL("NXObject::GetRealUserAttribute");
    return GetRealUserAttribute(title.GetLocaleText(), index);
}
double NXObject::GetRealUserAttribute(const char* title, int index) {
    HOST_NX_CALL("NXObject::GetRealUserAttribute");
    return host::core::FindOrThrow(this, title, AttributeTypeReal, index).real;
}

NXString NXObject::GetUserAttributeAsString(const NXString& title, AttributeType type, int index) {
    HOST_NX_CALL("NXObject::GetUserAttributeAsString");
    return GetUserAttributeAsString(title.GetLocaleText(), type, index);
}
NXString NXObject::GetUserAttributeAsString(const char* title, AttributeType type, int index) {
    HOST_NX_CALL("NXObject::GetUserAttributeAsString");
    return NXString(host::core::ValueText(host::core::FindOrThrow(this, title, type, index)), NXString::Locale);
}

std::vector<NXObject::AttributeInformation> NXObject::GetUserAttributes() {
    HOST_NX_CALL("NXObject::GetUserAttributes");
    std::vector<AttributeInformation> all;
    for (const Attribute& a : DataOf(this).attributes.All()) all.push_back(host::core::Information(a.title, a));
    return all;
}

void NXObject::DeleteUserAttribute(AttributeType type, const NXString& title, bool deleteEntireArray, Update::Option option) {
    HOST_NX_CALL("NXObject::DeleteUserAttribute");
    DeleteUserAttribute(type, title.GetLocaleText(), deleteEntireArray, option);
}
// Deleting an attribute that does not exist is not an error.
void NXObject::DeleteUserAttribute(AttributeType type, const char* title, bool, Update::Option) {
    HOST_NX_CALL("NXObject::DeleteUserAttribute");
    DataOf(this).attributes.Remove(title == nullptr ? "" : title, type);
}

void NXObject::DeleteUserAttributes(AttributeType type, Update::Option) { HOST_NX_CALL("NXObject::DeleteUserAttributes"); DataOf(this).attributes.RemoveAll(type); }

NXString NXObject::Name() { HOST_NX_CALL("NXObject::Name"); return NXString(DataOf(this).name, NXString::Locale); }
void NXObject::SetName(const NXString& name) { HOST_NX_CALL("NXObject::SetName"); SetName(name.GetLocaleText()); }
void NXObject::SetName(const char* name) { HOST_NX_CALL("NXObject::SetName"); DataOf(this).name = name == nullptr ? "" : name; }

// The host's journal identifier of an object is its tag in decimal.
NXString NXObject::JournalIdentifier() { HOST_NX_CALL("NXObject::JournalIdentifier"); return NXString(std::to_string(Tag()), NXString::Locale); }
bool NXObject::IsOccurrence() { HOST_NX_CALL("NXObject::IsOccurrence"); return false; }
BasePart* NXObject::OwningPart() {
    HOST_NX_CALL("NXObject::OwningPart");
    host::core::BodyImpl* body = dynamic_cast<host::core::BodyImpl*>(this);
    return body == nullptr ? nullptr : body->part;
}

NXObject::NXObject() = default;
NXObject::~NXObject() = default;

}  // namespace NXOpen

// ---------------------------------------------------------------------------------------------
// UF_ATTR: the older attribute calls, on a body or on a part given by its tag.

namespace {

using namespace host::core;
using NXOpen::NXObject;

// NX Open type of a UF_ATTR_* type; AttributeTypeInvalid for a number that is not one.
NXObject::AttributeType OpenType(int ufType) {
    switch (ufType) {
    case UF_ATTR_integer: return NXObject::AttributeTypeInteger;
    case UF_ATTR_real: return NXObject::AttributeTypeReal;
    case UF_ATTR_time: return NXObject::AttributeTypeTime;
    case UF_ATTR_null: return NXObject::AttributeTypeNull;
    case UF_ATTR_string: return NXObject::AttributeTypeString;
    case UF_ATTR_any: return NXObject::AttributeTypeAny;
    case UF_ATTR_reference: return NXObject::AttributeTypeReference;  // the host keeps none
    case UF_ATTR_bool: return NXObject::AttributeTypeBoolean;
    default: return NXObject::AttributeTypeInvalid;
    }
}

int UfType(NXObject::AttributeType type) {
    switch (type) {
    case NXObject::AttributeTypeInteger: return UF_ATTR_integer;
    case NXObject::AttributeTypeReal: return UF_ATTR_real;
    case NXObject::AttributeTypeTime: return UF_ATTR_time;
    case NXObject::AttributeTypeNull: return UF_ATTR_null;
    case NXObject::AttributeTypeBoolean: return UF_ATTR_bool;
    default: return UF_ATTR_string;
    }
}

char* CopyForCaller(const std::string& text) {
    char* copy = static_cast<char*>(std::malloc(text.size() + 1));
    std::memcpy(copy, text.c_str(), text.size() + 1);
    return copy;
}

// Keeps a write refused for NX's limits (host::RefusedAttributes) and returns its code.
int Refused(tag_t object, const char* title, const UF_ATTR_value_t& value, int code) {
    host::RefusedAttribute refused;
    refused.tag = object;
    refused.title = title;
    if (value.type == UF_ATTR_string && value.value.string != nullptr) refused.value = value.value.string;
    refused.code = code;
    State().refusedAttributes.push_back(refused);
    return code;
}

}  // namespace

extern "C" {

// A missing attribute (or one of another type than a specific type asked for) gives
// value->type 0 and success. A string read with UF_ATTR_any, or with UF_ATTR_string into a NULL
// value.string, is allocated for the caller (UF_free); with UF_ATTR_string into a buffer, at
// most UF_ATTR_MAX_STRING_LEN bytes and a NUL are copied into it.
int UF_ATTR_read_value(tag_t object, char* title, int type, UF_ATTR_value_p_t value) {
    HOST_NX_CALL("UF_ATTR_read_value");
    if (int code = RequireInitialized("UF_ATTR_read_value")) return code;
    if (title == nullptr || value == nullptr) return kUfNullArgument;
    ObjectData* data = FindData(host::Tags::Find(object));
    if (data == nullptr) return host::Tags::Find(object) == nullptr ? kUfBadTag : kUfNotAttributeOwner;
    NXObject::AttributeType openType = OpenType(type);
    if (openType == NXObject::AttributeTypeInvalid) return kUfBadAttributeType;
    const AttributeValue* a = data->attributes.Find(title, openType);
    if (a == nullptr) {
        value->type = 0;
        return 0;
    }
    value->type = UfType(a->type);
    switch (a->type) {
    case NXObject::AttributeTypeInteger: value->value.integer = a->integer; break;
    case NXObject::AttributeTypeReal: value->value.real = a->real; break;
    case NXObject::AttributeTypeBoolean: value->value.boolean = a->boolean; break;
    case NXObject::AttributeTypeTime:  // the host keeps time values as text only
        value->value.time[0] = 0;
        value->value.time[1] = 0;
        break;
    case NXObject::AttributeTypeString:
        if (type == UF_ATTR_string && value->value.string != nullptr) {
            std::strncpy(value->value.string, a->text.c_str(), UF_ATTR_MAX_STRING_LEN);
            value->value.string[UF_ATTR_MAX_STRING_LEN] = '\0';
        } else {
            value->value.string = CopyForCaller(a->text);
        }
        break;
    default: break;
    }
    return 0;
}

// Creates or replaces (whatever its type) the attribute of that title. A title longer than
// UF_ATTR_MAX_TITLE_LEN bytes or a string longer than UF_ATTR_MAX_STRING_LEN bytes is refused
// with an error code and nothing is written.
int UF_ATTR_assign(tag_t object, char* title, UF_ATTR_value_t value) {
    HOST_NX_CALL("UF_ATTR_assign");
    if (int code = RequireInitialized("UF_ATTR_assign")) return code;
    if (title == nullptr) return kUfNullArgument;
    size_t titleLength = std::strlen(title);
    if (titleLength == 0) return kUfEmptyTitle;
    if (titleLength > UF_ATTR_MAX_TITLE_LEN) return Refused(object, title, value, kUfTitleTooLong);
    ObjectData* data = FindData(host::Tags::Find(object));
    if (data == nullptr) return host::Tags::Find(object) == nullptr ? kUfBadTag : kUfNotAttributeOwner;
    Attribute a;
    switch (value.type) {
    case UF_ATTR_integer: a = IntegerValue(value.value.integer); break;
    case UF_ATTR_real: a = RealValue(value.value.real); break;
    case UF_ATTR_null: a = Value(NXObject::AttributeTypeNull); break;
    case UF_ATTR_bool: a = BooleanValue(value.value.boolean); break;
    case UF_ATTR_string:
        if (value.value.string == nullptr) return kUfNullArgument;
        if (std::strlen(value.value.string) > UF_ATTR_MAX_STRING_LEN) return Refused(object, title, value, kUfValueTooLong);
        a = TextValue(NXObject::AttributeTypeString, value.value.string);
        break;
    default: return kUfBadAttributeType;  // time and reference values are not kept by the host
    }
    a.title = title;
    data->attributes.Set(a);
    return 0;
}

}  // extern "C"
