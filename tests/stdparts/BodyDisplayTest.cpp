// What the designer sees of the standard-part bodies: the standard-part layers brought up with
// their objects unblanked, and the two passes that split the bodies by the modification colour.

#include "StdPartsFixture.hpp"

#include <NXOpen/Layer_LayerManager.hxx>
#include <NXOpen/Part.hxx>

#include "commands/BodyDisplay.h"

using namespace stdparts_test;

namespace {

class BodyDisplay : public StdPartsFixture {
protected:
    static NXOpen::Layer::State State(int layer) { return host::WorkPart()->Layers()->GetState(layer); }

    static std::vector<NXOpen::Layer::State> AllStates()
    {
        std::vector<NXOpen::Layer::State> states;
        for (int layer = 1; layer <= 256; ++layer)
            states.push_back(State(layer));
        return states;
    }

    // Screws 1001 (normal) and 1002 (modified) make one group with 1001 first; pins 1003
    // (modified) and 1004 (normal) make another with 1003 first.
    void LoadMixedColours()
    {
        PartBody screw{1001, ScrewM6x20()};
        PartBody modifiedScrew{1002, ScrewM6x20()};
        modifiedScrew.color = 186;
        Attributes pin = Marked({{"名称", "顶针"}, {"类型", "Φ4×200"}});
        PartBody modifiedPin{1003, pin};
        modifiedPin.color = 186;
        modifiedPin.solid = Stack({{8, 4}, {4, 200}});
        PartBody otherPin{1004, pin};
        otherPin.solid = modifiedPin.solid;
        otherPin.layer = 62;
        LoadBodies({screw, modifiedScrew, modifiedPin, otherPin});
    }

    static std::vector<bool> Blanked(const std::vector<unsigned>& tags)
    {
        std::vector<bool> blanked;
        for (unsigned tag : tags)
            blanked.push_back(Body(tag)->IsBlanked());
        return blanked;
    }
};

TEST_F(BodyDisplay, EmptyLayerListChangesNoLayerAndNoBlankFlag)
{
    PartBody blanked{1002, Marked()};
    blanked.blanked = true;
    LoadBodies({{1001, Marked()}, blanked}, 5, {{20, "visible"}, {30, "invisible"}});
    Vornadel dialog;
    dialog.stdPartLayers.clear();
    const std::vector<NXOpen::Layer::State> before = AllStates();
    dialog.ShowStdPartLayers();
    EXPECT_EQ(before, AllStates());
    EXPECT_TRUE(Body(1002)->IsBlanked());
}

TEST_F(BodyDisplay, OneLayerBecomesTheWorkLayerAndEveryOtherLayerInvisible)
{
    LoadBodies({{1001, Marked()}}, 61, {{20, "visible"}});
    Vornadel dialog;
    dialog.stdPartLayers = {62};
    dialog.ShowStdPartLayers();
    EXPECT_EQ(NXOpen::Layer::StateWorkLayer, State(62));
    for (int layer = 1; layer <= 256; ++layer) {
        if (layer != 62) {
            EXPECT_EQ(NXOpen::Layer::StateHidden, State(layer)) << "layer " << layer;
        }
    }
}

TEST_F(BodyDisplay, FurtherConfiguredLayersBecomeSelectable)
{
    LoadBodies({{1001, Marked()}}, 1, {{65, "invisible"}});
    Vornadel dialog;
    dialog.stdPartLayers = {63, 61, 65};
    dialog.ShowStdPartLayers();
    EXPECT_EQ(NXOpen::Layer::StateWorkLayer, State(63));
    EXPECT_EQ(NXOpen::Layer::StateSelectable, State(61));
    EXPECT_EQ(NXOpen::Layer::StateSelectable, State(65));
    EXPECT_EQ(NXOpen::Layer::StateHidden, State(1)) << "the former work layer";
    EXPECT_EQ(NXOpen::Layer::StateHidden, State(62));
}

TEST_F(BodyDisplay, WorkLayerListedAgainStaysTheWorkLayer)
{
    PartBody blanked{1001, Marked()};
    blanked.blanked = true;
    LoadBodies({blanked}, 1);
    Vornadel dialog;
    dialog.stdPartLayers = {61, 62, 61};
    dialog.ShowStdPartLayers();
    EXPECT_EQ(NXOpen::Layer::StateWorkLayer, State(61))
        << "host choice: making the work layer selectable fails, and the plug-in ignores the return code";
    EXPECT_EQ(NXOpen::Layer::StateSelectable, State(62));
    EXPECT_FALSE(Body(1001)->IsBlanked());
}

TEST_F(BodyDisplay, EverythingOnTheConfiguredLayersIsUnblanked)
{
    PartBody onWork{1001, {}};
    onWork.blanked = true;
    PartBody onSecond{1002, Marked()};
    onSecond.layer = 62;
    onSecond.blanked = true;
    PartBody elsewhere{1003, Marked()};
    elsewhere.layer = 20;
    elsewhere.blanked = true;
    LoadBodies({onWork, onSecond, elsewhere});
    Vornadel dialog;
    dialog.ShowStdPartLayers();
    EXPECT_EQ((std::vector<bool>{false, false, true}), Blanked({1001, 1002, 1003}))
        << "layers 61 and 62 are configured, 20 is not";
}

TEST_F(BodyDisplay, UnblankObjectsOnLayerTouchesOnlyThatLayer)
{
    PartBody a{1001, Marked()};
    a.blanked = true;
    PartBody b{1002, Marked()};
    b.layer = 62;
    b.blanked = true;
    LoadBodies({a, b});
    UnblankObjectsOnLayer(62);
    EXPECT_EQ((std::vector<bool>{true, false}), Blanked({1001, 1002}));
}

TEST_F(BodyDisplay, FirstDisplayBringsTheStandardPartLayersUpBeforeBuildingTheTree)
{
    PartBody blanked{1002, Marked({{"名称", "顶针"}})};
    blanked.layer = 62;
    blanked.blanked = true;
    LoadBodies({{1001, ScrewM6x20()}, blanked}, 1, {{62, "invisible"}});
    EXPECT_EQ((std::vector<std::string>{"001 1001", "002 1002"}), Outline(FirstDisplayRows()))
        << "layer 62 made selectable and its body unblanked before the collection";
    EXPECT_EQ(NXOpen::Layer::StateWorkLayer, State(61));
    EXPECT_EQ(NXOpen::Layer::StateSelectable, State(62));
    EXPECT_EQ(NXOpen::Layer::StateHidden, State(1));
}

TEST_F(BodyDisplay, UnmodifiedPassHidesModifiedBodiesAndShowsTheOthers)
{
    LoadMixedColours();
    WithDialog([](Vornadel& dialog, host::LiveDialog&) {
        ASSERT_EQ((std::vector<std::string>{"001 1001", "  001 1001", "  001 1002", "002 1003", "  002 1003", "  002 1004"}),
                  Outline(Rows(dialog.tree_control0)));
        Body(1004)->Blank();
        dialog.ShowOnlyUnmodifiedBodies();
        EXPECT_EQ((std::vector<bool>{false, true, true, false}), Blanked({1001, 1002, 1003, 1004}))
            << "children follow the rule whatever their group's first body is";
        EXPECT_EQ((std::vector<std::string>{"001 1001", "002 1004"}), Outline(Rows(dialog.tree_control0)))
            << "the tree is rebuilt from the unblanked bodies";
    });
}

TEST_F(BodyDisplay, ModifiedPassShowsOnlyTheModifiedBodies)
{
    LoadMixedColours();
    WithDialog([](Vornadel& dialog, host::LiveDialog&) {
        dialog.ShowOnlyModifiedBodies();
        EXPECT_EQ((std::vector<bool>{true, false, false, true}), Blanked({1001, 1002, 1003, 1004}));
        EXPECT_EQ((std::vector<std::string>{"001 1002", "002 1003"}), Outline(Rows(dialog.tree_control0)));
    });
}

TEST_F(BodyDisplay, ColourPassesKeepTheSnapshot)
{
    LoadMixedColours();
    WithDialog([](Vornadel& dialog, host::LiveDialog&) {
        const std::vector<NodeParam*> snapshot = dialog.initialParams;
        dialog.ShowOnlyModifiedBodies();
        dialog.ShowOnlyUnmodifiedBodies();
        EXPECT_EQ(snapshot, dialog.initialParams);
    });
}

TEST_F(BodyDisplay, RepeatedPassesGiveTheSameResult)
{
    LoadMixedColours();
    WithDialog([](Vornadel& dialog, host::LiveDialog&) {
        dialog.ShowOnlyModifiedBodies();
        const std::vector<std::string> once = Outline(Rows(dialog.tree_control0));
        dialog.ShowOnlyModifiedBodies();
        EXPECT_EQ(once, Outline(Rows(dialog.tree_control0)));
        EXPECT_EQ((std::vector<bool>{true, false, false, true}), Blanked({1001, 1002, 1003, 1004}));
    });
}

TEST_F(BodyDisplay, UnmodifiedPassThenShowingTheLayersAndRestoringBringsEverythingBack)
{
    LoadMixedColours();
    WithDialog([](Vornadel& dialog, host::LiveDialog&) {
        const std::vector<Row> full = Rows(dialog.tree_control0);
        dialog.ShowOnlyUnmodifiedBodies();
        // What the show-layers button does: the layers, then the tree from the snapshot.
        dialog.ShowStdPartLayers();
        dialog.CreateStdNodes(dialog.initialParams);
        EXPECT_EQ((std::vector<bool>{false, false, false, false}), Blanked({1001, 1002, 1003, 1004}));
        const std::vector<Row> restored = Rows(dialog.tree_control0);
        EXPECT_EQ(Outline(full), Outline(restored)) << "the full list of the last full build";
        ASSERT_EQ(full.size(), restored.size());
        for (size_t i = 0; i < full.size(); ++i)
            EXPECT_EQ(full[i].text, restored[i].text) << "row " << i;
    });
}

}  // namespace
