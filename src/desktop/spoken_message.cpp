#include "desktop/spoken_message.h"

#include "desktop/core_text.h"
#include "messages/message_history.h"

namespace lineweir {

QString spoken_message(const Form& form, const HeardMessage& message) {
  QString words = message.urgent ? QStringLiteral("Urgent message") : QStringLiteral("Message");
  if (!message.sender.empty()) {
    words += QStringLiteral(" from ") + shown_text(form, message.sender);
  }
  return words + QStringLiteral(": ") + shown_text(form, message.text);
}

}  // namespace lineweir
