#pragma once

#include <cstdint>
#include <string_view>

#include "driver/places.h"
#include "exchange/dice.h"
#include "simulation/seat.h"

namespace lineweir::simulation {

// Somebody at a seat who now and then does something: works the lines with the keys, enters who is
// calling, or clicks and types wherever there is anything to be clicked and typed into. What isn't
// on the screen can't be reached. Caller data come from one seat a line, so that no two seats write
// the same at once.
class Operator {
 public:
  // The seat outlives its operator; `seats` share the lines.
  Operator(Seat& seat, int seats, std::uint64_t seed);

  // One thing. Called from the loop, as a user's hands come, also while a handler waits.
  void act();

  // Ends the program by its menu.
  void quit();

 private:
  void press_line_key();
  void enter_caller();
  void click_anything();
  void type_anything();
  void close_a_window();
  void press_key(int code, int shift);
  Form& shown_form();
  int line_to_enter();

  Seat& seat_;
  int seats_;
  exchange::Dice dice_;
  int entered_ = 0;
};

}  // namespace lineweir::simulation
