// The host's driver: what tests and the runner use to act as NX and as the designer. Nothing here
// is visible to the plug-in, which sees only the NX headers of host/include.
//
// Text at this interface is narrow text in the system code page (GBK), as inside the plug-in,
// unless a parameter says UTF-8. File-system paths of the machine (part files, folders) are
// native paths (UTF-8 on POSIX).
#pragma once

#include <atomic>
#include <functional>
#include <map>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include <NXOpen/BlockStyler_Node.hxx>
#include <NXOpen/BlockStyler_Tree.hxx>
#include <NXOpen/NXMessageBox.hxx>
#include <NXOpen/Part.hxx>
#include <NXOpen/Body.hxx>
#include <NXOpen/Selection.hxx>

#include "platform/Desktop.h"

namespace host {

// ---------------------------------------------------------------------------------------------
// Session

// Starts a fresh session: no work part, an empty NX environment, no dialog, no recorded
// messages, selection answers or opened files, the model-update count at 0, the clock running,
// the user-function library not initialised. Tests call it in their fixture's SetUp.
void ResetSession();

// The NX environment (UF_translate_variable, Session::GetEnvironmentVariableValue): GBK values.
void SetEnvironmentVariable(const std::string& name, const std::string& value);
void UnsetEnvironmentVariable(const std::string& name);

// Number of UF_MODL_update() calls since the session started.
int ModelUpdateCount();

// The local clock the plug-in reads (platform::GetLocalTime). Pinned: the first read gives exactly
// this time, and each read moves it on by stepMilliseconds (0: it stands still), so that a test
// sees how often the plug-in reads it. Unpinned (the default): the machine's local time.
void PinClock(const platform::LocalTime& time, int stepMilliseconds = 0);
void UnpinClock();

// Files the plug-in asked to open with their associated program (ShellExecuteA), in order, as
// the plug-in named them. With reallyOpen, the host also opens them (xdg-open) - the runner's
// --open option; tests never do.
const std::vector<std::string>& OpenedFiles();
void SetReallyOpenFiles(bool reallyOpen);

// The file or folder on this machine (UTF-8) that a Windows path the plug-in names (GBK,
// "D:\out\A100.xls") stands for: a drive letter goes through the drive table VORNADEL_DRIVES
// ("D=/srv/d;E=/mnt/e"), as the platform layer maps paths for files; anything else is used as it
// stands. A copy of the platform layer's lookup, because the host does not link the platform
// layer (docs/host.md says so).
std::string LocalPath(const std::string& windowsPath);

// ---------------------------------------------------------------------------------------------
// Part files (*.part.json, see docs/part-file.md)

// A part file that cannot be loaded: what() names the file and the place, e.g.
// "A100.part.json: bodies[3].layer: 300 is outside 1..256". The message is UTF-8, like the file.
class PartFileError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

// Part file paths are UTF-8 (on Windows too).
// Loads a part file and makes it the work part (the previous work part is discarded).
// Throws PartFileError; the session is unchanged then.
NXOpen::Part* LoadWorkPart(const std::string& path);

// Writes the work part to a part file: what the plug-in may have changed (attributes, blank
// states, layer states, colours) and everything loaded. Load then save changes nothing.
// Throws PartFileError when the file cannot be written.
void SaveWorkPart(const std::string& path);

// The work part; NULL when none is loaded.
NXOpen::Part* WorkPart();

// The body with this tag in the work part; NULL when there is none.
NXOpen::Body* FindBody(unsigned int tag);

// The tags of the work part's highlighted bodies (DisplayableObject::Highlight), in part order.
std::vector<unsigned int> HighlightedBodies();

// Attribute writes the host refused because NX's limits do not hold the value (a title over
// UF_ATTR_MAX_TITLE_LEN or a string over UF_ATTR_MAX_STRING_LEN bytes): NX returns an error code,
// which a caller may ignore; the runner reads them here to say what was not stored.
struct RefusedAttribute {
    unsigned int tag = 0;  // the object the attribute was for
    std::string title;     // GBK, as given
    std::string value;     // GBK, as given
    int code = 0;          // the error code returned
};

// How often the plug-in called each NX entry point since ResetSession ("UF_ATTR_assign",
// "Tree::InsertNode", overloads together), the entry points it did not call left out. Calls the
// host makes inside an NX call are not counted; calls of the plug-in's handlers are.
std::map<std::string, long> NxCallCounts();
// Starts every count again from 0 (ResetSession does too): to count one operation.
void ResetNxCallCounts();

// While one lives, NX calls are not counted: the runner's and the tests' own reads of the tree
// and the part are no calls of the plug-in.
class UncountedNxCalls {
public:
    UncountedNxCalls();
    ~UncountedNxCalls();
    UncountedNxCalls(const UncountedNxCalls&) = delete;
    UncountedNxCalls& operator=(const UncountedNxCalls&) = delete;
};

// The user-function calls made before UF_initialize (or after UF_terminate) since ResetSession, by
// name: NX refuses them with UF_err_program_not_initialized, and so does the host.
const std::vector<std::string>& UninitializedCalls();

// Every refused attribute write since ResetSession, in order.
const std::vector<RefusedAttribute>& RefusedAttributes();

// How far long work has come, for a progress display on another thread: the bodies of the part
// file being loaded (of how many), and the tree rows inserted since ResetSession.
struct Activity {
    std::atomic<long> bodiesInFile{0};
    std::atomic<long> bodiesLoaded{0};
    std::atomic<long> treeRowsInserted{0};
};
Activity& CurrentActivity();

// ---------------------------------------------------------------------------------------------
// Message boxes

struct MessageRecord {
    std::string title;
    NXOpen::NXMessageBox::DialogType type;
    std::string text;  // several lines of the vector overload are joined with "\n"
};

// Every message box shown since ResetSession, in order.
const std::vector<MessageRecord>& Messages();

// Called for each message box as it is shown (the runner prints them). Empty: none.
void SetMessageListener(std::function<void(const MessageRecord&)> listener);

// ---------------------------------------------------------------------------------------------
// Selection dialogs (Selection::SelectObjects / SelectTaggedObjects)

struct SelectionRequest {
    std::string message;
    std::string title;
    NXOpen::Selection::SelectionScope scope;
    NXOpen::Selection::SelectionAction action;
    bool includeFeatures;
    bool keepHighlighted;
    std::vector<NXOpen::Selection::MaskTriple> masks;
    std::vector<unsigned int> highlighted;  // the work part's highlighted bodies while it was shown
    bool unanswered = false;                // no answer was queued, so the designer cancelled
};

// The answer the next selection dialog gives: a response and, for Ok, the objects by tag.
// Answers are used in the order queued. A selection dialog with no answer queued is cancelled.
void QueueSelectionAnswer(NXOpen::Selection::Response response, const std::vector<unsigned int>& tags = {});

// Every selection dialog shown since ResetSession, in order.
const std::vector<SelectionRequest>& SelectionRequests();

// ---------------------------------------------------------------------------------------------
// Dialogs

// Folders UI::CreateDialog searches after NX's own (the start folder, then
// $UGII_USER_DIR/application): the host's dialog search path.
void SetDialogSearchPath(const std::vector<std::string>& folders);

// The folder NX was "started from" (first place CreateDialog looks). Default: the current
// working directory.
void SetStartFolder(const std::string& folder);

class LiveDialog;

// What the designer does while a dialog is shown. BlockDialog::Show calls the initialize
// handler, then the dialog-shown handler, then this script with the live dialog; when the
// script returns the dialog closes (if the script did not close it already). Without a script
// the dialog closes at once after the dialog-shown handler.
void SetDialogScript(std::function<void(LiveDialog&)> script);

// One block of a dialog, as the designer sees it.
struct BlockView {
    std::string id;
    std::string blockClass;  // NX Open class name: "StringBlock", "Tree", "Button", ...
    std::string label;
    std::string parentId;    // "" for top-level blocks
    std::string value;       // string block: its text; folder block: its path; else ""
    std::vector<std::string> choices;  // string block: its list items
};

// One tree column.
struct ColumnView {
    int id;
    std::string title;
    int width;
    bool visible;
};

// The dialog on screen, during its script.
class LiveDialog {
public:
    virtual ~LiveDialog() = default;

    virtual std::string Title() = 0;
    // Every block in dialog order (pre-order of the dialog file).
    virtual std::vector<BlockView> Blocks() = 0;
    virtual NXOpen::BlockStyler::Tree* Tree() = 0;  // the dialog's tree block, NULL if none
    virtual std::vector<ColumnView> Columns() = 0;

    // The designer types text into a string block and leaves it: the value changes and the
    // update handler runs with that block.
    virtual void SetText(const std::string& blockId, const std::string& text) = 0;
    // The designer presses a button: the update handler runs with it.
    virtual void Press(const std::string& blockId) = 0;
    // The designer picks a folder in a folder block: the path changes, the update handler runs.
    virtual void PickFolder(const std::string& blockId, const std::string& path) = 0;
    // The designer selects bodies with a body collector: its "SelectedObjects" become these
    // bodies, the update handler runs.
    virtual void SelectBodies(const std::string& blockId, const std::vector<unsigned int>& tags) = 0;

    // A left click on a tree cell: the node becomes the only selected node (each node that
    // loses its selection gets the select handler with false first), then the pre-select and
    // select handlers run with true.
    virtual void Click(NXOpen::BlockStyler::Node* node, int column) = 0;
    // A Ctrl+click: toggles the node's selection, then the select handler runs with its new state.
    virtual void ToggleClick(NXOpen::BlockStyler::Node* node, int column) = 0;

    // The designer edits a cell and enters text: begin-label-edit handler (refused: nothing
    // more happens and false is returned), ask-edit-control handler; with no control, the
    // end-label-edit handler gets the text; with a combo box or list box, text equal to one of
    // the edit options is chosen (edit-option-selected handler), other text is typed into a combo
    // box (end-label-edit handler) and refused by a list box (false). Handlers receive the text
    // as UTF-8 bytes even through GetLocaleText(), as NX 8.5 does. An accepted text becomes the
    // cell's text; a rejected one restores the text the cell had before the edit.
    virtual bool Edit(NXOpen::BlockStyler::Node* node, int column, const std::string& text) = 0;
    // The edit options the last ask-edit-control handler set, with the preselected index.
    virtual std::vector<std::string> EditOptions(int* defaultIndex) = 0;
    // Only the ask-edit-control handler, as NX runs it when an edit starts (SetEditOptions is
    // taken inside it): its answer; the options it set are then EditOptions().
    virtual NXOpen::BlockStyler::Tree::ControlType AskEditControl(NXOpen::BlockStyler::Node* node, int column) = 0;

    // A right click on a cell (node NULL: empty tree space): the menu handler runs; the menu it
    // set is returned (empty when it set none).
    struct MenuItemView {
        int id;
        std::string text;
        bool disabled;
        bool hidden;
    };
    virtual std::vector<MenuItemView> RightClick(NXOpen::BlockStyler::Node* node, int column) = 0;
    // Chooses an item of the menu the last right click showed: the menu-selection handler runs
    // with that node and item. False (and nothing runs) when the item is absent, disabled or
    // hidden.
    virtual bool ChooseMenuItem(int itemId) = 0;

    // Closes the dialog with its standard buttons: no handler runs, Show returns.
    virtual void Close() = 0;
    virtual bool Closed() = 0;
};

// The handler registration calls made on a tree so far, in order, by name of the call
// ("SetOnExpandHandler", "SetOnPreSelectHandler", ...). NX keeps no such record; it lets tests
// see the order in which a plug-in registers its tree handlers.
std::vector<std::string> TreeHandlerRegistrations(NXOpen::BlockStyler::Tree* tree);

// How many deleted nodes of a tree are still kept readable (docs/host.md: the nodes the plug-in's
// handlers were handed, and what the current designer's action deleted). NX keeps no such count;
// it lets tests see that rebuilds keep no memory.
size_t KeptDeletedNodes(NXOpen::BlockStyler::Tree* tree);

// The dialog currently shown (inside Show), or NULL.
LiveDialog* CurrentDialog();

// ---------------------------------------------------------------------------------------------
// Dialog windows (what FindWindowA and friends see while a dialog is shown)

// The top-level windows, in creation order: class "#32770", text = dialog title; their children
// nest like the dialog's blocks, each with the block's label as text. A left button down then up
// on a button's window presses that button.
struct WindowView {
    void* handle;
    std::string className;
    std::string text;
    std::vector<WindowView> children;
};
std::vector<WindowView> Windows();

// SetWindowTextA: from now on the window's text is text (GBK), whatever its block's label or the
// dialog's title becomes; the block itself is unchanged. False when no window has the handle.
// It stands for what another program (or NX itself) may do to a window's text.
bool ChangeWindowText(void* handle, const std::string& text);

}  // namespace host
