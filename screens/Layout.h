// Where the controls of a screen lie and how they look, as drawn with its picture.
#pragma once

#include <QColor>
#include <QHash>
#include <QList>
#include <QRect>
#include <QSize>
#include <QString>

namespace quillon {

/// Sizes in the window's pixels. What a control does not have is empty.
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
  double scale = 1;  // against what was drawn
};

/// No window is made smaller, against what was drawn.
constexpr double kSmallestScale = 0.4;

class ScreenLayout {
 public:
  /// Of the screen with this name.
  explicit ScreenLayout(const QString& screen);

  /// As drawn, in pixels of 96 per inch.
  QSize Size() const { return size_; }
  /// Of a window that is `scale` times as large as drawn, or as `room` can hold.
  QSize SizeIn(QSize room, double scale) const;
  /// Makes everything as large as a window of this size can hold, in its middle. The controls stay where they
  /// are in memory.
  void Fit(QSize window);
  double Scale() const { return scale_; }
  /// Where the picture lies in the window.
  QRect Place() const { return place_; }
  const QString& Background() const { return background_; }
  bool Has(const QString& control) const { return controls_.contains(control); }
  /// Ends the program for a control that was not drawn.
  const ControlLayout& Of(const QString& control) const;

 private:
  QSize size_;
  QString screen_, background_;
  QHash<QString, ControlLayout> drawn_, controls_;
  double scale_ = 1;
  QRect place_;
};

}  // namespace quillon
