#include "config/ConfigLocations.h"

#include <vector>

#include <uf.h>

#include "platform/Files.h"
#include "platform/ReadConfigFile.h"

namespace {

// Text mode drops the carriage return of a CRLF line end.
std::string DropCarriageReturn(const std::string& line)
{
    if (!line.empty() && line[line.size() - 1] == '\r')
        return line.substr(0, line.size() - 1);
    return line;
}

// Trims the space character (byte 32) only; tabs stay.
std::string TrimSpaces(const std::string& text)
{
    std::string::size_type first = text.find_first_not_of(' ');
    if (first == std::string::npos)
        return std::string();
    std::string::size_type last = text.find_last_not_of(' ');
    return text.substr(first, last - first + 1);
}

bool IsSwitchedOn(const std::string& flag)
{
    return flag == "Y" || flag == "y";
}

}  // namespace

bool FileExists(const std::string& path)
{
    return platform::PathExists(path);
}

std::string GetConfigFolder()
{
    if (UF_is_initialized() == 0)
        UF_initialize();
    char* root = NULL;
    UF_translate_variable("VDConfig", &root);
    if (root == NULL)
        return std::string();

    std::string result = std::string(root) + "\\config";
    std::string selector = std::string(root) + "\\config\\standard.csv";
    if (!FileExists(selector))
        return result;

    ReadConfigFile table;
    if (!table.OpenConfigFile(selector))
        return result;
    std::vector<std::string> names = table.GetColumnValue("文件夹名称");
    std::vector<std::string> flags = table.GetColumnValue("有效配置");
    if (names.empty() || flags.empty())
        return result;

    // Every switched-on row adds one level: rows A and B switched on give root\config\A\B. A flag
    // row beyond the last folder name counts as an empty name.
    for (std::vector<std::string>::size_type i = 0; i < flags.size(); ++i) {
        std::string name = i < names.size() ? names[i] : std::string();
        if (IsSwitchedOn(flags[i]) && !name.empty())
            result += "\\" + name;
    }
    table.CloseConfigFile();
    return result;
}

std::string GetCurrentLayerFile()
{
    std::string content;
    if (!platform::ReadWholeFile("D:\\MYTOOL\\config\\TK\\Layerwrk.txt", content))
        return std::string();

    std::string::size_type start = 0;
    while (start < content.size()) {
        std::string::size_type end = content.find('\n', start);
        if (end == std::string::npos)
            end = content.size();
        std::string line = DropCarriageReturn(content.substr(start, end - start));
        start = end + 1;
        if (line.find("CURRENT_LAYER_FILE") == std::string::npos)
            continue;
        std::string::size_type equals = line.find('=');
        return TrimSpaces(equals == std::string::npos ? line : line.substr(equals + 1));
    }
    return std::string();
}
