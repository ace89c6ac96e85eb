#pragma once
// Every dialogue of the analysis goes through a PromptService: message boxes, input boxes,
// the file chooser, the console's status labels and progress. The analysis talks to the user
// through this header alone; the implementations and the chart models are in ui/.
#include <string>

namespace korvan {

struct ChartPanel;

// Buttons of a message box (the platform's values).
enum MsgButtons : int { kOKOnly = 0, kOKCancel = 1, kYesNoCancel = 3, kYesNo = 4 };
// Answers of a message box.
enum MsgAnswer : int { kOK = 1, kCancel = 2, kYes = 6, kNo = 7 };

class PromptService {
 public:
  virtual ~PromptService() = default;
  // Shows text under title with the given buttons; defaultButton is 1, 2 or 3 (the position of
  // the default among the buttons). Returns kOK, kCancel, kYes or kNo.
  virtual int MsgBox(const std::string& text, const std::string& title, int buttons = kOKOnly,
                     int defaultButton = 1) = 0;
  // Returns the text entered, or an empty string on Cancel.
  virtual std::string InputBox(const std::string& text, const std::string& title,
                               const std::string& defaultText = "") = 0;
  // Returns the chosen path, or an empty string when none is chosen.
  virtual std::string ChooseFile(const std::string& title) = 0;
  // Console labels: the result fields and status texts by control name.
  virtual void Status(const std::string& label, const std::string& text) { (void)label, (void)text; }
  virtual void Progress(long done, long total) { (void)done, (void)total; }
  virtual void Beep() {}
  // Shows a figure in the chart the panel names (the console's chart unless it says another).
  virtual void ShowChart(const ChartPanel& panel) { (void)panel; }
};

}  // namespace korvan
