// initialize_cb and dialogShown_cb: binding the blocks and the first display.

#include "shell/Vornadel.h"

#include <exception>

#include <NXOpen/BlockStyler_BlockDialog.hxx>
#include <NXOpen/BlockStyler_BodyCollector.hxx>
#include <NXOpen/BlockStyler_Button.hxx>
#include <NXOpen/BlockStyler_CompositeBlock.hxx>
#include <NXOpen/BlockStyler_FolderSelection.hxx>
#include <NXOpen/BlockStyler_Group.hxx>
#include <NXOpen/BlockStyler_ScrolledWindow.hxx>
#include <NXOpen/BlockStyler_StringBlock.hxx>
#include <NXOpen/BlockStyler_Tree.hxx>
#include <NXOpen/Callback.hxx>
#include <NXOpen/NXObject.hxx>
#include <NXOpen/Part.hxx>
#include <NXOpen/PartCollection.hxx>
#include <NXOpen/Session.hxx>
#include <uf.h>

#include "shell/ErrorBox.h"

namespace {

template <class Block>
Block* Find(NXOpen::BlockStyler::CompositeBlock* top, const char* id)
{
    return dynamic_cast<Block*>(top->FindBlock(id));
}

struct Column {
    const char* title;
    int width;
};

// The tree's columns, by index.
const Column kColumns[kColumnCount] = {
    {"序号", 75}, {"名称", 120}, {"型号/尺寸", 120}, {"品牌", 80}, {"数量", 60},
    {"材质", 60}, {"热处理", 75}, {"备注", 60}, {"供应商", 86}, {"采购周期", 80},
    {"状态", 50}, {"修改时间", 80}, {"ID", 80},
};
const int kHiddenColumn = 12;

// Registers one tree handler inside its own try block; false, after the error box, when NX
// refuses it.
template <class Callback, class Handler>
bool Register(NXOpen::BlockStyler::Tree* tree, void (NXOpen::BlockStyler::Tree::*set)(const Callback&),
              const Handler& handler)
{
    try {
        (tree->*set)(handler);
        return true;
    } catch (std::exception& e) {
        ShowExceptionBox("Block Styler", e);
        return false;
    }
}

void SetChoices(NXOpen::BlockStyler::StringBlock* block, const std::vector<std::string>& list)
{
    std::vector<NXOpen::NXString> items = ToNXStrings(list);
    block->SetListItems(items);
}

}  // namespace

void Vornadel::initialize_cb()
{
    try {
        NXOpen::BlockStyler::CompositeBlock* top = theDialog->TopBlock();
        group = Find<NXOpen::BlockStyler::Group>(top, "group");
        string03 = Find<NXOpen::BlockStyler::StringBlock>(top, "string03");
        string02 = Find<NXOpen::BlockStyler::StringBlock>(top, "string02");
        string031 = Find<NXOpen::BlockStyler::StringBlock>(top, "string031");
        string033 = Find<NXOpen::BlockStyler::StringBlock>(top, "string033");
        string01 = Find<NXOpen::BlockStyler::StringBlock>(top, "string01");
        string032 = Find<NXOpen::BlockStyler::StringBlock>(top, "string032");
        string0 = Find<NXOpen::BlockStyler::StringBlock>(top, "string0");
        string034 = Find<NXOpen::BlockStyler::StringBlock>(top, "string034");
        string035 = Find<NXOpen::BlockStyler::StringBlock>(top, "string035");
        string036 = Find<NXOpen::BlockStyler::StringBlock>(top, "string036");
        string04 = Find<NXOpen::BlockStyler::StringBlock>(top, "string04");
        group4 = Find<NXOpen::BlockStyler::Group>(top, "group4");
        group3 = Find<NXOpen::BlockStyler::Group>(top, "group3");
        scrolledWindow = Find<NXOpen::BlockStyler::ScrolledWindow>(top, "scrolledWindow");
        tree_control0 = Find<NXOpen::BlockStyler::Tree>(top, "tree_control0");
        group2 = Find<NXOpen::BlockStyler::Group>(top, "group2");
        button01 = Find<NXOpen::BlockStyler::Button>(top, "button01");
        button0 = Find<NXOpen::BlockStyler::Button>(top, "button0");
        button04 = Find<NXOpen::BlockStyler::Button>(top, "button04");
        button03 = Find<NXOpen::BlockStyler::Button>(top, "button03");
        button021 = Find<NXOpen::BlockStyler::Button>(top, "button021");
        button02 = Find<NXOpen::BlockStyler::Button>(top, "button02");
        group1 = Find<NXOpen::BlockStyler::Group>(top, "group1");
        bodySelect0 = Find<NXOpen::BlockStyler::BodyCollector>(top, "bodySelect0");
        nativeFolderBrowser0 = Find<NXOpen::BlockStyler::FolderSelection>(top, "nativeFolderBrowser0");
    } catch (std::exception& e) {
        ShowExceptionBox("Block Styler", e);
        return;
    }

    typedef NXOpen::BlockStyler::Tree Tree;
    if (!Register(tree_control0, &Tree::SetOnExpandHandler, NXOpen::make_callback(this, &Vornadel::OnExpandCallback)) ||
        !Register(tree_control0, &Tree::SetOnPreSelectHandler, NXOpen::make_callback(this, &Vornadel::OnPreSelectCallback)) ||
        !Register(tree_control0, &Tree::SetOnSelectHandler, NXOpen::make_callback(this, &Vornadel::OnSelectCallback)) ||
        !Register(tree_control0, &Tree::SetOnBeginLabelEditHandler,
                  NXOpen::make_callback(this, &Vornadel::OnBeginLabelEditCallback)) ||
        !Register(tree_control0, &Tree::SetOnEndLabelEditHandler,
                  NXOpen::make_callback(this, &Vornadel::OnEndLabelEditCallback)) ||
        !Register(tree_control0, &Tree::SetOnEditOptionSelectedHandler,
                  NXOpen::make_callback(this, &Vornadel::OnEditOptionSelectedCallback)) ||
        !Register(tree_control0, &Tree::SetAskEditControlHandler,
                  NXOpen::make_callback(this, &Vornadel::AskEditControlCallback)) ||
        !Register(tree_control0, &Tree::SetOnMenuHandler, NXOpen::make_callback(this, &Vornadel::OnMenuCallback)))
        return;
    Register(tree_control0, &Tree::SetOnMenuSelectionHandler, NXOpen::make_callback(this, &Vornadel::OnMenuSelectionCallback));
}

void Vornadel::dialogShown_cb()
{
    try {
        if (UF_is_initialized() == 0)
            UF_initialize();
        // Asked afresh: the work part may have changed since the dialog object was made.
        NXOpen::Part* work = theSession->Parts()->Work();

        tree_control0->SetShowToolTips(true);
        for (int i = 0; i < kColumnCount; ++i)
            tree_control0->InsertColumn(i, kColumns[i].title, kColumns[i].width);
        tree_control0->SetColumnVisible(kHiddenColumn, false);

        SetChoices(string031, bomHeadConfig.productMaterials);
        SetChoices(string01, bomHeadConfig.mouldNos);
        SetChoices(string032, bomHeadConfig.mouldTonnages);
        SetChoices(string0, bomHeadConfig.customerNames);
        SetChoices(string034, bomHeadConfig.productThicknesses);
        SetChoices(string035, bomHeadConfig.mouldTypes);
        SetChoices(string036, bomHeadConfig.designers);

        headInfo.ReadFromPart(work);
        for (int i = 0; i < BomHeadInfo::FieldCount; ++i)
            HeadBlock(i)->SetWideValue(NXOpen::NXString(headInfo.Field(i)));

        nativeFolderBrowser0->SetPath(NXOpen::NXString(outputFolder));
        ShowStdPartLayers();
        bool alreadySaved = work->HasUserAttribute("标准件", NXOpen::NXObject::AttributeTypeString, -1);
        CreatStdPartNodes(alreadySaved, true);
    } catch (std::exception& e) {
        ShowExceptionBox("标准件BOM", e);
    }
}

NXOpen::BlockStyler::StringBlock* Vornadel::HeadBlock(int i)
{
    NXOpen::BlockStyler::StringBlock* const blocks[BomHeadInfo::FieldCount] = {
        string03, string02, string031, string01, string032, string033,
        string0, string034, string035, string036, string04,
    };
    return blocks[i];
}

BomHeadInfo Vornadel::ReadHeadBlocks()
{
    BomHeadInfo head;
    for (int i = 0; i < BomHeadInfo::FieldCount; ++i)
        head.Field(i) = HeadBlock(i)->WideValue().GetLocaleText();
    return head;
}
