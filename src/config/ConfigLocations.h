#ifndef VORNADEL_CONFIG_CONFIGLOCATIONS_H
#define VORNADEL_CONFIG_CONFIGLOCATIONS_H

#include <string>

// The active configuration folder: root\config, plus one "\<folder>" for every row of the
// selector root\config\standard.csv that is switched on ("有效配置" exactly "Y" or "y"), in row
// order. "" when the NX variable VDConfig is not defined.
std::string GetConfigFolder();

// The file name of the standard-part layer table, from the first CURRENT_LAYER_FILE line of
// "D:\MYTOOL\config\TK\Layerwrk.txt"; "" when the file or the line is missing.
std::string GetCurrentLayerFile();

// True when a file or folder exists at path (_access(path, 0) == 0).
bool FileExists(const std::string& path);

#endif
