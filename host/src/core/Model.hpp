// The session core's model of NX objects: the host classes behind the NX Open classes of the
// work part (part, bodies, layers), with the data the NX headers do not show.
#pragma once

#include <array>
#include <memory>
#include <string>
#include <vector>

#include <NXOpen/Body.hxx>
#include <NXOpen/BodyCollection.hxx>
#include <NXOpen/Layer_LayerManager.hxx>
#include <NXOpen/NXObject.hxx>
#include <NXOpen/Part.hxx>

#include "core/Solid.hpp"

namespace host::core {

// One user attribute of an object (not an array element). Text is GBK.
struct Attribute {
    NXOpen::NXObject::AttributeType type = NXOpen::NXObject::AttributeTypeString;
    std::string title;
    std::string text;  // String: the value; Time: the value as given
    int integer = 0;
    double real = 0;
    bool boolean = false;
};

// The user attributes of an object, in the order they were created. A title names at most one
// attribute: setting a value under an existing title replaces it, type included, in its place.
class AttributeList {
public:
    // The attribute of that title, NULL when there is none; with a type other than
    // AttributeTypeAny, only when it has that type.
    const Attribute* Find(const std::string& title, NXOpen::NXObject::AttributeType type) const;
    void Set(const Attribute& attribute);
    // Removes the attribute of that title (and type, unless AttributeTypeAny); false when absent.
    bool Remove(const std::string& title, NXOpen::NXObject::AttributeType type);
    // Removes every attribute of that type (every one for AttributeTypeAny).
    void RemoveAll(NXOpen::NXObject::AttributeType type);
    const std::vector<Attribute>& All() const { return items_; }

private:
    std::vector<Attribute> items_;
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

class BodyImpl : public NXOpen::Body, public ObjectData {
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

class PartImpl : public NXOpen::Part, public ObjectData {
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

// The shortest "%g" form of value that reads back as the same double ("0.1", "20", "1e-07").
std::string ShortestReal(double value);

// Layer numbers NX accepts.
inline bool IsLayerNumber(int layer) { return layer >= 1 && layer <= 256; }

}  // namespace host::core
