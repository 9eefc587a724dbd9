// The records' lookups (a string attribute of an NX object, a name's place in the configured name
// order), and exchanging two records.

#include "stdparts/StdPartRecords.h"

#include <algorithm>

#include <NXOpen/NXObject.hxx>
#include <uf.h>
#include <uf_attr.h>

#include "shell/Vornadel.h"

bool ReadStringAttribute(NXOpen::NXObject* object, const std::string& title, std::string& value)
{
    UF_initialize();
    if (!object->HasUserAttribute(title.c_str(), NXOpen::NXObject::AttributeTypeString, -1))
        return false;

    UF_ATTR_value_t read;
    read.type = 0;
    read.value.string = NULL;
    // The return code is not checked on purpose: a failed read leaves the type sentinel at 0.
    UF_ATTR_read_value(object->Tag(), const_cast<char*>(title.c_str()), UF_ATTR_any, &read);
    if (read.type == UF_ATTR_reference && read.value.reference != NULL)
        UF_free(read.value.reference);  // a reference is text too, but not a string value
    if (read.type != UF_ATTR_string)
        return false;
    if (read.value.string != NULL) {
        value = read.value.string;
        UF_free(read.value.string);
    } else {
        value.clear();
    }
    return true;
}

int Vornadel::GetStringValueIndex(std::vector<std::string>& list, const std::string& value)
{
    for (std::vector<std::string>::size_type i = 0; i < list.size(); ++i) {
        if (list[i] == value)
            return static_cast<int>(i);
    }
    return kNotListed;
}

void StandardPartParam::swap(StandardPartParam& other)
{
    std::swap(bodyInfo, other.bodyInfo);
    name.swap(other.name);
    type.swap(other.type);
    brand.swap(other.brand);
    material.swap(other.material);
    heatTreatment.swap(other.heatTreatment);
    supplier.swap(other.supplier);
    std::swap(quantity, other.quantity);
    leadTime.swap(other.leadTime);
    status.swap(other.status);
    modifyDate.swap(other.modifyDate);
    remark.swap(other.remark);
    stdPartId.swap(other.stdPartId);
    groupId.swap(other.groupId);
    std::swap(nameOrderIndex, other.nameOrderIndex);
}
