/// The program's own sine, cosine, arc cosine and arc tangent.
#pragma once

/// True for the C library's in their place, to see what rests on them.
extern bool uses_c_library;
