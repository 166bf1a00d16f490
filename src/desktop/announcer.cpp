#include "desktop/announcer.h"

#include <utility>

#include "core/console.h"
#include "desktop/core_text.h"
#include "desktop/spoken_lines.h"
#include "lines/status_letters.h"

namespace lineweir {

Announcements::Announcements(QWidget& window) : QWidget(&window) {
  setObjectName(QStringLiteral("Announcements"));
  setAccessibleName(QStringLiteral("No line has rung yet"));
  setAttribute(Qt::WA_TransparentForMouseEvents);
  // Under the form's content, so that it is there and never seen.
  setGeometry(0, 0, 1, 1);
  lower();
  show();
}

void Announcer::Watch::changed(Element& element, PropertyId property) {
  switch (property) {
    // A line's icons tell of each new state; a box comes with its window and its text.
    case PropertyId::Visible:
    case PropertyId::Picture:
    case PropertyId::Caption:
    case PropertyId::NoLink:
      if (element.kind() != ElementKind::MenuItem) announcer_.frame_.mark();
      break;
    default:
      break;
  }
}

Announcer::Announcer(Console& console, std::function<QWidget*(const Form& form)> window_of)
    : tell([](QAccessibleEvent& event) { QAccessible::updateAccessibility(&event); }),
      console_(console),
      window_of_(std::move(window_of)),
      rows_(console.Lineweir, *this),
      message_box_(console.MyMsgbox, *this),
      caller_data_(console.Form4, *this),
      flag_form_(console.FlagForm, *this),
      show_plan_(console.Form2, *this),
      frame_([this] { show_changes(); }) {}

void Announcer::flush() { frame_.flush(); }

void Announcer::show_changes() {
  QWidget* window = window_of_(console_.Lineweir);
  if (window == nullptr) return;
  if (announcements_ == nullptr) announcements_ = new Announcements(*window);
  announce_lines();
  announce_link();
  announce_notice(console_.Form4, console_.Form4.NoticeLabel.caption, caller_notice_);
  const Label& flag = console_.Form4.FlagLabel;
  announce_notice(console_.Form4, flag.visible ? flag.caption.get() : std::string(), caller_flag_);
  announce_notice(console_.FlagForm, console_.FlagForm.NoticeLabel.caption, flag_notice_);
  announce_notice(console_.Form2, console_.Form2.PastLabel.caption, plan_notice_);
  tell_news();
  announce_message();
}

void Announcer::tell_news() {
  if (news_.isEmpty()) return;
  announcements_->setAccessibleName(std::exchange(news_, {}).join(QStringLiteral(". ")));
  alert(*announcements_);
}

void Announcer::announce(const QString& text) {
  if (announcements_ == nullptr) return;
  news_ += text;
  frame_.mark();
}

void Announcer::announce_link() {
  const std::string& now = console_.Lineweir.no_link;
  const bool first = !no_link_;
  if (no_link_ == now) return;
  no_link_ = now;
  if (first) return;
  news_ += now.empty() ? QStringLiteral("The link to the telephone system stands")
                       : shown_text(console_.Lineweir, now);
}

void Announcer::announce_lines() {
  const auto before = std::exchange(states_, std::vector<QString>());
  std::vector<int> ringing;
  std::vector<int> others;
  for (int line = 0; line < console_.lines.LineCount; ++line) {
    const auto place = static_cast<std::size_t>(line);
    states_->push_back(spoken_state(console_, line));
    const bool shown =
        line < console_.Lineweir.DataRow.upper_bound() && console_.Lineweir.DataRow(line).visible;
    const bool known = before && place < before->size();
    if (!shown || (known && before->at(place) == states_->at(place))) continue;
    if (console_.lines.StatusLetter(line) == ringing_letter) {
      ringing.push_back(line);
    } else if (known) {
      others.push_back(line);
    }
  }
  if (!ringing.empty()) news_ += spoken_ringing(ringing);
  if (!others.empty()) news_ += spoken_changes(console_, others);
}

void Announcer::alert(QWidget& widget) {
  // Readers that don't know the one listen for the other.
  for (const auto kind : {QAccessible::ObjectShow, QAccessible::Alert}) {
    QAccessibleEvent event(&widget, kind);
    tell(event);
  }
}

void Announcer::announce_message() {
  const MessageBoxForm& box = console_.MyMsgbox;
  const std::string message = box.visible ? box.Label1.caption.get() : std::string();
  if (message == message_) return;
  QWidget* window = window_of_(box);
  // The box's window comes a moment later than the box.
  if (!message.empty() && (window == nullptr || !window->isVisible())) return frame_.mark();
  message_ = message;
  if (!message.empty()) alert(*window);
}

void Announcer::announce_notice(const Form& form, const std::string& caption, std::string& told) {
  const std::string notice = form.visible ? caption : std::string();
  if (notice == told) return;
  told = notice;
  if (!notice.empty()) news_ += shown_text(form, notice);
}

}  // namespace lineweir
