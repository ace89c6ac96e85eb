#pragma once
// The transforms of a life table: "F. Grouping", "K. 1t to xt", "O. + overwinter",
// "Add stage+dura.", "Add time to imma.", "Split stage", "Split LT", "Reduce rep. period".
//
// Each reads a data file (that of A1 when A1 has read one, else the one chosen, which is checked
// as A1 checks it and becomes the session's data file), asks what to change, and writes the
// changed table as a new file beside it, in the format A1 reads; its treatment line tells what
// changed. The session's own cohort and tables stay as they are: the file is read into a store
// of the command's own. A refused answer is asked again, three times at most; the file read is
// never written, and nothing is written before every answer is settled.
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "input/data_file_writer.h"
#include "run/run_context.h"

namespace korvan {

class TransformCommands : public Procedures {
 public:
  using Procedures::Procedures;

  void Command28_Click();              // F. Grouping
  void Command44_Click();              // K. 1t to xt
  void cmdAddDuration_Click();         // O. + overwinter
  void cmdAddStage_Click();            // Add stage+dura.
  void cmdAddDurationToStage_Click();  // Add time to imma.
  void cmdSplitStage_Click();          // Split stage
  void cmdSplit_Click();               // Split LT
  void cmdReduceReprodPeriod_Click();  // Reduce rep. period

 private:
  using Check = std::function<std::string(const std::string&)>;

  // The data file read into a store of its own; nullptr when none is chosen.
  std::unique_ptr<Session> ReadLifeTable();
  // The same, refused (and nullptr) when the table has no preadult stage.
  std::unique_ptr<Session> ReadLifeTableWithPreadultStage();
  // An answer that passes check (which tells why it doesn't); nullopt on Cancel or when the
  // third answer is refused too.
  std::optional<std::string> Ask(const std::string& text, const std::string& title, const std::string& defaultText,
                                 const Check& check);
  std::optional<long> AskWhole(const std::string& text, const std::string& title, const std::string& defaultText,
                               long lowest, long highest);
  std::optional<double> AskShare(const std::string& text, const std::string& title, const std::string& defaultText,
                                 bool openEnds);
  // A stage name that the table T can take (what isRefused tells against it is refused).
  std::optional<std::string> AskStageName(const std::string& text, const std::string& title,
                                          const std::string& defaultText, const Check& isRefused);
  // Tells that the transform can't be done (why), and that nothing was written.
  void Refuse(const std::string& why);
  // True (and told) when path is the file read.
  bool WouldReplaceFileRead(const Session& T, const std::string& path);
  // Writes T's table to path with the head and records given; false (and told) when path is
  // the file read.
  bool WriteTable(const Session& T, const std::string& path, const LifeTableHead& head,
                  const LifeTableRecords& records);
  // T's table as DataFileBase + suffix, its treatment line + "-" + change; the path, or empty.
  std::string WriteChanged(const Session& T, const std::string& suffix, const std::string& change);
  // The closing message: what was done and where the new file is.
  void Done(const std::string& caption, const std::string& what, const std::string& path);
};

}  // namespace korvan
