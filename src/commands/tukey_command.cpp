// "Tukey table" (TukeyQ5TableInput): the q table, the pooled file, and the two tables written
// beside it as "<file less its ending>-Tukey-bootstrap-output.txt".
#include "commands/tukey_command.h"

#include "comparison/tukey.h"
#include "ui/console_rules.h"

namespace korvan {

void TukeyCommand::TukeyQ5TableInput() {
  Flow("TukeyQ5TableInput");
  auto& c = S.comparison;
  FillTukeyQTable(c);
  const std::string path = P.ChooseFile("Open Tukey Q5 table");
  if (path.empty()) return;
  S.identity.DataFilePath = path;
  S.identity.DataFileBase = path.size() > 4 ? path.substr(0, path.size() - 4) : std::string();
  P.Status("Frame4", "Tukey-Kramer procedure");
  // The table is opened once the file has been read: a file of fewer than three treatments
  // leaves an earlier table of the same name as it was.
  if (!TukeyKramer(S, P, W).RunTukey(S.identity.DataFileBase + "-Tukey-bootstrap-output.txt")) return;
  ApplyConsoleRule(S.console, "Tukey table done");
}

}  // namespace korvan
