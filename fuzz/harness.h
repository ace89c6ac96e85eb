#pragma once
// Runs of KORVAN on crafted input, shared by the fuzz targets and by the replay of the seed
// corpus in the test suite. A run may end as the program ends on bad input (a message, a bound
// fault, an overflow fault); any other end (a crash, a sanitizer report, an exception of
// another kind, an endless loop) is a finding, and so is a run that changed the file it read.
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <stdexcept>
#include <string>

namespace korvan::fuzz {

enum class Ending { Ran, ProgramEnd, SubscriptFault, OverflowFault };

// How a run ended, with the message shown at its end.
struct Outcome {
  Ending ending = Ending::Ran;
  std::string message;
  bool basicRunDone = false;  // Basic Run went through to its end
  long bootstrapSamples = 0;  // samples of a bootstrap analysed (EffectiveCount)
  long comparedValues = 0;    // values of all treatments of a paired test (BootCount summed)
  bool detailedRun = false;   // the paired test ran its detailed route too
  long filesWritten = 0;      // files of the transforms, each read again as its kind is read
  long countedItems = 0;      // items of a multinomial expansion, or samples of a count of life tables
  // The second routes of a file of treatments: its Cartesian test (every difference summed
  // over pairs) and its Tukey table (the treatments of a table written), with their endings.
  double cartesianDifferences = 0;
  Ending cartesianEnding = Ending::Ran;
  long tukeyTreatments = 0;
  Ending tukeyEnding = Ending::Ran;
};

// A run changed or removed the file it was given: what the user typed is lost, a finding.
struct FileChanged : std::logic_error {
  explicit FileChanged(const std::string& file) : std::logic_error("the run changed " + file) {}
};

// A folder of its own for the files of the runs: emptied before each run, removed at the end.
class Workbench {
 public:
  Workbench();
  ~Workbench();
  Workbench(const Workbench&) = delete;
  Workbench& operator=(const Workbench&) = delete;
  void Clear();
  // Writes a file of these bytes in the folder; returns its path.
  std::string Add(const std::string& name, const void* data, std::size_t size);
  // Empties the folder first.
  std::string Put(const std::string& name, const void* data, std::size_t size) {
    Clear();
    return Add(name, data, size);
  }
  const std::filesystem::path& Path() const { return path_; }
  // The user's file is only read, whatever the run met: throws FileChanged when the file no
  // longer holds these bytes.
  void ExpectIntact(const std::string& file, const void* data, std::size_t size) const;

 private:
  std::filesystem::path path_;
};

// "A1. Read data" on the bytes as a life-table data file, in a Fast Run of a two-sex population
// (a file of females only, which ends the check there, again as parthenogenetic), with every
// question of the check answered so that it goes on; then Basic Run when the check passed.
Outcome RunDataFile(Workbench& bench, const std::uint8_t* data, std::size_t size);

// The same through every step of A1 (no Fast Run) for a file whose head holds the rearing cost
// of each stage, the reproduction told as two-sex ("1"; "2" for a file of females only), then
// "A2. Basic Run" with every setting of the run at its default.
Outcome RunDataFileAllSteps(Workbench& bench, const std::uint8_t* data, std::size_t size);

// The bytes as a cohort kept in a spreadsheet (a CSV file), chosen at "A1. Read data" in a Fast
// Run of a two-sex population: the data file written from it, its check, then Basic Run.
Outcome RunCsvFile(Workbench& bench, const std::uint8_t* data, std::size_t size);

// The bytes as a record of bootstrap samples (file no. 11): Basic Run of a small fixed cohort
// in a Fast Run, then "A3. Bootstrap" repeating the samples of the record, on one thread.
Outcome RunRecordFile(Workbench& bench, const std::uint8_t* data, std::size_t size);

// The bytes as the consumption file of the cohort of RunRecordFile, chosen in "A2. Basic Run"
// after every step of "A1. Read data"; basicRunDone tells that the run went through with the
// consumption read.
Outcome RunConsumptionFile(Workbench& bench, const std::uint8_t* data, std::size_t size);

// The bytes as the file of R0 and its bootstrap SE that "H. Harvest" reads at each conservation
// level that needs it, and as the pooled cohort's "_ZZ-population parameters.txt" of
// "I. Contribution", after the Basic Run of the cohort of RunRecordFile.
Outcome RunHarvestAndContributionFiles(Workbench& bench, const std::uint8_t* data, std::size_t size);

// The same record counted by "M. Count LT" after the same Basic Run: its samples composed,
// ordered on R0 and grouped, with the "_00_" files.
Outcome RunRecordCount(Workbench& bench, const std::uint8_t* data, std::size_t size);

// The bytes as a multinomial expansion read by "Multinomial" (Command2, Yes) after Basic Run of
// the same cohort of six: the items analysed, sorted and the five "_0_MNT_" files written.
Outcome RunExpansionFile(Workbench& bench, const std::uint8_t* data, std::size_t size);

// The cohort of RunRecordFile: individuals 1..6, F M N F M N.
extern const char* const kRecordCohort;

// Inputs up to this size also go through the detailed route of the paired test, whose exchange
// sort takes a time that grows with the square of B.
constexpr std::size_t kDetailedRouteLimit = 4096;

// The bytes as the "_Effect Boot-..." column file of one treatment of "C. Paired BT", the other
// treatment a column file as a bootstrap run writes it (kColumnFile): the fast route; then,
// for a small file, the detailed route with a transformation (arcsine for an odd size, logit
// for an even one), the detail files and the normal curves; then "Q. CartesianPT" on the same
// two files (in detail for a small file).
Outcome RunColumnFile(Workbench& bench, const std::uint8_t* data, std::size_t size);

// The bytes as a pooled file of treatments through the pooled paired test, with its detail
// files and curves for a small file (and the exchange sort, which it then uses); then as the
// pooled file of the Tukey table (whose treatments have no original value).
Outcome RunPooledFile(Workbench& bench, const std::uint8_t* data, std::size_t size);

// The bytes as the numerator file of "J. Cal. ratio", the denominator the column file
// kColumnFile; then the other way round. Outcome of the first route that doesn't run through.
Outcome RunRatioFile(Workbench& bench, const std::uint8_t* data, std::size_t size);

// The bytes as a list of values: "G. Gen. boot" (B = 20, seed 1) in both modes, with and
// without serial numbers, then "L. Sort+count" as general data, as bootstrap results and as
// differences of a paired test (two decimals). Outcome of the first route that doesn't run
// through.
Outcome RunListFile(Workbench& bench, const std::uint8_t* data, std::size_t size);

// The bytes as a life-table data file chosen in each transform of a life table ("F. Grouping",
// "K. 1t to xt", "Add stage+dura.", "Add time to imma.", "Split stage", "Split LT", "Reduce rep.
// period"), each in a session of its own, the check answered so that it goes on (with rearing
// costs for a file of odd size) and every other question at its default. Every file a transform
// writes must pass A1's check and be read by Basic Run's reader, or, for the immature and
// adult files, be read by their readers: one that isn't is a finding. Outcome of the first
// transform that doesn't run through.
Outcome RunTransformsOnDataFile(Workbench& bench, const std::uint8_t* data, std::size_t size);

// The bytes as an adult life table through "O. + overwinter" (5 days, mortality 0.5, seed 1);
// the file written must be read again.
Outcome RunOverwinterOnAdultFile(Workbench& bench, const std::uint8_t* data, std::size_t size);

// The bytes read as an immature life table.
Outcome RunImmatureFile(Workbench& bench, const std::uint8_t* data, std::size_t size);

// The bytes as a group-reared file of counts N and eggs F through "B. Read N, F", without and
// with predation rows (the outcome is the first run's), every question answered so that it goes on: the estimates of G and
// D, the rebuilding of individuals (the case suggested, or 1, 2, 3 by the size), the grouping of
// stages at its defaults. The two-stage form it writes goes through B again, and a rebuilt
// individual file must pass A1's check and be read by Basic Run's reader.
Outcome RunGroupFile(Workbench& bench, const std::uint8_t* data, std::size_t size);

// The bytes as the immature life table of "D. Boot. match" (the adult table kMatchAdult), then
// as its adult table (the immature table kMatchImmature), then as a match record repeated on
// those two tables: 10 individuals, B = 20, a winter of 2 days with mortality 0.5, seed 1, one
// thread. Every route runs: the ending of the first that doesn't run through, and the messages of
// the three as "immature: ... | adult: ... | record: ...".
Outcome RunMatchFiles(Workbench& bench, const std::uint8_t* data, std::size_t size);
extern const char* const kMatchImmature;
extern const char* const kMatchAdult;

// The bytes as each of the five matrix files of "E. 3D life table" in turn, the other four
// the small study kMatrixFile. Outcome of the first route that doesn't run through.
Outcome RunMatrixFile(Workbench& bench, const std::uint8_t* data, std::size_t size);
extern const char* const kMatrixFile;

// The other treatment of RunColumnFile: 20 values of r.
extern const char* const kColumnFile;

}  // namespace korvan::fuzz
