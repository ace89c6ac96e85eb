#pragma once
// Stage statistics, fecundity, oviposition periods, APOP and TPOP.
#include <string>

#include "store/bounded.h"
#include "store/limits.h"

namespace korvan {

// Overwritten by every pass of the engine (lives in a Workspace).
struct StageStatsWork {};

// Kept for the session (lives in SessionStore).
struct StageStatsRecord {};

}  // namespace korvan
