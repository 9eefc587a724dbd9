#ifndef UF_OBJECT_TYPES_H_INCLUDED
#define UF_OBJECT_TYPES_H_INCLUDED

/* Object type and subtype numbers (the ones the plug-in uses). */

#define UF_solid_type 70
#define UF_solid_body_subtype 0
#define UF_solid_face_subtype 2
#define UF_solid_edge_subtype 3
#define UF_all_subtype (-1)

#endif
