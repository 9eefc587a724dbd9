// The session core's model of NX objects: the host classes behind the NX Open classes of the
// work part (part, bodies, layers), with the data the NX headers do not show.
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <typeinfo>
#include <string>
#include <vector>

#include <NXOpen/Body.hxx>
#include <NXOpen/BodyCollection.hxx>
#include <NXOpen/Layer_LayerManager.hxx>
#include <NXOpen/NXObject.hxx>
#include <NXOpen/Part.hxx>

#include "core/Solid.hpp"

namespace host::core {

// The value of a user attribute (not an array element). Text is GBK.
struct AttributeValue {
    std::string text;  // String: the value; Time: the value as given
    double real = 0;
    int integer = 0;
    NXOpen::NXObject::AttributeType type = NXOpen::NXObject::AttributeTypeString;
    bool boolean = false;
};

// One user attribute of an object, with its title (GBK).
struct Attribute : AttributeValue {
    std::string title;
};

// The user attributes of an object, in the order they were created. A title names at most one
// attribute: setting a value under an existing title replaces it, type included, in its place.
// Titles are kept as numbers of a table of the session's titles: a look-up, which every
// attribute read of the plug-in's matching makes, compares numbers, not texts.
class AttributeList {
public:
    // The value under that title, NULL when there is none; with a type other than
    // AttributeTypeAny, only when it has that type.
    const AttributeValue* Find(const char* title, NXOpen::NXObject::AttributeType type) const;
    void Set(const Attribute& attribute);
    // Removes the attribute of that title (and type, unless AttributeTypeAny); false when absent.
    bool Remove(const char* title, NXOpen::NXObject::AttributeType type);
    // Removes every attribute of that type (every one for AttributeTypeAny).
    void RemoveAll(NXOpen::NXObject::AttributeType type);
    std::vector<Attribute> All() const;
    // Room for n attributes in all, so that a part file's attributes take no more memory than
    // they need.
    void Reserve(size_t n) { values_.reserve(n); }

private:
    // The numbers of the titles, apart from the values; the first kInline in the object itself,
    // so that a search reads no other memory for an object with the usual dozen attributes.
    static constexpr size_t kInline = 16;
    std::uint32_t Title(size_t i) const { return i < kInline ? inline_[i] : more_[i - kInline]; }
    void Erase(size_t i);

    std::uint32_t inline_[kInline] = {};
    std::vector<std::uint32_t> more_;
    std::vector<AttributeValue> values_;  // values_[i] is under title Title(i)
};

// What every host NX object of the core carries besides its NX class.
class ObjectData {
public:
    virtual ~ObjectData() = default;
    AttributeList attributes;
    std::string name;  // NXObject::Name(), GBK
};

class PartImpl;

// The density of every body: steel, 7.85 g/cm^3 in kg/mm^3, NX's unit for a millimetre part.
constexpr double kSteelDensity = 7.85e-6;

class BodyImpl;

// A face or an edge of a body, as far as a part file names them: an object with a tag that a
// designer can pick in a selection dialog, which is not a body.
class TopologyImpl : public NXOpen::DisplayableObject {
public:
    TopologyImpl(BodyImpl* owner, int solidSubtype, tag_t tag) : body(owner), subtype(solidSubtype), fileTag(tag) {}
    ~TopologyImpl() override = default;

    BodyImpl* body;    // borrowed: the body owns its faces and edges
    const int subtype;  // UF_solid_face_subtype or UF_solid_edge_subtype
    const tag_t fileTag;
};

class BodyImpl final : public NXOpen::Body, public ObjectData {
public:
    // Bodies are made only when a part file is read, in part order: a body keeps its place.
    BodyImpl(PartImpl* owner, size_t place) : part(owner), position(place) {}
    ~BodyImpl() override = default;

    PartImpl* part;  // borrowed: the part owns its bodies
    const size_t position;  // in part->bodies
    tag_t fileTag = NULL_TAG;  // the tag of the part file, registered when the part becomes work
    int layer = 1;
    int color = 1;
    bool blanked = false;
    bool highlighted = false;
    Solid solid;
    Placement placement;
    std::vector<std::unique_ptr<TopologyImpl>> faces;  // as the part file names them
    std::vector<std::unique_ptr<TopologyImpl>> edges;
};

class LayerManagerImpl : public NXOpen::Layer::LayerManager {
public:
    LayerManagerImpl();
    ~LayerManagerImpl() override = default;

    // The state of every layer; states[work] is StateWorkLayer and no other entry is.
    int work = 1;
    std::array<NXOpen::Layer::State, 257> states;  // index 1..256
    tag_t tag;

    // Makes layer the work layer; the old work layer becomes selectable.
    void MakeWork(int layer);
};

class BodyCollectionImpl : public NXOpen::BodyCollection {
public:
    explicit BodyCollectionImpl(PartImpl* owner);
    ~BodyCollectionImpl() override = default;
    PartImpl* part;
    tag_t tag;
};

class PartImpl final : public NXOpen::Part, public ObjectData {
public:
    PartImpl() : bodyCollection(this) {}
    ~PartImpl() override = default;

    std::string leaf;      // GBK
    std::string fullPath;  // GBK
    std::vector<std::unique_ptr<BodyImpl>> bodies;  // in part order
    LayerManagerImpl layers;
    // UF_MODL_ask_mass_props_3d errs as NX's numerical integration may (part file "mass_props":
    // "numerical"); false: exact values.
    bool numericalMassProps = false;
    BodyCollectionImpl bodyCollection;

    // The body of this part with this tag, or NULL.
    BodyImpl* FindBody(tag_t tag) const;
};

// The body or part behind an NX object, NULL for any other object and for NULL. The exact class
// is compared (both are final) rather than cast with dynamic_cast, which walks the NX classes'
// virtual bases: every attribute read of a body asks this.
inline BodyImpl* AsBody(NXOpen::TaggedObject* object) {
    return object != nullptr && typeid(*object) == typeid(BodyImpl) ? static_cast<BodyImpl*>(object) : nullptr;
}
inline PartImpl* AsPart(NXOpen::TaggedObject* object) {
    return object != nullptr && typeid(*object) == typeid(PartImpl) ? static_cast<PartImpl*>(object) : nullptr;
}

// The shortest "%g" form of value that reads back as the same double ("0.1", "20", "1e-07").
std::string ShortestReal(double value);

// Layer numbers NX accepts.
inline bool IsLayerNumber(int layer) { return layer >= 1 && layer <= 256; }

}  // namespace host::core
