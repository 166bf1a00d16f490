#pragma once

#include <QString>
#include <optional>

namespace lineweir {

// Writes all background pictures as JPEG files into the folder, which is made if there is none. A
// file of one of their names that wasn't written by this function is a station's own and stays as
// it is. Returns the path of the first file that can't be written; nothing when all is well.
std::optional<QString> fill_background_folder(const QString& folder);

}  // namespace lineweir
