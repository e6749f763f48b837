// Larkmoor: the route manager with its screens.
#include <QApplication>
#include <QCommandLineParser>
#include <QIcon>

#include "core/host/Console.h"
#include "core/host/Desktop.h"
#include "screens/DesktopFrontEnd.h"
#include "stage/Setup.h"

int main(int argc, char** argv) {
  using namespace quillon;
  PrepareProcess(argc, argv);
  QApplication application(argc, argv);
  QApplication::setApplicationName("Larkmoor");
  QApplication::setApplicationDisplayName("Quillon");
  QApplication::setDesktopFileName("quillon");
  QApplication::setQuitOnLastWindowClosed(false);
  QApplication::setWindowIcon(QIcon(":/art/icon/quillon.svg"));

  QCommandLineParser parser;
  parser.setApplicationDescription("Quillon, a route manager for Microsoft Train Simulator.");
  parser.addHelpOption();
  parser.addOption({"app", "The application folder; without it, the program's own.", "folder"});
  parser.process(application);
  const std::string app = parser.value("app").toStdString();

  DesktopFrontEnd frontEnd;
  RunningProgram program(app.empty() ? ExecutableFolder() : AbsoluteHostPath(app), frontEnd);
  frontEnd.Serve(program);
  program.TakeLock();
  frontEnd.Handle([&] { SetUpIfNeeded(program.Get()); });
  return frontEnd.Run();
}
