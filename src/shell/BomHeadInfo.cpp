#include "shell/BomHeadInfo.h"

#include <NXOpen/NXObject.hxx>
#include <NXOpen/Part.hxx>

namespace {

const char* const kTitles[BomHeadInfo::FieldCount] = {
    "订单编号", "ERP编号", "产品材质", "模具编号", "模具吨位", "产品编号",
    "客户名称", "产品厚度", "模具类型", "设计担当", "产品名称",
};

}  // namespace

std::string& BomHeadInfo::Field(int i)
{
    std::string* const fields[FieldCount] = {
        &orderNo, &erpNo, &productMaterial, &mouldNo, &mouldTonnage, &productNo,
        &customerName, &productThickness, &mouldType, &designer, &productName,
    };
    return *fields[i];
}

const char* BomHeadInfo::Title(int i)
{
    return kTitles[i];
}

bool BomHeadInfo::IsRequired(int i)
{
    return i != 0 && i != 1 && i != 5 && i != 10;
}

void BomHeadInfo::ReadFromPart(NXOpen::Part* part)
{
    for (int i = 0; i < FieldCount; ++i) {
        // Only a string attribute counts: an integer "订单编号" leaves the field empty.
        if (part->HasUserAttribute(kTitles[i], NXOpen::NXObject::AttributeTypeString, -1))
            Field(i) = part->GetStringUserAttribute(kTitles[i], -1).GetLocaleText();
        else
            Field(i).clear();
    }
}
