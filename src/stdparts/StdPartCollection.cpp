// Collecting the standard parts of the work part, their records, and the matching rule that puts
// bodies describing one purchased item together.

#include "stdparts/StdPartCollection.h"

#include <stdio.h>
#include <stdlib.h>

#include <NXOpen/Body.hxx>
#include <NXOpen/BodyCollection.hxx>
#include <NXOpen/Layer_LayerManager.hxx>
#include <NXOpen/Part.hxx>

#include "platform/BodyInfo.h"
#include "platform/Desktop.h"
#include "shell/Vornadel.h"
#include "stdparts/StdPartRecords.h"

std::vector<NXOpen::Body*> CollectWorkPartBodies(Vornadel& dialog)
{
    std::vector<NXOpen::Body*> kept;
    NXOpen::Layer::LayerManager* layers = dialog.workPart->Layers();
    NXOpen::BodyCollection* bodies = dialog.workPart->Bodies();
    for (NXOpen::BodyCollection::iterator it = bodies->begin(); it != bodies->end(); ++it) {
        NXOpen::Body* body = *it;
        if (body->IsBlanked())
            continue;
        NXOpen::Layer::State state = layers->GetState(body->Layer());
        if (state == NXOpen::Layer::StateWorkLayer || state == NXOpen::Layer::StateSelectable)
            kept.push_back(body);
    }
    return kept;
}

std::vector<NXOpen::Body*> KeepStdPartBodies(const std::vector<NXOpen::Body*>& bodies)
{
    std::vector<NXOpen::Body*> marked;
    for (std::vector<NXOpen::Body*>::size_type i = 0; i < bodies.size(); ++i) {
        std::string mark;
        if (BodyInfo::GetBodyFacetAttr(bodies[i], kStdPartMark, mark) && mark == kStdPartMarkValue)
            marked.push_back(bodies[i]);
    }
    return marked;
}

std::string MakeTimestampId()
{
    platform::LocalTime now = platform::GetLocalTime();
    char text[64];
    sprintf(text, "%02d%02d%02d%02d%02d%04d", now.month, now.day, now.hour, now.minute, now.second,
            now.milliseconds);
    return text;
}

std::vector<StandardPartParam> Vornadel::GetStdPartParams(std::vector<NXOpen::Body*>& bodies,
                                                          std::vector<std::string>& nameOrder)
{
    std::vector<StandardPartParam> records;
    records.reserve(bodies.size());
    for (std::vector<NXOpen::Body*>::size_type i = 0; i < bodies.size(); ++i) {
        NXOpen::Body* body = bodies[i];
        StandardPartParam record;
        record.bodyInfo = stdPartStore.NewBodyInfo(body);

        ReadStringAttribute(body, StdPartTitle::Name, record.name);
        ReadStringAttribute(body, StdPartTitle::Type, record.type);
        ReadStringAttribute(body, StdPartTitle::Brand, record.brand);
        ReadStringAttribute(body, StdPartTitle::Material, record.material);
        ReadStringAttribute(body, StdPartTitle::HeatTreatment, record.heatTreatment);
        ReadStringAttribute(body, StdPartTitle::Supplier, record.supplier);
        std::string quantity;
        ReadStringAttribute(body, StdPartTitle::Quantity, quantity);
        record.quantity = atoi(quantity.c_str());
        ReadStringAttribute(body, StdPartTitle::LeadTime, record.leadTime);
        ReadStringAttribute(body, StdPartTitle::Remark, record.remark);
        ReadStringAttribute(body, StdPartTitle::Status, record.status);
        ReadStringAttribute(body, StdPartTitle::ModifyDate, record.modifyDate);
        ReadStringAttribute(body, StdPartTitle::GroupId, record.groupId);
        ReadStringAttribute(body, StdPartTitle::StdPartId, record.stdPartId);

        // The new identifier reaches the body only when the attributes are saved.
        if (record.stdPartId.empty())
            record.stdPartId = MakeTimestampId();
        record.nameOrderIndex = GetStringValueIndex(nameOrder, record.name);
        if (body->Color() == modifyColour)
            record.status = kModifiedStatus;
        records.push_back(record);
    }
    return records;
}

namespace {

// The six descriptive attributes, in the order in which the matching rule tests them.
enum { kDescriptiveCount = 6 };
const char* const kDescriptiveTitles[kDescriptiveCount] = {
    StdPartTitle::Name, StdPartTitle::Type, StdPartTitle::Brand,
    StdPartTitle::HeatTreatment, StdPartTitle::Material, StdPartTitle::Supplier,
};

}  // namespace

std::vector<BodyInfo*> Vornadel::GetSameBodies(BodyInfo* reference, std::vector<BodyInfo*>& candidates)
{
    NXOpen::Body* referenceBody = reference->GetBody();
    // The titles as strings once, not once per candidate read.
    const std::string groupIdTitle = StdPartTitle::GroupId;
    std::string titles[kDescriptiveCount];
    std::string described[kDescriptiveCount];
    for (int i = 0; i < kDescriptiveCount; ++i) {
        titles[i] = kDescriptiveTitles[i];
        ReadStringAttribute(referenceBody, titles[i], described[i]);
    }
    std::string groupId;
    ReadStringAttribute(referenceBody, groupIdTitle, groupId);

    // Each candidate's attributes are read from NX afresh, one by one until the decision is
    // known: reads change nothing, so the result is that of reading all seven.
    std::vector<BodyInfo*> same;
    for (std::vector<BodyInfo*>::size_type c = 0; c < candidates.size(); ++c) {
        NXOpen::Body* body = candidates[c]->GetBody();
        if (!groupId.empty()) {
            std::string candidateGroupId;
            ReadStringAttribute(body, groupIdTitle, candidateGroupId);
            if (!candidateGroupId.empty()) {
                // Both grouped by hand: the group identifiers alone decide.
                if (candidateGroupId == groupId)
                    same.push_back(candidates[c]);
                continue;
            }
        }
        if (described[0].empty())
            continue;  // an unnamed reference ("名称", the first title) matches only through group identifiers
        bool equal = true;
        for (int i = 0; i < kDescriptiveCount && equal; ++i) {
            std::string value;
            ReadStringAttribute(body, titles[i], value);
            equal = value == described[i];
        }
        if (equal)
            same.push_back(candidates[c]);
    }
    return same;
}

bool Vornadel::IsCreateStdPartNode(BodyInfo* body, std::vector<BodyInfo*>& placed)
{
    for (std::vector<BodyInfo*>::size_type i = 0; i < placed.size(); ++i) {
        if (placed[i]->GetBody() == body->GetBody())
            return false;
    }
    return true;
}
