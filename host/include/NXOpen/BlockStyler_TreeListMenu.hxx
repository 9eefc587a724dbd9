#ifndef NXOpen_BLOCKSTYLER_TREELISTMENU_HXX_INCLUDED
#define NXOpen_BLOCKSTYLER_TREELISTMENU_HXX_INCLUDED

#include <NXOpen/NXString.hxx>
#include <NXOpen/TransientObject.hxx>
#include <NXOpen/libnxopenuicpp_exports.hxx>

namespace NXOpen
{
    namespace BlockStyler
    {
        // A context menu of a tree, made by Tree::CreateMenu and shown by Tree::SetMenu. The caller
        // deletes it, after SetMenu.
        class NXOPENUICPPEXPORT TreeListMenu : public NXOpen::TransientObject
        {
        public:
            explicit TreeListMenu(void *ptr);
            virtual ~TreeListMenu();

            void AddMenuItem(int menuItemID, const NXString &menuItemText);
            void AddMenuItem(int menuItemID, const char *menuItemText);
            void AddMenuItem(int menuItemID, const NXString &menuItemText, const NXString &icon);
            void AddMenuItem(int menuItemID, const char *menuItemText, const char *icon);
            void AddSeperator();
            void SetSubMenu(int menuItemID, NXOpen::BlockStyler::TreeListMenu *subMenu);
            bool GetItemDisable(int menuItemID);
            void SetItemDisable(int menuItemID, bool disableStatus);
            bool GetItemHidden(int menuItemID);
            void SetItemHidden(int menuItemID, bool hiddenStatus);
            bool GetItemChecked(int menuItemID);
            void SetItemChecked(int menuItemID, bool checkedStatusStatus);
        };
    }
}

#endif
