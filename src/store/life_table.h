#pragma once
// Fields of the age-stage life table: l(x), life expectancy, stage rates, matrices written by the walk of the cohort.
#include <string>

#include "store/bounded.h"
#include "store/limits.h"

namespace korvan {

// Overwritten by every pass of the engine (lives in a Workspace).
struct LifeTableWork {};

// Kept for the session (lives in SessionStore).
struct LifeTableRecord {};

}  // namespace korvan
