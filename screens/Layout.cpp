#include "screens/Layout.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

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
    controls_.insert(at.key(), ControlOf(screen, at->toObject()));
}

const ControlLayout& ScreenLayout::Of(const QString& control) const {
  const auto at = controls_.constFind(control);
  if (at == controls_.constEnd())
    qFatal("%s has no place on the screen %s", qPrintable(control), qPrintable(screen_));
  return *at;
}

}  // namespace quillon
