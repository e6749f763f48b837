// The view of frmTimetable: the big board of a station hall, in any size.
#pragma once

#include <QBoxLayout>
#include <QElapsedTimer>
#include <QHash>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPointer>
#include <QPushButton>

#include "catalogue/TimetableScreen.h"
#include "screens/ScreenView.h"
#include "screens/controls/FlapBoard.h"

namespace quillon {

class frmTimetable : public ScreenView {
 public:
  frmTimetable(TimetableScreen& model, Desk& desk);

  void Sync() override;
  /// It keeps a size of its own.
  bool WasResized() const override { return false; }
  void Measure(unsigned long long done, unsigned long long total, const std::string& unit) override;

 protected:
  QSize SizeIn(const QSize& room, double scale) override;
  void Escape() override;
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void closeEvent(QCloseEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  using Handler = void (TimetableScreen::*)();

  QWidget* MakeHead();
  QWidget* MakeBoard();
  QWidget* MakeSide();
  QWidget* MakeButtons();
  QLabel* NewText(const char* name, const QString& style, QWidget* parent);
  QListWidget* NewList(const char* name, const QString& accessible);
  QPushButton* NewButton(const char* name, const QString& caption, const QString& tip, const Button& button,
                         Handler click);
  void Call(Handler handler);
  void Stop();
  void MakeCancel();
  void ShowMenu(QPoint global);
  void BindKeys();
  void ShowSide();
  void ShowWork();
  void ShowPicture();
  void Fill(QListWidget& list, const List& rows);
  void RememberSize();

  TimetableScreen& model_;
  QBoxLayout* buttonRows_;
  QWidget *content_, *side_;
  QLineEdit* filter_;
  FlapBoard* board_;
  QLabel *count_, *nothing_, *picture_, *name_, *facts_;
  QLabel *documentsHead_, *savesHead_, *shelfHead_;
  QPlainTextEdit* description_;
  QListWidget *documents_, *saves_, *shelf_;
  std::vector<std::pair<QPushButton*, const Button*>> buttons_;
  QPointer<QWidget> focused_;
  std::string shown_;
  QTimer* sizeTimer_;
  QPushButton* cancel_;
  QElapsedTimer clock_;
};

}  // namespace quillon
