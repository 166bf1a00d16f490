#include "callcontrol/phone_choice.h"

#include "link/links.h"
#include "state/console_state.h"
#include "state/window_caption.h"
#include "state/wire.h"

namespace lineweir {
namespace {

constexpr auto phone_handler = "Lineweir_NextGenPhone_Click";

}  // namespace

PhoneChoice::PhoneChoice(ConsoleState& state, const Links& links) : state_(state), links_(links) {
  MainForm& form = state.Lineweir;
  wire(form.MitelPhone1.on_click, state_.trace, "Lineweir_MitelPhone1_Click",
       [this] { choose_handset(1); });
  wire(form.MitelPhone2.on_click, state_.trace, "Lineweir_MitelPhone2_Click",
       [this] { choose_handset(2); });
  form.NextGenPhone.wire_each([this](MenuItem& item) {
    wire(item.on_click, state_.trace, phone_handler,
         [this, index = item.index()] { NextGenPhone_Click(index); });
  });
}

void PhoneChoice::choose_handset(int number) {
  state_.Lineweir.MitelPhone1.checked = number == 1;
  state_.Lineweir.MitelPhone2.checked = number == 2;
}

void PhoneChoice::NextGenPhone_Click(int Index) {
  MainForm& form = state_.Lineweir;
  for (int phone = 0; phone < form.NextGenPhone.upper_bound(); ++phone) {
    if (form.NextGenPhone.loaded(phone)) form.NextGenPhone(phone).checked = phone == Index;
  }
  renew_window_caption(state_);
  state_.program.ConsoleNumber = Index;
  links_.in_use().phone(phone_handler, Index);
}

}  // namespace lineweir
