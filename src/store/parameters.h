#pragma once
// Population parameters r, lambda, R0, T, GRR, reproductive value and stable distributions.
#include <string>

#include "store/bounded.h"
#include "store/limits.h"

namespace korvan {

// Overwritten by every pass of the engine (lives in a Workspace).
struct ParameterWork {};

// Kept for the session (lives in SessionStore).
struct PopulationParameters {};

}  // namespace korvan
