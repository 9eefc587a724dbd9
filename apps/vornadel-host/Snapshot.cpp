#include "Snapshot.hpp"

#include <algorithm>
#include <charconv>
#include <memory>

#include <NXOpen/Body.hxx>
#include <NXOpen/BodyCollection.hxx>
#include <NXOpen/DataContainer.hxx>
#include <NXOpen/Layer_LayerManager.hxx>
#include <NXOpen/NXObject.hxx>

namespace runner {

namespace {

std::string ShortestReal(double value) {
    char buffer[64];
    const std::to_chars_result r = std::to_chars(buffer, buffer + sizeof buffer, value);
    return std::string(buffer, r.ptr);
}

AttributeView Attribute(const NXOpen::NXObject::AttributeInformation& info) {
    AttributeView a;
    a.title = info.Title.GetLocaleText();
    switch (info.Type) {
    case NXOpen::NXObject::AttributeTypeString:
        a.type = "string";
        a.value = info.StringValue.GetLocaleText();
        break;
    case NXOpen::NXObject::AttributeTypeInteger:
        a.type = "integer";
        a.value = std::to_string(info.IntegerValue);
        break;
    case NXOpen::NXObject::AttributeTypeReal:
        a.type = "real";
        a.value = ShortestReal(info.RealValue);
        break;
    case NXOpen::NXObject::AttributeTypeBoolean:
        a.type = "boolean";
        a.value = info.BooleanValue ? "true" : "false";
        break;
    case NXOpen::NXObject::AttributeTypeTime:
        a.type = "time";
        a.value = info.TimeValue.GetLocaleText();
        break;
    case NXOpen::NXObject::AttributeTypeReference:
        a.type = "reference";
        a.value = info.ReferenceValue.GetLocaleText();
        break;
    case NXOpen::NXObject::AttributeTypeNull:
        a.type = "null";
        break;
    default:
        a.type = "other";
        break;
    }
    return a;
}

std::vector<AttributeView> Attributes(NXOpen::NXObject& object) {
    std::vector<AttributeView> list;
    for (const NXOpen::NXObject::AttributeInformation& info : object.GetUserAttributes()) {
        list.push_back(Attribute(info));
    }
    return list;
}

// The tag of the body a node carries under "Data", as the plug-in stores it. NX throws when a
// container has no property of the name asked, so the names are looked at first.
std::optional<unsigned int> BodyTag(NXOpen::BlockStyler::Node* node) {
    std::unique_ptr<NXOpen::DataContainer> data(node->GetNodeData());  // the wrapper is ours to delete
    if (!data) return std::nullopt;
    for (const NXOpen::NXString& name : data->GetPropertyNames()) {
        if (std::string(name.GetLocaleText()) != "Data") continue;
        if (NXOpen::Body* body = dynamic_cast<NXOpen::Body*>(data->GetTaggedObject("Data"))) return body->Tag();
    }
    return std::nullopt;
}

}  // namespace

TreeView ReadTree(host::LiveDialog& dialog) {
    const host::UncountedNxCalls runnersOwnReads;
    TreeView view;
    NXOpen::BlockStyler::Tree* tree = dialog.Tree();
    if (tree == nullptr) return view;
    view.columns = dialog.Columns();
    for (NXOpen::BlockStyler::Node* node = tree->RootNode(); node != nullptr; node = node->NextNode()) {
        TreeRow row;
        for (NXOpen::BlockStyler::Node* p = node->ParentNode(); p != nullptr; p = p->ParentNode()) ++row.depth;
        for (const host::ColumnView& c : view.columns) {
            row.texts[c.id] = node->GetColumnDisplayText(c.id).GetLocaleText();
        }
        // NX colour numbers start at 1: 0 is a node whose colour was never set.
        const int colour = node->ForegroundColor();
        if (colour > 0) row.colour = colour;
        row.bodyTag = BodyTag(node);
        view.rows.push_back(row);
    }
    return view;
}

TreeStateView ReadTreeState(host::LiveDialog& dialog) {
    const host::UncountedNxCalls runnersOwnReads;
    TreeStateView view;
    NXOpen::BlockStyler::Tree* tree = dialog.Tree();
    if (tree == nullptr) return view;
    auto note = [&view](NXOpen::BlockStyler::Node* node, const RowAddress& row) {
        if (node->IsSelected()) view.selected.push_back(row);
        if (node->IsExpanded()) view.expanded.push_back(row);
    };
    int top = 0;
    for (NXOpen::BlockStyler::Node* group = tree->RootNode(); group != nullptr; group = group->NextSiblingNode()) {
        note(group, {++top, 0});
        int child = 0;
        for (NXOpen::BlockStyler::Node* n = group->FirstChildNode(); n != nullptr; n = n->NextSiblingNode())
            note(n, {top, ++child});
    }
    return view;
}

PartView ReadPart(NXOpen::Part& part) {
    const host::UncountedNxCalls runnersOwnReads;
    PartView view;
    view.leaf = part.Leaf().GetLocaleText();
    view.attributes = Attributes(part);
    NXOpen::Layer::LayerManager* layers = part.Layers();
    for (int layer = NXOpen::Layer::ConstantsFirstLayer; layer <= NXOpen::Layer::ConstantsLastLayer; ++layer) {
        switch (layers->GetState(layer)) {
        case NXOpen::Layer::StateWorkLayer: view.layers.push_back({layer, "work"}); break;
        case NXOpen::Layer::StateVisible: view.layers.push_back({layer, "visible"}); break;
        case NXOpen::Layer::StateHidden: view.layers.push_back({layer, "invisible"}); break;
        case NXOpen::Layer::StateSelectable: break;
        }
    }
    const std::vector<unsigned int> highlighted = host::HighlightedBodies();
    NXOpen::BodyCollection* bodies = part.Bodies();
    for (NXOpen::BodyCollection::iterator it = bodies->begin(); it != bodies->end(); ++it) {
        NXOpen::Body* body = *it;
        BodyView b;
        b.tag = body->Tag();
        b.layer = body->Layer();
        b.colour = body->Color();
        b.blanked = body->IsBlanked();
        b.highlighted = std::find(highlighted.begin(), highlighted.end(), b.tag) != highlighted.end();
        b.attributes = Attributes(*body);
        view.bodies.push_back(b);
    }
    return view;
}

NXOpen::BlockStyler::Node* FindRow(NXOpen::BlockStyler::Tree* tree, const RowAddress& row) {
    const host::UncountedNxCalls runnersOwnReads;
    if (tree == nullptr) return nullptr;
    NXOpen::BlockStyler::Node* node = tree->RootNode();
    for (int i = 1; node != nullptr && i < row.top; ++i) node = node->NextSiblingNode();
    if (node == nullptr || row.child == 0) return node;
    node = node->FirstChildNode();
    for (int i = 1; node != nullptr && i < row.child; ++i) node = node->NextSiblingNode();
    return node;
}

}  // namespace runner
