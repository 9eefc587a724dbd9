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
    //  - flag false: the same solid wherever it lies: equal volume, surface area and principal
    //    moments of inertia (per unit mass, so the body's density plays no part), each within a
    //    relative 1e-4 of NX's mass properties. A moved, rotated or mirrored copy matches; a
    //    screw one size longer does not.
    //  - flag true: the same solid lying the same way: in addition, the inertia tensor about
    //    the centroid, in part axes, agrees, so only copies that are moved without being turned
    //    match (a turn about an axis of symmetry of the solid is not seen).
    // A candidate wrapping this very body always matches; a body whose mass properties NX cannot
    // give (not a solid) matches no other body.
    std::vector<BodyInfo*> GetSameBodys(std::vector<BodyInfo*>& candidates, bool flag);

    // True, with the value, when the body carries the string attribute title; false otherwise.
    static bool GetBodyFacetAttr(NXOpen::Body* body, const std::string& title, std::string& value);

private:
    BodyInfo(const BodyInfo&);
    BodyInfo& operator=(const BodyInfo&);

    // Asks NX for the mass properties once; later comparisons use the stored values.
    bool MassProperties();
    bool SameSolid(BodyInfo& other, bool sameOrientation);

    NXOpen::Body* body_;
    bool asked_;            // mass properties asked already
    bool valid_;            // NX gave them
    double volume_;
    double area_;
    double principal_[3];   // principal moments per unit mass, ascending
    double central_[6];     // centroidal tensor per unit mass in part axes: xx, yy, zz, xy, yz, zx
};

#endif
