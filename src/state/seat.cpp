#include "state/seat.h"

#include "lines/equipment_kinds.h"
#include "state/console_state.h"

namespace lineweir {
namespace {

bool phone_chosen(const ControlArray<MenuItem>& phones) {
  for (int phone = 0; phone < phones.upper_bound(); ++phone) {
    if (phones.loaded(phone) && phones(phone).checked) return true;
  }
  return false;
}

}  // namespace

Seat seat_of(const ConsoleState& state) {
  const MainForm& form = state.Lineweir;
  const int kind = state.lines.ThePhoneFlag;
  const bool second = form.MitelPhone2.checked;
  // Equipment of kind 4 knows the seat by its phone; a handset position still chosen only says how
  // its words begin.
  const bool by_phone = server_decides(kind) && !second && phone_chosen(form.NextGenPhone);
  return {form.StudioMode.checked, kind, form.MitelPhone1.checked || by_phone, second};
}

}  // namespace lineweir
