// The fixture of the editing tests: the standard-part fixture with a standard-part table that
// fills six of the seven option lists (heat treatments stay empty), a part of four purchase
// lines, and the tree's rows by their place as the designer counts them.
#pragma once

#include <functional>
#include <map>
#include <string>
#include <vector>

#include <NXOpen/Body.hxx>
#include <NXOpen/BlockStyler_Node.hxx>
#include <NXOpen/BlockStyler_Tree.hxx>
#include <NXOpen/NXObject.hxx>

#include "stdparts/StdPartsFixture.hpp"

namespace editing_test {

using namespace stdparts_test;
using NXOpen::BlockStyler::Node;
using NXOpen::BlockStyler::Tree;

inline Json Pin(double d, double length)
{
    return Stack({{d + 4, 4}, {d, length}});
}

class EditingFixture : public StdPartsFixture {
protected:
    void SetUp() override
    {
        StdPartsFixture::SetUp();
        vornadel_test::WriteBytes(RootDir() / "config/std_part_config.csv",
                                  vornadel_test::CrlfLines({
                                      "标准件名称,标准件类型,标准件品牌,标准件材质,标准件热处理,标准件供应商,标准件采购周期,标准件名称顺序",
                                      "顶针,Φ4×200,盘起,SKD61,,盘起工业,现货,内六角螺钉",
                                      "内六角螺钉,M6×20,米思米,12.9级,,米思米(中国),3天,顶针",
                                      ",M8×30,,,,东莞盘起,,",
                                  }));
    }

    // 001: three M6x20 screws (1001-1003); 002: two ejector pins (2001, 2002); 003: two sleeves
    // and a core pin grouped by hand as "G1" (3001-3003, the core pin another solid and named
    // 推管); 004: two pillars grouped as "G2" (4001, 4002); 005: one bush without a group (5001).
    void LoadFourLines()
    {
        const Attributes pin = Marked({{"名称", "顶针"}, {"类型", "Φ4×200"}, {"供应商", "盘起工业"}});
        const Attributes sleeve = Marked({{"名称", "司筒"}, {"类型", "Φ6×150"}, {"组ID", "G1"}});
        const Attributes corePin = Marked({{"名称", "推管"}, {"类型", "Φ3×150"}, {"组ID", "G1"}});
        const Attributes pillar = Marked({{"名称", "导柱"}, {"类型", "Φ20×120"}, {"组ID", "G2"}});
        const Attributes bush = Marked({{"名称", "导套"}, {"类型", "Φ20×60"}});
        LoadBodies({{1001, ScrewM6x20()},
                    {1002, ScrewM6x20()},
                    {1003, ScrewM6x20()},
                    {2001, pin, Pin(4, 200)},
                    {2002, pin, Pin(4, 200)},
                    {3001, sleeve, Pin(6, 150)},
                    {3002, sleeve, Pin(6, 150)},
                    {3003, corePin, Pin(3, 150)},
                    {4001, pillar, Pin(20, 120)},
                    {4002, pillar, Stack({{20, 120}})},
                    {5001, bush, Stack({{28, 60}})}});
    }

    // The n-th top-level row (1-based), or its m-th body row when m > 0.
    static Node* RowNode(Tree* tree, int n, int m = 0)
    {
        Node* node = tree->RootNode();
        for (int i = 1; node != nullptr && i < n; ++i)
            node = node->NextSiblingNode();
        if (node == nullptr || m == 0)
            return node;
        Node* child = node->FirstChildNode();
        for (int i = 1; child != nullptr && i < m; ++i)
            child = child->NextSiblingNode();
        return child;
    }

    static std::string Text(Node* node, int column) { return node->GetColumnDisplayText(column).GetLocaleText(); }

    // The texts of one column over every row, in pre-order.
    static std::vector<std::string> Column(Tree* tree, int column)
    {
        std::vector<std::string> texts;
        for (const Row& row : Rows(tree))
            texts.push_back(row.text[column]);
        return texts;
    }

    // The body's string attributes by title; other types as "<type n>".
    static std::map<std::string, std::string> AttributesOf(unsigned tag)
    {
        std::map<std::string, std::string> attributes;
        for (const NXOpen::NXObject::AttributeInformation& a : Body(tag)->GetUserAttributes()) {
            attributes[a.Title.GetLocaleText()] = a.Type == NXOpen::NXObject::AttributeTypeString
                                                      ? std::string(a.StringValue.GetLocaleText())
                                                      : "<type " + std::to_string(a.Type) + ">";
        }
        return attributes;
    }

    // The body's "组ID", or "-" when it has none.
    static std::string GroupIdOf(unsigned tag)
    {
        std::map<std::string, std::string> attributes = AttributesOf(tag);
        return attributes.count("组ID") ? attributes["组ID"] : "-";
    }
};

}  // namespace editing_test
