// update_cb: NX calls it for every block event. The blocks' commands are not built: every event
// is accepted and changes nothing.

#include "shell/Vornadel.h"

int Vornadel::update_cb(NXOpen::BlockStyler::UIBlock* block)
{
    (void)block;
    return 0;
}
