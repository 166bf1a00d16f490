#include "desktop/theme.h"

#include <QPalette>
#include <algorithm>
#include <cmath>

namespace lineweir {
namespace {

constexpr DialColors red_dial_colors = {
    {{0xffc62a28, 0xff9c1a1b}, 0xffffffff}, 0xffff8a80, 0xffffd6d2};

double linear(double channel) {
  return channel <= 0.03928 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
}

double luminance(const QColor& color) {
  return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) +
         0.0722 * linear(color.blueF());
}

}  // namespace

const Theme metal_theme = {
    .face = {{0xff33383f, 0xff24282d}, 0xffe6eaee},
    .panel = {{0xff2b2f35, 0xff1a1c20}, 0xffe6eaee},
    .heading = 0xffb4bdc8,
    .groove_dark = 0xff0c0d0f,
    .groove_light = 0xff4a515a,
    .brushing = 7,
    .key_up = {{{0xff545d68, 0xff353c45}, 0xffffffff}, 0xff101215, 0xff7b8693},
    .key_hover = {{{0xff66707d, 0xff424a55}, 0xffffffff}, 0xff101215, 0xff98a3b0},
    .key_down = {{{0xff1b1f24, 0xff2b3138}, 0xffffffff}, 0xff08090a, 0xff0b0d0f},
    .key_disabled = {{{0xff2b2f35, 0xff2b2f35}, 0xff99a1ab}, 0xff3d434b, 0xff2b2f35},
    .focus_ring = 0xffffd54a,
    .next_light = 0xff58c96a,
    .latch_light = 0xffd8e2ee,
    .drop_sign = 0xffff7a70,
    .hold_sign = signal_green,
    .ringing_sign = signal_amber,
    .handset_sign = signal_blue,
    .ghost = 0xffa98a3f,
    .strips = &metal_strips,
    .warning = signal_yellow,
    .clock = {{0xff0d0f12, 0xff14171b}, 0xfff4f6f8},
    .clock_edge = 0xff3a4048,
    .clock_small_text = 0xffb4bdc8,
    .warning_digits = 0xffff6b60,
    .dial = {{{0xff23282e, 0xff171a1e}, 0xffffffff}, 0xff59626d, 0xffa8b1bb},
    .red_dial = red_dial_colors,
    .second_hand = signal_red,
    .message = {{0xfffffdf2, 0xfffffdf2}, 0xff12161b},
    .no_message = {{0xff121417, 0xff121417}, 0xffb4bdc8},
    .message_edge = 0xff0c0d0f,
    .note = {{0xff121519, 0xff121519}, 0xfff0f3f6},
    .window = {{0xff25292e, 0xff25292e}, 0xffe6eaee},
    .control = 0xff17191c,
    .control_text = 0xfff2f4f7,
    .control_edge = 0xff6a737e,
    .group_edge = 0xff3f464f,
    .scroll_slider = 0xff6a737e,
    .highlight = 0xff2f6fb0,
    .highlighted_text = 0xffffffff,
    .disabled_text = 0xff99a1ab,
    .icon_outline = 0xff15181b,
};

const Theme grey_theme = {
    .face = {{0xffdfe2e6, 0xffcdd1d7}, 0xff1a1e23},
    .panel = {{0xffd4d8dd, 0xffbcc2c9}, 0xff1a1e23},
    .heading = 0xff3b444e,
    .groove_dark = 0xff98a0a9,
    .groove_light = 0xfff6f8fa,
    .brushing = 5,
    .key_up = {{{0xfffbfcfd, 0xffd6dbe0}, 0xff14181d}, 0xff868f99, 0xffffffff},
    .key_hover = {{{0xffffffff, 0xffe9edf1}, 0xff14181d}, 0xff5f6973, 0xffffffff},
    .key_down = {{{0xffb3bac2, 0xffc8ced5}, 0xff14181d}, 0xff6a737d, 0xff98a0a9},
    .key_disabled = {{{0xffd0d5da, 0xffd0d5da}, 0xff4d5660}, 0xffabb2ba, 0xffd0d5da},
    .focus_ring = 0xff92400e,
    .next_light = 0xff2f9e46,
    .latch_light = 0xff3b444e,
    .drop_sign = 0xffc9231e,
    .hold_sign = 0xff1f8a3c,
    .ringing_sign = 0xffb86a00,
    .handset_sign = 0xff1d66b8,
    .ghost = 0xff8a6a2c,
    .strips = &grey_strips,
    .warning = 0xff7c2d12,
    .clock = {{0xfff5f7f9, 0xffe8ebef}, 0xff14181d},
    .clock_edge = 0xff98a0a9,
    .clock_small_text = 0xff3b444e,
    .warning_digits = 0xffb3201c,
    .dial = {{{0xffffffff, 0xffeef1f4}, 0xff14181d}, 0xff98a0a9, 0xff5b646e},
    .red_dial = red_dial_colors,
    .second_hand = 0xffc9231e,
    .message = {{0xfffffdf2, 0xfffffdf2}, 0xff12161b},
    .no_message = {{0xffaab2bb, 0xffaab2bb}, 0xff14181d},
    .message_edge = 0xff868f99,
    .note = {{0xffe6eaee, 0xffe6eaee}, 0xff12161b},
    .window = {{0xffe9ecef, 0xffe9ecef}, 0xff1a1e23},
    .control = 0xffffffff,
    .control_text = 0xff12161b,
    .control_edge = 0xff7d8690,
    .group_edge = 0xffb9c0c8,
    .scroll_slider = 0xff868f99,
    .highlight = 0xff2667ad,
    .highlighted_text = 0xffffffff,
    .disabled_text = 0xff4d5660,
    .icon_outline = 0xff22272d,
};

const Theme& without_link(const Theme& theme) {
  const auto with_strips = [](Theme copy, const StripColorTable& strips) {
    copy.strips = &strips;
    return copy;
  };
  static const StripColorTable metal_dim = dimmed(metal_strips, metal_theme.face.shading.lower);
  static const StripColorTable grey_dim = dimmed(grey_strips, grey_theme.face.shading.lower);
  static const Theme metal = with_strips(metal_theme, metal_dim);
  static const Theme grey = with_strips(grey_theme, grey_dim);
  return &theme == &grey_theme ? grey : metal;
}

QPalette palette_of(const Theme& theme) {
  const QColor window = QColor::fromRgb(theme.window.shading.upper);
  const QColor text = QColor::fromRgb(theme.window.text);
  const QColor button = QColor::fromRgb(theme.key_up.surface.shading.lower);
  QPalette palette(button, window);
  palette.setColor(QPalette::Window, window);
  palette.setColor(QPalette::WindowText, text);
  palette.setColor(QPalette::Base, QColor::fromRgb(theme.control));
  palette.setColor(QPalette::AlternateBase, window);
  palette.setColor(QPalette::Text, QColor::fromRgb(theme.control_text));
  palette.setColor(QPalette::PlaceholderText, QColor::fromRgb(theme.disabled_text));
  palette.setColor(QPalette::Button, button);
  palette.setColor(QPalette::ButtonText, QColor::fromRgb(theme.key_up.surface.text));
  palette.setColor(QPalette::ToolTipBase, QColor::fromRgb(theme.message.shading.upper));
  palette.setColor(QPalette::ToolTipText, QColor::fromRgb(theme.message.text));
  palette.setColor(QPalette::Highlight, QColor::fromRgb(theme.highlight));
  palette.setColor(QPalette::HighlightedText, QColor::fromRgb(theme.highlighted_text));
  for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
    palette.setColor(QPalette::Disabled, role, QColor::fromRgb(theme.disabled_text));
  }
  return palette;
}

double contrast(const QColor& a, const QColor& b) {
  const auto [dark, light] = std::minmax({luminance(a), luminance(b)});
  return (light + 0.05) / (dark + 0.05);
}

QColor readable_on(const QColor& ground, const QColor& wanted) {
  if (contrast(ground, wanted) >= readable_contrast) return wanted;
  const QColor black(Qt::black);
  const QColor white(Qt::white);
  return contrast(ground, black) >= contrast(ground, white) ? black : white;
}

const StripColors& Theme::strip(RowColor color) const {
  switch (color) {
    case RowColor::Green:
      return strip(RowState::Next);
    case RowColor::Red:
      return strip(RowState::OnAir);
    default:
      return strip(RowState::Ready);
  }
}

}  // namespace lineweir
