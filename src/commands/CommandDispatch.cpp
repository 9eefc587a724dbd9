// update_cb: the dialog's reaction to every block event.

#include "shell/Vornadel.h"

int Vornadel::update_cb(NXOpen::BlockStyler::UIBlock* block)
{
    (void)block;
    return 0;
}
