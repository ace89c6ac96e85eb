#include <QApplication>
#include <QLabel>
#include <QMainWindow>
#include <QVBoxLayout>

#include "store/limits.h"
#include "store/session_store.h"

int main(int argc, char** argv) {
  QApplication app(argc, argv);
  korvan::SessionStore S;
  S.StartUp();
  QMainWindow window;
  window.setWindowTitle(QString::fromStdString(S.identity.ProgramName));
  auto* central = new QWidget;
  auto* layout = new QVBoxLayout(central);
  auto* title = new QLabel("Age-stage, two-sex life table analysis");
  title->setStyleSheet("font-family: Century; color: white; background: blue; padding: 6px;");
  layout->addWidget(title);
  layout->addWidget(new QLabel(korvan::kLimitsText));
  window.setCentralWidget(central);
  window.show();
  return app.exec();
}
