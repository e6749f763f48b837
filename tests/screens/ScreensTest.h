// The desktop program in a world of its own, worked by mouse and keys.
#pragma once

#include <QApplication>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QTimer>
#include <QtTest/QTest>
#include <functional>
#include <memory>
#include <string>

#include "screens/DesktopFrontEnd.h"
#include "tests/world/TestProgram.h"

namespace quillon {

struct QuietFrontEnd : DesktopFrontEnd {
  void OpenInShell(std::string_view path) override { opened += path; }
  void StartGame(std::string_view trainExe, std::string_view) override { game += trainExe; }
  std::string opened, game;
};

class ScreensTest : public ProgramTest {
 protected:
  ScreensTest() { FirstRun(); }
  ~ScreensTest() override { frontEnd_.Leave(); }

  /// Starts the program as a user does.
  void Start() {
    program_ = std::make_unique<RunningProgram>(App(), frontEnd_);
    frontEnd_.Serve(*program_);
    program_->TakeLock();
    frontEnd_.Start();
  }

  template <typename Model>
  Model& ModelOf(const char* screen) {
    return dynamic_cast<Model&>(*program_->Screens().Find(screen));
  }
  bool IsOpen(const char* screen) { return program_->Screens().Find(screen) != nullptr; }
  ScreenView& View(const char* screen) { return *frontEnd_.View(screen); }
  template <typename Widget>
  Widget& Control(const char* screen, const char* control) {
    return *View(screen).findChild<Widget*>(control);
  }
  PictureButton& ButtonOf(const char* screen, const char* control) {
    return Control<PictureButton>(screen, control);
  }
  std::string TextOf(const char* screen, const char* control) {
    return Control<QLabel>(screen, control).text().toStdString();
  }
  void Click(const char* screen, const char* control) {
    QTest::mouseClick(&ButtonOf(screen, control), Qt::LeftButton);
  }

  // The pointer in a list.
  QPoint RowAt(HoverList& list, int row) { return list.visualRect(list.model()->index(row, 0)).center(); }
  void Hover(HoverList& list, QPoint position) { QTest::mouseMove(list.viewport(), position); }
  void Press(HoverList& list, int row, Qt::MouseButton button = Qt::LeftButton) {
    QTest::mousePress(list.viewport(), button, {}, RowAt(list, row));
  }

  bool WaitFor(const std::function<bool()>& condition, int milliseconds = 5000) {
    return QTest::qWaitFor(condition, milliseconds);
  }

  /// What the next message boxes say; each is answered by the button of this text.
  void AnswerBoxes(const QString& button) {
    QObject::connect(&answerer_, &QTimer::timeout, &answerer_, [this, button] {
      auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
      if (box == nullptr) return;
      boxes_ += (box->windowTitle() + "|" + box->text()).toStdString();
      for (QAbstractButton* candidate : box->buttons())
        if (candidate->text().remove('&') == button) candidate->click();
    });
    answerer_.start(10);
  }

  QuietFrontEnd frontEnd_;
  std::unique_ptr<RunningProgram> program_;
  std::string boxes_;

 private:
  QTimer answerer_;
};

}  // namespace quillon
