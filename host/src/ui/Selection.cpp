// Selection dialogs: each request is recorded (message, title, scope, action, flags, mask) and
// answered by the next answer the driver queued; with none queued the designer cancels. An answer
// names objects of the work part (bodies, and the faces and edges its part file names); what the
// dialog's action and mask would not let the designer pick is left out, as in NX.
#include <algorithm>
#include <stdexcept>

#include <NXOpen/Body.hxx>
#include <NXOpen/NXObject.hxx>
#include <NXOpen/Selection.hxx>
#include <NXOpen/UI.hxx>

#include <uf_object_types.h>
#include <uf_ui_types.h>

#include "HostSession.hpp"
#include "ui/Ui.hpp"

namespace host::ui {
namespace {

using NXOpen::Selection;

class SelectionImpl : public Selection {
public:
    tag_t tag = Tags::Reserve();
};

// Whether a mask triple takes the object: the type, then for solids the subtype (0: any) and the
// solid's kind (UF_UI_SEL_FEATURE_*: any body, a solid body, a face, an edge).
bool Matches(const Selection::MaskTriple& mask, int type, int subtype) {
    if (mask.Type != type) return false;
    if (type != UF_solid_type) return mask.Subtype == 0 || mask.Subtype == subtype;
    if (mask.Subtype != 0 && mask.Subtype != subtype) return false;
    switch (subtype) {
    case UF_solid_body_subtype:
        return mask.SolidBodySubtype == UF_UI_SEL_FEATURE_BODY || mask.SolidBodySubtype == UF_UI_SEL_FEATURE_SOLID_BODY;
    case UF_solid_face_subtype: return mask.SolidBodySubtype == UF_UI_SEL_FEATURE_ANY_FACE;
    case UF_solid_edge_subtype: return mask.SolidBodySubtype == UF_UI_SEL_FEATURE_ANY_EDGE;
    default: return false;
    }
}

// Whether the designer could pick the object in the dialog, by its action and mask.
bool Selectable(const SelectionRequest& request, NXOpen::TaggedObject* object) {
    int type = 0, subtype = 0;
    host::WorkPartObject(object->Tag(), &type, &subtype);
    const bool inMask = std::any_of(request.masks.begin(), request.masks.end(),
                                    [&](const Selection::MaskTriple& m) { return Matches(m, type, subtype); });
    switch (request.action) {
    case Selection::SelectionActionEnableSpecific:
    case Selection::SelectionActionClearAndEnableSpecific: return inMask;
    case Selection::SelectionActionDisableSpecific:
    case Selection::SelectionActionAllAndDisableSpecific: return !inMask;
    default: return true;
    }
}

Selection::Response Ask(SelectionRequest request, std::vector<NXOpen::TaggedObject*>& objects) {
    UiState& s = State();
    s.requests.push_back(std::move(request));
    objects.clear();
    if (s.answers.empty()) {
        s.requests.back().unanswered = true;
        return Selection::ResponseCancel;
    }
    Answer answer = s.answers.front();
    s.answers.erase(s.answers.begin());
    if (answer.response != Selection::ResponseBack && answer.response != Selection::ResponseCancel) {
        for (NXOpen::TaggedObject* object : PickedObjects(answer.tags))
            if (Selectable(s.requests.back(), object)) objects.push_back(object);
    }
    return answer.response;
}

Selection::Response AskObjects(SelectionRequest request, std::vector<NXOpen::NXObject*>& objectArray) {
    std::vector<NXOpen::TaggedObject*> objects;
    Selection::Response response = Ask(std::move(request), objects);
    objectArray.clear();
    for (NXOpen::TaggedObject* o : objects) objectArray.push_back(dynamic_cast<NXOpen::NXObject*>(o));
    return response;
}

SelectionRequest Request(const std::string& message, const std::string& title, Selection::SelectionScope scope,
                         Selection::SelectionAction action, bool includeFeatures, bool keepHighlighted,
                         const std::vector<Selection::MaskTriple>& masks) {
    return SelectionRequest{message, title, scope, action, includeFeatures, keepHighlighted, masks, host::HighlightedBodies()};
}

}  // namespace

std::vector<NXOpen::TaggedObject*> PickedObjects(const std::vector<unsigned int>& tags) {
    std::vector<NXOpen::TaggedObject*> objects;
    for (unsigned int tag : tags) {
        NXOpen::TaggedObject* object = host::WorkPartObject(tag);
        if (object == nullptr)
            throw std::invalid_argument("no body, face or edge of the work part has tag " + std::to_string(tag));
        objects.push_back(object);
    }
    return objects;
}

std::vector<NXOpen::TaggedObject*> BodiesWithTags(const std::vector<unsigned int>& tags) {
    std::vector<NXOpen::TaggedObject*> bodies;
    for (unsigned int tag : tags) {
        NXOpen::Body* body = host::FindBody(tag);
        if (body == nullptr) throw std::invalid_argument("no body of the work part has tag " + std::to_string(tag));
        bodies.push_back(body);
    }
    return bodies;
}

}  // namespace host::ui

namespace host {

void QueueSelectionAnswer(NXOpen::Selection::Response response, const std::vector<unsigned int>& tags) {
    if (WorkPart() != nullptr) ui::PickedObjects(tags);
    ui::State().answers.push_back(ui::Answer{response, tags});
}

const std::vector<SelectionRequest>& SelectionRequests() { return ui::State().requests; }

}  // namespace host

namespace NXOpen {

using host::ui::AskObjects;
using host::ui::Request;
using host::ui::Text;

Selection* UI::SelectionManager() {
    HOST_NX_CALL("UI::SelectionManager");
    static Selection* selection = new host::ui::SelectionImpl;
    return selection;
}

Selection::Selection() {}
Selection::~Selection() {}

Selection::Response Selection::SelectObjects(const NXString& message, const NXString& title, SelectionScope scope, SelectionAction action, bool includeFeatures, bool keepHighlighted, const std::vector<MaskTriple>& maskArray, std::vector<NXObject*>& objectArray) {
    HOST_NX_CALL("Selection::SelectObjects");
    return AskObjects(Request(message.GetLocaleText(), title.GetLocaleText(), scope, action, includeFeatures, keepHighlighted, maskArray), objectArray);
}

Selection::Response Selection::SelectObjects(const char* message, const char* title, SelectionScope scope, SelectionAction action, bool includeFeatures, bool keepHighlighted, const std::vector<MaskTriple>& maskArray, std::vector<NXObject*>& objectArray) {
    HOST_NX_CALL("Selection::SelectObjects");
    return AskObjects(Request(Text(message), Text(title), scope, action, includeFeatures, keepHighlighted, maskArray), objectArray);
}

// The overloads without a mask are recorded with the action "enable all" and an empty mask.
Selection::Response Selection::SelectObjects(const NXString& message, const NXString& title, SelectionScope scope, bool includeFeatures, bool keepHighlighted, std::vector<NXObject*>& objectArray) {
    HOST_NX_CALL("Selection::SelectObjects");
    return AskObjects(Request(message.GetLocaleText(), title.GetLocaleText(), scope, SelectionActionEnableAll, includeFeatures, keepHighlighted, {}), objectArray);
}

Selection::Response Selection::SelectObjects(const char* message, const char* title, SelectionScope scope, bool includeFeatures, bool keepHighlighted, std::vector<NXObject*>& objectArray) {
    HOST_NX_CALL("Selection::SelectObjects");
    return AskObjects(Request(Text(message), Text(title), scope, SelectionActionEnableAll, includeFeatures, keepHighlighted, {}), objectArray);
}

Selection::Response Selection::SelectObjects(const NXString& message, const NXString& title, SelectionScope scope, bool keepHighlighted, const std::vector<SelectionType>&, std::vector<NXObject*>& objectArray) {
    HOST_NX_CALL("Selection::SelectObjects");
    return AskObjects(Request(message.GetLocaleText(), title.GetLocaleText(), scope, SelectionActionEnableAll, false, keepHighlighted, {}), objectArray);
}

Selection::Response Selection::SelectObjects(const char* message, const char* title, SelectionScope scope, bool keepHighlighted, const std::vector<SelectionType>&, std::vector<NXObject*>& objectArray) {
    HOST_NX_CALL("Selection::SelectObjects");
    return AskObjects(Request(Text(message), Text(title), scope, SelectionActionEnableAll, false, keepHighlighted, {}), objectArray);
}

Selection::Response Selection::SelectTaggedObjects(const NXString& message, const NXString& title, SelectionScope scope, SelectionAction action, bool includeFeatures, bool keepHighlighted, const std::vector<MaskTriple>& maskArray, std::vector<TaggedObject*>& objectArray) {
    HOST_NX_CALL("Selection::SelectTaggedObjects");
    return host::ui::Ask(Request(message.GetLocaleText(), title.GetLocaleText(), scope, action, includeFeatures, keepHighlighted, maskArray), objectArray);
}

Selection::Response Selection::SelectTaggedObjects(const char* message, const char* title, SelectionScope scope, SelectionAction action, bool includeFeatures, bool keepHighlighted, const std::vector<MaskTriple>& maskArray, std::vector<TaggedObject*>& objectArray) {
    HOST_NX_CALL("Selection::SelectTaggedObjects");
    return host::ui::Ask(Request(Text(message), Text(title), scope, action, includeFeatures, keepHighlighted, maskArray), objectArray);
}

tag_t Selection::Tag() const { HOST_NX_CALL("Selection::Tag"); return static_cast<const host::ui::SelectionImpl*>(this)->tag; }

}  // namespace NXOpen
