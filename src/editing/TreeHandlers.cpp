// The tree's handlers. Expanding and pre-selecting do nothing by design. In-place editing and
// the group menu are not built: no cell opens an editor, no edit or option is accepted, and no
// menu is shown.

#include "shell/Vornadel.h"

void Vornadel::OnExpandCallback(NXOpen::BlockStyler::Tree*, NXOpen::BlockStyler::Node*)
{
}

void Vornadel::OnPreSelectCallback(NXOpen::BlockStyler::Tree*, NXOpen::BlockStyler::Node*, int, bool)
{
}

void Vornadel::OnSelectCallback(NXOpen::BlockStyler::Tree*, NXOpen::BlockStyler::Node*, int, bool)
{
}

NXOpen::BlockStyler::Tree::BeginLabelEditState Vornadel::OnBeginLabelEditCallback(NXOpen::BlockStyler::Tree*,
                                                                                   NXOpen::BlockStyler::Node*, int)
{
    return NXOpen::BlockStyler::Tree::BeginLabelEditStateDisallow;
}

NXOpen::BlockStyler::Tree::EndLabelEditState Vornadel::OnEndLabelEditCallback(NXOpen::BlockStyler::Tree*,
                                                                               NXOpen::BlockStyler::Node*, int,
                                                                               NXOpen::NXString)
{
    return NXOpen::BlockStyler::Tree::EndLabelEditStateRejectText;
}

NXOpen::BlockStyler::Tree::EditControlOption Vornadel::OnEditOptionSelectedCallback(
    NXOpen::BlockStyler::Tree*, NXOpen::BlockStyler::Node*, int, int, NXOpen::NXString,
    NXOpen::BlockStyler::Tree::ControlType)
{
    return NXOpen::BlockStyler::Tree::EditControlOptionReject;
}

NXOpen::BlockStyler::Tree::ControlType Vornadel::AskEditControlCallback(NXOpen::BlockStyler::Tree*,
                                                                        NXOpen::BlockStyler::Node*, int)
{
    return NXOpen::BlockStyler::Tree::ControlTypeNone;
}

void Vornadel::OnMenuCallback(NXOpen::BlockStyler::Tree*, NXOpen::BlockStyler::Node*, int)
{
}

void Vornadel::OnMenuSelectionCallback(NXOpen::BlockStyler::Tree*, NXOpen::BlockStyler::Node*, int)
{
}
