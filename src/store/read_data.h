#pragma once
// Fields of the data-file check and the read-data step.
#include <string>

#include "store/bounded.h"
#include "store/limits.h"

namespace korvan {

// Overwritten by every pass of the engine (lives in a Workspace).
struct ReadDataWork {};

// Kept for the session (lives in SessionStore).
struct ReadDataRecord {};

}  // namespace korvan
