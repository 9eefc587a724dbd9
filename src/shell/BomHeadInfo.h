#ifndef VORNADEL_SHELL_BOMHEADINFO_H
#define VORNADEL_SHELL_BOMHEADINFO_H

#include <string>

namespace NXOpen { class Part; }

// The eleven head fields of the BOM, each an NX string attribute of the work part and the text of
// one string block of the dialog. Fields in this order:
//   orderNo "订单编号" string03, erpNo "ERP编号" string02, productMaterial "产品材质" string031,
//   mouldNo "模具编号" string01, mouldTonnage "模具吨位" string032, productNo "产品编号" string033,
//   customerName "客户名称" string0, productThickness "产品厚度" string034,
//   mouldType "模具类型" string035, designer "设计担当" string036, productName "产品名称" string04.
struct BomHeadInfo {
    enum { FieldCount = 11 };

    std::string orderNo;
    std::string erpNo;
    std::string productMaterial;
    std::string mouldNo;
    std::string mouldTonnage;
    std::string productNo;
    std::string customerName;
    std::string productThickness;
    std::string mouldType;
    std::string designer;
    std::string productName;

    // Field i (0..10) in the order above.
    std::string& Field(int i);

    // The attribute title of field i (0..10) on the work part, e.g. "订单编号" for field 0.
    static const char* Title(int i);

    // Whether field i must not be empty when the BOM is saved: every field but the order,
    // ERP and product numbers and the product name.
    static bool IsRequired(int i);

    // Fills every field from the part's string attribute of its title; a missing attribute, or
    // one of another type under that title, leaves the field empty.
    void ReadFromPart(NXOpen::Part* part);
};

#endif
