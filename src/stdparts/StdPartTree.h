#ifndef VORNADEL_STDPARTS_STDPARTTREE_H
#define VORNADEL_STDPARTS_STDPARTTREE_H

#include <string>

#include <NXOpen/BlockStyler_Tree.hxx>

struct StandardPartParam;

// Deletes every top-level node of the tree, in order; children go with their parent.
void ClearTree(NXOpen::BlockStyler::Tree* tree);

// Decimal text of value ("%d").
std::string IntToString(int value);

// The order of records in the tree: named records by their place in the configured name order
// (names not listed, 99999, after the listed ones), then unnamed records. True when a comes
// before b; used with a stable sort, so that equal records keep their collection order.
bool CompareByNameOrder(const StandardPartParam& a, const StandardPartParam& b);

#endif
