#include "desktop/strip_colors.h"

#include <QColor>
#include <algorithm>
#include <cmath>

#include "desktop/theme.h"

namespace lineweir {
namespace {

constexpr QRgb ink = 0xff12161b;
constexpr QRgb blue_frame = 0xff2477d4;

constexpr StripColors on_air = {{{0xffd92a26, 0xffb01918}, 0xffffffff},
                                0xfff0706a,
                                0xff6f0f11,
                                0xff8a1518,
                                StripFrame::Thin,
                                0xffffd9d4,
                                StripSign::None,
                                0};
constexpr StripColors locked_on_air = [] {
  StripColors colors = on_air;
  colors.sign = StripSign::Padlock;
  colors.sign_color = 0xffffffff;
  return colors;
}();
constexpr StripColors next = {{{0xff8ce696, 0xff55c668}, 0xff04120a},
                              0xffbdf5c2,
                              0xff2f8f42,
                              0xff2f9e46,
                              StripFrame::None,
                              0,
                              StripSign::Pointer,
                              0xff07451a};

constexpr StripColors framed(StripColors colors, StripFrame frame, QRgb color) {
  colors.frame = frame;
  colors.frame_color = color;
  return colors;
}

constexpr StripColors paper(Shading shading, QRgb edge, QRgb mark) {
  return {{shading, ink}, 0xffffffff, edge, mark, StripFrame::None, 0, StripSign::None, 0};
}

constexpr StripColors slot(Shading shading, QRgb text, QRgb rim, QRgb edge, QRgb mark) {
  return {{shading, text}, rim, edge, mark, StripFrame::None, 0, StripSign::None, 0};
}

constexpr StripColors locked(StripColors held) {
  held.sign = StripSign::Padlock;
  held.sign_color = 0xff3b444e;
  return held;
}

constexpr StripColors metal_held = paper({0xffc2c9d1, 0xffabb3bc}, 0xff7f8892, 0xff96a0aa);
constexpr StripColors metal_handset = paper({0xffdbe4ef, 0xffc3cfdd}, 0xff8c97a3, 0xffa5b3c2);
constexpr StripColors grey_held = paper({0xffe9edf1, 0xffe1e6ea}, 0xff9aa3ad, 0xffb3bbc4);
constexpr StripColors grey_handset = paper({0xffe6eefa, 0xffd8e4f4}, 0xff98a4b3, 0xffafbdcd);

QRgb mixed(QRgb a, QRgb b, double part_of_b) {
  const auto channel = [&](int one, int other) {
    return static_cast<int>(std::lround(one + (other - one) * part_of_b));
  };
  return qRgb(channel(qRed(a), qRed(b)), channel(qGreen(a), qGreen(b)),
              channel(qBlue(a), qBlue(b)));
}

// Dark where that can be read on all of the shading, otherwise light.
QRgb text_on(const Shading& shading) {
  const auto worst = [&](QRgb text) {
    return std::min(contrast(QColor::fromRgb(text), QColor::fromRgb(shading.upper)),
                    contrast(QColor::fromRgb(text), QColor::fromRgb(shading.lower)));
  };
  constexpr QRgb black = 0xff000000;
  constexpr QRgb white = 0xffffffff;
  return worst(black) >= worst(white) ? black : white;
}

StripColors dimmed(StripColors colors, QRgb ground) {
  constexpr double part = 0.4;
  const auto dim = [&](QRgb color) { return mixed(color, ground, part); };
  colors.surface.shading = {dim(colors.surface.shading.upper), dim(colors.surface.shading.lower)};
  colors.surface.text = text_on(colors.surface.shading);
  colors.rim = dim(colors.rim);
  colors.edge = dim(colors.edge);
  colors.mark = dim(colors.mark);
  colors.frame_color = dim(colors.frame_color);
  return colors;
}

}  // namespace

// In the order of RowState.
constinit const StripColorTable metal_strips = {
    slot({0xff1b1f24, 0xff1f2429}, 0xff8f98a2, 0xff14171a, 0xff3f464e, 0xff2b3036),
    slot({0xff2d3742, 0xff313c48}, 0xff9cc6f2, 0xff1a1e23, 0xff4f5a66, 0xff353c45),
    framed(paper({0xffbcc4cd, 0xffaeb7c0}, 0xff7f8892, 0xff959fa9), StripFrame::Broken, 0xff3b444e),
    framed(metal_handset, StripFrame::Thin, blue_frame),
    framed(metal_handset, StripFrame::Broad, blue_frame),
    metal_held,
    locked(metal_held),
    paper({0xfff0f3f6, 0xffd6dce2}, 0xff9aa3ad, 0xffb3bcc5),
    framed(paper({0xfff7dc8e, 0xffe8c05e}, 0xff8a5a00, 0xffc99f3c), StripFrame::Broad,
           signal_amber),
    next,
    on_air,
    locked_on_air,
};

constinit const StripColorTable grey_strips = {
    slot({0xffced2d8, 0xffcbd0d6}, 0xff47505a, 0xffc2c8ce, 0xffb3bac2, 0xffbdc3ca),
    slot({0xffc1c9d2, 0xffbac3cd}, 0xff123e70, 0xffa3adb8, 0xff8f99a4, 0xff9fa9b4),
    framed(paper({0xffc6cdd5, 0xffbcc4cd}, 0xff8f98a2, 0xffa3acb6), StripFrame::Broken, 0xff3b444e),
    framed(grey_handset, StripFrame::Thin, blue_frame),
    framed(grey_handset, StripFrame::Broad, blue_frame),
    grey_held,
    locked(grey_held),
    paper({0xffffffff, 0xfff4f7fa}, 0xff8f99a4, 0xffbcc5ce),
    framed(paper({0xffffefbf, 0xffffdc7d}, 0xff8a5a00, 0xffd9b24c), StripFrame::Broad, 0xffd98a00),
    next,
    on_air,
    locked_on_air,
};

StripColorTable dimmed(const StripColorTable& strips, QRgb ground) {
  StripColorTable dim = strips;
  // An empty slot is no nearer to the ground than it was.
  for (int state = static_cast<int>(RowState::Taken); state < row_state_count; ++state) {
    StripColors& colors = dim[static_cast<std::size_t>(state)];
    colors = dimmed(colors, ground);
  }
  return dim;
}

}  // namespace lineweir
