#pragma once

#include <QString>
#include <string>
#include <string_view>

#include "core/text.h"

namespace lineweir {

// The edge where the core's bytes become what Qt shows, and back.
inline QString shown_text(std::string_view core_text) {
  return QString::fromStdString(to_utf8(core_text));
}

inline std::string core_text(const QString& shown) { return from_utf8(shown.toStdString()); }

}  // namespace lineweir
