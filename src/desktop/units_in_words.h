#pragma once

#include <QString>

namespace lineweir {

// "1 minute 30 seconds", as far as there is any of each; "0 seconds" for none.
QString duration_in_words(int seconds);

// A length in twips as a length that is seen: "30 mm".
QString millimetres_of(int twips);

}  // namespace lineweir
