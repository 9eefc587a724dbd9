// NXOpen/Session.hxx only forward-declares PartCollection: Parts()->Work() needs
// NXOpen/PartCollection.hxx.
#include <NXOpen/Session.hxx>
#ifndef NXAPI_REJECTED
#include <NXOpen/PartCollection.hxx>
#endif

bool HasWorkPart() {
    return NXOpen::Session::GetSession()->Parts()->Work() != NULL;
}
