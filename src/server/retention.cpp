#include "server/retention.h"

#include "base/iso_date.h"

namespace lineweir::server {
namespace {

constexpr platform::Milliseconds looks_at_clock_every{300'000};
constexpr platform::Milliseconds asked_again_after{300'000};
constexpr platform::Milliseconds between_pieces{50};
constexpr platform::Moment day{24 * 60 * 60 * 1000};

std::string counted(std::size_t count, const std::string& one, const std::string& more) {
  return std::to_string(count) + " " + (count == 1 ? one : more);
}

}  // namespace

Retention::Retention(const Context& context, platform::Store& store)
    : context_(context), store_(store) {}

Retention::~Retention() { context_.loop.cancel(next_); }

void Retention::start() { schedule(first_after, &Retention::forget); }

void Retention::schedule(platform::Milliseconds delay, void (Retention::*step)()) {
  context_.loop.cancel(next_);
  next_ = context_.loop.schedule(delay, [this, step] { (this->*step)(); });
}

void Retention::look_at_clock() {
  schedule(looks_at_clock_every, &Retention::look_at_clock);
  const platform::DateTime now = context_.clock.local(context_.clock.now());
  if (now.hour == hour_of_night && iso_date_text(now) != day_) forget();
}

void Retention::forget() {
  schedule(looks_at_clock_every, &Retention::look_at_clock);
  const platform::Moment now = context_.clock.now();
  const platform::DateTime local = context_.clock.local(now);
  // The night's own turn comes all the same where this one was before it.
  if (local.hour >= hour_of_night) day_ = iso_date_text(local);
  if (const std::size_t passed = context_.memory.forget_passed(); passed != 0) {
    context_.audit.note({}, "flags forgotten",
                        counted(passed, "caller", "callers") + ", whose last day has passed");
  }
  if (options_.days > 0) forget_calls(now - options_.days * day, 0);
}

void Retention::forget_calls(platform::Moment before, std::size_t forgotten) {
  store_.forget(before, options_.what, piece,
                [this, before, forgotten,
                 alive = std::weak_ptr(alive_)](const std::optional<std::size_t>& count) {
                  if (!alive.lock()) return;
                  const std::size_t all = forgotten + count.value_or(0);
                  // A store that is away is asked again, and not only the next night.
                  if (!count) schedule(asked_again_after, &Retention::forget);
                  const bool is_more = count && *count == piece;
                  if (is_more) {
                    context_.loop.schedule(between_pieces, [this, before, all, alive] {
                      if (alive.lock()) forget_calls(before, all);
                    });
                    return;
                  }
                  if (all == 0) return;
                  const bool whole = options_.what == platform::Store::Forgetting::Calls;
                  context_.audit.note({}, whole ? "calls forgotten" : "callers forgotten",
                                      counted(all, "call", "calls") + " that ended before " +
                                          iso_minute_text(context_.clock.local(before)));
                });
}

}  // namespace lineweir::server
