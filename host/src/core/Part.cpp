// The work part: its leaf name, bodies (in part order), layers, and the display state of its
// bodies (colour, layer, blank, highlight), through NX Open and the user-function calls.
#include <NXOpen/BasePart.hxx>
#include <NXOpen/Body.hxx>
#include <NXOpen/BodyCollection.hxx>
#include <NXOpen/DisplayableObject.hxx>
#include <NXOpen/Layer_LayerManager.hxx>
#include <NXOpen/NXException.hxx>
#include <NXOpen/Part.hxx>
#include <uf_layer.h>
#include <uf_obj.h>
#include <uf_object_types.h>

#include "Driver.hpp"
#include "HostSession.hpp"
#include "core/Core.hpp"
#include "core/Model.hpp"
#include "core/UfErrors.hpp"

namespace host::core {

LayerManagerImpl::LayerManagerImpl() : tag(Tags::Reserve()) {
    states.fill(NXOpen::Layer::StateSelectable);
    states[work] = NXOpen::Layer::StateWorkLayer;
}

void LayerManagerImpl::MakeWork(int layer) {
    states[work] = NXOpen::Layer::StateSelectable;
    work = layer;
    states[work] = NXOpen::Layer::StateWorkLayer;
}

BodyCollectionImpl::BodyCollectionImpl(PartImpl* owner) : part(owner), tag(Tags::Reserve()) {}

namespace {

BodyImpl* BodyByTag(tag_t tag) { return AsBody(host::Tags::Find(tag)); }

BodyImpl& BodyOf(NXOpen::DisplayableObject* object) {
    BodyImpl* body = dynamic_cast<BodyImpl*>(object);
    if (body == nullptr) throw NXOpen::NXException::Create(kUfNotDisplayable);
    return *body;
}

LayerManagerImpl& Impl(NXOpen::Layer::LayerManager* manager) { return *static_cast<LayerManagerImpl*>(manager); }

void RequireLayer(int layer) {
    if (!IsLayerNumber(layer)) throw NXOpen::NXException::Create(kUfBadLayer);
}

}  // namespace

BodyImpl* PartImpl::FindBody(tag_t tag) const {
    BodyImpl* body = BodyByTag(tag);
    return body != nullptr && body->part == this ? body : nullptr;
}

}  // namespace host::core

namespace NXOpen {

using host::core::BodyImpl;
using host::core::PartImpl;

BasePart::BasePart() = default;
BasePart::~BasePart() = default;
NXString BasePart::Leaf() { HOST_NX_CALL("BasePart::Leaf"); return NXString(static_cast<PartImpl*>(this)->leaf, NXString::Locale); }
NXString BasePart::FullPath() { HOST_NX_CALL("BasePart::FullPath"); return NXString(static_cast<PartImpl*>(this)->fullPath, NXString::Locale); }
Layer::LayerManager* BasePart::Layers() { HOST_NX_CALL("BasePart::Layers"); return &static_cast<PartImpl*>(this)->layers; }

Part::Part() = default;
Part::~Part() = default;
BodyCollection* Part::Bodies() { HOST_NX_CALL("Part::Bodies"); return &static_cast<PartImpl*>(this)->bodyCollection; }

BodyCollection::BodyCollection() = default;
BodyCollection::~BodyCollection() = default;

// An iterator with no current body steps to the first one.
BodyCollection::iterator BodyCollection::begin() {
    HOST_NX_CALL("BodyCollection::begin");
    iterator it(this);
    return ++it;
}

BodyCollection::iterator::value_type BodyCollection::iterator::operator*() {
    return static_cast<host::core::BodyCollectionImpl*>(m_context)->part->FindBody(m_current);
}

void BodyCollection::iterator::next() {
    const PartImpl* part = static_cast<host::core::BodyCollectionImpl*>(m_context)->part;
    size_t next = 0;
    if (m_current != NULL_TAG) {
        const BodyImpl* body = part->FindBody(m_current);
        next = body == nullptr ? part->bodies.size() : body->position + 1;
    }
    m_current = next < part->bodies.size() ? part->bodies[next]->Tag() : NULL_TAG;
}

Body* BodyCollection::FindObject(const NXString& journalIdentifier) {
    HOST_NX_CALL("BodyCollection::FindObject");
    return FindObject(journalIdentifier.GetLocaleText());
}
// NX throws when no body has the identifier.
Body* BodyCollection::FindObject(const char* journalIdentifier) {
    HOST_NX_CALL("BodyCollection::FindObject");
    std::string wanted = journalIdentifier == nullptr ? "" : journalIdentifier;
    for (const auto& body : static_cast<host::core::BodyCollectionImpl*>(this)->part->bodies)
        if (body->JournalIdentifier().GetLocaleText() == wanted) return body.get();
    throw NXException::Create(("No body with journal identifier " + wanted).c_str());
}

tag_t BodyCollection::Tag() const { HOST_NX_CALL("BodyCollection::Tag"); return static_cast<const host::core::BodyCollectionImpl*>(this)->tag; }

DisplayableObject::DisplayableObject() = default;
DisplayableObject::~DisplayableObject() = default;
void DisplayableObject::Blank() { HOST_NX_CALL("DisplayableObject::Blank"); host::core::BodyOf(this).blanked = true; }
void DisplayableObject::Unblank() { HOST_NX_CALL("DisplayableObject::Unblank"); host::core::BodyOf(this).blanked = false; }
bool DisplayableObject::IsBlanked() { HOST_NX_CALL("DisplayableObject::IsBlanked"); return host::core::BodyOf(this).blanked; }
void DisplayableObject::Highlight() { HOST_NX_CALL("DisplayableObject::Highlight"); host::core::BodyOf(this).highlighted = true; }
void DisplayableObject::Unhighlight() { HOST_NX_CALL("DisplayableObject::Unhighlight"); host::core::BodyOf(this).highlighted = false; }
int DisplayableObject::Color() { HOST_NX_CALL("DisplayableObject::Color"); return host::core::BodyOf(this).color; }

// NX's palette has the colours 1..216.
void DisplayableObject::SetColor(int color) {
    HOST_NX_CALL("DisplayableObject::SetColor");
    if (color < 1 || color > 216) throw NXException::Create("Colour must be between 1 and 216");
    host::core::BodyOf(this).color = color;
}

int DisplayableObject::Layer() { HOST_NX_CALL("DisplayableObject::Layer"); return host::core::BodyOf(this).layer; }

void DisplayableObject::SetLayer(int layer) {
    HOST_NX_CALL("DisplayableObject::SetLayer");
    host::core::RequireLayer(layer);
    host::core::BodyOf(this).layer = layer;
}

void DisplayableObject::RedisplayObject() { HOST_NX_CALL("DisplayableObject::RedisplayObject");}

Body::Body() = default;
Body::~Body() = default;
bool Body::IsSolidBody() { HOST_NX_CALL("Body::IsSolidBody"); return true; }
bool Body::IsSheetBody() { HOST_NX_CALL("Body::IsSheetBody"); return false; }
double Body::Density() { HOST_NX_CALL("Body::Density"); return host::core::kSteelDensity; }

namespace Layer {

LayerManager::LayerManager() = default;
LayerManager::~LayerManager() = default;

State LayerManager::GetState(int layer) {
    HOST_NX_CALL("LayerManager::GetState");
    host::core::RequireLayer(layer);
    return host::core::Impl(this).states[layer];
}

// StateWorkLayer makes the layer the work layer (the old one becomes selectable). The work
// layer's own state changes only that way: NX refuses to make it anything else directly.
void LayerManager::SetState(int layer, State state) {
    HOST_NX_CALL("LayerManager::SetState");
    host::core::RequireLayer(layer);
    host::core::LayerManagerImpl& impl = host::core::Impl(this);
    if (state == StateWorkLayer) {
        impl.MakeWork(layer);
        return;
    }
    if (state != StateSelectable && state != StateVisible && state != StateHidden)
        throw NXException::Create(host::core::kUfBadLayerStatus);
    if (layer == impl.work) throw NXException::Create(host::core::kUfWorkLayerStatus);
    impl.states[layer] = state;
}

int LayerManager::WorkLayer() { HOST_NX_CALL("LayerManager::WorkLayer"); return host::core::Impl(this).work; }

void LayerManager::SetWorkLayer(int newWorkLayer) {
    HOST_NX_CALL("LayerManager::SetWorkLayer");
    host::core::RequireLayer(newWorkLayer);
    host::core::Impl(this).MakeWork(newWorkLayer);
}

std::vector<NXObject*> LayerManager::GetAllObjectsOnLayer(int layer) {
    HOST_NX_CALL("LayerManager::GetAllObjectsOnLayer");
    host::core::RequireLayer(layer);
    std::vector<NXObject*> objects;
    PartImpl* part = host::core::WorkPartImpl();
    if (part != nullptr && &part->layers == this)
        for (const auto& body : part->bodies)
            if (body->layer == layer) objects.push_back(body.get());
    return objects;
}

tag_t LayerManager::Tag() const { HOST_NX_CALL("LayerManager::Tag"); return static_cast<const host::core::LayerManagerImpl*>(this)->tag; }

}  // namespace Layer
}  // namespace NXOpen

namespace host {

NXOpen::Part* WorkPart() { return core::WorkPartImpl(); }

NXOpen::Body* FindBody(unsigned int tag) {
    core::PartImpl* part = core::WorkPartImpl();
    return part == nullptr ? nullptr : part->FindBody(tag);
}

NXOpen::TaggedObject* WorkPartObject(unsigned int tag, int* type, int* subtype) {
    if (NXOpen::Body* body = FindBody(tag)) {
        if (type) *type = UF_solid_type;
        if (subtype) *subtype = UF_solid_body_subtype;
        return body;
    }
    auto* topology = dynamic_cast<core::TopologyImpl*>(Tags::Find(tag));
    if (topology == nullptr || topology->body->part != core::WorkPartImpl()) return nullptr;
    if (type) *type = UF_solid_type;
    if (subtype) *subtype = topology->subtype;
    return topology;
}

std::vector<unsigned int> HighlightedBodies() {
    std::vector<unsigned int> tags;
    if (core::PartImpl* part = core::WorkPartImpl()) {
        for (const std::unique_ptr<core::BodyImpl>& body : part->bodies)
            if (body->highlighted) tags.push_back(body->Tag());
    }
    return tags;
}

}  // namespace host

// ---------------------------------------------------------------------------------------------
// UF_LAYER and UF_OBJ: layers of the work part, blank status and display properties.

namespace {

using namespace host::core;
using LayerState = NXOpen::Layer::State;

// NX Open state of a UF layer status; -1 for a status that is not one.
int StateOfStatus(int status) {
    switch (status) {
    case UF_LAYER_WORK_LAYER: return NXOpen::Layer::StateWorkLayer;
    case UF_LAYER_ACTIVE_LAYER: return NXOpen::Layer::StateSelectable;
    case UF_LAYER_REFERENCE_LAYER: return NXOpen::Layer::StateVisible;
    case UF_LAYER_INACTIVE_LAYER: return NXOpen::Layer::StateHidden;
    default: return -1;
    }
}

int StatusOfState(LayerState state) {
    switch (state) {
    case NXOpen::Layer::StateWorkLayer: return UF_LAYER_WORK_LAYER;
    case NXOpen::Layer::StateSelectable: return UF_LAYER_ACTIVE_LAYER;
    case NXOpen::Layer::StateVisible: return UF_LAYER_REFERENCE_LAYER;
    default: return UF_LAYER_INACTIVE_LAYER;
    }
}

// Layer 0 of UF_LAYER_cycle_by_layer: every layer objects can be selected on (host choice).
bool OnCycledLayer(const PartImpl& part, const BodyImpl& body, int layer) {
    if (layer != 0) return body.layer == layer;
    LayerState state = part.layers.states[body.layer];
    return state == NXOpen::Layer::StateWorkLayer || state == NXOpen::Layer::StateSelectable;
}

}  // namespace

extern "C" {

int UF_LAYER_set_status(const int layer_number, const int layer_status) {
    HOST_NX_CALL("UF_LAYER_set_status");
    if (int code = RequireInitialized("UF_LAYER_set_status")) return code;
    PartImpl* part = WorkPartImpl();
    if (part == nullptr) return kUfNoWorkPart;
    if (!IsLayerNumber(layer_number)) return kUfBadLayer;
    int state = StateOfStatus(layer_status);
    if (state < 0) return kUfBadLayerStatus;
    if (state == NXOpen::Layer::StateWorkLayer) {
        part->layers.MakeWork(layer_number);
        return 0;
    }
    if (layer_number == part->layers.work) return kUfWorkLayerStatus;
    part->layers.states[layer_number] = static_cast<LayerState>(state);
    return 0;
}

int UF_LAYER_set_all_but_work(const int layer_status) {
    HOST_NX_CALL("UF_LAYER_set_all_but_work");
    if (int code = RequireInitialized("UF_LAYER_set_all_but_work")) return code;
    PartImpl* part = WorkPartImpl();
    if (part == nullptr) return kUfNoWorkPart;
    int state = StateOfStatus(layer_status);
    if (state < 0 || state == NXOpen::Layer::StateWorkLayer) return kUfBadLayerStatus;
    for (int layer = 1; layer <= 256; ++layer)
        if (layer != part->layers.work) part->layers.states[layer] = static_cast<LayerState>(state);
    return 0;
}

int UF_LAYER_ask_status(const int layer_number, int* layer_status) {
    HOST_NX_CALL("UF_LAYER_ask_status");
    if (int code = RequireInitialized("UF_LAYER_ask_status")) return code;
    if (layer_status == nullptr) return kUfNullArgument;
    PartImpl* part = WorkPartImpl();
    if (part == nullptr) return kUfNoWorkPart;
    if (!IsLayerNumber(layer_number)) return kUfBadLayer;
    *layer_status = StatusOfState(part->layers.states[layer_number]);
    return 0;
}

int UF_LAYER_ask_work_layer(int* layer_number) {
    HOST_NX_CALL("UF_LAYER_ask_work_layer");
    if (int code = RequireInitialized("UF_LAYER_ask_work_layer")) return code;
    if (layer_number == nullptr) return kUfNullArgument;
    PartImpl* part = WorkPartImpl();
    if (part == nullptr) return kUfNoWorkPart;
    *layer_number = part->layers.work;
    return 0;
}

// Walks the work part's bodies on a layer in part order: NULL_TAG starts the walk, each call
// gives the next body, NULL_TAG ends it. Blanked bodies are walked too.
int UF_LAYER_cycle_by_layer(int layer_number, tag_t* object_tag) {
    HOST_NX_CALL("UF_LAYER_cycle_by_layer");
    if (int code = RequireInitialized("UF_LAYER_cycle_by_layer")) return code;
    if (object_tag == nullptr) return kUfNullArgument;
    PartImpl* part = WorkPartImpl();
    if (part == nullptr) return kUfNoWorkPart;
    if (layer_number != 0 && !IsLayerNumber(layer_number)) return kUfBadLayer;
    size_t next = 0;
    if (*object_tag != NULL_TAG) {
        const BodyImpl* previous = part->FindBody(*object_tag);
        if (previous == nullptr) return kUfUnknownObjectInCycle;
        next = previous->position + 1;
    }
    *object_tag = NULL_TAG;
    for (; next < part->bodies.size(); ++next)
        if (OnCycledLayer(*part, *part->bodies[next], layer_number)) {
            *object_tag = part->bodies[next]->Tag();
            break;
        }
    return 0;
}

int UF_OBJ_set_blank_status(tag_t object_id, int blank_status) {
    HOST_NX_CALL("UF_OBJ_set_blank_status");
    if (int code = RequireInitialized("UF_OBJ_set_blank_status")) return code;
    BodyImpl* body = BodyByTag(object_id);
    if (body == nullptr) return host::Tags::Find(object_id) == nullptr ? kUfBadTag : kUfNotDisplayable;
    if (blank_status != UF_OBJ_BLANKED && blank_status != UF_OBJ_NOT_BLANKED) return kUfBadBlankStatus;
    body->blanked = blank_status == UF_OBJ_BLANKED;
    return 0;
}

// Bodies are UF_solid_type / UF_solid_body_subtype; a part is NX's part type 2, subtype 0.
int UF_OBJ_ask_type_and_subtype(tag_t object_id, int* type, int* subtype) {
    HOST_NX_CALL("UF_OBJ_ask_type_and_subtype");
    if (int code = RequireInitialized("UF_OBJ_ask_type_and_subtype")) return code;
    if (type == nullptr || subtype == nullptr) return kUfNullArgument;
    NXOpen::TaggedObject* object = host::Tags::Find(object_id);
    if (dynamic_cast<BodyImpl*>(object) != nullptr) {
        *type = UF_solid_type;
        *subtype = UF_solid_body_subtype;
    } else if (const auto* topology = dynamic_cast<TopologyImpl*>(object)) {
        *type = UF_solid_type;
        *subtype = topology->subtype;
    } else if (dynamic_cast<PartImpl*>(object) != nullptr) {
        *type = 2;
        *subtype = 0;
    } else {
        return kUfBadTag;
    }
    return 0;
}

// Line width 0 (normal) and font 1 (solid): the host draws nothing, so every body has NX's
// defaults.
int UF_OBJ_ask_display_properties(tag_t object_id, UF_OBJ_disp_props_p_t disp_props) {
    HOST_NX_CALL("UF_OBJ_ask_display_properties");
    if (int code = RequireInitialized("UF_OBJ_ask_display_properties")) return code;
    if (disp_props == nullptr) return kUfNullArgument;
    BodyImpl* body = BodyByTag(object_id);
    if (body == nullptr) return host::Tags::Find(object_id) == nullptr ? kUfBadTag : kUfNotDisplayable;
    disp_props->layer = body->layer;
    disp_props->color = body->color;
    disp_props->blank_status = body->blanked ? UF_OBJ_BLANKED : UF_OBJ_NOT_BLANKED;
    disp_props->line_width = 0;
    disp_props->font = 1;
    disp_props->highlight_status = body->highlighted;
    return 0;
}

}  // extern "C"
