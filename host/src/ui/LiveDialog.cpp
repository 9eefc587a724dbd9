// The designer at a shown dialog: each action changes what the designer changes and runs the
// handlers NX runs for it, in NX's order. Arguments that name nothing the designer could reach
// are the script's mistake (std::invalid_argument) and leave the dialog as it was; an exception
// that escapes a handler ends the dialog and goes on to the caller.
#include <algorithm>
#include <stdexcept>

#include <NXOpen/BlockStyler_Tree.hxx>

#include "HostSession.hpp"
#include "ui/Ui.hpp"

namespace host::ui {
namespace {

// Sets a flag for as long as it lives, also when a handler throws.
class Marked {
public:
    explicit Marked(bool& flag) : flag_(flag) { flag_ = true; }
    ~Marked() { flag_ = false; }
    Marked(const Marked&) = delete;
    Marked& operator=(const Marked&) = delete;

private:
    bool& flag_;
};

using NxTree = NXOpen::BlockStyler::Tree;

class LiveDialogImpl : public LiveDialog {
public:
    explicit LiveDialogImpl(DialogImpl& dialog) : d_(dialog) {}

    std::string Title() override { return d_.top->label; }

    std::vector<BlockView> Blocks() override {
        std::vector<BlockView> views;
        for (const std::unique_ptr<BlockImpl>& b : d_.blocks) {
            BlockView v{b->id, b->className, b->label, b->parent == d_.top.get() ? "" : b->parent->id, "", {}};
            if (auto* s = dynamic_cast<StringBlockImpl*>(b.get())) {
                v.value = s->value;
                v.choices = s->items;
            } else if (auto* f = dynamic_cast<FolderSelectionImpl*>(b.get())) {
                v.value = f->path;
            }
            views.push_back(std::move(v));
        }
        return views;
    }

    NxTree* Tree() override { return FirstTree(); }

    std::vector<ColumnView> Columns() override {
        std::vector<ColumnView> views;
        if (TreeImpl* t = FirstTree()) {
            for (const TreeImpl::Column& c : t->columns) views.push_back(ColumnView{c.id, c.title, c.width, c.visible});
        }
        return views;
    }

    void SetText(const std::string& blockId, const std::string& text) override {
        auto& s = Reachable<StringBlockImpl>(blockId, "StringBlock");
        if (s.style == "List" && std::find(s.items.begin(), s.items.end(), text) == s.items.end()) {
            throw std::invalid_argument(blockId + " shows a list: the text must be one of its items");
        }
        Act([&] {
            s.value = text;
            d_.Update(s);
        });
    }

    void Press(const std::string& blockId) override {
        auto& b = Reachable<ButtonImpl>(blockId, "Button");
        Act([&] { d_.Update(b); });
    }

    void PickFolder(const std::string& blockId, const std::string& path) override {
        auto& f = Reachable<FolderSelectionImpl>(blockId, "FolderSelection");
        Act([&] {
            f.path = path;
            d_.Update(f);
        });
    }

    void SelectBodies(const std::string& blockId, const std::vector<unsigned int>& tags) override {
        auto& c = Reachable<BodyCollectorImpl>(blockId, "BodyCollector");
        std::vector<NXOpen::TaggedObject*> bodies = BodiesWithTags(tags);
        Act([&] {
            c.selected = bodies;
            d_.Update(c);
        });
    }

    void Click(NXOpen::BlockStyler::Node* node, int column) override {
        NodeImpl& n = Reachable(node, column);
        TreeImpl& t = n.tree;
        Act([&] {
            for (NodeImpl* other : t.AllNodes()) {
                if (other == &n || !other->selected) continue;
                other->selected = false;
                other->handed = true;
                if (t.onSelect) (*t.onSelect)(&t, other, column, false);
            }
            if (n.deleted) return;
            if (t.onPreSelect) (*t.onPreSelect)(&t, &n, column, true);
            if (n.deleted) return;
            n.selected = true;
            if (t.onSelect) (*t.onSelect)(&t, &n, column, true);
        });
    }

    void ToggleClick(NXOpen::BlockStyler::Node* node, int column) override {
        NodeImpl& n = Reachable(node, column);
        TreeImpl& t = n.tree;
        if (!n.selected && !t.multipleSelection) return Click(node, column);
        Act([&] {
            n.selected = !n.selected;
            if (t.onSelect) (*t.onSelect)(&t, &n, column, n.selected);
        });
    }

    bool Edit(NXOpen::BlockStyler::Node* node, int column, const std::string& text) override {
        NodeImpl& n = Reachable(node, column);
        TreeImpl& t = n.tree;
        if (!t.FindColumn(column).visible) throw std::invalid_argument("column " + std::to_string(column) + " is hidden");
        bool accepted = false;
        Act([&] {
            // Without a begin-label-edit handler that allows it, NX opens no editor.
            if (!t.onBeginLabelEdit || (*t.onBeginLabelEdit)(&t, &n, column) != NxTree::BeginLabelEditStateAllow) return;
            t.editOptions.clear();
            t.editDefault = 0;
            NxTree::ControlType control = NxTree::ControlTypeNone;
            if (t.askEditControl) {
                Marked inHandler(t.inAskEditControl);
                control = (*t.askEditControl)(&t, &n, column);
            }
            if (n.deleted) return;
            std::string before = n.Cell(column);
            // NX 8.5 hands the edited or chosen text over as a Locale string holding UTF-8 bytes.
            NXOpen::NXString handed(host::GbkToUtf8(text), NXOpen::NXString::Locale);
            auto option = std::find(t.editOptions.begin(), t.editOptions.end(), text);
            if (control != NxTree::ControlTypeNone && option != t.editOptions.end()) {
                int index = static_cast<int>(option - t.editOptions.begin());
                accepted = !t.onEditOptionSelected ||
                           (*t.onEditOptionSelected)(&t, &n, column, index, handed, control) == NxTree::EditControlOptionAccept;
            } else if (control == NxTree::ControlTypeListBox) {
                return;  // a list box takes only its options
            } else {
                accepted = !t.onEndLabelEdit || (*t.onEndLabelEdit)(&t, &n, column, handed) == NxTree::EndLabelEditStateAcceptText;
            }
            if (!n.deleted) node->SetColumnDisplayText(column, accepted ? text.c_str() : before.c_str());
        });
        return accepted;
    }

    NxTree::ControlType AskEditControl(NXOpen::BlockStyler::Node* node, int column) override {
        NodeImpl& n = Reachable(node, column);
        TreeImpl& t = n.tree;
        NxTree::ControlType control = NxTree::ControlTypeNone;
        Act([&] {
            t.editOptions.clear();
            t.editDefault = 0;
            if (!t.askEditControl) return;
            Marked inHandler(t.inAskEditControl);
            control = (*t.askEditControl)(&t, &n, column);
        });
        return control;
    }

    std::vector<std::string> EditOptions(int* defaultIndex) override {
        TreeImpl* t = FirstTree();
        if (defaultIndex) *defaultIndex = t ? t->editDefault : 0;
        return t ? t->editOptions : std::vector<std::string>();
    }

    std::vector<MenuItemView> RightClick(NXOpen::BlockStyler::Node* node, int column) override {
        TreeImpl* t = node ? &Reachable(node, column).tree : FirstTree();
        if (t == nullptr) throw std::invalid_argument("the dialog has no tree");
        std::vector<MenuItemView> items;
        Act([&] {
            t->shownMenu = MenuModel();
            t->menuSet = false;
            if (t->onMenu) {
                Marked inHandler(t->inMenuHandler);
                (*t->onMenu)(t, static_cast<NodeImpl*>(node), column);
            }
            if (!t->menuSet) return;
            menu_ = t->shownMenu;
            menuTree_ = t;
            menuNode_ = static_cast<NodeImpl*>(node);
            menuOpen_ = true;
            Flatten(menu_, items);
        });
        return items;
    }

    // The menu closes once an item is chosen, or with the designer's next action.
    bool ChooseMenuItem(int itemId) override {
        if (!menuOpen_) return false;
        menuOpen_ = false;
        const MenuModel::Item* item = FindItem(menu_, itemId);
        if (item == nullptr || item->disabled || item->hidden) return false;
        if (menuNode_ != nullptr && menuNode_->deleted) return false;
        Act([&] {
            if (menuTree_->onMenuSelection) (*menuTree_->onMenuSelection)(menuTree_, menuNode_, itemId);
        });
        return true;
    }

    void Close() override {
        menuOpen_ = false;
        if (d_.closed) return;
        d_.closed = true;
        CloseWindows(d_);
    }

    bool Closed() override { return d_.closed; }

private:
    // Runs what the designer's action triggers. Only the outermost action ends the dialog when an
    // exception escapes: an action run from inside a handler belongs to that handler.
    void Act(const std::function<void()>& action) {
        if (d_.closed) throw std::logic_error("the dialog is closed");
        if (depth_ == 0) menuOpen_ = false;
        ++depth_;
        try {
            const PluginCode plugin;  // the handlers the action runs are the plug-in's code
            action();
        } catch (...) {
            if (--depth_ == 0) {
                ReleaseDeletedNodes();
                if (!d_.endedBy) {
                    d_.endedBy = std::current_exception();
                    Close();
                }
            }
            throw;
        }
        if (--depth_ == 0) ReleaseDeletedNodes();
    }

    void ReleaseDeletedNodes() {
        for (const std::unique_ptr<BlockImpl>& b : d_.blocks) {
            if (auto* t = dynamic_cast<TreeImpl*>(b.get())) t->ReleaseDeleted();
        }
    }

    TreeImpl* FirstTree() {
        for (const std::unique_ptr<BlockImpl>& b : d_.blocks) {
            if (auto* t = dynamic_cast<TreeImpl*>(b.get())) return t;
        }
        return nullptr;
    }

    // A block of the given class that the designer can use: shown and enabled, and so are the
    // groups around it.
    template <class ImplClass>
    ImplClass& Reachable(const std::string& blockId, const char* className) {
        BlockImpl* b = d_.FindBlock(blockId);
        if (b == nullptr) throw std::invalid_argument("the dialog has no block " + blockId);
        auto* typed = dynamic_cast<ImplClass*>(b);
        if (typed == nullptr) throw std::invalid_argument(blockId + " is a " + b->className + ", not a " + className);
        if (const char* why = Unusable(*b)) throw std::invalid_argument(blockId + " is " + why);
        return *typed;
    }

    NodeImpl& Reachable(NXOpen::BlockStyler::Node* node, int column) {
        auto* n = static_cast<NodeImpl*>(node);
        if (n == nullptr || n->deleted || !n->inserted) throw std::invalid_argument("the node is not in a tree");
        if (&n->tree.dialog != &d_) throw std::invalid_argument("the node belongs to another dialog");
        Reachable<TreeImpl>(n->tree.id, "Tree");
        if (!n->tree.HasColumn(column)) throw std::invalid_argument("the tree has no column " + std::to_string(column));
        n->handed = true;  // the handlers get it: the plug-in may keep it
        return *n;
    }

    static void Flatten(const MenuModel& menu, std::vector<MenuItemView>& out) {
        for (const MenuModel::Item& item : menu.items) {
            if (item.separator) continue;
            out.push_back(MenuItemView{item.id, item.text, item.disabled, item.hidden});
            if (item.subMenu) Flatten(*item.subMenu, out);
        }
    }

    static const MenuModel::Item* FindItem(const MenuModel& menu, int itemId) {
        for (const MenuModel::Item& item : menu.items) {
            if (item.separator) continue;
            if (item.id == itemId) return &item;
            if (item.subMenu) {
                if (const MenuModel::Item* found = FindItem(*item.subMenu, itemId)) return found;
            }
        }
        return nullptr;
    }

    DialogImpl& d_;
    int depth_ = 0;
    bool menuOpen_ = false;
    MenuModel menu_;
    TreeImpl* menuTree_ = nullptr;
    NodeImpl* menuNode_ = nullptr;
};

}  // namespace

std::unique_ptr<LiveDialog> MakeLiveDialog(DialogImpl& dialog) { return std::make_unique<LiveDialogImpl>(dialog); }

}  // namespace host::ui
