#include "desktop/clock_widget.h"

#include <QPainter>
#include <algorithm>
#include <array>
#include <string_view>

#include "desktop/form_canvas.h"
#include "desktop/painter_dials.h"
#include "desktop/painter_faces.h"
#include "desktop/placement.h"
#include "desktop/twips.h"
#include "elements/line.h"
#include "elements/picture.h"

namespace lineweir {
namespace {

struct ClockRow {
  std::string_view picture;
  std::string_view dial;
  DialColors Theme::*colors;
  // From the lowest hand to the uppermost.
  std::array<std::string_view, 3> hands;
};
constexpr std::array clocks = {
    ClockRow{
        "picRealTimeClock", "imgTimeClock", &Theme::dial, {"HourHand", "MinuteHand", "SecondHand"}},
    ClockRow{"picShowTimeClock", "imgShowClock", &Theme::dial, {"CounterHand", "", ""}},
    ClockRow{"RedClock", "RedClockImage", &Theme::red_dial, {"RedHand", "", ""}},
};

struct HandRow {
  std::string_view hand;
  HandShape shape;
  // Has the colour that runs through the dial; the others have the colour of the dial's ticks.
  bool second_hand;
  // The line's width of 1 or 2 tells a running minute from a longer time.
  bool width_tells;
};
constexpr std::array hands = {
    HandRow{"HourHand", {0.115, 0.1, true, 0.0}, false, false},
    HandRow{"MinuteHand", {0.08, 0.1, true, 0.085}, false, false},
    HandRow{"SecondHand", {0.028, 0.2, false, 0.055}, true, false},
    HandRow{"CounterHand", {0.09, 0.14, true, 0.085}, false, true},
    HandRow{"RedHand", {0.09, 0.14, true, 0.085}, false, true},
};

const ClockRow* clock_row(const Control& picture) {
  const auto* row = std::ranges::find(clocks, picture.name(), &ClockRow::picture);
  return row == clocks.end() ? nullptr : row;
}

}  // namespace

ClockWidget::ClockWidget(FormCanvas& canvas, Picture& picture, const ElementLook& look)
    : ElementWidget(canvas, picture, look) {}

void ClockWidget::paint(QPainter& painter, const QRect& face) {
  const Brushwork work = brushwork();
  if (element_look().look == Look::Clock) paint_plate(painter, face, work);
  const ClockRow* row = clock_row(*control());
  if (row == nullptr) return;
  const auto* dial = static_cast<const Picture*>(canvas().control_named(row->dial));
  if (dial == nullptr) return;
  const QRect dial_place = pixel_rect(place_on_form(*dial), canvas().device_scale())
                               .translated(-device_place().topLeft());
  if (const auto paint = painter_of(dial->picture)) paint(painter, dial_place, work);
  for (const std::string_view name : row->hands) {
    if (!name.empty()) paint_hand_line(painter, dial_place, *dial, name, work.theme.*row->colors);
  }
  paint_pin(painter, dial_place, (work.theme.*row->colors).surface.shading.lower);
}

void ClockWidget::paint_hand_line(QPainter& painter, const QRect& dial_place, const Control& dial,
                                  std::string_view name, const DialColors& colors) const {
  const auto* row = std::ranges::find(hands, name, &HandRow::hand);
  const Line* line = canvas().line_named(name);
  if (row == hands.end() || line == nullptr || !line->visible) return;
  if (dial.width <= 0 || dial.height <= 0) return;
  const QPointF tip(2.0 * (line->x2 - line->x1) / dial.width,
                    2.0 * (line->y2 - line->y1) / dial.height);
  HandShape shape = row->shape;
  if (row->width_tells && line->border_width < 2) shape.width *= 0.5;
  paint_hand(painter, dial_place, tip, shape,
             row->second_hand ? canvas().theme().second_hand : colors.surface.text);
}

}  // namespace lineweir
