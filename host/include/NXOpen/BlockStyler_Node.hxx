#ifndef NXOpen_BLOCKSTYLER_NODE_HXX_INCLUDED
#define NXOpen_BLOCKSTYLER_NODE_HXX_INCLUDED

#include <NXOpen/DataContainer.hxx>
#include <NXOpen/TaggedObject.hxx>
#include <NXOpen/NXString.hxx>
#include <NXOpen/libnxopenuicpp_exports.hxx>

namespace NXOpen
{
    namespace BlockStyler
    {
        // A row of a tree. Made by Tree::CreateNode, owned by the tree, removed by Tree::DeleteNode.
        class NXOPENUICPPEXPORT Node : public NXOpen::TaggedObject
        {
        public:
            enum ExpandOption
            {
                ExpandOptionCollapse,
                ExpandOptionExpand,
                ExpandOptionToggle
            };

            enum Scroll
            {
                ScrollCenter,
                ScrollLeastScroll,
                ScrollMostScroll
            };

            enum DragType
            {
                DragTypeNone,
                DragTypeAll
            };

            enum DropType
            {
                DropTypeNone,
                DropTypeOn,
                DropTypeBefore,
                DropTypeAfter,
                DropTypeBeforeAndAfter
            };

            // Column-0 text.
            NXString DisplayText();
            void SetDisplayText(const NXString &displayTest);
            void SetDisplayText(const char *displayTest);
            NXString GetColumnDisplayText(int columnID);
            void SetColumnDisplayText(int columnID, const NXString &columnDisplayText);
            void SetColumnDisplayText(int columnID, const char *columnDisplayText);
            int ForegroundColor();
            void SetForegroundColor(int nodeForgroundColor);
            NXOpen::BlockStyler::Node *ParentNode();
            NXOpen::BlockStyler::Node *FirstChildNode();
            NXOpen::BlockStyler::Node *NextSiblingNode();
            NXOpen::BlockStyler::Node *PreviousSiblingNode();
            // The next node in pre-order over the whole tree; NULL at the end.
            NXOpen::BlockStyler::Node *NextNode();
            NXOpen::BlockStyler::Node *PreviousNode();
            void Expand(NXOpen::BlockStyler::Node::ExpandOption expandOption);
            bool IsExpanded();
            bool IsSelected();
            bool IsInserted();
            // The node's named data; the caller deletes the returned wrapper, the data stays.
            NXOpen::DataContainer *GetNodeData();
            void ScrollTo(int columnID, NXOpen::BlockStyler::Node::Scroll visibleOption);
            int GetState();
            void SetState(int state);
            bool CrossSelection();
            void SetCrossSelection(bool crossSelection);

        protected:
            Node();
            virtual ~Node();
        };
    }
}

#endif
