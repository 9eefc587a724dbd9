#ifndef VORNADEL_STDPARTS_STDPARTRECORDS_H
#define VORNADEL_STDPARTS_STDPARTRECORDS_H

#include <stddef.h>
#include <string>
#include <vector>

class BodyInfo;
namespace NXOpen { class Body; }

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

    StandardPartParam() : bodyInfo(NULL), quantity(0), nameOrderIndex(99999) {}
};

// One tree node read back: its body (NULL when its data holds none), the texts of the 13
// columns, and, for a top-level node, the records of its children. The caller owns the record
// and its children.
struct NodeParam {
    NXOpen::Body* body;
    std::string columnText[13];
    std::vector<NodeParam*> children;

    NodeParam() : body(NULL) {}
};

#endif
