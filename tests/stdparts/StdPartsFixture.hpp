// The fixture of the standard-part tests: a fresh session with the small configuration of
// PluginFixture (standard-part layers 61 and 62, modification colour 186, name order 内六角螺钉,
// 顶针), work parts made from body descriptions, the dialog object shown with a script, and the
// tree read through NX Open as the designer sees it.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <nlohmann/json.hpp>

#include <NXOpen/Body.hxx>
#include <NXOpen/BlockStyler_Node.hxx>
#include <NXOpen/BlockStyler_Tree.hxx>
#include <NXOpen/DataContainer.hxx>

#include "platform/BodyInfo.h"
#include "shell/Vornadel.h"
#include "support/PluginFixture.hpp"

namespace stdparts_test {

using Json = nlohmann::json;

// Coaxial cylinders {diameter, length}, the first from the origin (screws, pins, bushes).
inline Json Stack(const std::vector<std::pair<double, double>>& sections)
{
    Json parts = Json::array();
    for (const auto& [d, l] : sections)
        parts.push_back({{"d", d}, {"l", l}});
    return {{"shape", "stack"}, {"parts", parts}};
}

// A socket head cap screw: a head of 1.6 d by d, then the shank.
inline Json Screw(double d, double length)
{
    return Stack({{1.6 * d, d}, {d, length}});
}

inline Json Box(double x, double y, double z)
{
    return {{"shape", "box"}, {"x", x}, {"y", y}, {"z", z}};
}

// Attributes by GBK title; a value is a GBK string (a string attribute) or a typed JSON value
// such as {"integer": 3}.
using Attributes = std::vector<std::pair<std::string, Json>>;

// The attributes of a standard part: the mark "转图标识" = "Y" followed by the given ones.
inline Attributes Marked(const Attributes& more = {})
{
    Attributes all = {{"转图标识", "Y"}};
    all.insert(all.end(), more.begin(), more.end());
    return all;
}

// attributes with each of changes set: replaced where the title exists, else appended.
inline Attributes With(Attributes attributes, const Attributes& changes)
{
    for (const auto& [title, value] : changes) {
        bool replaced = false;
        for (auto& [t, v] : attributes) {
            if (t == title) {
                v = value;
                replaced = true;
            }
        }
        if (!replaced)
            attributes.push_back({title, value});
    }
    return attributes;
}

// An M6x20 screw as a designer labels it.
inline Attributes ScrewM6x20()
{
    return Marked({{"名称", "内六角螺钉"}, {"类型", "M6×20"}, {"品牌", "盘起"}, {"材质", "12.9级"},
                   {"热处理", "发黑"}, {"供应商", "盘起工业"}});
}

struct PartBody {
    unsigned tag = 0;
    Attributes attributes;
    Json solid = Screw(6, 20);
    int layer = 61;
    int color = 6;
    bool blanked = false;
    std::vector<double> at = {0, 0, 0};
    std::vector<double> rotate = {0, 0, 0};
    std::vector<unsigned> faces = {};  // tags of faces a selection may name
};

inline Json Utf8(const Json& value)
{
    return value.is_string() ? Json(host::GbkToUtf8(value.get<std::string>())) : value;
}

// The text of a part file (UTF-8 JSON) of the given bodies; layer states as "62": "visible".
inline std::string PartJson(const std::vector<PartBody>& bodies, int workLayer = 61,
                            const std::vector<std::pair<int, std::string>>& layerStates = {},
                            const Attributes& partAttributes = {})
{
    Json part = {{"format", "vornadel-part/1"}, {"leaf", "T100"}, {"work_layer", workLayer}};
    Json attributes = Json::object();
    for (const auto& [title, value] : partAttributes)
        attributes[host::GbkToUtf8(title)] = Utf8(value);
    part["attributes"] = attributes;
    Json states = Json::object();
    for (const auto& [layer, state] : layerStates)
        states[std::to_string(layer)] = state;
    part["layer_states"] = states;
    Json list = Json::array();
    for (const PartBody& b : bodies) {
        Json body = {{"tag", b.tag}, {"layer", b.layer}, {"color", b.color}, {"blanked", b.blanked},
                     {"solid", b.solid}, {"at", b.at}, {"rotate", b.rotate}};
        if (!b.faces.empty()) body["faces"] = b.faces;
        Json bodyAttributes = Json::object();
        for (const auto& [title, value] : b.attributes)
            bodyAttributes[host::GbkToUtf8(title)] = Utf8(value);
        body["attributes"] = bodyAttributes;
        list.push_back(body);
    }
    part["bodies"] = list;
    return part.dump();
}

// One tree node as the designer sees it.
struct Row {
    int depth = 0;                  // 0 group, 1 body
    std::vector<std::string> text;  // columns 0..12, GBK
    int colour = 0;                 // foreground colour; 0 when never set
    unsigned tag = 0;               // tag of the body under "Data"; 0 when none
};

// The node's "Data" object through NX Open, NULL when the node has none.
inline NXOpen::TaggedObject* DataObject(NXOpen::BlockStyler::Node* node)
{
    NXOpen::DataContainer* data = node->GetNodeData();
    NXOpen::TaggedObject* object = nullptr;
    for (const NXOpen::NXString& name : data->GetPropertyNames()) {
        if (std::string(name.GetLocaleText()) == "Data")
            object = data->GetTaggedObject("Data");
    }
    delete data;
    return object;
}

// Every node in pre-order.
inline std::vector<Row> Rows(NXOpen::BlockStyler::Tree* tree)
{
    std::vector<Row> rows;
    for (NXOpen::BlockStyler::Node* node = tree->RootNode(); node != nullptr; node = node->NextNode()) {
        Row row;
        row.depth = node->ParentNode() == nullptr ? 0 : 1;
        for (int column = 0; column < 13; ++column)
            row.text.push_back(node->GetColumnDisplayText(column).GetLocaleText());
        row.colour = node->ForegroundColor();
        NXOpen::TaggedObject* object = DataObject(node);
        row.tag = object == nullptr ? 0 : object->Tag();
        rows.push_back(row);
    }
    return rows;
}

// The tags of the rows, in order; groups as 1001, their bodies as "  1001".
inline std::vector<std::string> Outline(const std::vector<Row>& rows)
{
    std::vector<std::string> outline;
    for (const Row& row : rows)
        outline.push_back(std::string(row.depth == 0 ? "" : "  ") + row.text[0] + " " + std::to_string(row.tag));
    return outline;
}

namespace fs = std::filesystem;

class StdPartsFixture : public vornadel_test::PluginFixture {
protected:
    void SetUp() override
    {
        PluginFixture::SetUp();
        WriteConfiguration();
    }

    void LoadBodies(const std::vector<PartBody>& bodies, int workLayer = 61,
                    const std::vector<std::pair<int, std::string>>& layerStates = {},
                    const Attributes& partAttributes = {})
    {
        const fs::path path = top_ / "stdparts.part.json";
        vornadel_test::WriteBytes(path, PartJson(bodies, workLayer, layerStates, partAttributes));
        host::LoadWorkPart(path.string());
    }

    // Makes the dialog object, shows it and runs script while it is shown (after the first
    // display), then closes it.
    void WithDialog(const std::function<void(Vornadel&, host::LiveDialog&)>& script)
    {
        Vornadel dialog;
        host::SetDialogScript([&](host::LiveDialog& live) { script(dialog, live); });
        dialog.Show();
    }

    // The tree right after the first display.
    std::vector<Row> FirstDisplayRows()
    {
        std::vector<Row> rows;
        WithDialog([&](Vornadel& dialog, host::LiveDialog&) { rows = Rows(dialog.tree_control0); });
        return rows;
    }

    static NXOpen::Body* Body(unsigned tag) { return host::FindBody(tag); }

    // One new wrapper for the body of each tag, in order; the wrappers live as long as the test.
    std::vector<BodyInfo*> Wrap(const std::vector<unsigned>& tags)
    {
        std::vector<BodyInfo*> infos;
        for (unsigned tag : tags) {
            wrappers_.push_back(std::make_unique<BodyInfo>(Body(tag)));
            infos.push_back(wrappers_.back().get());
        }
        return infos;
    }

    static std::vector<unsigned> Tags(const std::vector<NXOpen::Body*>& bodies)
    {
        std::vector<unsigned> tags;
        for (NXOpen::Body* body : bodies)
            tags.push_back(body->Tag());
        return tags;
    }

    static std::vector<unsigned> Tags(const std::vector<BodyInfo*>& infos)
    {
        std::vector<unsigned> tags;
        for (BodyInfo* info : infos)
            tags.push_back(info->GetBody()->Tag());
        return tags;
    }

private:
    std::vector<std::unique_ptr<BodyInfo>> wrappers_;
};

}  // namespace stdparts_test
