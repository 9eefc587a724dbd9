#include "config/ConfigTables.h"

#include <stdexcept>

#include "config/ConfigLocations.h"
#include "platform/Files.h"
#include "platform/ReadConfigFile.h"

namespace {

typedef std::vector<std::string> Column;  // the column name, then its values

// The whole table as columns. A table that cannot be read gives no columns.
std::vector<Column> ReadColumns(const std::string& path)
{
    ReadConfigFile table;
    table.OpenConfigFile(path);
    std::vector<std::string> names = table.GetColumnNames();
    std::vector<std::vector<std::string> > rows = table.GetColumnValues();
    table.CloseConfigFile();

    // Columns are taken by position, so that two columns of the same name both keep their cells.
    std::vector<Column> columns(names.size());
    for (std::vector<Column>::size_type c = 0; c < names.size(); ++c) {
        columns[c].push_back(names[c]);
        for (std::vector<std::vector<std::string> >::size_type r = 0; r < rows.size(); ++r)
            columns[c].push_back(c < rows[r].size() ? rows[r][c] : std::string());
    }
    return columns;
}

// A cell as the table holds it. A value with a comma, a double quote or a line break is quoted
// (RFC 4180) so that it reads back unchanged; every other value is written as it stands.
std::string CsvCell(const std::string& value)
{
    if (value.find_first_of(",\"\r\n") == std::string::npos)
        return value;
    std::string quoted = "\"";
    for (std::string::size_type i = 0; i < value.size(); ++i) {
        if (value[i] == '"')
            quoted += '"';
        quoted += value[i];
    }
    return quoted + "\"";
}

// Writes the columns side by side, one line per row up to the longest column. Every cell is
// followed by a comma, so every line ends with one: the form the tables have always had, which
// the reader takes without an extra column. Lines end with CRLF. A table that cannot be written
// stays as it was.
void WriteColumns(const std::string& path, const std::vector<Column>& columns)
{
    Column::size_type rows = 0;
    for (std::vector<Column>::size_type c = 0; c < columns.size(); ++c)
        if (columns[c].size() > rows)
            rows = columns[c].size();

    std::string text;
    for (Column::size_type r = 0; r < rows; ++r) {
        for (std::vector<Column>::size_type c = 0; c < columns.size(); ++c) {
            if (r < columns[c].size())
                text += CsvCell(columns[c][r]);
            text += ",";
        }
        text += "\r\n";
    }
    platform::ReplaceFileBytes(path, text);
}

}  // namespace

void ThrowIfTableMissing(const std::string& path)
{
    if (!FileExists(path))
        throw std::runtime_error("配置表：" + path + " 不存在");
}

void ThrowIfFileMissing(const std::string& path)
{
    if (!FileExists(path))
        throw std::runtime_error("配置文件：" + path + " 不存在！");
}

std::vector<std::string> RemoveEmpty(const std::vector<std::string>& list)
{
    std::vector<std::string> result;
    for (std::vector<std::string>::size_type i = 0; i < list.size(); ++i)
        if (!list[i].empty())
            result.push_back(list[i]);
    return result;
}

std::vector<NXOpen::NXString> ToNXStrings(const std::vector<std::string>& list)
{
    std::vector<NXOpen::NXString> result;
    for (std::vector<std::string>::size_type i = 0; i < list.size(); ++i)
        result.push_back(NXOpen::NXString(list[i], NXOpen::NXString::Locale));
    return result;
}

void ReadBomHeadConfig(BomHeadConfig& config, const std::string& path)
{
    ThrowIfFileMissing(path);
    ReadConfigFile table;
    table.OpenConfigFile(path);
    config.productMaterials = RemoveEmpty(table.GetColumnValue("产品材质"));
    config.mouldNos = RemoveEmpty(table.GetColumnValue("模具编号"));
    config.mouldTonnages = RemoveEmpty(table.GetColumnValue("模具吨位"));
    config.customerNames = RemoveEmpty(table.GetColumnValue("客户名称"));
    config.productThicknesses = RemoveEmpty(table.GetColumnValue("产品厚度"));
    config.mouldTypes = RemoveEmpty(table.GetColumnValue("模具类型"));
    config.designers = RemoveEmpty(table.GetColumnValue("设计担当"));
    table.CloseConfigFile();
}

void ReadStdPartConfig(StdPartConfig& config, const std::string& path)
{
    ThrowIfFileMissing(path);
    ReadConfigFile table;
    table.OpenConfigFile(path);
    config.names = RemoveEmpty(table.GetColumnValue("标准件名称"));
    config.types = RemoveEmpty(table.GetColumnValue("标准件类型"));
    config.brands = RemoveEmpty(table.GetColumnValue("标准件品牌"));
    config.materials = RemoveEmpty(table.GetColumnValue("标准件材质"));
    config.heatTreatments = RemoveEmpty(table.GetColumnValue("标准件热处理"));
    config.suppliers = RemoveEmpty(table.GetColumnValue("标准件供应商"));
    config.leadTimes = RemoveEmpty(table.GetColumnValue("标准件采购周期"));
    config.nameOrder = RemoveEmpty(table.GetColumnValue("标准件名称顺序"));
    table.CloseConfigFile();
}

void SetConfigValue(const std::string& path, const std::string& columnName, const std::string& value)
{
    std::vector<Column> columns = ReadColumns(path);
    for (std::vector<Column>::size_type c = 0; c < columns.size(); ++c) {
        if (columns[c][0] != columnName)
            continue;
        if (columns[c].size() == 1)
            columns[c].push_back(value);
        else
            columns[c][1] = value;
    }
    WriteColumns(path, columns);
}

void SetConfigColumn(const std::string& path, const std::string& columnName, const std::vector<std::string>& values)
{
    std::vector<Column> columns = ReadColumns(path);
    for (std::vector<Column>::size_type c = 0; c < columns.size(); ++c) {
        if (columns[c][0] != columnName)
            continue;
        columns[c].resize(1);
        columns[c].insert(columns[c].end(), values.begin(), values.end());
    }
    WriteColumns(path, columns);
}
