// UI and BlockDialog: finding and reading a dialog file, building the dialog's blocks from it,
// and the modal Show with NX's order of callbacks: initialize, dialog shown, then the designer's
// actions (the driver's dialog script) until the dialog closes.
#include <algorithm>
#include <filesystem>

#include <NXOpen/BlockStyler_PropertyList.hxx>
#include <NXOpen/NXMessageBox.hxx>
#include <NXOpen/UI.hxx>

#include "HostSession.hpp"
#include "ui/Ui.hpp"

namespace host::ui {

void Fail(const std::string& message) { throw NXOpen::NXException::Create(message.c_str()); }

std::string Text(const char* s) { return s == nullptr ? std::string() : std::string(s); }

UiState& State() {
    static UiState* state = new UiState;
    return *state;
}

namespace {

class UiImpl : public NXOpen::UI {};

// A logical property: the file's value, else NX's default for the block's class.
bool IsTrue(const DlxBlock& b, const char* property) { return b.Setting(property) == "True"; }

// A block of class BlockClass with the id, class name and label of the file's item.
template <class BlockClass>
std::unique_ptr<BlockClass> New(DialogImpl& dialog, const DlxBlock& b) {
    return std::make_unique<BlockClass>(dialog, KindName(b.kind), b.id, host::Utf8ToGbk(b.label));
}

std::unique_ptr<BlockImpl> MakeBlock(DialogImpl& dialog, const DlxBlock& b) {
    std::unique_ptr<BlockImpl> block;
    switch (b.kind) {
    case BlockKind::Group: block = New<GroupImpl>(dialog, b); break;
    case BlockKind::ScrolledWindow: block = New<ScrolledWindowImpl>(dialog, b); break;
    case BlockKind::Button: block = New<ButtonImpl>(dialog, b); break;
    case BlockKind::BodyCollector: block = New<BodyCollectorImpl>(dialog, b); break;
    case BlockKind::StringBlock: {
        auto s = New<StringBlockImpl>(dialog, b);
        s->style = b.Setting("PresentationStyle");
        s->value = host::Utf8ToGbk(b.Value("WideValue", b.Setting("Value")));
        auto items = b.properties.find("ListItems");
        if (items != b.properties.end()) {
            for (const std::string& item : items->second.strings) s->items.push_back(host::Utf8ToGbk(item));
        }
        s->readOnly = IsTrue(b, "ReadOnlyString");
        block = std::move(s);
        break;
    }
    case BlockKind::Tree: {
        auto t = New<TreeImpl>(dialog, b);
        t->multipleSelection = b.Setting("SelectionMode") == "Multiple";
        t->showHeader = IsTrue(b, "ShowHeader");
        t->showToolTips = IsTrue(b, "ShowToolTips");
        t->sortRootNodes = IsTrue(b, "SortRootNodes");
        std::string height = b.Setting("InitialHeight");  // a whole number: the reader checked it
        t->height = height.empty() ? 0 : std::stoi(height);
        block = std::move(t);
        break;
    }
    case BlockKind::FolderSelection: {
        auto f = New<FolderSelectionImpl>(dialog, b);
        f->path = host::Utf8ToGbk(b.Setting("Path"));
        block = std::move(f);
        break;
    }
    }
    block->show = IsTrue(b, "Visibility");
    block->enable = IsTrue(b, "Sensitivity");
    block->expanded = IsTrue(b, "Expanded");
    block->group = IsTrue(b, "Group");
    return block;
}

// NX looks for a dialog file given by bare name in the folder it was started from, then in
// $UGII_USER_DIR/application; the host adds its own search path after those.
std::vector<std::filesystem::path> DialogFolders() {
    std::vector<std::filesystem::path> folders;
    const UiState& s = State();
    folders.push_back(s.startFolder.empty() ? std::filesystem::current_path() : std::filesystem::path(s.startFolder));
    if (std::optional<std::string> userDir = host::EnvironmentValue("UGII_USER_DIR")) {
        if (!userDir->empty()) folders.push_back(std::filesystem::path(host::GbkToUtf8(*userDir)) / "application");
    }
    for (const std::string& folder : s.searchPath) folders.push_back(folder);
    return folders;
}

std::filesystem::path FindDialogFile(const std::string& name) {
    std::string searched;
    if (!name.empty()) {
        for (const std::filesystem::path& folder : DialogFolders()) {
            std::filesystem::path candidate = folder / host::GbkToUtf8(name);
            std::error_code error;
            if (std::filesystem::is_regular_file(candidate, error)) return candidate;
            searched += (searched.empty() ? "" : ", ") + folder.string();
        }
    }
    Fail(host::Utf8ToGbk("UI::CreateDialog: dialog file \"" + host::GbkToUtf8(name) + "\" not found (searched " + searched + ")"));
}

}  // namespace

BlockImpl::BlockImpl(DialogImpl& owner, const std::string& cls, const std::string& blockId, const std::string& blockLabel)
    : dialog(owner), className(cls), id(blockId), label(blockLabel) {}

BlockImpl::~BlockImpl() = default;

void BlockImpl::SetLabel(const std::string& text) {
    label = text;
    LabelChanged(*this);
}

BlockImpl& Impl(NXOpen::BlockStyler::UIBlock* block) {
    BlockImpl* impl = dynamic_cast<BlockImpl*>(block);
    if (impl == nullptr) Fail("not a block of a dialog");
    return *impl;
}

const char* Unusable(const BlockImpl& block) {
    for (const BlockImpl* at = &block; at != nullptr; at = at->parent) {
        if (!at->show) return "hidden";
        if (!at->enable) return "disabled";
    }
    return nullptr;
}

DialogImpl::DialogImpl(const DlxDialog& file)
    : top(std::make_unique<CompositeBlockImpl>(*this, "CompositeBlock", "Dialog", host::Utf8ToGbk(file.title))) {
    for (const DlxBlock& b : file.blocks) {
        std::unique_ptr<BlockImpl> block = MakeBlock(*this, b);
        BlockImpl* parent = b.parentId.empty() ? top.get() : FindBlock(b.parentId);
        block->parent = parent;
        parent->members.push_back(block.get());
        blocks.push_back(std::move(block));
    }
}

DialogImpl::~DialogImpl() {
    CloseWindows(*this);
    std::vector<DialogImpl*>& shown = State().shown;
    shown.erase(std::remove(shown.begin(), shown.end(), this), shown.end());
}

BlockImpl* DialogImpl::FindBlock(const std::string& blockId) {
    for (const std::unique_ptr<BlockImpl>& block : blocks) {
        if (block->id == blockId) return block.get();
    }
    return nullptr;
}

void DialogImpl::Update(BlockImpl& block) {
    const PluginCode plugin;
    if (update) (*update)(block.Ui());
}

DialogImpl& Impl(NXOpen::BlockStyler::BlockDialog* dialog) {
    return *static_cast<DialogImpl*>(dialog->GetHandle());
}

}  // namespace host::ui

namespace host {

using ui::State;

void SetDialogSearchPath(const std::vector<std::string>& folders) { State().searchPath = folders; }

void SetStartFolder(const std::string& folder) { State().startFolder = folder; }

void SetDialogScript(std::function<void(LiveDialog&)> script) { State().script = std::move(script); }

LiveDialog* CurrentDialog() {
    const std::vector<ui::DialogImpl*>& shown = State().shown;
    return shown.empty() ? nullptr : shown.back()->live.get();
}

void ResetUserInterface() {
    ui::UiState& s = State();
    for (ui::DialogImpl* dialog : s.shown) {
        ui::CloseWindows(*dialog);
        dialog->closed = true;
    }
    s.shown.clear();
    s.messages.clear();
    s.answers.clear();
    s.requests.clear();
    s.script = nullptr;
}

}  // namespace host

namespace NXOpen {

using host::ui::Fail;
using host::ui::Impl;

UI::UI() {}
UI::~UI() {}

UI* UI::GetUI() {
    HOST_NX_CALL("UI::GetUI");
    static UI* ui = new host::ui::UiImpl;
    return ui;
}

BlockStyler::BlockDialog* UI::CreateDialog(const NXString& dialogName) { HOST_NX_CALL("UI::CreateDialog"); return CreateDialog(dialogName.GetLocaleText()); }

BlockStyler::BlockDialog* UI::CreateDialog(const char* dialogName) {
    HOST_NX_CALL("UI::CreateDialog");
    std::filesystem::path path = host::ui::FindDialogFile(host::ui::Text(dialogName));
    host::ui::DlxDialog file;
    try {
        file = host::ui::ReadDlxFile(path.string());
    } catch (const host::ui::DlxError& e) {
        Fail(host::Utf8ToGbk(std::string("UI::CreateDialog: ") + e.what()));
    }
    return new BlockStyler::BlockDialog(new host::ui::DialogImpl(file));
}

void UI::LockAccess() { HOST_NX_CALL("UI::LockAccess");}
void UI::UnlockAccess() { HOST_NX_CALL("UI::UnlockAccess");}

namespace BlockStyler {

BlockDialog::BlockDialog(void* ptr) : TransientObject(ptr) {}

BlockDialog::~BlockDialog() { delete &Impl(this); }

void BlockDialog::AddUpdateHandler(const Update& cb) { HOST_NX_CALL("BlockDialog::AddUpdateHandler"); Impl(this).update = host::ui::Keep(cb); }
void BlockDialog::AddInitializeHandler(const Initialize& cb) { HOST_NX_CALL("BlockDialog::AddInitializeHandler"); Impl(this).initialize = host::ui::Keep(cb); }
void BlockDialog::AddDialogShownHandler(const DialogShown& cb) { HOST_NX_CALL("BlockDialog::AddDialogShownHandler"); Impl(this).dialogShown = host::ui::Keep(cb); }
void BlockDialog::AddOkHandler(const Ok& okCb) { HOST_NX_CALL("BlockDialog::AddOkHandler"); Impl(this).ok = host::ui::Keep(okCb); }
void BlockDialog::AddApplyHandler(const Apply& applyCb) { HOST_NX_CALL("BlockDialog::AddApplyHandler"); Impl(this).apply = host::ui::Keep(applyCb); }
void BlockDialog::AddCancelHandler(const Cancel& cancelCb) { HOST_NX_CALL("BlockDialog::AddCancelHandler"); Impl(this).cancel = host::ui::Keep(cancelCb); }
void BlockDialog::AddCloseHandler(const Close& closeCb) { HOST_NX_CALL("BlockDialog::AddCloseHandler"); Impl(this).close = host::ui::Keep(closeCb); }
void BlockDialog::AddFilterHandler(const Filter& cb) { HOST_NX_CALL("BlockDialog::AddFilterHandler"); Impl(this).filter = host::ui::Keep(cb); }

Selection::Response BlockDialog::Show() { HOST_NX_CALL("BlockDialog::Show"); return Show(DialogModeCreate); }

// The dialog stays modal until the script closes it; a handler's exception ends the dialog and is
// thrown on from here, as NX passes exceptions escaping a callback on to the caller of Show.
Selection::Response BlockDialog::Show(DialogMode) {
    HOST_NX_CALL("BlockDialog::Show");
    host::ui::DialogImpl& d = Impl(this);
    if (d.showing) Fail("BlockDialog::Show: the dialog is already shown");
    host::ui::UiState& s = host::ui::State();
    d.showing = true;
    d.closed = false;
    d.endedBy = nullptr;
    d.live = host::ui::MakeLiveDialog(d);
    s.shown.push_back(&d);
    auto end = [&d, &s] {
        host::ui::CloseWindows(d);
        s.shown.erase(std::remove(s.shown.begin(), s.shown.end(), &d), s.shown.end());
        d.showing = false;
        d.closed = true;
    };
    try {
        const host::PluginCode plugin;  // the handlers and the designer's actions are the plug-in's
        if (d.initialize) (*d.initialize)();
        host::ui::OpenWindows(d);
        if (d.dialogShown) (*d.dialogShown)();
        std::function<void(host::LiveDialog&)> script = s.script;
        if (script && !d.closed) script(*d.live);
    } catch (...) {
        end();
        throw;
    }
    end();
    if (d.endedBy) std::rethrow_exception(d.endedBy);
    return Selection::ResponseCancel;
}

CompositeBlock* BlockDialog::TopBlock() { HOST_NX_CALL("BlockDialog::TopBlock"); return Impl(this).top.get(); }

void BlockDialog::PerformApply() {
    HOST_NX_CALL("BlockDialog::PerformApply");
    host::ui::DialogImpl& d = Impl(this);
    const host::PluginCode plugin;
    if (d.apply) (*d.apply)();
}

PropertyList* BlockDialog::GetBlockProperties(const NXString& blockName) { HOST_NX_CALL("BlockDialog::GetBlockProperties"); return GetBlockProperties(blockName.GetLocaleText()); }

PropertyList* BlockDialog::GetBlockProperties(const char* blockName) { HOST_NX_CALL("BlockDialog::GetBlockProperties"); return TopBlock()->FindBlock(blockName)->GetProperties(); }

}  // namespace BlockStyler
}  // namespace NXOpen
