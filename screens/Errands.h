// What is handed to other programs of the desktop, and what becomes of it.
#pragma once

#include <QElapsedTimer>
#include <QString>
#include <list>
#include <string>

#include "core/host/Desktop.h"

class QWidget;

namespace quillon {

class Errands {
 public:
  // Host paths, or addresses. What has no program is told of by the next Look.
  void Open(const QString& path);
  void Explore(const QString& folder);

  /// Tells of what failed since the last call, in boxes over `owner` that nobody waits for.
  void Look(QWidget* owner);

  /// For StartGame: the game's program and the user's own command for it, which may be empty. `settings` is
  /// the file that the command stands in.
  void AskForGame(const QString& trainExe, const QString& command, const QString& settings);
  /// Starts the game if it was asked for, and tells the user when that fails. After all else has ended.
  void StartGame();

 private:
  struct Errand {
    QString path;
    DesktopAnswer answer;
    QElapsedTimer since;
  };

  void Await(const QString& path, DesktopAnswer answer);

  std::list<Errand> underWay_;
  QString trainExe_, command_, settings_;
};

}  // namespace quillon
