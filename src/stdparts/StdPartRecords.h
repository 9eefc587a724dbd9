#ifndef VORNADEL_STDPARTS_STDPARTRECORDS_H
#define VORNADEL_STDPARTS_STDPARTRECORDS_H

#include <stddef.h>
#include <string>
#include <vector>

class BodyInfo;
namespace NXOpen { class Body; class NXObject; }

// Titles of the NX string user attributes that describe a standard part on its body.
namespace StdPartTitle {
const char* const Name = "名称";                  // column 1
const char* const Type = "类型";                  // column 2, model or size
const char* const Brand = "品牌";                 // column 3
const char* const Quantity = "数量";              // column 4, decimal text
const char* const Material = "材质";              // column 5
const char* const HeatTreatment = "热处理";       // column 6
const char* const Remark = "备注";                // column 7
const char* const Supplier = "供应商";            // column 8
const char* const LeadTime = "采购周期";          // column 9
const char* const Status = "状态";                // column 10
const char* const ModifyDate = "修改日期";        // column 11 (the column's title is "修改时间")
const char* const StdPartId = "标准件ID";         // column 12
const char* const GroupId = "组ID";               // not shown: bodies the designer grouped by hand
}

// A body is a standard part exactly when its mark "转图标识" reads "Y" (case and length exact).
const char* const kStdPartMark = "转图标识";
const char* const kStdPartMarkValue = "Y";

// The status of a body changed for a mould modification; such a body has the modification colour.
const char* const kModifiedStatus = "改模";

// Every node of the tree carries its body in its data container under this key.
const char* const kNodeDataKey = "Data";

// The tree's columns: 0 "序号" ... 12 "ID".
enum { kColumnCount = 13 };

// GetStringValueIndex's answer for a value the list does not hold.
enum { kNotListed = 99999 };

// One standard-part body as collected from the work part. The record refers to its BodyInfo
// and never deletes it.
struct StandardPartParam {
    BodyInfo* bodyInfo;
    std::string name;           // "名称"
    std::string type;           // "类型"
    std::string brand;          // "品牌"
    std::string material;       // "材质"
    std::string heatTreatment;  // "热处理"
    std::string supplier;       // "供应商"
    int quantity;               // atoi of "数量"; the counted quantity once the tree is built
    std::string leadTime;       // "采购周期"
    std::string status;         // "状态"; "改模" for a body of the modification colour
    std::string modifyDate;     // "修改日期"
    std::string remark;         // "备注"
    std::string stdPartId;      // "标准件ID"; a timestamp identifier when the body has none
    std::string groupId;        // "组ID"
    int nameOrderIndex;         // place of name in the configured name order; 99999 when absent

    StandardPartParam() : bodyInfo(NULL), quantity(0), nameOrderIndex(kNotListed) {}

    // Exchanges the contents with other without copying the texts.
    void swap(StandardPartParam& other);
};

// One tree node read back: its body (NULL when its data holds none), the texts of the 13
// columns, and, for a top-level node, the records of its children. The caller owns the record
// and its children.
struct NodeParam {
    NXOpen::Body* body;
    std::string columnText[kColumnCount];
    std::vector<NodeParam*> children;

    NodeParam() : body(NULL) {}
};

// Reads the string user attribute title of object into value and returns true. Returns false
// and leaves value untouched when the object has no such attribute or its value is not a string.
bool ReadStringAttribute(NXOpen::NXObject* object, const std::string& title, std::string& value);

#endif
