#include "screens/Roles.h"

#include <QAccessible>
#include <QAccessibleWidget>

#include "screens/controls/TextLink.h"

namespace quillon {
namespace {

class AccessibleLink : public QAccessibleWidget {
 public:
  explicit AccessibleLink(TextLink& link) : QAccessibleWidget(&link, QAccessible::Link), link_(link) {}

  QStringList actionNames() const override {
    return QStringList{pressAction()} + QAccessibleWidget::actionNames();
  }
  void doAction(const QString& action) override {
    if (action == pressAction())
      link_.click();
    else
      QAccessibleWidget::doAction(action);
  }

 private:
  TextLink& link_;
};

QAccessibleInterface* Role(const QString& kind, QObject* object) {
  if (auto* link = dynamic_cast<TextLink*>(object)) return new AccessibleLink(*link);
  auto* widget = qobject_cast<QWidget*>(object);
  if (kind != "QWidget" || widget == nullptr || !widget->isWindow()) return nullptr;
  return new QAccessibleWidget(widget, widget->isModal() ? QAccessible::Dialog : QAccessible::Window);
}

}  // namespace

void TeachRoles() {
  QAccessible::removeFactory(Role);
  QAccessible::installFactory(Role);
}

}  // namespace quillon
