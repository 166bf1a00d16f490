#include "serverlink/profile_fields.h"

#include <algorithm>
#include <cstdint>

#include "base/integer16.h"
#include "base/number_reply.h"
#include "base/text.h"
#include "wire/server_packet_codec.h"

namespace lineweir {
namespace {

constexpr std::string_view shown_mark = "T";
constexpr std::string_view hidden_mark = "F";
constexpr std::size_t group_field = 2;

bool is_control(char character) { return code_of(character) < ' ' || code_of(character) == 127; }

std::optional<int> number_in(std::string_view text) {
  const auto number = number_reply(std::string(text));
  if (!number || *number < INT16_MIN || *number > INT16_MAX) return std::nullopt;
  return whole_16_bits(*number);
}

std::optional<std::string> text_in(std::string_view text) {
  if (text.empty() || std::ranges::any_of(text, is_control)) return std::nullopt;
  return std::string(text);
}

std::optional<bool> mark_in(std::string_view text) {
  if (text.empty()) return std::nullopt;
  return text == shown_mark;
}

// The field in the values, whose kind it tells.
template <class Values, class Use>
auto with_value(const ProfileField& field, Values& values, Use use) {
  struct Visitor {
    Values& values;
    Use& use;

    auto operator()(ProfileField::Number number) { return use(values.*number); }
    auto operator()(ProfileField::Text text) { return use(values.*text); }
    auto operator()(ProfileField::ColumnNumber number) {
      return use(values.columns[number.column].*number.part);
    }
    auto operator()(ProfileField::ColumnMark mark) {
      return use(values.columns[mark.column].shown);
    }
  };
  return std::visit(Visitor{values, use}, field.value);
}

std::string text_of(const std::optional<int>& number) {
  return number ? std::to_string(*number) : std::string();
}
std::string text_of(const std::optional<std::string>& text) { return text.value_or(std::string()); }
std::string text_of(const std::optional<bool>& shown) {
  if (!shown) return {};
  return std::string(*shown ? shown_mark : hidden_mark);
}

void take(std::optional<int>& value, std::string_view text) { value = number_in(text); }
void take(std::optional<std::string>& value, std::string_view text) { value = text_in(text); }
void take(std::optional<bool>& value, std::string_view text) { value = mark_in(text); }

bool is_last_of_step(std::size_t place) {
  return place + 1 == profile_fields.size() ||
         profile_fields[place + 1].step != profile_fields[place].step;
}

}  // namespace

int group_of_profile(std::string_view block) {
  if (block.find(item_end) == std::string_view::npos || block.size() <= profile_flag_count) {
    return no_group;
  }
  const auto fields = decode_list(block.substr(profile_flag_count));
  if (fields.size() <= group_field) return no_group;
  return integer16(leading_number(fields[group_field]));
}

std::string profile_field(std::string_view text) {
  std::string field(text);
  std::erase_if(field, is_control);
  return std::string(trimmed(field)) + item_end;
}

std::string write_profile_fields(const ProfileValues& values) {
  std::string text;
  for (const ProfileField& field : profile_fields) {
    text +=
        with_value(field, values, [](const auto& value) { return profile_field(text_of(value)); });
  }
  return text;
}

void read_profile_fields(std::string_view fields,
                         const std::function<void(ProfileStep, const ProfileValues&)>& carry_out) {
  ProfileValues values;
  for (std::size_t place = 0; place < profile_fields.size(); ++place) {
    const ProfileField& field = profile_fields[place];
    const auto end = fields.find(item_end);
    if (end == std::string_view::npos) return;
    const std::string_view text = trimmed(fields.substr(0, end));
    if (field.read) with_value(field, values, [text](auto& value) { take(value, text); });
    fields.remove_prefix(end + 1);
    if (is_last_of_step(place)) carry_out(field.step, values);
  }
}

}  // namespace lineweir
