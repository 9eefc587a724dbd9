// What the designer sees of the standard-part bodies: the standard-part layers brought up with
// everything on them unblanked, and the bodies split by the modification colour.

#include "commands/BodyDisplay.h"

#include <NXOpen/Body.hxx>
#include <uf.h>
#include <uf_layer.h>
#include <uf_obj.h>

#include "shell/Vornadel.h"

void UnblankObjectsOnLayer(int layer)
{
    UF_initialize();
    tag_t object = NULL_TAG;
    // Return codes are not checked on purpose: the walk ends with the null object.
    for (UF_LAYER_cycle_by_layer(layer, &object); object != NULL_TAG; UF_LAYER_cycle_by_layer(layer, &object))
        UF_OBJ_set_blank_status(object, UF_OBJ_NOT_BLANKED);
}

void Vornadel::ShowStdPartLayers()
{
    if (UF_is_initialized() == 0)
        UF_initialize();
    // The layer calls' return codes are not checked on purpose: a layer listed twice, or the
    // work layer listed again, simply gets its calls again.
    for (std::vector<int>::size_type i = 0; i < stdPartLayers.size(); ++i) {
        const int layer = stdPartLayers[i];
        if (i == 0) {
            UF_LAYER_set_status(layer, UF_LAYER_WORK_LAYER);
            UF_LAYER_set_all_but_work(UF_LAYER_INACTIVE_LAYER);
        } else {
            UF_LAYER_set_status(layer, UF_LAYER_ACTIVE_LAYER);
        }
        UnblankObjectsOnLayer(layer);
    }
}

namespace {

// Shows the bodies whose colour is (show true) or is not (show false) the modification colour
// and hides the others: each record's own body, then each child's. Every snapshot record has a
// body: the tree builder gives one to every node.
void ShowByColour(std::vector<NodeParam*>& records, int modifyColour, bool showModified)
{
    for (std::vector<NodeParam*>::size_type r = 0; r < records.size(); ++r) {
        std::vector<NXOpen::Body*> bodies(1, records[r]->body);
        for (std::vector<NodeParam*>::size_type c = 0; c < records[r]->children.size(); ++c)
            bodies.push_back(records[r]->children[c]->body);
        for (std::vector<NXOpen::Body*>::size_type b = 0; b < bodies.size(); ++b) {
            if ((bodies[b]->Color() == modifyColour) == showModified)
                bodies[b]->Unblank();
            else
                bodies[b]->Blank();
        }
    }
}

}  // namespace

void Vornadel::ShowOnlyUnmodifiedBodies()
{
    ShowByColour(initialParams, modifyColour, false);
    CreatStdPartNodes(true, false);
}

void Vornadel::ShowOnlyModifiedBodies()
{
    ShowByColour(initialParams, modifyColour, true);
    CreatStdPartNodes(true, false);
}
