// The pictures of the screens, drawn from their vectors for the device at hand.
#pragma once

#include <QPixmap>
#include <QSize>
#include <QString>

namespace quillon {

/// `name` is below art/ and has no extension, such as "frmMain/loadoff"; `size` in pixels of 96 per inch,
/// `ratio` of the device. Pictures once drawn are kept for a while.
QPixmap Picture(const QString& name, QSize size, qreal ratio);

/// While it hurries, Picture gives what it drew last of a name, whatever the size: for the time in which a
/// window is being resized.
void HurryPictures(bool hurry);

/// Begins to draw a picture on a thread of its own, for Picture to wait for: the big ones take longer than a
/// window takes to come up.
void DrawAhead(const QString& name, QSize size, qreal ratio);
/// Waits for what DrawAhead began: to be called before the application object goes.
void FinishDrawing();

}  // namespace quillon
