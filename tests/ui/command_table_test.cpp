// The console's command table, its start-up state and the checks of a press.
#include <gtest/gtest.h>

#include <set>

#include "run/run_context.h"
#include "commands/command_handlers.h"
#include "ui/command_table.h"
#include "ui/scripted_prompts.h"

namespace korvan {
namespace {

TEST(CommandTable, CodesNamesAndCaptions) {
  const std::vector<std::string> mainCodes = {"A1", "A2", "A3", "A4", "B", "C", "D", "E", "F", "G",
                                              "H", "I", "J", "K", "L", "M", "N", "O", "P", "Q"};
  std::vector<std::string> codes;
  std::set<std::string_view> controls;
  for (const auto& c : CommandTable()) {
    EXPECT_TRUE(controls.insert(c.control).second) << "twice: " << c.control;
    EXPECT_FALSE(c.caption.empty()) << c.control;
    if (c.group == CommandGroup::Main) codes.emplace_back(c.code);
    // A coded caption begins with its code, as the console shows it.
    if (!c.code.empty()) {
      EXPECT_EQ(c.caption.substr(0, c.code.size() + 1), std::string(c.code) + ".");
    }
  }
  EXPECT_EQ(codes, mainCodes);
  EXPECT_EQ(FindCommand("a2")->control, "cmdBasicRunA2");
  EXPECT_EQ(FindCommand("cmdbootstrap")->code, "A3");
  EXPECT_EQ(FindCommand("FMNmatrices")->caption, "E. 3D life table");
  EXPECT_EQ(FindCommand("cmdBootMx")->caption, "Boot. mx  range");
  EXPECT_EQ(FindCommand("H")->toolTip, "Harvest analysis (Rearing cost are needed).");
  EXPECT_EQ(FindCommand("Q")->toolTip, "");
  EXPECT_EQ(FindCommand("A6"), nullptr);
  EXPECT_EQ(FindCommand(""), nullptr);
}

TEST(CommandTable, StartUpState) {
  ConsoleState console;
  SetStartUpConsole(console);
  for (const auto& c : CommandTable()) {
    const bool open = IsCommandOpen(console, c);
    if (c.group == CommandGroup::Main) {
      EXPECT_EQ(open, c.control != "cmdBasicRunA2") << c.control;
    } else if (c.group == CommandGroup::Graph) {
      EXPECT_FALSE(open) << c.control << ": the figures open after Basic Run";
    }
  }
  EXPECT_FALSE(IsCommandOpen(console, *FindCommand("Command21")));
  EXPECT_TRUE(IsCommandOpen(console, *FindCommand("Command1")));
  // Showing the frame of figures opens them, but not the regressions, which A2 enables.
  console.Show("Frame1");
  EXPECT_TRUE(IsCommandOpen(console, *FindCommand("cmdShowTailedR")));
  EXPECT_FALSE(IsCommandOpen(console, *FindCommand("cmdShowFvsAdultLong")));
  // Hiding the main frame closes the main commands, whatever their enabling.
  console.Show("Frame4", false);
  EXPECT_FALSE(IsCommandOpen(console, *FindCommand("cmdReadDataA1")));
}

TEST(CommandTable, PressRefusals) {
  Session S;
  S.StartUp();
  SetStartUpConsole(S.console);
  ScriptedPrompts P(AnswerBook{});
  auto refusal = [&](std::string_view name) -> std::string {
    try {
      PressCommand(S, P, ResolveCommand(name));
    } catch (const CommandRefused& e) {
      return e.what();
    }
    return "pressed";
  };
  EXPECT_EQ(refusal("A2"), "A2. Basic Run is closed: it opens after A1. Read data.");
  EXPECT_EQ(refusal("Command3"),
            "Age-specific survival rate is closed: the figures are shown after A2. Basic Run.");
  S.console.Disable("cmdReadDataA1");
  EXPECT_NE(refusal("A1").find("needs a new start of the program"), std::string::npos);
  EXPECT_THROW(ResolveCommand("Z9"), CommandRefused);
  // A command that isn't built says so once it is open.
  S.console.Enable("cmdCreateLectureFile");
  ASSERT_FALSE(IsCommandBuilt("cmdCreateLectureFile"));
  EXPECT_EQ(refusal("cmdCreateLectureFile"), "CF: not available yet");
  EXPECT_THROW(PressByProgram(S, P, "cmdCreateLectureFile"), CommandRefused);
  EXPECT_THROW(PressCommand(S, P, ResolveCommand("Command1")), SessionQuit);
}

}  // namespace
}  // namespace korvan
