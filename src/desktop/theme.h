#pragma once

#include <QColor>

#include "desktop/strip_colors.h"
#include "desktop/surface.h"
#include "lines/status_letters.h"

class QPalette;

namespace lineweir {

// A key's surface in one state, with the lines around it.
struct KeyColors {
  Surface surface;
  QRgb edge;
  // The line inside the upper edge: light on a key that is up, dark on one that is down.
  QRgb rim;
};

struct DialColors {
  Surface surface;
  QRgb ring;
  QRgb minute_tick;
};

// The colours of one face of the screen.
struct Theme {
  Surface face;
  Surface panel;
  QRgb heading;
  // The groove between the rows and the panel.
  QRgb groove_dark;
  QRgb groove_light;
  // How much the brushing of the metal lightens and darkens it, 0 to 255.
  int brushing;

  KeyColors key_up;
  // Up, with the mouse over it.
  KeyColors key_hover;
  KeyColors key_down;
  KeyColors key_disabled;
  QRgb focus_ring;
  // Lines of light on keys: there is a next caller; what the key switches is on.
  QRgb next_light;
  QRgb latch_light;
  QRgb drop_sign;
  QRgb hold_sign;
  // Signs of lines on keys; the ghost is what is left of one between two blinks.
  QRgb ringing_sign;
  QRgb handset_sign;
  QRgb ghost;

  const StripColorTable* strips;
  const StripColors& strip(RowState state) const {
    return (*strips)[static_cast<std::size_t>(state)];
  }
  // The same by the strip's own colour alone.
  const StripColors& strip(RowColor color) const;

  // The word beside a lamp that is out, the ring that is left of it, and calls that wait for a log.
  QRgb warning;

  // The panel behind a clock, and the digits on it.
  Surface clock;
  QRgb clock_edge;
  QRgb clock_small_text;
  QRgb warning_digits;
  DialColors dial;
  DialColors red_dial;
  QRgb second_hand;

  // The message display, and the hollow in its place while there is no message.
  Surface message;
  Surface no_message;
  QRgb message_edge;

  // What is told of a caller below the panel.
  Surface note;

  // Menus and dialogs.
  Surface window;
  QRgb control;
  QRgb control_text;
  QRgb control_edge;
  QRgb group_edge;
  QRgb scroll_slider;
  QRgb highlight;
  QRgb highlighted_text;
  QRgb disabled_text;

  QRgb icon_outline;
};

// The signal colours are the same on both faces; the shapes tell them apart as well.
inline constexpr QRgb signal_red = 0xffff453a;
inline constexpr QRgb signal_yellow = 0xffffc92b;
inline constexpr QRgb signal_green = 0xff34d15f;
inline constexpr QRgb signal_blue = 0xff4fa9ff;
inline constexpr QRgb signal_amber = 0xffffb000;

extern const Theme metal_theme;
extern const Theme grey_theme;

// The same face while there is no link: the strips of the rows are dimmed, since nobody knows
// whether what they show still holds. It can be read as well as ever.
const Theme& without_link(const Theme& theme);

// For menus and dialogs.
QPalette palette_of(const Theme& theme);

// The contrast of two colours, 1 to 21; text needs 4.5 to be read.
inline constexpr double readable_contrast = 4.5;
double contrast(const QColor& a, const QColor& b);

// The wanted colour where it can be read on the ground, otherwise black or white.
QColor readable_on(const QColor& ground, const QColor& wanted);

}  // namespace lineweir
