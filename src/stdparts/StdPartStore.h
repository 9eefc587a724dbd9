#ifndef VORNADEL_STDPARTS_STDPARTSTORE_H
#define VORNADEL_STDPARTS_STDPARTSTORE_H

#include <vector>

class BodyInfo;
struct NodeParam;
namespace NXOpen { class Body; }

// The dialog's owner of what the standard-part tree allocates and nobody else frees: the
// BodyInfo objects of the current build (the records of a build only refer to them) and the
// records of every tree snapshot taken during the run (a snapshot is replaced, never freed, while
// the dialog lives). Everything it holds is deleted with it.
class StdPartStore {
public:
    StdPartStore();
    ~StdPartStore();

    // A new BodyInfo for body, kept until ReleaseBodyInfos or the store's end.
    BodyInfo* NewBodyInfo(NXOpen::Body* body);

    // Deletes the BodyInfo objects made so far: called when a new build starts.
    void ReleaseBodyInfos();

    // Takes over the records of a snapshot and their children.
    void KeepSnapshot(const std::vector<NodeParam*>& records);

private:
    StdPartStore(const StdPartStore&);
    StdPartStore& operator=(const StdPartStore&);

    std::vector<BodyInfo*> bodyInfos_;
    std::vector<NodeParam*> snapshotRecords_;
};

#endif
