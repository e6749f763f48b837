// Where lines may break in texts that have no blanks there. What is added to them can't be seen.
#pragma once

#include <QString>

namespace quillon {

/// Behind every separator of a path.
QString BreakableAtSeparators(QString text);
/// Behind every character.
QString BreakableAnywhere(const QString& text);
/// Behind every character of words that no line holds, paths excepted: they are copied.
QString BreakableInLongWords(const QString& text);

}  // namespace quillon
