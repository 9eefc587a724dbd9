#ifndef VORNADEL_STDPARTS_TREEREADBACK_H
#define VORNADEL_STDPARTS_TREEREADBACK_H

#include <vector>

#include <NXOpen/BlockStyler_Node.hxx>
#include <NXOpen/BlockStyler_Tree.hxx>

struct NodeParam;
namespace NXOpen { class Body; }

// Walks of the tree; each gives an empty vector when the tree or node has none.
// The top-level nodes, in tree order (RootNode, then NextSiblingNode).
std::vector<NXOpen::BlockStyler::Node*> GetRootNodes(NXOpen::BlockStyler::Tree* tree);
// The direct children of node, in order (FirstChildNode, then NextSiblingNode).
std::vector<NXOpen::BlockStyler::Node*> GetChildNodes(NXOpen::BlockStyler::Node* node);
// Every node in pre-order (RootNode, then NextNode).
std::vector<NXOpen::BlockStyler::Node*> GetAllNodes(NXOpen::BlockStyler::Tree* tree);

// The node's body: the object in its data container under "Data" when that is a body, else NULL.
NXOpen::Body* GetNodeBody(NXOpen::BlockStyler::Node* node);

// Deletes records made by GetNodeParam/GetNodeParams, with their children, and empties records.
void DeleteNodeParams(std::vector<NodeParam*>& records);

#endif
