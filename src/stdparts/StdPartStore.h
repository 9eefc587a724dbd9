#ifndef VORNADEL_STDPARTS_STDPARTSTORE_H
#define VORNADEL_STDPARTS_STDPARTSTORE_H

#include <vector>

class BodyInfo;
struct NodeParam;
namespace NXOpen { class Body; }

// The dialog's owner of what the standard-part tree allocates and nobody else frees: the
// BodyInfo objects of the current build (the records of a build only refer to them) and the
// records of the current tree snapshot. A new build or snapshot frees what it replaces, so that
// regrouping a large mould again and again does not pile up memory; whatever is left is deleted
// with the store.
class StdPartStore {
public:
    StdPartStore();
    ~StdPartStore();

    // A new BodyInfo for body, kept until ReleaseBodyInfos or the store's end.
    BodyInfo* NewBodyInfo(NXOpen::Body* body);

    // Deletes the BodyInfo objects made so far: called when a build starts (what an interrupted
    // build left) and when it has placed every body.
    void ReleaseBodyInfos();

    // Takes over the records of a new snapshot and their children, and frees those of the
    // snapshot it replaces (nothing refers to them any more).
    void KeepSnapshot(const std::vector<NodeParam*>& records);

private:
    StdPartStore(const StdPartStore&);
    StdPartStore& operator=(const StdPartStore&);

    // BodyInfo objects are made one after the other in blocks, in the order of collection: the
    // matching visits every body not placed yet for every purchase line, and reads them from
    // compact memory however often the tree was rebuilt before.
    enum { kBodyInfosPerBlock = 1024 };
    std::vector<char*> blocks_;
    std::vector<BodyInfo*> bodyInfos_;
    std::vector<NodeParam*> snapshotRecords_;
};

#endif
