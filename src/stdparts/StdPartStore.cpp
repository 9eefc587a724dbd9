#include "stdparts/StdPartStore.h"

#include <new>

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
    if (bodyInfos_.size() % kBodyInfosPerBlock == 0)
        blocks_.push_back(static_cast<char*>(::operator new(kBodyInfosPerBlock * sizeof(BodyInfo))));
    void* place = blocks_.back() + (bodyInfos_.size() % kBodyInfosPerBlock) * sizeof(BodyInfo);
    bodyInfos_.push_back(NULL);  // room first: a failing push_back leaves nothing made
    BodyInfo* info = new (place) BodyInfo(body);
    bodyInfos_.back() = info;
    return info;
}

void StdPartStore::ReleaseBodyInfos()
{
    for (std::vector<BodyInfo*>::size_type i = 0; i < bodyInfos_.size(); ++i) {
        if (bodyInfos_[i] != NULL)
            bodyInfos_[i]->~BodyInfo();
    }
    bodyInfos_.clear();
    for (std::vector<char*>::size_type i = 0; i < blocks_.size(); ++i)
        ::operator delete(blocks_[i]);
    blocks_.clear();
}

void StdPartStore::KeepSnapshot(const std::vector<NodeParam*>& records)
{
    DeleteNodeParams(snapshotRecords_);
    snapshotRecords_ = records;
}
