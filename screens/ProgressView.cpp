#include "screens/ProgressView.h"

#include <QLocale>

#include "core/Program.h"

namespace quillon {
namespace {

constexpr qint64 kFirstGuess = 1500;  // milliseconds before a rest is worth telling
constexpr qint64 kReadable = 4000;    // milliseconds that a passing notice stays

const QString kUnstoppable = "This can't be stopped half-way. Please wait until it has finished.";

QString Megabytes(unsigned long long bytes) { return QLocale::c().toString(bytes >> 20); }

}  // namespace

ProgressView::ProgressView(ProgressScreen& model, Desk& desk, const char* bar)
    : ScreenView(model, desk), model_(model) {
  Bind(bar, model.bar);
  barTrue_ = new MeasureBar(LayoutOf("barTrue"), this);
  barTrue_->setObjectName("barTrue");
  Dress([this] { barTrue_->setGeometry(LayoutOf("barTrue").rect); });
  lblDetail_ = AddText("lblDetail", {});
}

void ProgressView::BindOK(const Button& button, const QString& tip, const Action& click) {
  if (HasLayoutOf("btnCancel"))
    giveUp_ = Bind("btnCancel", model_.btnCancel, "Stop here and leave everything as it was.",
                   [this] { model_.btnCancelClick(); });
  ok_ = Bind("btnOK", button, tip, click);
  SetDefault(ok_);
}

void ProgressView::SyncButtons() {
  if (ok_ == nullptr) return;
  const bool mayGiveUp = giveUp_ != nullptr && model_.btnCancel.visible;
  if (mayGiveUp) giveUp_->raise();  // over OK, which can't be pressed yet
  SetCancel(mayGiveUp ? giveUp_ : ok_);
}

void ProgressView::Measure(unsigned long long done, unsigned long long total, const std::string& unit) {
  if (unit.empty()) {
    bytes_ = things_ = {};
    return;
  }
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
  SyncButtons();
  if (!model_.working) {
    notice_.clear();
    sinceBegin_.invalidate();
  } else if (!sinceBegin_.isValid()) {
    sinceBegin_.start();
  }
  if (!model_.working || (sincePassing_.isValid() && sincePassing_.elapsed() > kReadable)) passing_.clear();
  const Amount& amount = Leading();
  const bool measured = model_.working && amount.total > 0;
  barTrue_->Show(measured ? static_cast<double>(amount.done) / static_cast<double>(amount.total) : -1);
  if (!notice_.isEmpty())
    Show(notice_, Qt::ElideMiddle);
  else if (!passing_.isEmpty())
    Show(passing_, Qt::ElideRight);
  else
    Show(model_.working ? Doing() : QString(), Qt::ElideRight);
}

/// To begin with, and while nothing is measured: whether there is a way to stop.
QString ProgressView::Doing() {
  const bool canStop = giveUp_ != nullptr && model_.btnCancel.visible;
  const QString amounts = Amounts();
  if (!canStop && (amounts.isEmpty() || sinceBegin_.elapsed() < kReadable)) return kUnstoppable;
  // While the bar has nothing to say yet.
  return model_.bar.caption.empty() && !amounts.isEmpty()
             ? QString::fromStdString(TheDesk().TheProgram().step) + ": " + amounts
             : amounts;
}

void ProgressView::Show(const QString& text, Qt::TextElideMode mode) {
  const QString shown = lblDetail_->fontMetrics().elidedText(text, mode, lblDetail_->width());
  if (lblDetail_->text() == shown) return;
  lblDetail_->setText(shown);
  lblDetail_->setToolTip(shown == text ? QString() : text);
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
  const Amount& amount = Leading();
  if (!since_.isValid() || since_.elapsed() < kFirstGuess || amount.done == 0 || amount.done >= amount.total)
    return {};
  const double share = static_cast<double>(amount.done) / static_cast<double>(amount.total);
  const auto seconds =
      static_cast<int>(static_cast<double>(since_.elapsed()) / 1000 * (1 - share) / share) + 1;
  return seconds < 90 ? QStringLiteral("about %1 s left").arg(seconds)
                      : QStringLiteral("about %1 min left").arg((seconds + 30) / 60);
}

}  // namespace quillon
