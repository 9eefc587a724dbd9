// The test plug-in: a small user-function library, built exactly like the real plug-in (C++98,
// NX headers only), that shows Vornadel.dlx, registers every handler the real plug-in registers
// and reports each event it receives as an information message box titled "testplugin". The
// runner prints message boxes as they occur, so its output is the sequence of events.
//
// The process environment variable VORNADEL_TESTPLUGIN (words separated by commas) changes what
// ufusr does:
//   throw-std    ufusr throws a std::runtime_error after reporting itself
//   throw-other  ufusr throws an int
//   no-dialog    ufusr shows no dialog
//   stay-loaded  ufusr_ask_unload answers UF_UNLOAD_UG_TERMINATE instead of UF_UNLOAD_IMMEDIATELY
//   no-initialize  ufusr does not call UF_initialize (button04's UF_translate_variable then fails)
//
// What the dialog does:
//   dialog shown   columns 0 "名称", 1 "数量", 2 "状态", 3 "ID" (hidden), 4 "备注"; a top-level row "螺钉"
//                  with one child row per body of the work part (the body under "Data"), and a
//                  top-level row "弹簧" without children whose text colour is 186
//   button01       a selection dialog for solid bodies (SelectTaggedObjects); reports the answer
//   button0        writes the string attribute "测试" = "已保存" on the work part and on each
//                  body of the first row, and gives those bodies colour 186
//   button02       throws a std::runtime_error out of the update handler
//   button03       reports the local time (platform::GetLocalTime, the host's clock)
//   button021      opens "D:\out\测试.xls" with its associated program
//   button04       reports the environment: VDConfig (UF_translate_variable), LOCALAPPDATA, the
//                  desktop folder, and whether VDConfig\probe.txt exists (through the drive table)
//   column 0       cannot be edited; column 1 edits with a combo box "甲", "乙", "丙"; column 2
//                  with a list box "是", "否"; column 4 with free text; the text "拒绝" is rejected
//   right click    a menu: 1 "添加到组", 2 "解散组" (disabled), 3 "隐藏项" (hidden)
#include <stdio.h>
#include <stdlib.h>

#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include <NXOpen/Body.hxx>
#include <NXOpen/BodyCollection.hxx>
#include <NXOpen/BlockStyler_BlockDialog.hxx>
#include <NXOpen/BlockStyler_BodyCollector.hxx>
#include <NXOpen/BlockStyler_CompositeBlock.hxx>
#include <NXOpen/BlockStyler_FolderSelection.hxx>
#include <NXOpen/BlockStyler_Node.hxx>
#include <NXOpen/BlockStyler_StringBlock.hxx>
#include <NXOpen/BlockStyler_Tree.hxx>
#include <NXOpen/BlockStyler_TreeListMenu.hxx>
#include <NXOpen/Callback.hxx>
#include <NXOpen/DataContainer.hxx>
#include <NXOpen/NXException.hxx>
#include <NXOpen/NXMessageBox.hxx>
#include <NXOpen/Part.hxx>
#include <NXOpen/PartCollection.hxx>
#include <NXOpen/Selection.hxx>
#include <NXOpen/Session.hxx>
#include <NXOpen/UI.hxx>
#include <uf.h>
#include <uf_object_types.h>
#include <uf_ui_types.h>

#include "platform/Desktop.h"
#include "platform/Environment.h"
#include "platform/Files.h"

namespace {

typedef NXOpen::BlockStyler::Tree Tree;
typedef NXOpen::BlockStyler::Node Node;

void Report(const std::string& event) {
    NXOpen::UI::GetUI()->NXMessageBox()->Show("testplugin", NXOpen::NXMessageBox::DialogTypeInformation,
                                               event.c_str());
}

bool Mode(const char* word) {
    const char* modes = getenv("VORNADEL_TESTPLUGIN");
    if (modes == NULL) return false;
    const std::string list = std::string(",") + modes + ",";
    return list.find(std::string(",") + word + ",") != std::string::npos;
}

std::string Number(long value) {
    std::ostringstream text;
    text << value;
    return text.str();
}

std::string NodeText(Node* node) {
    return node == NULL ? std::string("(none)") : std::string(node->DisplayText().GetLocaleText());
}

// Text from an edited cell: NX 8.5 hands it over as UTF-8 bytes even through GetLocaleText().
std::string EditedText(const NXOpen::NXString& text) {
    return NXOpen::NXString(text.GetLocaleText(), NXOpen::NXString::UTF8).GetLocaleText();
}

// Reports its own unloading: the library's statics are destroyed when it is unloaded.
class UnloadReporter {
public:
    ~UnloadReporter() { Report("unloaded"); }
};
UnloadReporter unloadReporter;

class TestDialog {
public:
    TestDialog() : theDialog(NULL), tree(NULL) {
        theDialog = NXOpen::UI::GetUI()->CreateDialog("Vornadel.dlx");
        theDialog->AddUpdateHandler(NXOpen::make_callback(this, &TestDialog::update_cb));
        theDialog->AddInitializeHandler(NXOpen::make_callback(this, &TestDialog::initialize_cb));
        theDialog->AddDialogShownHandler(NXOpen::make_callback(this, &TestDialog::dialogShown_cb));
    }
    ~TestDialog() { delete theDialog; }

    void Show() { theDialog->Show(); }

    void initialize_cb() {
        Report("initialize_cb");
        tree = dynamic_cast<Tree*>(theDialog->TopBlock()->FindBlock("tree_control0"));
        tree->SetOnExpandHandler(NXOpen::make_callback(this, &TestDialog::OnExpandCallback));
        tree->SetOnPreSelectHandler(NXOpen::make_callback(this, &TestDialog::OnPreSelectCallback));
        tree->SetOnSelectHandler(NXOpen::make_callback(this, &TestDialog::OnSelectCallback));
        tree->SetOnBeginLabelEditHandler(NXOpen::make_callback(this, &TestDialog::OnBeginLabelEditCallback));
        tree->SetOnEndLabelEditHandler(NXOpen::make_callback(this, &TestDialog::OnEndLabelEditCallback));
        tree->SetOnEditOptionSelectedHandler(NXOpen::make_callback(this, &TestDialog::OnEditOptionSelectedCallback));
        tree->SetAskEditControlHandler(NXOpen::make_callback(this, &TestDialog::AskEditControlCallback));
        tree->SetOnMenuHandler(NXOpen::make_callback(this, &TestDialog::OnMenuCallback));
        tree->SetOnMenuSelectionHandler(NXOpen::make_callback(this, &TestDialog::OnMenuSelectionCallback));
    }

    void dialogShown_cb() {
        Report("dialogShown_cb");
        tree->InsertColumn(0, "名称", 100);
        tree->InsertColumn(1, "数量", 60);
        tree->InsertColumn(2, "状态", 50);
        tree->InsertColumn(3, "ID", 40);
        tree->SetColumnVisible(3, false);
        tree->InsertColumn(4, "备注", 80);

        Node* screws = tree->CreateNode("螺钉");
        tree->InsertNode(screws, NULL, NULL, Tree::NodeInsertOptionLast);
        screws->SetColumnDisplayText(1, "2");
        NXOpen::BodyCollection* bodies = NXOpen::Session::GetSession()->Parts()->Work()->Bodies();
        int n = 0;
        for (NXOpen::BodyCollection::iterator it = bodies->begin(); it != bodies->end(); ++it) {
            Node* child = tree->CreateNode(("螺钉-" + Number(++n)).c_str());
            tree->InsertNode(child, screws, NULL, Tree::NodeInsertOptionLast);
            child->SetColumnDisplayText(3, Number((*it)->Tag()).c_str());
            NXOpen::DataContainer* data = child->GetNodeData();
            data->AddTaggedObject("Data", *it);
            delete data;
        }
        screws->Expand(Node::ExpandOptionExpand);

        Node* springs = tree->CreateNode("弹簧");
        tree->InsertNode(springs, NULL, NULL, Tree::NodeInsertOptionLast);
        springs->SetColumnDisplayText(1, "1");
        springs->SetForegroundColor(186);
    }

    int update_cb(NXOpen::BlockStyler::UIBlock* block) {
        const std::string id = block->Name().GetLocaleText();
        std::string event = "update_cb " + id;
        if (NXOpen::BlockStyler::StringBlock* s = dynamic_cast<NXOpen::BlockStyler::StringBlock*>(block)) {
            event += std::string(" ") + s->WideValue().GetLocaleText();
        } else if (NXOpen::BlockStyler::FolderSelection* f = dynamic_cast<NXOpen::BlockStyler::FolderSelection*>(block)) {
            event += std::string(" ") + f->Path().GetLocaleText();
        } else if (NXOpen::BlockStyler::BodyCollector* c = dynamic_cast<NXOpen::BlockStyler::BodyCollector*>(block)) {
            std::vector<NXOpen::TaggedObject*> selected = c->GetSelectedObjects();
            for (size_t i = 0; i < selected.size(); ++i) event += " " + Number(selected[i]->Tag());
        }
        Report(event);
        if (id == "button01") SelectBodies();
        if (id == "button0") MarkFirstRow();
        if (id == "button02") throw std::runtime_error("按钮出错");
        if (id == "button03") ReportTime();
        if (id == "button021") platform::OpenWithAssociatedProgram("D:\\out\\测试.xls");
        if (id == "button04") ReportEnvironment();
        return 0;
    }

    void OnExpandCallback(Tree*, Node* node) { Report("OnExpandCallback " + NodeText(node)); }

    void OnPreSelectCallback(Tree*, Node* node, int columnID, bool selected) {
        Report("OnPreSelectCallback " + NodeText(node) + " " + Number(columnID) + " " + (selected ? "true" : "false"));
    }

    void OnSelectCallback(Tree*, Node* node, int columnID, bool selected) {
        Report("OnSelectCallback " + NodeText(node) + " " + Number(columnID) + " " + (selected ? "true" : "false"));
    }

    Tree::BeginLabelEditState OnBeginLabelEditCallback(Tree*, Node* node, int columnID) {
        Report("OnBeginLabelEditCallback " + NodeText(node) + " " + Number(columnID));
        return columnID == 0 ? Tree::BeginLabelEditStateDisallow : Tree::BeginLabelEditStateAllow;
    }

    Tree::EndLabelEditState OnEndLabelEditCallback(Tree*, Node* node, int columnID, NXOpen::NXString editedText) {
        const std::string text = EditedText(editedText);
        Report("OnEndLabelEditCallback " + NodeText(node) + " " + Number(columnID) + " " + text);
        return text == "拒绝" ? Tree::EndLabelEditStateRejectText : Tree::EndLabelEditStateAcceptText;
    }

    Tree::EditControlOption OnEditOptionSelectedCallback(Tree*, Node* node, int columnID, int selectedOptionID,
                                                         NXOpen::NXString selectedOptionText, Tree::ControlType type) {
        Report("OnEditOptionSelectedCallback " + NodeText(node) + " " + Number(columnID) + " " +
               Number(selectedOptionID) + " " + EditedText(selectedOptionText) + " " + Number(type));
        return Tree::EditControlOptionAccept;
    }

    Tree::ControlType AskEditControlCallback(Tree*, Node* node, int columnID) {
        Report("AskEditControlCallback " + NodeText(node) + " " + Number(columnID));
        std::vector<NXOpen::NXString> options;
        if (columnID == 1) {
            options.push_back("甲");
            options.push_back("乙");
            options.push_back("丙");
            tree->SetEditOptions(options, 0);
            return Tree::ControlTypeComboBox;
        }
        if (columnID == 2) {
            options.push_back("是");
            options.push_back("否");
            tree->SetEditOptions(options, 1);
            return Tree::ControlTypeListBox;
        }
        return Tree::ControlTypeNone;
    }

    void OnMenuCallback(Tree*, Node* node, int columnID) {
        Report("OnMenuCallback " + NodeText(node) + " " + Number(columnID));
        NXOpen::BlockStyler::TreeListMenu* menu = tree->CreateMenu();
        menu->AddMenuItem(1, "添加到组");
        menu->AddMenuItem(2, "解散组");
        menu->SetItemDisable(2, true);
        menu->AddMenuItem(3, "隐藏项");
        menu->SetItemHidden(3, true);
        tree->SetMenu(menu);
        delete menu;
    }

    void OnMenuSelectionCallback(Tree*, Node* node, int menuItemID) {
        Report("OnMenuSelectionCallback " + NodeText(node) + " " + Number(menuItemID));
    }

private:
    void SelectBodies() {
        std::vector<NXOpen::Selection::MaskTriple> mask(1, NXOpen::Selection::MaskTriple(
            UF_solid_type, UF_solid_body_subtype, UF_UI_SEL_FEATURE_SOLID_BODY));
        std::vector<NXOpen::TaggedObject*> objects;
        const NXOpen::Selection::Response response = NXOpen::UI::GetUI()->SelectionManager()->SelectTaggedObjects(
            "选择标准件", "选择", NXOpen::Selection::SelectionScopeWorkPart,
            NXOpen::Selection::SelectionActionClearAndEnableSpecific, false, false, mask, objects);
        std::string event = "selection " + Number(response);
        for (size_t i = 0; i < objects.size(); ++i) event += " " + Number(objects[i]->Tag());
        Report(event);
    }

    void ReportEnvironment() {
        char* root = NULL;
        UF_translate_variable("VDConfig", &root);
        const std::string config = root == NULL ? "(undefined)" : root;
        Report("VDConfig " + config);
        Report("LOCALAPPDATA " + platform::GetEnv("LOCALAPPDATA", NULL));
        Report("desktop " + platform::DesktopFolder());
        Report(std::string("probe ") + (platform::PathExists(config + "\\probe.txt") ? "found" : "missing"));
    }

    void ReportTime() {
        const platform::LocalTime t = platform::GetLocalTime();
        char text[128];
        sprintf(text, "time %04d-%02d-%02d %02d:%02d:%02d.%03d", t.year, t.month, t.day, t.hour, t.minute, t.second,
                t.milliseconds);
        Report(text);
    }

    void MarkFirstRow() {
        NXOpen::Part* work = NXOpen::Session::GetSession()->Parts()->Work();
        work->SetUserAttribute("测试", -1, "已保存", NXOpen::Update::OptionNow);
        for (Node* child = tree->RootNode()->FirstChildNode(); child != NULL; child = child->NextSiblingNode()) {
            NXOpen::DataContainer* data = child->GetNodeData();
            NXOpen::Body* body = dynamic_cast<NXOpen::Body*>(data->GetTaggedObject("Data"));
            delete data;
            body->SetUserAttribute("测试", -1, "已保存", NXOpen::Update::OptionNow);
            body->SetColor(186);
        }
    }

    NXOpen::BlockStyler::BlockDialog* theDialog;  // owned
    Tree* tree;                                   // the dialog's
};

}  // namespace

extern "C" DllExport void ufusr(char*, int*, int) {
    Report("ufusr");
    if (Mode("throw-std")) throw std::runtime_error("测试插件失败");
    if (Mode("throw-other")) throw 42;
    if (Mode("no-dialog")) return;
    if (!Mode("no-initialize")) UF_initialize();
    TestDialog* dialog = NULL;
    try {
        dialog = new TestDialog();
        dialog->Show();
    } catch (std::exception& ex) {
        NXOpen::UI::GetUI()->NXMessageBox()->Show("Block Styler", NXOpen::NXMessageBox::DialogTypeError, ex.what());
    }
    delete dialog;
}

extern "C" DllExport int ufusr_ask_unload() {
    Report("ufusr_ask_unload");
    return Mode("stay-loaded") ? UF_UNLOAD_UG_TERMINATE : UF_UNLOAD_IMMEDIATELY;
}

extern "C" DllExport void ufusr_cleanup() {
    Report("ufusr_cleanup");
}
