#pragma once

#include <deque>
#include <functional>
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <vector>

namespace lineweir::server {

// A list that an administrator's tool takes page by page, each short enough for one answer. It is
// held as far as it was read and not yet taken.
class AdminList {
 public:
  using Rows = std::vector<nlohmann::json>;
  // Reads further rows and tells them: none at the end, nothing where they can't be read.
  using Told = std::function<void(std::optional<Rows> rows)>;
  using Read = std::function<void(Told told)>;

  explicit AdminList(Read read) : read_(std::move(read)) {}
  // One that is all there.
  explicit AdminList(const Rows& rows);
  AdminList(const AdminList&) = delete;
  AdminList& operator=(const AdminList&) = delete;

  // The whole answer; nothing where it can't be read. One page is asked for at a time. Nothing is
  // told behind the end of this object.
  void next_page(std::function<void(std::optional<std::string> answer)> done);

 private:
  void add(const Rows& rows);
  std::string take_page();

  Read read_;
  bool at_end_ = false;
  // As they stand in the answer.
  std::deque<std::string> rows_;
  std::size_t bytes_ = 0;
  std::shared_ptr<bool> alive_ = std::make_shared<bool>(true);
};

// A line of JSON whose texts may hold any bytes.
std::string dumped(const nlohmann::json& value);

}  // namespace lineweir::server
