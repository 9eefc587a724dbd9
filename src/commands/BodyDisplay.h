#ifndef VORNADEL_COMMANDS_BODYDISPLAY_H
#define VORNADEL_COMMANDS_BODYDISPLAY_H

// Unblanks every object of the work part on layer.
void UnblankObjectsOnLayer(int layer);

#endif
