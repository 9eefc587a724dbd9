#ifndef VORNADEL_EDITING_GROUPMENU_H
#define VORNADEL_EDITING_GROUPMENU_H

#include <vector>

#include "platform/Desktop.h"

// Appends every descendant window of parent to list, depth first: each child in FindWindowExA
// order, followed at once by all of its own descendants. A parent without children adds nothing;
// a NULL parent stands for the desktop, as in FindWindowExA, and collects every window.
void CollectChildWindows(platform::WindowHandle parent, std::vector<platform::WindowHandle>& list);

#endif
