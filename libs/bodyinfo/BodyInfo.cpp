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

// The rule and its figures are in BodyInfo.h: NX is asked for relative tolerances of 1e-6 on
// area, volume and centroidal moments; two bodies are the same solid when they agree within 1e-4.
const double kTolerance = 1e-4;
const double kRequestedTolerance = 1e-6;

// UF_MODL_ask_mass_props_3d: solid bodies, grams and centimetres, relative tolerances.
const int kSolidBodies = 1;
const int kGramsCentimetres = 3;
const int kUseRelativeTolerances = 2;

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
    // Tested are what the comparison uses: area, volume and the centroidal moments. First moments
    // and products are not (0): a product is 0 for a symmetric part, where a relative tolerance
    // means nothing.
    const double t = kRequestedTolerance;
    double tolerances[11] = {t, t, 0, 0, 0, t, t, t, 0, 0, 0};
    double props[47];
    double statistics[13];
    if (UF_MODL_ask_mass_props_3d(&tag, 1, kSolidBodies, kGramsCentimetres, 1.0, kUseRelativeTolerances,
                                  tolerances, props, statistics) != 0)
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
    // Moments are measured against the sum of the principal moments: NX's error in the smallest
    // one of a long pin is the error of the tensor, which the largest moments set.
    const double scale = std::max(principal_[0] + principal_[1] + principal_[2],
                                  other.principal_[0] + other.principal_[1] + other.principal_[2]);
    for (int i = 0; i < 3; ++i) {
        if (!Near(principal_[i], other.principal_[i], scale))
            return false;
    }
    if (sameOrientation) {
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
