#pragma once

#include <QString>
#include <string>
#include <string_view>

#include "elements/form.h"

namespace lineweir {

// The edge where an element's texts become what Qt shows, and back.
inline QString shown_text(const Element& element, std::string_view text) {
  return QString::fromStdString(element.form().letters->to_utf8(text));
}

inline std::string core_text(const Element& element, const QString& shown) {
  return element.form().letters->from_utf8(shown.toStdString());
}

}  // namespace lineweir
