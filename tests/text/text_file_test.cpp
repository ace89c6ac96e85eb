#include <gtest/gtest.h>

#include <string>

#include "store/faults.h"
#include "support/test_support.h"
#include "text/side_by_side_rows.h"
#include "text/text_file.h"

namespace korvan {
namespace {

using test::ReadFile;
using test::TempDir;

// Writes through a TextFile and gives back what stands in the file.
template <class Body>
std::string Written(Body body) {
  TempDir dir;
  {
    TextFile f(dir.file("out.txt"));
    body(f);
  }
  return ReadFile(dir.file("out.txt"));
}

TEST(TextFilePrint, NumbersCarryTheirBlanksAndZonesAreFourteenColumns) {
  EXPECT_EQ(Written([](TextFile& f) { f.Print("Age", 3, -2.5, 0); }), "Age 3 -2.5  0 \n");
  // A zone move always goes to the next zone, also from a zone's first column.
  EXPECT_EQ(Written([](TextFile& f) { f.Print("x", Zone{}, "y", Zone{}, "z"); }),
            "x             y             z\n");
  EXPECT_EQ(Written([](TextFile& f) { f.Print(Zone{}, "a"); }), std::string(14, ' ') + "a\n");
  EXPECT_EQ(Written([](TextFile& f) { f.Print(std::string(13, 'a'), Zone{}, "b"); }),
            std::string(13, 'a') + " b\n");
  EXPECT_EQ(Written([](TextFile& f) { f.Print(std::string(14, 'a'), Zone{}, "b"); }),
            std::string(14, 'a') + std::string(14, ' ') + "b\n");
  // A number that fills its zone pushes the next one on.
  EXPECT_EQ(Written([](TextFile& f) { f.Print(1234567.125, Zone{}, 1e-07); }),
            " 1234567.125   1E-07 \n");
}

TEST(TextFilePrint, TabGoesToAColumnOrToTheNextLine) {
  EXPECT_EQ(Written([](TextFile& f) { f.Print("ab", Tab{6}, "c"); }), "ab   c\n");
  EXPECT_EQ(Written([](TextFile& f) { f.Print("abcde", Tab{6}, "c"); }), "abcdec\n");
  EXPECT_EQ(Written([](TextFile& f) { f.Print("abcdef", Tab{3}, "c"); }), "abcdef\n  c\n");
  EXPECT_EQ(Written([](TextFile& f) { f.Print(Tab{0}, "c", Tab{-4}, "d"); }), "c\nd\n");
  // Columns count from the start of the line, across PrintPart calls.
  EXPECT_EQ(Written([](TextFile& f) {
              f.PrintPart("ab");
              f.PrintPart(Tab{5}, 7);
              f.Print(Tab{10}, "x");
              f.Print(Tab{3}, "y");
            }),
            "ab   7   x\n  y\n");
  // A character is text, not a number.
  EXPECT_EQ(Written([](TextFile& f) { f.Print('*', 'x'); }), "*x\n");
}

TEST(TextFileWrite, StringsQuotedNumbersBareAtFullPrecision) {
  EXPECT_EQ(Written([](TextFile& f) { f.Write("Age", 3, -2.5, 0.1, 1e-07, -0.0, 1.0 / 3); }),
            "\"Age\",3,-2.5,0.1,1E-07,0,0.333333333333333\n");
  EXPECT_EQ(Written([](TextFile& f) { f.Write(123456789012345.0, 1234567890123456.0, 2e15, -4.5e-10); }),
            "123456789012345,1.23456789012346E+15,2E+15,-4.5E-10\n");
  EXPECT_EQ(Written([](TextFile& f) { f.Write(std::string("a,b"), 'c'); }), "\"a,b\",\"c\"\n");
  EXPECT_EQ(Written([](TextFile& f) { f.Write(); }), "\n");
  // A list left open goes on in the next statement as one list.
  EXPECT_EQ(Written([](TextFile& f) {
              f.WritePart("Boot", 1);
              f.WritePart(2.5);
              f.Write("end", -1);
            }),
            "\"Boot\",1,2.5,\"end\",-1\n");
}

TEST(TextFile, OpenAppendCloseAndFailure) {
  TempDir dir;
  {
    TextFile f(dir.file("a.txt"));
    f.Print("one");
    EXPECT_EQ(f.Column(), 1);
    f.PrintPart("ab");
    EXPECT_EQ(f.Column(), 3);
  }  // closed by its end, standing as far as written
  EXPECT_EQ(ReadFile(dir.file("a.txt")), "one\nab");
  {
    TextFile f(dir.file("a.txt"), TextFile::Mode::Append);
    f.Print("two");
  }
  EXPECT_EQ(ReadFile(dir.file("a.txt")), "one\nabtwo\n");
  {
    TextFile f(dir.file("a.txt"));  // output starts the file anew
    f.Write("x");
  }
  EXPECT_EQ(ReadFile(dir.file("a.txt")), "\"x\"\n");

  try {
    TextFile f(dir.file("no such folder/b.txt"));
    ADD_FAILURE() << "opened";
  } catch (const ProgramEnd& e) {
    EXPECT_NE(e.message.find("no such folder/b.txt"), std::string::npos);
  }
  // A closed file takes no text and moved files keep their place.
  TextFile closed;
  EXPECT_FALSE(closed.IsOpen());
  closed.Print("lost");
  TextFile a(dir.file("m.txt"));
  a.PrintPart("abc");
  TextFile b(std::move(a));
  EXPECT_FALSE(a.IsOpen());
  EXPECT_EQ(b.Column(), 4);
  b.Print(Tab{6}, "d");
  b.Close();
  EXPECT_EQ(ReadFile(dir.file("m.txt")), "abc  d\n");
}

// Rows formatted side by side give the bytes of a plain loop, whatever the number of threads
// (stretch edges, lines of several rows, print zones, rows left out), and the file's column
// goes on from them; a row that throws ends the writing with its fault.
TEST(TextFile, RowsSideBySideAreThoseOfOneLoop) {
  TempDir dir;
  const long last = 3 * kRowsPerStretch + 17;
  auto row = [](long i, TextFile& out) {
    if (i % 7 == 3) return;
    out.Print(i, Zone{}, 1.0 / static_cast<double>(i));
    if (i % 5 == 0) out.Write("five", i * 0.25);
  };
  {
    TextFile plain(dir.file("plain.txt"));
    for (long i = 1; i <= last; ++i) row(i, plain);
    plain.PrintPart("end");
  }
  for (int threads : {1, 2, 4}) {
    const std::string path = dir.file("rows" + std::to_string(threads) + ".txt");
    {
      TextFile out(path);
      WriteRowsSideBySide(out, 1, last, threads, row);
      out.PrintPart("end");
      EXPECT_EQ(out.Column(), 4);
    }
    EXPECT_EQ(ReadFile(path), ReadFile(dir.file("plain.txt"))) << threads;
  }
  TextFile out(dir.file("fault.txt"));
  EXPECT_THROW(WriteRowsSideBySide(out, 1, last, 2,
                                   [](long i, TextFile& rows) {
                                     if (i == 2 * kRowsPerStretch + 5) throw OverflowFault();
                                     rows.Write(i);
                                   }),
               OverflowFault);
  // Work in pieces: every piece runs once, and a fault on a helper thread reaches the caller
  // after all have ended.
  std::vector<int> ran(3, 0);
  EXPECT_THROW(RunSideBySide(3,
                             [&](int t) {
                               ++ran[static_cast<std::size_t>(t)];
                               if (t == 2) throw OverflowFault();
                             }),
               OverflowFault);
  EXPECT_EQ(ran, std::vector<int>({1, 1, 1}));
}

}  // namespace
}  // namespace korvan
