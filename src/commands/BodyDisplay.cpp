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

// Shows the body when it is of the kind asked for (showModified: a body of the modification
// colour; else any other body) and hides it otherwise.
void ShowByColour(NXOpen::Body* body, int modifyColour, bool showModified)
{
    if ((body->Color() == modifyColour) == showModified)
        body->Unblank();
    else
        body->Blank();
}

// The pass over the snapshot: each record's own body, then its children's bodies. Every record
// has a body: the tree builder gives one to every node.
void ShowByColour(std::vector<NodeParam*>& records, int modifyColour, bool showModified)
{
    for (std::vector<NodeParam*>::size_type r = 0; r < records.size(); ++r) {
        ShowByColour(records[r]->body, modifyColour, showModified);
        for (std::vector<NodeParam*>::size_type c = 0; c < records[r]->children.size(); ++c)
            ShowByColour(records[r]->children[c]->body, modifyColour, showModified);
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
