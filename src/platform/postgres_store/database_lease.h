#pragma once

#include <memory>
#include <vector>

#include "platform/lease.h"
#include "platform/postgres/postgres_connection.h"

namespace lineweir::platform {

// The lease of some studio groups in the database that their servers share: an advisory lock for
// each group, all or none, in a session of its own that the database ends when it hasn't been heard
// from for 2 seconds.
//
// The epoch is taken from a sequence and stands beside the groups in `leaders`; a store's
// transactions begin by looking at it. When each proof was asked for stands in `leader_proofs` by
// the database's clock, so that the next holder knows how long the former one may rely on its last.
class DatabaseLease final : public Lease {
 public:
  // The watch is this lease's alone. All outlive this object.
  DatabaseLease(PostgresAddress address, const PostgresConnection::Services& services,
                std::vector<int> groups);
  DatabaseLease(const DatabaseLease&) = delete;
  DatabaseLease& operator=(const DatabaseLease&) = delete;

  void take(std::function<void(std::optional<Grant> grant)> done) override;
  void prove(std::function<void(bool held)> done) override;
  void give_back() override;

  // Why the database couldn't be asked, as a sentence; told when it changes, empty once it can.
  std::function<void(const std::string& trouble)> on_trouble;

 private:
  using Taken = std::function<void(std::optional<Grant> grant)>;

  void lock(const Taken& done);
  void begin_epoch(const Taken& done);
  void end_try(const Taken& done, const std::string& trouble);
  void set_trouble(const std::string& trouble);

  PostgresConnection connection_;
  std::vector<int> groups_;
  Epoch epoch_ = 0;
  std::string trouble_;
};

}  // namespace lineweir::platform
