#pragma once

#include <QString>

namespace lineweir {

class Form;
struct HeardMessage;

// "Message from Ann: Two minutes", "Urgent message from Ann: Two minutes", with the letters of the
// form.
QString spoken_message(const Form& form, const HeardMessage& message);

}  // namespace lineweir
