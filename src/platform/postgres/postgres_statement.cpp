#include "platform/postgres/postgres_statement.h"

#include "platform/postgres/stored_text.h"

namespace lineweir::platform {
namespace {

// As the database's own catalogue has them in all versions.
constexpr unsigned boolean_type = 16;
constexpr unsigned bytea_type = 17;
constexpr unsigned bigint_type = 20;
constexpr unsigned text_type = 25;

}  // namespace

PostgresValue PostgresValue::number(std::int64_t number) {
  std::string bytes(sizeof number, '\0');
  auto rest = static_cast<std::uint64_t>(number);
  for (auto byte = bytes.rbegin(); byte != bytes.rend(); ++byte, rest >>= 8U) {
    *byte = static_cast<char>(rest & 0xFFU);
  }
  return {bigint_type, std::move(bytes)};
}

PostgresValue PostgresValue::no_number() { return {bigint_type, std::nullopt}; }

PostgresValue PostgresValue::truth(bool truth) {
  return {boolean_type, std::string(1, truth ? '\1' : '\0')};
}

PostgresValue PostgresValue::text(std::string_view text) {
  return {text_type, to_stored_text(text)};
}

PostgresValue PostgresValue::bytes(std::string_view bytes) {
  return {bytea_type, std::string(bytes)};
}

}  // namespace lineweir::platform
