#include "desktop/accessibility.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QLabel>

#include "desktop/announcer.h"
#include "desktop/core_text.h"
#include "desktop/element_widget.h"
#include "desktop/form_canvas.h"
#include "desktop/key_look.h"
#include "desktop/key_widget.h"
#include "elements/label.h"
#include "elements/line.h"
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
    case Look::RowStatus:
    case Look::RowTime:
      return QAccessible::Cell;
    case Look::PanelText:
    case Look::PanelWarning:
    case Look::PanelBanner:
    case Look::CallerNote:
    case Look::KeyCaption:
    case Look::DropCaption:
    case Look::HoldCaption:
    case Look::ClockText:
    case Look::LargeText:
      return QAccessible::StaticText;
    case Look::ClockDigits:
    case Look::Countdown:
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
    if (kind == QAccessible::Name) return name();
    if (kind == QAccessible::Value) return value();
    if (kind == QAccessible::Description && is_key()) {
      return static_cast<const KeyWidget&>(widget_).why_nothing_happens();
    }
    if (kind == QAccessible::Description && is_strip()) return memory_words();
    if (kind == QAccessible::Description && goes_by_link()) return widget_.tool_tip();
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
  bool is_strip() const { return widget_.element_look().look == Look::Strip; }

  QString memory_words() const {
    const auto& spoken_memory = widget_.canvas().spoken_memory;
    return spoken_memory
               ? spoken_memory(widget_.control()->index()).replace(u'\n', QLatin1String(". "))
               : QString();
  }

  bool goes_by_link() const { return widget_.element_look().look == Look::Lamp; }

  bool is_key() const { return role() == QAccessible::Button; }

  // A screen reader reads the name and no more, so that it ends with what stands on the screen.
  QString name() const {
    const QString shown = value();
    if (is_caption() && !shown.isEmpty()) return shown;
    const QString spoken = spoken_name(*widget_.control());
    const bool own_text = role() == QAccessible::EditableText;
    return shown.isEmpty() || own_text ? spoken : spoken + QStringLiteral(": ") + shown;
  }

  QString value() const {
    const Look look = widget_.element_look().look;
    if (look == Look::Lamp) return lamp_words();
    if ((look == Look::Strip || look == Look::KeyIcon) && widget_.canvas().spoken_state) {
      return widget_.canvas().spoken_state(widget_.control()->index());
    }
    const int line = widget_.control()->index();
    if (look == Look::RowTime && widget_.canvas().row_look(line).wait &&
        widget_.canvas().spoken_wait) {
      return widget_.canvas().spoken_wait(line);
    }
    if (look == Look::Clock || look == Look::RedClock) return clock_words();
    return widget_.shown_caption();
  }

  // The lettering of a key.
  bool is_caption() const {
    const Look look = widget_.element_look().look;
    return look == Look::KeyCaption || look == Look::DropCaption || look == Look::HoldCaption;
  }

  QString lamp_words() const {
    const int color = static_cast<const Shape&>(*widget_.control()).fill_color;
    const bool sound = color == color_green && widget_.canvas().no_link().isEmpty();
    return sound ? QStringLiteral("sound") : QStringLiteral("down");
  }

  // What the hands tell is a text of the form as well.
  QString clock_words() const {
    const bool time = widget_.control()->name() == "picRealTimeClock";
    const auto* text = static_cast<const Label*>(
        widget_.canvas().control_named(time ? "RealTime" : "CountDownTime"));
    return text == nullptr ? QString() : shown_text(*text, text->caption.get());
  }

  ElementWidget& widget_;
};

// A window, the content of one, or the place of announcements.
class AccessiblePlace final : public QAccessibleWidget {
 public:
  AccessiblePlace(QWidget& place, QAccessible::Role role, const QString& name = {})
      : QAccessibleWidget(&place, role, name) {}

  QString text(QAccessible::Text kind) const override {
    const QString own = QAccessibleWidget::text(kind);
    if (kind != QAccessible::Description || role() != QAccessible::AlertMessage) return own;
    // The text of a message box belongs to the box.
    const auto* message = widget()->findChild<QLabel*>(QStringLiteral("Label1"));
    return message == nullptr ? own : message->text();
  }
};

QAccessibleInterface* make_interface(const QString&, QObject* object) {
  if (auto* element = dynamic_cast<ElementWidget*>(object)) return new AccessibleElement(*element);
  if (auto* canvas = dynamic_cast<FormCanvas*>(object)) {
    return new AccessiblePlace(*canvas, QAccessible::Pane,
                               QStringLiteral("Telephone lines and control panel"));
  }
  if (auto* announcements = dynamic_cast<Announcements*>(object)) {
    return new AccessiblePlace(*announcements, QAccessible::AlertMessage);
  }
  auto* window = qobject_cast<QWidget*>(object);
  // Menus, lists of choices and tool tips are windows of Qt's own kinds.
  if (window == nullptr || window->metaObject() != &QWidget::staticMetaObject) return nullptr;
  if (!window->isWindow()) return nullptr;
  const bool message = window->objectName() == QLatin1String("MyMsgbox");
  const bool dialog = window->windowType() == Qt::Dialog;
  return new AccessiblePlace(*window, message  ? QAccessible::AlertMessage
                                      : dialog ? QAccessible::Dialog
                                               : QAccessible::Window);
}

}  // namespace

void install_accessibility() { QAccessible::installFactory(make_interface); }

}  // namespace lineweir
