#include "server/accounts.h"

#include <doctest/doctest.h>

#include "server/group_desk.h"

namespace lineweir::server {
namespace {

using namespace std::chrono_literals;

// Of a store that holds the user anna, with rights in group 2.
struct AccountDesk : PartsDesk {
  AccountDesk() {
    platform::Account anna;
    anna.name = "anna";
    anna.password_hash = "hash";
    anna.profile = "profile";
    anna.rights[2] = "rights";
    anna.last_seen = platform::Moment{5};
    accounts.take_over({anna});
  }

  Accounts accounts{outbox};
};

}  // namespace

TEST_SUITE("server/accounts") {
  TEST_CASE("what is so already isn't written again") {
    AccountDesk desk;
    desk.accounts.set_password("anna", "hash");
    desk.accounts.set_locked("anna", false);
    desk.accounts.set_rights("anna", 2, "rights");
    desk.accounts.set_rights("anna", 1, "");
    desk.accounts.note_seen("anna", platform::Moment{5});
    desk.accounts.save_profile("anna", "profile");
    desk.accounts.add(*desk.accounts.find("anna"));
    CHECK(desk.outbox.waiting() == 0);
  }

  TEST_CASE("what was taken from a user here stays taken, whatever another server wrote before") {
    AccountDesk desk;
    const platform::StoreNews before{.accounts = {*desk.accounts.find("anna")}};
    desk.accounts.set_rights("anna", 2, "");
    CHECK(desk.accounts.take(before).empty());
    CHECK_FALSE(desk.accounts.has_rights("anna", 2));
    desk.accounts.remove("anna");
    CHECK(desk.accounts.take(before).empty());
    CHECK(desk.accounts.find("anna") == nullptr);
  }

  TEST_CASE("nothing is changed or written of a user whom nobody knows") {
    AccountDesk desk;
    desk.accounts.set_password("bob", "hash");
    desk.accounts.set_locked("bob", true);
    desk.accounts.set_rights("bob", 2, "rights");
    desk.accounts.note_seen("bob", platform::Moment{7});
    desk.accounts.save_profile("bob", "profile");
    desk.accounts.remove("bob");
    CHECK(desk.outbox.waiting() == 0);
    CHECK(desk.accounts.find("bob") == nullptr);
    CHECK_FALSE(desk.accounts.has_rights("bob", 2));
  }

  TEST_CASE("each change is known at once and written by itself") {
    AccountDesk desk;
    std::size_t written = 0;
    const auto is_written = [&] { return desk.outbox.waiting() == ++written; };
    desk.accounts.set_password("anna", "new");
    CHECK(is_written());
    desk.accounts.set_locked("anna", true);
    CHECK(is_written());
    desk.accounts.set_rights("anna", 1, "others");
    CHECK(is_written());
    desk.accounts.set_rights("anna", 2, "");
    CHECK(is_written());
    desk.accounts.note_seen("anna", platform::Moment{9});
    CHECK(is_written());
    desk.accounts.save_profile("anna", "mine");
    CHECK(is_written());
    const platform::Account& anna = *desk.accounts.find("anna");
    CHECK(anna.password_hash == "new");
    CHECK(anna.locked);
    CHECK(anna.rights == std::map<int, std::string>{{1, "others"}});
    CHECK(anna.last_seen == platform::Moment{9});
    CHECK(anna.profile == "mine");
  }

  TEST_CASE(
      "a user who was added here and isn't written yet is neither removed nor changed by others") {
    AccountDesk desk;
    platform::Account bob;
    bob.name = "bob";
    bob.profile = "ours";
    desk.accounts.add(bob);
    CHECK(desk.accounts.take({.removed_accounts = {"bob"}}).empty());
    CHECK(desk.accounts.find("bob") != nullptr);
    bob.profile = "theirs";
    CHECK(desk.accounts.take({.accounts = {bob}}).empty());
    CHECK(desk.accounts.find("bob")->profile == "ours");
    CHECK(desk.accounts.take({.all = true}).size() == 1);
    CHECK(desk.accounts.find("bob") != nullptr);
    CHECK(desk.accounts.find("anna") == nullptr);
  }

  TEST_CASE("a user whom others have removed, and nobody knows here, is told of to nobody") {
    AccountDesk desk;
    CHECK(desk.accounts.take({.removed_accounts = {"bob"}}).empty());
    const auto changes = desk.accounts.take({.removed_accounts = {"anna"}});
    REQUIRE(changes.size() == 1);
    CHECK(changes[0].first == "anna");
    CHECK(changes[0].second == Accounts::Change::Removed);
  }

  TEST_CASE("when a user was last seen is the latest of all servers") {
    AccountDesk desk;
    platform::Account theirs = *desk.accounts.find("anna");
    theirs.last_seen = platform::Moment{3};
    desk.accounts.take({.accounts = {theirs}});
    CHECK(desk.accounts.find("anna")->last_seen == platform::Moment{5});
    theirs.last_seen = platform::Moment{8};
    desk.accounts.take({.accounts = {theirs}});
    CHECK(desk.accounts.find("anna")->last_seen == platform::Moment{8});
  }
}

}  // namespace lineweir::server
