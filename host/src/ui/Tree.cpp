// The tree list: columns, nodes and their order, cell texts, node data, selection, expansion, edit
// options and context menus. A deleted node is kept out of the tree until the designer's action
// that deleted it is over, and for good when a handler got it: its data and its children (as they
// were) can still be read, as the group button reads a group node that a rebuild deleted
// (docs/host.md); anything else done with it, and any change of a tree through it, gets NX's
// error for a dead object instead of a crash.
#include <algorithm>

#include <NXOpen/BlockStyler_Tree.hxx>
#include <NXOpen/DataContainer.hxx>

#include "HostSession.hpp"
#include "ui/Ui.hpp"

namespace host::ui {

MenuModel::Item& MenuModel::Find(int itemId) {
    for (Item& item : items) {
        if (!item.separator && item.id == itemId) return item;
    }
    Fail("TreeListMenu: the menu has no item " + std::to_string(itemId));
}

NodeImpl& NodeImpl::Live() {
    if (deleted) Fail("Node: the node was deleted from its tree and cannot be used");
    return *this;
}

std::vector<NodeImpl*>& NodeImpl::Siblings() { return parent ? parent->children : tree.roots; }

LevelOrder& NodeImpl::SiblingOrder() { return parent ? parent->childOrder : tree.rootOrder; }

const std::string& NodeImpl::Cell(int columnId) const {
    static const std::string kNone;
    if (columnId >= 0 && columnId < kDirectColumns)
        return static_cast<size_t>(columnId) < cells.size() ? cells[columnId] : kNone;
    for (const auto& [id, text] : otherCells) {
        if (id == columnId) return text;
    }
    return kNone;
}

NodeImpl& Impl(NXOpen::BlockStyler::Node* node) { return Kept(node).Live(); }

NodeImpl& Kept(NXOpen::BlockStyler::Node* node) {
    if (node == nullptr) Fail("Node: NULL node");
    return *static_cast<NodeImpl*>(node);
}

TreeImpl::Column& TreeImpl::FindColumn(int columnId) {
    for (Column& c : columns) {
        if (c.id == columnId) return c;
    }
    Fail("Tree: block " + id + " has no column " + std::to_string(columnId));
}

bool TreeImpl::HasColumn(int columnId) const {
    return std::any_of(columns.begin(), columns.end(), [columnId](const Column& c) { return c.id == columnId; });
}

NodeImpl& TreeImpl::Inserted(NXOpen::BlockStyler::Node* node) {
    NodeImpl& n = Impl(node);
    if (&n.tree != this) Fail("Tree: the node belongs to another tree");
    if (!n.inserted) Fail("Tree: the node is not inserted in the tree");
    return n;
}

std::vector<NodeImpl*> TreeImpl::AllNodes() {
    std::vector<NodeImpl*> all;
    std::function<void(const std::vector<NodeImpl*>&)> walk = [&](const std::vector<NodeImpl*>& level) {
        for (NodeImpl* n : level) {
            all.push_back(n);
            walk(n->children);
        }
    };
    walk(roots);
    return all;
}

void TreeImpl::ReleaseDeleted() {
    bool any = false;
    for (const std::unique_ptr<NodeImpl>& n : nodes) {
        if (!n->deleted || n->kept) continue;
        for (const NodeImpl* at = n.get(); at != nullptr && !n->kept; at = at->parent) n->kept = at->handed || at->kept;
        any = any || !n->kept;
    }
    if (!any) return;
    // A kept node whose deleted parent goes has no parent any more.
    for (const std::unique_ptr<NodeImpl>& n : nodes) {
        if (n->kept && n->parent != nullptr && !n->parent->kept) n->parent = nullptr;
    }
    nodes.erase(std::remove_if(nodes.begin(), nodes.end(), [](const std::unique_ptr<NodeImpl>& n) { return n->deleted && !n->kept; }),
                nodes.end());
}

void TreeImpl::Deselect(NodeImpl* except) {
    for (NodeImpl* n : AllNodes()) {
        if (n != except) n->selected = false;
    }
}

namespace {

TreeImpl& TreeOf(NXOpen::BlockStyler::Tree* tree) { return static_cast<TreeImpl&>(Impl(tree)); }

// The tree, after noting that a handler registration call was made on it.
TreeImpl& Registered(NXOpen::BlockStyler::Tree* tree, const char* call) {
    TreeImpl& impl = TreeOf(tree);
    impl.registrations.push_back(call);
    return impl;
}

void SetCell(NodeImpl& n, int columnId, const std::string& text) {
    if (columnId == 0 && n.inserted) n.SiblingOrder().known = false;  // its place may be out of order now
    if (columnId >= 0 && columnId < NodeImpl::kDirectColumns) {
        if (static_cast<size_t>(columnId) >= n.cells.size()) {
            // Room for every column of the tree at once: cells are set one by one.
            n.cells.reserve(std::max(static_cast<size_t>(columnId) + 1, n.tree.columns.size()));
            n.cells.resize(columnId + 1);
        }
        n.cells[columnId] = text;
        return;
    }
    for (auto& [id, cell] : n.otherCells) {
        if (id == columnId) {
            cell = text;
            return;
        }
    }
    n.otherCells.emplace_back(columnId, text);
}

// The node's index among its siblings (level), which holds it.
size_t PlaceIn(std::vector<NodeImpl*>& level, NodeImpl& n) {
    if (n.place >= level.size() || level[n.place] != &n) {
        for (size_t i = 0; i < level.size(); ++i) level[i]->place = i;
    }
    return n.place;
}

// Where a node goes when no after-node is given. AlwaysFirst nodes lead and AlwaysLast nodes
// close the list of siblings; First, Last and Sort place the node between them. Sort compares
// display texts byte by byte (GBK) and puts the node before the first sibling of a greater text,
// that is after equal texts; on a level known to be in order that place is searched for.
size_t InsertPosition(const std::vector<NodeImpl*>& siblings, LevelOrder& order, const NodeImpl& node,
                      NXOpen::BlockStyler::Tree::NodeInsertOption option) {
    size_t begin = 0;
    while (begin < siblings.size() && siblings[begin]->pin == NodeImpl::PinnedFirst) ++begin;
    size_t end = siblings.size();
    while (end > begin && siblings[end - 1]->pin == NodeImpl::PinnedLast) --end;
    switch (option) {
    case NXOpen::BlockStyler::Tree::NodeInsertOptionFirst: return begin;
    case NXOpen::BlockStyler::Tree::NodeInsertOptionLast: return end;
    case NXOpen::BlockStyler::Tree::NodeInsertOptionAlwaysFirst: return 0;
    case NXOpen::BlockStyler::Tree::NodeInsertOptionAlwaysLast: return siblings.size();
    case NXOpen::BlockStyler::Tree::NodeInsertOptionSort: {
        const std::string& text = node.Cell(0);
        auto greater = [&text](const NodeImpl* sibling) { return sibling->Cell(0) > text; };
        if (!order.known) {
            order.sorted = true;
            for (size_t i = begin; i + 1 < end && order.sorted; ++i)
                order.sorted = !(siblings[i]->Cell(0) > siblings[i + 1]->Cell(0));
            order.known = true;
        }
        if (order.sorted) {
            return std::upper_bound(siblings.begin() + begin, siblings.begin() + end, text,
                                    [](const std::string& t, const NodeImpl* sibling) { return t < sibling->Cell(0); }) -
                   siblings.begin();
        }
        return std::find_if(siblings.begin() + begin, siblings.begin() + end, greater) - siblings.begin();
    }
    }
    Fail("Tree::InsertNode: unknown insert option " + std::to_string(static_cast<int>(option)));
}

// Takes a deleted node and its descendants out of use. Each keeps its data and its children, and
// a descendant its parent, so that they can still be read as they were; the cells go.
void Poison(NodeImpl& n, bool top) {
    for (NodeImpl* child : n.children) Poison(*child, false);
    n.deleted = true;
    n.inserted = false;
    n.selected = false;
    if (top) n.parent = nullptr;
    n.cells.clear();
    n.cells.shrink_to_fit();
    n.otherCells.clear();
    n.otherCells.shrink_to_fit();
    host::Tags::Release(&n);
}

NodeImpl* Next(NodeImpl& n) {
    if (!n.inserted) return nullptr;
    if (!n.children.empty()) return n.children.front();
    for (NodeImpl* at = &n; at != nullptr; at = at->parent) {
        std::vector<NodeImpl*>& level = at->Siblings();
        const size_t place = PlaceIn(level, *at);
        if (place + 1 < level.size()) return level[place + 1];
    }
    return nullptr;
}

NodeImpl* Previous(NodeImpl& n) {
    if (!n.inserted) return nullptr;
    std::vector<NodeImpl*>& level = n.Siblings();
    const size_t place = PlaceIn(level, n);
    if (place == 0) return n.parent;
    NodeImpl* at = level[place - 1];
    while (!at->children.empty()) at = at->children.back();
    return at;
}

// Between the children of a deleted parent, as they were, too.
NodeImpl* Sibling(NodeImpl& n, int step) {
    if (!n.inserted && !(n.deleted && n.parent != nullptr)) return nullptr;
    std::vector<NodeImpl*>& level = n.Siblings();
    const size_t place = PlaceIn(level, n);
    if (step < 0) return place == 0 ? nullptr : level[place - 1];
    return place + 1 == level.size() ? nullptr : level[place + 1];
}

DataEntry* FindEntry(NodeImpl& n, const std::string& name) {
    for (DataEntry& e : n.data) {
        if (e.name == name) return &e;
    }
    return nullptr;
}

NodeImpl& DataOwner(NXOpen::PropertyContainer* container, bool write = false) {
    return static_cast<NodeImpl*>(container->GetHandle())->Access(write);
}

// NX throws when the node's data has no entry of that name (never NULL) or it holds another type.
DataEntry& Entry(NXOpen::PropertyContainer* container, const std::string& name, DataEntry::Kind kind,
                 bool write = false) {
    DataEntry* e = FindEntry(DataOwner(container, write), name);
    if (e == nullptr) Fail("PropertyContainer: no property \"" + name + "\"");
    if (e->kind != kind) Fail("PropertyContainer: property \"" + name + "\" has another type");
    return *e;
}

DataEntry& Entry(NXOpen::PropertyContainer* container, int index, DataEntry::Kind kind) {
    NodeImpl& n = DataOwner(container);
    if (index < 0 || index >= static_cast<int>(n.data.size())) Fail("PropertyContainer: no property " + std::to_string(index));
    return Entry(container, n.data[index].name, kind);
}

void Add(NXOpen::DataContainer* container, DataEntry entry) {
    NodeImpl& n = DataOwner(container, true);
    if (FindEntry(n, entry.name)) Fail("DataContainer: property \"" + entry.name + "\" already exists");
    n.data.push_back(std::move(entry));
}

MenuModel& Model(NXOpen::BlockStyler::TreeListMenu* menu) { return *static_cast<MenuModel*>(menu->GetHandle()); }

}  // namespace
}  // namespace host::ui

namespace NXOpen {

using host::ui::Fail;
using host::ui::Impl;
using host::ui::NodeImpl;
using host::ui::Text;
using host::ui::TreeImpl;

namespace BlockStyler {

using host::ui::TreeOf;
using host::ui::Registered;

Tree::Tree() {}
Tree::~Tree() {}

Node* Tree::CreateNode(const NXString& displayText) { HOST_NX_CALL("Tree::CreateNode"); return CreateNode(displayText.GetLocaleText()); }

Node* Tree::CreateNode(const char* displayText) {
    HOST_NX_CALL("Tree::CreateNode");
    TreeImpl& t = TreeOf(this);
    t.nodes.push_back(std::make_unique<NodeImpl>(t));
    NodeImpl* n = t.nodes.back().get();
    host::ui::SetCell(*n, 0, Text(displayText));
    return n;
}

// With an after-node NX places the node right after it and ignores the insert option.
void Tree::InsertNode(Node* newNode, Node* parentNode, Node* afterNode, NodeInsertOption nodeInsertOption) {
    HOST_NX_CALL("Tree::InsertNode");
    TreeImpl& t = TreeOf(this);
    NodeImpl& n = Impl(newNode);
    if (&n.tree != &t) Fail("Tree::InsertNode: the node was created by another tree");
    if (n.inserted) Fail("Tree::InsertNode: the node is already inserted; a node is inserted once");
    ++host::CurrentActivity().treeRowsInserted;
    NodeImpl* parent = parentNode ? &t.Inserted(parentNode) : nullptr;
    std::vector<NodeImpl*>& siblings = parent ? parent->children : t.roots;
    host::ui::LevelOrder& order = parent ? parent->childOrder : t.rootOrder;
    NodeInsertOption placedBy = nodeInsertOption;
    size_t at;
    if (afterNode != nullptr) {
        NodeImpl& after = t.Inserted(afterNode);
        if (after.parent != parent) Fail("Tree::InsertNode: the after-node is not a child of the parent node");
        at = host::ui::PlaceIn(siblings, after) + 1;
        placedBy = NodeInsertOptionLast;  // anywhere
    } else {
        at = host::ui::InsertPosition(siblings, order, n, nodeInsertOption);
        if (nodeInsertOption == NodeInsertOptionAlwaysFirst) n.pin = NodeImpl::PinnedFirst;
        if (nodeInsertOption == NodeInsertOptionAlwaysLast) n.pin = NodeImpl::PinnedLast;
    }
    // A tree whose dialog file sorts root nodes keeps them in the order of their display texts,
    // whatever the option or after-node.
    if (parent == nullptr && t.sortRootNodes) {
        at = host::ui::InsertPosition(siblings, order, n, NodeInsertOptionSort);
        placedBy = NodeInsertOptionSort;
    }
    // An unpinned node placed by Sort into a level in order keeps it in order; after any other
    // insert the order is found anew when a Sort asks for it.
    if (!(placedBy == NodeInsertOptionSort && order.known && order.sorted && n.pin == NodeImpl::Unpinned))
        order.known = false;
    siblings.insert(siblings.begin() + at, &n);
    n.place = at;
    n.parent = parent;
    n.inserted = true;
}

void Tree::DeleteNode(Node* node) {
    HOST_NX_CALL("Tree::DeleteNode");
    TreeImpl& t = TreeOf(this);
    NodeImpl& n = Impl(node);
    if (&n.tree != &t) Fail("Tree::DeleteNode: the node belongs to another tree");
    if (n.inserted) {
        std::vector<NodeImpl*>& level = n.Siblings();
        level.erase(level.begin() + host::ui::PlaceIn(level, n));
    }
    host::ui::Poison(n, true);
}

// isOtherNodeAffected clears the selection of every other node first; a tree in single
// selection mode keeps at most one node selected.
void Tree::SelectNode(Node* node, bool isSelect, bool isOtherNodeAffected) {
    HOST_NX_CALL("Tree::SelectNode");
    std::vector<Node*> one(1, node);
    SelectNodes(one, isSelect, isOtherNodeAffected);
}

void Tree::SelectNodes(const std::vector<Node*>& node, bool isSelect, bool isOtherNodeAffected) {
    HOST_NX_CALL("Tree::SelectNodes");
    TreeImpl& t = TreeOf(this);
    std::vector<NodeImpl*> chosen;
    for (Node* each : node) chosen.push_back(&t.Inserted(each));
    if (isOtherNodeAffected) {
        for (NodeImpl* n : t.AllNodes()) {
            if (std::find(chosen.begin(), chosen.end(), n) == chosen.end()) n->selected = false;
        }
    }
    for (NodeImpl* n : chosen) {
        if (isSelect && !t.multipleSelection) t.Deselect(n);
        n->selected = isSelect;
    }
}

int Tree::InsertColumn(int columnID, const NXString& columnTitle, int columnWidth) { HOST_NX_CALL("Tree::InsertColumn"); return InsertColumn(columnID, columnTitle.GetLocaleText(), columnWidth); }

// A width below 0 asks for the default width, which the host takes as 100.
int Tree::InsertColumn(int columnID, const char* columnTitle, int columnWidth) {
    HOST_NX_CALL("Tree::InsertColumn");
    TreeImpl& t = TreeOf(this);
    if (t.HasColumn(columnID)) Fail("Tree::InsertColumn: column " + std::to_string(columnID) + " exists already");
    t.columns.push_back(TreeImpl::Column{columnID, Text(columnTitle), columnWidth < 0 ? 100 : columnWidth});
    return static_cast<int>(t.columns.size()) - 1;
}

NXString Tree::GetColumnTitle(int columnID) { HOST_NX_CALL("Tree::GetColumnTitle"); return NXString(TreeOf(this).FindColumn(columnID).title); }
void Tree::SetColumnTitle(int columnID, const NXString& columnHeaderTitle) { HOST_NX_CALL("Tree::SetColumnTitle"); TreeOf(this).FindColumn(columnID).title = columnHeaderTitle.GetLocaleText(); }
void Tree::SetColumnTitle(int columnID, const char* columnHeaderTitle) { HOST_NX_CALL("Tree::SetColumnTitle"); TreeOf(this).FindColumn(columnID).title = Text(columnHeaderTitle); }
int Tree::GetColumnWidth(int columnID) { HOST_NX_CALL("Tree::GetColumnWidth"); return TreeOf(this).FindColumn(columnID).width; }
void Tree::SetColumnWidth(int columnID, int columnWidth) { HOST_NX_CALL("Tree::SetColumnWidth"); TreeOf(this).FindColumn(columnID).width = columnWidth < 0 ? 100 : columnWidth; }
bool Tree::GetColumnVisible(int columnID) { HOST_NX_CALL("Tree::GetColumnVisible"); return TreeOf(this).FindColumn(columnID).visible; }
void Tree::SetColumnVisible(int columnID, bool isVisible) { HOST_NX_CALL("Tree::SetColumnVisible"); TreeOf(this).FindColumn(columnID).visible = isVisible; }
Tree::ColumnSortOption Tree::GetColumnSortOption(int columnID) { HOST_NX_CALL("Tree::GetColumnSortOption"); return TreeOf(this).FindColumn(columnID).sort; }
void Tree::SetColumnSortOption(int columnID, ColumnSortOption sortOption) { HOST_NX_CALL("Tree::SetColumnSortOption"); TreeOf(this).FindColumn(columnID).sort = sortOption; }
bool Tree::GetColumnSortable(int columnID) { HOST_NX_CALL("Tree::GetColumnSortable"); return TreeOf(this).FindColumn(columnID).sortable; }
void Tree::SetColumnSortable(int columnID, bool isSortable) { HOST_NX_CALL("Tree::SetColumnSortable"); TreeOf(this).FindColumn(columnID).sortable = isSortable; }
Tree::ColumnResizePolicy Tree::GetColumnResizePolicy(int columnID) { HOST_NX_CALL("Tree::GetColumnResizePolicy"); return TreeOf(this).FindColumn(columnID).resize; }
void Tree::SetColumnResizePolicy(int columnID, ColumnResizePolicy resizePolicy) { HOST_NX_CALL("Tree::SetColumnResizePolicy"); TreeOf(this).FindColumn(columnID).resize = resizePolicy; }
Tree::ColumnDisplay Tree::GetColumnDisplayType(int columnID) { HOST_NX_CALL("Tree::GetColumnDisplayType"); return TreeOf(this).FindColumn(columnID).display; }
void Tree::SetColumnDisplayType(int columnID, ColumnDisplay displayType) { HOST_NX_CALL("Tree::SetColumnDisplayType"); TreeOf(this).FindColumn(columnID).display = displayType; }
int Tree::NumberOfColumns() { HOST_NX_CALL("Tree::NumberOfColumns"); return static_cast<int>(TreeOf(this).columns.size()); }

Node* Tree::RootNode() {
    HOST_NX_CALL("Tree::RootNode");
    TreeImpl& t = TreeOf(this);
    return t.roots.empty() ? nullptr : t.roots.front();
}

// Selected nodes are reported in the tree's display order (pre-order).
Node* Tree::FirstSelectedNode() {
    HOST_NX_CALL("Tree::FirstSelectedNode");
    std::vector<Node*> selected = GetSelectedNodes();
    return selected.empty() ? nullptr : selected.front();
}

std::vector<Node*> Tree::GetSelectedNodes() {
    HOST_NX_CALL("Tree::GetSelectedNodes");
    std::vector<Node*> selected;
    for (NodeImpl* n : TreeOf(this).AllNodes()) {
        if (n->selected) selected.push_back(n);
    }
    return selected;
}

void Tree::Redraw(bool) { HOST_NX_CALL("Tree::Redraw"); TreeOf(this); }

void Tree::SetEditOptions(std::vector<NXString>& stringArray, int defaultIndex) {
    HOST_NX_CALL("Tree::SetEditOptions");
    TreeImpl& t = TreeOf(this);
    if (!t.inAskEditControl) Fail("Tree::SetEditOptions: NX takes it only inside the ask-edit-control handler");
    t.editOptions.clear();
    for (const NXString& option : stringArray) t.editOptions.push_back(option.GetLocaleText());
    t.editDefault = defaultIndex;
}

TreeListMenu* Tree::CreateMenu() {
    HOST_NX_CALL("Tree::CreateMenu");
    TreeOf(this);
    return new TreeListMenu(new host::ui::MenuModel);
}

// The menu is copied: the caller deletes its wrapper right after SetMenu.
void Tree::SetMenu(TreeListMenu* menu) {
    HOST_NX_CALL("Tree::SetMenu");
    TreeImpl& t = TreeOf(this);
    if (!t.inMenuHandler) Fail("Tree::SetMenu: NX takes it only inside the menu handler");
    t.shownMenu = menu ? host::ui::Model(menu) : host::ui::MenuModel();
    t.menuSet = menu != nullptr;
}

bool Tree::ShowToolTips() { HOST_NX_CALL("Tree::ShowToolTips"); return TreeOf(this).showToolTips; }
void Tree::SetShowToolTips(bool show) { HOST_NX_CALL("Tree::SetShowToolTips"); TreeOf(this).showToolTips = show; }
// NX 8.5: a property getter; it sorts nothing. The property decides where later root nodes go.
bool Tree::SortRootNodes() { HOST_NX_CALL("Tree::SortRootNodes"); return TreeOf(this).sortRootNodes; }
void Tree::SetSortRootNodes(bool sort) { HOST_NX_CALL("Tree::SetSortRootNodes"); TreeOf(this).sortRootNodes = sort; }
bool Tree::ShowHeader() { HOST_NX_CALL("Tree::ShowHeader"); return TreeOf(this).showHeader; }
void Tree::SetShowHeader(bool show) { HOST_NX_CALL("Tree::SetShowHeader"); TreeOf(this).showHeader = show; }

void Tree::SetOnExpandHandler(const OnExpandCallback& cb) { HOST_NX_CALL("Tree::SetOnExpandHandler"); Registered(this, "SetOnExpandHandler").onExpand = host::ui::Keep(cb); }
void Tree::SetOnPreSelectHandler(const OnPreSelectCallback& cb) { HOST_NX_CALL("Tree::SetOnPreSelectHandler"); Registered(this, "SetOnPreSelectHandler").onPreSelect = host::ui::Keep(cb); }
void Tree::SetOnSelectHandler(const OnSelectCallback& cb) { HOST_NX_CALL("Tree::SetOnSelectHandler"); Registered(this, "SetOnSelectHandler").onSelect = host::ui::Keep(cb); }
void Tree::SetOnBeginLabelEditHandler(const OnBeginLabelEditCallback& cb) { HOST_NX_CALL("Tree::SetOnBeginLabelEditHandler"); Registered(this, "SetOnBeginLabelEditHandler").onBeginLabelEdit = host::ui::Keep(cb); }
void Tree::SetOnEndLabelEditHandler(const OnEndLabelEditCallback& cb) { HOST_NX_CALL("Tree::SetOnEndLabelEditHandler"); Registered(this, "SetOnEndLabelEditHandler").onEndLabelEdit = host::ui::Keep(cb); }
void Tree::SetOnEditOptionSelectedHandler(const OnEditOptionSelectedCallback& cb) { HOST_NX_CALL("Tree::SetOnEditOptionSelectedHandler"); Registered(this, "SetOnEditOptionSelectedHandler").onEditOptionSelected = host::ui::Keep(cb); }
void Tree::SetAskEditControlHandler(const AskEditControlCallback& cb) { HOST_NX_CALL("Tree::SetAskEditControlHandler"); Registered(this, "SetAskEditControlHandler").askEditControl = host::ui::Keep(cb); }
void Tree::SetOnMenuHandler(const OnMenuCallback& cb) { HOST_NX_CALL("Tree::SetOnMenuHandler"); Registered(this, "SetOnMenuHandler").onMenu = host::ui::Keep(cb); }
void Tree::SetOnMenuSelectionHandler(const OnMenuSelectionCallback& cb) { HOST_NX_CALL("Tree::SetOnMenuSelectionHandler"); Registered(this, "SetOnMenuSelectionHandler").onMenuSelection = host::ui::Keep(cb); }
void Tree::SetOnInsertColumnHandler(const OnInsertColumnCallback& cb) { HOST_NX_CALL("Tree::SetOnInsertColumnHandler"); Registered(this, "SetOnInsertColumnHandler").onInsertColumn = host::ui::Keep(cb); }
void Tree::SetOnInsertNodeHandler(const OnInsertNodeCallback& cb) { HOST_NX_CALL("Tree::SetOnInsertNodeHandler"); Registered(this, "SetOnInsertNodeHandler").onInsertNode = host::ui::Keep(cb); }
void Tree::SetOnDeleteNodeHandler(const OnDeleteNodeCallback& cb) { HOST_NX_CALL("Tree::SetOnDeleteNodeHandler"); Registered(this, "SetOnDeleteNodeHandler").onDeleteNode = host::ui::Keep(cb); }
void Tree::SetOnStateChangeHandler(const OnStateChangeCallback& cb) { HOST_NX_CALL("Tree::SetOnStateChangeHandler"); Registered(this, "SetOnStateChangeHandler").onStateChange = host::ui::Keep(cb); }
void Tree::SetStateIconNameHandler(const StateIconNameCallback& cb) { HOST_NX_CALL("Tree::SetStateIconNameHandler"); Registered(this, "SetStateIconNameHandler").stateIconName = host::ui::Keep(cb); }
void Tree::SetToolTipTextHandler(const ToolTipTextCallback& cb) { HOST_NX_CALL("Tree::SetToolTipTextHandler"); Registered(this, "SetToolTipTextHandler").toolTipText = host::ui::Keep(cb); }
void Tree::SetColumnSortHandler(const ColumnSortCallback& cb) { HOST_NX_CALL("Tree::SetColumnSortHandler"); Registered(this, "SetColumnSortHandler").columnSort = host::ui::Keep(cb); }
void Tree::SetIsDragAllowedHandler(const IsDragAllowedCallback& cb) { HOST_NX_CALL("Tree::SetIsDragAllowedHandler"); Registered(this, "SetIsDragAllowedHandler").isDragAllowed = host::ui::Keep(cb); }
void Tree::SetIsDropAllowedHandler(const IsDropAllowedCallback& cb) { HOST_NX_CALL("Tree::SetIsDropAllowedHandler"); Registered(this, "SetIsDropAllowedHandler").isDropAllowed = host::ui::Keep(cb); }
void Tree::SetOnDropHandler(const OnDropCallback& cb) { HOST_NX_CALL("Tree::SetOnDropHandler"); Registered(this, "SetOnDropHandler").onDrop = host::ui::Keep(cb); }
void Tree::SetOnDropMenuHandler(const OnDropMenuCallback& cb) { HOST_NX_CALL("Tree::SetOnDropMenuHandler"); Registered(this, "SetOnDropMenuHandler").onDropMenu = host::ui::Keep(cb); }
void Tree::SetOnDefaultActionHandler(const OnDefaultActionCallback& cb) { HOST_NX_CALL("Tree::SetOnDefaultActionHandler"); Registered(this, "SetOnDefaultActionHandler").onDefaultAction = host::ui::Keep(cb); }

Node::Node() {}
Node::~Node() {}

NXString Node::DisplayText() { HOST_NX_CALL("Node::DisplayText"); return GetColumnDisplayText(0); }
void Node::SetDisplayText(const NXString& displayTest) { HOST_NX_CALL("Node::SetDisplayText"); SetColumnDisplayText(0, displayTest); }
void Node::SetDisplayText(const char* displayTest) { HOST_NX_CALL("Node::SetDisplayText"); SetColumnDisplayText(0, displayTest); }
// Cells are kept by column id; a hidden column's cells are read and written like any other.
NXString Node::GetColumnDisplayText(int columnID) { HOST_NX_CALL("Node::GetColumnDisplayText"); return NXString(Impl(this).Cell(columnID)); }
void Node::SetColumnDisplayText(int columnID, const NXString& columnDisplayText) { HOST_NX_CALL("Node::SetColumnDisplayText"); host::ui::SetCell(Impl(this), columnID, columnDisplayText.GetLocaleText()); }
void Node::SetColumnDisplayText(int columnID, const char* columnDisplayText) { HOST_NX_CALL("Node::SetColumnDisplayText"); host::ui::SetCell(Impl(this), columnID, Text(columnDisplayText)); }
int Node::ForegroundColor() { HOST_NX_CALL("Node::ForegroundColor"); return Impl(this).foreground; }
void Node::SetForegroundColor(int nodeForgroundColor) { HOST_NX_CALL("Node::SetForegroundColor"); Impl(this).foreground = nodeForgroundColor; }
Node* Node::ParentNode() { HOST_NX_CALL("Node::ParentNode"); return host::ui::Kept(this).parent; }

Node* Node::FirstChildNode() {
    HOST_NX_CALL("Node::FirstChildNode");
    NodeImpl& n = host::ui::Kept(this);
    return n.children.empty() ? nullptr : n.children.front();
}

Node* Node::NextSiblingNode() { HOST_NX_CALL("Node::NextSiblingNode"); return host::ui::Sibling(host::ui::Kept(this), 1); }
Node* Node::PreviousSiblingNode() { HOST_NX_CALL("Node::PreviousSiblingNode"); return host::ui::Sibling(host::ui::Kept(this), -1); }
Node* Node::NextNode() { HOST_NX_CALL("Node::NextNode"); return host::ui::Next(Impl(this)); }
Node* Node::PreviousNode() { HOST_NX_CALL("Node::PreviousNode"); return host::ui::Previous(Impl(this)); }

void Node::Expand(ExpandOption expandOption) {
    HOST_NX_CALL("Node::Expand");
    NodeImpl& n = Impl(this);
    switch (expandOption) {
    case ExpandOptionCollapse: n.expanded = false; break;
    case ExpandOptionExpand: n.expanded = true; break;
    case ExpandOptionToggle: n.expanded = !n.expanded; break;
    default: Fail("Node::Expand: unknown expand option " + std::to_string(static_cast<int>(expandOption)));
    }
}

bool Node::IsExpanded() { HOST_NX_CALL("Node::IsExpanded"); return Impl(this).expanded; }
bool Node::IsSelected() { HOST_NX_CALL("Node::IsSelected"); return Impl(this).selected; }
bool Node::IsInserted() { HOST_NX_CALL("Node::IsInserted"); return host::ui::Kept(this).inserted; }
DataContainer* Node::GetNodeData() { HOST_NX_CALL("Node::GetNodeData"); return new DataContainer(&host::ui::Kept(this)); }
void Node::ScrollTo(int, Scroll) { HOST_NX_CALL("Node::ScrollTo"); Impl(this); }
int Node::GetState() { HOST_NX_CALL("Node::GetState"); return Impl(this).state; }
void Node::SetState(int state) { HOST_NX_CALL("Node::SetState"); Impl(this).state = state; }
bool Node::CrossSelection() { HOST_NX_CALL("Node::CrossSelection"); return Impl(this).crossSelection; }
void Node::SetCrossSelection(bool crossSelection) { HOST_NX_CALL("Node::SetCrossSelection"); Impl(this).crossSelection = crossSelection; }

TreeListMenu::TreeListMenu(void* ptr) : TransientObject(ptr) {}
TreeListMenu::~TreeListMenu() { delete &host::ui::Model(this); }

using host::ui::MenuModel;

void TreeListMenu::AddMenuItem(int menuItemID, const NXString& menuItemText) { HOST_NX_CALL("TreeListMenu::AddMenuItem"); AddMenuItem(menuItemID, menuItemText.GetLocaleText(), ""); }
void TreeListMenu::AddMenuItem(int menuItemID, const char* menuItemText) { HOST_NX_CALL("TreeListMenu::AddMenuItem"); AddMenuItem(menuItemID, menuItemText, ""); }
void TreeListMenu::AddMenuItem(int menuItemID, const NXString& menuItemText, const NXString& icon) { HOST_NX_CALL("TreeListMenu::AddMenuItem"); AddMenuItem(menuItemID, menuItemText.GetLocaleText(), icon.GetLocaleText()); }

void TreeListMenu::AddMenuItem(int menuItemID, const char* menuItemText, const char* icon) {
    HOST_NX_CALL("TreeListMenu::AddMenuItem");
    MenuModel::Item item;
    item.id = menuItemID;
    item.text = Text(menuItemText);
    item.icon = Text(icon);
    host::ui::Model(this).items.push_back(item);
}

void TreeListMenu::AddSeperator() {
    HOST_NX_CALL("TreeListMenu::AddSeperator");
    MenuModel::Item item;
    item.separator = true;
    host::ui::Model(this).items.push_back(item);
}

void TreeListMenu::SetSubMenu(int menuItemID, TreeListMenu* subMenu) {
    HOST_NX_CALL("TreeListMenu::SetSubMenu");
    MenuModel::Item& item = host::ui::Model(this).Find(menuItemID);
    item.subMenu = subMenu ? std::make_shared<MenuModel>(host::ui::Model(subMenu)) : nullptr;
}

bool TreeListMenu::GetItemDisable(int menuItemID) { HOST_NX_CALL("TreeListMenu::GetItemDisable"); return host::ui::Model(this).Find(menuItemID).disabled; }
void TreeListMenu::SetItemDisable(int menuItemID, bool disableStatus) { HOST_NX_CALL("TreeListMenu::SetItemDisable"); host::ui::Model(this).Find(menuItemID).disabled = disableStatus; }
bool TreeListMenu::GetItemHidden(int menuItemID) { HOST_NX_CALL("TreeListMenu::GetItemHidden"); return host::ui::Model(this).Find(menuItemID).hidden; }
void TreeListMenu::SetItemHidden(int menuItemID, bool hiddenStatus) { HOST_NX_CALL("TreeListMenu::SetItemHidden"); host::ui::Model(this).Find(menuItemID).hidden = hiddenStatus; }
bool TreeListMenu::GetItemChecked(int menuItemID) { HOST_NX_CALL("TreeListMenu::GetItemChecked"); return host::ui::Model(this).Find(menuItemID).checked; }
void TreeListMenu::SetItemChecked(int menuItemID, bool checkedStatusStatus) { HOST_NX_CALL("TreeListMenu::SetItemChecked"); host::ui::Model(this).Find(menuItemID).checked = checkedStatusStatus; }

}  // namespace BlockStyler

// The wrapper of a node's data: deleting it leaves the data on the node.
PropertyContainer::PropertyContainer(void* ptr) : TransientObject(ptr) {}
PropertyContainer::~PropertyContainer() {}

using host::ui::DataEntry;

int PropertyContainer::Length() { HOST_NX_CALL("PropertyContainer::Length"); return static_cast<int>(host::ui::DataOwner(this).data.size()); }

std::vector<NXString> PropertyContainer::GetPropertyNames() {
    HOST_NX_CALL("PropertyContainer::GetPropertyNames");
    std::vector<NXString> names;
    for (const DataEntry& e : host::ui::DataOwner(this).data) names.push_back(NXString(e.name));
    return names;
}

TaggedObject* PropertyContainer::GetTaggedObject(const NXString& propertyName) { HOST_NX_CALL("PropertyContainer::GetTaggedObject"); return GetTaggedObject(propertyName.GetLocaleText()); }
TaggedObject* PropertyContainer::GetTaggedObject(const char* propertyName) { HOST_NX_CALL("PropertyContainer::GetTaggedObject"); return host::ui::Entry(this, Text(propertyName), DataEntry::Object).object; }
TaggedObject* PropertyContainer::GetTaggedObject(int propertyIndex) { HOST_NX_CALL("PropertyContainer::GetTaggedObject"); return host::ui::Entry(this, propertyIndex, DataEntry::Object).object; }
void PropertyContainer::SetTaggedObject(const NXString& propertyName, TaggedObject* taggedSc) { HOST_NX_CALL("PropertyContainer::SetTaggedObject"); SetTaggedObject(propertyName.GetLocaleText(), taggedSc); }
void PropertyContainer::SetTaggedObject(const char* propertyName, TaggedObject* taggedSc) { HOST_NX_CALL("PropertyContainer::SetTaggedObject"); host::ui::Entry(this, Text(propertyName), DataEntry::Object, true).object = taggedSc; }
NXString PropertyContainer::GetString(const NXString& propertyName) { HOST_NX_CALL("PropertyContainer::GetString"); return GetString(propertyName.GetLocaleText()); }
NXString PropertyContainer::GetString(const char* propertyName) { HOST_NX_CALL("PropertyContainer::GetString"); return NXString(host::ui::Entry(this, Text(propertyName), DataEntry::String).text); }
NXString PropertyContainer::GetString(int propertyIndex) { HOST_NX_CALL("PropertyContainer::GetString"); return NXString(host::ui::Entry(this, propertyIndex, DataEntry::String).text); }

DataContainer::DataContainer(void* ptr) : PropertyContainer(ptr) {}

void DataContainer::AddTaggedObject(const NXString& propertyName, TaggedObject* taggedSc) { HOST_NX_CALL("DataContainer::AddTaggedObject"); AddTaggedObject(propertyName.GetLocaleText(), taggedSc); }

void DataContainer::AddTaggedObject(const char* propertyName, TaggedObject* taggedSc) {
    HOST_NX_CALL("DataContainer::AddTaggedObject");
    host::ui::Add(this, DataEntry{DataEntry::Object, Text(propertyName), taggedSc, "", 0});
}

void DataContainer::AddString(const NXString& propertyName, const NXString& value) { HOST_NX_CALL("DataContainer::AddString"); AddString(propertyName.GetLocaleText(), value.GetLocaleText()); }

void DataContainer::AddString(const char* propertyName, const char* value) {
    HOST_NX_CALL("DataContainer::AddString");
    host::ui::Add(this, DataEntry{DataEntry::String, Text(propertyName), nullptr, Text(value), 0});
}

void DataContainer::AddInteger(const NXString& propertyName, int value) { HOST_NX_CALL("DataContainer::AddInteger"); AddInteger(propertyName.GetLocaleText(), value); }

void DataContainer::AddInteger(const char* propertyName, int value) {
    HOST_NX_CALL("DataContainer::AddInteger");
    host::ui::Add(this, DataEntry{DataEntry::Integer, Text(propertyName), nullptr, "", value});
}

}  // namespace NXOpen

std::vector<std::string> host::TreeHandlerRegistrations(NXOpen::BlockStyler::Tree* tree) {
    return host::ui::TreeOf(tree).registrations;
}

size_t host::KeptDeletedNodes(NXOpen::BlockStyler::Tree* tree) {
    const auto& nodes = host::ui::TreeOf(tree).nodes;
    return static_cast<size_t>(std::count_if(nodes.begin(), nodes.end(), [](const auto& n) { return n->deleted; }));
}
