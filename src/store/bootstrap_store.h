#pragma once
// Settings, counters and per-sample result lists of a bootstrap run.
#include <string>

#include "store/bounded.h"
#include "store/limits.h"

namespace korvan {

// Overwritten by every pass of the engine (lives in a Workspace).
struct BootstrapWork {};

// Kept for the session (lives in SessionStore).
struct BootstrapRecord {};

}  // namespace korvan
