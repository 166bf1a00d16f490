#include "server/admin_list.h"

#include "adminlink/admin_columns.h"
#include "letters/utf8.h"

namespace lineweir::server {
namespace {

using nlohmann::json;

// Room for what stands around the rows.
constexpr std::size_t longest_page = admin::longest_answer - 256;
constexpr int longest_text = 300;

// No row is longer than a page: a call of uncounted steps goes without them, and long texts are
// cut.
std::string row_text(json row) {
  std::string text = dumped(row);
  if (text.size() <= longest_page) return text;
  row.erase(std::string(admin::key::steps));
  for (json& value : row) {
    if (value.is_string()) {
      value = std::string(cut_to_size(value.get_ref<const std::string&>(), longest_text));
    }
  }
  return dumped(row);
}

}  // namespace

AdminList::AdminList(const Rows& rows) : at_end_(true) { add(rows); }

void AdminList::next_page(std::function<void(std::optional<std::string> answer)> done) {
  if (at_end_ || bytes_ > longest_page) return done(take_page());
  read_([this, alive = std::weak_ptr(alive_), done = std::move(done)](std::optional<Rows> rows) {
    if (!alive.lock()) return;
    if (!rows) return done(std::nullopt);
    at_end_ = rows->empty();
    add(*rows);
    next_page(done);
  });
}

void AdminList::add(const Rows& rows) {
  for (const json& row : rows) {
    rows_.push_back(row_text(row));
    bytes_ += rows_.back().size() + 1;
  }
}

std::string AdminList::take_page() {
  std::string page;
  while (!rows_.empty() && (page.empty() || page.size() + rows_.front().size() < longest_page)) {
    if (!page.empty()) page += ',';
    page += rows_.front();
    bytes_ -= rows_.front().size() + 1;
    rows_.pop_front();
  }
  const bool more = !rows_.empty() || !at_end_;
  return R"({"ok":true,"rows":[)" + page + R"(],"more":)" + (more ? "true" : "false") + "}";
}

std::string dumped(const json& value) {
  return value.dump(-1, ' ', false, json::error_handler_t::replace);
}

}  // namespace lineweir::server
