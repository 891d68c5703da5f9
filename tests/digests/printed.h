/// What the library prints: the trace of the pools, the diagnostics of the sessions.
#pragma once

#include "support/digest.h"

/// Goes into this digest, formats and arguments less the addresses, until the group ends.
extern support::Digest* printed;
