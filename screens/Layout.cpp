#include "screens/Layout.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <algorithm>
#include <cmath>

namespace quillon {
namespace {

QRect RectOf(const QJsonValue& value) {
  const QJsonArray sides = value.toArray();
  return {sides.at(0).toInt(), sides.at(1).toInt(), sides.at(2).toInt(), sides.at(3).toInt()};
}

Qt::Alignment AlignmentOf(const QJsonObject& control) {
  const QString across = control["align"].toString(), down = control["valign"].toString();
  return (across == "center"  ? Qt::AlignHCenter
          : across == "right" ? Qt::AlignRight
                              : Qt::AlignLeft) |
         (down == "middle" ? Qt::AlignVCenter : Qt::AlignTop);
}

/// A picture of another screen is named relative to this one's folder.
QString PictureOf(const QString& screen, const QString& name) {
  return name.isEmpty() ? QString() : QDir::cleanPath(screen + "/" + name);
}

ControlLayout ControlOf(const QString& screen, const QJsonObject& control) {
  const bool button = control.contains("caption");
  const auto colour = [&](const char* key) { return QColor(control[QLatin1String(key)].toString()); };
  ControlLayout layout;
  layout.rect = RectOf(control["rect"]);
  layout.picture = PictureOf(screen, control["picture"].toString(control["sample"].toString()));
  layout.caption = control["caption"].toString();
  layout.captionRect = RectOf(control["captionRect"]);
  layout.colour = colour(button ? "captionColour" : "colour");
  layout.background = colour("background");
  layout.current = colour("current");
  layout.currentColour = colour("currentColour");
  layout.size = control[QLatin1String(button ? "captionSize" : "size")].toInt(12);
  layout.rowHeight = control["rowHeight"].toInt();
  for (const QJsonValue& column : control["columns"].toArray()) layout.columns << column.toInt();
  layout.bold = control["bold"].toBool(button);
  layout.underline = control["underline"].toBool();
  layout.align = AlignmentOf(control);
  return layout;
}

int Scaled(int length, double scale) { return static_cast<int>(std::lround(length * scale)); }

/// What touches as drawn goes on touching.
QRect Scaled(const QRect& rect, double scale) {
  const QPoint from(Scaled(rect.x(), scale), Scaled(rect.y(), scale));
  return {from, QSize(Scaled(rect.x() + rect.width(), scale) - from.x(),
                      Scaled(rect.y() + rect.height(), scale) - from.y())};
}

ControlLayout Scaled(const ControlLayout& drawn, double scale, QPoint origin) {
  ControlLayout layout = drawn;
  layout.scale = scale;
  layout.rect = Scaled(drawn.rect, scale).translated(origin);
  layout.captionRect = Scaled(drawn.captionRect, scale);
  layout.size = std::max(1, Scaled(drawn.size, scale));
  // As many rows as were drawn stay in view.
  layout.rowHeight = static_cast<int>(drawn.rowHeight * scale);
  for (int& column : layout.columns) column = Scaled(column, scale);
  return layout;
}

}  // namespace

ScreenLayout::ScreenLayout(const QString& screen) : screen_(screen) {
  QFile file(QStringLiteral(":/art/%1/layout.json").arg(screen));
  if (!file.open(QIODevice::ReadOnly)) qFatal("the screen %s was not drawn", qPrintable(screen));
  const QJsonObject layout = QJsonDocument::fromJson(file.readAll()).object();
  const QJsonArray size = layout["size"].toArray();
  size_ = {size.at(0).toInt(), size.at(1).toInt()};
  background_ = PictureOf(screen, layout["background"].toString("background.svg").chopped(4));
  const QJsonObject controls = layout["controls"].toObject();
  for (auto at = controls.begin(); at != controls.end(); ++at)
    drawn_.insert(at.key(), ControlOf(screen, at->toObject()));
  for (auto at = drawn_.begin(); at != drawn_.end(); ++at) controls_.insert(at.key(), *at);
  place_ = QRect(QPoint(), size_);
}

QSize ScreenLayout::SizeIn(QSize room, double scale) const {
  const double largest = std::min(static_cast<double>(room.width()) / size_.width(),
                                  static_cast<double>(room.height()) / size_.height());
  const QSizeF size = QSizeF(size_) * std::max(kSmallestScale, std::min(scale, largest));
  return {static_cast<int>(size.width()), static_cast<int>(size.height())};
}

void ScreenLayout::Fit(QSize window) {
  scale_ = std::min(static_cast<double>(window.width()) / size_.width(),
                    static_cast<double>(window.height()) / size_.height());
  const QSize picture(Scaled(size_.width(), scale_), Scaled(size_.height(), scale_));
  place_ = QRect(QPoint((window.width() - picture.width()) / 2, (window.height() - picture.height()) / 2),
                 picture);
  for (auto at = controls_.begin(); at != controls_.end(); ++at)
    *at = Scaled(drawn_[at.key()], scale_, place_.topLeft());
}

const ControlLayout& ScreenLayout::Of(const QString& control) const {
  const auto at = controls_.constFind(control);
  if (at == controls_.constEnd())
    qFatal("%s has no place on the screen %s", qPrintable(control), qPrintable(screen_));
  return *at;
}

}  // namespace quillon
