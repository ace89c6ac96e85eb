#include <gtest/gtest.h>

#include "input/field_reader.h"
#include "store/faults.h"
#include "support/test_support.h"

namespace korvan {
namespace {

TEST(FieldReader, FieldsEndAtCommasLineEndsAndForNumbersAtBlanks) {
  FieldReader r = FieldReader::FromText("  abc , d e ,\r\n 12 ,-3.5\n4 5,,7\n\n\n  8");
  EXPECT_EQ(r.ReadString(), "abc ");  // leading blanks go, the rest of the field stays
  EXPECT_EQ(r.ReadString(), "d e ");
  EXPECT_EQ(r.ReadNumber(), 12);
  EXPECT_EQ(r.ReadNumber(), -3.5);
  EXPECT_EQ(r.ReadNumber(), 4);  // a blank ends a number ...
  EXPECT_EQ(r.ReadNumber(), 5);  // ... and the next begins behind it
  EXPECT_EQ(r.ReadString(), "");  // an empty field between two commas
  EXPECT_EQ(r.ReadNumber(), 7);
  EXPECT_FALSE(r.AtEnd());
  EXPECT_EQ(r.ReadNumber(), 8);  // empty lines before a field are passed over
  EXPECT_TRUE(r.AtEnd());
  try {
    r.ReadNumber();
    ADD_FAILURE() << "read past the end";
  } catch (const ProgramEnd& e) {
    EXPECT_EQ(e.message, "Input past end of file");
    EXPECT_EQ(e.title, "Error in data file");
  }
}

TEST(FieldReader, QuotedStringsKeepTheirCommas) {
  FieldReader r = FieldReader::FromText("\"Project: A, B\",\"x\"tail,next\n\"open\nline2\n\"7\"");
  EXPECT_EQ(r.ReadString(), "Project: A, B");
  EXPECT_EQ(r.ReadString(), "x");  // text between the closing quote and the comma is dropped
  EXPECT_EQ(r.ReadString(), "next");
  EXPECT_EQ(r.ReadString(), "open");  // a quote left open ends at the line end
  EXPECT_EQ(r.ReadString(), "line2");
  EXPECT_EQ(r.ReadNumber(), 7);
  EXPECT_TRUE(r.LastNumberValid());
}

TEST(FieldReader, NumbersTakeTheirNumericHeadOnly) {
  FieldReader r = FieldReader::FromText("abc,12abc,1e3,0x10,nan,inf,-,.5,F\n");
  EXPECT_EQ(r.ReadNumber(), 0);
  EXPECT_FALSE(r.LastNumberValid());
  EXPECT_EQ(r.LastText(), "abc");
  EXPECT_EQ(r.ReadNumber(), 12);
  EXPECT_FALSE(r.LastNumberValid());
  EXPECT_EQ(r.ReadNumber(), 1000);
  EXPECT_TRUE(r.LastNumberValid());
  for (int k = 0; k < 4; ++k) {
    EXPECT_EQ(r.ReadNumber(), 0) << r.LastText();  // no hexadecimal, NaN or infinity
    EXPECT_FALSE(r.LastNumberValid());
  }
  EXPECT_EQ(r.ReadNumber(), 0.5);
  EXPECT_EQ(r.ReadString(), "F");
  EXPECT_FALSE(r.HasMoreData());
  EXPECT_FALSE(FieldReader::FromText(" ,, \n,").HasMoreData());
  EXPECT_TRUE(FieldReader::FromText(" ,, \n,x").HasMoreData());
}

TEST(FieldReader, AFileThatCannotBeOpenedEndsTheRun) {
  test::TempDir dir;
  EXPECT_THROW(FieldReader(dir.file("missing.txt")), ProgramEnd);
}

}  // namespace
}  // namespace korvan
