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
    //  - flag false: the same solid wherever it lies. Compared are the quantities of NX's mass
    //    properties that do not depend on the placement: volume and surface area, each within a
    //    relative 1e-4, and the three principal moments of inertia about the centroid (per unit
    //    mass, so the body's density plays no part), each within 1e-4 of their sum. A moved,
    //    rotated or mirrored copy matches; a screw one size longer does not.
    //  - flag true: the same solid lying the same way: in addition, the inertia tensor about
    //    the centroid, in part axes, agrees within 1e-4 of the moments' sum, so only copies that
    //    are moved without being turned match (a turn about an axis of symmetry is not seen).
    // A candidate wrapping this very body always matches; a body whose mass properties NX cannot
    // give (not a solid) matches no other body.
    //
    // Why these figures. NX integrates numerically, with other numbers for a copy elsewhere in
    // the part, so two identical copies never give quite the same values.
    //  - NX's error: UF_MODL_ask_mass_props_3d (uf_modl.h) takes either an "accuracy value"
    //    between 0 and 1, for which NX states no error (0.9 "is sufficient" for analytic bodies,
    //    B-surface faces may need values "closer to 1.0"), or relative tolerances for area,
    //    volume, first moments, centroidal moments and products of inertia: NX then iterates
    //    until successive values agree within them. BodyInfo asks for relative tolerances of
    //    1e-6 on area, volume and the centroidal moments (products are not tested: they are 0
    //    for symmetric parts, and a relative tolerance of 0 means "not tested"). Two copies then
    //    differ by about 2e-6 at most, fifty times below the comparison's 1e-4, which leaves room
    //    for NX's estimate of its error to be off by a good factor.
    //  - Catalogue neighbours: the lengths of a screw size (ISO 4762 series) or of a dowel pin
    //    lie 6 % and more apart, their volumes 5 % and more, die springs and guide bushes
    //    likewise; the closest are ejector pins and sleeves ordered by length in whole
    //    millimetres, where 1 mm on a 600 mm pin changes volume and area by about 1.6e-3 (5 mm
    //    on a 400 mm pin by 1.2e-2): sixteen times above the comparison's 1e-4.
    //  - Principal moments are measured against their sum, not each against itself: the
    //    smallest moment of a long thin pin (about its axis, 1e-4 of the others for a 4 x 400
    //    pin) carries the error of the whole tensor when the pin lies askew in the part.
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
