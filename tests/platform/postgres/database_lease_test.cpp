// Servers of different versions beside each other on one database.

#include "platform/postgres_store/database_lease.h"

#include <doctest/doctest.h>

#include "platform/postgres/postgres_desk.h"

using namespace lineweir;
using namespace lineweir::platform;
using test::PostgresCluster;

namespace {

struct Standby {
  Standby(const std::string& url, AsioLoop& shared_loop)
      : loop(shared_loop), lease(*PostgresAddress::read(url), {loop, watch, loop}, {1}) {
    lease.on_trouble = [this](const std::string& why) { trouble = why; };
  }

  bool takes_it() {
    bool told = false;
    bool granted = false;
    lease.take([&](const std::optional<Lease::Grant>& grant) {
      told = true;
      granted = grant.has_value();
    });
    REQUIRE(run_loop_until(loop, [&] { return told; }));
    return granted;
  }

  AsioLoop& loop;
  AsioDescriptorWatch watch{loop};
  DatabaseLease lease;
  std::string trouble;
};

struct TwoVersions {
  TwoVersions() { REQUIRE(leader.takes_it()); }

  std::string version() const {
    return PostgresCluster::run(url, "SELECT version FROM lineweir.store_version");
  }

  std::string url = PostgresCluster::the().new_database();
  AsioLoop loop;
  Standby leader{url, loop};
  Standby other{url, loop};
};

}  // namespace

TEST_CASE_FIXTURE(TwoVersions,
                  "Tables are brought up to date by the server that leads, no sooner") {
  PostgresCluster::run(
      url,
      "DROP TABLE lineweir.leaders, lineweir.leader_proofs, lineweir.flagged_callers, "
      "lineweir.studio_places; DROP SEQUENCE lineweir.leader_epochs; "
      "ALTER TABLE lineweir.calls DROP COLUMN caller; "
      "UPDATE lineweir.store_version SET version = 1");
  CHECK_FALSE(other.takes_it());
  CHECK(other.trouble == "");
  CHECK(version() == "1\n");
  leader.lease.give_back();
  // Once it has it, asking anew says nothing.
  bool has_it = false;
  CHECK(run_loop_until(loop, [&] { return has_it = has_it || other.takes_it(); }));
  CHECK(version() == "3\n");
}

TEST_CASE_FIXTURE(TwoVersions, "A server of an earlier version doesn't lead on newer tables") {
  PostgresCluster::run(url, "UPDATE lineweir.store_version SET version = 99");
  leader.lease.give_back();
  CHECK_FALSE(other.takes_it());
  CHECK(other.trouble.find("was written by a newer version of this program (its version is 99, 3 "
                           "is the newest known).") != std::string::npos);
  CHECK(version() == "99\n");
}
