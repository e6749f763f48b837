#include "screens/Art.h"

#include <QFile>
#include <QHash>
#include <QPainter>
#include <QPixmapCache>
#include <QSvgRenderer>
#include <future>

namespace quillon {
namespace {

QString FileOf(const QString& name) { return QStringLiteral(":/art/%1.svg").arg(name); }

QString KeyOf(const QString& name, QSize size, qreal ratio) {
  return QStringLiteral("%1@%2x%3@%4").arg(name).arg(size.width()).arg(size.height()).arg(ratio);
}

QImage Draw(const QString& name, QSize size, qreal ratio) {
  QImage image((QSizeF(size) * ratio).toSize(), QImage::Format_ARGB32_Premultiplied);
  image.setDevicePixelRatio(ratio);
  image.fill(Qt::transparent);
  QSvgRenderer vectors(FileOf(name));
  QPainter painter(&image);
  vectors.render(&painter, QRectF(QPointF(), size));
  return image;
}

QHash<QString, std::shared_future<QImage>>& BeingDrawn() {
  static QHash<QString, std::shared_future<QImage>> pictures;
  return pictures;
}

bool hurried = false;

/// The key under which a picture was drawn last, by its name.
QHash<QString, QString>& LastDrawn() {
  static QHash<QString, QString> keys;
  return keys;
}

}  // namespace

void HurryPictures(bool hurry) { hurried = hurry; }

void DrawAhead(const QString& name, QSize size, qreal ratio) {
  const QString key = KeyOf(name, size, ratio);
  QPixmap known;
  if (!QPixmapCache::find(key, &known) && !BeingDrawn().contains(key))
    BeingDrawn().insert(key, std::async(std::launch::async, Draw, name, size, ratio).share());
}

void FinishDrawing() { BeingDrawn().clear(); }

QPixmap Picture(const QString& name, QSize size, qreal ratio) {
  const QString key = KeyOf(name, size, ratio);
  QPixmap pixmap;
  if (hurried && QPixmapCache::find(LastDrawn().value(name), &pixmap)) return pixmap;
  LastDrawn().insert(name, key);
  if (QPixmapCache::find(key, &pixmap)) return pixmap;
  const auto begun = BeingDrawn().find(key);
  pixmap = QPixmap::fromImage(begun != BeingDrawn().end() ? begun->get() : Draw(name, size, ratio));
  if (begun != BeingDrawn().end()) BeingDrawn().erase(begun);
  QPixmapCache::insert(key, pixmap);
  return pixmap;
}

}  // namespace quillon
