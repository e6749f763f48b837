// The pictures of the screens, drawn from their vectors for the device at hand.
#pragma once

#include <QPixmap>
#include <QSize>
#include <QString>

namespace quillon {

/// `name` is below art/ and has no extension, such as "frmMain/loadoff"; `size` in pixels of 96 per inch,
/// `ratio` of the device. Pictures once drawn are kept for a while.
QPixmap Picture(const QString& name, QSize size, qreal ratio);

/// Whether there is a picture of this name.
bool HasPicture(const QString& name);

}  // namespace quillon
