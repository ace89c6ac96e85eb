#pragma once
// The table of results by age that the results form shows: "Age", l(x), m(x), l(x)m(x), the
// Euler-Lotka term exp(-rx)l(x)m(x) at the intrinsic rate, the stable age distribution (%),
// the life expectancy E(x) and R(x), the net reproduction reached by age x (the running sum of
// l(x)m(x), R0 at the last age). Ages whose time unit groups several days read "<a> to <b>".
#include "store/session_store.h"
#include "ui/multi_ci_table.h"

namespace korvan {

MultiCITable ResultFmTable(const SessionStore& S);

}  // namespace korvan
