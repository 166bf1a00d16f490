#pragma once

#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "platform/store_records.h"
#include "platform/wall_clock.h"
#include "server/store_outbox.h"

namespace lineweir::server {

// The calls of all groups, from their rings to their ends; each is written down as it goes on, so
// that one that stands when the server ends is found again.
class CallBook {
 public:
  using Fields = std::array<std::string, platform::told_field_count>;

  CallBook(const platform::WallClock& clock, StoreOutbox& outbox, platform::Epoch epoch = 0)
      : clock_(clock), outbox_(outbox), epoch_(epoch) {}

  // Calls that stood when the last server ended, as they were stored. Of several on one line only
  // the last one can still stand.
  void remember(std::vector<platform::CallRecord> open_calls);
  // Calls that stood when a backup was made, and that have ended since.
  void close_restored(const std::vector<platform::CallRecord>& open_calls);
  bool remembers(int group, int line) const { return remembered_.contains({group, line}); }
  // Null where none is.
  const platform::CallRecord* remembered(int group, int line) const;
  // The call that stood on the line goes on, which now has the letter. Nothing where none is
  // remembered, and where a line rings whose caller had been answered: he is another one.
  const platform::CallRecord* resume(int group, int line, char letter);
  // What is remembered of the group and wasn't resumed has ended, nobody knows when.
  void close_forgotten(int group);
  // The same of all groups but these.
  void close_forgotten_but(const std::set<int>& groups);

  // All lines are from 0, all texts UTF-8. A call that stands on the line is ended first.
  void begin(int group, int line, const std::string& number);
  // Nothing happens where no call stands.
  void step(int group, int line, char letter, const std::string& user);
  void tell_data(int group, int line, const std::string& told_by, const Fields& fields,
                 const std::string& user);
  void end(int group, int line, const std::string& user);

  // Told of each call that ends on its line.
  std::function<void(const platform::CallRecord& call)> on_ended;

  // Null where none stands.
  const platform::CallRecord* find(int group, int line) const;
  std::size_t standing() const { return calls_.size(); }

 private:
  using Place = std::pair<int, int>;

  std::int64_t new_id(int group);
  // No step of a call comes before its last one, whatever the clocks of two machines say.
  platform::Moment now_of(const platform::CallRecord& call) const;
  void close(platform::CallRecord call);
  void close_at_last_step(platform::CallRecord call);
  void note(platform::CallRecord& call, const std::string& user, std::string action);

  const platform::WallClock& clock_;
  StoreOutbox& outbox_;
  platform::Epoch epoch_;
  std::map<Place, platform::CallRecord> calls_;
  std::map<Place, platform::CallRecord> remembered_;
  std::int64_t last_id_ = 0;
};

}  // namespace lineweir::server
