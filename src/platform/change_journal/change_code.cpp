#include "platform/change_journal/change_code.h"

#include <nlohmann/json.hpp>
#include <utility>

namespace lineweir::platform {
namespace {

using nlohmann::json;

std::int64_t number_of(Moment moment) { return moment.count(); }

json rights_of(const Account& account) {
  json rights = json::array();
  for (const auto& [group, granted] : account.rights) rights.push_back({group, granted});
  return rights;
}

json steps_of(const CallRecord& call) {
  json steps = json::array();
  for (const CallStep& step : call.steps) {
    steps.push_back({number_of(step.at), step.user, step.action});
  }
  return steps;
}

struct Encoder {
  json operator()(const Account& account) const {
    return {"account",       account.name,   account.password_hash,       rights_of(account),
            account.profile, account.locked, number_of(account.last_seen)};
  }
  json operator()(const AccountRemoval& removal) const { return {"removal", removal.name}; }
  json operator()(const AccountPassword& password) const {
    return {"password", password.name, password.password_hash};
  }
  json operator()(const AccountLock& lock) const { return {"lock", lock.name, lock.locked}; }
  json operator()(const AccountRights& rights) const {
    return {"rights", rights.name, rights.group, rights.rights};
  }
  json operator()(const AccountSeen& seen) const { return {"seen", seen.name, number_of(seen.at)}; }
  json operator()(const AccountProfile& profile) const {
    return {"profile", profile.name, profile.profile};
  }
  json operator()(const CallRecord& call) const {
    return {"call",
            call.id,
            call.group,
            call.line,
            call.number,
            number_of(call.began),
            number_of(call.answered),
            number_of(call.aired),
            number_of(call.ended),
            call.told_by,
            json(call.told),
            steps_of(call)};
  }
  json operator()(const GroupMemory& group) const {
    return {"group", group.group, group.next_call, group.message, json(group.show_times)};
  }
  json operator()(const FlaggedCaller& caller) const {
    return {"flagged",     caller.key,   caller.number, static_cast<int>(caller.flag),
            caller.reason, caller.until, caller.by,     number_of(caller.at)};
  }
  json operator()(const StudioPlace& place) const {
    return {"place", place.group, place.name, place.address};
  }
  json operator()(const AuditEvent& event) const {
    return {"event", event.id, number_of(event.at), event.user, event.action, event.detail};
  }
};

// The fields of an array, one behind the other. What isn't as it should be makes all of it bad.
class Fields {
 public:
  explicit Fields(const json& list) : list_(list) { good_ = list.is_array(); }

  std::string text() {
    const json* const field = next();
    if (field == nullptr || !field->is_string()) return fail(std::string());
    return field->get<std::string>();
  }
  std::int64_t number() {
    const json* const field = next();
    if (field == nullptr || !field->is_number_integer()) return fail(std::int64_t{0});
    return field->get<std::int64_t>();
  }
  int small() {
    const std::int64_t value = number();
    const bool fits =
        value >= std::numeric_limits<int>::min() && value <= std::numeric_limits<int>::max();
    return fits ? static_cast<int>(value) : fail(0);
  }
  bool truth() {
    const json* const field = next();
    if (field == nullptr || !field->is_boolean()) return fail(false);
    return field->get<bool>();
  }
  Moment moment() { return Moment(number()); }
  const json& list() {
    static const json none = json::array();
    const json* const field = next();
    if (field != nullptr && field->is_array()) return *field;
    good_ = false;
    return none;
  }
  template <std::size_t count>
  std::array<std::string, count> texts() {
    std::array<std::string, count> all;
    Fields of_list(list());
    for (std::string& text : all) text = of_list.text();
    good_ = good_ && of_list.ended();
    return all;
  }
  // Takes what another list of fields has come to.
  void need(bool good) { good_ = good_ && good; }
  bool ended() const { return good_ && place_ == list_.size(); }

 private:
  const json* next() {
    if (!good_ || place_ >= list_.size()) return nullptr;
    return &list_[place_++];
  }
  template <class Value>
  Value fail(Value value) {
    good_ = false;
    return value;
  }

  const json& list_;
  std::size_t place_ = 0;
  bool good_ = false;
};

StoreChange account_of(Fields& fields) {
  Account account;
  account.name = fields.text();
  account.password_hash = fields.text();
  for (const json& entry : fields.list()) {
    Fields of_entry(entry);
    const int group = of_entry.small();
    account.rights[group] = of_entry.text();
    fields.need(of_entry.ended());
  }
  account.profile = fields.text();
  account.locked = fields.truth();
  account.last_seen = fields.moment();
  return account;
}

StoreChange call_of(Fields& fields) {
  CallRecord call;
  call.id = fields.number();
  call.group = fields.small();
  call.line = fields.small();
  call.number = fields.text();
  call.began = fields.moment();
  call.answered = fields.moment();
  call.aired = fields.moment();
  call.ended = fields.moment();
  call.told_by = fields.text();
  call.told = fields.texts<told_field_count>();
  for (const json& entry : fields.list()) {
    Fields of_entry(entry);
    CallStep step;
    step.at = of_entry.moment();
    step.user = of_entry.text();
    step.action = of_entry.text();
    fields.need(of_entry.ended());
    call.steps.push_back(std::move(step));
  }
  return call;
}

StoreChange group_of(Fields& fields) {
  GroupMemory group;
  group.group = fields.small();
  group.next_call = fields.small();
  group.message = fields.text();
  group.show_times = fields.texts<3>();
  return group;
}

StoreChange password_of(Fields& fields) {
  AccountPassword password;
  password.name = fields.text();
  password.password_hash = fields.text();
  return password;
}

StoreChange lock_of(Fields& fields) {
  AccountLock lock;
  lock.name = fields.text();
  lock.locked = fields.truth();
  return lock;
}

StoreChange rights_in(Fields& fields) {
  AccountRights rights;
  rights.name = fields.text();
  rights.group = fields.small();
  rights.rights = fields.text();
  return rights;
}

StoreChange seen_of(Fields& fields) {
  AccountSeen seen;
  seen.name = fields.text();
  seen.at = fields.moment();
  return seen;
}

StoreChange profile_of(Fields& fields) {
  AccountProfile profile;
  profile.name = fields.text();
  profile.profile = fields.text();
  return profile;
}

StoreChange flagged_of(Fields& fields) {
  FlaggedCaller caller;
  caller.key = fields.text();
  caller.number = fields.text();
  const auto flag = caller_flag_of(fields.number());
  fields.need(flag.has_value());
  caller.flag = flag.value_or(CallerFlag::None);
  caller.reason = fields.text();
  caller.until = fields.text();
  caller.by = fields.text();
  caller.at = fields.moment();
  return caller;
}

StoreChange place_of(Fields& fields) {
  StudioPlace place;
  place.group = fields.small();
  place.name = fields.text();
  place.address = fields.text();
  return place;
}

StoreChange event_of(Fields& fields) {
  AuditEvent event;
  event.id = fields.text();
  event.at = fields.moment();
  event.user = fields.text();
  event.action = fields.text();
  event.detail = fields.text();
  return event;
}

// Null for what isn't CBOR. A size that nothing has room for is thrown, whatever is asked for.
json read_cbor(std::string_view bytes) {
  try {
    json read = json::from_cbor(bytes, true, false);
    return read.is_discarded() ? json() : read;
  } catch (const json::exception&) {
    return {};
  }
}

StoreChange removal_of(Fields& fields) { return AccountRemoval{fields.text()}; }

}  // namespace

std::string encoded(const StoreChange& change) {
  std::string bytes;
  json::to_cbor(std::visit(Encoder{}, change), bytes);
  return bytes;
}

std::optional<StoreChange> decoded(std::string_view bytes) {
  static constexpr std::pair<std::string_view, StoreChange (*)(Fields&)> kinds[] = {
      {"account", account_of}, {"removal", removal_of}, {"password", password_of},
      {"lock", lock_of},       {"rights", rights_in},   {"seen", seen_of},
      {"profile", profile_of}, {"call", call_of},       {"group", group_of},
      {"flagged", flagged_of}, {"place", place_of},     {"event", event_of},
  };
  const json list = read_cbor(bytes);
  Fields fields(list);
  const std::string kind = fields.text();
  for (const auto& [name, read] : kinds) {
    if (name != kind) continue;
    StoreChange change = read(fields);
    if (fields.ended()) return change;
  }
  return std::nullopt;
}

}  // namespace lineweir::platform
