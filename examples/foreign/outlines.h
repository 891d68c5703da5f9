/// Countries from an export file of a mainframe.
///
/// All numbers are big-endian: whole numbers of 4 bytes, IBM floating point of 8 bytes. Text is in
/// EBCDIC and padded with blanks.
///
///     the word OUTLINES             8 bytes of text
///     how many countries            a whole number, then for each
///       its name                    40 bytes of text
///       how many polygons           a whole number, then for each
///         how many vertices         a whole number, then for each
///           longitude, latitude     two floating-point numbers, in degrees
///
/// The first vertex of a polygon is not repeated at its end. A hole is one more polygon.
#pragma once

#include "common/countries.h"

#include <string>

namespace example {

/// Reads such a file.
///
/// Throws `Error`, which names the file and the byte, if the file can't be read, ends too early or
/// continues after the last country, if a text has a byte that is no EBCDIC character, if a polygon
/// has fewer than three vertices, or if a coordinate is no number or beyond a thousand million.
std::vector<Country> read_outlines(const std::string& path);

/// Returns the path of the world in this form, which the build makes.
std::string shipped_outlines();

}  // namespace example
