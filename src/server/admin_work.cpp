#include "server/admin_work.h"

#include "server/admin_callers.h"
#include "server/admin_names.h"
#include "server/admin_records.h"
#include "server/admin_rights.h"
#include "server/admin_studio.h"
#include "server/admin_users.h"

namespace lineweir::server {
namespace {

using admin::Field;

constexpr int usual_notice = 10;
constexpr std::size_t longest_notice = 200;
constexpr const char* usual_reason = "The server is being ended by an administrator.";

void shut_down(const AdminServices& services, const admin::Request& request,
               const TellReply& tell) {
  const std::string text = request.text_or(Field::Text, usual_reason);
  if (auto why = why_not_shown(text, "The text", longest_notice); !why.empty()) {
    return tell(refused(std::move(why)));
  }
  const int seconds = static_cast<int>(request.number_or(Field::Seconds, usual_notice));
  const auto ends_in = services.ends_in();
  if (ends_in && *ends_in <= std::chrono::seconds(seconds)) {
    const auto left = std::chrono::ceil<std::chrono::seconds>(*ends_in).count();
    return tell(refused("The server ends in " + std::to_string(left) +
                        " seconds already: a told end can only be brought forward."));
  }
  services.context.audit.note(administrator, "shutdown", text);
  tell({.last = [&services, seconds, text] { services.shut_down(seconds, text); }});
}

}  // namespace

void carry_out(const AdminServices& services, const admin::Request& request,
               const TellReply& tell) {
  using admin::Command;
  switch (request.command) {
    case Command::UserAdd:
      return add_user(services, request, tell);
    case Command::UserList:
      return list_users(services, tell);
    case Command::UserPassword:
      return change_password(services, request, tell);
    case Command::UserLock:
      return lock_user(services, request, tell);
    case Command::UserUnlock:
      return unlock_user(services, request, tell);
    case Command::UserRemove:
      return remove_user(services, request, tell);
    case Command::UserRight:
      return show_or_change_rights(services, request, tell);
    case Command::ProfileShow:
      return show_profile(services, request, tell);
    case Command::ProfileReset:
      return reset_profile(services, request, tell);
    case Command::Seats:
      return list_seats(services, tell);
    case Command::Lines:
      return list_lines(services, request, tell);
    case Command::Call:
      return make_call(services, request, tell);
    case Command::HangUp:
      return end_call(services, request, tell);
    case Command::Event:
      return set_event(services, request, tell);
    case Command::Calls:
      return list_calls(services, request, tell);
    case Command::CallerList:
      return list_callers(services, tell);
    case Command::CallerShow:
      return show_caller(services, request, tell);
    case Command::CallerFlag:
      return flag_caller(services, request, tell);
    case Command::CallerClear:
      return clear_caller(services, request, tell);
    case Command::AuditList:
      return list_audit(services, tell);
    case Command::AuditVerify:
      return verify_audit(services, tell);
    case Command::Message:
      return tell_everybody(services, request, tell);
    case Command::Shutdown:
      return shut_down(services, request, tell);
    case Command::Backup:
      return back_up(services, request, tell);
    case Command::Restore:
      return restore_backup(services, request, tell);
    case Command::More:
      break;
  }
  tell(refused("There is nothing more."));
}

}  // namespace lineweir::server
