#pragma once
// Cohorts for the tests of the population parameters. The age-stage tables are built here
// straight from each individual's days, by a route of their own (not the engine's walk), and
// filled into the store; the projection matrix of the same tables gives lambda by power
// iteration, for an independent check of r and lambda.
#include <cmath>
#include <string>
#include <vector>

#include "run/run_context.h"

namespace korvan::test {

struct Life {
  std::string sex;                 // "F", "M" or "N"
  std::vector<int> durations;      // days in each stage, the stage of death negative
  std::vector<double> eggs = {};   // eggs of each adult day of a female
};

// Fills the header and the age-stage tables n, g, d, f, s, l(x), LastAge and the stages'
// age ranges for a cohort with m stages (m = the adult stage).
inline void LoadTables(Session& S, int m, const std::vector<Life>& cohort, double timeUnit = 1) {
  S.settings.TimeUnit = timeUnit;
  auto& h = S.header;
  h.StageCount = m;
  h.MaleCount = 0;
  for (int j = 1; j < m; ++j) h.StageName(1, j) = "Stage" + std::to_string(j);
  h.StageName(1, m) = "Female";
  h.StageName(1, m + 1) = "Male";
  auto& t = S.ws.tables;
  auto& lt = S.ws.lifeTable;
  for (auto* a : {&t.Nxj, &t.Gxj, &t.Dxj, &t.Fxj, &t.Sxj}) a->Fill(0);
  t.Lx.Fill(0);
  const int N = static_cast<int>(cohort.size());
  S.ws.cohort.CohortSize = N;
  int longest = 0;
  std::vector<std::vector<int>> paths;
  std::vector<std::vector<double>> eggsByAge;
  for (const Life& life : cohort) {
    if (life.sex == "M") ++h.MaleCount;
    std::vector<int> path;
    std::vector<double> eggs;
    for (std::size_t k = 0; k < life.durations.size(); ++k) {
      int stage = static_cast<int>(k) + 1;
      if (stage == m && life.sex == "M") stage = m + 1;
      for (int day = 0; day < std::abs(life.durations[k]); ++day) {
        path.push_back(stage);
        eggs.push_back(stage == m && day < static_cast<int>(life.eggs.size()) ? life.eggs[static_cast<std::size_t>(day)] : 0);
      }
    }
    longest = std::max(longest, static_cast<int>(path.size()));
    paths.push_back(path);
    eggsByAge.push_back(eggs);
  }
  t.LastAge = longest - 1;
  for (std::size_t i = 0; i < paths.size(); ++i) {
    const auto& path = paths[i];
    for (std::size_t x = 0; x < path.size(); ++x) {
      t.Nxj(static_cast<long>(x), path[x]) += 1;
      t.Fxj(static_cast<long>(x), m) += eggsByAge[i][x];  // a total for now
    }
  }
  for (std::size_t i = 0; i < paths.size(); ++i) {
    const auto& path = paths[i];
    for (std::size_t x = 0; x + 1 < path.size(); ++x) {
      const long a = static_cast<long>(x);
      const int from = path[x], to = path[x + 1];
      if (to == from)
        t.Gxj(a, from) += 1 / t.Nxj(a, from);
      else if (to == m + 1)
        t.Dxj(a, m) += 1 / t.Nxj(a, from);  // the move into the male stage lies on row m
      else
        t.Dxj(a, from) += 1 / t.Nxj(a, from);
    }
  }
  for (int x = 0; x <= t.LastAge; ++x) {
    double alive = 0;
    for (int j = 1; j <= m + 1; ++j) {
      t.Sxj(x, j) = t.Nxj(x, j) / N;
      alive += t.Nxj(x, j);
    }
    if (t.Nxj(x, m) > 0) t.Fxj(x, m) /= t.Nxj(x, m);
    t.Lx(x) = alive / N;
  }
  for (int j = 1; j <= m + 1; ++j) {
    lt.StageFirstAge(j) = 0;
    lt.StageLastAge(j) = 0;
    bool seen = false;
    for (int x = 0; x <= t.LastAge; ++x) {
      if (t.Nxj(x, j) > 0) {
        if (!seen) lt.StageFirstAge(j) = x;
        seen = true;
        lt.StageLastAge(j) = x;
      }
    }
  }
}

// The dominant eigenvalue of the age-stage projection matrix built from s(0,1), g, d and f:
// newborns at (0,1) from f(x,j) of every cell, and each cell's survivors moving to (x+1,j)
// with g and to the next stage with d.
inline double ProjectionLambda(const SessionStore& S, int steps = 20000) {
  const auto& t = S.ws.tables;
  const int m = S.header.StageCount;
  const int last = t.LastAge;
  std::vector<std::vector<double>> n(static_cast<std::size_t>(last + 2), std::vector<double>(static_cast<std::size_t>(m + 2), 0));
  n[0][1] = t.Sxj(0, 1);
  double lambda = 0;
  for (int step = 0; step < steps; ++step) {
    auto next = n;
    for (auto& row : next) std::fill(row.begin(), row.end(), 0);
    double before = 0, after = 0;
    for (int x = 0; x <= last; ++x) {
      for (int j = 1; j <= m + 1; ++j) {
        const double v = n[static_cast<std::size_t>(x)][static_cast<std::size_t>(j)];
        if (v == 0) continue;
        before += v;
        next[0][1] += t.Fxj(x, j) * v;
        if (x == last) continue;
        auto& to = next[static_cast<std::size_t>(x + 1)];
        to[static_cast<std::size_t>(j)] += t.Gxj(x, j) * v;
        if (j < m - 1) to[static_cast<std::size_t>(j + 1)] += t.Dxj(x, j) * v;
        if (j == m - 1) {
          to[static_cast<std::size_t>(m)] += t.Dxj(x, m - 1) * v;
          to[static_cast<std::size_t>(m + 1)] += t.Dxj(x, m) * v;
        }
      }
    }
    for (auto& row : next)
      for (double v : row) after += v;
    lambda = after / before;
    for (auto& row : next)
      for (double& v : row) v /= after;
    n = next;
  }
  return lambda;
}

// The Euler-Lotka sum at r with the exponent of the chosen convention, from the tables.
inline double EulerLotkaSum(const SessionStore& S, double r, double exponentScale, bool plusOne = true) {
  const auto& t = S.ws.tables;
  const int m = S.header.StageCount;
  double sum = 0;
  for (int x = 0; x <= t.LastAge; ++x) {
    double births = 0;
    for (int j = 1; j <= m + 1; ++j) births += t.Fxj(x, j) * t.Sxj(x, j);
    sum += std::exp(-r * (plusOne ? x + 1 : x) * exponentScale) * births;
  }
  return sum;
}

// A two-sex cohort of four stages: eggs, two larval stages, adults; some die young.
inline std::vector<Life> TwoSexCohort() {
  return {
      {"F", {3, 4, 3, 8}, {0, 5, 9, 12, 7, 6, 2, 1}},
      {"F", {2, 5, 3, 10}, {0, 0, 8, 10, 11, 9, 4, 3, 0, 1}},
      {"F", {3, 3, 4, 6}, {2, 6, 6, 5, 3, 0}},
      {"F", {4, 4, 3, 5}, {0, 7, 7, 4, 1}},
      {"M", {3, 4, 3, 9}},
      {"M", {2, 4, 4, 15}},  // the oldest: nobody lays eggs on the last day
      {"M", {3, 5, 2, 7}},
      {"N", {3, 4, -2}},
      {"N", {2, -3}},
      {"N", {-2}},
  };
}

// A parthenogenetic cohort of two stages (immature and adult), females only.
inline std::vector<Life> ParthenogeneticCohort() {
  return {
      {"F", {4, 9}, {0, 3, 5, 6, 6, 4, 3, 1, 0}},
      {"F", {5, 7}, {1, 4, 6, 5, 2, 1, 0}},
      {"F", {4, 6}, {2, 5, 5, 3, 1, 0}},
      {"F", {6, 8}, {0, 2, 4, 4, 3, 2, 1, 0}},
      {"N", {-3}},
      {"F", {5, 4}, {3, 3, 2, 0}},
  };
}

}  // namespace korvan::test
