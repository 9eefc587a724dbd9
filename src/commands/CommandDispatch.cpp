// update_cb: NX calls it for every block event. The block is found by comparing the pointer with
// the dialog's blocks, in a fixed order, and its command runs to its end inside the call.

#include <algorithm>
#include <exception>
#include <string>
#include <vector>

#include <NXOpen/Body.hxx>
#include <NXOpen/BlockStyler_BodyCollector.hxx>
#include <NXOpen/BlockStyler_Button.hxx>
#include <NXOpen/BlockStyler_FolderSelection.hxx>
#include <NXOpen/BlockStyler_Node.hxx>
#include <NXOpen/BlockStyler_PropertyList.hxx>
#include <NXOpen/BlockStyler_StringBlock.hxx>
#include <NXOpen/BlockStyler_Tree.hxx>
#include <NXOpen/BlockStyler_UIBlock.hxx>
#include <NXOpen/NXMessageBox.hxx>
#include <NXOpen/NXObject.hxx>
#include <NXOpen/Selection.hxx>
#include <NXOpen/UI.hxx>
#include <NXOpen/Update.hxx>
#include <uf_object_types.h>
#include <uf_ui_types.h>

#include "config/ConfigTables.h"
#include "shell/ErrorBox.h"
#include "shell/Vornadel.h"
#include "stdparts/StdPartCollection.h"
#include "stdparts/StdPartRecords.h"
#include "stdparts/TreeReadBack.h"

namespace {

std::string LocaleValue(NXOpen::BlockStyler::StringBlock* block)
{
    return block->WideValue().GetLocaleText();
}

// The group command's selection dialog: solid bodies of the work part. On Back or Cancel the
// answer is false and objects is to be ignored.
bool SelectGroupBodies(std::vector<NXOpen::NXObject*>& objects)
{
    std::vector<NXOpen::Selection::MaskTriple> masks;
    masks.push_back(NXOpen::Selection::MaskTriple(UF_solid_type, 0, UF_UI_SEL_FEATURE_SOLID_BODY));
    NXOpen::Selection::Response response = Vornadel::theUI->SelectionManager()->SelectObjects(
        "选择需要设置为同一组的实体", "设置组", NXOpen::Selection::SelectionScopeWorkPart,
        NXOpen::Selection::SelectionActionClearAndEnableSpecific, false, false, masks, objects);
    return response != NXOpen::Selection::ResponseBack && response != NXOpen::Selection::ResponseCancel;
}

// Gives every selected body the group id; other selected objects are skipped.
void JoinGroup(const std::vector<NXOpen::NXObject*>& objects, const std::string& groupId)
{
    for (size_t i = 0; i < objects.size(); ++i) {
        NXOpen::Body* body = dynamic_cast<NXOpen::Body*>(objects[i]);
        if (body != NULL)
            body->SetUserAttribute(StdPartTitle::GroupId, -1, groupId, NXOpen::Update::OptionNow);
    }
}

// The body of node and the bodies of its direct children, in order.
std::vector<NXOpen::Body*> GroupBodies(NXOpen::BlockStyler::Node* node)
{
    std::vector<NXOpen::Body*> bodies;
    bodies.push_back(GetNodeBody(node));
    std::vector<NXOpen::BlockStyler::Node*> children = GetChildNodes(node);
    for (size_t i = 0; i < children.size(); ++i)
        bodies.push_back(GetNodeBody(children[i]));
    return bodies;
}

void SetHighlight(const std::vector<NXOpen::Body*>& bodies, bool on)
{
    for (size_t i = 0; i < bodies.size(); ++i) {
        if (bodies[i] == NULL)
            continue;
        if (on)
            bodies[i]->Highlight();
        else
            bodies[i]->Unhighlight();
    }
}

// button04. A new group gets a new time-stamp id. In add mode (set by the tree menu's "添加组")
// the remembered group's bodies are highlighted while the designer selects, and the selected
// bodies take that group's id. Either way the tree is rebuilt with a new snapshot.
void SetGroup(Vornadel& dialog)
{
    std::vector<NXOpen::NXObject*> objects;
    if (!dialog.addToGroupMode) {
        if (!SelectGroupBodies(objects))
            return;
        JoinGroup(objects, MakeTimestampId());
    } else {
        std::vector<NXOpen::Body*> group = GroupBodies(dialog.addToGroupNode);
        SetHighlight(group, true);
        const std::string groupId =
            group[0]->GetUserAttribute(StdPartTitle::GroupId, NXOpen::NXObject::AttributeTypeString, -1)
                .StringValue.GetLocaleText();
        const bool accepted = SelectGroupBodies(objects);
        SetHighlight(group, false);
        if (!accepted)
            return;
        JoinGroup(objects, groupId);
    }
    dialog.CreatStdPartNodes(true, true);
}

// bodySelect0: every node collapsed and deselected, then the body rows of the selected bodies
// selected and their groups opened. A group row is never selected this way.
void MirrorBodySelection(NXOpen::BlockStyler::Tree* tree, NXOpen::BlockStyler::UIBlock* block)
{
    std::vector<NXOpen::BlockStyler::Node*> nodes = GetAllNodes(tree);
    NXOpen::BlockStyler::PropertyList* properties = block->GetProperties();
    std::vector<NXOpen::TaggedObject*> selected = properties->GetTaggedObjectVector("SelectedObjects");
    delete properties;

    for (size_t i = 0; i < nodes.size(); ++i) {
        nodes[i]->Expand(NXOpen::BlockStyler::Node::ExpandOptionCollapse);
        if (nodes[i]->IsSelected())
            tree->SelectNode(nodes[i], false, false);
    }
    for (size_t i = 0; i < nodes.size(); ++i) {
        NXOpen::TaggedObject* body = GetNodeBody(nodes[i]);
        const bool isSelected = body != NULL && std::find(selected.begin(), selected.end(), body) != selected.end();
        if (!isSelected || !GetChildNodes(nodes[i]).empty())
            continue;
        tree->SelectNode(nodes[i], true, false);
        if (nodes[i]->ParentNode() != NULL)
            nodes[i]->ParentNode()->Expand(NXOpen::BlockStyler::Node::ExpandOptionExpand);
    }
}

}  // namespace

int Vornadel::update_cb(NXOpen::BlockStyler::UIBlock* block)
{
    try {
        // A value typed into one of seven head blocks joins the option list of its column; the
        // order, ERP and product numbers and the product name are only read by save and export.
        if (block == string03 || block == string02) {
        } else if (block == string031) {
            AddConfigFileValue(bomHeadConfigPath, "产品材质", bomHeadConfig.productMaterials, LocaleValue(string031), block);
        } else if (block == string033) {
        } else if (block == string01) {
            AddConfigFileValue(bomHeadConfigPath, "模具编号", bomHeadConfig.mouldNos, LocaleValue(string01), block);
        } else if (block == string032) {
            AddConfigFileValue(bomHeadConfigPath, "模具吨位", bomHeadConfig.mouldTonnages, LocaleValue(string032), block);
        } else if (block == string0) {
            AddConfigFileValue(bomHeadConfigPath, "客户名称", bomHeadConfig.customerNames, LocaleValue(string0), block);
        } else if (block == string034) {
            AddConfigFileValue(bomHeadConfigPath, "产品厚度", bomHeadConfig.productThicknesses, LocaleValue(string034), block);
        } else if (block == string035) {
            AddConfigFileValue(bomHeadConfigPath, "模具类型", bomHeadConfig.mouldTypes, LocaleValue(string035), block);
        } else if (block == string036) {
            AddConfigFileValue(bomHeadConfigPath, "设计担当", bomHeadConfig.designers, LocaleValue(string036), block);
        } else if (block == string04) {
        } else if (block == button01) {
            ExportBom();
        } else if (block == button0) {
            SaveAttributes();
            theUI->NXMessageBox()->Show("标准件BOM", NXOpen::NXMessageBox::DialogTypeInformation, "保存BOM属性成功！");
        } else if (block == button03) {
            ShowStdPartLayers();
            CreateStdNodes(initialParams);
        } else if (block == button04) {
            SetGroup(*this);
        } else if (block == button021) {
            ShowOnlyUnmodifiedBodies();
        } else if (block == button02) {
            ShowOnlyModifiedBodies();
        } else if (block == bodySelect0) {
            MirrorBodySelection(tree_control0, block);
        } else if (block == nativeFolderBrowser0) {
            outputFolder = nativeFolderBrowser0->Path().GetLocaleText();
            SetConfigValue(userConfigPath, "出图的路径", outputFolder);
        }
    } catch (std::exception& e) {
        ShowExceptionBox("Block Styler", e);
    }
    // Exceptions of other types (a failed workbook save) are left to the dialog framework.
    return 0;
}
