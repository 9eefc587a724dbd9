// BodyInfo: a body and the search for identical solids, decided from NX's mass properties.

#include "BodyInfo.h"

#include <math.h>
#include <stddef.h>

#include <algorithm>

#include <NXOpen/Body.hxx>
#include <NXOpen/NXObject.hxx>
#include <NXOpen/NXString.hxx>
#include <uf.h>
#include <uf_modl.h>

namespace {

// Tolerance of every comparison, relative to the larger value. NX integrates the same faces of
// an identical copy whatever its placement, so copies agree to far better than 1e-6; the nearest
// catalogue neighbours differ by about 1% (a 5 mm step on a 400 mm ejector pin) and usually by
// far more (an M6x20 and an M6x25 screw: about 20% in volume). 1e-4 lies well between the two.
const double kTolerance = 1e-4;

// UF_MODL_ask_mass_props_3d: solid bodies, grams and centimetres, accuracy 0.999.
const int kSolidBodies = 1;
const int kGramsCentimetres = 3;
const int kUseAccuracyValue = 1;
const double kAccuracy = 0.999;

bool Near(double a, double b, double scale)
{
    return fabs(a - b) <= kTolerance * scale;
}

bool NearRelative(double a, double b)
{
    return Near(a, b, std::max(fabs(a), fabs(b)));
}

}  // namespace

BodyInfo::BodyInfo(NXOpen::Body* body)
    : body_(body), asked_(false), valid_(false), volume_(0), area_(0)
{
    for (int i = 0; i < 3; ++i)
        principal_[i] = 0;
    for (int i = 0; i < 6; ++i)
        central_[i] = 0;
}

BodyInfo::~BodyInfo()
{
}

NXOpen::Body* BodyInfo::GetBody()
{
    return body_;
}

bool BodyInfo::MassProperties()
{
    if (asked_)
        return valid_;
    asked_ = true;
    if (body_ == NULL)
        return false;
    if (UF_is_initialized() == 0)
        UF_initialize();

    tag_t tag = body_->Tag();
    double accuracy[11] = {kAccuracy, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0};
    double props[47];
    double statistics[13];
    if (UF_MODL_ask_mass_props_3d(&tag, 1, kSolidBodies, kGramsCentimetres, 1.0, kUseAccuracyValue, accuracy,
                                  props, statistics) != 0)
        return false;
    const double mass = props[2];
    if (!(mass > 0))
        return false;

    area_ = props[0];
    volume_ = props[1];
    // Moments divided by the mass: a copy given another material is still the same solid.
    for (int i = 0; i < 3; ++i)
        principal_[i] = props[31 + i] / mass;
    std::sort(principal_, principal_ + 3);  // NX does not promise an order of the principal axes
    for (int i = 0; i < 3; ++i) {
        central_[i] = props[12 + i] / mass;
        central_[3 + i] = props[19 + i] / mass;
    }
    valid_ = true;
    return true;
}

bool BodyInfo::SameSolid(BodyInfo& other, bool sameOrientation)
{
    if (other.body_ == body_)
        return true;
    if (!MassProperties() || !other.MassProperties())
        return false;
    if (!NearRelative(volume_, other.volume_) || !NearRelative(area_, other.area_))
        return false;
    for (int i = 0; i < 3; ++i) {
        if (!NearRelative(principal_[i], other.principal_[i]))
            return false;
    }
    if (sameOrientation) {
        // Products of inertia may be zero: every entry is measured against the largest moment.
        const double scale = std::max(principal_[2], other.principal_[2]);
        for (int i = 0; i < 6; ++i) {
            if (!Near(central_[i], other.central_[i], scale))
                return false;
        }
    }
    return true;
}

std::vector<BodyInfo*> BodyInfo::GetSameBodys(std::vector<BodyInfo*>& candidates, bool flag)
{
    std::vector<BodyInfo*> same;
    for (size_t i = 0; i < candidates.size(); ++i) {
        if (candidates[i] != NULL && SameSolid(*candidates[i], flag))
            same.push_back(candidates[i]);
    }
    return same;
}

bool BodyInfo::GetBodyFacetAttr(NXOpen::Body* body, const std::string& title, std::string& value)
{
    if (body == NULL || !body->HasUserAttribute(title.c_str(), NXOpen::NXObject::AttributeTypeString, -1))
        return false;
    value = body->GetStringUserAttribute(title.c_str(), -1).GetLocaleText();
    return true;
}
