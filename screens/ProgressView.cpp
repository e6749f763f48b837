#include "screens/ProgressView.h"

#include <QLocale>

namespace quillon {
namespace {

constexpr qint64 kFirstGuess = 1500;  // milliseconds before a rest is worth telling
constexpr qint64 kReadable = 4000;    // milliseconds that a passing notice stays

QString Megabytes(unsigned long long bytes) { return QLocale::c().toString(bytes >> 20); }

}  // namespace

ProgressView::ProgressView(ProgressScreen& model, Desk& desk, const char* bar)
    : ScreenView(model, desk), model_(model) {
  Bind(bar, model.bar);
  lblDetail_ = AddText("lblDetail", {});
}

void ProgressView::Measure(unsigned long long done, unsigned long long total, const std::string& unit) {
  const bool bytes = unit == "bytes";
  Amount& amount = bytes ? bytes_ : things_;
  // A new measure begins.
  if (done < amount.done || total != amount.total) since_.start();
  amount = {done, total};
  if (!bytes) thing_ = QString::fromStdString(unit);
}

void ProgressView::Notice(const QString& text) { notice_ = text; }

void ProgressView::PassingNotice(const QString& text) {
  passing_ = text.simplified();
  sincePassing_.start();
}

void ProgressView::Sync() {
  ScreenView::Sync();
  if (!model_.working) notice_.clear();
  if (!model_.working || (sincePassing_.isValid() && sincePassing_.elapsed() > kReadable)) passing_.clear();
  if (!notice_.isEmpty())
    Show(notice_, Qt::ElideMiddle);
  else if (!passing_.isEmpty())
    Show(passing_, Qt::ElideRight);
  else
    Show(model_.working ? Amounts() : QString(), Qt::ElideNone);
}

void ProgressView::Show(const QString& text, Qt::TextElideMode mode) {
  const QString shown = lblDetail_->fontMetrics().elidedText(text, mode, lblDetail_->width());
  if (lblDetail_->text() == shown) return;
  lblDetail_->setText(shown);
  lblDetail_->setToolTip(mode == Qt::ElideNone ? QString() : text);
}

QString ProgressView::Amounts() const {
  QStringList parts;
  const QLocale numbers = QLocale::c();
  if (things_.total > 0)
    parts << QStringLiteral("%1 of %2 %3")
                 .arg(numbers.toString(things_.done), numbers.toString(things_.total), thing_);
  if (bytes_.total > 0)
    parts << QStringLiteral("%1 of %2 MB").arg(Megabytes(bytes_.done), Megabytes(bytes_.total));
  if (const QString left = TimeLeft(); !left.isEmpty()) parts << left;
  return parts.join(", ");
}

QString ProgressView::TimeLeft() const {
  const Amount& amount = bytes_.total > 0 ? bytes_ : things_;
  if (!since_.isValid() || since_.elapsed() < kFirstGuess || amount.done == 0 || amount.done >= amount.total)
    return {};
  const double share = static_cast<double>(amount.done) / static_cast<double>(amount.total);
  const auto seconds =
      static_cast<int>(static_cast<double>(since_.elapsed()) / 1000 * (1 - share) / share) + 1;
  return seconds < 90 ? QStringLiteral("about %1 s left").arg(seconds)
                      : QStringLiteral("about %1 min left").arg((seconds + 30) / 60);
}

}  // namespace quillon
