#pragma once

#include <QRect>

#include "desktop/theme.h"

class QPainter;

namespace lineweir {

// The parts of dialogs. Places are logical pixels of the painter, as Qt's styles have them; edges
// are drawn on whole pixels of the device, so that they are sharp at any scale.

struct ControlState {
  bool enabled = true;
  bool hovered = false;
  bool pressed = false;
  bool focused = false;
};

// A push button. The default one, which Enter presses, has a coloured edge.
void paint_button(QPainter& painter, const QRect& place, const ControlState& state, bool is_default,
                  const Theme& theme);

// The ground and edge of what is typed in or chosen from.
void paint_field(QPainter& painter, const QRect& place, const ControlState& state,
                 const QColor& ground, const Theme& theme);
// The edge alone, around what draws its own ground.
void paint_field_edge(QPainter& painter, const QRect& place, const ControlState& state,
                      const Theme& theme);

enum class CheckMark { None, Check, Some };
void paint_check_box(QPainter& painter, const QRect& place, const ControlState& state,
                     CheckMark mark, const Theme& theme);
void paint_radio_button(QPainter& painter, const QRect& place, const ControlState& state,
                        bool chosen, const Theme& theme);

// The line around a group of controls.
void paint_group_edge(QPainter& painter, const QRect& place, const Theme& theme);

// The ring around a control that has no edge of its own.
void paint_control_focus(QPainter& painter, const QRect& place, const Theme& theme);

// An arrow that points down, in the middle of the place.
void paint_down_arrow(QPainter& painter, const QRect& place, const QColor& color);

// The movable part of a scroll bar.
void paint_scroll_slider(QPainter& painter, const QRect& place, const ControlState& state,
                         const Theme& theme);

}  // namespace lineweir
