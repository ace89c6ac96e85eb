// Life07: the age-specific life table for graphs, and the files for the sibling simulators.
#include "engine/stage_statistics.h"
#include "store/rules.h"
#include "text/numbers.h"

namespace korvan {

void StageStatsEngine::Life07() {
  Flow("Life07");
  if (S.options.OutputLevel != "Nooutput") {
    const double tu = TimeUnit();
    const long lastAge = W.tables.LastAge;
    TextFile f(OutputName(S, "_2a_Fig_Lx-Mx-LxMx.txt"));
    f.Write(S.identity.ProjectName);
    f.Write(S.identity.TreatmentName);
    f.Write(S.identity.UserName);
    f.Write("Notewell! This age-specific life table is calculated based on age-stage, two-sex life table");
    f.RawText("Age,l(x),m(x),l(x)m(x)\n");
    for (long x = 0; x <= lastAge; ++x) {
      const double lx = W.tables.Lx(x), mx = W.params.Mx(x);
      f.Write(TimeUnitToDays(static_cast<double>(x), tu), lx, mx, lx * mx);
    }
    f.Write(TimeUnitToDays(static_cast<double>(lastAge + 1), tu), 0, 0, 0);
  }
  if (W.stageStats.ReproductiveFemaleCount > 0) {
    WriteDataFileForZeltom1Control();
    WriteDataFileForZeltom1Control2ETs();
    WriteDataFileForZeltom1Control3ETs();
    WriteDataFileForZeltom2Controls();
    WriteDataFileForZeltom3Controls();
    WriteDataFileForZeltomWithHarvest();
    if (S.options.PredationPresent == "Yes") {
      WriteDataFileForZeltomWithCxj();
      WriteDataFileForZeltomWithCxj2ETs();
      WriteDataFileForZeltomWithCxj3ETs();
    }
    WriteDatafileFor2SexCompet();
    WritePredatorDataFile();
    WritePreyDataFile();
    WriteDataFileForSASD10ARx();
    WriteDataFileForSASD10();
  }
}

}  // namespace korvan
