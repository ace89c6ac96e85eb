// Answer files and the scripted, terminal and transcript dialogues.
#include <gtest/gtest.h>

#include <sstream>

#include "ui/answer_book.h"
#include "ui/scripted_prompts.h"
#include "ui/terminal_prompts.h"
#include "ui/transcript_prompts.h"

namespace korvan {
namespace {

TEST(AnswerFile, KeysSplitsAndOrder) {
  ScriptedPrompts P(AnswerBook::FromText(
      "# a comment line\n"
      "\n"
      "Fecundity coefficeint = 0.5\n"
      "Fecundity coefficeint = 0.25\r\n"
      "Yes = 3D analysis. No = routine life table. = No\n"
      "   Each time unit =? = 0.3   \n"
      "Do you want to see more options? = yes\n"
      "Open life table data file = data/a = b.txt\n"
      "Empty answer =\n"));
  // Repeated titles are answered in order, one line per dialogue met.
  EXPECT_EQ(P.InputBox("Enter a value", "Fecundity coefficeint", "1"), "0.5");
  EXPECT_EQ(P.InputBox("Enter a value", "Fecundity coefficeint", "1"), "0.25");
  // The split is at the last " = ": titles that hold " = " or "=?" keep it.
  EXPECT_EQ(P.InputBox("Enter \"Yes\"", "Yes = 3D analysis. No = routine life table.", "No"), "No");
  EXPECT_EQ(P.InputBox("Enter the time unit", " Each time unit =? ", "1"), "0.3");
  // ... so a value can't hold " = " (the path here was cut at its last one).
  EXPECT_EQ(P.ChooseFile("Open life table data file = data/a"), "b.txt");
  // A dialogue without a title is keyed by the first non-blank line of its text; answers in
  // any case.
  EXPECT_EQ(P.MsgBox("\n  Do you want to see more options?\nYes: ...\nNo: ...", "", kYesNo, 2), kYes);
  EXPECT_EQ(P.InputBox("text", "Empty answer", "x"), "");
  EXPECT_TRUE(P.book().Unused().empty());
  EXPECT_THROW(P.InputBox("Enter a value", "Fecundity coefficeint", "1"), MissingAnswer);
}

TEST(AnswerFile, BadLinesAndOptions) {
  AnswerBook book;
  try {
    book.AddFileText("Title = Yes\nno separator here\n", "run.answers");
    FAIL() << "a line without \" = \" was taken";
  } catch (const AnswerError& e) {
    EXPECT_EQ(std::string(e.what()),
              "run.answers:2: expected \"<dialogue title> = <answer>\": no separator here");
  }
  EXPECT_THROW(book.AddFileText(" = Yes\n", "x"), AnswerError);
  EXPECT_THROW(book.AddFile("/nonexistent/korvan.answers"), AnswerError);
  EXPECT_THROW(book.AddOption("no equals sign"), AnswerError);
  EXPECT_THROW(book.AddOption("=Yes"), AnswerError);

  // Options are matched against the dialogue's key, so keys may hold '=' themselves, and an
  // option overrides every answer the files give for its key.
  AnswerBook mixed = AnswerBook::FromText(
      "Each time unit =? = 0.5\nEach time unit =? = 0.25\nPrecision level = 1e-08\nNever asked = Yes\n");
  mixed.AddOption("Each time unit =?=2");
  mixed.AddOption("Number of bootstrap resamplings (B)=? = 200");
  mixed.AddOption("Precision=3");  // a prefix of a key names no dialogue
  EXPECT_EQ(mixed.Take("Each time unit =?"), "2");
  EXPECT_EQ(mixed.Take("Each time unit =?"), std::nullopt);
  EXPECT_EQ(mixed.Take("Number of bootstrap resamplings (B)=?"), "200");
  EXPECT_EQ(mixed.Take("Precision level"), "1e-08");
  // Answers replaced by an option are not reported as left over.
  EXPECT_EQ(mixed.Unused(), (std::vector<std::string>{"Never asked = Yes", "Precision=3"}));
}

TEST(ScriptedDialogues, MissingAnswersAndDefaults) {
  const std::string text = "Do you need flow record?\nYes: ...";
  ScriptedPrompts strict(AnswerBook{});
  try {
    strict.MsgBox(text, "Do you need flow record?", kYesNoCancel);
    FAIL() << "an unanswered box passed";
  } catch (const MissingAnswer& e) {
    EXPECT_EQ(std::string(e.what()), "no answer for dialogue \"Do you need flow record?\"");
  }
  EXPECT_THROW(strict.InputBox("Enter", "Each time unit =?", "1"), MissingAnswer);
  EXPECT_THROW(strict.MsgBox("no title here\nsecond line", "", kYesNo), MissingAnswer);
  // A box with OK alone asks nothing.
  EXPECT_EQ(strict.MsgBox("All insects died.", "Fault", kOKOnly), kOK);

  // With defaults: the default button (the first unless another is named), the default text;
  // a file chooser has no default.
  ScriptedPrompts lenient(AnswerBook::FromText("Life table only? = Yes\n"), true);
  EXPECT_EQ(lenient.MsgBox(text, "a", kYesNoCancel), kYes);
  EXPECT_EQ(lenient.MsgBox(text, "b", kYesNoCancel, 3), kCancel);
  EXPECT_EQ(lenient.MsgBox(text, "c", kYesNo, 2), kNo);
  EXPECT_EQ(lenient.MsgBox(text, "d", kYesNo, 3), kYes);        // no third button
  EXPECT_EQ(lenient.MsgBox(text, "e", kYesNo + 256, 1), kNo);   // default named in the buttons
  EXPECT_EQ(lenient.MsgBox(text, "f", kOKCancel + 32), kOK);    // an icon flag is no button
  EXPECT_EQ(lenient.MsgBox(text, "Life table only?", kYesNo, 2), kYes);  // an answer wins
  EXPECT_EQ(lenient.InputBox("Enter", "Fecundity coefficeint", "1"), "1");
  EXPECT_THROW(lenient.ChooseFile("Open life table data file"), MissingAnswer);

  // An answer the box doesn't offer is a fault of the answers, not a guess.
  ScriptedPrompts wrong(AnswerBook::FromText("Claculus or matrix technique? = Cancel\n"));
  try {
    wrong.MsgBox("Do you want to use calculus or matrix?", "Claculus or matrix technique?", kYesNo);
    FAIL() << "Cancel was taken by a Yes/No box";
  } catch (const AnswerError& e) {
    EXPECT_EQ(std::string(e.what()),
              "answer \"Cancel\" to dialogue \"Claculus or matrix technique?\": it takes Yes or No");
  }
}

TEST(TerminalDialogues, TypedAnswers) {
  std::istringstream in("maybe\nn\n\n0.5\n\ndata.txt\n");
  std::ostringstream out;
  TerminalPrompts T(in, out);
  EXPECT_EQ(T.MsgBox("Do you need flow record?", "Flow", kYesNoCancel), kNo);  // re-asked
  EXPECT_NE(out.str().find("Please answer Yes, No or Cancel."), std::string::npos);
  EXPECT_EQ(T.MsgBox("More?", "More option (Yes or No)?", kYesNo, 2), kNo);  // empty: default
  EXPECT_EQ(T.InputBox("Enter", "Each time unit =?", "1"), "0.5");
  EXPECT_EQ(T.InputBox("Enter", "Fecundity coefficeint", "1"), "1");
  EXPECT_EQ(T.ChooseFile("Open life table data file"), "data.txt");
  EXPECT_THROW(T.MsgBox("x", "End of input", kYesNo), MissingAnswer);

  // Unanswered dialogues of a scripted run go to the terminal when there is one.
  std::istringstream typed("y\n");
  TerminalPrompts ask(typed, out);
  ScriptedPrompts P(AnswerBook{}, false, &ask);
  EXPECT_EQ(P.MsgBox("Life?", "Life table only?", kYesNo, 2), kYes);
  EXPECT_THROW(P.MsgBox("Life?", "Life table only?", kYesNo, 2), MissingAnswer);
}

// A short run of dialogues, as a command asks them; returns what it was told.
std::string AskAll(PromptService& P) {
  std::string seen;
  seen += P.ChooseFile("Open life table data file") + "|";
  seen += std::to_string(P.MsgBox("Minimal outputs?\n\nYes: ...", "Do you need only the basic output (0A) and figure files?", kYesNoCancel)) + "|";
  seen += std::to_string(P.MsgBox("Do you want to see more options?\nYes: ...", "", kYesNo, 2)) + "|";
  seen += P.InputBox("Enter", "Fecundity coefficeint", "1") + "|";
  seen += P.InputBox("Enter", "Fecundity coefficeint", "1") + "|";
  seen += P.InputBox("Enter", "Each time unit =?", "1") + "|";
  seen += std::to_string(P.MsgBox("Saved.", "Done", kOKOnly));
  return seen;
}

TEST(TranscriptDialogues, ATranscriptRepeatsTheRun) {
  std::istringstream in("aphid data.txt\nNo\n\n0.8\n\n0.25\n");
  std::ostringstream terminalText, transcript;
  TerminalPrompts terminal(in, terminalText);
  ScriptedPrompts first(AnswerBook{}, false, &terminal);
  TranscriptPrompts recorder(first, transcript);
  const std::string seen = AskAll(recorder);
  EXPECT_EQ(seen, "aphid data.txt|7|7|0.8|1|0.25|1");
  EXPECT_EQ(transcript.str(),
            "Open life table data file = aphid data.txt\n"
            "Do you need only the basic output (0A) and figure files? = No\n"
            "Do you want to see more options? = No\n"
            "Fecundity coefficeint = 0.8\n"
            "Fecundity coefficeint = 1\n"
            "Each time unit =? = 0.25\n"
            "Done = OK\n");

  // Replayed with no terminal, the transcript gives every answer and leaves none over.
  ScriptedPrompts replay(AnswerBook::FromText(transcript.str()));
  EXPECT_EQ(AskAll(replay), seen);
  EXPECT_TRUE(replay.book().Unused().empty());
}

}  // namespace
}  // namespace korvan
