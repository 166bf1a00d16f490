#include "restored_server.h"

#include <cstdio>
#include <cstdlib>
#include <string>

#include "server/server_room.h"
#include "server/table_witness.h"

namespace lineweir::fuzz {
namespace {

using platform::StoreContent;
using platform::StorePortion;

void require(bool holds, const char* what) {
  if (holds) return;
  std::fprintf(stderr, "wrong: %s\n", what);
  std::abort();
}

// The host's password stays known, so that he can be let in.
void fill(StoreContent& held, const StorePortion& records) {
  const std::string hash = held.accounts["host"].password_hash;
  for (const auto& account : records.accounts) held.accounts[account.name] = account;
  held.accounts["host"].password_hash = hash;
  for (const auto& call : records.calls) held.calls[call.id] = call;
  for (const auto& group : records.groups) held.groups[group.group] = group;
  for (const auto& caller : records.flagged_callers) held.flagged_callers[caller.key] = caller;
}

}  // namespace

void serve_restored(const StorePortion& records) {
  server::ServerRoom room;
  for (int line = 1; line < 4; ++line)
    room.exchange().arrive(line, "555010" + std::to_string(line));
  room.crash();
  fill(room.store.content(), records);
  room.start();
  const auto console = room.seat("host");
  for (int line = 0; line < 4; ++line) {
    console->word("NHRF"[line], line);
    room.exchange().leave(line);
    room.exchange().arrive(line + 4, "555010" + std::to_string(line));
    room.wait(std::chrono::seconds(20));
  }
  server::TableWitness witness;
  require(witness.look_at(*console), "a frame that isn't for the console");
  require(console->cut_as_sent(), "frames that run together");
  for (int line = 0; console->is_open() && line < witness.line_count(); ++line) {
    require(witness.letter(line) == room.exchange().letter(line), "a letter");
  }
  console->hang_up();
  room.wait(std::chrono::minutes(2));
  require(room.figure("seats_let_in") == 0, "seats stay");
}

}  // namespace lineweir::fuzz
