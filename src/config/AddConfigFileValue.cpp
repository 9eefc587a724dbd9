#include <algorithm>

#include <NXOpen/BlockStyler_StringBlock.hxx>

#include "shell/Vornadel.h"

void Vornadel::AddConfigFileValue(const std::string& configPath, const std::string& columnName,
                                  std::vector<std::string>& list, const std::string& value,
                                  NXOpen::BlockStyler::UIBlock* block)
{
    if (value.empty() || std::find(list.begin(), list.end(), value) != list.end())
        return;

    // Offered in the drop-down at once, and in every later run through the table.
    list.push_back(value);
    NXOpen::BlockStyler::StringBlock* stringBlock = dynamic_cast<NXOpen::BlockStyler::StringBlock*>(block);
    if (stringBlock != NULL) {
        std::vector<NXOpen::NXString> items = ToNXStrings(list);
        stringBlock->SetListItems(items);
    }
    SetConfigColumn(configPath, columnName, list);
}
