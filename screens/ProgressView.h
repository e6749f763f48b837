// What the views of long works have in common: a bar, and the true measure below it.
#pragma once

#include <QElapsedTimer>

#include "screens/ScreenView.h"

namespace quillon {

class ProgressView : public ScreenView {
 public:
  ProgressView(ProgressScreen& model, Desk& desk, const char* bar);

  void Sync() override;
  void Notice(const QString& text) override;
  void PassingNotice(const QString& text) override;
  void Measure(unsigned long long done, unsigned long long total, const std::string& unit) override;

 private:
  void Show(const QString& text, Qt::TextElideMode mode);
  QString Amounts() const;
  QString TimeLeft() const;

  struct Amount {
    unsigned long long done = 0, total = 0;
  };

  ProgressScreen& model_;
  QLabel* lblDetail_;
  Amount bytes_, things_;
  QString thing_;
  QString notice_, passing_;  // stand in the place of the measure
  QElapsedTimer sincePassing_;
  QElapsedTimer since_;
};

}  // namespace quillon
