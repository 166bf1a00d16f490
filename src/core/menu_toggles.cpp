#include "core/menu_toggles.h"

#include <array>

#include "state/console_state.h"
#include "state/wire.h"

namespace lineweir {
namespace {

struct MenuToggle {
  MenuItem MainForm::*item;
  // Is on the screen while the item is checked.
  Picture MainForm::*shows = nullptr;
  // While this one is checked the item stays as it is.
  MenuItem MainForm::*held_by = nullptr;
};

constexpr std::array menu_toggles = {
    MenuToggle{&MainForm::ServerShowData},
    MenuToggle{&MainForm::GreyScreenOption},
    MenuToggle{&MainForm::TextGrowToggle},
    MenuToggle{&MainForm::UrgentSound},
    MenuToggle{&MainForm::SyncTimeMenu},
    MenuToggle{&MainForm::EventClockMenu, &MainForm::picShowTimeClock},
    MenuToggle{&MainForm::TimeClockMenuItem, &MainForm::picRealTimeClock, &MainForm::DigiClock},
    MenuToggle{&MainForm::AutoDataEntry},
    MenuToggle{&MainForm::Line20Mode},
    MenuToggle{&MainForm::NextBarDisable},
};

void turn_over(MainForm& form, const MenuToggle& toggle) {
  if (toggle.held_by != nullptr && (form.*toggle.held_by).checked) return;
  MenuItem& item = form.*toggle.item;
  item.checked = !item.checked;
  if (toggle.shows != nullptr) (form.*toggle.shows).visible = item.checked.get();
}

}  // namespace

void wire_menu_toggles(ConsoleState& state) {
  MainForm& form = state.Lineweir;
  for (const MenuToggle& toggle : menu_toggles) {
    MenuItem& item = form.*toggle.item;
    wire(item.on_click, state.trace, "Lineweir_" + item.name() + "_Click",
         [&form, &toggle] { turn_over(form, toggle); });
  }
}

}  // namespace lineweir
