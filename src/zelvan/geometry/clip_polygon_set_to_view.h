/// Clipping of polygon sets to a view, for drawings.
#pragma once

#include <zelvan/export.h>
#include <zelvan/transforms/records.h>

/// Appends to `target` what of each polygon of `source` lies inside `rect`.
ZELVAN_API void ClipPolygonSetToView(drw_pset_t* source, drw_pset_t* target, real_rect_t* rect);
