#include "screens/LineBreaks.h"

#include <QRegularExpression>
#include <QTextBoundaryFinder>

namespace quillon {
namespace {

const QChar kGap(0x200B);

}  // namespace

QString BreakableAtSeparators(QString text) {
  return text.replace('\\', QString('\\') + kGap).replace('/', QString('/') + kGap);
}

QString BreakableAnywhere(const QString& text) {
  QTextBoundaryFinder characters(QTextBoundaryFinder::Grapheme, text);
  QString broken;
  for (qsizetype from = 0, to = 0; (to = characters.toNextBoundary()) > 0; from = to)
    broken += text.mid(from, to - from) + kGap;
  return broken;
}

QString BreakableInLongWords(const QString& text) {
  static const QRegularExpression longWord(R"((?<![^\s])[^\s\\/]{60,}(?![^\s]))");
  QString broken;
  qsizetype from = 0;
  for (auto words = longWord.globalMatch(text); words.hasNext();) {
    const QRegularExpressionMatch word = words.next();
    broken += text.mid(from, word.capturedStart() - from) + BreakableAnywhere(word.captured());
    from = word.capturedEnd();
  }
  return broken + text.mid(from);
}

}  // namespace quillon
