#include "server/login_guard.h"

#include <algorithm>
#include <utility>

namespace lineweir::server {

struct LoginGuard::Limit {
  std::size_t wrong;
  Moment within;
};

namespace {

using namespace std::chrono_literals;

constexpr LoginGuard::Moment first_lock = 1min;
constexpr LoginGuard::Moment longest_lock = 1h;
constexpr LoginGuard::Moment forgotten_after = 24h;
// Names that are tried are anybody's; they must not fill the memory.
constexpr std::size_t most_names = 10'000;

}  // namespace

void LoginGuard::note_wrong(const std::string& user, const std::string& address, Moment now) {
  note(users_, user, now, {5, 1min});
  note(addresses_, address, now, {50, 10min});
}

bool LoginGuard::note_locked_try(const std::string& address) {
  const auto tries = addresses_.find(address);
  return tries != addresses_.end() && !std::exchange(tries->second.tried_during_lock, true);
}

LoginGuard::Moment LoginGuard::user_locked_for(const std::string& user, Moment now) const {
  const auto tries = users_.find(user);
  return tries == users_.end() ? Moment{0} : std::max(tries->second.locked_until - now, Moment{0});
}

bool LoginGuard::is_locked(const Book& book, const std::string& name, Moment now) {
  const auto tries = book.find(name);
  return tries != book.end() && now < tries->second.locked_until;
}

void LoginGuard::note(Book& book, const std::string& name, Moment now, const Limit& limit) {
  if (is_locked(book, name, now)) return;
  if (book.size() >= most_names) forget_old(book, now);
  Tries& tries = book[name];
  if (now - tries.last > forgotten_after) tries.next_lock = first_lock;
  tries.last = now;
  tries.wrong.push_back(now);
  while (now - tries.wrong.front() > limit.within) tries.wrong.pop_front();
  if (tries.wrong.size() < limit.wrong) return;
  tries.next_lock = std::max(tries.next_lock, first_lock);
  tries.locked_until = now + tries.next_lock;
  tries.tried_during_lock = false;
  tries.next_lock = std::min(tries.next_lock * 2, longest_lock);
  tries.wrong.clear();
}

// Those that aren't locked go first; where all are, the one that was tried longest ago.
void LoginGuard::forget_old(Book& book, Moment now) {
  std::erase_if(book, [now](const auto& entry) {
    return now >= entry.second.locked_until && now - entry.second.last > 1min;
  });
  if (book.size() < most_names) return;
  const auto rank = [now](const Book::value_type& entry) {
    return std::pair(now < entry.second.locked_until, entry.second.last);
  };
  book.erase(std::min_element(book.begin(), book.end(),
                              [&](const auto& a, const auto& b) { return rank(a) < rank(b); }));
}

}  // namespace lineweir::server
