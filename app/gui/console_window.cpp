#include "console_window.h"

#include <QApplication>
#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QStatusBar>
#include <QVBoxLayout>

#include "store/faults.h"
#include "store/limits.h"
#include "ui/command_handlers.h"
#include "ui/command_table.h"

namespace korvan::gui {

ConsoleWindow::ConsoleWindow()
    : store_(std::make_unique<SessionStore>()),
      prompts_(this, [this](const std::string& label, const std::string& text) { ShowStatus(label, text); }) {
  SessionStore& S = *store_;
  S.StartUp();
  SetStartUpConsole(S.console);
  setWindowTitle(QString::fromStdString(S.identity.ProgramName));

  auto* central = new QWidget;
  auto* layout = new QGridLayout(central);

  auto* title = new QLabel(kConsoleTitle);
  title->setObjectName("Label12");
  title->setAlignment(Qt::AlignCenter);
  title->setStyleSheet("font-family: Century; font-size: 16pt; color: white; background: blue; padding: 8px;");
  layout->addWidget(title, 0, 0, 1, 2);

  auto* limits = new QLabel(kLimitsText);
  limits->setObjectName("Limits");
  layout->addWidget(limits, 1, 0);

  auto* results = new QGroupBox("Results");
  auto* form = new QFormLayout(results);
  for (const auto& field : ResultFields()) {
    auto* box = new QLineEdit;
    box->setReadOnly(true);
    box->setObjectName(QString::fromUtf8(field.control.data(), static_cast<int>(field.control.size())));
    form->addRow(QString::fromUtf8(field.label.data(), static_cast<int>(field.label.size())), box);
    fields_[std::string(field.control)] = box;
  }
  layout->addWidget(results, 1, 1);

  layout->addWidget(frames_["Frame4"] = CommandFrame("Main procedures", CommandGroup::Main, 4), 2, 0, 1, 2);
  layout->addWidget(CommandFrame("Further commands", CommandGroup::Further, 4), 3, 0, 1, 2);
  layout->addWidget(frames_["Frame1"] = CommandFrame("Main figures", CommandGroup::Graph, 5), 4, 0, 1, 2);

  setCentralWidget(central);
  statusBar()->showMessage(QString::fromStdString(S.identity.VersionStamp));
  Refresh();
}

QGroupBox* ConsoleWindow::CommandFrame(const char* title, CommandGroup group, int columns) {
  auto* frame = new QGroupBox(title);
  auto* grid = new QGridLayout(frame);
  int n = 0;
  for (const auto& command : CommandTable()) {
    if (command.group != group) continue;
    const std::string control(command.control);
    auto* button = new QPushButton(QString::fromUtf8(command.caption.data(), static_cast<int>(command.caption.size())));
    button->setObjectName(QString::fromStdString(control));
    button->setToolTip(QString::fromUtf8(command.toolTip.data(), static_cast<int>(command.toolTip.size())));
    connect(button, &QPushButton::clicked, this, [this, control] { Press(control); });
    grid->addWidget(button, n / columns, n % columns);
    buttons_[control] = button;
    ++n;
  }
  return frame;
}

void ConsoleWindow::Refresh() {
  for (const auto& command : CommandTable()) {
    auto it = buttons_.find(std::string(command.control));
    if (it != buttons_.end()) it->second->setEnabled(store_->console.IsEnabled(std::string(command.control)));
  }
  for (const auto& [name, frame] : frames_) frame->setVisible(store_->console.IsVisible(name));
}

void ConsoleWindow::ShowStatus(const std::string& label, const std::string& text) {
  auto it = fields_.find(label);
  if (it != fields_.end()) {
    it->second->setText(QString::fromStdString(text));
  } else {
    statusBar()->showMessage(QString::fromStdString(text));
  }
}

void ConsoleWindow::Press(const std::string& control) {
  const CommandInfo* command = FindCommand(control);
  if (!command) return;
  try {
    PressCommand(*store_, prompts_, *command);
  } catch (const CommandRefused& e) {
    QMessageBox::information(this, QString::fromStdString(store_->identity.ProgramName), e.what());
  } catch (const SessionQuit&) {
    QApplication::quit();
  } catch (const ProgramEnd& e) {
    // The program ends here, as a run of it ends; the store's files close with it.
    QMessageBox::critical(this, QString::fromStdString(e.title), QString::fromStdString(e.message));
    QApplication::exit(1);
  } catch (const std::exception& e) {
    QMessageBox::critical(this, QString::fromStdString(store_->identity.ProgramName), e.what());
    QApplication::exit(1);
  }
  Refresh();
}

}  // namespace korvan::gui
