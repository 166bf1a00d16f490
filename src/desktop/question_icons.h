#pragma once

#include <QStyle>
#include <optional>

class QIcon;

namespace lineweir {

struct Theme;

// The console's own picture for one that a dialog of Qt asks its style for; nothing where the
// console has none. Folders and files, and the keys of the file dialog: back, up and their like.
std::optional<QIcon> question_icon(QStyle::StandardPixmap picture, const Theme& theme);

}  // namespace lineweir
