#include "server/admin_rights.h"

#include "adminlink/admin_columns.h"
#include "server/accounts.h"
#include "server/admin_names.h"
#include "server/rights_templates.h"
#include "wire/rights_layout.h"

namespace lineweir::server {
namespace {

using admin::Field;
using nlohmann::json;

constexpr std::string_view everything = "-all";

struct Sentence {
  std::string text;
};

std::string changed(const std::string& rights, const std::string& change) {
  if (change == everything) return std::string(no_rights);
  const bool allowed = change.starts_with('+');
  if (!allowed && !change.starts_with('-')) {
    throw Sentence{in_quotes(change) + " is no change: a right stands behind a + or -."};
  }
  const std::string name = change.substr(1);
  const auto work = allowed ? find_rights_template(name) : std::nullopt;
  if (work) return rights_of(*work);
  const auto right = find_right(name);
  if (!right) throw Sentence{"There is no right " + in_quotes(name) + "."};
  return with_right(rights == no_rights ? std::string() : rights, *right, allowed);
}

json rights_object(const std::string& rights) {
  json object = json::object();
  for (const RightPlace& place : rights_layout) {
    object[std::string(place.name)] = rights != no_rights && allows(rights, place.right);
  }
  return object;
}

}  // namespace

ChangedRights changed_rights(std::string rights, const std::vector<std::string>& changes) {
  try {
    for (const std::string& change : changes) rights = changed(rights, change);
  } catch (const Sentence& sentence) {
    return {.refusal = sentence.text};
  }
  const std::string_view why = why_rights_cannot_travel(rights);
  if (!why.empty()) return {.refusal = "That can't be set: " + std::string(why) + "."};
  return {.rights = std::move(rights)};
}

void show_or_change_rights(const AdminServices& services, const admin::Request& request,
                           const TellReply& tell) {
  const std::string& name = request.text(Field::Name);
  const int group = static_cast<int>(request.number(Field::Group));
  const platform::Account* known = services.accounts.find(name);
  if (known == nullptr) return tell(refused("There is no user " + in_quotes(name) + "."));
  if (services.seats.find_group(group) == nullptr) return tell(no_such_group(group));
  const auto changes = request.texts(Field::Changes);
  ChangedRights now = changed_rights(services.accounts.rights(name, group), changes);
  if (!now.refusal.empty()) return tell(refused(std::move(now.refusal)));

  const auto show = [tell, name, group, rights = now.rights] {
    tell({.answer = {{"name", name},
                     {"group", group},
                     {"open", rights != no_rights},
                     {std::string(admin::key::rights), rights_object(rights)}}});
  };
  if (changes.empty()) return show();
  const bool is_named = now.rights != no_rights || known->rights.contains(every_group);
  services.accounts.set_rights(name, group, is_named ? now.rights : std::string());
  std::string words;
  for (const std::string& change : changes) words += ' ' + change;
  services.context.audit.note(administrator, "rights changed",
                              name + ", group " + std::to_string(group) + ":" + words);
  services.tell_new_rights(name);
  when_kept(services, tell, show);
}

}  // namespace lineweir::server
