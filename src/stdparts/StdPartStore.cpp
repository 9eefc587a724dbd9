#include "stdparts/StdPartStore.h"

#include "platform/BodyInfo.h"
#include "stdparts/TreeReadBack.h"

StdPartStore::StdPartStore()
{
}

StdPartStore::~StdPartStore()
{
    ReleaseBodyInfos();
    DeleteNodeParams(snapshotRecords_);
}

BodyInfo* StdPartStore::NewBodyInfo(NXOpen::Body* body)
{
    BodyInfo* info = new BodyInfo(body);
    bodyInfos_.push_back(info);
    return info;
}

void StdPartStore::ReleaseBodyInfos()
{
    for (std::vector<BodyInfo*>::size_type i = 0; i < bodyInfos_.size(); ++i)
        delete bodyInfos_[i];
    bodyInfos_.clear();
}

void StdPartStore::KeepSnapshot(const std::vector<NodeParam*>& records)
{
    DeleteNodeParams(snapshotRecords_);
    snapshotRecords_ = records;
}
