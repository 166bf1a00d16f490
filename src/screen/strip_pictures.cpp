#include "screen/strip_pictures.h"

#include "forms/layout.h"

namespace lineweir {

std::string fitted_strip(std::string_view plain_strip, int width) {
  const int plain_width = layout_range(0).strip_width;
  std::string fitted(plain_strip);
  if (!fitted.empty() && width != plain_width) {
    fitted += width < plain_width ? narrow_strip_ending : wide_strip_ending;
  }
  return fitted;
}

}  // namespace lineweir
