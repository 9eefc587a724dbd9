#ifndef VORNADEL_CONFIG_CONFIGTABLES_H
#define VORNADEL_CONFIG_CONFIGTABLES_H

#include <string>
#include <vector>

#include <NXOpen/NXString.hxx>

// Option lists of the seven head fields that offer choices, from "bom_head_config.csv"; each
// list in table order, without empty entries.
struct BomHeadConfig {
    std::vector<std::string> productMaterials;    // column "产品材质"
    std::vector<std::string> mouldNos;            // column "模具编号"
    std::vector<std::string> mouldTonnages;       // column "模具吨位"
    std::vector<std::string> customerNames;       // column "客户名称"
    std::vector<std::string> productThicknesses;  // column "产品厚度"
    std::vector<std::string> mouldTypes;          // column "模具类型"
    std::vector<std::string> designers;           // column "设计担当"
};

// Option lists of the standard-part columns and the order of standard-part names, from
// "std_part_config.csv"; each list in table order, without empty entries.
struct StdPartConfig {
    std::vector<std::string> names;           // column "标准件名称"
    std::vector<std::string> types;           // column "标准件类型"
    std::vector<std::string> brands;          // column "标准件品牌"
    std::vector<std::string> materials;       // column "标准件材质"
    std::vector<std::string> heatTreatments;  // column "标准件热处理"
    std::vector<std::string> suppliers;       // column "标准件供应商"
    std::vector<std::string> leadTimes;       // column "标准件采购周期"
    std::vector<std::string> nameOrder;       // column "标准件名称顺序"
};

// The two missing-table messages of the configuration, each kept word for word:
// "配置表：<path> 不存在" and "配置文件：<path> 不存在！". Both throw std::exception when nothing
// exists at path and return otherwise.
void ThrowIfTableMissing(const std::string& path);
void ThrowIfFileMissing(const std::string& path);

// Fill the record from its table. Throw std::exception with "配置文件：<path> 不存在！" when the
// table does not exist. A column the table lacks gives an empty list.
void ReadBomHeadConfig(BomHeadConfig& config, const std::string& path);
void ReadStdPartConfig(StdPartConfig& config, const std::string& path);

// A copy of list without its empty strings, order kept.
std::vector<std::string> RemoveEmpty(const std::vector<std::string>& list);

// One NXString per element, built from the narrow text as locale text (to fill list items).
std::vector<NXOpen::NXString> ToNXStrings(const std::vector<std::string>& list);

// Makes value the first value of the column columnName and rewrites the table; a column holding
// only its name gets value appended. A table without that column is rewritten with its content
// unchanged; a missing table becomes an empty file.
void SetConfigValue(const std::string& path, const std::string& columnName, const std::string& value);

// Makes values the whole column columnName and rewrites the table.
void SetConfigColumn(const std::string& path, const std::string& columnName, const std::vector<std::string>& values);

#endif
