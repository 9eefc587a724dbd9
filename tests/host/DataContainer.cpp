// A tree node's data (Node::GetNodeData): named objects, strings and integers that stay on the node,
// read through wrappers that the caller deletes.
#include <NXOpen/BlockStyler_Node.hxx>
#include <NXOpen/Body.hxx>
#include <NXOpen/DataContainer.hxx>

#include "UiFixture.hpp"

namespace {

using NXOpen::BlockStyler::Node;
using NXOpen::DataContainer;

class NodeData : public TreeTest {
protected:
    void SetUp() override {
        TreeTest::SetUp();
        LoadSmallMould();
        node_ = Add("1");
    }
    Node* node_ = nullptr;
};

TEST_F(NodeData, TaggedObjectStaysOnTheNodeAfterTheWrapperIsDeleted) {
    DataContainer* data = node_->GetNodeData();
    data->AddTaggedObject("Data", Body(1001));
    delete data;
    DataContainer* again = node_->GetNodeData();
    EXPECT_EQ(Body(1001), again->GetTaggedObject("Data")) << "NX: the data stays on the node; only the wrapper was deleted";
    delete again;
}

TEST_F(NodeData, GetTaggedObjectThrowsForAMissingName) {
    DataContainer* data = node_->GetNodeData();
    EXPECT_NE("", NXErrorOf([&] { data->GetTaggedObject("Data"); })) << "NX 8.5: a missing name throws NXException, never NULL";
    delete data;
}

TEST_F(NodeData, AddTaggedObjectOfAnExistingNameThrows) {
    DataContainer* data = node_->GetNodeData();
    data->AddTaggedObject("Data", Body(1001));
    EXPECT_NE("", NXErrorOf([&] { data->AddTaggedObject("Data", Body(1002)); })) << "NX: names are unique";
    EXPECT_EQ(Body(1001), data->GetTaggedObject("Data")) << "NX: the first object stays";
    delete data;
}

TEST_F(NodeData, SetTaggedObjectReplacesTheObjectOfAName) {
    DataContainer* data = node_->GetNodeData();
    data->AddTaggedObject("Data", Body(1001));
    data->SetTaggedObject("Data", Body(1002));
    EXPECT_EQ(Body(1002), data->GetTaggedObject("Data")) << "NX: SetTaggedObject replaces the object";
    EXPECT_NE("", NXErrorOf([&] { data->SetTaggedObject("Other", Body(1002)); }))
        << "host choice: SetTaggedObject of a name that is not there throws NXException";
    delete data;
}

TEST_F(NodeData, NamesStringsAndIntegersInOrder) {
    DataContainer* data = node_->GetNodeData();
    data->AddString("名称", "顶针");
    data->AddInteger("数量", 4);
    data->AddTaggedObject("Data", Body(1003));
    EXPECT_EQ(3, data->Length()) << "NX: three properties";
    std::vector<NXOpen::NXString> names = data->GetPropertyNames();
    ASSERT_EQ(3u, names.size()) << "NX: one name per property";
    EXPECT_STREQ("名称", names[0].GetLocaleText()) << "host choice: names in the order added";
    EXPECT_STREQ("Data", names[2].GetLocaleText()) << "host choice: names in the order added";
    EXPECT_STREQ("顶针", data->GetString("名称").GetLocaleText()) << "NX: the string stored";
    EXPECT_STREQ("顶针", data->GetString(0).GetLocaleText()) << "NX: the same by position";
    EXPECT_EQ(Body(1003), data->GetTaggedObject(2)) << "NX: an object by position";
    delete data;
}

TEST_F(NodeData, ReadingAPropertyAsAnotherTypeThrows) {
    DataContainer* data = node_->GetNodeData();
    data->AddString("名称", "顶针");
    EXPECT_NE("", NXErrorOf([&] { data->GetTaggedObject("名称"); })) << "host choice: a string is not an object";
    delete data;
}

TEST_F(NodeData, EachNodeHasItsOwnData) {
    Node* other = Add("2");
    DataContainer* data = node_->GetNodeData();
    data->AddTaggedObject("Data", Body(1001));
    delete data;
    DataContainer* otherData = other->GetNodeData();
    EXPECT_EQ(0, otherData->Length()) << "NX: the data belongs to one node";
    delete otherData;
}

}  // namespace
