#include "platform/change_journal/change_code.h"

#include <concepts>
#include <limits>
#include <nlohmann/json.hpp>
#include <tuple>
#include <utility>

namespace lineweir::platform {
namespace {

using nlohmann::json;

template <class Given, class Record>
concept Of = std::same_as<std::remove_const_t<Given>, Record>;

// The fields of each record in the order of the bytes, for writing and for reading.
auto fields(Of<Account> auto& a) {
  return std::tie(a.name, a.password_hash, a.rights, a.profile, a.locked, a.last_seen);
}
auto fields(Of<AccountRemoval> auto& a) { return std::tie(a.name); }
auto fields(Of<AccountPassword> auto& a) { return std::tie(a.name, a.password_hash); }
auto fields(Of<AccountLock> auto& a) { return std::tie(a.name, a.locked); }
auto fields(Of<AccountRights> auto& a) { return std::tie(a.name, a.group, a.rights); }
auto fields(Of<AccountSeen> auto& a) { return std::tie(a.name, a.at); }
auto fields(Of<AccountProfile> auto& a) { return std::tie(a.name, a.profile); }
auto fields(Of<CallRecord> auto& c) {
  return std::tie(c.id, c.group, c.line, c.number, c.began, c.answered, c.aired, c.ended, c.told_by,
                  c.told, c.steps);
}
auto fields(Of<CallStep> auto& s) { return std::tie(s.at, s.user, s.action); }
auto fields(Of<GroupMemory> auto& g) {
  return std::tie(g.group, g.next_call, g.message, g.show_times);
}
auto fields(Of<FlaggedCaller> auto& c) {
  return std::tie(c.key, c.number, c.flag, c.reason, c.until, c.by, c.at);
}
auto fields(Of<StudioPlace> auto& p) { return std::tie(p.group, p.name, p.address); }
auto fields(Of<AuditEvent> auto& e) { return std::tie(e.id, e.at, e.user, e.action, e.detail); }
auto fields(Of<std::pair<int, std::string>> auto& entry) {
  return std::tie(entry.first, entry.second);
}

template <class Record>
constexpr std::string_view kind = {};
template <>
constexpr std::string_view kind<Account> = "account";
template <>
constexpr std::string_view kind<AccountRemoval> = "removal";
template <>
constexpr std::string_view kind<AccountPassword> = "password";
template <>
constexpr std::string_view kind<AccountLock> = "lock";
template <>
constexpr std::string_view kind<AccountRights> = "rights";
template <>
constexpr std::string_view kind<AccountSeen> = "seen";
template <>
constexpr std::string_view kind<AccountProfile> = "profile";
template <>
constexpr std::string_view kind<CallRecord> = "call";
template <>
constexpr std::string_view kind<GroupMemory> = "group";
template <>
constexpr std::string_view kind<FlaggedCaller> = "flagged";
template <>
constexpr std::string_view kind<StudioPlace> = "place";
template <>
constexpr std::string_view kind<AuditEvent> = "event";

// A map is an array of arrays of two.
json written(const auto& value) { return json(value); }
json written(Moment moment) { return moment.count(); }
json written(CallerFlag flag) { return static_cast<int>(flag); }
json written(const std::vector<CallStep>& steps) {
  json list = json::array();
  for (const CallStep& step : steps) {
    std::apply([&](const auto&... field) { list.push_back({written(field)...}); }, fields(step));
  }
  return list;
}

// Reads the fields that stand in the list behind the first ones, of which there are so many. False
// where it isn't a list of these fields and nothing else; the record is worth nothing then.
template <class Record>
bool read_behind(std::size_t place, const json& list, Record& record);

bool read(const json& value, std::string& text) {
  if (!value.is_string()) return false;
  text = value.get<std::string>();
  return true;
}

bool read(const json& value, std::int64_t& number) {
  if (!value.is_number_integer()) return false;
  number = value.get<std::int64_t>();
  return true;
}

bool read(const json& value, int& small) {
  std::int64_t number = 0;
  if (!read(value, number) || !std::in_range<int>(number)) return false;
  small = static_cast<int>(number);
  return true;
}

bool read(const json& value, bool& truth) {
  if (!value.is_boolean()) return false;
  truth = value.get<bool>();
  return true;
}

bool read(const json& value, Moment& moment) {
  std::int64_t number = 0;
  if (!read(value, number)) return false;
  moment = Moment(number);
  return true;
}

bool read(const json& value, CallerFlag& flag) {
  std::int64_t number = 0;
  if (!read(value, number)) return false;
  const auto known = caller_flag_of(number);
  flag = known.value_or(CallerFlag::None);
  return known.has_value();
}

template <std::size_t count>
bool read(const json& value, std::array<std::string, count>& texts) {
  if (!value.is_array() || value.size() != count) return false;
  for (std::size_t place = 0; place < count; ++place) {
    if (!read(value[place], texts[place])) return false;
  }
  return true;
}

bool read(const json& value, std::map<int, std::string>& rights) {
  if (!value.is_array()) return false;
  for (const json& entry : value) {
    std::pair<int, std::string> of_group;
    if (!read_behind(0, entry, of_group)) return false;
    rights.insert_or_assign(of_group.first, std::move(of_group.second));
  }
  return true;
}

bool read(const json& value, std::vector<CallStep>& steps) {
  if (!value.is_array()) return false;
  for (const json& entry : value) {
    if (!read_behind(0, entry, steps.emplace_back())) return false;
  }
  return true;
}

template <class Record>
bool read_behind(std::size_t place, const json& list, Record& record) {
  const auto all = fields(record);
  if (!list.is_array() || list.size() != place + std::tuple_size_v<decltype(all)>) return false;
  return std::apply([&](auto&... field) { return (read(list[place++], field) && ...); }, all);
}

template <class... Records>
std::optional<StoreChange> read_any(const json& list, const std::variant<Records...>*) {
  std::string name;
  if (!list.is_array() || list.empty() || !read(list[0], name)) return std::nullopt;
  std::optional<StoreChange> change;
  const auto read_as = [&]<class Record>(Record record) {
    if (kind<Record> == name && read_behind(1, list, record)) change = std::move(record);
  };
  (read_as(Records{}), ...);
  return change;
}

// Null for what isn't CBOR. A size that nothing has room for is thrown, whatever is asked for.
json read_cbor(std::string_view bytes) {
  try {
    json read = json::from_cbor(bytes, true, false);
    return read.is_discarded() ? json() : read;
  } catch (const json::exception&) {
    return {};
  }
}

}  // namespace

std::string encoded(const StoreChange& change) {
  json list = json::array();
  std::visit(
      [&]<class Record>(const Record& record) {
        list.push_back(kind<Record>);
        std::apply([&](const auto&... field) { (list.push_back(written(field)), ...); },
                   fields(record));
      },
      change);
  std::string bytes;
  json::to_cbor(list, bytes);
  return bytes;
}

std::optional<StoreChange> decoded(std::string_view bytes) {
  return read_any(read_cbor(bytes), static_cast<const StoreChange*>(nullptr));
}

}  // namespace lineweir::platform
