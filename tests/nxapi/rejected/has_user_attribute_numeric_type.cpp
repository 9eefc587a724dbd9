// NXObject::HasUserAttribute takes NXObject::AttributeType: the number 5 does not convert to it.
#include <NXOpen/NXObject.hxx>

bool IsMarked(NXOpen::NXObject *object) {
#ifdef NXAPI_REJECTED
    return object->HasUserAttribute("标准件", 5, -1);
#else
    return object->HasUserAttribute("标准件", NXOpen::NXObject::AttributeTypeString, -1);
#endif
}
