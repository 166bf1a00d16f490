#define DOCTEST_CONFIG_IMPLEMENT_WITH_MAIN
#include <doctest/doctest.h>

#include <functional>

#include "platform/audit/audit_check.h"
#include "platform/audit/audit_hash.h"
#include "store_desk.h"

using namespace lineweir;
using namespace lineweir::platform;

namespace {

struct Chain {
  std::vector<AuditEntry> entries;
  AuditEnd end;

  explicit Chain(int length) {
    for (int i = 1; i <= length; ++i) {
      entries.push_back(next_entry(end, event(i)));
      end = {.entries = entries.back().number, .hash = entries.back().hash};
    }
  }
  std::int64_t first_wrong() const {
    AuditCheck check;
    for (const AuditEntry& entry : entries) check.next(entry);
    return check.verdict(end).first_wrong;
  }
};

constexpr int length = 5;

const std::vector<std::function<void(AuditEntry&)>> changes = {
    [](AuditEntry& entry) { entry.number += 1; },
    [](AuditEntry& entry) { entry.event.id += '!'; },
    [](AuditEntry& entry) { entry.event.at += Moment{1}; },
    [](AuditEntry& entry) { entry.event.user = "nobody"; },
    [](AuditEntry& entry) { entry.event.action.clear(); },
    [](AuditEntry& entry) { entry.event.detail += ' '; },
    [](AuditEntry& entry) { entry.hash[0] = entry.hash[0] == '0' ? '1' : '0'; },
    // What stands in one field is not what stands in its neighbour.
    [](AuditEntry& entry) {
      entry.event.detail = entry.event.action + entry.event.detail;
      entry.event.action.clear();
    },
};

}  // namespace

TEST_CASE("The hash of an entry is SHA-256 over the bytes that its description tells") {
  // Computed by a program in another language, after the description alone.
  CHECK(audit_hash("", 1, {"id", Moment{2}, "who", "what", "rest"}) ==
        "3b3b559f0e93879bd85d6d84629eb0f1ad80580da877d7affcb384e0b1b14d5f");
  CHECK(audit_hash(std::string(64, 'a'), -1, {"", Moment{0}, "", "", ""}) ==
        "f4c896541db6ad52333dbf9ffdbeaa762a7c18af7a0d92559aa629b124aff301");
}

TEST_CASE("A chain that nobody touched is right") {
  for (int i = 0; i <= length; ++i) CHECK(Chain(i).first_wrong() == 0);
}

TEST_CASE("A field of any entry that was changed shows at its entry") {
  for (std::size_t at = 0; at < length; ++at) {
    for (std::size_t change = 0; change < changes.size(); ++change) {
      CAPTURE(at);
      CAPTURE(change);
      Chain chain(length);
      changes[change](chain.entries[at]);
      CHECK(chain.first_wrong() == static_cast<std::int64_t>(at) + 1);
    }
  }
}

TEST_CASE("An entry that was changed with its hash shows at the next one, the last one at itself") {
  for (std::size_t at = 0; at < length; ++at) {
    Chain chain(length);
    AuditEntry& entry = chain.entries[at];
    entry.event.detail = "nothing happened";
    entry.hash = audit_hash(at == 0 ? "" : chain.entries[at - 1].hash, entry.number, entry.event);
    CHECK(chain.first_wrong() == std::min<std::int64_t>(static_cast<std::int64_t>(at) + 2, length));
  }
}

TEST_CASE("An entry that is missing shows in its place, also the last one") {
  for (std::ptrdiff_t at = 0; at < length; ++at) {
    Chain chain(length);
    chain.entries.erase(chain.entries.begin() + at);
    CHECK(chain.first_wrong() == at + 1);
  }
  Chain cut(length);
  cut.entries.resize(2);
  CHECK(cut.first_wrong() == 3);
  cut.entries.clear();
  CHECK(cut.first_wrong() == 1);
}

TEST_CASE("Entries in each other's places show at the first of them") {
  Chain chain(length);
  std::swap(chain.entries[1].event, chain.entries[3].event);
  CHECK(chain.first_wrong() == 2);
  Chain whole(length);
  std::swap(whole.entries[1], whole.entries[2]);
  std::swap(whole.entries[1].number, whole.entries[2].number);
  CHECK(whole.first_wrong() == 2);
}

TEST_CASE("An entry that was added shows, also behind the last one") {
  Chain chain(length);
  chain.entries.push_back(next_entry(chain.end, event(99)));
  CHECK(chain.first_wrong() == length + 1);
  Chain inside(length);
  inside.entries.insert(inside.entries.begin() + 2, inside.entries[1]);
  CHECK(inside.first_wrong() == 3);
}

TEST_CASE("An end that was changed shows") {
  Chain chain(length);
  chain.end.hash = "";
  CHECK(chain.first_wrong() == length);
  chain.end = {};
  CHECK(chain.first_wrong() == 1);
  chain.end = {.entries = -7, .hash = ""};
  CHECK(chain.first_wrong() == 1);
}
