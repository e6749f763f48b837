// Where the controls of a screen lie and how they look, as drawn with its picture.
#pragma once

#include <QColor>
#include <QHash>
#include <QList>
#include <QRect>
#include <QSize>
#include <QString>

namespace quillon {

/// Sizes in pixels of 96 per inch. What a control does not have is empty.
struct ControlLayout {
  QRect rect;
  QString picture;  // below art/, without state and extension
  QString caption;
  QRect captionRect;  // within `rect`
  QColor colour, background, current, currentColour;
  int size = 0;  // of the text
  int rowHeight = 0;
  QList<int> columns;  // where the parts of a row begin, within it; empty when it has one
  bool bold = false, underline = false;
  Qt::Alignment align;
};

class ScreenLayout {
 public:
  /// Of the screen with this name.
  explicit ScreenLayout(const QString& screen);

  QSize Size() const { return size_; }
  const QString& Background() const { return background_; }
  bool Has(const QString& control) const { return controls_.contains(control); }
  /// Ends the program for a control that was not drawn.
  const ControlLayout& Of(const QString& control) const;

 private:
  QSize size_;
  QString screen_, background_;
  QHash<QString, ControlLayout> controls_;
};

}  // namespace quillon
