// Layers of the work part: one work layer; selectable, visible-only and invisible layers; the
// NX Open states and the user-function statuses, which count differently; walking a layer.
#include <vector>

#include <gtest/gtest.h>

#include <NXOpen/BasePart.hxx>
#include <NXOpen/Layer_LayerManager.hxx>
#include <NXOpen/NXException.hxx>
#include <NXOpen/Part.hxx>
#include <uf.h>
#include <uf_layer.h>

#include "CoreFixture.hpp"

namespace {

using NXOpen::Layer::LayerManager;

class Layers : public HostCoreTest {
protected:
    void SetUp() override {
        HostCoreTest::SetUp();
        layers_ = LoadSmallMould()->Layers();
        UF_initialize();
    }

    static int UfStatus(int layer) {
        int status = -1;
        UF_LAYER_ask_status(layer, &status);
        return status;
    }

    // Every object UF_LAYER_cycle_by_layer gives for a layer, in order.
    static std::vector<tag_t> Cycle(int layer) {
        std::vector<tag_t> tags;
        tag_t object = NULL_TAG;
        do {
            if (UF_LAYER_cycle_by_layer(layer, &object) != 0) break;
            if (object != NULL_TAG) tags.push_back(object);
        } while (object != NULL_TAG && tags.size() < 100);
        return tags;
    }

    LayerManager* layers_ = nullptr;
};

TEST_F(Layers, TheWorkLayerOfThePartFileIsWork) {
    EXPECT_EQ(1, layers_->WorkLayer()) << "NX: the part's work layer";
    EXPECT_EQ(NXOpen::Layer::StateWorkLayer, layers_->GetState(1)) << "NX: its state is StateWorkLayer";
}

TEST_F(Layers, LayersNotListedAreSelectable) {
    EXPECT_EQ(NXOpen::Layer::StateSelectable, layers_->GetState(10)) << "host: unlisted layers are selectable";
    EXPECT_EQ(NXOpen::Layer::StateSelectable, layers_->GetState(256)) << "host: unlisted layers are selectable";
}

TEST_F(Layers, ListedStatesAreVisibleAndHidden) {
    EXPECT_EQ(NXOpen::Layer::StateVisible, layers_->GetState(20)) << "NX: a visible-only layer";
    EXPECT_EQ(NXOpen::Layer::StateHidden, layers_->GetState(30)) << "NX: an invisible layer";
}

TEST_F(Layers, SetWorkLayerMakesTheOldWorkLayerSelectable) {
    layers_->SetWorkLayer(30);
    EXPECT_EQ(30, layers_->WorkLayer()) << "NX: the new work layer";
    EXPECT_EQ(NXOpen::Layer::StateWorkLayer, layers_->GetState(30)) << "NX: its state is work";
    EXPECT_EQ(NXOpen::Layer::StateSelectable, layers_->GetState(1)) << "NX: the old work layer becomes selectable";
}

TEST_F(Layers, SetStateWorkLayerMakesTheLayerWork) {
    layers_->SetState(20, NXOpen::Layer::StateWorkLayer);
    EXPECT_EQ(20, layers_->WorkLayer()) << "NX: StateWorkLayer makes the layer the work layer";
    EXPECT_EQ(NXOpen::Layer::StateSelectable, layers_->GetState(1)) << "NX: there is still exactly one work layer";
}

TEST_F(Layers, SetStateChangesAnotherLayer) {
    layers_->SetState(10, NXOpen::Layer::StateHidden);
    EXPECT_EQ(NXOpen::Layer::StateHidden, layers_->GetState(10)) << "NX: the layer is hidden";
}

// Host choice: the work layer's state changes only by making another layer the work layer.
TEST_F(Layers, SetStateOfTheWorkLayerToAnotherStateThrows) {
    EXPECT_THROW(layers_->SetState(1, NXOpen::Layer::StateHidden), NXOpen::NXException)
        << "host choice: the work layer cannot be hidden";
    EXPECT_EQ(NXOpen::Layer::StateWorkLayer, layers_->GetState(1)) << "host choice: it stays the work layer";
}

TEST_F(Layers, LayerOutside1To256Throws) {
    EXPECT_THROW(layers_->GetState(0), NXOpen::NXException) << "NX: layers are 1..256";
    EXPECT_THROW(layers_->SetWorkLayer(257), NXOpen::NXException) << "NX: layers are 1..256";
}

TEST_F(Layers, UfStatusesCountDifferentlyFromNXOpenStates) {
    EXPECT_EQ(UF_LAYER_WORK_LAYER, UfStatus(1)) << "NX: work is UF status 1 (NX Open state 0)";
    EXPECT_EQ(UF_LAYER_ACTIVE_LAYER, UfStatus(10)) << "NX: selectable is UF status 2 (NX Open state 1)";
    EXPECT_EQ(UF_LAYER_REFERENCE_LAYER, UfStatus(20)) << "NX: visible only is UF status 3 (NX Open state 2)";
    EXPECT_EQ(UF_LAYER_INACTIVE_LAYER, UfStatus(30)) << "NX: invisible is UF status 4 (NX Open state 3)";
}

TEST_F(Layers, UfSetStatusUsesTheUfNumbering) {
    UF_LAYER_set_status(10, UF_LAYER_REFERENCE_LAYER);
    UF_LAYER_set_status(20, UF_LAYER_INACTIVE_LAYER);
    UF_LAYER_set_status(30, UF_LAYER_ACTIVE_LAYER);
    EXPECT_EQ(NXOpen::Layer::StateVisible, layers_->GetState(10)) << "NX: UF status 3 is visible only";
    EXPECT_EQ(NXOpen::Layer::StateHidden, layers_->GetState(20)) << "NX: UF status 4 is invisible";
    EXPECT_EQ(NXOpen::Layer::StateSelectable, layers_->GetState(30)) << "NX: UF status 2 is selectable";
}

TEST_F(Layers, UfSetStatusWorkMakesTheLayerWork) {
    EXPECT_EQ(0, UF_LAYER_set_status(30, UF_LAYER_WORK_LAYER)) << "NX: making a layer work succeeds";
    EXPECT_EQ(30, layers_->WorkLayer()) << "NX: it is the work layer";
    EXPECT_EQ(NXOpen::Layer::StateSelectable, layers_->GetState(1)) << "NX: the old work layer becomes selectable";
    int work = 0;
    UF_LAYER_ask_work_layer(&work);
    EXPECT_EQ(30, work) << "NX: UF_LAYER_ask_work_layer agrees";
}

TEST_F(Layers, UfSetStatusOfTheWorkLayerFails) {
    EXPECT_NE(0, UF_LAYER_set_status(1, UF_LAYER_INACTIVE_LAYER)) << "host choice: the work layer keeps its status";
    EXPECT_EQ(1, layers_->WorkLayer()) << "host choice: nothing changed";
}

TEST_F(Layers, UfSetStatusRefusesBadLayerAndStatus) {
    EXPECT_NE(0, UF_LAYER_set_status(0, UF_LAYER_ACTIVE_LAYER)) << "NX: layer 0 does not exist";
    EXPECT_NE(0, UF_LAYER_set_status(257, UF_LAYER_ACTIVE_LAYER)) << "NX: layer 257 does not exist";
    EXPECT_NE(0, UF_LAYER_set_status(10, 5)) << "NX: 5 is not a layer status";
    EXPECT_EQ(NXOpen::Layer::StateSelectable, layers_->GetState(10)) << "NX: a refused call changes nothing";
}

TEST_F(Layers, SetAllButWorkLeavesTheWorkLayer) {
    UF_LAYER_set_status(10, UF_LAYER_WORK_LAYER);
    EXPECT_EQ(0, UF_LAYER_set_all_but_work(UF_LAYER_INACTIVE_LAYER)) << "NX: succeeds";
    EXPECT_EQ(NXOpen::Layer::StateWorkLayer, layers_->GetState(10)) << "NX: the work layer stays work";
    EXPECT_EQ(NXOpen::Layer::StateHidden, layers_->GetState(1)) << "NX: every other layer is invisible";
    EXPECT_EQ(NXOpen::Layer::StateHidden, layers_->GetState(20)) << "NX: every other layer is invisible";
    EXPECT_EQ(NXOpen::Layer::StateHidden, layers_->GetState(256)) << "NX: every other layer is invisible";
}

TEST_F(Layers, SetAllButWorkRefusesTheWorkStatus) {
    EXPECT_NE(0, UF_LAYER_set_all_but_work(UF_LAYER_WORK_LAYER)) << "NX: there is only one work layer";
    EXPECT_EQ(NXOpen::Layer::StateVisible, layers_->GetState(20)) << "NX: nothing changed";
}

TEST_F(Layers, CycleByLayerWalksTheBodiesOfALayerInPartOrderAndEndsWithNullTag) {
    std::vector<tag_t> expected = {1001, 1002};
    EXPECT_EQ(expected, Cycle(10)) << "NX: the objects on layer 10 in part order, then NULL_TAG";
}

TEST_F(Layers, CycleByLayerWalksBlankedBodiesToo) {
    std::vector<tag_t> expected = {1005};
    EXPECT_EQ(expected, Cycle(30)) << "NX: a blanked body is still on its layer";
}

TEST_F(Layers, CycleByLayerOfAnEmptyLayerEndsAtOnce) {
    tag_t object = NULL_TAG;
    EXPECT_EQ(0, UF_LAYER_cycle_by_layer(200, &object)) << "NX: walking an empty layer succeeds";
    EXPECT_EQ(NULL_TAG, object) << "NX: and gives NULL_TAG at once";
}

TEST_F(Layers, CycleByLayerFromAnObjectThatIsNoBodyOfThePartFails) {
    tag_t object = 424242;
    EXPECT_NE(0, UF_LAYER_cycle_by_layer(10, &object)) << "host: a walk goes on only from a body of the work part";
    EXPECT_EQ(424242u, object) << "host: a failed call leaves the tag alone";
}

// Host choice: layer 0 walks the layers objects can be selected on (work and selectable).
TEST_F(Layers, CycleByLayerZeroWalksTheSelectableLayers) {
    std::vector<tag_t> expected = {1001, 1002, 1004};
    EXPECT_EQ(expected, Cycle(0)) << "host choice: bodies on the work and selectable layers";
}

TEST_F(Layers, GetAllObjectsOnLayerListsItsBodies) {
    std::vector<NXOpen::NXObject*> objects = layers_->GetAllObjectsOnLayer(10);
    ASSERT_EQ(2u, objects.size()) << "NX: two bodies on layer 10";
    EXPECT_EQ(1001u, objects[0]->Tag()) << "host: in part order";
    EXPECT_EQ(1002u, objects[1]->Tag()) << "host: in part order";
}

}  // namespace
