// The tree's right-click menu on a group the designer made with the group button (bodies that
// share a "组ID"): "添加组" lets the designer pick more bodies for the clicked row's group by
// pressing the dialog's own group button in add mode; "解散组" removes the group id from the
// clicked row's body and its body rows and rebuilds the tree.

#include "editing/GroupMenu.h"

#include <exception>
#include <string>

#include <NXOpen/Body.hxx>
#include <NXOpen/BlockStyler_BlockDialog.hxx>
#include <NXOpen/BlockStyler_Button.hxx>
#include <NXOpen/BlockStyler_CompositeBlock.hxx>
#include <NXOpen/BlockStyler_Node.hxx>
#include <NXOpen/BlockStyler_Tree.hxx>
#include <NXOpen/BlockStyler_TreeListMenu.hxx>
#include <NXOpen/NXObject.hxx>
#include <NXOpen/Update.hxx>
#include <uf.h>

#include "shell/ErrorBox.h"
#include "shell/Vornadel.h"
#include "stdparts/StdPartRecords.h"
#include "stdparts/TreeReadBack.h"

namespace {

enum { kAddToGroup = 0, kDissolveGroup = 1 };

// The window class of standard Windows dialogs, which NX's dialogs are.
const char kDialogWindowClass[] = "#32770";

bool HasGroupId(NXOpen::Body* body)
{
    return body != NULL && body->HasUserAttribute(StdPartTitle::GroupId, NXOpen::NXObject::AttributeTypeString, -1);
}

void DeleteGroupId(NXOpen::Body* body)
{
    if (body != NULL)
        body->DeleteUserAttribute(NXOpen::NXObject::AttributeTypeString, StdPartTitle::GroupId, true,
                                  NXOpen::Update::OptionNow);
}

// The first window inside the dialog window titled title, depth first, whose text is text;
// NULL when there is no such dialog window or no such window in it.
platform::WindowHandle FindDialogWindow(const std::string& title, const std::string& text)
{
    platform::WindowHandle dialogWindow = platform::FindTopLevelWindow(kDialogWindowClass, title.c_str());
    if (dialogWindow == NULL)
        return NULL;  // FindWindowExA would walk every top-level window instead
    std::vector<platform::WindowHandle> windows;
    CollectChildWindows(dialogWindow, windows);
    for (size_t i = 0; i < windows.size(); ++i) {
        char windowText[1024] = {0};
        platform::ReadWindowText(windows[i], windowText, sizeof windowText);
        if (text == windowText)
            return windows[i];
    }
    return NULL;
}

}  // namespace

void CollectChildWindows(platform::WindowHandle parent, std::vector<platform::WindowHandle>& list)
{
    for (platform::WindowHandle child = platform::FindChildWindow(parent, NULL); child != NULL;
         child = platform::FindChildWindow(parent, child)) {
        list.push_back(child);
        CollectChildWindows(child, list);
    }
}

// Both items are offered only on a row whose body carries a group id, and always together.
void Vornadel::OnMenuCallback(NXOpen::BlockStyler::Tree* tree, NXOpen::BlockStyler::Node* node, int)
{
    const bool disabled = node == NULL || !HasGroupId(GetNodeBody(node));
    NXOpen::BlockStyler::TreeListMenu* menu = tree->CreateMenu();
    menu->AddMenuItem(kAddToGroup, "添加组");
    menu->AddMenuItem(kDissolveGroup, "解散组");
    menu->SetItemDisable(kAddToGroup, disabled);
    menu->SetItemDisable(kDissolveGroup, disabled);
    tree->SetMenu(menu);
    delete menu;
}

void Vornadel::OnMenuSelectionCallback(NXOpen::BlockStyler::Tree*, NXOpen::BlockStyler::Node* node, int menuItemID)
{
    try {
        UF_initialize();  // the result is deliberately not checked
        if (node == NULL)
            return;
        if (menuItemID == kDissolveGroup) {
            // The clicked row's body first, then its body rows; other groups keep their ids.
            DeleteGroupId(GetNodeBody(node));
            std::vector<NXOpen::BlockStyler::Node*> children = GetChildNodes(node);
            for (size_t i = 0; i < children.size(); ++i)
                DeleteGroupId(GetNodeBody(children[i]));
            CreatStdPartNodes(true, true);
        } else if (menuItemID == kAddToGroup && button04 != NULL) {
            // The group button is clicked on screen, so that its command runs as if the designer
            // had pressed it; the note left here makes it add to the clicked row's group. The
            // note is never taken back: every later press of the button adds to that group too.
            const std::string label = button04->Label().GetLocaleText();
            const std::string title = theDialog->TopBlock()->Label().GetLocaleText();
            platform::WindowHandle button = FindDialogWindow(title, label);
            if (button == NULL)
                return;
            addToGroupMode = true;
            addToGroupNode = node;
            platform::SendWindowMessage(button, platform::WM_LBUTTONDOWN_MESSAGE, 0, 0);
            platform::SendWindowMessage(button, platform::WM_LBUTTONUP_MESSAGE, 0, 0);
        }
    } catch (std::exception& e) {
        ShowExceptionBox("提示", e);
    }
}
