#include "desktop/tab_order.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <vector>

#include "desktop/element_widget.h"
#include "desktop/form_canvas.h"

namespace lineweir {
namespace {

constexpr std::array panel_order = {
    std::string_view("Drop1"),      std::string_view("Drop2"),
    std::string_view("Hold1"),      std::string_view("Hold2"),
    std::string_view("NextButton"), std::string_view("NextToConfButton"),
    std::string_view("Dial"),       std::string_view("OptionsButton"),
    std::string_view("Text1"),      std::string_view("Text2"),
};

// Rows before the panel, main buttons before those of the conference.
int rank(const Control& control) {
  if (control.name() == "OnHybrid1") return 2 * control.index();
  if (control.name() == "OnHybrid2") return 2 * control.index() + 1;
  constexpr int behind_all_rows = 1000;
  const auto place = std::ranges::find(panel_order, control.name());
  return behind_all_rows + static_cast<int>(place - panel_order.begin());
}

bool takes_tab(const ElementWidget& widget) {
  const Look look = widget.element_look().look;
  const bool box = look == Look::Message || look == Look::Entry;
  return widget.isVisible() && widget.isEnabled() && widget.control() != nullptr &&
         (box || (widget.focusPolicy() & Qt::TabFocus) != 0);
}

}  // namespace

ElementWidget* tab_stop_beside(const FormCanvas& canvas, const Control* from, bool forward) {
  std::vector<ElementWidget*> stops;
  for (ElementWidget* widget : canvas.element_widgets()) {
    if (takes_tab(*widget)) stops.push_back(widget);
  }
  if (stops.empty()) return nullptr;
  std::ranges::sort(stops, {},
                    [](const ElementWidget* widget) { return rank(*widget->control()); });
  if (from == nullptr) return forward ? stops.front() : stops.back();
  const auto rank_of = [](const ElementWidget* widget) { return rank(*widget->control()); };
  // Where it starts from may be no stop any more.
  if (forward) {
    const auto behind = std::ranges::upper_bound(stops, rank(*from), {}, rank_of);
    return behind == stops.end() ? stops.front() : *behind;
  }
  const auto place = std::ranges::lower_bound(stops, rank(*from), {}, rank_of);
  return place == stops.begin() ? stops.back() : *(place - 1);
}

}  // namespace lineweir
