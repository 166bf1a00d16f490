#include "desktop/row_look.h"

#include <algorithm>

namespace lineweir {

RowLook::Wait wait_of(std::chrono::seconds waited) {
  const auto step = std::chrono::seconds(patience) / steps_of_wait;
  return {static_cast<int>(std::clamp<long long>(waited / step, 0, steps_of_wait)),
          static_cast<int>(waited / std::chrono::minutes(1))};
}

}  // namespace lineweir
