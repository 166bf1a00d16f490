#pragma once

#include <optional>

#include "server/context.h"
#include "server/group_lines.h"
#include "server/refusal.h"
#include "server/relay.h"

namespace lineweir::server {

// The next caller of a group. With equipment of the kinds 1 to 3 the consoles choose him, and the
// last word holds; with a server that decides he is the one who has been ready longest.
class NextCall {
 public:
  NextCall(const Context& context, const GroupOptions& options, Relay& relay, GroupLines& lines);

  // From 0; -1 for none.
  int line() const { return line_; }
  // As it was when the last server ended. It is over where the consoles have given it up since: the
  // line has a letter that ends it, or the caller whom it `had` is gone. Where the exchange hasn't
  // told the letters yet, that shows only once they are known.
  void remember(int line, bool had_caller);
  void letters_known();

  // A seat has chosen a line, or none. Why that doesn't hold: the choice isn't the seats', or the
  // line's caller has gone meanwhile.
  std::optional<Refusal> choose(int line);
  // The next caller goes to a hybrid, a screener's caller becomes ready, or the caller who has rung
  // longest goes to the seat's handset: N, S or A. Only with a server that decides.
  bool act(Seat& seat, char letter, int bank);
  void letter_changed(int line, char letter);
  void tell(Seat& seat) const;

 private:
  bool server_chooses() const;
  bool comes_too_late(int line) const;
  bool is_ended_by(int line, char letter) const;
  void set(int line);
  int longest_in(char letter) const;
  ServerPacket packet() const;

  const Context& context_;
  const GroupOptions& options_;
  Relay& relay_;
  GroupLines& lines_;
  int line_ = -1;
  // It is remembered, and over if there proves to be no caller.
  bool hangs_on_caller_ = false;
};

}  // namespace lineweir::server
