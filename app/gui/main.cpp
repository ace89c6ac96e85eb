// korvan-gui: the console window.
#include <QApplication>

#include "console_window.h"

int main(int argc, char** argv) {
  QApplication app(argc, argv);
  korvan::gui::ConsoleWindow window;
  window.show();
  return app.exec();
}
