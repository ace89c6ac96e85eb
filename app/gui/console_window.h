#pragma once
// The console: title, limits, result fields, the frame of main procedures, the further
// commands and the frame of main figures, all built from the command table.
#include <QMainWindow>
#include <map>
#include <memory>
#include <string>

#include "qt_prompts.h"
#include "store/session_store.h"
#include "ui/command_table.h"

class QGroupBox;
class QLineEdit;
class QPushButton;
class QStatusBar;

namespace korvan::gui {

class ConsoleWindow : public QMainWindow {
 public:
  ConsoleWindow();

 private:
  QGroupBox* CommandFrame(const char* title, CommandGroup group, int columns);
  void Press(const std::string& control);
  // Enables the buttons and shows the frames as the session's console state says.
  void Refresh();
  void ShowStatus(const std::string& label, const std::string& text);

  std::unique_ptr<SessionStore> store_;
  QtPrompts prompts_;
  std::map<std::string, QPushButton*> buttons_;
  std::map<std::string, QLineEdit*> fields_;
  std::map<std::string, QGroupBox*> frames_;
};

}  // namespace korvan::gui
