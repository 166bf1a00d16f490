#include "driver/serverlink_functions.h"

#include "serverlink/credentials.h"
#include "serverlink/profile_fields.h"
#include "serverlink/session_start.h"
#include "wire/password_scramble.h"

namespace lineweir::driver {

void append_serverlink_functions(std::vector<Function>& functions) {
  functions.insert(
      functions.end(),
      {function("TextWrit_PassEncode",
                [](Console& c, const std::string& text) { return TextWrit_PassEncode(c, text); }),
       function("TextWrit_PassDecode",
                [](Console&, const std::string& text) {
                  return pass_decode(text).value_or(std::string());
                }),
       function("TextWrit_PasswordA",
                [](Console& c, bool skip) {
                  return static_cast<int>(c.login_exchange.TextWrit_PasswordA(skip));
                }),
       function("TextWrit_PasswordB",
                [](Console& c) { return static_cast<int>(c.login_exchange.TextWrit_PasswordB()); }),
       function("TextWrit_SockConnecter",
                [](Console& c, int restart, const Json&, const Json&) {
                  TextWrit_SockConnecter(c, c.server, static_cast<SessionReason>(restart));
                }),
       function("TextWrit_SockConnecter",
                [](Console& c, int restart) {
                  TextWrit_SockConnecter(c, c.server, static_cast<SessionReason>(restart));
                }),
       function("TextWrit_ExtractMessageGroup",
                [](Console& c) { return group_of_profile(c.login.ProfileBlock); }),
       // The handler of StudioLinNumMenu, whose name differs from its element's.
       function("StudioLineNumMenu_Click",
                [](Console& c) { c.Lineweir.StudioLinNumMenu.on_click(); }),
       function("Lineweir_StudioLineNumMenu_Click",
                [](Console& c) { c.Lineweir.StudioLinNumMenu.on_click(); }),
       function("SetRights", [](Console& c) { c.access_rights.SetRights(); }),
       function("RequestAccessRights",
                [](Console& c, int group) { c.access_rights.RequestAccessRights(group); }),
       function("RequestFirstUnblocked",
                [](Console& c) { c.access_rights.RequestFirstUnblocked(); }),
       function("DisplayOptionForm_GetStudioStat",
                [](Console& c, bool from_server, const std::string& text) {
                  if (from_server) return c.studio_shape.GetStudioStat(text);
                  c.remote_studio.GetStudioStat();
                }),
       function("DisplayOptionForm_GetTheTimes",
                [](Console& c, bool from_server, const std::string& text) {
                  if (from_server) return c.studio_shape.GetTheTimes(text);
                  c.remote_studio.GetTheTimes();
                }),
       function("RefreshStudioNames", [](Console& c) { c.remote_studio.RefreshStudioNames(); }),
       function("PrepareUserData",
                [](Console& c, const std::string& name) {
                  return c.user_profile.PrepareUserData(name);
                }),
       function("SendUserProfile",
                [](Console& c, const std::string& name) { c.user_profile.SendUserProfile(name); }),
       function(
           "SetUserProfile",
           [](Console& c, const std::string& block) { c.received_profile.SetUserProfile(block); }),
       function("NetworkDisconnect", [](Console& c) { c.remote_link.NetworkDisconnect(); })});
}

}  // namespace lineweir::driver
