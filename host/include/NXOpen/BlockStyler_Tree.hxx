#ifndef NXOpen_BLOCKSTYLER_TREE_HXX_INCLUDED
#define NXOpen_BLOCKSTYLER_TREE_HXX_INCLUDED

#include <vector>
#include <NXOpen/BlockStyler_UIBlock.hxx>
#include <NXOpen/BlockStyler_Node.hxx>
#include <NXOpen/BlockStyler_TreeListMenu.hxx>
#include <NXOpen/Callback.hxx>
#include <NXOpen/libnxopenuicpp_exports.hxx>

namespace NXOpen
{
    namespace BlockStyler
    {
        // A tree list: columns addressed by the id given to InsertColumn, nodes in a hierarchy.
        // There is no member that clears the tree or counts nodes.
        class NXOPENUICPPEXPORT Tree : public NXOpen::BlockStyler::UIBlock
        {
        public:
            // Where InsertNode puts a node when no after-node is given.
            enum NodeInsertOption
            {
                NodeInsertOptionFirst,
                NodeInsertOptionLast,
                NodeInsertOptionSort,
                NodeInsertOptionAlwaysFirst,
                NodeInsertOptionAlwaysLast
            };

            enum ColumnSortOption
            {
                ColumnSortOptionUnsorted,
                ColumnSortOptionAscending,
                ColumnSortOptionDescending
            };

            enum ColumnResizePolicy
            {
                ColumnResizePolicyConstantWidth,
                ColumnResizePolicyResizeWithContents,
                ColumnResizePolicyResizeWithTree
            };

            enum ColumnDisplay
            {
                ColumnDisplayText,
                ColumnDisplayIcon
            };

            enum BeginLabelEditState
            {
                BeginLabelEditStateAllow,
                BeginLabelEditStateDisallow
            };

            enum EndLabelEditState
            {
                EndLabelEditStateAcceptText,
                EndLabelEditStateRejectText
            };

            enum EditControlOption
            {
                EditControlOptionAccept,
                EditControlOptionReject
            };

            enum ControlType
            {
                ControlTypeNone,
                ControlTypeComboBox,
                ControlTypeListBox
            };

            typedef NXOpen::Callback2<void, NXOpen::BlockStyler::Tree *, NXOpen::BlockStyler::Node *> OnExpandCallback;
            typedef NXOpen::Callback4<void, NXOpen::BlockStyler::Tree *, NXOpen::BlockStyler::Node *, int, bool> OnPreSelectCallback;
            typedef NXOpen::Callback4<void, NXOpen::BlockStyler::Tree *, NXOpen::BlockStyler::Node *, int, bool> OnSelectCallback;
            typedef NXOpen::Callback3<NXOpen::BlockStyler::Tree::BeginLabelEditState, NXOpen::BlockStyler::Tree *, NXOpen::BlockStyler::Node *, int> OnBeginLabelEditCallback;
            typedef NXOpen::Callback4<NXOpen::BlockStyler::Tree::EndLabelEditState, NXOpen::BlockStyler::Tree *, NXOpen::BlockStyler::Node *, int, NXString> OnEndLabelEditCallback;
            typedef NXOpen::Callback6<NXOpen::BlockStyler::Tree::EditControlOption, NXOpen::BlockStyler::Tree *, NXOpen::BlockStyler::Node *, int, int, NXString, NXOpen::BlockStyler::Tree::ControlType> OnEditOptionSelectedCallback;
            typedef NXOpen::Callback3<NXOpen::BlockStyler::Tree::ControlType, NXOpen::BlockStyler::Tree *, NXOpen::BlockStyler::Node *, int> AskEditControlCallback;
            typedef NXOpen::Callback3<void, NXOpen::BlockStyler::Tree *, NXOpen::BlockStyler::Node *, int> OnMenuCallback;
            typedef NXOpen::Callback3<void, NXOpen::BlockStyler::Tree *, NXOpen::BlockStyler::Node *, int> OnMenuSelectionCallback;
            typedef NXOpen::Callback3<void, NXOpen::BlockStyler::Tree *, NXOpen::BlockStyler::Node *, int> OnInsertColumnCallback;
            typedef NXOpen::Callback2<void, NXOpen::BlockStyler::Tree *, NXOpen::BlockStyler::Node *> OnInsertNodeCallback;
            typedef NXOpen::Callback2<void, NXOpen::BlockStyler::Tree *, NXOpen::BlockStyler::Node *> OnDeleteNodeCallback;
            typedef NXOpen::Callback3<void, NXOpen::BlockStyler::Tree *, NXOpen::BlockStyler::Node *, int> OnStateChangeCallback;
            typedef NXOpen::Callback3<NXString, NXOpen::BlockStyler::Tree *, NXOpen::BlockStyler::Node *, int> StateIconNameCallback;
            typedef NXOpen::Callback3<NXString, NXOpen::BlockStyler::Tree *, NXOpen::BlockStyler::Node *, int> ToolTipTextCallback;
            typedef NXOpen::Callback4<int, NXOpen::BlockStyler::Tree *, int, NXOpen::BlockStyler::Node *, NXOpen::BlockStyler::Node *> ColumnSortCallback;
            typedef NXOpen::Callback3<NXOpen::BlockStyler::Node::DragType, NXOpen::BlockStyler::Tree *, NXOpen::BlockStyler::Node *, int> IsDragAllowedCallback;
            typedef NXOpen::Callback5<NXOpen::BlockStyler::Node::DropType, NXOpen::BlockStyler::Tree *, NXOpen::BlockStyler::Node *, int, NXOpen::BlockStyler::Node *, int> IsDropAllowedCallback;
            typedef NXOpen::Callback7<bool, NXOpen::BlockStyler::Tree *, std::vector<NXOpen::BlockStyler::Node *>, int, NXOpen::BlockStyler::Node *, int, NXOpen::BlockStyler::Node::DropType, int> OnDropCallback;
            typedef NXOpen::Callback5<void, NXOpen::BlockStyler::Tree *, NXOpen::BlockStyler::Node *, int, NXOpen::BlockStyler::Node *, int> OnDropMenuCallback;
            typedef NXOpen::Callback3<void, NXOpen::BlockStyler::Tree *, NXOpen::BlockStyler::Node *, int> OnDefaultActionCallback;

            // A new node with this column-0 text, not yet in the tree.
            NXOpen::BlockStyler::Node *CreateNode(const NXString &displayText);
            NXOpen::BlockStyler::Node *CreateNode(const char *displayText);
            // Puts a created node under parentNode (NULL: top level) right after afterNode, or,
            // when afterNode is NULL, where nodeInsertOption says. A node is inserted once.
            void InsertNode(NXOpen::BlockStyler::Node *newNode, NXOpen::BlockStyler::Node *parentNode, NXOpen::BlockStyler::Node *afterNode, NXOpen::BlockStyler::Tree::NodeInsertOption nodeInsertOption);
            // Removes a node and its children; they must not be used again.
            void DeleteNode(NXOpen::BlockStyler::Node *node);
            void SelectNode(NXOpen::BlockStyler::Node *node, bool isSelect, bool isOtherNodeAffected);
            void SelectNodes(const std::vector<NXOpen::BlockStyler::Node *> &node, bool isSelect, bool isOtherNodeAffected);
            int InsertColumn(int columnID, const NXString &columnTitle, int columnWidth);
            int InsertColumn(int columnID, const char *columnTitle, int columnWidth);
            NXString GetColumnTitle(int columnID);
            void SetColumnTitle(int columnID, const NXString &columnHeaderTitle);
            void SetColumnTitle(int columnID, const char *columnHeaderTitle);
            int GetColumnWidth(int columnID);
            void SetColumnWidth(int columnID, int columnWidth);
            bool GetColumnVisible(int columnID);
            void SetColumnVisible(int columnID, bool isVisible);
            NXOpen::BlockStyler::Tree::ColumnSortOption GetColumnSortOption(int columnID);
            void SetColumnSortOption(int columnID, NXOpen::BlockStyler::Tree::ColumnSortOption sortOption);
            bool GetColumnSortable(int columnID);
            void SetColumnSortable(int columnID, bool isSortable);
            NXOpen::BlockStyler::Tree::ColumnResizePolicy GetColumnResizePolicy(int columnID);
            void SetColumnResizePolicy(int columnID, NXOpen::BlockStyler::Tree::ColumnResizePolicy resizePolicy);
            NXOpen::BlockStyler::Tree::ColumnDisplay GetColumnDisplayType(int columnID);
            void SetColumnDisplayType(int columnID, NXOpen::BlockStyler::Tree::ColumnDisplay displayType);
            int NumberOfColumns();
            // The first top-level node; NULL when the tree is empty.
            NXOpen::BlockStyler::Node *RootNode();
            NXOpen::BlockStyler::Node *FirstSelectedNode();
            std::vector<NXOpen::BlockStyler::Node *> GetSelectedNodes();
            void Redraw(bool redraw);
            // The options of the edit control; call inside the ask-edit-control handler.
            void SetEditOptions(std::vector<NXString> &stringArray, int defaultIndex);
            NXOpen::BlockStyler::TreeListMenu *CreateMenu();
            void SetMenu(NXOpen::BlockStyler::TreeListMenu *menu);
            bool ShowToolTips();
            void SetShowToolTips(bool show);
            // Reads the "sort root nodes" property; it sorts nothing.
            bool SortRootNodes();
            void SetSortRootNodes(bool sort);
            bool ShowHeader();
            void SetShowHeader(bool show);

            void SetOnExpandHandler(const NXOpen::BlockStyler::Tree::OnExpandCallback &cb);
            void SetOnPreSelectHandler(const NXOpen::BlockStyler::Tree::OnPreSelectCallback &cb);
            void SetOnSelectHandler(const NXOpen::BlockStyler::Tree::OnSelectCallback &cb);
            void SetOnBeginLabelEditHandler(const NXOpen::BlockStyler::Tree::OnBeginLabelEditCallback &cb);
            void SetOnEndLabelEditHandler(const NXOpen::BlockStyler::Tree::OnEndLabelEditCallback &cb);
            void SetOnEditOptionSelectedHandler(const NXOpen::BlockStyler::Tree::OnEditOptionSelectedCallback &cb);
            void SetAskEditControlHandler(const NXOpen::BlockStyler::Tree::AskEditControlCallback &cb);
            void SetOnMenuHandler(const NXOpen::BlockStyler::Tree::OnMenuCallback &cb);
            void SetOnMenuSelectionHandler(const NXOpen::BlockStyler::Tree::OnMenuSelectionCallback &cb);
            void SetOnInsertColumnHandler(const NXOpen::BlockStyler::Tree::OnInsertColumnCallback &cb);
            void SetOnInsertNodeHandler(const NXOpen::BlockStyler::Tree::OnInsertNodeCallback &cb);
            void SetOnDeleteNodeHandler(const NXOpen::BlockStyler::Tree::OnDeleteNodeCallback &cb);
            void SetOnStateChangeHandler(const NXOpen::BlockStyler::Tree::OnStateChangeCallback &cb);
            void SetStateIconNameHandler(const NXOpen::BlockStyler::Tree::StateIconNameCallback &cb);
            void SetToolTipTextHandler(const NXOpen::BlockStyler::Tree::ToolTipTextCallback &cb);
            void SetColumnSortHandler(const NXOpen::BlockStyler::Tree::ColumnSortCallback &cb);
            void SetIsDragAllowedHandler(const NXOpen::BlockStyler::Tree::IsDragAllowedCallback &cb);
            void SetIsDropAllowedHandler(const NXOpen::BlockStyler::Tree::IsDropAllowedCallback &cb);
            void SetOnDropHandler(const NXOpen::BlockStyler::Tree::OnDropCallback &cb);
            void SetOnDropMenuHandler(const NXOpen::BlockStyler::Tree::OnDropMenuCallback &cb);
            void SetOnDefaultActionHandler(const NXOpen::BlockStyler::Tree::OnDefaultActionCallback &cb);

        protected:
            Tree();
            virtual ~Tree();
        };
    }
}

#endif
