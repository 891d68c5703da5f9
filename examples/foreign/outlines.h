/// Countries from an export file of a mainframe.
///
/// Everything in it is big-endian: whole numbers of 4 bytes, IBM floating point of 8 bytes, text
/// in EBCDIC filled up with blanks.
///
///     the word OUTLINES             8 bytes of text
///     how many countries            a whole number, then for each
///       its name                    40 bytes of text
///       how many polygons           a whole number, then for each
///         how many vertices         a whole number, then for each
///           longitude, latitude     two floating-point numbers, in degrees
///
/// The first vertex of a polygon is not repeated at its end, and a hole is one more polygon.
#pragma once

#include "common/countries.h"

#include <string>

namespace example {

/// Reads such a file. Throws `Error`, which names the file and the byte, for one that can't be
/// read, ends too early or goes on too long, for text that is none, for a polygon of fewer than
/// three vertices, and for a coordinate that is no number or beyond a thousand million.
std::vector<Country> read_outlines(const std::string& path);

/// The path of the shipped world in this form.
std::string shipped_outlines();

}  // namespace example
