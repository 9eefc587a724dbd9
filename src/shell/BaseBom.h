#ifndef VORNADEL_SHELL_BASEBOM_H
#define VORNADEL_SHELL_BASEBOM_H

namespace NXOpen { class Part; }

// Base of the dialog class: the work part as it was when the dialog object was made. It is not
// refreshed; code that needs the current work part later asks the session again.
class BaseBom {
public:
    BaseBom();
    virtual ~BaseBom();

    NXOpen::Part* workPart;
};

#endif
