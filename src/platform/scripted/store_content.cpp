#include "platform/scripted/store_content.h"

#include <algorithm>

namespace lineweir::platform {
namespace {

struct Applied {
  StoreContent& content;

  void operator()(const Account& account) const { content.accounts[account.name] = account; }
  void operator()(const AccountRemoval& removal) const { content.accounts.erase(removal.name); }
  void operator()(const AccountPassword& password) const {
    const auto account = content.accounts.find(password.name);
    if (account != content.accounts.end()) account->second.password_hash = password.password_hash;
  }
  void operator()(const AccountLock& lock) const {
    const auto account = content.accounts.find(lock.name);
    if (account != content.accounts.end()) account->second.locked = lock.locked;
  }
  void operator()(const AccountRights& rights) const {
    const auto account = content.accounts.find(rights.name);
    if (account == content.accounts.end()) return;
    account->second.rights[rights.group] = rights.rights;
    if (rights.rights.empty()) account->second.rights.erase(rights.group);
  }
  void operator()(const AccountSeen& seen) const {
    const auto account = content.accounts.find(seen.name);
    if (account != content.accounts.end()) account->second.last_seen = seen.at;
  }
  void operator()(const AccountProfile& profile) const {
    const auto account = content.accounts.find(profile.name);
    if (account != content.accounts.end()) account->second.profile = profile.profile;
  }
  void operator()(const CallRecord& call) const { content.calls[call.id] = call; }
  void operator()(const GroupMemory& group) const { content.groups[group.group] = group; }
  void operator()(const FlaggedCaller& caller) const {
    content.flagged_callers[caller.key] = caller;
    if (caller.flag == CallerFlag::None) content.flagged_callers.erase(caller.key);
  }
  void operator()(const StudioPlace& place) const {
    content.studio_places[place.group] = place;
    if (place.address.empty()) content.studio_places.erase(place.group);
  }
  void operator()(const AuditEvent& event) const {
    const auto is_same = [&](const AuditEntry& entry) { return entry.event.id == event.id; };
    if (std::ranges::any_of(content.audit, is_same)) return;
    content.audit.push_back(next_entry(content.audit_end, event));
    content.audit_end = {.entries = content.audit.back().number, .hash = content.audit.back().hash};
  }
};

CallPlace place_of(const CallRecord& call) { return {.ended = call.ended, .id = call.id}; }

}  // namespace

StoredState StoreContent::state() const {
  StoredState state;
  for (const auto& [name, account] : accounts) state.accounts.push_back(account);
  for (const auto& [id, call] : calls) {
    if (call.ended == Moment{0}) state.open_calls.push_back(call);
  }
  for (const auto& [number, group] : groups) state.groups.push_back(group);
  for (const auto& [key, caller] : flagged_callers) state.flagged_callers.push_back(caller);
  for (const auto& [number, place] : studio_places) state.studio_places.push_back(place);
  return state;
}

std::vector<CallRecord> StoreContent::ended_calls(const CallFilter& filter) const {
  std::vector<CallRecord> found;
  for (const auto& [id, call] : calls) {
    const bool is_asked_for = call.ended != Moment{0} && call.ended >= filter.since &&
                              place_of(call) > filter.after &&
                              (filter.group == 0 || call.group == filter.group);
    if (is_asked_for) found.push_back(call);
  }
  std::ranges::sort(found, {}, place_of);
  if (found.size() > filter.limit) found.resize(filter.limit);
  return found;
}

std::vector<AuditEntry> StoreContent::entries(const AuditFilter& filter) const {
  std::vector<AuditEntry> found;
  for (const AuditEntry& entry : audit) {
    if (entry.number > filter.after && found.size() < filter.limit) found.push_back(entry);
  }
  return found;
}

CallerHistory StoreContent::caller_history(const std::string& key) const {
  CallerHistory history;
  for (const auto& [id, call] : calls) {
    if (key.empty() || call.ended == Moment{0} || caller_key(call) != key) continue;
    ++history.calls;
    if (call.aired != Moment{0}) ++history.on_air;
    history.last_on_air = std::max(history.last_on_air, call.aired);
    if (!call.told[told_name].empty()) history.name = call.told[told_name];
    if (!call.told[told_city].empty()) history.city = call.told[told_city];
  }
  return history;
}

std::size_t StoreContent::forget(Moment before, Store::Forgetting what, std::size_t limit) {
  std::vector<CallRecord> old = ended_calls({});
  std::erase_if(old, [&](const CallRecord& call) { return call.ended >= before; });
  std::size_t forgotten = 0;
  for (CallRecord call : old) {
    if (forgotten == limit) break;
    const CallRecord known = call;
    call.number.clear();
    call.told_by.clear();
    call.told.fill({});
    if (what == Store::Forgetting::Calls) {
      calls.erase(call.id);
    } else if (call == known) {
      continue;
    } else {
      calls[call.id] = call;
    }
    ++forgotten;
  }
  return forgotten;
}

AuditVerdict StoreContent::verdict() const {
  AuditCheck check;
  for (const AuditEntry& entry : audit) check.next(entry);
  return check.verdict(audit_end);
}

bool StoreContent::is_fresh() const {
  const auto was_used = [](const auto& account) {
    return account.second.last_seen != Moment{0} || !account.second.profile.empty();
  };
  return calls.empty() && flagged_callers.empty() && accounts.size() <= 1 &&
         std::ranges::none_of(accounts, was_used);
}

void StoreContent::apply(const StoreChange& change) { std::visit(Applied{*this}, change); }

}  // namespace lineweir::platform
