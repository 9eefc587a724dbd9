// Saving the dialog onto the part: the BOM head's checks and attributes, the standard-part marker,
// the twelve body attributes of every row and the model update after each; the variant without
// the head.

#include "CommandsFixture.hpp"

#include <NXOpen/BlockStyler_Node.hxx>
#include <NXOpen/BlockStyler_Tree.hxx>
#include <NXOpen/DataContainer.hxx>

#include <algorithm>
#include <map>

using namespace commands_test;

namespace {

class SaveAttributes : public CommandsFixture {
protected:
    // Fills the head, changes nothing else and saves; the exception's text, "" when none.
    std::string SaveWithHead(const std::function<void(Vornadel&, host::LiveDialog&)>& before = {})
    {
        std::string error;
        WithDialog([&](Vornadel& dialog, host::LiveDialog& live) {
            FillHead(live);
            if (before)
                before(dialog, live);
            try {
                dialog.SaveAttributes();
            } catch (const std::exception& e) {
                error = e.what();
            }
        });
        return error;
    }

    // The titles and values a body row's attributes must have after a save: the row's columns.
    static AttributeList Expected(const std::vector<std::string>& columns)
    {
        const int source[] = {1, 2, 3, 5, 6, 8, 4, 9, 10, 11, 7, 12};
        AttributeList list;
        for (size_t i = 0; i < BodyTitles().size(); ++i)
            list.push_back({BodyTitles()[i], columns[source[i]]});
        return list;
    }
};

TEST_F(SaveAttributes, WritesTheElevenHeadAttributesInOrderThenTheMarker)
{
    LoadBodies({});
    ASSERT_EQ("", SaveWithHead());
    AttributeList expected;
    for (size_t i = 0; i < HeadTitles().size(); ++i)
        expected.push_back({HeadTitles()[i], HeadValues()[i].second});
    expected.push_back({"标准件", "Y"});
    EXPECT_EQ(expected, AttributesOf(Work()));
}

TEST_F(SaveAttributes, EmptyTreeWritesOnlyTheHeadAndTheMarker)
{
    LoadBodies({{2001, {}, Box(10, 10, 10)}});
    ASSERT_EQ("", SaveWithHead());
    EXPECT_EQ(12u, AttributesOf(Work()).size());
    EXPECT_TRUE(AttributesOf(Body(2001)).empty());
    EXPECT_EQ(0, host::ModelUpdateCount());
}

TEST_F(SaveAttributes, EveryRowGetsTheTwelveAttributesOfItsColumnsInOrder)
{
    LoadMould();
    std::vector<Row> rows;
    ASSERT_EQ("", SaveWithHead([&](Vornadel& dialog, host::LiveDialog&) { rows = Rows(dialog.tree_control0); }));
    // Rows are written line by line, the body rows first and then the group row, whose body is
    // also its first body row's: the last row written to a body decides its values.
    std::map<unsigned, std::vector<std::string>> last;
    for (size_t i = 0; i < rows.size(); ++i) {
        if (rows[i].depth != 0)
            continue;
        for (size_t child = i + 1; child < rows.size() && rows[child].depth == 1; ++child)
            last[rows[child].tag] = rows[child].text;
        last[rows[i].tag] = rows[i].text;
    }
    ASSERT_EQ(5u, last.size());
    for (const auto& [tag, text] : last) {
        AttributeList attributes = AttributesOf(Body(tag));
        for (const auto& pair : Expected(text))
            EXPECT_NE(attributes.end(), std::find(attributes.begin(), attributes.end(), pair))
                << "body " << tag << " lacks " << pair.first;
    }
    // A body that carried only its mark gets the twelve after it, in the writing order.
    AttributeList expected = {{"转图标识", "Y"}};
    AttributeList twelve = Expected(last[1004]);
    expected.insert(expected.end(), twelve.begin(), twelve.end());
    EXPECT_EQ(expected, AttributesOf(Body(1004)));
}

TEST_F(SaveAttributes, OneModelUpdateAfterEveryBodyAttribute)
{
    LoadMould();
    size_t rowCount = 0;
    int before = -1;
    ASSERT_EQ("", SaveWithHead([&](Vornadel& dialog, host::LiveDialog&) {
        rowCount = Rows(dialog.tree_control0).size();
        before = host::ModelUpdateCount();
    }));
    EXPECT_EQ(static_cast<int>(12 * rowCount), host::ModelUpdateCount() - before);
}

TEST_F(SaveAttributes, ARequiredFieldOfBlanksPassesAndIsStoredAsBlanks)
{
    LoadBodies({});
    ASSERT_EQ("", SaveWithHead([](Vornadel&, host::LiveDialog& live) { live.SetText("string034", "   "); }));
    EXPECT_EQ("   ", StringAttribute(Work(), "产品厚度"));
}

TEST_F(SaveAttributes, EmptyOptionalFieldsAreStoredAsEmptyStrings)
{
    LoadBodies({});
    ASSERT_EQ("", SaveWithHead([](Vornadel&, host::LiveDialog& live) {
        for (const char* block : {"string03", "string02", "string033", "string04"})
            live.SetText(block, "");
    }));
    for (const char* title : {"订单编号", "ERP编号", "产品编号", "产品名称"})
        EXPECT_EQ("", StringAttribute(Work(), title)) << title;
}

TEST_F(SaveAttributes, EachEmptyRequiredFieldHasItsMessageAndNothingIsWritten)
{
    const std::vector<std::pair<std::string, std::string>> required = {
        {"string031", "产品材质不可以为空"}, {"string01", "模具编号不可以为空"}, {"string032", "模具吨位不可以为空"},
        {"string0", "客户名称不可以为空"},   {"string034", "产品厚度不可以为空"}, {"string035", "模具类型不可以为空"},
        {"string036", "设计担当不可以为空"},
    };
    for (const auto& [block, message] : required) {
        LoadMould();
        const int updates = host::ModelUpdateCount();
        EXPECT_EQ(message, SaveWithHead([&](Vornadel&, host::LiveDialog& live) { live.SetText(block, ""); })) << block;
        EXPECT_TRUE(AttributesOf(Work()).empty()) << block;
        EXPECT_EQ("<none>", StringAttribute(Body(1004), "名称")) << block;
        EXPECT_EQ(updates, host::ModelUpdateCount()) << block;
    }
}

TEST_F(SaveAttributes, OfTwoEmptyRequiredFieldsTheFirstInOrderIsReported)
{
    LoadBodies({});
    EXPECT_EQ("产品材质不可以为空", SaveWithHead([](Vornadel&, host::LiveDialog& live) {
                  live.SetText("string036", "");
                  live.SetText("string031", "");
              }));
}

TEST_F(SaveAttributes, AGroupRowWithoutChildrenStillGetsItsOwnBody)
{
    LoadMould();
    ASSERT_EQ("", SaveWithHead([](Vornadel& dialog, host::LiveDialog&) {
        // The ejector pin's line: remove its body rows, leaving the group row alone.
        for (NXOpen::BlockStyler::Node* node = dialog.tree_control0->RootNode(); node != nullptr;
             node = node->NextSiblingNode()) {
            if (std::string(node->GetColumnDisplayText(1).GetLocaleText()) != "顶针")
                continue;
            while (NXOpen::BlockStyler::Node* child = node->FirstChildNode())
                dialog.tree_control0->DeleteNode(child);
            node->SetColumnDisplayText(7, "单独");
        }
    }));
    EXPECT_EQ("单独", StringAttribute(Body(1003), "备注"));
}

TEST_F(SaveAttributes, AValueThatDiffersBetweenGroupAndBodyRowsIsStoredAsEachRowShowsIt)
{
    LoadMould();
    ASSERT_EQ("", SaveWithHead([](Vornadel& dialog, host::LiveDialog&) {
        NXOpen::BlockStyler::Node* group = dialog.tree_control0->RootNode();
        ASSERT_EQ(1001u, DataObject(group)->Tag());
        group->SetColumnDisplayText(7, "组备注");
        // The first body row holds the group's own body too: it is written after the children,
        // so the group row's text wins there; the second keeps its own.
        group->FirstChildNode()->NextSiblingNode()->SetColumnDisplayText(7, "行备注");
    }));
    EXPECT_EQ("组备注", StringAttribute(Body(1001), "备注"));
    EXPECT_EQ("行备注", StringAttribute(Body(1002), "备注"));
}

// The third-level row holds a body that is no standard part (no row of its own writes it): only
// that row could write its attributes.
TEST_F(SaveAttributes, RowsBelowTheSecondLevelAreNotWritten)
{
    LoadBodies({{1001, ScrewM6x20()}, {1002, ScrewM6x20()}, {1009, Attributes{}, Box(5, 5, 5)}});
    ASSERT_EQ("", SaveWithHead([](Vornadel& dialog, host::LiveDialog&) {
        NXOpen::BlockStyler::Tree* tree = dialog.tree_control0;
        NXOpen::BlockStyler::Node* child = tree->RootNode()->FirstChildNode();
        ASSERT_NE(nullptr, child);
        NXOpen::BlockStyler::Node* deep = tree->CreateNode("深");
        tree->InsertNode(deep, child, nullptr, NXOpen::BlockStyler::Tree::NodeInsertOptionLast);
        NXOpen::DataContainer* data = deep->GetNodeData();
        data->AddTaggedObject("Data", Body(1009));
        delete data;
        deep->SetColumnDisplayText(1, "第三层");
    }));
    EXPECT_EQ("<none>", StringAttribute(Body(1009), "名称"));
    EXPECT_EQ("<none>", StringAttribute(Body(1009), "修改日期")) << "none of the twelve";
}

TEST_F(SaveAttributes, SavingTwiceWritesTheSameAttributes)
{
    LoadMould();
    std::vector<AttributeList> first, second;
    WithDialog([&](Vornadel& dialog, host::LiveDialog& live) {
        FillHead(live);
        dialog.SaveAttributes();
        first = {AttributesOf(Work())};
        for (unsigned tag : {1001u, 1002u, 1003u, 1004u, 1005u})
            first.push_back(AttributesOf(Body(tag)));
        const int updates = host::ModelUpdateCount();
        dialog.SaveAttributes();
        second = {AttributesOf(Work())};
        for (unsigned tag : {1001u, 1002u, 1003u, 1004u, 1005u})
            second.push_back(AttributesOf(Body(tag)));
        EXPECT_EQ(updates * 2, host::ModelUpdateCount());
    });
    EXPECT_EQ(first, second);
}

TEST_F(SaveAttributes, TheCategoryIsNotStored)
{
    LoadMould();
    ASSERT_EQ("", SaveWithHead());
    for (unsigned tag : {1001u, 1002u, 1003u, 1004u, 1005u})
        for (const auto& [title, value] : AttributesOf(Body(tag)))
            EXPECT_TRUE(title != "标准件BOM" && value != "标准件BOM") << tag;
}

class SaveAttributesNoTitle : public CommandsFixture {};

TEST_F(SaveAttributesNoTitle, WritesEveryRowWithEveryHeadFieldEmpty)
{
    LoadMould();
    WithDialog([&](Vornadel& dialog, host::LiveDialog& live) {
        for (const auto& [block, value] : HeadValues())
            live.SetText(block, "");
        dialog.SaveAttributesNoTitle();
        EXPECT_EQ(static_cast<int>(12 * Rows(dialog.tree_control0).size()), host::ModelUpdateCount());
    });
    EXPECT_EQ((AttributeList{{"标准件", "Y"}}), AttributesOf(Work()));
    EXPECT_EQ("顶针", StringAttribute(Body(1003), "名称"));
    EXPECT_EQ("1", StringAttribute(Body(1003), "数量"));
}

TEST_F(SaveAttributesNoTitle, EmptyTreeWritesOnlyTheMarker)
{
    LoadBodies({});
    WithDialog([](Vornadel& dialog, host::LiveDialog&) { dialog.SaveAttributesNoTitle(); });
    EXPECT_EQ((AttributeList{{"标准件", "Y"}}), AttributesOf(Work()));
    EXPECT_EQ(0, host::ModelUpdateCount());
}

TEST_F(SaveAttributesNoTitle, HeadAttributesOfAnEarlierSaveStay)
{
    LoadMould();
    AttributeList afterSave;
    WithDialog([&](Vornadel& dialog, host::LiveDialog& live) {
        FillHead(live);
        dialog.SaveAttributes();
        afterSave = AttributesOf(Work());
        live.SetText("string0", "格力");
        live.SetText("string03", "");
        dialog.SaveAttributesNoTitle();
    });
    EXPECT_EQ(afterSave, AttributesOf(Work()));
}

}  // namespace
