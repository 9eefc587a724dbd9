// The dialog: built from dialog/Vornadel.dlx, found where NX looks for it, shown with NX's order of
// callbacks, its blocks and their properties, and what the designer's actions make NX call.
#include <stdexcept>

#include <NXOpen/BlockStyler_BodyCollector.hxx>
#include <NXOpen/BlockStyler_Button.hxx>
#include <NXOpen/BlockStyler_FolderSelection.hxx>
#include <NXOpen/BlockStyler_Group.hxx>
#include <NXOpen/BlockStyler_PropertyList.hxx>
#include <NXOpen/BlockStyler_ScrolledWindow.hxx>
#include <NXOpen/BlockStyler_StringBlock.hxx>
#include <NXOpen/Body.hxx>

#include "UiFixture.hpp"
#include "ui/Dlx.hpp"

namespace {

using namespace NXOpen::BlockStyler;
using NXOpen::NXString;

// The dialog's blocks as the plug-in fetches them, with their NX Open classes.
struct ExpectedBlock {
    const char* id;
    const char* cls;
    bool (*isClass)(UIBlock*);
};

template <class T>
bool Is(UIBlock* b) {
    return dynamic_cast<T*>(b) != nullptr;
}

const ExpectedBlock kBlockTable[] = {
    {"group", "Group", Is<Group>},
    {"string03", "StringBlock", Is<StringBlock>},
    {"string02", "StringBlock", Is<StringBlock>},
    {"string031", "StringBlock", Is<StringBlock>},
    {"string033", "StringBlock", Is<StringBlock>},
    {"string01", "StringBlock", Is<StringBlock>},
    {"string032", "StringBlock", Is<StringBlock>},
    {"string0", "StringBlock", Is<StringBlock>},
    {"string034", "StringBlock", Is<StringBlock>},
    {"string035", "StringBlock", Is<StringBlock>},
    {"string036", "StringBlock", Is<StringBlock>},
    {"string04", "StringBlock", Is<StringBlock>},
    {"group4", "Group", Is<Group>},
    {"group3", "Group", Is<Group>},
    {"scrolledWindow", "ScrolledWindow", Is<ScrolledWindow>},
    {"tree_control0", "Tree", Is<Tree>},
    {"group2", "Group", Is<Group>},
    {"button01", "Button", Is<Button>},
    {"button0", "Button", Is<Button>},
    {"button04", "Button", Is<Button>},
    {"button03", "Button", Is<Button>},
    {"button021", "Button", Is<Button>},
    {"button02", "Button", Is<Button>},
    {"group1", "Group", Is<Group>},
    {"bodySelect0", "BodyCollector", Is<BodyCollector>},
    {"nativeFolderBrowser0", "FolderSelection", Is<FolderSelection>},
};

// What the dialog's handlers saw, in order.
struct Recorder {
    std::vector<std::string> events;
    void initialize() { events.push_back("initialize"); }
    void dialogShown() { events.push_back("dialogShown"); }
    int update(UIBlock* block) {
        events.push_back("update " + std::string(block->Name().GetLocaleText()));
        return 0;
    }
    void Register(BlockDialog* dialog) {
        dialog->AddInitializeHandler(NXOpen::make_callback(this, &Recorder::initialize));
        dialog->AddDialogShownHandler(NXOpen::make_callback(this, &Recorder::dialogShown));
        dialog->AddUpdateHandler(NXOpen::make_callback(this, &Recorder::update));
    }
};

class DialogFile : public UiTest {
protected:
    void SetUp() override {
        UiTest::SetUp();
        OpenDialog();
    }
    // The blocks as the designer sees them while the dialog is shown.
    std::vector<host::BlockView> Blocks() {
        std::vector<host::BlockView> blocks;
        ShowWith([&](host::LiveDialog& live) { blocks = live.Blocks(); });
        return blocks;
    }
    std::string Label(const char* id) { return dialog_->TopBlock()->FindBlock(id)->Label().GetLocaleText(); }
};

TEST_F(DialogFile, HasTheTwentySixBlocksInTableOrder) {
    std::vector<host::BlockView> blocks = Blocks();
    ASSERT_EQ(26u, blocks.size()) << "the dialog file holds the 26 blocks of the block table";
    for (size_t i = 0; i < blocks.size(); ++i) {
        EXPECT_EQ(kBlockTable[i].id, blocks[i].id) << "the dialog file's pre-order is the block table's order, at " << i;
        EXPECT_EQ(kBlockTable[i].cls, blocks[i].blockClass) << "block " << kBlockTable[i].id;
    }
}

TEST_F(DialogFile, EachBlockHasItsNXOpenClass) {
    for (const ExpectedBlock& b : kBlockTable) {
        UIBlock* block = dialog_->TopBlock()->FindBlock(b.id);
        EXPECT_TRUE(b.isClass(block)) << "NX: dynamic_cast of " << b.id << " to " << b.cls << " succeeds";
        EXPECT_STREQ(b.id, block->Name().GetLocaleText()) << "NX: Name() is the block id";
    }
}

TEST_F(DialogFile, HeadFieldsAreLabelledWithTheirAttributeTitles) {
    const char* const fields[][2] = {{"string03", "订单编号"}, {"string02", "ERP编号"}, {"string031", "产品材质"},
                                     {"string01", "模具编号"}, {"string032", "模具吨位"}, {"string033", "产品编号"},
                                     {"string0", "客户名称"}, {"string034", "产品厚度"}, {"string035", "模具类型"},
                                     {"string036", "设计担当"}, {"string04", "产品名称"}};
    for (const auto& field : fields) EXPECT_EQ(field[1], Label(field[0])) << "head field " << field[0];
}

TEST_F(DialogFile, TitleIsNoMessageBoxTitle) {
    std::string title = dialog_->TopBlock()->Label().GetLocaleText();
    EXPECT_FALSE(title.empty()) << "the grouping menu finds the dialog's window by its title";
    for (const char* boxTitle : {"标准件BOM", "Block Styler", "提示", "设置组"}) {
        EXPECT_NE(boxTitle, title) << "a message box or selection dialog titled so would be found instead";
    }
}

TEST_F(DialogFile, GroupButtonCaptionIsUnique) {
    std::string caption = Label("button04");
    EXPECT_FALSE(caption.empty()) << "the grouping menu presses button04 by its caption";
    int same = 0;
    for (const ExpectedBlock& b : kBlockTable) same += Label(b.id) == caption;
    EXPECT_EQ(1, same) << "no other block has button04's caption";
}

TEST_F(DialogFile, BlocksNestInGroups) {
    std::map<std::string, std::string> parents;
    for (const host::BlockView& b : Blocks()) parents[b.id] = b.parentId;
    EXPECT_EQ("", parents["group"]) << "a top-level group";
    EXPECT_EQ("group", parents["string03"]) << "head fields are in group";
    EXPECT_EQ("group", parents["string04"]) << "head fields are in group";
    EXPECT_EQ("group4", parents["group3"]) << "group3 is in group4";
    EXPECT_EQ("group3", parents["scrolledWindow"]) << "the scrolled window is in group3";
    EXPECT_EQ("scrolledWindow", parents["tree_control0"]) << "the tree is in the scrolled window";
    EXPECT_EQ("group2", parents["button04"]) << "buttons are in group2";
    EXPECT_EQ("group1", parents["bodySelect0"]) << "the body collector is in group1";
    EXPECT_EQ("group1", parents["nativeFolderBrowser0"]) << "the folder block is in group1";
}

TEST_F(DialogFile, ListBearingFieldsAreCombos) {
    for (const char* id : {"string031", "string01", "string032", "string0", "string034", "string035", "string036"}) {
        EXPECT_STREQ("Combo", Find<StringBlock>(id)->PresentationStyleAsString().GetLocaleText()) << id << " offers choices and free text";
    }
    for (const char* id : {"string03", "string02", "string033", "string04"}) {
        EXPECT_STREQ("KeyIn", Find<StringBlock>(id)->PresentationStyleAsString().GetLocaleText()) << id << " is free text";
    }
}

// What only the dialog file says (NX Open has no getter for it), read with the host's reader.
TEST_F(DialogFile, TreeSelectsSeveralNodesAndTheBodyCollectorIsOptionalAndMultiple) {
    host::ui::DlxDialog file = host::ui::ReadDlxFile((UiSourceDir() / "dialog" / "Vornadel.dlx").string());
    std::map<std::string, const host::ui::DlxBlock*> blocks;
    for (const host::ui::DlxBlock& b : file.blocks) blocks[b.id] = &b;
    EXPECT_EQ("Multiple", blocks["tree_control0"]->Value("SelectionMode", "")) << "cell editing selects several nodes at once";
    EXPECT_EQ("Multiple", blocks["bodySelect0"]->Value("Many", "")) << "the designer selects several bodies";
    EXPECT_EQ("Optional", blocks["bodySelect0"]->Value("StepStatus", "")) << "no selection is demanded";
}

TEST_F(DialogFile, HeadFieldsTakeChineseAndTheTreeKeepsItsLinesInOrderAndShowsAboutTwentyRows) {
    host::ui::DlxDialog file = host::ui::ReadDlxFile((UiSourceDir() / "dialog" / "Vornadel.dlx").string());
    std::map<std::string, const host::ui::DlxBlock*> blocks;
    for (const host::ui::DlxBlock& b : file.blocks) blocks[b.id] = &b;
    for (const char* id : {"string03", "string02", "string031", "string033", "string01", "string032", "string0", "string034",
                           "string035", "string036", "string04"}) {
        EXPECT_EQ("True", blocks[id]->Setting("IsIti")) << id << ": international text input, NX's default is False";
    }
    EXPECT_EQ("False", blocks["tree_control0"]->Setting("SortRootNodes"))
        << "NX's default True would order the purchase lines by their texts: 1000 before 999";
    int height = std::stoi(blocks["tree_control0"]->Setting("InitialHeight"));
    EXPECT_GE(height, 20 * 18) << "about 20 rows of 18 to 22 pixels";
    EXPECT_LE(height, 20 * 22) << "about 20 rows of 18 to 22 pixels";
}

TEST_F(DialogFile, TopLevelBlocksAreTheThreeGroups) {
    std::vector<UIBlock*> top = dialog_->TopBlock()->GetBlocks();
    ASSERT_EQ(3u, top.size()) << "NX: GetBlocks gives the top block's direct members";
    EXPECT_STREQ("group", top[0]->Name().GetLocaleText()) << "in dialog order";
    EXPECT_STREQ("group4", top[1]->Name().GetLocaleText()) << "in dialog order";
    EXPECT_STREQ("group1", top[2]->Name().GetLocaleText()) << "in dialog order";
}

class CreateDialog : public UiTest {
protected:
    // A dialog file with one button and this title.
    static std::string OneButton(const std::string& title) {
        return u8R"(<?xml version="1.0" encoding="UTF-8"?><Dialog NX="8.5.0"><item id="b" class="UICOMP_button"><PropertyList>)"
               u8R"(<Property id="API Name" value="b"/><Property id="Title" value="按钮"/></PropertyList></item>)"
               u8R"(<PropertyList><Property id="Title" value=")" + title + u8R"("/></PropertyList></Dialog>)";
    }
    std::string TitleOf(const char* name) { return OpenDialog(name)->TopBlock()->Label().GetLocaleText(); }
};

TEST_F(CreateDialog, FindsTheFileOnTheSearchPath) {
    EXPECT_EQ("标准件清单", TitleOf("Vornadel.dlx")) << "host: the dialog search path holds dialog/";
}

TEST_F(CreateDialog, TheStartFolderComesFirst) {
    WriteFile("Vornadel.dlx", OneButton(u8"起始目录"));
    std::filesystem::create_directories(folder_ / "user" / "application");
    std::ofstream(folder_ / "user" / "application" / "Vornadel.dlx") << OneButton(u8"用户目录");
    host::SetEnvironmentVariable("UGII_USER_DIR", (folder_ / "user").string());
    EXPECT_EQ("起始目录", TitleOf("Vornadel.dlx")) << "NX: the folder NX was started from is searched first";
}

TEST_F(CreateDialog, UserDirApplicationComesBeforeTheSearchPath) {
    std::filesystem::create_directories(folder_ / "user" / "application");
    std::ofstream(folder_ / "user" / "application" / "Vornadel.dlx") << OneButton(u8"用户目录");
    host::SetEnvironmentVariable("UGII_USER_DIR", (folder_ / "user").string());
    EXPECT_EQ("用户目录", TitleOf("Vornadel.dlx")) << "NX: then $UGII_USER_DIR/application";
}

TEST_F(CreateDialog, MissingFileThrowsNamingIt) {
    std::string message = NXErrorOf([&] { OpenDialog("Missing.dlx"); });
    EXPECT_NE(std::string::npos, message.find("Missing.dlx")) << "NX throws NXException naming the file; got: " << message;
}

TEST_F(CreateDialog, ReadsEntitiesCommentsBomAndBothWrapperForms) {
    WriteFile("Forms.dlx", u8"\xEF\xBB\xBF<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<!-- made by hand -->\n"
                           u8"<Dialog>\n <item id='g' class='UGS::UICOMP_group'><PropertyList>"
                           u8"<Property id='Title' value='A &amp; B &#x8BA2;&#21333;'/>"
                           u8"<Property id='Members' type='array'><PropertyList id='ContainerItems'>"
                           u8"<Property id='b1' type='uicomp'><item id='b1' class='UICOMP_button'/></Property>"
                           u8"<item id='b2' class='UICOMP_button'/>"
                           u8"</PropertyList></Property></PropertyList></item>\n"
                           u8"<PropertyList><Property id=\"Title\" value=\"&quot;标题&apos;\"/></PropertyList>\n</Dialog>\n");
    OpenDialog("Forms.dlx");
    EXPECT_STREQ("\"标题'", dialog_->TopBlock()->Label().GetLocaleText()) << "host: entities decode in the title";
    EXPECT_STREQ("A & B 订单", dialog_->TopBlock()->FindBlock("g")->Label().GetLocaleText())
        << "host: named and numeric entities decode, UTF-8 becomes GBK";
    EXPECT_TRUE(Is<Button>(dialog_->TopBlock()->FindBlock("b1"))) << "host: a member inside a uicomp wrapper";
    EXPECT_TRUE(Is<Button>(dialog_->TopBlock()->FindBlock("b2"))) << "host: a member without the wrapper";
}

TEST_F(CreateDialog, CharacterReferencesOfEveryUtf8LengthDecode) {
    WriteFile("Refs.dlx", OneButton("&#x41;&#xE9;&#x8BA2;&#x1F600;"));
    EXPECT_EQ("A\xA8\xA6订?", TitleOf("Refs.dlx"))  // \xA8\xA6: é in GBK
        << "host: one-, two-, three- and four-byte characters; the last has no GBK form and becomes one ?";
}

TEST_F(CreateDialog, MalformedFilesAreRefusedWithAMessage) {
    const char* const cases[][3] = {
        {"Empty.dlx", "", "no element"},
        {"NotXml.dlx", "just text", "text before the root"},
        {"Unclosed.dlx", "<Dialog><item id=\"a\" class=\"UICOMP_button\">", "not closed"},
        {"Mismatch.dlx", "<Dialog>\n<item id=\"a\" class=\"UICOMP_button\">\n</Dialog>", ":3: end tag </Dialog> does not match <item>"},
        {"Root.dlx", "<Dialogue/>", "not <Dialog>"},
        {"Entity.dlx", "<Dialog><item id=\"a&nbsp;\" class=\"UICOMP_button\"/></Dialog>", "unknown entity &nbsp;"},
        {"Quote.dlx", "<Dialog><item id=a/></Dialog>", "must be quoted"},
        {"Twice.dlx", "<Dialog><item id=\"a\" id=\"b\"/></Dialog>", "appears twice"},
        {"Class.dlx", "<Dialog><item id=\"a\" class=\"UICOMP_slider\"/></Dialog>", "UICOMP_slider"},
        {"NoId.dlx", "<Dialog><item class=\"UICOMP_button\"/></Dialog>", "without a block id"},
        {"Duplicate.dlx", "<Dialog><item id=\"a\" class=\"UICOMP_button\"/><item id=\"a\" class=\"UICOMP_button\"/></Dialog>", "used twice"},
        {"Members.dlx",
         "<Dialog><item id=\"a\" class=\"UICOMP_button\"><PropertyList><Property id=\"Members\"/></PropertyList></item></Dialog>",
         "block a, property \"Members\": NX 8.5 has no such property for class UICOMP_button"},
        {"Localize.dlx",
         "<Dialog><item id=\"s\" class=\"UGS::UI::Comp::BodySelect\"><PropertyList><Property id=\"Translated\" value=\"False\"/>"
         "</PropertyList></item></Dialog>",
         "block s, property \"Translated\": NX 8.5 has no such property for class UGS::UI::Comp::BodySelect"},
        {"DialogProperty.dlx", "<Dialog><PropertyList><Property id=\"Colour\" value=\"red\"/></PropertyList></Dialog>",
         "the dialog, property \"Colour\": NX 8.5 has no such property"},
        {"Mask.dlx",
         "<Dialog><item id=\"a\" class=\"UICOMP_button\"><PropertyList><Property id=\"Title\" mask=\"0x100\" value=\"t\"/>"
         "</PropertyList></item></Dialog>",
         "block a, property \"Title\": the mask \"0x100\" is not a number"},
        {"HugeMask.dlx",
         "<Dialog><item id=\"a\" class=\"UICOMP_button\"><PropertyList><Property id=\"Title\" mask=\"99999999999\"/>"
         "</PropertyList></item></Dialog>",
         "is not a number"},
        {"Logical.dlx",
         "<Dialog><item id=\"a\" class=\"UICOMP_button\"><PropertyList><Property id=\"Visibility\" value=\"Yes\"/>"
         "</PropertyList></item></Dialog>",
         "the value \"Yes\" is not True or False"},
        {"Height.dlx",
         "<Dialog><item id=\"t\" class=\"UICOMP_tree_control\"><PropertyList><Property id=\"InitialHeight\" value=\"99999999999\"/>"
         "</PropertyList></item></Dialog>",
         "is not a whole number"},
        {"Option.dlx",
         "<Dialog><item id=\"t\" class=\"UICOMP_tree_control\"><PropertyList><Property id=\"SelectionMode\" type=\"enum\" selected=\"7\"/>"
         "</PropertyList></item></Dialog>",
         "the selected option \"7\" is none of NX's options"},
        {"Utf8.dlx", "<Dialog><item id=\"a\" class=\"UICOMP_button\"><PropertyList><Property id=\"Title\" value=\"\xB1\xEA\"/></PropertyList></item></Dialog>",
         "not valid UTF-8"},
        {"Surrogate.dlx", "<Dialog><item id=\"\xED\xA0\x80\" class=\"UICOMP_button\"/></Dialog>", "not valid UTF-8"},
        {"Overlong.dlx", "<Dialog><item id=\"\xE0\x81\x81\" class=\"UICOMP_button\"/></Dialog>", "not valid UTF-8"},
        {"Reference.dlx", "<Dialog><item id=\"&#xD800;\" class=\"UICOMP_button\"/></Dialog>", "is not a character"},
        {"Encoding.dlx", "<?xml version=\"1.0\" encoding=\"GBK\"?><Dialog/>", "encoding \"GBK\""},
        {"After.dlx", "<Dialog/><Dialog/>", "after the root"},
    };
    for (const auto& c : cases) {
        WriteFile(c[0], c[1]);
        std::string message = NXErrorOf([&] { OpenDialog(c[0]); });
        EXPECT_NE(std::string::npos, message.find(c[0])) << "host: the message names the file; got: " << message;
        EXPECT_NE(std::string::npos, message.find(c[2])) << "host: the message says what is wrong; got: " << message;
    }
}

TEST_F(CreateDialog, DeeplyNestedFileIsRefusedWithoutCrashing) {
    std::string text = "<Dialog>";
    for (int i = 0; i < 100000; ++i) text += "<a>";
    WriteFile("Deep.dlx", text);
    EXPECT_NE(std::string::npos, NXErrorOf([&] { OpenDialog("Deep.dlx"); }).find("nest too deeply"))
        << "host: a hostile nesting depth is refused with a message";
}

class ShowDialog : public UiTest {
protected:
    void SetUp() override {
        UiTest::SetUp();
        OpenDialog();
        recorder_.Register(dialog_);
    }
    Recorder recorder_;
};

// NX: initialize, then dialog shown, then the designer's actions; closing runs no handler.
const std::vector<std::string> kShowSequence = {"initialize", "dialogShown", "script", "update button0"};

TEST_F(ShowDialog, CallbacksRunInitializeThenDialogShownThenTheDesignersActions) {
    ShowWith([&](host::LiveDialog& live) {
        recorder_.events.push_back("script");
        live.Press("button0");
    });
    EXPECT_EQ(kShowSequence, recorder_.events) << "NX's order of callbacks";
}

TEST_F(ShowDialog, CloseEndsShowWithCancel) {
    NXOpen::Selection::Response response = ShowWith([&](host::LiveDialog& live) {
        live.Close();
        EXPECT_TRUE(live.Closed()) << "the dialog is closed";
    });
    EXPECT_EQ(NXOpen::Selection::ResponseCancel, response) << "host choice: closing with the dialog's buttons gives Cancel";
    std::vector<std::string> expected = {"initialize", "dialogShown"};
    EXPECT_EQ(expected, recorder_.events) << "NX: closing runs no handler the plug-in registered";
}

TEST_F(ShowDialog, WithoutScriptTheDialogClosesAfterDialogShown) {
    dialog_->Show();
    std::vector<std::string> expected = {"initialize", "dialogShown"};
    EXPECT_EQ(expected, recorder_.events) << "host: no designer, no actions";
}

TEST_F(ShowDialog, CurrentDialogExistsOnlyWhileShown) {
    EXPECT_EQ(nullptr, host::CurrentDialog()) << "no dialog before Show";
    host::LiveDialog* during = nullptr;
    ShowWith([&](host::LiveDialog& live) { during = host::CurrentDialog(); (void)live; });
    EXPECT_NE(nullptr, during) << "the dialog is current while shown";
    EXPECT_EQ(nullptr, host::CurrentDialog()) << "no dialog after Show";
}

TEST_F(ShowDialog, ShowCannotBeReenteredForTheSameDialog) {
    std::string message;
    ShowWith([&](host::LiveDialog&) { message = NXErrorOf([&] { dialog_->Show(); }); });
    EXPECT_NE("", message) << "host choice: Show of a dialog that is shown throws NXException";
}

TEST_F(ShowDialog, DialogCanBeShownAgainAfterItClosed) {
    dialog_->Show();
    dialog_->Show();
    std::vector<std::string> expected = {"initialize", "dialogShown", "initialize", "dialogShown"};
    EXPECT_EQ(expected, recorder_.events) << "host choice: each Show runs initialize and dialog shown again";
}

struct Thrower {
    int update(UIBlock*) { throw std::runtime_error("导出失败"); }
    int updateNonStd(UIBlock*) { throw 42; }
    void dialogShown() { throw NXOpen::NXException::Create("dialog shown failed"); }
};

TEST_F(ShowDialog, StdExceptionFromAHandlerEndsTheDialogAndShowThrowsIt) {
    Thrower thrower;
    dialog_->AddUpdateHandler(NXOpen::make_callback(&thrower, &Thrower::update));
    bool closedAfter = false;
    try {
        ShowWith([&](host::LiveDialog& live) {
            try {
                live.Press("button01");
            } catch (const std::runtime_error&) {
                closedAfter = live.Closed();
            }
        });
        ADD_FAILURE() << "NX passes an exception escaping a handler on out of Show";
    } catch (const std::runtime_error& e) {
        EXPECT_STREQ("导出失败", e.what()) << "NX: the same exception, message unchanged";
    }
    EXPECT_TRUE(closedAfter) << "host choice: the exception ends the dialog";
    EXPECT_EQ(nullptr, host::CurrentDialog()) << "the dialog is gone";
}

TEST_F(ShowDialog, OtherExceptionsPassThroughShowUnchanged) {
    Thrower thrower;
    dialog_->AddUpdateHandler(NXOpen::make_callback(&thrower, &Thrower::updateNonStd));
    try {
        ShowWith([&](host::LiveDialog& live) { live.Press("button01"); });
        ADD_FAILURE() << "the exception leaves Show";
    } catch (int value) {
        EXPECT_EQ(42, value) << "host choice: an exception of any type leaves Show unchanged";
    }
}

TEST_F(ShowDialog, ExceptionFromDialogShownIsThrownByShow) {
    Thrower thrower;
    dialog_->AddDialogShownHandler(NXOpen::make_callback(&thrower, &Thrower::dialogShown));
    bool scriptRan = false;
    std::string message = NXErrorOf([&] { ShowWith([&](host::LiveDialog&) { scriptRan = true; }); });
    EXPECT_EQ("dialog shown failed", message) << "NX passes the exception on out of Show";
    EXPECT_FALSE(scriptRan) << "the dialog ended before the designer could act";
}

class Blocks : public UiTest {
protected:
    void SetUp() override {
        UiTest::SetUp();
        OpenDialog();
    }
};

TEST_F(Blocks, FindBlockThrowsForAnUnknownId) {
    EXPECT_NE("", NXErrorOf([&] { dialog_->TopBlock()->FindBlock("string99"); })) << "NX: FindBlock throws, never NULL";
}

TEST_F(Blocks, ValueAndWideValueAreTheSameText) {
    StringBlock* s = Find<StringBlock>("string03");
    s->SetWideValue(NXString("SO-2024-01"));
    EXPECT_STREQ("SO-2024-01", s->Value().GetLocaleText()) << "host choice: Value and WideValue hold the same text";
    s->SetValue("订单");
    EXPECT_STREQ("订单", s->WideValue().GetLocaleText()) << "host choice: Value and WideValue hold the same text";
}

TEST_F(Blocks, ListItemsReadBack) {
    StringBlock* s = Find<StringBlock>("string031");
    std::vector<NXString> items = {NXString("ABS"), NXString("PC")};
    s->SetListItems(items);
    std::vector<NXString> back = s->GetListItems();
    ASSERT_EQ(2u, back.size()) << "NX: the items set";
    EXPECT_STREQ("PC", back[1].GetLocaleText()) << "NX: in order";
}

TEST_F(Blocks, UnknownPresentationStyleIsRefused) {
    EXPECT_NE("", NXErrorOf([&] { Find<StringBlock>("string03")->SetPresentationStyleAsString("Slider"); }))
        << "NX: only the enum's names are accepted";
}

TEST_F(Blocks, PropertyListReadsTheBlocksProperties) {
    PropertyList* props = dialog_->GetBlockProperties("string03");
    EXPECT_STREQ("订单编号", props->GetString("Label").GetLocaleText()) << "NX: Label";
    EXPECT_TRUE(props->GetLogical("Show")) << "NX: Show";
    EXPECT_TRUE(props->GetLogical("Enable")) << "NX: Enable";
    props->SetString("Value", "SO-9");
    EXPECT_STREQ("SO-9", props->GetString("WideValue").GetLocaleText()) << "NX: the property is the block's value";
    EXPECT_STREQ("SO-9", Find<StringBlock>("string03")->Value().GetLocaleText()) << "NX: the property is the block's value";
    delete props;
    PropertyList* folder = Find<FolderSelection>("nativeFolderBrowser0")->GetProperties();
    folder->SetString("Path", "D:\\输出");
    EXPECT_STREQ("D:\\输出", Find<FolderSelection>("nativeFolderBrowser0")->Path().GetLocaleText()) << "NX: Path";
    delete folder;
}

TEST_F(Blocks, SelectedObjectsIsTheBodyCollectorsSelection) {
    LoadSmallMould();
    BodyCollector* c = Find<BodyCollector>("bodySelect0");
    c->SetSelectedObjects({Body(1002), Body(1001)});
    PropertyList* props = c->GetProperties();
    std::vector<NXOpen::TaggedObject*> expected = {Body(1002), Body(1001)};
    EXPECT_EQ(expected, props->GetTaggedObjectVector("SelectedObjects")) << "NX: the property is GetSelectedObjects()";
    delete props;
}

TEST_F(Blocks, PropertyListRefusesUnknownNamesAndOtherTypes) {
    PropertyList* props = dialog_->GetBlockProperties("button0");
    EXPECT_NE("", NXErrorOf([&] { props->GetString("Value"); })) << "NX: a button has no Value";
    EXPECT_NE("", NXErrorOf([&] { props->GetLogical("Label"); })) << "NX: Label is not a logical";
    EXPECT_NE("", NXErrorOf([&] { props->SetString("BlockID", "x"); })) << "host choice: BlockID is read-only";
    delete props;
    EXPECT_NE("", NXErrorOf([&] { dialog_->GetBlockProperties("nothing"); })) << "NX: no block of that id";
}

TEST_F(Blocks, TypeIsTheNXOpenClassName) {
    EXPECT_STREQ("Tree", dialog_->TopBlock()->FindBlock("tree_control0")->Type().GetLocaleText())
        << "host choice: Type() names the NX Open class";
}

class DesignerActions : public ShowDialog {};

TEST_F(DesignerActions, SetTextChangesTheValueThenRunsUpdate) {
    std::string valueSeen;
    ShowWith([&](host::LiveDialog& live) {
        live.SetText("string031", "ABS");
        valueSeen = Find<StringBlock>("string031")->WideValue().GetLocaleText();
        live.PickFolder("nativeFolderBrowser0", "D:\\BOM");
    });
    EXPECT_EQ("ABS", valueSeen) << "NX: the block holds the typed text";
    std::vector<std::string> expected = {"initialize", "dialogShown", "update string031", "update nativeFolderBrowser0"};
    EXPECT_EQ(expected, recorder_.events) << "NX: the update handler runs with the block";
    EXPECT_STREQ("D:\\BOM", Find<FolderSelection>("nativeFolderBrowser0")->Path().GetLocaleText()) << "NX: the folder chosen";
}

TEST_F(DesignerActions, SelectBodiesSetsSelectedObjectsThenRunsUpdate) {
    LoadSmallMould();
    ShowWith([&](host::LiveDialog& live) { live.SelectBodies("bodySelect0", {1003, 1001}); });
    std::vector<NXOpen::TaggedObject*> expected = {Body(1003), Body(1001)};
    EXPECT_EQ(expected, Find<BodyCollector>("bodySelect0")->GetSelectedObjects()) << "NX: the bodies selected, in order";
    EXPECT_EQ("update bodySelect0", recorder_.events.back()) << "NX: the update handler runs with the collector";
}

TEST_F(DesignerActions, MistakesOfTheScriptAreRefused) {
    LoadSmallMould();
    ShowWith([&](host::LiveDialog& live) {
        EXPECT_THROW(live.Press("button99"), std::invalid_argument) << "host: no such block";
        EXPECT_THROW(live.Press("string03"), std::invalid_argument) << "host: a string block is not a button";
        EXPECT_THROW(live.SelectBodies("bodySelect0", {4711}), std::invalid_argument) << "host: no such body";
        Find<Button>("button03")->SetEnable(false);
        EXPECT_THROW(live.Press("button03"), std::invalid_argument) << "host: a disabled button cannot be pressed";
        Find<Group>("group1")->SetShow(false);
        EXPECT_THROW(live.PickFolder("nativeFolderBrowser0", "x"), std::invalid_argument) << "host: a block in a hidden group cannot be used";
        EXPECT_FALSE(live.Closed()) << "host: a refused action leaves the dialog open";
    });
    std::vector<std::string> expected = {"initialize", "dialogShown"};
    EXPECT_EQ(expected, recorder_.events) << "host: refused actions run no handler";
}

TEST_F(DesignerActions, ListStyleTakesOnlyItsItems) {
    Find<StringBlock>("string035")->SetPresentationStyleAsString("List");
    std::vector<NXString> items = {NXString("两板模")};
    Find<StringBlock>("string035")->SetListItems(items);
    ShowWith([&](host::LiveDialog& live) {
        EXPECT_THROW(live.SetText("string035", "三板模"), std::invalid_argument) << "host: a list shows only its items";
        live.SetText("string035", "两板模");
    });
    EXPECT_STREQ("两板模", Find<StringBlock>("string035")->Value().GetLocaleText()) << "an item of the list is taken";
}

}  // namespace
