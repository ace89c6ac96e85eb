// Reading a record of bootstrap samples (file no. 11 or 11A) for a run of the same samples.
#include <cmath>
#include <string>

#include "bootstrap/sample_records.h"
#include "input/field_reader.h"
#include "store/faults.h"
#include "text/numbers.h"

namespace korvan {
namespace {

constexpr const char* kOldVersionTitle =
    "Is the file no. 11 or 11A (bootstrap samples) from an old version KORVAN?";

std::string OldVersionText() {
  return "You are using a file no. 11 from old version of KORVAN.\n"
         "Modify the 3rd line of file no. 11 to one of followings:\n"
         "If you selecteced \"Effective only\" and thi is a two-sex population, use the 1st one.\n"
         "If you selecteced \"Effective only\" and this is a female-only population, use the 2nd one.\n"
         "    1. \"EffectBoot-Yes and KorvanMating-Yes\" \n"
         "    2. \"EffectBoot-Yes and KorvanMating-No\" \n"
         "    3. \"AllBoot-Yes and KorvanMating-Yes\" \n"
         "    4. \"AllBoot-Yes and KorvanMating-No\" \n"
         "Click \"Yes\" to use 1. \"EffectBoot-Yes and KorvanMating-Yes\" now.\n"
         "Click \"No\" to use 2. \"EffectBoot-Yes and KorvanMating-No\" now.\n"
         "Click \"Cancel\" to end. You can edit the 3rd line and re-run KORVAN.";
}

}  // namespace

void SampleRecords::ReadSameBootstrapData() {
  Flow("ReadSameBootstrapData");
  BootstrapRecord& R = S.boot;
  const std::string path = P.ChooseFile("Open bootstrap record file (In general, it is file no. 11).");
  if (path.empty()) return;
  FieldReader in(path, FieldReader::Form::Record);
  in.SkipLine();
  S.identity.TreatmentName = in.ReadString();
  const std::string condition = in.ReadString();
  if (condition == "EffectBoot-Yes and KorvanMating-Yes") {
    R.EffectiveOnly = "Yes";
    S.options.MatingMode = "Yes";
  } else if (condition == "EffectBoot-Yes and KorvanMating-No") {
    R.EffectiveOnly = "Yes";
    S.options.MatingMode = "No";
  } else if (condition == "AllBoot-Yes and KorvanMating-Yes") {
    R.EffectiveOnly = "No";
    S.options.MatingMode = "Yes";
  } else if (condition == "AllBoot-Yes and KorvanMating-No") {
    R.EffectiveOnly = "No";
    S.options.MatingMode = "No";
  } else if (condition == "No condition for general bootstrap") {
    // Neither setting changes.
  } else {
    const int a = P.MsgBox(OldVersionText(), kOldVersionTitle, kYesNoCancel, 2);
    if (a == kCancel)
      throw ProgramEnd{"Edit the 3rd line of the bootstrap record file and run the program again.",
                       kOldVersionTitle};
    R.EffectiveOnly = "Yes";
    S.options.MatingMode = a == kYes ? "Yes" : "No";
  }
  R.BootConditionLine = condition;
  if (condition != "EffectBoot-Yes and KorvanMating-Yes" && condition != "EffectBoot-Yes and KorvanMating-No" &&
      condition != "AllBoot-Yes and KorvanMating-Yes" && condition != "AllBoot-Yes and KorvanMating-No" &&
      condition != "No condition for general bootstrap") {
    R.BootConditionLine = S.options.MatingMode == "Yes" ? "EffectBoot-Yes and KorvanMating-Yes"
                                                        : "EffectBoot-Yes and KorvanMating-No";
  }

  in.SkipLine();
  const double b = in.ReadNumber();
  R.BootB = CInt(b);
  R.BootBReal = b;
  in.SkipLine();
  const double n = in.ReadNumber();
  R.BootSampleSize = CInt(n);
  W.cohort.CohortSize = R.BootSampleSize;
  const bool intoSaved = R.BootSessionFlag != "No";
  for (long sample = 1; sample <= R.BootB; ++sample) {
    in.SkipLine();
    for (int position = 1; position <= R.BootSampleSize; ++position) {
      const std::int16_t k = CInt16(in.ReadNumber());
      if (intoSaved)
        R.SavedBootIndividuals(position, sample) = k;
      else
        R.BootIndividuals(position, sample) = k;
    }
    in.SkipLine();
    R.RecordR0(sample) = in.ReadNumber();
    in.SkipLine();
    R.RecordLambda(sample) = in.ReadNumber();
  }
  // The 16 lines of the summary that close the file are not needed.
  R.RecordFilePath = path;
}

}  // namespace korvan
