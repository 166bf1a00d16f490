#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <string>
#include <variant>
#include <vector>

#include "base/caller_flag.h"
#include "base/telephone_number.h"
#include "platform/wall_clock.h"

// What a server keeps. All texts are UTF-8 but for those that say otherwise.
namespace lineweir::platform {

inline constexpr std::size_t told_field_count = 10;
// The places of some of them.
inline constexpr std::size_t told_name = 0;
inline constexpr std::size_t told_city = 2;
inline constexpr std::size_t told_phone_number = 5;

struct Account {
  // At most 20 characters, not empty; names that differ in case are different names.
  std::string name;
  // Of PasswordHash.
  std::string password_hash;
  // Rights as they go over the wire, 12 bytes, by group; those of number 0 hold in every group that
  // isn't named. Where neither is there the user has no rights in the group.
  std::map<int, std::string> rights;
  // As the user's console sent it, bytes of its character set; empty where it has sent none.
  std::string profile;
  // By an administrator.
  bool locked = false;
  // 0 before the first login.
  Moment last_seen{0};

  friend bool operator==(const Account&, const Account&) = default;
};

struct AccountRemoval {
  std::string name;

  friend bool operator==(const AccountRemoval&, const AccountRemoval&) = default;
};

// What is changed of an account that is there, each alone, as others may change the rest at the
// same time. Nothing happens where there is none.
struct AccountPassword {
  std::string name = {};
  std::string password_hash = {};

  friend bool operator==(const AccountPassword&, const AccountPassword&) = default;
};
struct AccountLock {
  std::string name = {};
  bool locked = false;

  friend bool operator==(const AccountLock&, const AccountLock&) = default;
};
struct AccountRights {
  std::string name = {};
  int group = 0;
  // Empty where the group is no longer named.
  std::string rights = {};

  friend bool operator==(const AccountRights&, const AccountRights&) = default;
};
struct AccountSeen {
  std::string name = {};
  Moment at{0};

  friend bool operator==(const AccountSeen&, const AccountSeen&) = default;
};
struct AccountProfile {
  std::string name = {};
  std::string profile = {};

  friend bool operator==(const AccountProfile&, const AccountProfile&) = default;
};

// Something that was done with a call.
struct CallStep {
  Moment at{0};
  // Who; empty for the exchange.
  std::string user;
  // "ring", "answer", "ready", "hold", "air", "conference", "lock", "data", "hang up", …
  std::string action;

  friend bool operator==(const CallStep&, const CallStep&) = default;
};

// A call from its ring to its end.
struct CallRecord {
  // Unique in the store, and growing with time.
  std::int64_t id = 0;
  int group = 0;
  // From 0.
  int line = 0;
  // The caller's number as the exchange has told it; may be empty.
  std::string number;
  // A moment of 0 has not come.
  Moment began{0};
  Moment answered{0};
  Moment aired{0};
  // 0 while the call stands.
  Moment ended{0};
  // Who entered the data, and the fields in the order of the caller data on the wire.
  std::string told_by;
  std::array<std::string, told_field_count> told;
  std::vector<CallStep> steps;

  friend bool operator==(const CallRecord&, const CallRecord&) = default;
};

// The telephone_key of the call's caller: of the number that was told, or of the exchange's.
inline std::string caller_key(const CallRecord& call) {
  const std::string told = telephone_key(call.told[told_phone_number]);
  return told.empty() ? telephone_key(call.number) : told;
}

// What the calls of one caller come to.
struct CallerHistory {
  std::int64_t calls = 0;
  std::int64_t on_air = 0;
  // 0 where the caller was never on air.
  Moment last_on_air{0};
  // The newest that isn't empty.
  std::string name;
  std::string city;

  friend bool operator==(const CallerHistory&, const CallerHistory&) = default;
};

// What is noted of a caller.
struct FlaggedCaller {
  // The telephone_key of the number.
  std::string key = {};
  // As it was written down.
  std::string number = {};
  // None: nothing is noted any more.
  CallerFlag flag = CallerFlag::None;
  std::string reason = {};
  // The last day on which it holds, "2026-12-31"; empty where it has no end.
  std::string until = {};
  std::string by = {};
  Moment at{0};

  friend bool operator==(const FlaggedCaller&, const FlaggedCaller&) = default;
};

// Where the seats of a group find its server, for the servers of other groups.
struct StudioPlace {
  int group = 0;
  std::string name = {};
  // As a console takes it, "host:port" or "tls:host:port". Empty: none serves the group any more.
  std::string address = {};

  friend bool operator==(const StudioPlace&, const StudioPlace&) = default;
};

// What is to be remembered of a group when the server begins again.
struct GroupMemory {
  int group = 0;
  // From 0; -1 for none.
  int next_call = -1;
  // The buffer of the last message, bytes of the consoles' character set.
  std::string message;
  // The three texts of the show's times.
  std::array<std::string, 3> show_times;

  friend bool operator==(const GroupMemory&, const GroupMemory&) = default;
};

// Something that somebody did, for the audit.
struct AuditEvent {
  // Made by the server, unique, so that one that is written twice stands there once.
  std::string id;
  Moment at{0};
  // Who; empty for the server itself.
  std::string user;
  // One word or two: "login", "login refused", "on air", "drop", "caller data", "user added", …
  std::string action;
  // The rest in words.
  std::string detail;

  friend bool operator==(const AuditEvent&, const AuditEvent&) = default;
};

// An event in its place. Numbers count from 1 without a gap. The hash is that of audit_hash() over
// the hash of the entry before and this one's content.
struct AuditEntry {
  std::int64_t number = 0;
  AuditEvent event;
  std::string hash;

  friend bool operator==(const AuditEntry&, const AuditEntry&) = default;
};

// Each replaces what the store has of the same account, call, group or caller; an event is
// appended.
using StoreChange =
    std::variant<Account, AccountRemoval, AccountPassword, AccountLock, AccountRights, AccountSeen,
                 AccountProfile, CallRecord, GroupMemory, FlaggedCaller, StudioPlace, AuditEvent>;

// All that a server reads when it begins.
struct StoredState {
  std::vector<Account> accounts;
  std::vector<CallRecord> open_calls;
  std::vector<GroupMemory> groups;
  std::vector<FlaggedCaller> flagged_callers;
  // Of all servers that share the store.
  std::vector<StudioPlace> studio_places;
};

// What has been written into a store, by whichever server.
struct StoreNews {
  // Whether these are all that there are, as nobody knows what has been missed; otherwise they are
  // those that have changed.
  bool all = false;
  std::vector<Account> accounts = {};
  // Names of those that aren't there any more.
  std::vector<std::string> removed_accounts = {};
  std::vector<FlaggedCaller> flagged_callers = {};
  std::vector<StudioPlace> studio_places = {};

  friend bool operator==(const StoreNews&, const StoreNews&) = default;
};

}  // namespace lineweir::platform
