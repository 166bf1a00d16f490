#include "desktop/picture_painters.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "desktop/painter_dials.h"
#include "desktop/painter_icons.h"
#include "desktop/painter_keys.h"
#include "desktop/painter_lamps.h"
#include "desktop/painter_strips.h"
#include "screen/strip_pictures.h"

namespace lineweir {
namespace {

using Dial = DialColors Theme::*;

template <RowColor color>
void strip(QPainter& painter, const QRect& place, const Brushwork& brushwork) {
  paint_strip(painter, place, brushwork.theme.strip(color), brushwork);
}

template <RowColor color>
void mark(QPainter& painter, const QRect& place, const Brushwork& brushwork) {
  paint_mark(painter, place, brushwork.theme.strip(color), brushwork);
}

struct RowPainters {
  PicturePainter strip;
  PicturePainter mark;
};

constexpr RowPainters row_painters(RowColor color) {
  switch (color) {
    case RowColor::Green:
      return {strip<RowColor::Green>, mark<RowColor::Green>};
    case RowColor::Red:
      return {strip<RowColor::Red>, mark<RowColor::Red>};
    default:
      return {strip<RowColor::White>, mark<RowColor::White>};
  }
}

template <Dial colors, DialFace face>
void dial(QPainter& painter, const QRect& place, const Brushwork& brushwork) {
  paint_dial(painter, place, face, brushwork.theme.*colors, brushwork);
}

struct Row {
  std::string_view picture;
  PicturePainter paint;
};

constexpr std::array rows = {
    Row{"HybridNormUp", paint_key_up},
    Row{"HybridNormDown", paint_key_down},
    Row{"HybridDisabledNorm", paint_key_disabled},
    Row{"DropLargeUp", paint_key_up},
    Row{"DropLargeDown", paint_key_down},
    Row{"DropLargeDisabled", paint_key_disabled},
    Row{"DropSmallUp", paint_key_up},
    Row{"DropSmallDown", paint_key_down},
    Row{"DropSmallDisabled", paint_key_disabled},
    Row{"Center1Up", paint_key_up},
    Row{"Center1Down", paint_key_down},
    Row{"CenterDisabled", paint_key_disabled},
    Row{"ButtonRightUp", paint_key_up},
    Row{"ButtonRightDown", paint_key_down},
    Row{"ButtonRightDisabled", paint_key_disabled},
    Row{"SetupUp", paint_key_up},
    Row{"SetupDown", paint_key_latched},
    Row{"RedIcon", paint_circle},
    Row{"YellowIcon", paint_triangle},
    Row{"GreenIcon", paint_bars},
    Row{"BlueIcon", paint_cross},
    Row{"GreyPic", paint_lamp_dark},
    Row{"RedPic", paint_lamp_on_air},
    Row{"GreenPic", paint_lamp_at_handset},
    Row{"TimeDial", dial<&Theme::dial, DialFace::Hours>},
    Row{"ShowDial", dial<&Theme::dial, DialFace::Ticks>},
    Row{"RedDial", dial<&Theme::red_dial, DialFace::Ticks>},
};

}  // namespace

int Brushwork::line() const { return std::max(1, static_cast<int>(std::floor(unit + 0.25))); }

PicturePainter painter_of(std::string_view picture) {
  if (const auto color = color_of_strip(picture)) return row_painters(*color).strip;
  if (const auto color = color_of_mark(picture)) return row_painters(*color).mark;
  const auto* row = std::ranges::find(rows, picture, &Row::picture);
  return row == rows.end() ? nullptr : row->paint;
}

}  // namespace lineweir
