// The seed corpus of the fuzz targets, replayed on every build (and so under the sanitizers in
// the sanitizer build): every file ends as the program ends on bad input, or runs through.
// Inputs that once broke KORVAN stay in the corpus.
#include <gtest/gtest.h>

#include <filesystem>
#include <initializer_list>
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

using Endings = std::map<std::string, Outcome>;

void ExpectEnding(Endings& endings, Ending ending, std::initializer_list<const char*> files) {
  for (const char* file : files) EXPECT_EQ(endings[file].ending, ending) << file << ": " << endings[file].message;
}

// Files that run through Basic Run.
void ExpectBasicRun(Endings& endings, std::initializer_list<const char*> files) {
  ExpectEnding(endings, Ending::Ran, files);
  for (const char* file : files) EXPECT_TRUE(endings[file].basicRunDone) << file;
}

// Files that run through, with the count each gives for one field of its outcome.
void ExpectRanWith(Endings& endings, long Outcome::*field, const std::map<std::string, long>& counts) {
  for (const auto& [file, count] : counts) {
    EXPECT_EQ(endings[file].ending, Ending::Ran) << file << ": " << endings[file].message;
    EXPECT_EQ(endings[file].*field, count) << file;
  }
}

TEST(FuzzCorpus, DataFilesRunOrEndAsTheProgramEnds) {
  auto endings = ReplayFolder("data_file", RunDataFile);
  ASSERT_GE(endings.size(), 20u);
  // The team's cohorts and the files that only need a Yes run through; a file of females only
  // runs as parthenogenetic.
  ExpectBasicRun(endings, {"mite.txt", "cohort_check_good.txt", "cohort_check_only_females.txt",
                           "cohort_reader_small.txt", "cohort_check_blank_line_end.txt", "non_integer_fecundity.txt",
                           "more_data.txt", "quoted_comma.txt", "crlf.txt", "two_stages.txt"});
  // Faults of the check.
  ExpectEnding(endings, Ending::ProgramEnd,
               {"same_type_code.txt", "bad_special_first.txt", "bad_special_second.txt", "number_out_of_place.txt",
                "bad_sex.txt", "zero_duration.txt", "female_without_adult.txt", "n_with_adult.txt",
                "n_not_ended.txt", "fecundity_too_long.txt", "fecundity_not_closed.txt", "huge_cohort.txt"});
  // Beyond the bounds of the store.
  ExpectEnding(endings, Ending::SubscriptFault, {"long_adult.txt"});
}

// Every step of A1 with the rearing cost of each stage in the file's head: the costs are read
// as numbers (a word as 0), and a file without them is read out of step and ends at the
// special group, where the message tells of the costs.
TEST(FuzzCorpus, DataFilesWithRearingCostsRunThroughEveryStep) {
  auto endings = ReplayFolder("data_file_all_steps", RunDataFileAllSteps);
  ASSERT_GE(endings.size(), 9u);
  ExpectBasicRun(endings, {"mite_with_costs.txt", "costs_small.txt", "only_females_with_costs.txt", "cost_as_text.txt",
                           "extreme_costs.txt"});
  ExpectEnding(endings, Ending::ProgramEnd,
               {"mite_without_costs.txt", "costs_cut_short.txt", "head_ends_after_costs.txt",
                "non_integer_with_costs.txt"});
  for (const char* bad : {"mite_without_costs.txt", "costs_cut_short.txt"})
    EXPECT_NE(endings[bad].message.find("If there is no rearing cost"), std::string::npos) << endings[bad].message;
}

TEST(FuzzCorpus, HarvestAndContributionFilesRunOrEndAsTheProgramEnds) {
  auto endings = ReplayFolder("harvest_file", RunHarvestAndContributionFiles);
  ASSERT_GE(endings.size(), 7u);
  // The pooled parameters of a contribution run through; every other file ends with a message.
  ExpectEnding(endings, Ending::Ran, {"zz_good.txt", "zz_garbled.txt", "empty.txt"});
}

TEST(FuzzCorpus, RecordFilesRepeatTheirSamplesOrEndAsTheProgramEnds) {
  auto endings = ReplayFolder("record_file", RunRecordFile);
  ASSERT_GE(endings.size(), 15u);
  // Records that repeat: every sample is analysed.
  ExpectRanWith(endings, &Outcome::bootstrapSamples,
                {{"effective_two_sex.txt", 3},
                 {"effective_parthenogenetic.txt", 2},
                 {"all_two_sex.txt", 2},
                 {"all_parthenogenetic.txt", 2},
                 {"general.txt", 3},
                 {"old_version.txt", 3},
                 {"larger_sample.txt", 2},
                 {"no_summary.txt", 3}});
  // A sample that fails its record's condition, a sample without females, a record that ends
  // before its samples do.
  ExpectEnding(endings, Ending::ProgramEnd,
               {"effective_without_male.txt", "sample_without_female.txt", "more_samples_than_written.txt"});
  // An individual that isn't in the pool, a sample larger than the arrays hold.
  ExpectEnding(endings, Ending::SubscriptFault,
               {"individual_beyond_pool.txt", "individual_zero.txt", "sample_size_beyond.txt"});
}

// The same records counted as life tables: the samples of a record that the count can compose
// are counted; an individual outside the cohort ends with its message.
TEST(FuzzCorpus, RecordFilesCountOrEndAsTheProgramEnds) {
  auto endings = ReplayFolder("record_count", RunRecordCount);
  ASSERT_GE(endings.size(), 15u);
  ExpectRanWith(endings, &Outcome::countedItems,
                {{"effective_two_sex.txt", 3}, {"all_two_sex.txt", 2}, {"general.txt", 3}, {"no_summary.txt", 3}});
  ExpectEnding(endings, Ending::ProgramEnd, {"individual_beyond_pool.txt", "individual_zero.txt"});
}

// Multinomial expansions read after Basic Run of a cohort of six: the expansion of six is
// analysed whole; any other file ends with a message, a file of n > 10 with its own.
TEST(FuzzCorpus, ExpansionFilesAreAnalysedOrEndAsTheProgramEnds) {
  auto endings = ReplayFolder("expansion_file", RunExpansionFile);
  ASSERT_GE(endings.size(), 10u);
  ExpectRanWith(endings, &Outcome::countedItems, {{"six.txt", 462}, {"eleven.txt", 0}});
  ExpectEnding(endings, Ending::ProgramEnd,
               {"cut_short.txt", "five_for_six.txt", "text_for_individual.txt", "wrong_coefficient.txt",
                "item_repeated.txt", "individual_beyond.txt", "size_text.txt", "empty.txt", "negative_size.txt"});
}

// The same files as one of the two files of a ratio: a column of the 20 values divides or is
// divided, or the run ends with its message (a cut-short head, another B, a zero denominator).
TEST(FuzzCorpus, ColumnFilesFormRatiosOrEndAsTheProgramEnds) {
  auto endings = ReplayFolder("column_file", RunRatioFile);
  ASSERT_GE(endings.size(), 30u);
  for (const auto& [file, outcome] : endings)
    EXPECT_TRUE(outcome.ending == Ending::Ran || outcome.ending == Ending::ProgramEnd) << file << ": " << outcome.message;
  // Another B than the fixed file's is told in a box and the command ends; so does a ratio.
  ExpectEnding(endings, Ending::Ran, {"r_mite.txt", "equal_to_fixed_treatment.txt"});
  ExpectEnding(endings, Ending::ProgramEnd, {"empty.txt", "head_cut_short.txt", "B_zero.txt", "fewer_values_than_B.txt"});
}

// Lists of values through the general bootstrap and the sort: they run through every route or
// end with the message of the value that is no number, the list that is empty.
TEST(FuzzCorpus, ListFilesAreResampledAndSortedOrEndAsTheProgramEnds) {
  auto endings = ReplayFolder("list_file", RunListFile);
  ASSERT_GE(endings.size(), 9u);
  ExpectEnding(endings, Ending::Ran, {"total_longevity.txt"});
  ExpectEnding(endings, Ending::ProgramEnd,
               {"empty.txt", "head_only.txt", "text_value.txt", "serial_without_value.txt", "extreme_values.txt",
                "values_only.txt", "r_column.txt", "differences.txt"});
}

// Cohorts kept in spreadsheets: converted and analysed, or ended with the place of the fault.
TEST(FuzzCorpus, CsvFilesAreImportedOrEndAsTheProgramEnds) {
  auto endings = ReplayFolder("csv_file", RunCsvFile);
  ASSERT_GE(endings.size(), 11u);
  for (const char* file : {"cohort_of_six.csv", "quoted_crlf_bom.csv"}) {
    EXPECT_EQ(endings[file].ending, Ending::Ran) << file << ": " << endings[file].message;
    EXPECT_TRUE(endings[file].basicRunDone) << file;
  }
  ExpectEnding(endings, Ending::ProgramEnd,
               {"text_in_duration.csv", "row_longer.csv", "no_adult_column.csv", "male_with_eggs.csv",
                "n_without_death.csv", "eggs_beyond_double.csv", "header_only.csv", "empty.csv",
                "quote_not_closed.csv"});
  EXPECT_NE(endings["row_longer.csv"].message.find("Row 2 has 6 cells; the header has 5."), std::string::npos);
}

TEST(FuzzCorpus, ColumnFilesArePairedOrEndAsTheProgramEnds) {
  auto endings = ReplayFolder("column_file", RunColumnFile);
  ASSERT_GE(endings.size(), 30u);
  // Files that pair with the fixed treatment of 20 values: the values of both are compared, on
  // the detailed route too when the file is small. A stated B larger than the list is corrected
  // down, a smaller one caps it, -1 closes the list.
  const std::map<std::string, long> small = {{"r_mite.txt", 60},
                                             {"survival_rate.txt", 60},
                                             {"preadult_survival.txt", 60},
                                             {"arcsine_inside.txt", 28},
                                             {"fewer_values_than_B.txt", 28},
                                             {"B_largest_long.txt", 28},
                                             {"more_values_than_B.txt", 23},
                                             {"closed_early_by_minus_one.txt", 22},
                                             {"one_value.txt", 21},
                                             {"equal_to_fixed_treatment.txt", 40},
                                             {"crlf.txt", 28},
                                             {"no_line_end.txt", 28},
                                             {"blank_lines_between.txt", 28},
                                             {"quoted_numbers_and_commas.txt", 28}};
  ExpectRanWith(endings, &Outcome::comparedValues, small);
  for (const auto& [file, values] : small) EXPECT_TRUE(endings[file].detailedRun) << file;
  // A large file takes the fast route only.
  ExpectRanWith(endings, &Outcome::comparedValues, {{"r_mite_2000_samples.txt", 2020}});
  EXPECT_FALSE(endings["r_mite_2000_samples.txt"].detailedRun);
  // A file cut short, without values, or with a B of none; a transformation outside its range;
  // a label that makes the report's name a path into no folder.
  ExpectEnding(endings, Ending::ProgramEnd,
               {"empty.txt", "head_cut_short.txt", "head_only.txt", "B_zero.txt", "B_text.txt", "B_negative.txt",
                "arcsine_negative.txt", "logit_outside_zero_one.txt", "logit_zero_and_one.txt",
                "R0_with_serial_numbers.txt", "r_small_cohort_negative_values.txt", "path_in_label.txt"});
  // Numbers beyond what the program's numbers hold.
  ExpectEnding(endings, Ending::OverflowFault, {"B_beyond_long.txt", "huge_values.txt", "infinite_value.txt"});
  // Every difference of the file's values with the fixed treatment's 20 in the Cartesian test.
  for (const auto& [file, values] : small) {
    EXPECT_EQ(endings[file].cartesianEnding, Ending::Ran) << file;
    EXPECT_EQ(endings[file].cartesianDifferences, 20.0 * static_cast<double>(values - 20)) << file;
  }
}

TEST(FuzzCorpus, PooledFilesArePairedOrEndAsTheProgramEnds) {
  auto endings = ReplayFolder("pooled_file", RunPooledFile);
  ASSERT_GE(endings.size(), 15u);
  // Places are mapped to file positions by equal means: two treatments of the same mean both
  // take the values of the first (equal_means.txt).
  ExpectRanWith(endings, &Outcome::comparedValues,
                {{"two_treatments.txt", 70},
                 {"three_treatments.txt", 110},
                 {"eleven_treatments.txt", 33},
                 {"last_list_unclosed.txt", 70},
                 {"crlf.txt", 20},
                 {"text_values.txt", 5},
                 {"large_treatments.txt", 2030},
                 {"equal_means.txt", 6}});
  // Fewer than two treatments (a negative count among them), a treatment without values, a file
  // cut short, a parameter that makes the detail files' names a path into no folder.
  ExpectEnding(endings, Ending::ProgramEnd,
               {"empty.txt", "head_only.txt", "ends_before_second_treatment.txt", "one_treatment.txt",
                "zero_treatments.txt", "negative_count.txt", "treatment_without_values.txt",
                "path_in_parameter.txt"});
  ExpectEnding(endings, Ending::OverflowFault, {"count_beyond_integer.txt", "infinite_values.txt", "one_value_each.txt"});
  // More treatments than the arrays hold.
  ExpectEnding(endings, Ending::SubscriptFault, {"twelve_treatments.txt"});
  // As the file of a Tukey table: a table of four treatments; a treatment of one value or of a
  // sample size of 0 has no SE and ends the run; fewer than three treatments write nothing.
  EXPECT_EQ(endings["tukey_four_treatments.txt"].tukeyEnding, Ending::Ran);
  EXPECT_EQ(endings["tukey_four_treatments.txt"].tukeyTreatments, 4);
  for (const char* file : {"tukey_one_value.txt", "tukey_size_zero.txt"})
    EXPECT_EQ(endings[file].tukeyEnding, Ending::ProgramEnd) << file;
  for (const char* file : {"two_treatments.txt", "one_treatment.txt", "empty.txt"})
    EXPECT_EQ(endings[file].tukeyTreatments, 0) << file;
}

// The same files through the transforms. A data file gives the eight files of the seven
// transforms, each read again (every answer at its default: a refused one writes nothing); an
// adult life table overwinters; an immature life table is read; anything else ends as the
// program ends on bad input.
TEST(FuzzCorpus, TransformsWriteFilesThatAreReadAgainOrEndAsTheProgramEnds) {
  auto data = ReplayFolder("transform_file", RunTransformsOnDataFile);
  ASSERT_GE(data.size(), 15u);
  // Durations of 2.5 days are whole in thirds of days only after K, which refuses x = 3; a
  // life of 210 days is too long for thirds of days. A stage name that a stage line can't hold
  // again (an empty one) is refused.
  ExpectRanWith(data, &Outcome::filesWritten, {{"mite.txt", 8}, {"costs.txt", 8}, {"two_stages.txt", 8}, {"long_life.txt", 7},
                                               {"quote_in_treatment_line.txt", 8}});
  ExpectEnding(data, Ending::ProgramEnd, {"empty.txt", "half_days.txt", "adult.txt", "immature.txt", "mite_immature.txt"});

  auto adult = ReplayFolder("transform_file", RunOverwinterOnAdultFile);
  ExpectRanWith(adult, &Outcome::filesWritten,
                {{"adult.txt", 1}, {"mite_adult.txt", 1}, {"adult_zero_duration.txt", 0}, {"adult_overwinter_beyond.txt", 0},
                 {"adult_empty_stage_name.txt", 0}});
  ExpectEnding(adult, Ending::ProgramEnd, {"adult_sex_N.txt", "empty.txt"});

  auto immature = ReplayFolder("transform_file", RunImmatureFile);
  ExpectEnding(immature, Ending::Ran, {"immature.txt", "mite_immature.txt"});
  ExpectEnding(immature, Ending::ProgramEnd,
               {"immature_N_without_death.txt", "immature_F_died.txt", "immature_zero.txt", "adult.txt", "empty.txt"});
}

// Consumption files of a fixed cohort: the well-formed ones are read and the run goes through
// with them; a fault of the file ends as a data fault does.
TEST(FuzzCorpus, ConsumptionFilesRunOrEndAsTheProgramEnds) {
  auto endings = ReplayFolder("consumption_file", RunConsumptionFile);
  ASSERT_GE(endings.size(), 14u);
  ExpectBasicRun(endings, {"good.txt", "one_line.txt", "crlf.txt", "fractions.txt", "nothing_eaten.txt"});
  ExpectEnding(endings, Ending::ProgramEnd,
               {"wrong_n.txt", "short_record.txt", "long_record.txt", "negative.txt", "not_a_number.txt",
                "number_out_of_place.txt", "ends_early.txt", "empty.txt", "huge_values.txt"});
}

// Group-reared files through "B. Read N, F": the good ones run through and write their files,
// which are read again (the two-stage form by B, a rebuilt table by A1); the faulty ones end
// with their message.
TEST(FuzzCorpus, GroupFilesRunOrEndAsTheProgramEnds) {
  auto endings = ReplayFolder("group_file", RunGroupFile);
  ASSERT_GE(endings.size(), 10u);
  ExpectEnding(endings, Ending::Ran,
               {"mite_group.txt", "mite_group_two_stages.txt", "three_stages.txt", "no_overlap_case0.txt",
                "overlap_death_case2.txt"});
  EXPECT_EQ(endings["overlap_death_case2.txt"].filesWritten, 1);  // the rebuilt individuals
  EXPECT_EQ(endings["mite_group.txt"].filesWritten, 1);  // the two-stage form
  EXPECT_EQ(endings["three_stages.txt"].filesWritten, 1);
  ExpectEnding(endings, Ending::ProgramEnd,
               {"fault_preadult_rises.txt", "fault_female_rise_after_preadults.txt", "fault_eggs_without_females.txt",
                "fault_cut_short.txt", "fault_males_from_nowhere.txt"});
  ExpectEnding(endings, Ending::SubscriptFault, {"fault_too_many_stages.txt"});
}

TEST(FuzzCorpus, MatchFilesRunOrEndAsTheProgramEnds) {
  auto endings = ReplayFolder("match_files", RunMatchFiles);
  ASSERT_GE(endings.size(), 12u);
  // Every file ends one of its routes with a message: a table is no record and the other table.
  ExpectEnding(endings, Ending::ProgramEnd,
               {"immature_good.txt", "adult_good.txt", "empty.txt", "immature_short.txt", "immature_sex_x.txt",
                "immature_zero.txt", "adult_no_male.txt", "garbled.txt", "record_good.txt", "record_wrong_sex.txt",
                "record_short.txt", "adult_huge_duration.txt", "immature_females_only.txt"});
  auto has = [&](const char* file, const char* text) {
    EXPECT_NE(endings[file].message.find(text), std::string::npos) << file << ": " << endings[file].message;
  };
  // The good tables run through their own route, the good record through its repeat.
  has("immature_good.txt", "immature:  | adult: Error");
  has("adult_good.txt", "| adult:  | record:");
  has("record_good.txt", "| record: ");
  EXPECT_EQ(endings["record_good.txt"].message.substr(endings["record_good.txt"].message.size() - 10), "| record: ");
  has("adult_no_male.txt", "no male adult");
  has("immature_females_only.txt", "has no male");
  has("record_wrong_sex.txt", "record: Error in match record: Match 4");
  has("record_short.txt", "record: Error in bootstrap record file: Input past end");
}

TEST(FuzzCorpus, MatrixFilesRunOrEndAsTheProgramEnds) {
  auto endings = ReplayFolder("matrix_file", RunMatrixFile);
  ASSERT_GE(endings.size(), 10u);
  ExpectEnding(endings, Ending::Ran, {"study_good.txt"});
  ExpectEnding(endings, Ending::ProgramEnd,
               {"empty.txt", "short.txt", "fecundity_minus_one.txt", "stage_range_beyond.txt", "garbled.txt",
                "no_daughters.txt", "mite_male.txt"});
}

}  // namespace
}  // namespace korvan::fuzz
