#include "driver/callcontrol_functions.h"

namespace lineweir::driver {

void append_callcontrol_functions(std::vector<Function>& functions) {
  functions.insert(
      functions.end(),
      {function("FindNext", [](Console& c) { c.next_caller.FindNext(); }),
       function("NextToConf_Click", [](Console& c) { c.Lineweir.NextToConfButton.on_click(); }),
       function("CheckPassiveState", [](Console& c) { c.modes.CheckPassiveState(); }),
       function("CBClientClass_ReturnCommand",
                [](Console& c, const std::string& code) {
                  c.services.remote_objects.on_callback("ReturnCommand", {code});
                }),
       function("CBClientClass_ReturnNextCall", [](Console& c, int next_call, int group) {
         c.next_caller.ReturnNextCall(next_call, group);
       })});
}

}  // namespace lineweir::driver
