#include "desktop/accessibility.h"

#include <QAccessible>
#include <QAccessibleWidget>

#include "desktop/element_widget.h"
#include "desktop/key_look.h"
#include "desktop/key_widget.h"
#include "elements/picture.h"

namespace lineweir {
namespace {

QAccessible::Role role_of(Look look) {
  switch (look) {
    case Look::RowKey:
    case Look::PanelKey:
    case Look::NextKey:
      return QAccessible::Button;
    case Look::Heading:
      return QAccessible::ColumnHeader;
    case Look::RowText:
    case Look::RowTime:
      return QAccessible::Cell;
    case Look::PanelText:
    case Look::KeyCaption:
    case Look::DropCaption:
    case Look::HoldCaption:
    case Look::ClockText:
    case Look::LargeText:
      return QAccessible::StaticText;
    case Look::ClockDigits:
    case Look::ClockSmallDigits:
    case Look::LargeDigits:
    case Look::Clock:
    case Look::RedClock:
      return QAccessible::Clock;
    case Look::Strip:
      return QAccessible::Row;
    case Look::Lamp:
    case Look::KeyIcon:
      return QAccessible::Indicator;
    case Look::Mark:
      return QAccessible::Separator;
    case Look::Message:
    case Look::Entry:
      return QAccessible::EditableText;
    case Look::Face:
    case Look::Panel:
      return QAccessible::Pane;
    default:
      return QAccessible::Graphic;
  }
}

class AccessibleElement final : public QAccessibleWidget {
 public:
  explicit AccessibleElement(ElementWidget& widget)
      : QAccessibleWidget(&widget, role_of(widget.element_look().look)), widget_(widget) {}

  QString text(QAccessible::Text kind) const override {
    if (widget_.control() == nullptr) return {};
    if (kind == QAccessible::Name) return spoken_name(*widget_.control());
    if (kind == QAccessible::Value) return widget_.shown_caption();
    return QAccessibleWidget::text(kind);
  }

  QAccessible::State state() const override {
    QAccessible::State state = QAccessibleWidget::state();
    if (widget_.control() != nullptr && is_key()) {
      const auto& picture = static_cast<const Picture&>(*widget_.control()).picture.get();
      state.pressed = key_state(picture) == KeyState::Down;
    }
    return state;
  }

  QStringList actionNames() const override {
    return is_key() ? QStringList{pressAction()} : QAccessibleWidget::actionNames();
  }

  void doAction(const QString& name) override {
    if (is_key() && name == pressAction() && widget_.isEnabled()) {
      static_cast<KeyWidget&>(widget_).click();
    } else {
      QAccessibleWidget::doAction(name);
    }
  }

 private:
  bool is_key() const { return role() == QAccessible::Button; }

  ElementWidget& widget_;
};

QAccessibleInterface* make_interface(const QString&, QObject* object) {
  auto* widget = dynamic_cast<ElementWidget*>(object);
  return widget == nullptr ? nullptr : new AccessibleElement(*widget);
}

}  // namespace

void install_accessibility() { QAccessible::installFactory(make_interface); }

}  // namespace lineweir
