/// The whole library.
#pragma once

#include <zelvan/export.h>
#include <zelvan/geometry/clip_polygon_set.h>
#include <zelvan/geometry/conic.h>
#include <zelvan/geometry/distance.h>
#include <zelvan/geometry/extent.h>
#include <zelvan/geometry/trig.h>
#include <zelvan/geometry/units.h>
#include <zelvan/logger/logger.h>
#include <zelvan/pick/pick_polyline.h>
#include <zelvan/pick/pick_rect.h>
#include <zelvan/pick/pick_region.h>
#include <zelvan/pick/polygon.h>
#include <zelvan/text/glyph_tokenize.h>
#include <zelvan/text/str_field.h>
#include <zelvan/text/tokenize.h>
#include <zelvan/tra/byte_order.h>
#include <zelvan/tra/character_sets.h>
#include <zelvan/tra/foreign_floats.h>
#include <zelvan/transforms/aligned_rect.h>
#include <zelvan/transforms/matrix_functions.h>
#include <zelvan/transforms/mtx2d.h>
#include <zelvan/transforms/points.h>
#include <zelvan/transforms/records.h>
