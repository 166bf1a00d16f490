#pragma once

#include <deque>
#include <map>
#include <string>

#include "platform/event_loop.h"

namespace lineweir::server {

// Who may try no password for a while: a user after five wrong ones in a minute, an address after
// fifty in ten minutes. The first lock lasts a minute and each further one twice as long, to an
// hour; a day without a wrong password makes it a minute again. Moments are the loop's.
class LoginGuard {
 public:
  using Moment = platform::Milliseconds;

  bool user_is_locked(const std::string& user, Moment now) const {
    return is_locked(users_, user, now);
  }
  Moment user_locked_for(const std::string& user, Moment now) const;
  bool address_is_locked(const std::string& address, Moment now) const {
    return is_locked(addresses_, address, now);
  }

  // A password was wrong, or the user is none. Tries for a user during his lock count for the
  // address alone, and those of an address during its lock for nobody.
  void note_wrong(const std::string& user, const std::string& address, Moment now);
  // A locked address has tried; tells whether it is the first time during this lock.
  bool note_locked_try(const std::string& address);
  void note_right(const std::string& user) { users_.erase(user); }

 private:
  struct Tries {
    std::deque<Moment> wrong;
    Moment locked_until{0};
    Moment next_lock{0};
    Moment last{0};
    bool tried_during_lock = false;
  };
  using Book = std::map<std::string, Tries>;
  struct Limit;

  static bool is_locked(const Book& book, const std::string& name, Moment now);
  static void note(Book& book, const std::string& name, Moment now, const Limit& limit);
  static void forget_old(Book& book, Moment now);

  Book users_;
  Book addresses_;
};

}  // namespace lineweir::server
