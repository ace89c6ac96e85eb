#include "qt_prompts.h"

#include <QApplication>
#include <QFileDialog>
#include <QInputDialog>
#include <QMessageBox>

#include "ui/msg_buttons.h"

namespace korvan::gui {

namespace {

QMessageBox::StandardButton ButtonFor(int answer) {
  switch (answer) {
    case kOK: return QMessageBox::Ok;
    case kCancel: return QMessageBox::Cancel;
    case kYes: return QMessageBox::Yes;
    case kNo: return QMessageBox::No;
    case 3: return QMessageBox::Abort;
    case 4: return QMessageBox::Retry;
    case 5: return QMessageBox::Ignore;
    default: return QMessageBox::NoButton;
  }
}

}  // namespace

int QtPrompts::MsgBox(const std::string& text, const std::string& title, int buttons,
                      int defaultButton) {
  QMessageBox box(parent_);
  box.setWindowTitle(QString::fromStdString(title));
  box.setText(QString::fromStdString(text));
  for (int answer : ButtonsOf(buttons)) box.addButton(ButtonFor(answer));
  box.setDefaultButton(ButtonFor(DefaultAnswer(buttons, defaultButton)));
  box.exec();
  const auto clicked = box.standardButton(box.clickedButton());
  for (int answer : ButtonsOf(buttons)) {
    if (ButtonFor(answer) == clicked) return answer;
  }
  // Closing the box is its Cancel when it has one, else its default.
  for (int answer : ButtonsOf(buttons)) {
    if (answer == kCancel) return kCancel;
  }
  return DefaultAnswer(buttons, defaultButton);
}

std::string QtPrompts::InputBox(const std::string& text, const std::string& title,
                                const std::string& defaultText) {
  bool ok = false;
  const QString entered =
      QInputDialog::getText(parent_, QString::fromStdString(title), QString::fromStdString(text),
                            QLineEdit::Normal, QString::fromStdString(defaultText), &ok);
  return ok ? entered.toStdString() : std::string();
}

std::string QtPrompts::ChooseFile(const std::string& title) {
  return QFileDialog::getOpenFileName(parent_, QString::fromStdString(title)).toStdString();
}

void QtPrompts::Status(const std::string& label, const std::string& text) {
  if (status_) status_(label, text);
  QApplication::processEvents();
}

void QtPrompts::Progress(long done, long total) {
  if (status_ && total > 0) {
    status_("Progress", std::to_string(done) + " / " + std::to_string(total));
  }
  QApplication::processEvents();
}

void QtPrompts::Beep() { QApplication::beep(); }

}  // namespace korvan::gui
