// NXObject::DeleteUserAttribute takes Update::Option last: the number 0 does not convert to it.
#include <NXOpen/NXObject.hxx>

void Ungroup(NXOpen::NXObject *body) {
#ifdef NXAPI_REJECTED
    body->DeleteUserAttribute(NXOpen::NXObject::AttributeTypeString, "组ID", true, 0);
#else
    body->DeleteUserAttribute(NXOpen::NXObject::AttributeTypeString, "组ID", true, NXOpen::Update::OptionNow);
#endif
}
