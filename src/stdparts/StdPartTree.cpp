// Building the tree: one top-level node per purchased item (group), one child per body when the
// group stands for more than one body; and rebuilding it from records read back earlier.

#include "stdparts/StdPartTree.h"

#include <stdio.h>

#include <algorithm>

#include <NXOpen/Body.hxx>
#include <NXOpen/BlockStyler_Node.hxx>
#include <NXOpen/DataContainer.hxx>

#include "platform/BodyInfo.h"
#include "shell/Vornadel.h"
#include "stdparts/StdPartCollection.h"
#include "stdparts/StdPartRecords.h"
#include "stdparts/TreeReadBack.h"

namespace {

// Columns 1 to 12 in the order in which a node's texts are set.
const int kColumnOrder[12] = {1, 2, 3, 5, 6, 8, 4, 9, 10, 11, 7, 12};

void AddNodeBody(NXOpen::BlockStyler::Node* node, NXOpen::Body* body)
{
    NXOpen::DataContainer* data = node->GetNodeData();
    data->AddTaggedObject(kNodeDataKey, body);
    delete data;
}

// A node rebuilt from its record: columns 1 to 12, the body, and the modification colour when
// column 11 reads "改模".
void FillRestoredNode(NXOpen::BlockStyler::Node* node, const NodeParam& record, int modifyColour)
{
    for (int i = 0; i < 12; ++i)
        node->SetColumnDisplayText(kColumnOrder[i], record.columnText[kColumnOrder[i]].c_str());
    AddNodeBody(node, record.body);
    if (record.columnText[11] == kModifiedStatus)
        node->SetForegroundColor(modifyColour);
}

// Takes the bodies just placed in a group out of the list in one pass; the others keep their order.
void RemovePlaced(std::vector<BodyInfo*>& remaining, std::vector<BodyInfo*> placed)
{
    if (placed.empty())
        return;
    std::sort(placed.begin(), placed.end());
    std::vector<BodyInfo*>::iterator kept = remaining.begin();
    for (std::vector<BodyInfo*>::iterator it = remaining.begin(); it != remaining.end(); ++it) {
        if (!std::binary_search(placed.begin(), placed.end(), *it))
            *kept++ = *it;
    }
    remaining.erase(kept, remaining.end());
}

bool HasNonEmptyAttribute(NXOpen::Body* body, const char* title)
{
    std::string value;
    return ReadStringAttribute(body, title, value) && !value.empty();
}

bool CompareRecordsByNameOrder(const StandardPartParam* a, const StandardPartParam* b)
{
    return CompareByNameOrder(*a, *b);
}

// std::stable_sort of the records with CompareByNameOrder. A record holds a dozen strings, which
// C++98 copies wherever a sort moves one: the sort orders pointers to the records, which are then
// swapped into their places.
void StableSortByNameOrder(std::vector<StandardPartParam>& records)
{
    std::vector<StandardPartParam*> order(records.size());
    for (std::vector<StandardPartParam>::size_type i = 0; i < records.size(); ++i)
        order[i] = &records[i];
    std::stable_sort(order.begin(), order.end(), CompareRecordsByNameOrder);
    std::vector<StandardPartParam> sorted(records.size());
    for (std::vector<StandardPartParam>::size_type i = 0; i < order.size(); ++i)
        sorted[i].swap(*order[i]);
    records.swap(sorted);
}

}  // namespace

void ClearTree(NXOpen::BlockStyler::Tree* tree)
{
    std::vector<NXOpen::BlockStyler::Node*> roots = GetRootNodes(tree);
    for (std::vector<NXOpen::BlockStyler::Node*>::size_type i = 0; i < roots.size(); ++i)
        tree->DeleteNode(roots[i]);
}

std::string IntToString(int value)
{
    char text[32];
    sprintf(text, "%d", value);
    return text;
}

bool CompareByNameOrder(const StandardPartParam& a, const StandardPartParam& b)
{
    if (!a.name.empty() && !b.name.empty())
        return a.nameOrderIndex < b.nameOrderIndex;
    return b.name.compare(a.name) < 0;
}

void Vornadel::CreatStdPartNodes(bool flag, bool takeSnapshot)
{
    (void)flag;  // accepted from every caller and deliberately without effect on the build
    ClearTree(tree_control0);
    stdPartStore.ReleaseBodyInfos();

    std::vector<NXOpen::Body*> bodies = KeepStdPartBodies(CollectWorkPartBodies(*this));
    std::vector<StandardPartParam> records = GetStdPartParams(bodies, stdPartConfig.nameOrder);
    if (!records.empty())
        StableSortByNameOrder(records);

    // The bodies not placed in a group yet, in the order of the records: a record whose body is
    // not placed yet finds it first in the list, as every record before it is placed.
    std::vector<BodyInfo*> remaining;
    remaining.reserve(records.size());
    for (std::vector<StandardPartParam>::size_type i = 0; i < records.size(); ++i)
        remaining.push_back(records[i].bodyInfo);

    int seq = 0;
    NXOpen::BlockStyler::Node* lastGroup = NULL;
    for (std::vector<StandardPartParam>::size_type i = 0; i < records.size(); ++i) {
        StandardPartParam& record = records[i];
        if (remaining.empty() || remaining.front() != record.bodyInfo)
            continue;  // placed in an earlier group already
        remaining.erase(remaining.begin());
        std::vector<BodyInfo*> same = GetSameBodies(record.bodyInfo, remaining);
        RemovePlaced(remaining, same);

        if (same.empty()) {
            // Identical solids that carry neither a name nor a group identifier join this group;
            // labelled copies wait for a group of their own.
            std::vector<BodyInfo*> copies = record.bodyInfo->GetSameBodys(remaining, false);
            for (std::vector<BodyInfo*>::size_type s = 0; s < copies.size(); ++s) {
                NXOpen::Body* body = copies[s]->GetBody();
                if (HasNonEmptyAttribute(body, StdPartTitle::Name) || HasNonEmptyAttribute(body, StdPartTitle::GroupId))
                    continue;
                same.push_back(copies[s]);  // GetSameBodys gives elements of remaining itself
            }
            RemovePlaced(remaining, same);
            record.quantity = static_cast<int>(same.size()) + 1;
        } else if (!record.groupId.empty()) {
            // Only the members that are identical solids are counted, though every member gets a
            // child: the quantity may deliberately differ from the number of children.
            record.quantity = static_cast<int>(record.bodyInfo->GetSameBodys(same, false).size()) + 1;
        } else {
            record.quantity = static_cast<int>(same.size()) + 1;
        }

        ++seq;
        char sequenceText[32];
        sprintf(sequenceText, "%03d", seq);
        NXOpen::BlockStyler::Node* group = CreateStdPartNode(sequenceText, record, NULL, lastGroup);
        lastGroup = group;
        if (!same.empty()) {
            CreateStdPartNode(group, record.bodyInfo->GetBody());
            for (std::vector<BodyInfo*>::size_type s = 0; s < same.size(); ++s)
                CreateStdPartNode(group, same[s]->GetBody());
        }
    }

    // The records and their BodyInfo objects have served: their memory goes back before the
    // snapshot takes its own.
    std::vector<StandardPartParam>().swap(records);
    stdPartStore.ReleaseBodyInfos();

    if (takeSnapshot) {
        initialParams = GetNodeParams();
        stdPartStore.KeepSnapshot(initialParams);
        initialParamsTaken = true;
    }
}

NXOpen::BlockStyler::Node* Vornadel::CreateStdPartNode(const std::string& sequenceText, StandardPartParam& record,
                                                       NXOpen::BlockStyler::Node* parent,
                                                       NXOpen::BlockStyler::Node* after)
{
    NXOpen::BlockStyler::Node* node = tree_control0->CreateNode(sequenceText.c_str());
    // NX ignores the Sort option when an after-node is given: groups follow one another in the
    // order in which they are made.
    tree_control0->InsertNode(node, parent, after, NXOpen::BlockStyler::Tree::NodeInsertOptionSort);
    node->SetColumnDisplayText(1, record.name.c_str());
    node->SetColumnDisplayText(2, record.type.c_str());
    node->SetColumnDisplayText(3, record.brand.c_str());
    node->SetColumnDisplayText(5, record.material.c_str());
    node->SetColumnDisplayText(6, record.heatTreatment.c_str());
    node->SetColumnDisplayText(8, record.supplier.c_str());
    node->SetColumnDisplayText(4, IntToString(record.quantity).c_str());
    node->SetColumnDisplayText(9, record.leadTime.c_str());
    node->SetColumnDisplayText(10, record.status.c_str());
    node->SetColumnDisplayText(11, record.modifyDate.c_str());
    node->SetColumnDisplayText(7, record.remark.c_str());
    node->SetColumnDisplayText(12, record.stdPartId.c_str());
    // Deliberately column 11, not the status of column 10: a group is drawn in the modification
    // colour only when its modification date reads "改模".
    if (record.modifyDate == kModifiedStatus)
        node->SetForegroundColor(modifyColour);
    AddNodeBody(node, record.bodyInfo->GetBody());
    return node;
}

NXOpen::BlockStyler::Node* Vornadel::CreateStdPartNode(NXOpen::BlockStyler::Node* groupNode, NXOpen::Body* body)
{
    NXOpen::BlockStyler::Node* child = tree_control0->CreateNode(groupNode->DisplayText());
    // Every child has the group's display text, and NX places a node inserted with Sort and no
    // after-node after the siblings of equal text: after the group's last child, so the group's
    // own body comes first and the others follow in order.
    tree_control0->InsertNode(child, groupNode, NULL, NXOpen::BlockStyler::Tree::NodeInsertOptionSort);
    for (int i = 0; i < 12; ++i)
        child->SetColumnDisplayText(kColumnOrder[i], groupNode->GetColumnDisplayText(kColumnOrder[i]));
    AddNodeBody(child, body);
    if (body->Color() == modifyColour) {
        child->SetColumnDisplayText(10, kModifiedStatus);
        child->SetForegroundColor(modifyColour);
    }
    return child;
}

void Vornadel::CreateStdNodes(std::vector<NodeParam*>& records)
{
    ClearTree(tree_control0);
    for (std::vector<NodeParam*>::size_type r = 0; r < records.size(); ++r) {
        NodeParam* record = records[r];
        NXOpen::BlockStyler::Node* node = tree_control0->CreateNode(record->columnText[0].c_str());
        tree_control0->InsertNode(node, NULL, NULL, NXOpen::BlockStyler::Tree::NodeInsertOptionLast);
        FillRestoredNode(node, *record, modifyColour);

        NXOpen::BlockStyler::Node* previous = NULL;
        for (std::vector<NodeParam*>::size_type c = 0; c < record->children.size(); ++c) {
            NodeParam* childRecord = record->children[c];
            NXOpen::BlockStyler::Node* child = tree_control0->CreateNode(childRecord->columnText[0].c_str());
            // Sort with the previous child as after-node: NX ignores the option and keeps the
            // records' order, which Sort by the equal display texts would not promise.
            tree_control0->InsertNode(child, node, previous, NXOpen::BlockStyler::Tree::NodeInsertOptionSort);
            FillRestoredNode(child, *childRecord, modifyColour);
            previous = child;
        }
    }
    // NX 8.5's SortRootNodes() only reads the tree's "sort root nodes" property and sorts nothing:
    // the rebuilt list keeps the records' order.
    tree_control0->SortRootNodes();
}
