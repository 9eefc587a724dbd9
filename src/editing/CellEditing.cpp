// In-place editing of the tree. Only group rows are edited; a value entered on a group row is
// copied at once into the same column of each of its body rows, so that saving writes it onto
// every body of the purchase line. Seven columns open a list of the configured options, the
// others take free text, and no value is checked. Selecting a row opens its group alone and
// makes the group's body rows follow a group row's selection; expanding and pre-selecting a row
// need nothing of the plug-in.

#include "editing/CellEditing.h"

#include <exception>

#include <NXOpen/BlockStyler_Node.hxx>
#include <NXOpen/BlockStyler_Tree.hxx>

#include "config/ConfigTables.h"
#include "platform/CodePage.h"
#include "shell/ErrorBox.h"
#include "shell/Vornadel.h"
#include "stdparts/TreeReadBack.h"

namespace {

// The configured options of a list column, NULL for a free-text column.
const std::vector<std::string>* ColumnOptions(const StdPartConfig& config, int column)
{
    switch (column) {
    case 1: return &config.names;
    case 2: return &config.types;
    case 3: return &config.brands;
    case 5: return &config.materials;
    case 6: return &config.heatTreatments;
    case 8: return &config.suppliers;
    case 9: return &config.leadTimes;
    default: return NULL;
    }
}

// Sets the text on the node's column, then on the same column of each direct child; the text is
// converted afresh for every node.
void SetLineColumnText(NXOpen::BlockStyler::Node* node, int column, const NXOpen::NXString& text)
{
    const std::string typed = text.GetLocaleText();
    node->SetColumnDisplayText(column, Utf8ToAnsi(typed).c_str());
    std::vector<NXOpen::BlockStyler::Node*> children = GetChildNodes(node);
    for (size_t i = 0; i < children.size(); ++i)
        children[i]->SetColumnDisplayText(column, Utf8ToAnsi(typed).c_str());
}

}  // namespace

std::string Utf8ToAnsi(const std::string& text)
{
    return platform::Utf8ToAnsi(text);
}

int FindOptionIndex(const std::vector<NXOpen::NXString>& options, const std::string& text)
{
    for (size_t i = 0; i < options.size(); ++i) {
        if (text == options[i].GetLocaleText())
            return static_cast<int>(i);
    }
    return 0;
}

void Vornadel::OnExpandCallback(NXOpen::BlockStyler::Tree*, NXOpen::BlockStyler::Node*)
{
}

void Vornadel::OnPreSelectCallback(NXOpen::BlockStyler::Tree*, NXOpen::BlockStyler::Node*, int, bool)
{
}

// At most one group is open at a time, and a group row's body rows take its selection state, so
// that the commands acting on the selected rows see the whole line.
void Vornadel::OnSelectCallback(NXOpen::BlockStyler::Tree*, NXOpen::BlockStyler::Node* node, int, bool selected)
{
    if (node == NULL)
        return;
    std::vector<NXOpen::BlockStyler::Node*> roots = GetRootNodes(tree_control0);
    for (size_t i = 0; i < roots.size(); ++i)
        roots[i]->Expand(NXOpen::BlockStyler::Node::ExpandOptionCollapse);
    NXOpen::BlockStyler::Node* group = node->ParentNode() != NULL ? node->ParentNode() : node;
    group->Expand(NXOpen::BlockStyler::Node::ExpandOptionExpand);
    std::vector<NXOpen::BlockStyler::Node*> children = GetChildNodes(node);
    if (!children.empty())
        tree_control0->SelectNodes(children, selected, false);
}

NXOpen::BlockStyler::Tree::BeginLabelEditState Vornadel::OnBeginLabelEditCallback(NXOpen::BlockStyler::Tree*,
                                                                                   NXOpen::BlockStyler::Node* node,
                                                                                   int columnID)
{
    if (node->ParentNode() == NULL && columnID != 0)
        return NXOpen::BlockStyler::Tree::BeginLabelEditStateAllow;
    return NXOpen::BlockStyler::Tree::BeginLabelEditStateDisallow;
}

NXOpen::BlockStyler::Tree::EndLabelEditState Vornadel::OnEndLabelEditCallback(NXOpen::BlockStyler::Tree*,
                                                                               NXOpen::BlockStyler::Node* node,
                                                                               int columnID,
                                                                               NXOpen::NXString editedText)
{
    SetLineColumnText(node, columnID, editedText);
    return NXOpen::BlockStyler::Tree::EndLabelEditStateAcceptText;
}

// Only the option's text counts; its index and the control type are not needed.
NXOpen::BlockStyler::Tree::EditControlOption Vornadel::OnEditOptionSelectedCallback(
    NXOpen::BlockStyler::Tree*, NXOpen::BlockStyler::Node* node, int columnID, int, NXOpen::NXString selectedOptionText,
    NXOpen::BlockStyler::Tree::ControlType)
{
    SetLineColumnText(node, columnID, selectedOptionText);
    return NXOpen::BlockStyler::Tree::EditControlOptionAccept;
}

// A list column of a group row opens control 1 with the column's configured options, the cell's
// current text preselected (the first option when it is not among them). In NX 8.5's numbering
// control 1 is ControlTypeComboBox, so a text that is not offered can still be typed.
NXOpen::BlockStyler::Tree::ControlType Vornadel::AskEditControlCallback(NXOpen::BlockStyler::Tree* tree,
                                                                        NXOpen::BlockStyler::Node* node,
                                                                        int columnID)
{
    try {
        if (node->ParentNode() != NULL)
            return NXOpen::BlockStyler::Tree::ControlTypeNone;
        const std::vector<std::string>* configured = ColumnOptions(stdPartConfig, columnID);
        if (configured == NULL)
            return NXOpen::BlockStyler::Tree::ControlTypeNone;
        std::vector<NXOpen::NXString> options = ToNXStrings(*configured);
        const std::string current = node->GetColumnDisplayText(columnID).GetLocaleText();
        tree->SetEditOptions(options, FindOptionIndex(options, current));
        return NXOpen::BlockStyler::Tree::ControlTypeComboBox;
    } catch (std::exception& e) {
        ShowExceptionBox("标准件BOM", e);
        return NXOpen::BlockStyler::Tree::ControlTypeNone;
    }
}
