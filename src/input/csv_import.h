#pragma once
// A cohort kept in a spreadsheet, one row per individual, read from its CSV export and written
// as a life-table data file that A1 reads like any other.
//
// The layout: a header row, then a row per individual, every row as many cells as the header.
//   column 1      the individual's number (a whole number; the file numbers them in row order)
//   column 2      its sex: F, M, or N for one that died before adulthood
//   columns 3...  one per preadult stage, headed by the stage's name: the days spent in it;
//                 for an N, the stage it died in holds the days it lived there as a negative
//                 number and the cells after it are empty
//   "adult"       the column headed adult (any case): days of adult life; empty for an N
//   after it      a column per adult day with that day's eggs, for females (an empty cell
//                 within her adult life counts as 0); empty or 0 for males and Ns
// Cells may be quoted; blanks around a cell are ignored; a first line's byte-order mark too.
#include <string>

namespace korvan {

// The data file's name for a CSV file: the same name ending in ".txt".
std::string ImportedDataFilePath(const std::string& csvPath);

// Reads the CSV file and writes the data file beside it (ImportedDataFilePath); returns its
// path. A data file of that name that holds something else is not overwritten. A faulty cell,
// a missing column, a row of another length end with a message naming the row and column, a
// cohort beyond the program's limits with the limit (ProgramEnd, title "Import of a CSV file").
std::string ImportCohortCsv(const std::string& csvPath);

// Whether a path names a CSV file (".csv" in any case).
bool IsCsvPath(const std::string& path);

}  // namespace korvan
