#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "exchange/exchange.h"
#include "server/call_history.h"
#include "server/context.h"
#include "server/line_order.h"
#include "server/refusal.h"
#include "server/relay.h"
#include "server/server_options.h"

namespace lineweir::server {

// A line of a group as the server knows it. Texts are in the consoles' letters unless told.
struct GroupLine {
  char letter = 'F';
  bool has_caller = false;
  platform::Moment since{0};
  // When its clock began; 0 where none runs.
  platform::Moment clock{0};
  // Both on the loop's clock, which nobody sets back: for what is compared.
  platform::Milliseconds changed_at{0};
  platform::Milliseconds clock_began_at{0};
  // Who took it last, in UTF-8; empty while nobody has.
  std::string worked_by;

  // Orders on their way to the exchange, so that the changes that come are their seats'.
  struct Asked {
    std::uint64_t seat;
    std::string user;
    // What the order may bring about.
    std::string letters;
    platform::Milliseconds at;
  };
  std::vector<Asked> asked;
  // The seat that took the line last, and when.
  std::uint64_t taken_by = 0;
  platform::Milliseconds taken_at{0};
  // The seat whose handset the caller is at.
  std::uint64_t handset_of = 0;
  // The call stood when the last server ended, just as it stands now.
  bool goes_on = false;
  // The caller stood at a handset when the last server ended. Until then its user's seat may come
  // back for him.
  std::optional<platform::Milliseconds> waits_until;
};

// The lines of a group between the seats, whose orders go to the exchange, and the exchange, whose
// changes go to all seats.
class GroupLines {
 public:
  // Two seats that take a caller within this time have done so at the same moment, and the first
  // has him: no hand follows so soon on what an eye has seen.
  static constexpr platform::Milliseconds same_moment{250};
  // A change that comes later than this behind an order came by itself.
  static constexpr platform::Milliseconds order_holds{5000};
  // Where words wait for so long, no seat hands over more than its share of them, so that those of
  // the others come through.
  static constexpr platform::Milliseconds held_up_from{500};
  // So long a seat is waited for that vanished, or that was there before this server began.
  static constexpr platform::Milliseconds waited_for{35'000};

  GroupLines(const Context& context, const GroupOptions& options, Relay& relay,
             std::unique_ptr<exchange::Exchange> exchange);
  GroupLines(const GroupLines&) = delete;
  GroupLines& operator=(const GroupLines&) = delete;

  // Set by the group. A call has ended on the line, or a new one has begun, with the caller's
  // number where it is known.
  std::function<void(int line)> on_call_ended;
  std::function<void(int line, const std::string& number)> on_call_begun;
  // A line has got its letter, and all have been told.
  std::function<void(int line, char letter)> on_letter;

  // Takes the letters over that the exchange has already, with the calls that are remembered: at
  // the start. Remembered calls on lines that are free have ended.
  void take_over();
  // The letters that the exchange has, whatever was shown before it could be asked.
  void take_letters();
  // Of one line, which may be there again.
  void take_letter(int line);
  // The exchange can't be asked: the remembered calls stand on their lines as they did last.
  void show_last_known();
  // Lines, from 1, that won't exist any more: their calls end here.
  void leave_out(const std::vector<int>& missing);

  int count() const { return static_cast<int>(lines_.size()); }
  bool exists(int line) const;
  const GroupLine& line(int line) const { return lines_[static_cast<std::size_t>(line)]; }
  bool has_call(int line) const;
  exchange::Exchange& exchange() { return *exchange_; }
  const exchange::Exchange& exchange() const { return *exchange_; }

  // Hands the order to the exchange, or tells why not; then it is answered by the line's state.
  std::optional<Refusal> obey(Seat& seat, const LineOrder& order);
  // The lines with the letter, from the lowest.
  std::vector<int> lines_in(char letter) const;
  // A caller at the seat's handset goes on hold.
  void hold_handset(std::uint64_t seat);
  // The callers at one seat's handset, and those on their way there, are another's from now on.
  void pass_handset(std::uint64_t from, std::uint64_t to);
  // The seat has come; the callers who stood at its user's handset before this server began are
  // its.
  void claim_handset(const Seat& seat);
  // Of those callers the ones that nobody has come for in time go on hold.
  void hold_unclaimed();

  // "F00F01…": each line's letter and its number.
  std::string status_text() const;
  void tell_status(Seat& seat) const;
  void tell_line(Seat& seat, int line) const;

 private:
  void take_change(exchange::LineChange change, const std::string& number);
  // The line's call stood when the last server ended.
  void take_up(int line, const CallHistory& history);
  void tell_all(int line) const;
  ServerPacket line_packet(int line) const;
  ServerPacket status_packet() const;
  void obey_place(Seat& seat, const LineOrder& order);
  // The exchange is held up, and by this seat more than others.
  bool holds_up_exchange(Seat& seat) const;
  // The seat's order is on its way to the exchange.
  void expect(const Seat& seat, int line, std::string letters);
  // The order that has brought the change about, taken away; nothing where it came by itself.
  std::optional<GroupLine::Asked> take_asked(GroupLine& line, char letter) const;
  bool was_taken_by_other(const Seat& seat, int line) const;
  GroupLine& at(int line) { return lines_[static_cast<std::size_t>(line)]; }

  const Context& context_;
  const GroupOptions& options_;
  Relay& relay_;
  std::unique_ptr<exchange::Exchange> exchange_;
  std::vector<GroupLine> lines_;
};

}  // namespace lineweir::server
