// The dialog's configuration, read once per run by the constructor in a fixed order.

#include <stdexcept>
#include <stdlib.h>

#include <NXOpen/Session.hxx>

#include "config/ConfigLocations.h"
#include "platform/Environment.h"
#include "platform/Files.h"
#include "platform/ReadConfigFile.h"
#include "shell/Vornadel.h"

namespace {

// Layers 1..256 of the layer table's column "标准件图层", in table order, repeats kept.
std::vector<int> ReadStdPartLayers(const std::string& path)
{
    ReadConfigFile table;
    table.OpenConfigFile(path);
    std::vector<std::string> cells = table.GetColumnValue("标准件图层");
    table.CloseConfigFile();

    std::vector<int> layers;
    for (std::vector<std::string>::size_type i = 0; i < cells.size(); ++i) {
        int layer = atoi(cells[i].c_str());
        if (layer >= 1 && layer <= 256)
            layers.push_back(layer);
    }
    return layers;
}

// The first value of "config.csv"'s column "改模颜色"; 186 when the column has no value.
int ReadModifyColour(const std::string& path)
{
    ReadConfigFile table;
    table.OpenConfigFile(path);
    std::vector<std::string> cells = table.GetColumnValue("改模颜色");
    table.CloseConfigFile();
    return cells.empty() ? 186 : atoi(cells[0].c_str());
}

}  // namespace

void Vornadel::ReadConfiguration()
{
    // The layer table: same VDConfig root, read through the session rather than the
    // user-function library; no existence test, a missing table gives no layer.
    std::string root = theSession->GetEnvironmentVariableValue("VDConfig").GetLocaleText();
    std::string layerTable = root + "\\config\\TK\\" + GetCurrentLayerFile();
    stdPartLayers = ReadStdPartLayers(layerTable);
    if (stdPartLayers.empty())
        throw std::runtime_error("在配置表：" + layerTable + " 没有找到标准件图层的配置信息");

    std::string folder = GetConfigFolder();

    bomHeadConfigPath = folder + "\\bom_head_config.csv";
    ThrowIfTableMissing(bomHeadConfigPath);
    ReadBomHeadConfig(bomHeadConfig, bomHeadConfigPath);

    smartDrawingConfigPath = folder + "\\smart_drawing_std_config.csv";
    ThrowIfTableMissing(smartDrawingConfigPath);

    // The per-user table remembers the output folder. Making its folder fails harmlessly when it
    // exists; only the last level is made.
    std::string userFolder = platform::GetEnv("LOCALAPPDATA", NULL) + "\\Convert";
    platform::MakeFolder(userFolder);
    userConfigPath = userFolder + "\\config.csv";
    std::string desktop = platform::DesktopFolder();
    ReadConfigFile userTable;
    userTable.OpenConfigFile(userConfigPath);
    std::vector<std::string> outputPaths = userTable.GetColumnValue("出图的路径");
    userTable.CloseConfigFile();
    outputFolder = (outputPaths.empty() || outputPaths[0].empty()) ? desktop : outputPaths[0];

    std::string colourTable = folder + "\\config.csv";
    ThrowIfFileMissing(colourTable);
    modifyColour = ReadModifyColour(colourTable);

    std::string stdPartTable = folder + "\\std_part_config.csv";
    ThrowIfFileMissing(stdPartTable);
    ReadStdPartConfig(stdPartConfig, stdPartTable);
}
