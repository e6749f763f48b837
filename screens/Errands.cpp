#include "screens/Errands.h"

#include <QFileInfo>
#include <QMessageBox>
#include <chrono>
#include <utility>

namespace quillon {
namespace {

constexpr qint64 kLongestWait = 10'000;  // milliseconds after which a program that ends is no failed start
constexpr auto kGameWait = std::chrono::seconds(3), kNoWait = std::chrono::seconds(0);

bool HasFailed(DesktopAnswer& answer) { return !answer.get(); }

bool IsThere(const DesktopAnswer& answer, std::chrono::seconds wait) {
  return answer.wait_for(wait) == std::future_status::ready;
}

}  // namespace

void Errands::Await(const QString& path, DesktopAnswer answer) {
  Errand& errand = underWay_.emplace_back(Errand{path, std::move(answer), {}});
  errand.since.start();
}

void Errands::Open(const QString& path) { Await(path, OpenWithDesktop(path.toStdString())); }

void Errands::Explore(const QString& folder) { Await(folder, ExploreWithDesktop(folder.toStdString())); }

void Errands::Look(QWidget* owner) {
  for (auto errand = underWay_.begin(); errand != underWay_.end();) {
    const bool there = IsThere(errand->answer, kNoWait);
    if (there && HasFailed(errand->answer)) {
      auto* box = new QMessageBox(QMessageBox::Information, "Quillon",
                                  "This could not be opened:\n" + errand->path +
                                      "\n\nYour system has no program for it, or the program failed. Open it "
                                      "by hand.",
                                  QMessageBox::Ok, owner);
      box->setTextFormat(Qt::PlainText);
      box->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
      box->setAttribute(Qt::WA_DeleteOnClose);
      box->open();
    }
    errand = there || errand->since.hasExpired(kLongestWait) ? underWay_.erase(errand) : std::next(errand);
  }
}

void Errands::AskForGame(const QString& trainExe, const QString& command, const QString& settings) {
  trainExe_ = trainExe;
  command_ = command;
  settings_ = settings;
}

void Errands::StartGame() {
  if (trainExe_.isEmpty()) return;
  const QString folder = QFileInfo(trainExe_).path();
  DesktopAnswer answer = command_.isEmpty() ? OpenWithDesktop(trainExe_.toStdString())
                                            : RunCommand(command_.toStdString(), folder.toStdString());
  if (!IsThere(answer, kGameWait) || !HasFailed(answer)) return;
  QMessageBox box(QMessageBox::Information, "Quillon",
                  "Train Simulator could not be started:\n" + (command_.isEmpty() ? trainExe_ : command_) +
                      "\n\nStart it by hand; the route is loaded. If another program has to start it, write "
                      "its command into the section [TrainSim] of\n" +
                      settings_ + "\nas a line that begins with Command=",
                  QMessageBox::Ok);
  box.setTextFormat(Qt::PlainText);
  box.setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
  box.exec();
}

}  // namespace quillon
