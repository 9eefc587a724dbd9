// The user-interface half's internals: what its source files share. Every NX object the plug-in
// receives (blocks, nodes, dialogs, menus) is one of the implementation objects declared here;
// the NX classes have no data of their own, so each NX member function finds its object through
// Impl(...).
#pragma once

#include <exception>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <NXOpen/BlockStyler_BlockDialog.hxx>
#include <NXOpen/BlockStyler_BodyCollector.hxx>
#include <NXOpen/BlockStyler_Button.hxx>
#include <NXOpen/BlockStyler_CompositeBlock.hxx>
#include <NXOpen/BlockStyler_FolderSelection.hxx>
#include <NXOpen/BlockStyler_Group.hxx>
#include <NXOpen/BlockStyler_Node.hxx>
#include <NXOpen/BlockStyler_ScrolledWindow.hxx>
#include <NXOpen/BlockStyler_StringBlock.hxx>
#include <NXOpen/BlockStyler_Tree.hxx>
#include <NXOpen/BlockStyler_TreeListMenu.hxx>
#include <NXOpen/NXException.hxx>

#include "Driver.hpp"
#include "ui/Dlx.hpp"

namespace host::ui {

class DialogImpl;
class TreeImpl;

// Throws the NXException NX Open throws for a failed call; message is English ASCII.
[[noreturn]] void Fail(const std::string& message);

// The text of a C string argument of NX Open; NULL is empty text.
std::string Text(const char* s);

// A registration keeps its own copy of the callback object, as NX does.
template <class Callback>
std::unique_ptr<Callback> Keep(const Callback& cb) {
    return std::unique_ptr<Callback>(dynamic_cast<Callback*>(cb.Clone()));
}

// ---------------------------------------------------------------------------------------------
// Blocks

// What every block has, whatever its NX class.
class BlockImpl {
public:
    BlockImpl(DialogImpl& dialog, const std::string& className, const std::string& id, const std::string& label);
    virtual ~BlockImpl();
    virtual NXOpen::BlockStyler::UIBlock* Ui() = 0;
    // A new label; a window of the block shows it at once.
    void SetLabel(const std::string& text);

    DialogImpl& dialog;
    std::string className;  // NX Open class: "StringBlock", "Tree", ...
    std::string id;
    std::string label;      // GBK
    bool show = true;
    bool enable = true;
    bool expanded = true;
    bool group = false;
    BlockImpl* parent = nullptr;
    std::vector<BlockImpl*> members;
};

// The implementation behind a block of the plug-in's dialog; Fail()s for a foreign object.
BlockImpl& Impl(NXOpen::BlockStyler::UIBlock* block);

// Why the designer cannot use a block ("hidden", "disabled": the block or a group around it), or
// NULL when it can be used.
const char* Unusable(const BlockImpl& block);

template <class NxClass>
class BlockOf : public NxClass, public BlockImpl {
public:
    using BlockImpl::BlockImpl;
    NXOpen::BlockStyler::UIBlock* Ui() override { return this; }
};

class CompositeBlockImpl : public BlockOf<NXOpen::BlockStyler::CompositeBlock> {
public:
    using BlockOf::BlockOf;
};
class GroupImpl : public BlockOf<NXOpen::BlockStyler::Group> {
public:
    using BlockOf::BlockOf;
};
class ScrolledWindowImpl : public BlockOf<NXOpen::BlockStyler::ScrolledWindow> {
public:
    using BlockOf::BlockOf;
};
class ButtonImpl : public BlockOf<NXOpen::BlockStyler::Button> {
public:
    using BlockOf::BlockOf;
};

class StringBlockImpl : public BlockOf<NXOpen::BlockStyler::StringBlock> {
public:
    using BlockOf::BlockOf;
    std::string value;               // GBK; Value() and WideValue() are the same text
    std::vector<std::string> items;  // GBK
    std::string style = "KeyIn";     // PresentationStyle option name
    bool readOnly = false;
    int maxLength = 0;
};

class BodyCollectorImpl : public BlockOf<NXOpen::BlockStyler::BodyCollector> {
public:
    using BlockOf::BlockOf;
    std::vector<NXOpen::TaggedObject*> selected;
};

class FolderSelectionImpl : public BlockOf<NXOpen::BlockStyler::FolderSelection> {
public:
    using BlockOf::BlockOf;
    std::string path;  // GBK
};

// ---------------------------------------------------------------------------------------------
// Tree

struct MenuModel {
    struct Item {
        int id = 0;
        std::string text;  // GBK
        std::string icon;
        bool separator = false;
        bool disabled = false;
        bool hidden = false;
        bool checked = false;
        std::shared_ptr<MenuModel> subMenu;
    };
    std::vector<Item> items;

    Item& Find(int itemId);  // Fail()s for an unknown id
};

struct DataEntry {
    enum Kind { Object, String, Integer } kind;
    std::string name;  // GBK
    NXOpen::TaggedObject* object = nullptr;
    std::string text;
    int integer = 0;
};

// What is known of the order of one level of a tree (the root nodes, or a node's children): when
// `known`, whether the display texts of its unpinned nodes never decrease, so that an insert with
// Sort can search for its place instead of comparing every sibling.
struct LevelOrder {
    bool known = false;
    bool sorted = false;
};

class NodeImpl : public NXOpen::BlockStyler::Node {
public:
    enum Pin { Unpinned, PinnedFirst, PinnedLast };  // AlwaysFirst / AlwaysLast inserts

    explicit NodeImpl(TreeImpl& owner) : tree(owner) {}

    // Fail()s when the node was deleted: NX invalidates a deleted node's tag.
    NodeImpl& Live();
    // Write access: Live(). Read access to the data and the links of a deleted node is kept (see
    // Poison in Tree.cpp).
    NodeImpl& Access(bool write) { return write ? Live() : *this; }
    std::vector<NodeImpl*>& Siblings();
    LevelOrder& SiblingOrder();
    // The text of a cell; "" for a cell never set.
    const std::string& Cell(int columnId) const;

    TreeImpl& tree;
    NodeImpl* parent = nullptr;
    std::vector<NodeImpl*> children;
    LevelOrder childOrder;
    // Where the node was last found among its siblings: renumbered for a whole level when found
    // stale, so that a step along a level takes constant time.
    size_t place = 0;
    // Cell texts (GBK) by column id: ids below kDirectColumns at their index, any other id in
    // otherCells.
    static constexpr int kDirectColumns = 32;
    std::vector<std::string> cells;
    std::vector<std::pair<int, std::string>> otherCells;
    int foreground = 0;
    bool expanded = false;
    bool selected = false;
    bool inserted = false;
    bool deleted = false;
    // Handed to the plug-in's tree handlers by a designer's action: the plug-in may keep it, so
    // once deleted it stays readable (TreeImpl::ReleaseDeleted).
    bool handed = false;
    bool kept = false;  // deleted, and kept readable for good
    Pin pin = Unpinned;
    std::vector<DataEntry> data;
    int state = 0;
    bool crossSelection = false;
};

NodeImpl& Impl(NXOpen::BlockStyler::Node* node);  // Fail()s for NULL or a deleted node
NodeImpl& Kept(NXOpen::BlockStyler::Node* node);  // Fail()s for NULL; a deleted node is read as it was

class TreeImpl : public BlockOf<NXOpen::BlockStyler::Tree> {
public:
    using BlockOf::BlockOf;

    struct Column {
        int id;
        std::string title;  // GBK
        int width;
        bool visible = true;
        NXOpen::BlockStyler::Tree::ColumnSortOption sort = NXOpen::BlockStyler::Tree::ColumnSortOptionAscending;
        bool sortable = true;
        NXOpen::BlockStyler::Tree::ColumnResizePolicy resize = NXOpen::BlockStyler::Tree::ColumnResizePolicyConstantWidth;
        NXOpen::BlockStyler::Tree::ColumnDisplay display = NXOpen::BlockStyler::Tree::ColumnDisplayText;
    };

    Column& FindColumn(int columnId);  // Fail()s for an unknown id
    bool HasColumn(int columnId) const;
    // A node of this tree that is alive and inserted; Fail()s otherwise.
    NodeImpl& Inserted(NXOpen::BlockStyler::Node* node);
    // Every inserted node in pre-order.
    std::vector<NodeImpl*> AllNodes();
    void Deselect(NodeImpl* except);
    // Once a designer's action is over, releases the deleted nodes the plug-in was never handed:
    // a deleted node stays readable (with its descendants, as they were) only when a handler got
    // it, as the remembered group node (docs/host.md). Called by the driver.
    void ReleaseDeleted();

    std::vector<Column> columns;
    std::vector<NodeImpl*> roots;
    LevelOrder rootOrder;
    std::vector<std::unique_ptr<NodeImpl>> nodes;  // every node made, and the deleted ones not released
    bool multipleSelection = true;
    bool showToolTips = false;
    bool sortRootNodes = true;  // NX 8.5's default; the dialog file says
    bool showHeader = true;
    int height = 0;             // the file's InitialHeight (NX Open: Height); 0 lets NX choose
    std::vector<std::string> editOptions;  // GBK, as the last SetEditOptions gave them
    int editDefault = 0;
    MenuModel shownMenu;  // what the last SetMenu showed
    bool menuSet = false;
    // NX takes SetMenu only inside the menu handler and SetEditOptions only inside the
    // ask-edit-control handler; the driver marks while each runs.
    bool inMenuHandler = false;
    bool inAskEditControl = false;

    // The names of the handler registration calls made, in order ("SetOnExpandHandler", ...).
    std::vector<std::string> registrations;
    std::unique_ptr<OnExpandCallback> onExpand;
    std::unique_ptr<OnPreSelectCallback> onPreSelect;
    std::unique_ptr<OnSelectCallback> onSelect;
    std::unique_ptr<OnBeginLabelEditCallback> onBeginLabelEdit;
    std::unique_ptr<OnEndLabelEditCallback> onEndLabelEdit;
    std::unique_ptr<OnEditOptionSelectedCallback> onEditOptionSelected;
    std::unique_ptr<AskEditControlCallback> askEditControl;
    std::unique_ptr<OnMenuCallback> onMenu;
    std::unique_ptr<OnMenuSelectionCallback> onMenuSelection;
    std::unique_ptr<OnInsertColumnCallback> onInsertColumn;
    std::unique_ptr<OnInsertNodeCallback> onInsertNode;
    std::unique_ptr<OnDeleteNodeCallback> onDeleteNode;
    std::unique_ptr<OnStateChangeCallback> onStateChange;
    std::unique_ptr<StateIconNameCallback> stateIconName;
    std::unique_ptr<ToolTipTextCallback> toolTipText;
    std::unique_ptr<ColumnSortCallback> columnSort;
    std::unique_ptr<IsDragAllowedCallback> isDragAllowed;
    std::unique_ptr<IsDropAllowedCallback> isDropAllowed;
    std::unique_ptr<OnDropCallback> onDrop;
    std::unique_ptr<OnDropMenuCallback> onDropMenu;
    std::unique_ptr<OnDefaultActionCallback> onDefaultAction;
};

// ---------------------------------------------------------------------------------------------
// Dialog windows

struct Window {
    void* handle;  // never reused within a process, so a stale handle finds nothing
    std::string className;
    DialogImpl& dialog;
    BlockImpl* block;  // NULL for the dialog's own window
    std::vector<std::unique_ptr<Window>> children;
    bool buttonDown = false;
    std::optional<std::string> ownText;  // set by host::ChangeWindowText; else the label is the text

    std::string Text() const;
};

// Creates the windows of a dialog that is being shown / removes them when it closes.
void OpenWindows(DialogImpl& dialog);
void CloseWindows(DialogImpl& dialog);
// The label of a block (or the dialog's title) has changed: its window shows it unless its text
// was changed on the window itself.
void LabelChanged(BlockImpl& block);
// A mouse message reaching a window: a left button down then up presses a usable button.
void ReceiveMouse(Window& window, unsigned int message);
Window* FindWindowByHandle(void* handle);
// The top-level windows of the shown dialogs, in creation order.
const std::vector<Window*>& TopLevelWindows();

// What each system does for the windows (WindowsSimulated.cpp on POSIX, WindowsWin32.cpp on
// Windows): make the system's window for w, a child of parent (NULL: a top-level window), and
// return its handle; destroy a top-level window with its descendants; show w's text anew.
void* CreateSystemWindow(Window& w, void* parent);
void DestroySystemWindow(Window& topLevel);
void ShowWindowText(Window& w);

// ---------------------------------------------------------------------------------------------
// Dialogs

class DialogImpl {
public:
    DialogImpl(const DlxDialog& file);
    ~DialogImpl();

    BlockImpl* FindBlock(const std::string& id);
    // The update handler with this block, as NX calls it when a block changes.
    void Update(BlockImpl& block);

    std::unique_ptr<CompositeBlockImpl> top;  // its label is the dialog title
    std::vector<std::unique_ptr<BlockImpl>> blocks;  // pre-order of the dialog file

    std::unique_ptr<NXOpen::BlockStyler::BlockDialog::Update> update;
    std::unique_ptr<NXOpen::BlockStyler::BlockDialog::Initialize> initialize;
    std::unique_ptr<NXOpen::BlockStyler::BlockDialog::DialogShown> dialogShown;
    std::unique_ptr<NXOpen::BlockStyler::BlockDialog::Ok> ok;
    std::unique_ptr<NXOpen::BlockStyler::BlockDialog::Apply> apply;
    std::unique_ptr<NXOpen::BlockStyler::BlockDialog::Cancel> cancel;
    std::unique_ptr<NXOpen::BlockStyler::BlockDialog::Close> close;
    std::unique_ptr<NXOpen::BlockStyler::BlockDialog::Filter> filter;

    bool showing = false;  // inside Show
    bool closed = false;   // closed by the designer or ended by a handler's exception
    std::exception_ptr endedBy;
    std::unique_ptr<LiveDialog> live;
    std::unique_ptr<Window> window;
};

DialogImpl& Impl(NXOpen::BlockStyler::BlockDialog* dialog);

// Makes the driver's view of a shown dialog.
std::unique_ptr<LiveDialog> MakeLiveDialog(DialogImpl& dialog);

// ---------------------------------------------------------------------------------------------
// The state ResetUserInterface clears

struct Answer {
    NXOpen::Selection::Response response;
    std::vector<unsigned int> tags;
};

struct UiState {
    std::vector<MessageRecord> messages;
    std::function<void(const MessageRecord&)> messageListener;
    std::vector<Answer> answers;  // front = next
    std::vector<SelectionRequest> requests;
    std::vector<std::string> searchPath;
    std::string startFolder;  // "" = the current directory
    std::function<void(LiveDialog&)> script;
    std::vector<DialogImpl*> shown;  // innermost last
};

UiState& State();

// The work part's bodies with these tags, in order; std::invalid_argument names a tag that is not one.
std::vector<NXOpen::TaggedObject*> BodiesWithTags(const std::vector<unsigned int>& tags);
// The bodies, faces and edges of the work part with these tags, in order; throws
// std::invalid_argument naming a tag that is none of them.
std::vector<NXOpen::TaggedObject*> PickedObjects(const std::vector<unsigned int>& tags);

}  // namespace host::ui
