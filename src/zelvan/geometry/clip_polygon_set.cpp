#include <zelvan/geometry/clip_polygon_set.h>
void ClipPolygonSet(drw_pset_t*, drw_pset_t*, real_rect_t*) {}
