#include "desktop/message_in_front.h"

#include "core/console.h"
#include "desktop/user_hands.h"

namespace lineweir {
namespace {

// Nobody reads a message and reaches for a key in less.
constexpr std::int64_t reading_milliseconds = 500;

constexpr int placing_milliseconds = 200;
constexpr int placings = 6;
// Without a window manager there are no frames to wait for.
constexpr std::int64_t longest_placing_milliseconds = 30'000;

}  // namespace

MessageInFront::MessageInFront(Console& console, UserHands& hands)
    : FormWatch(console.MyMsgbox), console_(console), hands_(hands) {
  placing_.setInterval(placing_milliseconds);
  QObject::connect(&placing_, &QTimer::timeout, &placing_, [this] { place_again(); });
}

bool MessageInFront::seen() const {
  return console_.MyMsgbox.visible && hands_.now() - since_ >= reading_milliseconds;
}

void MessageInFront::answer() { console_.MyMsgbox.OKButton.on_click(); }

void MessageInFront::place_again() {
  const bool frames_known = before_placing();
  console_.messages.follow_main_form();
  if (frames_known) --placings_left_;
  const bool too_long = hands_.now() - since_ > longest_placing_milliseconds;
  if (placings_left_ == 0 || too_long || !console_.MyMsgbox.visible) placing_.stop();
}

void MessageInFront::changed(Element& element, PropertyId property) {
  const MessageBoxForm& box = console_.MyMsgbox;
  const bool came = &element == &box && property == PropertyId::Visible && box.visible;
  const bool other_text = &element == &box.Label1 && property == PropertyId::Caption;
  if (came || other_text) since_ = hands_.now();
  if (!came) return;
  placings_left_ = placings;
  placing_.start();
}

}  // namespace lineweir
