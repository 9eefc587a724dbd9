// Reads what the runner shows from the live host, through the NX interface as the plug-in sees it.
#pragma once

#include "Driver.hpp"
#include "Script.hpp"
#include "Views.hpp"

namespace runner {

// The dialog's tree: its columns and every node in pre-order. Empty when the dialog has no tree.
TreeView ReadTree(host::LiveDialog& dialog);

// The tree's selected and expanded rows. Empty when the dialog has no tree.
TreeStateView ReadTreeState(host::LiveDialog& dialog);

// The work part: leaf name, attributes, layers that are not plainly selectable, bodies.
PartView ReadPart(NXOpen::Part& part);

// The node at a row address of the tree, or NULL when the tree has no such row.
NXOpen::BlockStyler::Node* FindRow(NXOpen::BlockStyler::Tree* tree, const RowAddress& row);

}  // namespace runner
