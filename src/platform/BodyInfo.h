#ifndef VORNADEL_PLATFORM_BODYINFO_H
#define VORNADEL_PLATFORM_BODYINFO_H

#include <string>
#include <vector>

#if defined(_WIN32)
#  if defined(BODYINFO_BUILD)
#    define BODYINFO_API __declspec(dllexport)
#  else
#    define BODYINFO_API __declspec(dllimport)
#  endif
#else
#  define BODYINFO_API
#endif

namespace NXOpen { class Body; }

// A standard-part body and the search for bodies that are the same solid. Lives in its own
// library (bodyinfo) beside the plug-in.
class BODYINFO_API BodyInfo {
public:
    explicit BodyInfo(NXOpen::Body* body);
    virtual ~BodyInfo();

    // The wrapped body. Two BodyInfo objects stand for the same body exactly when these agree.
    NXOpen::Body* GetBody();

    // The candidates whose body is the same solid as this object's body, in candidate order.
    // The candidate list is not changed.
    std::vector<BodyInfo*> GetSameBodys(std::vector<BodyInfo*>& candidates, bool flag);

    // True, with the value, when the body carries the string attribute title; false otherwise.
    static bool GetBodyFacetAttr(NXOpen::Body* body, const std::string& title, std::string& value);

private:
    BodyInfo(const BodyInfo&);
    BodyInfo& operator=(const BodyInfo&);

    NXOpen::Body* body_;
};

#endif
