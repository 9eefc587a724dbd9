// The work part's bodies: part order, tags, display state (colour, layer, blank, highlight)
// through NX Open and the user-function calls.
#include <vector>

#include <gtest/gtest.h>

#include <NXOpen/Body.hxx>
#include <NXOpen/BodyCollection.hxx>
#include <NXOpen/NXException.hxx>
#include <NXOpen/Part.hxx>
#include <uf.h>
#include <uf_obj.h>
#include <uf_object_types.h>

#include "CoreFixture.hpp"

namespace {

class Bodies : public HostCoreTest {
protected:
    void SetUp() override {
        HostCoreTest::SetUp();
        part_ = LoadSmallMould();
        UF_initialize();
    }
    NXOpen::Part* part_ = nullptr;
};

TEST_F(Bodies, LeafIsThePartFilesLeaf) {
    EXPECT_STREQ("A100", part_->Leaf().GetLocaleText()) << "NX: the part's leaf name";
}

TEST_F(Bodies, BodiesComeInPartOrderWithTheirFileTags) {
    std::vector<tag_t> tags;
    NXOpen::BodyCollection* bodies = part_->Bodies();
    for (NXOpen::BodyCollection::iterator it = bodies->begin(); it != bodies->end(); ++it) tags.push_back((*it)->Tag());
    std::vector<tag_t> expected = {1001, 1002, 1003, 1004, 1005};
    EXPECT_EQ(expected, tags) << "NX: the collection walks the bodies in part order";
}

TEST_F(Bodies, PostIncrementGivesTheOldPosition) {
    NXOpen::BodyCollection::iterator it = part_->Bodies()->begin();
    NXOpen::BodyCollection::iterator old = it++;
    EXPECT_EQ(1001u, (*old)->Tag()) << "NX: it++ returns the position before";
    EXPECT_EQ(1002u, (*it)->Tag()) << "NX: and advances";
}

TEST_F(Bodies, EmptyPartHasNoBodies) {
    NXOpen::Part* empty = LoadPart(u8R"({"format": "vornadel-part/1", "leaf": "B1"})", "B1.part.json");
    EXPECT_TRUE(empty->Bodies()->begin() == empty->Bodies()->end()) << "NX: begin() == end() without bodies";
}

TEST_F(Bodies, BodiesAreSolidAndOwnedByThePart) {
    NXOpen::Body* body = Body(1001);
    EXPECT_TRUE(body->IsSolidBody()) << "NX: a solid body";
    EXPECT_FALSE(body->IsSheetBody()) << "NX: not a sheet body";
    EXPECT_EQ(part_, body->OwningPart()) << "NX: the body belongs to the work part";
}

// Host choice: every body is steel, 7.85e-6 kg/mm^3.
TEST_F(Bodies, DensityIsSteel) {
    EXPECT_DOUBLE_EQ(7.85e-6, Body(1001)->Density()) << "host choice: steel in kg/mm^3";
}

TEST_F(Bodies, DisplayStateComesFromThePartFile) {
    NXOpen::Body* body = Body(1005);
    EXPECT_EQ(30, body->Layer()) << "NX: the body's layer";
    EXPECT_EQ(6, body->Color()) << "NX: the body's colour";
    EXPECT_TRUE(body->IsBlanked()) << "NX: the body is blanked";
}

TEST_F(Bodies, BlankAndUnblank) {
    NXOpen::Body* body = Body(1001);
    body->Blank();
    EXPECT_TRUE(body->IsBlanked()) << "NX: Blank hides the body";
    body->Unblank();
    EXPECT_FALSE(body->IsBlanked()) << "NX: Unblank shows it again";
}

TEST_F(Bodies, UfSetBlankStatusBlanksAndUnblanks) {
    EXPECT_EQ(0, UF_OBJ_set_blank_status(1005, UF_OBJ_NOT_BLANKED)) << "NX: unblanking succeeds";
    EXPECT_FALSE(Body(1005)->IsBlanked()) << "NX: the body is shown";
    UF_OBJ_set_blank_status(1005, UF_OBJ_BLANKED);
    EXPECT_TRUE(Body(1005)->IsBlanked()) << "NX: the body is hidden";
}

TEST_F(Bodies, UfSetBlankStatusRefusesOtherValues) {
    EXPECT_NE(0, UF_OBJ_set_blank_status(1001, 2)) << "NX: 2 is not a blank status";
    EXPECT_FALSE(Body(1001)->IsBlanked()) << "NX: a refused call changes nothing";
    EXPECT_NE(0, UF_OBJ_set_blank_status(424242, UF_OBJ_BLANKED)) << "NX: an unknown tag is an error";
}

TEST_F(Bodies, ColourAndLayerCanBeChanged) {
    NXOpen::Body* body = Body(1001);
    body->SetColor(186);
    body->SetLayer(41);
    EXPECT_EQ(186, body->Color()) << "NX: SetColor sets the colour";
    EXPECT_EQ(41, body->Layer()) << "NX: SetLayer moves the body";
}

TEST_F(Bodies, ColourAndLayerOutOfRangeThrow) {
    NXOpen::Body* body = Body(1001);
    EXPECT_THROW(body->SetLayer(257), NXOpen::NXException) << "NX: layers are 1..256";
    EXPECT_THROW(body->SetColor(0), NXOpen::NXException) << "NX: colours are 1..216";
    EXPECT_EQ(10, body->Layer()) << "NX: a refused call changes nothing";
}

TEST_F(Bodies, HighlightIsReportedByDisplayProperties) {
    Body(1002)->Highlight();
    UF_OBJ_disp_props_t props;
    props.highlight_status = false;
    props.layer = -1;
    EXPECT_EQ(0, UF_OBJ_ask_display_properties(1002, &props)) << "NX: asking succeeds";
    EXPECT_TRUE(props.highlight_status) << "NX: the body is highlighted";
    EXPECT_EQ(10, props.layer) << "NX: its layer";
    EXPECT_EQ(6, props.color) << "NX: its colour";
    EXPECT_EQ(UF_OBJ_NOT_BLANKED, props.blank_status) << "NX: its blank status";
    Body(1002)->Unhighlight();
    UF_OBJ_ask_display_properties(1002, &props);
    EXPECT_FALSE(props.highlight_status) << "NX: Unhighlight removes the highlight";
}

TEST_F(Bodies, TypeOfABodyIsSolidBody) {
    int type = -1, subtype = -1;
    EXPECT_EQ(0, UF_OBJ_ask_type_and_subtype(1001, &type, &subtype)) << "NX: asking succeeds";
    EXPECT_EQ(UF_solid_type, type) << "NX: a body is of the solid type 70";
    EXPECT_EQ(UF_solid_body_subtype, subtype) << "NX: with the body subtype 0";
}

TEST_F(Bodies, TypeOfThePartIsPart) {
    int type = -1, subtype = -1;
    EXPECT_EQ(0, UF_OBJ_ask_type_and_subtype(part_->Tag(), &type, &subtype)) << "NX: asking succeeds";
    EXPECT_EQ(2, type) << "NX: a part is of the part type 2";
    EXPECT_EQ(0, subtype) << "NX: with subtype 0";
}

TEST_F(Bodies, FindObjectByJournalIdentifier) {
    NXOpen::Body* body = Body(1003);
    EXPECT_EQ(body, part_->Bodies()->FindObject(body->JournalIdentifier())) << "NX: found by its journal identifier";
    EXPECT_THROW(part_->Bodies()->FindObject("no such body"), NXOpen::NXException) << "NX: unknown identifiers throw";
}

TEST_F(Bodies, LoadingAnotherPartReplacesTheWorkPart) {
    LoadPart(u8R"({"format": "vornadel-part/1", "leaf": "B1"})", "B1.part.json");
    EXPECT_EQ(nullptr, host::FindBody(1001)) << "host: the old part's bodies are gone";
}

}  // namespace
