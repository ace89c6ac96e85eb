// "P. Spec. boot": a sample record read back and written as a data file.
#include "commands/spec_boot_sample.h"

#include <string>

#include "bootstrap/percentile.h"
#include "input/data_file_writer.h"

namespace korvan {

void SpecBootSampleCommand::cmdWriteSpeLifeTable_Click() {
  Flow("cmdWriteSpeLifeTable_Click");
  const std::string title = "Write life table data for specific bootstrap sample?";
  const std::string text =
      "Write life table data for specific bootstrap sample only? If yes, open the bootstrap sample record (e.g., "
      "....__Ka, _Kb, or _Kc_...-sample_....txt).";
  if (P.MsgBox(text, title, kYesNo) != kYes) return;
  BootPercentiles percentiles(S, P, W);
  percentiles.SpecRecordPath = P.ChooseFile("Open specific bootstrap sample and prepare its life table");
  if (percentiles.SpecRecordPath.empty()) return;
  if (!percentiles.InputSpecBootSample()) return;
  LifeTableWriter writer(S, P, W);
  writer.SampleNumber = percentiles.SpecSampleNumber;
  writer.FromSavedSamples = true;
  writer.WriteLifeTableForSpecificSampleFile();
}

}  // namespace korvan
