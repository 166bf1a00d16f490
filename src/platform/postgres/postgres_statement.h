#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace lineweir::platform {

// A value of a statement in the binary form of PostgreSQL's types.
class PostgresValue {
 public:
  // bigint
  static PostgresValue number(std::int64_t number);
  static PostgresValue no_number();
  // boolean
  static PostgresValue truth(bool truth);
  // text; any bytes, see stored_text.h.
  static PostgresValue text(std::string_view text);
  // bytea
  static PostgresValue bytes(std::string_view bytes);

  // The number by which PostgreSQL knows the type.
  unsigned type() const { return type_; }
  const std::optional<std::string>& content() const { return content_; }

 private:
  PostgresValue(unsigned type, std::optional<std::string> content)
      : type_(type), content_(std::move(content)) {}

  unsigned type_;
  std::optional<std::string> content_;
};

// One statement, whose values stand in it as $1, $2 and so on. One with values is prepared when a
// connection first has it, so its text is a constant and never made of what somebody has typed.
struct PostgresStatement {
  std::string sql;
  std::vector<PostgresValue> values = {};
};

}  // namespace lineweir::platform
