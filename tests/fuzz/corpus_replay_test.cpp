// The seed corpus of the fuzz targets, replayed on every build (and so under the sanitizers in
// the sanitizer build): every file ends as the program ends on bad input, or runs through.
// Inputs that once broke KORVAN stay in the corpus.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <string>

#include "harness.h"

namespace korvan::fuzz {
namespace {

std::map<std::string, Outcome> ReplayFolder(const std::string& name,
                                            Outcome (*run)(Workbench&, const std::uint8_t*, std::size_t)) {
  std::map<std::string, Outcome> endings;
  Workbench bench;
  for (const auto& entry : std::filesystem::directory_iterator(std::string(KORVAN_FUZZ_CORPUS) + "/" + name)) {
    std::ifstream in(entry.path(), std::ios::binary);
    std::string bytes((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    const std::string file = entry.path().filename().string();
    try {
      endings[file] = run(bench, reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
    } catch (const std::exception& e) {
      ADD_FAILURE() << file << ": " << e.what();
    }
  }
  return endings;
}

TEST(FuzzCorpus, DataFilesRunOrEndAsTheProgramEnds) {
  auto endings = ReplayFolder("data_file", RunDataFile);
  ASSERT_GE(endings.size(), 20u);
  // The team's cohorts and the files that only need a Yes run through; a file of females only
  // runs as parthenogenetic.
  for (const char* good : {"mite.txt", "cohort_check_good.txt", "cohort_check_only_females.txt",
                           "cohort_reader_small.txt", "cohort_check_blank_line_end.txt", "non_integer_fecundity.txt",
                           "more_data.txt", "quoted_comma.txt", "crlf.txt", "two_stages.txt"}) {
    EXPECT_EQ(endings[good].ending, Ending::Ran) << good << ": " << endings[good].message;
    EXPECT_TRUE(endings[good].basicRunDone) << good;
  }
  // Faults of the check.
  for (const char* bad : {"same_type_code.txt", "bad_special_first.txt", "bad_special_second.txt",
                          "number_out_of_place.txt", "bad_sex.txt", "zero_duration.txt", "female_without_adult.txt",
                          "n_with_adult.txt", "n_not_ended.txt", "fecundity_too_long.txt", "fecundity_not_closed.txt",
                          "huge_cohort.txt"})
    EXPECT_EQ(endings[bad].ending, Ending::ProgramEnd) << bad << ": " << endings[bad].message;
  // Beyond the bounds of the store.
  EXPECT_EQ(endings["long_adult.txt"].ending, Ending::SubscriptFault) << endings["long_adult.txt"].message;
}

TEST(FuzzCorpus, RecordFilesRepeatTheirSamplesOrEndAsTheProgramEnds) {
  auto endings = ReplayFolder("record_file", RunRecordFile);
  ASSERT_GE(endings.size(), 15u);
  // Records that repeat: every sample is analysed.
  for (const auto& [good, samples] : std::map<std::string, long>{{"effective_two_sex.txt", 3},
                                                                {"effective_parthenogenetic.txt", 2},
                                                                {"all_two_sex.txt", 2},
                                                                {"all_parthenogenetic.txt", 2},
                                                                {"general.txt", 3},
                                                                {"old_version.txt", 3},
                                                                {"larger_sample.txt", 2},
                                                                {"no_summary.txt", 3}}) {
    EXPECT_EQ(endings[good].ending, Ending::Ran) << good << ": " << endings[good].message;
    EXPECT_EQ(endings[good].bootstrapSamples, samples) << good;
  }
  // A sample that fails its record's condition, a sample without females, a record that ends
  // before its samples do.
  for (const char* bad : {"effective_without_male.txt", "sample_without_female.txt", "more_samples_than_written.txt"})
    EXPECT_EQ(endings[bad].ending, Ending::ProgramEnd) << bad << ": " << endings[bad].message;
  // An individual that isn't in the pool, a sample larger than the arrays hold.
  for (const char* beyond : {"individual_beyond_pool.txt", "individual_zero.txt", "sample_size_beyond.txt"})
    EXPECT_EQ(endings[beyond].ending, Ending::SubscriptFault) << beyond << ": " << endings[beyond].message;
}

}  // namespace
}  // namespace korvan::fuzz
