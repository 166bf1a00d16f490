#include "driver/callerdata_functions.h"

#include "state/guard.h"

namespace lineweir::driver {

void append_callerdata_functions(std::vector<Function>& functions) {
  functions.insert(
      functions.end(),
      {function("CreateDatabase",
                [](Console& c, const std::string& file) { c.call_log_file.CreateDatabase(file); }),
       function("FlashMessA_MessCreateDatabase",
                [](Console& c, const std::string& file) {
                  c.hot_list.FlashMessA_MessCreateDatabase(file);
                }),
       function("FlashMessA_RedefineFlashMess",
                [](Console& c) { c.flash_message.FlashMessA_RedefineFlashMess(); }),
       function("CBClientClass_ReturnMessageData",
                [](Console& c, const std::string& text, int group, int back, int fore) {
                  guard(c.trace, "CBClientClass_ReturnMessageData",
                        [&] { c.message_display.ReturnMessageData(text, group, back, fore); });
                }),
       function("CBClientClass_ReturnCallerData",
                [](Console& c, const std::string& data, int line, int /*group*/) {
                  guard(c.trace, "CBClientClass_ReturnCallerData",
                        [&] { c.received_data.ReturnCallerData(data, line); });
                })});
}

}  // namespace lineweir::driver
