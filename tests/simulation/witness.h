#pragma once

#include <map>
#include <set>
#include <string>
#include <vector>

#include "simulation/equipment_room.h"
#include "simulation/seat.h"
#include "simulation/server_stand_in.h"

namespace lineweir::simulation {

// Looks at everybody and writes down what can't be right.
class Witness {
 public:
  Witness(const EquipmentRoom& room, const ServerStandIn& server, const platform::EventLoop& loop,
          Transcript& transcript);

  // After each step.
  void look(Seat& seat);
  // Before and after the hands of an operator, who may pick the next call and drop it in one step.
  void look_at_hands(Seat& seat);
  // Now and then, and in the end.
  void look_at_log(Seat& seat);
  // Before the console is taken away: with it go the callers on its lines, whom nobody logs.
  void forget(Seat& seat);

  const std::vector<std::string>& faults() const { return faults_; }
  // Calls that seats have entered and logged, as far as looked at.
  int calls_logged() const;
  // Rows that were held against the exchange, and against the server, and the letters seen there.
  long rows_compared = 0;
  long texts_compared = 0;
  std::string letters_seen;

 private:
  struct RowState {
    char letter = ' ';
    std::string base;
    std::string shown;
    Milliseconds since{0};
    // The user has picked the line as the next call, or another one in its place, or has switched
    // the bar of the next call off: then its strip is what that left.
    bool marked_by_hand = false;
  };

  struct Memory {
    Milliseconds linked_since{0};
    bool linked = false;
    Milliseconds looked_at{0};
    std::string time_of_day;
    std::map<int, RowState> rows;
    int next_call = no_line;
    std::size_t failures = 0;
    int calls_logged = 0;
    std::set<std::string> gone_with_console;
  };

  void look_at_failures(Seat& seat, Memory& memory);
  void look_at_states(Seat& seat, Memory& memory);
  void look_at_rows(Seat& seat, const Memory& memory);
  void look_at_texts(Seat& seat);
  void fault(const Seat& seat, const std::string& what);

  const EquipmentRoom& room_;
  const ServerStandIn& server_;
  const platform::EventLoop& loop_;
  Transcript& transcript_;
  std::map<int, Memory> memories_;
  std::vector<std::string> faults_;
};

}  // namespace lineweir::simulation
