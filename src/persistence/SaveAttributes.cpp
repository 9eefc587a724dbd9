// Saving the dialog onto the part: the BOM head onto the work part, each tree row's purchase
// columns onto the body the row stands for.

#include <stdexcept>
#include <string>
#include <vector>

#include <NXOpen/Body.hxx>
#include <NXOpen/BlockStyler_Node.hxx>
#include <NXOpen/NXObject.hxx>
#include <NXOpen/Part.hxx>
#include <NXOpen/PartCollection.hxx>
#include <NXOpen/Session.hxx>
#include <NXOpen/Update.hxx>
#include <uf_attr.h>
#include <uf_modl.h>

#include "persistence/AssignStringAttribute.h"
#include "shell/Vornadel.h"
#include "stdparts/TreeReadBack.h"

void AssignStringAttribute(NXOpen::Body* body, const std::string& category, const std::string& title,
                           const std::string& value)
{
    (void)category;
    UF_ATTR_value_t attribute;
    attribute.type = UF_ATTR_string;
    attribute.value.string = const_cast<char*>(value.c_str());
    UF_ATTR_assign(body->Tag(), const_cast<char*>(title.c_str()), attribute);
    UF_MODL_update();
}

namespace {

const char* const kBodyCategory = "标准件BOM";

// The twelve body attributes, in the order they are written, with the tree column each comes
// from. The model/size column is stored as "类型" and the modification time as "修改日期".
struct BodyColumn {
    const char* title;
    int column;
};
const BodyColumn kBodyColumns[] = {
    {StdPartTitle::Name, 1},     {StdPartTitle::Type, 2},          {StdPartTitle::Brand, 3},
    {StdPartTitle::Material, 5}, {StdPartTitle::HeatTreatment, 6}, {StdPartTitle::Supplier, 8},
    {StdPartTitle::Quantity, 4}, {StdPartTitle::LeadTime, 9},      {StdPartTitle::Status, 10},
    {StdPartTitle::ModifyDate, 11}, {StdPartTitle::Remark, 7},     {StdPartTitle::StdPartId, 12},
};

// Writes the row's twelve purchase columns onto the row's body, as the cells show them.
void SaveNode(NXOpen::BlockStyler::Node* node)
{
    NXOpen::Body* body = GetNodeBody(node);
    // The tree builder gives every row a body; a row without one has nothing to save to.
    if (body == NULL)
        return;
    for (size_t i = 0; i < sizeof kBodyColumns / sizeof kBodyColumns[0]; ++i) {
        const std::string text = node->GetColumnDisplayText(kBodyColumns[i].column).GetLocaleText();
        AssignStringAttribute(body, kBodyCategory, kBodyColumns[i].title, text);
    }
}

// Each purchase line's body rows in order, then the line's own row; deeper rows are not saved.
void SaveTree(NXOpen::BlockStyler::Tree* tree)
{
    std::vector<NXOpen::BlockStyler::Node*> groups = GetRootNodes(tree);
    for (size_t g = 0; g < groups.size(); ++g) {
        std::vector<NXOpen::BlockStyler::Node*> rows = GetChildNodes(groups[g]);
        rows.push_back(groups[g]);
        for (size_t r = 0; r < rows.size(); ++r)
            SaveNode(rows[r]);
    }
}

void MarkAsStdPartPart(NXOpen::Part* work)
{
    work->SetUserAttribute("标准件", -1, "Y", NXOpen::Update::OptionNow);
}

}  // namespace

void Vornadel::SaveAttributes()
{
    // Every head block is read before any is checked; the first empty required field, in field
    // order, stops the save before anything is written. Blanks are text.
    BomHeadInfo head = ReadHeadBlocks();
    for (int i = 0; i < BomHeadInfo::FieldCount; ++i) {
        if (BomHeadInfo::IsRequired(i) && head.Field(i).empty())
            throw std::runtime_error(std::string(BomHeadInfo::Title(i)) + "不可以为空");
    }

    NXOpen::Part* work = theSession->Parts()->Work();
    for (int i = 0; i < BomHeadInfo::FieldCount; ++i) {
        work->SetUserAttribute(NXOpen::NXString(BomHeadInfo::Title(i)), -1, NXOpen::NXString(head.Field(i)),
                               NXOpen::Update::OptionNow);
    }
    MarkAsStdPartPart(work);
    SaveTree(tree_control0);
}

void Vornadel::SaveAttributesNoTitle()
{
    MarkAsStdPartPart(theSession->Parts()->Work());
    SaveTree(tree_control0);
}
