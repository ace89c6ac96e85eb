#include "bootstrap/column_file.h"

#include <cmath>

#include "input/field_reader.h"
#include "store/faults.h"
#include "text/text_file.h"

namespace korvan {

void WriteColumnHead(TextFile& out, const std::string& treatment, const ColumnHead& head) {
  out.Write(treatment + head.tag);
  out.Write("Next line is Bootstrap sample size (n)");
  out.Write(head.line3);
  out.Write(head.line4);
  out.Write(head.line5);
  out.Write(head.name, head.nIn6, head.cohortValue);
}

ColumnFile ReadColumnFile(const std::string& path, bool serialNumbers, const std::string& title) {
  FieldReader in(path);
  ColumnFile c;
  c.treatment = in.ReadString();
  in.ReadString();
  c.n = in.ReadNumber();
  in.ReadString();
  const double B = in.ReadNumber();
  if (!(B >= 1 && B <= 1e7) || B != std::floor(B))
    throw ProgramEnd{"The file " + path + " gives no number of bootstrap samples (B) in its 5th line.", title};
  c.B = static_cast<long>(B);
  c.name = in.ReadString();
  c.nInLine6 = in.ReadNumber();
  c.cohort = in.ReadNumber();
  auto number = [&]() {
    const int line = in.Line();
    const double v = in.ReadNumber();
    if (!in.LastNumberValid())
      throw ProgramEnd{"Line " + std::to_string(line) + " of " + path + " holds \"" + in.LastText() +
                           "\" where a number should stand.",
                       title};
    return v;
  };
  while (static_cast<long>(c.values.size()) < c.B && in.HasMoreData()) {
    const double first = number();
    if (first == -1) break;
    if (serialNumbers) {
      if (!in.HasMoreData()) break;
      c.serial.push_back(first);
      c.values.push_back(number());
    } else {
      c.values.push_back(first);
    }
  }
  return c;
}

}  // namespace korvan
