// What the views of long works have in common: a bar, and the true measure below it.
#pragma once

#include <QElapsedTimer>

#include "screens/ScreenView.h"
#include "screens/controls/MeasureBar.h"

namespace quillon {

class ProgressView : public ScreenView {
 public:
  ProgressView(ProgressScreen& model, Desk& desk, const char* bar);

  void Sync() override;
  void Notice(const QString& text) override;
  void PassingNotice(const QString& text) override;
  void Measure(unsigned long long done, unsigned long long total, const std::string& unit) override;

 protected:
  /// The button that leads on when the work has ended; Cancel, where the screen has it, stands there before.
  void BindOK(const Button& button, const QString& tip, const Action& click);

 private:
  struct Amount {
    unsigned long long done = 0, total = 0;
  };

  void SyncButtons();
  void Show(const QString& text, Qt::TextElideMode mode);
  const Amount& Leading() const { return bytes_.total > 0 ? bytes_ : things_; }
  QString Doing();
  QString Amounts() const;
  QString TimeLeft() const;

  ProgressScreen& model_;
  QLabel* lblDetail_;
  MeasureBar* barTrue_;
  PictureButton *ok_ = nullptr, *giveUp_ = nullptr;
  Amount bytes_, things_;
  QString thing_;
  QString notice_, passing_;  // stand in the place of the measure
  QElapsedTimer sincePassing_;
  QElapsedTimer since_;
  QElapsedTimer sinceBegin_;
};

}  // namespace quillon
