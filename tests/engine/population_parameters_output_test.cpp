// Files and report text of the population parameters.
#include <gtest/gtest.h>

#include <memory>
#include <sstream>

#include "engine/population_parameters.h"
#include "engine/population_parameters_fixture.h"
#include "support/fake_prompts.h"
#include "support/test_support.h"

namespace korvan {
namespace {

using test::Life;
using test::ReadFile;

std::vector<std::string> Lines(const std::string& text) {
  std::vector<std::string> out;
  std::istringstream in(text);
  for (std::string line; std::getline(in, line);) out.push_back(line);
  return out;
}

bool HasLine(const std::vector<std::string>& lines, const std::string& line) {
  return std::find(lines.begin(), lines.end(), line) != lines.end();
}

struct Output {
  test::TempDir dir;
  std::unique_ptr<Session> S = std::make_unique<Session>();
  test::FakePrompts P;
  ParameterEngine E{*S, P};
  Output(int m, const std::vector<Life>& cohort, double tu) {
    S->identity.DataFileBase = dir.file("mite");
    test::LoadTables(*S, m, cohort, tu);
  }
  std::string File(const std::string& suffix) const { return ReadFile(dir.file("mite" + suffix)); }
  bool Exists(const std::string& suffix) const { return std::filesystem::exists(dir.file("mite" + suffix)); }
};

TEST(ParameterFiles, PopulationParametersFileAndItsConditions) {
  Output o(2, test::ParthenogeneticCohort(), 1);
  o.E.Life05();
  o.E.PrintTotalPopulationParameters();
  const auto& b = o.S->params;
  EXPECT_EQ(o.File("_ZZ-population parameters.txt"),
            "\"Intrinsic rate\"," + FullPrecision(b.R_Basic) + "\n\"Finite rate\"," + FullPrecision(b.Lambda_Basic) +
                "\n\"Net reproductive rate\"," + FullPrecision(b.R0_Basic) + "\n\"Mean generation time\"," +
                FullPrecision(b.T_Basic) + "\n");

  Output none(2, test::ParthenogeneticCohort(), 1);
  none.S->options.OutputLevel = "Nooutput";
  none.E.Life05();
  none.E.PrintTotalPopulationParameters();
  EXPECT_FALSE(none.Exists("_ZZ-population parameters.txt"));
  Output barren(2, {{"F", {2, 3}, {0, 0, 0}}}, 1);
  barren.P.Answer("Net reproductive rate = 0!", "OK");
  barren.E.Life05();
  barren.E.PrintTotalPopulationParameters();
  EXPECT_FALSE(barren.Exists("_ZZ-population parameters.txt"));
}

TEST(ParameterFiles, FigureFilesHeadingsRowsAndClosingRows) {
  Output o(2, test::ParthenogeneticCohort(), 0.3);  // no males; ages in thirds
  o.E.Life05();
  o.E.Life05a();
  const int last = o.S->ws.tables.LastAge;
  const auto vxj = Lines(o.File("_4_Fig_Vxj.txt"));
  ASSERT_EQ(vxj.size(), static_cast<std::size_t>(last + 4));
  EXPECT_EQ(vxj[0], "\"Age-stage reproductive value\"");
  EXPECT_EQ(vxj[1], "Age,Stage1,Female,-");
  EXPECT_EQ(vxj[2], "0," + FullPrecision(o.S->params.VxjBasic(0, 1)) + "," +
                        FullPrecision(o.S->params.VxjBasic(0, 2)) + ",0");
  EXPECT_EQ(vxj[3].substr(0, 18), "0.333333333333333,");
  EXPECT_EQ(vxj.back(), FullPrecision((last + 1) / 3.0) + ",0,0,0");

  const auto lx = Lines(o.File("_Fig_Lx.txt"));
  EXPECT_EQ(lx[1], "Age,survival rate l(x),mortality");
  EXPECT_EQ(lx.back(), FullPrecision((last + 1) / 3.0) + ",0,1");
  const auto ssd = Lines(o.File("_5a_Fig_SSD_in proportion.txt"));
  ASSERT_EQ(ssd.size(), 5u);
  EXPECT_EQ(ssd[1], "Stage no.,Stage name,SSD");
  EXPECT_EQ(ssd[4].substr(0, 7), "3,Male,");
  const auto fig2 = Lines(o.File("_2_Fig_Lx-Fxf-Mx-LxMx.txt"));
  EXPECT_EQ(fig2.back(), FullPrecision((last + 1) / 3.0) + ",0,0,0,0," + FullPrecision(o.S->ws.params.CumLxMx(last)));
  const auto ratio = Lines(o.File("_9_Fig_Rx_R0-ratio_Cumu-r_r-Ratio.txt"));
  // The cumulative ratio reaches 1 at the last age, the Euler terms sum to 1 (at r).
  const std::string lastRow = ratio.back();
  EXPECT_NE(lastRow.find(",1,"), std::string::npos) << lastRow;
  for (const char* f : {"_Fig_Exj.txt", "_Fig_SAD_in percentage.txt", "_Fig_SAD_in proportion.txt",
                        "_Fig_age-specific total fecundity.txt", "_Fig_Ex.txt", "_Fig_Vx.txt",
                        "_21_Lewis Sx and Fx.txt", "_Fig_Mx.txt", "_5_Fig_SASD_in_percentage.txt",
                        "_5_Fig_SASD_in proportion.txt", "_5b_Fig_SSD_in percentage.txt"})
    EXPECT_TRUE(o.Exists(f)) << f;

  // Only the major files when the output level is "No".
  Output major(2, test::ParthenogeneticCohort(), 1);
  major.S->options.OutputLevel = "No";
  major.E.Life05();
  major.E.Life05a();
  EXPECT_FALSE(major.Exists("_4_Fig_Vxj.txt"));
  EXPECT_TRUE(major.Exists("_2_Fig_Lx-Fxf-Mx-LxMx.txt"));
}

TEST(ParameterReport, MainTableBlockOfParameters) {
  Output o(4, test::TwoSexCohort(), 1);
  o.S->channels.MainOutput.Open(o.dir.file("main.txt"));
  o.S->ws.lifeTable.FemaleCount = 4;
  o.S->ws.lifeTable.FemaleFecundityMean = 36;
  o.E.Life05();
  o.E.Life05a();
  o.E.PrintIntrinsicRateTable();
  o.S->channels.MainOutput.Close();
  const auto lines = Lines(ReadFile(o.dir.file("main.txt")));
  const auto& p = o.S->ws.params;
  EXPECT_TRUE(HasLine(lines, " The net reproductive rate (R0) =" + PrintNumber(p.R0) + "offspring/individual."));
  EXPECT_TRUE(HasLine(lines, " The intrinsic rate of increase (r) =" + PrintNumber(p.r) + "/time unit."));
  EXPECT_TRUE(HasLine(lines, " The doubling time (DT) =" + PrintNumber(p.DoublingTime)));
  // Star lines close at column 85.
  int starLines = 0;
  for (const auto& l : lines) {
    if (l.rfind(" *  ", 0) != 0) continue;
    ++starLines;
    EXPECT_EQ(l.size(), 85u) << l;
    EXPECT_EQ(l.back(), '*');
  }
  EXPECT_EQ(starLines, 7);
  // R0 = 4 * 36 / 10 exactly: the check passes.
  EXPECT_TRUE(HasLine(lines, " This relationship shows that the two-sex life table is correct. If there is"));
  // The row of age 0: the age, then l(x) at column 10.
  auto head = std::find_if(lines.begin(), lines.end(), [](const std::string& l) { return l.rfind(" x       l(x)", 0) == 0; });
  ASSERT_LT(head + 2, lines.end());
  const std::string& row = *(head + 2);
  EXPECT_EQ(row.substr(0, 3), " 0 ");
  EXPECT_EQ(row.substr(9, 3), " 1 ");
  EXPECT_EQ(row.substr(68, PrintNumber(RoundDisplay(p.Vx(0), 2)).size()), PrintNumber(RoundDisplay(p.Vx(0), 2)));
  // The stable tables mark ages outside a stage.
  EXPECT_TRUE(std::any_of(lines.begin(), lines.end(),
                          [](const std::string& l) { return l.find(" - ") != std::string::npos; }));
}

TEST(ParameterReport, RelationshipOfFecundityAndR0HasNoAbsoluteValue) {
  for (double F : {36.0, 1000.0, 20.0}) {
    Output o(4, test::TwoSexCohort(), 1);
    o.S->channels.MainOutput.Open(o.dir.file("main.txt"));
    o.S->ws.lifeTable.FemaleCount = 4;
    o.S->ws.lifeTable.FemaleFecundityMean = F;
    o.E.Life05();
    o.E.PrintRelationshipFtoR0();
    o.S->channels.MainOutput.Close();
    const auto lines = Lines(ReadFile(o.dir.file("main.txt")));
    const bool warned = HasLine(lines, " Attention: There are significant difference between R0 and F*(Nf/N).");
    EXPECT_EQ(warned, F == 20.0) << F;  // 4 * 1000 / 10 far above R0 passes all the same
  }
}

TEST(ParameterReport, FractionalTimeUnitRecomputesTheStepFiniteRate) {
  Output o(2, test::ParthenogeneticCohort(), 0.3);
  o.S->channels.MainOutput.Open(o.dir.file("main.txt"));
  o.E.Life05();
  o.E.Life05a();
  const double before = o.S->ws.params.StepFiniteRate;
  o.E.PrintIntrinsicRateTable();
  o.S->channels.MainOutput.Close();
  const auto& p = o.S->ws.params;
  EXPECT_EQ(before, std::pow(p.lambda, 1.0 / 3));
  EXPECT_EQ(p.StepFiniteRate, std::exp(p.StepIntrinsicRate));  // exp(0.3 r), not lambda^(1/3)
  const auto lines = Lines(ReadFile(o.dir.file("main.txt")));
  EXPECT_TRUE(HasLine(lines, " **********  The finite rate of increase (lambda) per  0.3  time unit is" +
                                 PrintNumber(p.StepFiniteRate)));
  const std::string birth = " *  Birth rate rate (b) (at SASD) (per  0.3  time unit) =" + PrintNumber(p.BirthRateStep);
  EXPECT_TRUE(HasLine(lines, birth + std::string(84 - birth.size(), ' ') + "*"));
}

}  // namespace
}  // namespace korvan
