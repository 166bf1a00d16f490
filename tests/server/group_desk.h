#pragma once

#include <memory>
#include <string>
#include <vector>

#include "letters/code_page_letters.h"
#include "platform/scripted/scripted_random_numbers.h"
#include "platform/scripted/scripted_store.h"
#include "platform/scripted/scripted_wall_clock.h"
#include "platform/scripted/virtual_event_loop.h"
#include "server/context.h"
#include "server/group.h"

namespace lineweir::server {

// An exchange that does nothing by itself: the words are noted, and the changes are the test's.
class ManualExchange final : public exchange::Exchange {
 public:
  explicit ManualExchange(int lines) : letters(static_cast<std::size_t>(lines), 'F') {}

  int line_count() const override { return static_cast<int>(letters.size()); }
  char letter(int line) const override { return letters[static_cast<std::size_t>(line)]; }
  bool is_reached() const override { return reached; }
  platform::Milliseconds backlog() const override { return held_up_for; }
  void obey(std::string_view word) override { words.emplace_back(word); }
  void take_to_position(int line, int position) override {
    words.push_back("line " + std::to_string(line) + " to " + std::to_string(position));
  }
  bool arrive(int, std::string) override { return false; }
  bool leave(int) override { return false; }

  void report(int line, char letter, const std::string& number = {}) {
    letters[static_cast<std::size_t>(line)] = letter;
    on_change({line, letter}, number);
  }

  std::string letters;
  bool reached = true;
  std::vector<std::string> words;
  platform::Milliseconds held_up_for{0};
};

// A seat that notes what it is told.
class NotingSeat final : public Seat {
 public:
  explicit NotingSeat(std::uint64_t seat_number, std::string user_name = {}) : Seat(seat_number) {
    user = std::move(user_name);
  }

  void tell(const Telling& telling) override { told.push_back(telling.packet); }
  void tell_person(const std::string& text) override { sentences.push_back(text); }
  void end() override {}
  std::string place() const override { return "here"; }

  // What it was told of one code.
  std::vector<ServerPacket> told_of(ServerCommand command) const {
    std::vector<ServerPacket> found;
    for (const ServerPacket& packet : told) {
      if (packet.CMD == static_cast<std::uint8_t>(command)) found.push_back(packet);
    }
    return found;
  }

  std::vector<ServerPacket> told;
  std::vector<std::string> sentences;
};

// What the parts of a server share, scripted.
struct PartsDesk {
  std::vector<platform::CallRecord> ended_calls() {
    loop.advance(std::chrono::seconds(1));
    return store.content().ended_calls({});
  }
  std::vector<std::string> audited() {
    loop.advance(std::chrono::seconds(1));
    std::vector<std::string> found;
    for (const platform::AuditEntry& entry : store.content().audit) {
      found.push_back(entry.event.user + ": " + entry.event.action);
    }
    return found;
  }

  platform::VirtualEventLoop loop;
  platform::ScriptedWallClock clock{loop};
  platform::ScriptedRandomNumbers random;
  platform::ScriptedStore store{loop};
  CodePageLetters letters;
  std::vector<std::string> logged;
  ServerLog log{[this](LogLevel, const std::string& line) { logged.push_back(line); }};
  Figures figures;
  StoreOutbox outbox{loop, store, log};
  Audit audit{clock, random, outbox};
  CallBook calls{clock, outbox};
  CallerMemory caller_memory{store, clock, outbox, audit};
  Context context{loop, clock, letters, log, figures, outbox, audit, calls, caller_memory};
};

// A group of lines whose exchange is the test's.
struct GroupDesk : PartsDesk {
  explicit GroupDesk(GroupOptions options = {}, const platform::GroupMemory* memory = nullptr,
                     const std::string& first_letters = {})
      : group(context, options, make_exchange(options.lines, first_letters), memory) {}

  std::unique_ptr<exchange::Exchange> make_exchange(int lines, const std::string& first_letters) {
    auto made = std::make_unique<ManualExchange>(lines);
    made->letters.replace(0, first_letters.size(), first_letters);
    exchange = made.get();
    return made;
  }

  // Whether the order went to the exchange.
  bool order(Seat& seat, const std::string& word, int line) {
    return !group.lines().obey(seat, {LineOrder::Kind::Word, word, line});
  }
  void wait(platform::Milliseconds span) { loop.advance(span); }

  ManualExchange* exchange = nullptr;
  Group group;
};

}  // namespace lineweir::server
