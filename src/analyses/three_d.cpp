// The 3D life table: the matrix files of its five Basic Runs, their readers, and the
// combination of the female, male and N-type cohorts into one population.
#include "analyses/three_d.h"

#include <algorithm>
#include <cmath>
#include <string>

#include "engine/table_text.h"
#include "input/data_file_writer.h"
#include "input/field_reader.h"
#include "store/faults.h"
#include "text/numbers.h"
#include "text/text_file.h"

namespace korvan {

namespace {

constexpr const char* kMatrixTitle = "Error in 3D matrix file";

// Values of one stage over its ages, `perLine` to a line, comma-separated and bare; the stage
// ends its line.
template <class ValueOf>
void WriteStageRow(TextFile& out, int first, int last, int perLine, ValueOf value) {
  int onLine = 0;
  for (int x = first; x <= last; ++x) {
    if (onLine > 0) out.RawText(",");
    out.RawText(FullPrecision(value(x)));
    if (++onLine == perLine && x < last) {
      out.NewLine();
      onLine = 0;
    }
  }
  out.NewLine();
}

}  // namespace

void ThreeDMatrices::WriteDataFileFor3Dmatrices() {
  Flow("WriteDataFileFor3Dmatrices");
  const CohortHeader& H = S.header;
  const AgeStageTables& T = S.ws.tables;
  const LifeTableWork& L = S.ws.lifeTable;
  const int m = H.StageCount;
  const bool females = H.TypeCounts(1) > 0, males = H.TypeCounts(2) > 0;
  std::string suffix;
  if (females)
    suffix = "_20_3D_matrices for_Sex_F_" + S.identity.UserName + ".txt";
  else if (males)
    suffix = "_20_For_3D_matrices for_Sex_M.txt";
  else
    suffix = "_20_For_3D_matrices for_Sex_N.txt";
  // The adult row: the female stage, or a male cohort's male stage m + 1.
  const int adult = !females && males ? m + 1 : m;
  auto stageOf = [&](int j) { return j == m ? adult : j; };

  TextFile out(OutputName(S, suffix));
  out.Write("Description: the next three lines are project, date (or offspring type) and user name.");
  out.Write(StampedProjectLine(S));
  out.Write(S.identity.UserName);
  out.Write(S.identity.TreatmentName);
  out.Write("Description: Last age group is " + std::to_string(T.LastAge) + ", number of stages is " + std::to_string(m));
  out.RawText(std::to_string(T.LastAge) + "," + std::to_string(m) + "\n");
  out.Write("Description: next lines are stage name, stage begin age, stage end age");
  for (int j = 1; j < m; ++j) out.Write(H.StageName(1, j), L.StageFirstAge(j), L.StageLastAge(j));
  out.Write(females ? "Female" : males ? "Male" : "Unknown", L.StageFirstAge(adult), L.StageLastAge(adult));

  auto matrix = [&](const char* description, const AgeStageMatrix& M) {
    out.Write(description);
    for (int j = 1; j <= m; ++j) {
      if (j > 1) out.NewLine();
      const int s = stageOf(j);
      WriteStageRow(out, L.StageFirstAge(s), L.StageLastAge(s), 10, [&](int x) { return M(x, s); });
    }
  };
  matrix("Description: the next lines are the matrix S for each stage.", T.Sxj);
  matrix("Description: the next lines are the growth rates for each stage.", T.Gxj);
  out.Write("Description: next lines are developmental rates");
  if (m >= 2 && L.StageFirstAge(2) == 0) {
    out.RawText("0\n");
  } else {
    for (int j = 1; j < m; ++j) {
      if (j > 1) out.NewLine();
      // The last move leads into the adult row: a male cohort's is row m of D.
      const int row = j == m - 1 && adult == m + 1 ? m : j;
      WriteStageRow(out, L.StageFirstAge(j), L.StageLastAge(j), 10, [&](int x) { return T.Dxj(x, row); });
    }
  }
  if (!females) return;

  out.Write("Description: the female stage is");
  out.RawText(std::to_string(m) + "\n");
  const int first = L.StageFirstAge(m), last = L.StageLastAge(m);
  out.Write("Description: there are " + std::to_string(std::max(0, last - first + 1)) + " fecundity data for female");
  WriteStageRow(out, first, last, 10, [&](int x) { return T.Fxj(x, m); });
  if (S.identity.UserName == "daughter") {
    out.Write("Female finite rate");
    out.RawText(FullPrecision(S.params.Lambda_Basic) + "\n");
  }
  out.Write("Description: the next lines are the stable age-stage distribution of female.");
  for (int j = 1; j <= m; ++j)
    WriteStageRow(out, L.StageFirstAge(j), L.StageLastAge(j), 5, [&](int x) { return S.ws.params.Axj(x, j); });
}

// ---------------------------------------------------------------------------------------
// Readers

void ThreeDMatrices::ReadMatrixFile(const std::string& path, int t, char kind) {
  ThreeDRecord& D = S.threeD;
  FieldReader in(path);
  auto fault = [&](const std::string& what) {
    throw ProgramEnd{"The matrix file " + path + " is not a 3D matrix file: " + what + " (line " +
                         std::to_string(in.Line()) + ").",
                     kMatrixTitle};
  };
  auto number = [&](const char* what) {
    const double v = in.ReadNumber();
    if (!in.LastNumberValid() || !std::isfinite(v)) fault(std::string("\"") + in.LastText() + "\" stands for " + what);
    return v;
  };
  auto whole = [&](const char* what, int lo, int hi) {
    const double v = number(what);
    if (v != std::floor(v) || v < lo || v > hi)
      fault(std::string(what) + " " + FullPrecision(v) + " is not a whole number from " + std::to_string(lo) + " to " +
            std::to_string(hi));
    return static_cast<int>(v);
  };
  in.ReadString();
  in.ReadString();
  in.ReadString();
  in.ReadString();
  in.ReadString();
  const int lastAge = whole("the last age", 0, kMaxAge - 1);
  const int m = whole("the number of stages", 2, kMaxStage - 1);
  int first[kMaxStage + 1] = {}, last[kMaxStage + 1] = {};
  std::string names[kMaxStage + 1];
  in.ReadString();
  for (int j = 1; j <= m; ++j) {
    names[j] = in.ReadString().substr(0, 4);
    first[j] = whole("a stage's first age", 0, kMaxAge - 1);
    last[j] = whole("a stage's last age", -1, kMaxAge - 1);
  }
  const bool keepMatrices = kind != 'O';
  auto readRows = [&](ThreeDRecord::Cube3* into, int stages) {
    in.ReadString();
    for (int j = 1; j <= stages; ++j)
      for (int x = first[j]; x <= last[j]; ++x) {
        const double v = number("a matrix value");
        if (keepMatrices) (*into)(t, x, j) = v;
      }
  };
  if (keepMatrices) {
    D.CohortLastAge(t) = lastAge;
    D.CohortStageCount(t) = m;
    for (int j = 1; j <= m; ++j) {
      D.CohortStageName(t, j) = names[j];
      D.CohortStageFirstAge(t, j) = first[j];
      D.CohortStageLastAge(t, j) = last[j];
    }
  }
  readRows(&D.CohortSxj, m);
  readRows(&D.CohortGxj, m);
  if (first[2] == 0) {
    in.ReadString();
    number("a developmental rate");
  } else {
    readRows(&D.CohortDxj, m - 1);
  }
  if (kind == 'C') return;

  in.ReadString();
  const int female = whole("the female stage", 1, m);
  D.FemaleStage3D = female;
  in.ReadString();
  for (int x = first[female]; x <= last[female]; ++x) {
    const double f = number("a fecundity value");
    if (f == -1) {
      // A -1 closes the list and the file: the rest of it is not read.
      D.OffspringFxj(t, x) = 0;
      return;
    }
    if (f < 0) fault("a fecundity value " + FullPrecision(f) + " is negative");
    D.OffspringFxj(t, x) = f;
  }
  if (kind != 'D') return;
  in.ReadString();
  D.FiniteRate3D = number("the finite rate");
  if (!(D.FiniteRate3D > 0)) fault("the finite rate " + FullPrecision(D.FiniteRate3D) + " is not above 0");
  D.IntrinsicRate3D = std::log(D.FiniteRate3D);
  in.ReadString();
  for (int j = 1; j <= m; ++j)
    for (int x = first[j]; x <= last[j]; ++x) D.CohortPxj(1, x, j) = number("a stable distribution value");
}

namespace {

std::string BaseOf(const std::string& path) { return path.size() > 4 ? path.substr(0, path.size() - 4) : path; }

}  // namespace

void ThreeDMatrices::ReadChosenMatrixFile(const std::string& title, int t, char kind) {
  const std::string path = P.ChooseFile(title);
  if (path.empty()) throw ProgramEnd{"No file was chosen.", title};
  S.identity.DataFileBase = BaseOf(path);
  if (kind == 'D') S.threeD.OutputBase = BaseOf(path);
  ReadMatrixFile(path, t, kind);
}

void ThreeDMatrices::ReadFMNofMaleOffspring() {
  Flow("ReadFMNofMaleOffspring");
  ReadChosenMatrixFile("Open female data file (male offspring)", 2, 'O');
}
void ThreeDMatrices::ReadFMNofNtypeOffspring() {
  Flow("ReadFMNofNtypeOffspring");
  ReadChosenMatrixFile("Open female data file (N-type offspring)", 3, 'O');
}
void ThreeDMatrices::ReadFMNofMale() {
  Flow("ReadFMNofMale");
  ReadChosenMatrixFile("Open male data file", 2, 'C');
}
void ThreeDMatrices::ReadFMNofNType() {
  Flow("ReadFMNofNType");
  ReadChosenMatrixFile("Open N-type data file", 3, 'C');
}

void ThreeDMatrices::ReadFMNofFemaleOffspring() {
  Flow("ReadFMNofFemaleOffspring");
  S.threeD.FiniteRate3D = 0;
  ReadChosenMatrixFile("Open female data file (female offspring)", 1, 'D');
  if (!(S.threeD.FiniteRate3D > 0))
    throw ProgramEnd{"The daughters' file ends before its finite rate (a -1 in its fecundity?).", kMatrixTitle};
}

// ---------------------------------------------------------------------------------------
// The population

void ThreeDMatrices::CalculateAlpha() {
  ThreeDRecord& D = S.threeD;
  const int f = D.FemaleStage3D;
  for (int t = 1; t <= 3; ++t) {
    D.SumPf(t) = 0;
    for (int x = D.CohortStageFirstAge(1, f); x <= D.CohortStageLastAge(1, f); ++x)
      D.SumPf(t) += D.CohortPxj(1, x, f) * D.OffspringFxj(t, x);
  }
  if (!(D.SumPf(1) > 0))
    throw ProgramEnd{"The female cohort has no daughters in its stable population: Alpha cannot be found.",
                     kMatrixTitle};
  D.Alpha(1) = 1;
  D.Alpha(2) = D.SumPf(2) / D.SumPf(1);
  if (D.NTypeAbsent != "Yes") D.Alpha(3) = D.SumPf(3) / D.SumPf(1);
}

void ThreeDMatrices::CalculateP3DforMandN() {
  Flow("CalculateP3DforMandN");
  ThreeDRecord& D = S.threeD;
  CalculateAlpha();
  const double lambda = D.FiniteRate3D;
  for (int t = 2; t <= 3; ++t) {
    if (t == 3 && D.NTypeAbsent == "Yes") continue;
    auto p = [&](int x, int j) -> double& { return D.CohortPxj(t, x, j); };
    auto g = [&](int x, int j) { return D.CohortGxj(t, x, j); };
    auto d = [&](int x, int j) { return D.CohortDxj(t, x, j); };
    p(0, 1) = 1;
    for (int x = 1; x <= D.CohortStageLastAge(t, 1); ++x) p(x, 1) = g(x - 1, 1) * p(x - 1, 1) / lambda;
    for (int j = 2; j <= D.CohortStageCount(t); ++j) {
      if (t == 3 && D.CohortStageFirstAge(t, j) == 0) break;
      for (int x = std::max(1, D.CohortStageFirstAge(t, j)); x <= D.CohortStageLastAge(t, j); ++x)
        p(x, j) = (d(x - 1, j - 1) * p(x - 1, j - 1) + g(x - 1, j) * p(x - 1, j)) / lambda;
    }
  }
  double total[4] = {0, 0, 0, 0}, grand = 0;
  auto eachCell = [&](auto visit) {
    for (int t = 1; t <= 3; ++t) {
      if (t == 3 && D.NTypeAbsent == "Yes") continue;
      for (int j = 1; j <= D.CohortStageCount(t); ++j)
        for (int x = D.CohortStageFirstAge(t, j); x <= D.CohortStageLastAge(t, j); ++x) visit(t, x, j);
    }
  };
  eachCell([&](int t, int x, int j) { total[t] += D.CohortPxj(t, x, j) * D.Alpha(t); });
  grand = total[1] + total[2] + total[3];
  if (!(grand > 0) || !std::isfinite(grand))
    throw ProgramEnd{"The stable distributions of the three cohorts hold no individual (or no finite number): no "
                     "stable sex or stage distribution can be found.",
                     kMatrixTitle};
  const int f = D.FemaleStage3D;
  D.R0Total3D = 0;
  for (int t = 1; t <= 3; ++t) {
    D.R0ByType(t) = 0;
    for (int x = D.CohortStageFirstAge(1, f); x <= D.CohortStageLastAge(1, f); ++x)
      D.R0ByType(t) += D.OffspringFxj(t, x) * D.CohortSxj(1, x, f);
    D.R0Total3D += D.R0ByType(t);
  }
  // The shares add to what the proportions already hold: a second run in a session adds again.
  eachCell([&](int t, int x, int j) {
    const double share = D.CohortPxj(t, x, j) * D.Alpha(t) / grand;
    D.ProportionByAge(x) += share;
    D.ProportionByStage(j) += share;
    D.ProportionByType(t) += share;
  });
}

void ThreeDMatrices::Write3DReport() {
  Flow("Write3DReport");
  const ThreeDRecord& D = S.threeD;
  TextFile out(D.OutputBase + "-3D output.txt");
  out.Print(Tab{70}, "Page", 1);
  out.Print("Program: Age-Stage, Korvan Life Table Analysis");
  PrintDateAndTime(out);
  out.NewLine();
  out.NewLine();
  int table = 0;
  auto head = [&](const std::string& title) { out.Print("Table", ++table, ":", title); };
  head("Population parameters");
  out.Print(std::string(55, '='));
  out.Print("Finite rate of female population:", D.FiniteRate3D);
  out.Print("Intrinsic rate of female population:", D.IntrinsicRate3D);
  out.Print(std::string(55, '-'));
  out.NewLine();
  head("Value of Alpha");
  out.Print(std::string(38, '='));
  out.Print("Alpha(1) (female):", 1);
  out.Print("Alpha(2) (male)  :", RoundDisplayOrWhole(D.Alpha(2), 6));
  out.Print("Alpha(3) (N-type):", RoundDisplayOrWhole(D.Alpha(3), 6));
  out.Print(std::string(38, '-'));
  out.NewLine();
  head("Stable sex distribution");
  out.Print(std::string(32, '='));
  out.Print("Female:", D.ProportionByType(1));
  out.Print("Male  :", D.ProportionByType(2));
  out.Print("N-type:", D.ProportionByType(3));
  out.Print(std::string(32, '-'));
  out.NewLine();
  head("Stable stage distribution:");
  out.Print(std::string(35, '='));
  const int m = D.CohortStageCount(1);
  for (int j = 1; j <= m; ++j)
    out.Print(j == m ? std::string("Adult") : D.CohortStageName(1, j), ": ", D.ProportionByStage(j));
  out.Print(std::string(35, '-'));
}

}  // namespace korvan
