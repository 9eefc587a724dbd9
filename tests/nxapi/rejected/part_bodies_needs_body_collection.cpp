// NXOpen/Part.hxx only forward-declares BodyCollection: Bodies()->begin() needs
// NXOpen/BodyCollection.hxx.
#include <NXOpen/Part.hxx>
#ifndef NXAPI_REJECTED
#include <NXOpen/BodyCollection.hxx>
#endif

bool HasBodies(NXOpen::Part *part) {
    return part->Bodies()->begin() != part->Bodies()->end();
}
