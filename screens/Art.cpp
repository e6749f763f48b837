#include "screens/Art.h"

#include <QFile>
#include <QPainter>
#include <QPixmapCache>
#include <QSvgRenderer>

namespace quillon {
namespace {

QString FileOf(const QString& name) { return QStringLiteral(":/art/%1.svg").arg(name); }

}  // namespace

bool HasPicture(const QString& name) { return QFile::exists(FileOf(name)); }

QPixmap Picture(const QString& name, QSize size, qreal ratio) {
  const QString key = QStringLiteral("%1@%2x%3@%4").arg(name).arg(size.width()).arg(size.height()).arg(ratio);
  QPixmap pixmap;
  if (QPixmapCache::find(key, &pixmap)) return pixmap;
  pixmap = QPixmap((QSizeF(size) * ratio).toSize());
  pixmap.setDevicePixelRatio(ratio);
  pixmap.fill(Qt::transparent);
  QSvgRenderer vectors(FileOf(name));
  QPainter painter(&pixmap);
  vectors.render(&painter, QRectF(QPointF(), size));
  painter.end();
  QPixmapCache::insert(key, pixmap);
  return pixmap;
}

}  // namespace quillon
