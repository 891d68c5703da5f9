/// What the library prints, the trace of the pools and the diagnostics of the sessions, and what it
/// asks of the platform where that is played.
#pragma once

#include "support/digest.h"

#include <set>
#include <string>

/// Goes into this digest, formats and arguments less the addresses, until the group ends. Asks for
/// nothing of the heap.
extern support::Digest* printed;

/// The paths that are there. Others have no access.
inline std::set<std::string, std::less<>> existing;
