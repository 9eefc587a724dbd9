// The fixture of the command tests: the standard-part fixture with the bundled template in the
// active configuration folder, an output folder on drive D:, a small mould of four purchase
// lines, the head typed in as a designer types it, and the part's attributes read in order.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include <NXOpen/Body.hxx>
#include <NXOpen/NXObject.hxx>
#include <NXOpen/Part.hxx>

#include "stdparts/StdPartsFixture.hpp"
#include "xls/XlsTestSupport.h"

namespace commands_test {

using namespace stdparts_test;

// One attribute as (title, value); values of other types than string are shown as "<type n>".
using AttributeList = std::vector<std::pair<std::string, std::string>>;

inline AttributeList AttributesOf(NXOpen::NXObject* object)
{
    AttributeList list;
    for (const NXOpen::NXObject::AttributeInformation& a : object->GetUserAttributes()) {
        const std::string value = a.Type == NXOpen::NXObject::AttributeTypeString
                                      ? std::string(a.StringValue.GetLocaleText())
                                      : "<type " + std::to_string(static_cast<int>(a.Type)) + ">";
        list.push_back({a.Title.GetLocaleText(), value});
    }
    return list;
}

// The value of a string attribute, or "<none>" when the object has no string attribute of title.
inline std::string StringAttribute(NXOpen::NXObject* object, const std::string& title)
{
    if (!object->HasUserAttribute(title.c_str(), NXOpen::NXObject::AttributeTypeString, -1))
        return "<none>";
    return object->GetStringUserAttribute(title.c_str(), -1).GetLocaleText();
}

// The head blocks in the order of the part's head attributes, with the values FillHead types.
inline const std::vector<std::pair<std::string, std::string>>& HeadValues()
{
    static const std::vector<std::pair<std::string, std::string>> values = {
        {"string03", "SO-1"},   {"string02", "ERP-2"}, {"string031", "ABS"},  {"string01", "M-01"},
        {"string032", "120T"},  {"string033", "P-3"},  {"string0", "美的"},   {"string034", "2.0"},
        {"string035", "两板模"}, {"string036", "张工"}, {"string04", "面板"},
    };
    return values;
}

inline const std::vector<std::string>& HeadTitles()
{
    static const std::vector<std::string> titles = {"订单编号", "ERP编号", "产品材质", "模具编号", "模具吨位", "产品编号",
                                                    "客户名称", "产品厚度", "模具类型", "设计担当", "产品名称"};
    return titles;
}

// The twelve body attribute titles in the order they are written.
inline const std::vector<std::string>& BodyTitles()
{
    static const std::vector<std::string> titles = {"名称", "类型", "品牌",   "材质",   "热处理",  "供应商",
                                                    "数量", "采购周期", "状态", "修改日期", "备注", "标准件ID"};
    return titles;
}

class CommandsFixture : public StdPartsFixture {
protected:
    void SetUp() override
    {
        StdPartsFixture::SetUp();
        fs::copy_file(xlstest::bundledTemplate(), TemplatePath());
        fs::create_directories(DriveD() / "out");
        host::PinClock({2024, 5, 18, 9, 30, 15, 42});
    }

    // Test literals are GBK; the file system's names are UTF-8.
    fs::path TemplatePath() const { return RootDir() / "config" / fs::u8path(u8"模具标准件申购表.xls"); }

    // Four purchase lines: two M6x20 screws, an ejector pin and two identical unnamed blocks.
    void LoadMould()
    {
        LoadBodies({
            {1001, ScrewM6x20()},
            {1002, ScrewM6x20(), Screw(6, 20), 61, 6, false, {40, 0, 0}},
            {1003, Marked({{"名称", "顶针"}, {"类型", "Φ4×200"}, {"数量", "1"}}), Stack({{8, 4}, {4, 200}})},
            {1004, Marked(), Box(20, 20, 15)},
            {1005, Marked(), Box(20, 20, 15), 62, 6, false, {0, 50, 0}},
        });
    }

    // Types every head value into its block (each runs the update handler).
    static void FillHead(host::LiveDialog& live)
    {
        for (const auto& [block, value] : HeadValues())
            live.SetText(block, value);
    }

    // The tags of the bodies the rows of the tree hold, groups as "1001", bodies as "  1001".
    static std::vector<std::string> TreeOutline(Vornadel& dialog) { return Outline(Rows(dialog.tree_control0)); }

    static NXOpen::Part* Work() { return host::WorkPart(); }
};

}  // namespace commands_test
