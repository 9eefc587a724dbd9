#ifndef VORNADEL_PERSISTENCE_ASSIGNSTRINGATTRIBUTE_H
#define VORNADEL_PERSISTENCE_ASSIGNSTRINGATTRIBUTE_H

#include <string>

namespace NXOpen { class Body; }

// Writes the string attribute title = value on body through UF_ATTR_assign and then updates the
// model (UF_MODL_update), once for every single attribute. Neither return code is checked.
// category names the attribute's group in the BOM's vocabulary ("标准件BOM"); the call has no
// category, so it is not stored.
void AssignStringAttribute(NXOpen::Body* body, const std::string& category, const std::string& title,
                           const std::string& value);

#endif
