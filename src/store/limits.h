#pragma once
// The real bounds of the store's arrays (inclusive upper indices).
namespace korvan {

inline constexpr long kMaxIndividual = 390;  // individuals 0..390
inline constexpr long kMaxStage = 13;        // stages 0..13 (12 in a file with two adult stages)
inline constexpr long kMaxAge = 575;         // ages and days of adult life 0..575
inline constexpr long kMaxType = 3;          // type lines 0..3
inline constexpr long kMaxBootB = 100000;    // bootstrap replicates
inline constexpr long kMaxBootIndex = 100003;
inline constexpr long kMaxTreatments = 13;

// The limits the console shows. They are a text only: no procedure tests against them.
inline constexpr const char* kLimitsText =
    "Number of individuals: 400\n"
    "Number of bootstrap: 100000\n"
    "Number of stages: 14\n"
    "Maximal adult age: 800\n"
    "Maximal total longevity: 1260\n"
    "Maximal number of treatments: 13\n"
    "Number of Cartesian products: 1000000";
inline constexpr const char* kEditionWord = "Standard";

}  // namespace korvan
