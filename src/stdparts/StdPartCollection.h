#ifndef VORNADEL_STDPARTS_STDPARTCOLLECTION_H
#define VORNADEL_STDPARTS_STDPARTCOLLECTION_H

#include <string>
#include <vector>

class Vornadel;
namespace NXOpen { class Body; }

// The bodies of the dialog's work part, in the part's order, that are not blanked and lie on the
// work layer or a selectable layer; bodies on visible-only or hidden layers are left out.
std::vector<NXOpen::Body*> CollectWorkPartBodies(Vornadel& dialog);

// Those of bodies, in order, whose standard-part mark "转图标识" is exactly "Y".
std::vector<NXOpen::Body*> KeepStdPartBodies(const std::vector<NXOpen::Body*>& bodies);

// A new standard-part identifier from the local clock: month, day, hour, minute, second (two
// digits each) and milliseconds (four digits), e.g. "11030905070042". Bodies processed within
// one millisecond get the same identifier.
std::string MakeTimestampId();

#endif
