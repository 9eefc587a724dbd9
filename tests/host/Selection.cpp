// Selection dialogs (Selection::SelectObjects, SelectTaggedObjects): each request is recorded and
// answered by the answer queued for it; with none queued the designer cancels.
#include <stdexcept>

#include <NXOpen/Body.hxx>
#include <NXOpen/NXObject.hxx>
#include <NXOpen/Selection.hxx>
#include <NXOpen/UI.hxx>
#include <uf.h>
#include <uf_obj.h>

#include "UiFixture.hpp"

namespace {

using NXOpen::NXObject;
using NXOpen::Selection;
using NXOpen::TaggedObject;

class SelectObjects : public UiTest {
protected:
    void SetUp() override {
        UiTest::SetUp();
        LoadSmallMould();
        masks_.push_back(Selection::MaskTriple(70, 0, 36));
    }

    // The group command's request: solid bodies of the work part.
    Selection::Response Ask(std::vector<NXObject*>& objects) {
        return NXOpen::UI::GetUI()->SelectionManager()->SelectObjects(
            "选择需要设置为同一组的实体", "设置组", Selection::SelectionScopeWorkPart,
            Selection::SelectionActionClearAndEnableSpecific, false, false, masks_, objects);
    }

    std::vector<Selection::MaskTriple> masks_;
    NXObject* sentinel_ = reinterpret_cast<NXObject*>(0x1);
};

TEST_F(SelectObjects, WithoutAnAnswerTheDesignerCancels) {
    std::vector<NXObject*> objects(1, sentinel_);
    EXPECT_EQ(Selection::ResponseCancel, Ask(objects)) << "host: no answer queued means Cancel";
    EXPECT_TRUE(objects.empty()) << "host choice: the output is emptied";
}

TEST_F(SelectObjects, OkGivesTheBodiesOfTheAnswerInOrder) {
    host::QueueSelectionAnswer(Selection::ResponseOk, {1003, 1001});
    std::vector<NXObject*> objects(1, sentinel_);
    EXPECT_EQ(Selection::ResponseOk, Ask(objects)) << "the queued response";
    std::vector<NXObject*> expected = {Body(1003), Body(1001)};
    EXPECT_EQ(expected, objects) << "the work part's bodies with those tags, in the answer's order";
}

TEST_F(SelectObjects, AnswersAreUsedInTheOrderQueued) {
    host::QueueSelectionAnswer(Selection::ResponseOk, {1002});
    host::QueueSelectionAnswer(Selection::ResponseBack, {1001});
    std::vector<NXObject*> objects;
    EXPECT_EQ(Selection::ResponseOk, Ask(objects)) << "first answer first";
    EXPECT_EQ(Selection::ResponseBack, Ask(objects)) << "then the second";
    EXPECT_TRUE(objects.empty()) << "host: Back selects nothing, whatever tags the answer names";
    EXPECT_EQ(Selection::ResponseCancel, Ask(objects)) << "then none is left";
}

TEST_F(SelectObjects, TheRequestIsRecorded) {
    std::vector<NXObject*> objects;
    Ask(objects);
    ASSERT_EQ(1u, host::SelectionRequests().size()) << "one selection dialog was shown";
    const host::SelectionRequest& r = host::SelectionRequests()[0];
    EXPECT_EQ("选择需要设置为同一组的实体", r.message) << "the message";
    EXPECT_EQ("设置组", r.title) << "the title";
    EXPECT_EQ(Selection::SelectionScopeWorkPart, r.scope) << "the scope";
    EXPECT_EQ(Selection::SelectionActionClearAndEnableSpecific, r.action) << "the action";
    EXPECT_FALSE(r.includeFeatures) << "include features";
    EXPECT_FALSE(r.keepHighlighted) << "keep highlighted";
    ASSERT_EQ(1u, r.masks.size()) << "one mask entry";
    EXPECT_EQ(70, r.masks[0].Type) << "UF_solid_type";
    EXPECT_EQ(0, r.masks[0].Subtype) << "subtype 0";
    EXPECT_EQ(36, r.masks[0].SolidBodySubtype) << "UF_UI_SEL_FEATURE_SOLID_BODY";
}

TEST_F(SelectObjects, ABodyUnderAFaceMaskIsLeftOut) {
    masks_.assign(1, Selection::MaskTriple(70, 2, 20));
    host::QueueSelectionAnswer(Selection::ResponseOk, {1001});
    std::vector<NXObject*> objects;
    EXPECT_EQ(Selection::ResponseOk, Ask(objects));
    EXPECT_TRUE(objects.empty()) << "NX: a face mask lets no body be picked";
}

TEST_F(SelectObjects, SelectTaggedObjectsAnswersTheSameWay) {
    host::QueueSelectionAnswer(Selection::ResponseObjectSelected, {1004});
    std::vector<TaggedObject*> objects;
    Selection::Response response = NXOpen::UI::GetUI()->SelectionManager()->SelectTaggedObjects(
        "选择", "选择", Selection::SelectionScopeWorkPart, Selection::SelectionActionClearAndEnableSpecific, false, true, masks_, objects);
    EXPECT_EQ(Selection::ResponseObjectSelected, response) << "the queued response";
    EXPECT_EQ(std::vector<TaggedObject*>{Body(1004)}, objects) << "the body answered";
    EXPECT_TRUE(host::SelectionRequests().back().keepHighlighted) << "the flag is recorded";
}

TEST_F(SelectObjects, OverloadWithoutAMaskIsRecordedAsEnableAll) {
    std::vector<NXObject*> objects;
    NXOpen::UI::GetUI()->SelectionManager()->SelectObjects("选择", "选择", Selection::SelectionScopeUseDefault, true, false, objects);
    EXPECT_EQ(Selection::SelectionActionEnableAll, host::SelectionRequests().back().action) << "host choice: no mask means every type";
    EXPECT_TRUE(host::SelectionRequests().back().masks.empty()) << "host choice: recorded with an empty mask";
    EXPECT_TRUE(host::SelectionRequests().back().includeFeatures) << "the flag is recorded";
}

TEST_F(SelectObjects, AnAnswerNamingNoBodyIsRefused) {
    EXPECT_THROW(host::QueueSelectionAnswer(Selection::ResponseOk, {4711}), std::invalid_argument)
        << "host: the work part has no body 4711";
}

// A part file may name a body's faces and edges; a designer can pick them where the dialog's mask
// lets him, and nowhere else, as in NX.
class SelectFacesAndEdges : public SelectObjects {
protected:
    void SetUp() override {
        UiTest::SetUp();
        std::string part = kSmallMould;
        const std::string first = "\"rotate\": [0, 0, 0]\n    },";
        part.replace(part.find(first), first.size(),
                     "\"rotate\": [0, 0, 0],\n      \"faces\": [5001, 5003],\n      \"edges\": [5002]\n    },");
        LoadPart(part);
    }

    Selection::Response AskWith(Selection::SelectionAction action, std::vector<Selection::MaskTriple> masks,
                                std::vector<NXObject*>& objects) {
        return NXOpen::UI::GetUI()->SelectionManager()->SelectObjects("选择", "选择", Selection::SelectionScopeWorkPart,
                                                                       action, false, false, masks, objects);
    }
};

TEST_F(SelectFacesAndEdges, TheSolidBodyMaskLeavesFacesAndEdgesOut) {
    host::QueueSelectionAnswer(Selection::ResponseOk, {5001, 1002, 5002});
    std::vector<NXObject*> objects;
    EXPECT_EQ(Selection::ResponseOk, AskWith(Selection::SelectionActionClearAndEnableSpecific, {{70, 0, 36}}, objects));
    EXPECT_EQ(std::vector<NXObject*>{Body(1002)}, objects) << "NX: only what the mask takes";
}

TEST_F(SelectFacesAndEdges, AFaceMaskTakesFacesOnly) {
    host::QueueSelectionAnswer(Selection::ResponseOk, {5001, 1002, 5002, 5003});
    std::vector<NXObject*> objects;
    AskWith(Selection::SelectionActionClearAndEnableSpecific, {{70, 0, 20}}, objects);
    ASSERT_EQ(2u, objects.size());
    EXPECT_EQ(5001u, objects[0]->Tag());
    EXPECT_EQ(5003u, objects[1]->Tag());
    EXPECT_EQ(nullptr, dynamic_cast<NXOpen::Body*>(objects[0])) << "a face is no body";
    int type = 0, subtype = 0;
    UF_initialize();
    EXPECT_EQ(0, UF_OBJ_ask_type_and_subtype(5002, &type, &subtype));
    EXPECT_EQ(70, type);
    EXPECT_EQ(3, subtype) << "UF_solid_edge_subtype";
}

TEST_F(SelectFacesAndEdges, EnableAllTakesEverythingAndDisableSpecificTheRest) {
    host::QueueSelectionAnswer(Selection::ResponseOk, {5001, 1002, 5002});
    host::QueueSelectionAnswer(Selection::ResponseOk, {5001, 1002, 5002});
    std::vector<NXObject*> objects;
    AskWith(Selection::SelectionActionEnableAll, {}, objects);
    EXPECT_EQ(3u, objects.size());
    AskWith(Selection::SelectionActionAllAndDisableSpecific, {{70, 0, 1}}, objects);
    ASSERT_EQ(2u, objects.size()) << "the edge is disabled";
    EXPECT_EQ(5001u, objects[0]->Tag());
}

TEST_F(SelectFacesAndEdges, AnAnswerMayNameOnlyObjectsOfTheWorkPart) {
    EXPECT_THROW(host::QueueSelectionAnswer(Selection::ResponseOk, {5009}), std::invalid_argument);
}

}  // namespace
