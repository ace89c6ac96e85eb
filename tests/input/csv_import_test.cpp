// A cohort kept in a spreadsheet: the data file written from its CSV form, the faults told
// with their place, and a data file of the name that holds another cohort kept.
#include <gtest/gtest.h>

#include <filesystem>

#include "input/csv_import.h"
#include "store/faults.h"
#include "support/test_support.h"

namespace korvan {
namespace {

using test::ReadFile;
using test::TempDir;
using test::WriteFile;

std::string FaultOf(const std::string& path) {
  try {
    ImportCohortCsv(path);
  } catch (const ProgramEnd& e) {
    return e.message;
  }
  return "";
}

TEST(CsvImport, WritesTheDataFileOfTheCohort) {
  TempDir dir;
  // Three females (one with an empty cell within her life, one with eggs in fewer columns than
  // days), a male, two that died in the larva and pupa; quoted cells and a line end of CRLF.
  WriteFile(dir.file("bean.csv"),
            "id,sex,Egg,Larva,Pupa,Adult,d1,d2,d3,d4,d5\n"
            "1,F,3,4,2,5,0,3,5,4,2\n"
            "2,\"F\",3,5,2,4,0,,6,1,\r\n"
            "3,m,4,4,3,3,,,,,\n"
            "4,N,3,-2,,,,,,,\n"
            "5,N,4,5,-1,,,,,,\n"
            "6,F,3,4,3,6,1,2,2,,\n\n,,,,,,,,,,\n");
  EXPECT_EQ(ImportCohortCsv(dir.file("bean.csv")), dir.file("bean.txt"));
  EXPECT_EQ(ReadFile(dir.file("bean.txt")),
            "\"Project: bean\"\n\"Imported from bean.csv\"\n\"bean\"\n6\n2,4\n"
            "F,Egg,Larva,Pupa,Female\nM,Egg,Larva,Pupa,Male\nEgg,Female\n"
            " 1 ,F, 3, 4, 2, 5\n 0, 3, 5, 4, 2,-1\n"
            " 2 ,F, 3, 5, 2, 4\n 0, 0, 6, 1,-1\n"
            " 3 ,M, 4, 4, 3, 3\n"
            " 4 ,N, 3,-2\n"
            " 5 ,N, 4, 5,-1\n"
            " 6 ,F, 3, 4, 3, 6\n 1, 2, 2, 0, 0, 0,-1\n");
  // Again: the same file stands.
  EXPECT_EQ(ImportCohortCsv(dir.file("bean.csv")), dir.file("bean.txt"));

  // A data file of the name with another cohort in it is kept.
  WriteFile(dir.file("bean.txt"), "typed by hand");
  EXPECT_NE(FaultOf(dir.file("bean.csv")).find("exists and holds another cohort"), std::string::npos);
  EXPECT_EQ(ReadFile(dir.file("bean.txt")), "typed by hand");
  EXPECT_FALSE(std::filesystem::exists(dir.file("bean.txt.new")));
}

TEST(CsvImport, FaultsNameTheirPlace) {
  TempDir dir;
  const std::pair<const char*, const char*> cases[] = {
      {"id,sex,Egg,adult,d1\n1,F,2,2,1\n2,F,two,2,1\n", "row 3, column 3 (Egg) holds \"two\""},
      {"id,sex,Egg,adult,d1\n1,F,2,2,1\n2,F,2,2\n", "Row 3 has 4 cells; the header has 5."},
      {"id,sex,Egg,Larva,d1\n1,F,2,2,1\n", "There is no column headed \"adult\"."},
      {"id,sex,Egg,adult,d1\n1,X,2,2,1\n", "The sex at row 2, column 2 (sex) is \"X\""},
      {"id,sex,Egg,adult,d1,d2\n1,F,2,1,3,4\n", "row 2, column 6 (d2) has eggs after the female's adult life"},
      {"id,sex,Egg,Larva,adult\n1,N,2,,\n", "row 2, column 4 (Larva) is empty, but the individual (N) has not died"},
      {"id,sex,Egg,adult,d1\n1,F,2.5,2,1\n", "row 2, column 3 (Egg) holds \"2.5\", not a whole number"},
      {"id,sex,Egg,adult,d1\n1,F,2,2,-1\n", "row 2, column 5 (d1) holds \"-1\", not a number of eggs"},
  };
  for (const auto& [text, message] : cases) {
    WriteFile(dir.file("c.csv"), text);
    EXPECT_NE(FaultOf(dir.file("c.csv")).find(message), std::string::npos) << text << "\n" << FaultOf(dir.file("c.csv"));
    EXPECT_FALSE(std::filesystem::exists(dir.file("c.txt"))) << text;
  }
}

}  // namespace
}  // namespace korvan
