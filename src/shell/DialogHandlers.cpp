// initialize_cb and dialogShown_cb: binding the blocks and the first display.

#include "shell/Vornadel.h"

void Vornadel::initialize_cb()
{
}

void Vornadel::dialogShown_cb()
{
}
