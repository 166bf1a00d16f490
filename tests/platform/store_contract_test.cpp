#include <doctest/doctest.h>

#include "contract_desks.h"

using namespace lineweir;
using namespace lineweir::platform;

TEST_CASE_TEMPLATE("A new store holds nothing", Desk, LINEWEIR_CONTRACT_DESKS) {
  Desk desk;
  const auto state = desk.load();
  REQUIRE(state);
  CHECK(state->accounts.empty());
  CHECK(state->open_calls.empty());
  CHECK(state->groups.empty());
  CHECK(state->flagged_callers.empty());
  CHECK(state->studio_places.empty());
  CHECK(desk.calls()->empty());
  CHECK(desk.audit()->empty());
  CHECK(desk.verify() == AuditVerdict{});
}

TEST_CASE_TEMPLATE("What is written is there for the next server", Desk, LINEWEIR_CONTRACT_DESKS) {
  Desk desk;
  CallRecord open = full_call(5);
  open.ended = Moment{0};
  const GroupMemory group{.group = 2,
                          .next_call = 19,
                          .message = std::string("255\2\0\xFF", 6),
                          .show_times = {"last", "näxt", ""}};
  REQUIRE(desk.write({full_account("Zoë"), open, group, event(1)}));
  REQUIRE(desk.write({full_call(4)}));
  desk.begin_again();
  const auto state = desk.load();
  REQUIRE(state);
  CHECK(state->accounts == std::vector{full_account("Zoë")});
  CHECK(state->open_calls == std::vector{open});
  CHECK(state->groups == std::vector{group});
  CHECK(desk.calls() == std::vector{full_call(4)});
  REQUIRE(desk.audit()->size() == 1);
  CHECK(desk.audit()->front().event == event(1));
}

TEST_CASE_TEMPLATE("An account, a call or a group takes the place of its former self", Desk,
                   LINEWEIR_CONTRACT_DESKS) {
  Desk desk;
  Account account = full_account("a");
  CallRecord call = full_call(1);
  GroupMemory group{.group = 1, .next_call = 3, .message = "m", .show_times = {}};
  REQUIRE(desk.write({account, full_account("b"), call, group}));
  account.password_hash = "new";
  account.rights = {{3, std::string(12, '\1')}};
  account.profile.clear();
  account.locked = false;
  account.last_seen = Moment{0};
  call.number = "another";
  call.steps.pop_back();
  group.next_call = -1;
  REQUIRE(desk.write({account, call, group}));
  REQUIRE(desk.write({account, call, group}));
  CHECK(desk.load()->accounts == std::vector{account, full_account("b")});
  CHECK(desk.load()->groups == std::vector{group});
  CHECK(desk.calls() == std::vector{call});
}

TEST_CASE_TEMPLATE("A removed account is gone with its rights", Desk, LINEWEIR_CONTRACT_DESKS) {
  Desk desk;
  REQUIRE(desk.write({full_account("a"), full_account("A"), AccountRemoval{"a"}}));
  CHECK(desk.load()->accounts == std::vector{full_account("A")});
  Account fresh{.name = "a",
                .password_hash = "h",
                .rights = {},
                .profile = {},
                .locked = false,
                .last_seen = Moment{0}};
  REQUIRE(desk.write({fresh, AccountRemoval{"nobody"}}));
  CHECK(desk.load()->accounts == std::vector{full_account("A"), fresh});
}

TEST_CASE_TEMPLATE("Calls are found by group and time, in the order of their ends, piece by piece",
                   Desk, LINEWEIR_CONTRACT_DESKS) {
  Desk desk;
  std::vector<CallRecord> calls;
  for (const int id : {1, 2, 3, 4, 5}) calls.push_back(full_call(id));
  // The longest ended last; two ended at one moment.
  calls[0].ended = calls[4].ended + Moment{1};
  calls[2].ended = calls[1].ended;
  calls[3].group = 9;
  for (const CallRecord& call : calls) REQUIRE(desk.write({call}));
  const auto ids = [&](const CallFilter& filter) {
    std::vector<std::int64_t> found;
    const auto told = desk.calls(filter);
    for (const CallRecord& call : *told) found.push_back(call.id);
    return found;
  };
  using Ids = std::vector<std::int64_t>;
  CHECK(ids({}) == Ids{2, 3, 4, 5, 1});
  CHECK(ids({.group = 9}) == Ids{4});
  CHECK(ids({.since = calls[3].ended}) == Ids{4, 5, 1});
  CHECK(ids({.limit = 2}) == Ids{2, 3});
  CHECK(ids({.after = {.ended = calls[1].ended, .id = 2}, .limit = 2}) == Ids{3, 4});
  CHECK(ids({.group = 2, .since = calls[3].ended, .after = {calls[4].ended, 5}}) == Ids{1});
  CHECK(ids({.limit = 0}).empty());
}

TEST_CASE_TEMPLATE("An event that is written twice stands in the audit once", Desk,
                   LINEWEIR_CONTRACT_DESKS) {
  Desk desk;
  REQUIRE(desk.write({event(1), event(2)}));
  REQUIRE(desk.write({event(2), event(3), event(1)}));
  const auto entries = *desk.audit();
  REQUIRE(entries.size() == 3);
  for (int i = 0; i < 3; ++i) {
    CHECK(entries[static_cast<std::size_t>(i)].number == i + 1);
    CHECK(entries[static_cast<std::size_t>(i)].event == event(i + 1));
  }
  CHECK(desk.audit({.after = 1, .limit = 1}) == std::vector{entries[1]});
  CHECK(desk.audit({.after = 3})->empty());
  CHECK(desk.verify() ==
        AuditVerdict{.entries = 3, .first_wrong = 0, .last_hash = entries[2].hash});
}

TEST_CASE_TEMPLATE("Answers come in the order of the calls, and not from within them", Desk,
                   LINEWEIR_CONTRACT_DESKS) {
  Desk desk;
  std::string order;
  Store& store = desk.store();
  store.write({event(1)}, [&](bool) { order += 'a'; });
  store.load([&](const auto&) { order += 'b'; });
  store.write({event(2)}, [&](bool) { order += 'c'; });
  store.write({event(3)}, [&](bool) { order += 'd'; });
  store.audit({}, [&](const auto& entries) { order += std::to_string(entries->size()); });
  store.verify_audit([&](const auto&) { order += 'e'; });
  CHECK(order.empty());
  CHECK(store.waiting() == 6);
  REQUIRE(desk.run_until([&] { return order.size() == 6; }));
  CHECK(order == "abcd3e");
  CHECK(store.waiting() == 0);
}

TEST_CASE_TEMPLATE("A backup holds what the store held and is taken into a fresh store", Desk,
                   LINEWEIR_CONTRACT_DESKS) {
  Desk desk;
  const std::string file = desk.file("backup.db");
  REQUIRE(desk.write({full_account("Zoë"), full_call(4), event(1), event(2)}));
  CHECK(desk.backup(file) == "");
  REQUIRE(desk.write({full_call(5), event(3)}));
  CHECK(desk.backup(file) != "");
  CHECK(desk.restore(file) != "");
  CHECK(desk.calls()->size() == 2);

  desk.begin_empty();
  CHECK(desk.restore(desk.file("none.db")) != "");
  // What a first start leaves.
  REQUIRE(desk.write({Account{.name = "engineer",
                              .password_hash = "h",
                              .rights = {},
                              .profile = {},
                              .locked = false,
                              .last_seen = Moment{0}},
                      event(77)}));
  CHECK(desk.restore(file) == "");
  CHECK(desk.load()->accounts == std::vector{full_account("Zoë")});
  CHECK(desk.calls() == std::vector{full_call(4)});
  CHECK(desk.verify()->entries == 2);
  CHECK(desk.verify()->first_wrong == 0);
  // It goes on behind what came from the backup.
  REQUIRE(desk.write({event(3)}));
  CHECK(desk.verify()->entries == 3);
  CHECK(desk.verify()->first_wrong == 0);
}

TEST_CASE_TEMPLATE("A backup is not taken into a store that was used", Desk,
                   LINEWEIR_CONTRACT_DESKS) {
  const std::vector<StoreChange> used = {full_call(1),
                                         [] {
                                           CallRecord open = full_call(1);
                                           open.ended = Moment{0};
                                           return open;
                                         }(),
                                         full_account("was here")};
  for (const StoreChange& change : used) {
    Desk desk;
    const std::string file = desk.file("backup.db");
    REQUIRE(desk.backup(file) == "");
    REQUIRE(desk.write({change}));
    CHECK(desk.restore(file) != "");
    CHECK(desk.load()->accounts.size() + desk.load()->open_calls.size() + desk.calls()->size() ==
          1);
  }
  Desk desk;
  const std::string file = desk.file("backup.db");
  REQUIRE(desk.backup(file) == "");
  Account first = full_account("first");
  first.last_seen = Moment{0};
  first.profile.clear();
  Account second = first;
  second.name = "second";
  REQUIRE(desk.write({first, second}));
  CHECK(desk.restore(file) != "");
}

TEST_CASE_TEMPLATE("What a login and a console change leaves the rest of an account", Desk,
                   LINEWEIR_CONTRACT_DESKS) {
  Desk desk;
  Account account = full_account("a");
  REQUIRE(desk.write({account, AccountSeen{"a", Moment{5}}, AccountProfile{"a", "new\xFF"},
                      AccountSeen{"nobody", Moment{5}}, AccountProfile{"nobody", "x"}}));
  account.last_seen = Moment{5};
  account.profile = "new\xFF";
  CHECK(desk.load()->accounts == std::vector{account});
}

TEST_CASE_TEMPLATE("What is changed of an account leaves the rest, and makes none", Desk,
                   LINEWEIR_CONTRACT_DESKS) {
  Desk desk;
  Account account = full_account("a");
  const std::string rights(12, '\3');
  account.rights[7] = rights;
  REQUIRE(desk.write({account, AccountPassword{"a", "hash of another"}, AccountLock{"a", true},
                      AccountRights{"a", 9, rights}, AccountRights{"a", 7, ""},
                      AccountRights{"a", 8, ""}, AccountPassword{"nobody", "x"},
                      AccountLock{"nobody", true}, AccountRights{"nobody", 9, rights}}));
  account.password_hash = "hash of another";
  account.locked = true;
  account.rights.erase(7);
  account.rights[9] = rights;
  CHECK(desk.load()->accounts == std::vector{account});
  account.rights[9] = std::string(12, '\1');
  account.locked = false;
  REQUIRE(desk.write({AccountRights{"a", 9, account.rights[9]}, AccountLock{"a", false}}));
  CHECK(desk.load()->accounts == std::vector{account});
  REQUIRE(desk.write({AccountRemoval{"a"}, AccountLock{"a", true}}));
  CHECK(desk.load()->accounts.empty());
}

TEST_CASE_TEMPLATE("A backup is not restored over a flag", Desk, LINEWEIR_CONTRACT_DESKS) {
  Desk desk;
  const std::string file = desk.file("backup.db");
  REQUIRE(desk.backup(file) == "");
  REQUIRE(desk.write({full_flag("555")}));
  CHECK(desk.restore(file) != "");
  CHECK(desk.load()->flagged_callers.size() == 1);
}

TEST_CASE_TEMPLATE("What is noted of a caller is kept until it is taken back", Desk,
                   LINEWEIR_CONTRACT_DESKS) {
  Desk desk;
  REQUIRE(desk.write({full_flag("555"), full_flag("111"), full_flag("777")}));
  FlaggedCaller changed{.key = "111",
                        .number = "1-1-1",
                        .flag = CallerFlag::Barred,
                        .reason = {},
                        .until = {},
                        .by = {},
                        .at = Moment{0}};
  FlaggedCaller removed = full_flag("777");
  removed.flag = CallerFlag::None;
  REQUIRE(desk.write({changed, removed}));
  desk.begin_again();
  CHECK(desk.load()->flagged_callers == std::vector{changed, full_flag("555")});
}

TEST_CASE_TEMPLATE("A caller's calls are found by the digits of the number", Desk,
                   LINEWEIR_CONTRACT_DESKS) {
  Desk desk;
  CallRecord by_exchange = full_call(1);
  by_exchange.number = "+1 (312) 555-0100";
  by_exchange.told[told_phone_number] = "unknown";
  CallRecord by_screener = full_call(2);
  by_screener.number = "999 0000";
  by_screener.told[told_phone_number] = "312.555.0100";
  by_screener.told[told_name] = "";
  by_screener.told[told_city] = "Bath";
  by_screener.aired = Moment{0};
  CallRecord standing = full_call(3);
  standing.number = "3125550100";
  standing.ended = Moment{0};
  CallRecord of_nobody = full_call(4);
  of_nobody.number = "0000000";
  of_nobody.told[told_phone_number] = "";
  REQUIRE(desk.write({by_screener, by_exchange, standing, of_nobody}));
  const CallerHistory known{.calls = 2,
                            .on_air = 1,
                            .last_on_air = by_exchange.aired,
                            .name = by_exchange.told[told_name],
                            .city = "Bath"};
  CHECK(desk.history("3125550100") == known);
  CHECK(desk.history("9990000") == CallerHistory{});
  CHECK(desk.history("") == CallerHistory{});
}

TEST_CASE_TEMPLATE("A caller is found also by a number that is written with too many digits", Desk,
                   LINEWEIR_CONTRACT_DESKS) {
  Desk desk;
  const std::string digits = "49301234567890123456789012345678901234567890";
  CallRecord call = full_call(1);
  call.told[told_phone_number] = "+" + digits;
  REQUIRE(desk.write({call}));
  CHECK(desk.history(digits)->calls == 1);
}

TEST_CASE_TEMPLATE("Old calls are forgotten piece by piece, or who called in them", Desk,
                   LINEWEIR_CONTRACT_DESKS) {
  Desk desk;
  CallRecord standing = full_call(1);
  standing.ended = Moment{0};
  std::vector<StoreChange> changes = {standing};
  for (int id = 2; id <= 6; ++id) changes.emplace_back(full_call(id));
  REQUIRE(desk.write(changes));
  const Moment before = full_call(5).ended;

  CHECK(desk.forget(before, Store::Forgetting::Callers, 2) == 2);
  CHECK(desk.forget(before, Store::Forgetting::Callers, 2) == 1);
  CHECK(desk.forget(before, Store::Forgetting::Callers, 2) == 0);
  CallRecord of_somebody = full_call(4);
  of_somebody.number.clear();
  of_somebody.told_by.clear();
  of_somebody.told.fill({});
  const auto calls = desk.calls();
  REQUIRE(calls);
  REQUIRE(calls->size() == 5);
  CHECK((*calls)[2] == of_somebody);
  CHECK((*calls)[3] == full_call(5));
  CHECK(desk.history(caller_key(full_call(4)))->calls == 2);

  CHECK(desk.forget(before, Store::Forgetting::Calls, 2) == 2);
  CHECK(desk.forget(before, Store::Forgetting::Calls, 2) == 1);
  CHECK(desk.calls() == std::vector{full_call(5), full_call(6)});
  CHECK(desk.load()->open_calls == std::vector{standing});
}
