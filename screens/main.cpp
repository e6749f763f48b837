// Larkmoor: the route manager with its screens.
#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QFileInfo>
#include <QIcon>
#include <cstdio>

#include "core/host/Console.h"
#include "core/host/Desktop.h"
#include "screens/DesktopFrontEnd.h"
#include "stage/Setup.h"

namespace {

// Message boxes in the colours of the enamel signs.
constexpr const char* kBoxStyle =
    "QMessageBox, QProgressDialog { background: #FFF9D5; }"
    "QMessageBox QLabel, QProgressDialog QLabel { color: #000080; font-family: 'DejaVu Sans', Verdana, "
    "sans-serif; font-size: 13px; }"
    "QMessageBox QPushButton { color: #FFF9D5; background: #000080; border: 2px solid #B8892B; "
    "border-radius: 4px;"
    " padding: 5px 18px; min-width: 60px; font-size: 13px; font-weight: bold; }"
    "QMessageBox QPushButton:hover, QMessageBox QPushButton:focus { background: #2A2AB8; border-color: "
    "#FFE08A; }"
    "QMessageBox QPushButton:focus { outline: 1px dashed #FFF3A8; outline-offset: -4px; }"
    "QMessageBox QPushButton:pressed { background: #000050; }"
    "QProgressDialog QProgressBar { color: #000080; background: #FFFEF4; border: 2px solid #B8892B;"
    " border-radius: 4px; text-align: center; }"
    "QProgressDialog QProgressBar::chunk { background: #A9BCEB; }"
    "QDialogButtonBox { dialogbuttonbox-buttons-have-icons: 0; }";

/// What the program reads of its command line, behind its name; all else is ignored. The shell hands over the
/// name of a route file that was opened in as many words as it has blanks: behind the first word that is no
/// option only what can be no part of a name counts.
QStringList OwnWords(const std::vector<std::string>& words) {
  QStringList own = {"Larkmoor"};
  bool inName = false;
  for (std::size_t i = 0; i < words.size(); ++i) {
    const QString word = QString::fromStdString(words[i]);
    const QString next = i + 1 < words.size() ? QString::fromStdString(words[i + 1]) : QString();
    const bool namesFolder = QDir::isAbsolutePath(next) && QFileInfo(next).isDir();
    if (word == "--app" && !next.isEmpty() && (!inName || namesFolder))
      own << word << next, ++i;
    else if (!inName && (word.startsWith("--app=") || word == "-h" || word == "--help"))
      own << word;
    else
      inName = inName || !word.startsWith('-');
  }
  return own;
}

}  // namespace

int main(int argc, char** argv) {
  using namespace quillon;
  const QStringList words = OwnWords(PrepareProcess(argc, argv));
  // The name of a route file may hold words that the toolkit would take for its own.
  argc = 1;
  QApplication application(argc, argv);
  QApplication::setApplicationName("Larkmoor");
  QApplication::setDesktopFileName("quillon");
  QApplication::setQuitOnLastWindowClosed(false);
  application.setStyleSheet(kBoxStyle);
  QApplication::setWindowIcon(QIcon(":/art/icon/quillon.svg"));

  QCommandLineParser parser;
  parser.setApplicationDescription("Quillon, a route manager for Microsoft Train Simulator.");
  const QCommandLineOption help = parser.addHelpOption();
  parser.addOption({"app", "The application folder; without it, $QUILLON_APP or the program's own.", "folder",
                    qEnvironmentVariable("QUILLON_APP")});
  parser.parse(words);
  if (parser.isSet(help)) parser.showHelp();
  const std::string app = parser.value("app").toStdString();
  if (app.empty() && parser.isSet("app")) {
    std::fputs("Larkmoor: --app names no folder\n", stderr);
    return 2;
  }
  const std::string folder = app.empty() ? ExecutableFolder() : AbsoluteHostPath(app);

  DesktopFrontEnd frontEnd;
  int status = 0;
  // A program that goes on after an error is a new one: nothing of the failed one stays, its lock neither.
  do {
    const bool addAgain = status == DesktopFrontEnd::kAddAgain;
    RunningProgram program(folder, frontEnd);
    frontEnd.Serve(program);
    frontEnd.Handle([&] {
      RequireLayable(program.Get());
      program.TakeLock();
    });
    // A second window would only say that there is one.
    if (program.Get().otherInstanceRuns && program.CallOther()) return 0;
    frontEnd.Handle([&] { SetUpOrRenew(program.Get()); });
    status = addAgain ? frontEnd.GoOn() : frontEnd.Run();
  } while (status == DesktopFrontEnd::kAddAgain || status == DesktopFrontEnd::kStartAgain);
  frontEnd.StartGameIfAsked();
  return status;
}
