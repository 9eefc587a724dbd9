// Reading the tree back: walks over its nodes and records of the nodes' texts and bodies.

#include "stdparts/TreeReadBack.h"

#include <NXOpen/Body.hxx>
#include <NXOpen/DataContainer.hxx>
#include <NXOpen/NXException.hxx>

#include "shell/Vornadel.h"
#include "stdparts/StdPartRecords.h"

std::vector<NXOpen::BlockStyler::Node*> GetRootNodes(NXOpen::BlockStyler::Tree* tree)
{
    std::vector<NXOpen::BlockStyler::Node*> nodes;
    for (NXOpen::BlockStyler::Node* node = tree->RootNode(); node != NULL; node = node->NextSiblingNode())
        nodes.push_back(node);
    return nodes;
}

std::vector<NXOpen::BlockStyler::Node*> GetChildNodes(NXOpen::BlockStyler::Node* node)
{
    std::vector<NXOpen::BlockStyler::Node*> nodes;
    for (NXOpen::BlockStyler::Node* child = node->FirstChildNode(); child != NULL; child = child->NextSiblingNode())
        nodes.push_back(child);
    return nodes;
}

std::vector<NXOpen::BlockStyler::Node*> GetAllNodes(NXOpen::BlockStyler::Tree* tree)
{
    std::vector<NXOpen::BlockStyler::Node*> nodes;
    for (NXOpen::BlockStyler::Node* node = tree->RootNode(); node != NULL; node = node->NextNode())
        nodes.push_back(node);
    return nodes;
}

NXOpen::Body* GetNodeBody(NXOpen::BlockStyler::Node* node)
{
    NXOpen::DataContainer* data = node->GetNodeData();
    NXOpen::TaggedObject* object = NULL;
    try {
        object = data->GetTaggedObject(kNodeDataKey);
    } catch (const NXOpen::NXException&) {
        object = NULL;  // NX 8.5 throws for a node without "Data": such a node has no body
    }
    delete data;
    return dynamic_cast<NXOpen::Body*>(object);
}

void DeleteNodeParams(std::vector<NodeParam*>& records)
{
    for (std::vector<NodeParam*>::size_type i = 0; i < records.size(); ++i) {
        if (records[i] != NULL)
            DeleteNodeParams(records[i]->children);
        delete records[i];
    }
    records.clear();
}

NodeParam* Vornadel::GetNodeParam(NXOpen::BlockStyler::Node* node)
{
    if (node == NULL)
        return NULL;
    NodeParam* record = new NodeParam();
    for (int column = 0; column < kColumnCount; ++column)
        record->columnText[column] = node->GetColumnDisplayText(column).GetLocaleText();
    record->body = GetNodeBody(node);
    return record;
}

std::vector<NodeParam*> Vornadel::GetNodeParams()
{
    std::vector<NodeParam*> records;
    std::vector<NXOpen::BlockStyler::Node*> roots = GetRootNodes(tree_control0);
    for (std::vector<NXOpen::BlockStyler::Node*>::size_type r = 0; r < roots.size(); ++r) {
        NodeParam* record = GetNodeParam(roots[r]);
        std::vector<NXOpen::BlockStyler::Node*> children = GetChildNodes(roots[r]);
        for (std::vector<NXOpen::BlockStyler::Node*>::size_type c = 0; c < children.size(); ++c)
            record->children.push_back(GetNodeParam(children[c]));
        records.push_back(record);
    }
    return records;
}
