#include "serverlink/profile_fields.h"

#include <algorithm>
#include <map>
#include <string>
#include <vector>

#include "support/failure_number.h"
#include "support/profile_blocks.h"
#include "support/property_check.h"

namespace lineweir::test {
namespace {

struct Read {
  std::vector<ProfileStep> steps;
  ProfileValues values;
};

Read read(std::string_view fields) {
  Read result;
  read_profile_fields(fields, [&](ProfileStep step, const ProfileValues& values) {
    result.steps.push_back(step);
    result.values = values;
  });
  return result;
}

std::vector<std::string> all_fields(const std::string& text) {
  return std::vector<std::string>(count_of_fields, text);
}

std::string text_of(const std::vector<std::string>& fields) { return joined("", fields); }

std::optional<int> any_number() { return *rc::gen::inRange<int>(INT16_MIN, INT16_MAX + 1); }

std::string any_text() {
  const auto letter = rc::gen::map(rc::gen::inRange(33, 256), [](int code) {
    return static_cast<char>(code == 127 ? 'x' : code);
  });
  return *rc::gen::nonEmpty(rc::gen::container<std::string>(letter));
}

ProfileValues any_values() {
  ProfileValues values;
  for (auto number :
       {&ProfileValues::height, &ProfileValues::width, &ProfileValues::group,
        &ProfileValues::window_state, &ProfileValues::warning1, &ProfileValues::warning2,
        &ProfileValues::font_size, &ProfileValues::time_offset}) {
    values.*number = any_number();
  }
  for (auto text :
       {&ProfileValues::show_data_file, &ProfileValues::database, &ProfileValues::operator_name,
        &ProfileValues::hot_list, &ProfileValues::font_name}) {
    values.*text = any_text();
  }
  for (ProfileColumn& column : values.columns) {
    column = {any_number(), *rc::gen::arbitrary<bool>(), any_number()};
  }
  return values;
}

TEST_SUITE("serverlink/profile fields") {
  TEST_CASE("what is written is read again, with every step, in their order") {
    check_property([] {
      const ProfileValues values = any_values();
      const std::string text = write_profile_fields(values);
      RC_ASSERT(static_cast<std::size_t>(std::ranges::count(text, '\3')) == count_of_fields);
      const Read result = read(text);
      RC_ASSERT(result.values == values);
      RC_ASSERT(std::ranges::is_sorted(result.steps));
      RC_ASSERT(result.steps.size() == 6U);
    });
  }

  TEST_CASE("a step is done behind its last field, and none behind the end of the text") {
    const std::map<ProfileStep, std::size_t> last_fields = {{ProfileStep::Window, 4},
                                                            {ProfileStep::ShowPlan, 5},
                                                            {ProfileStep::Log, 6},
                                                            {ProfileStep::Operator, 7},
                                                            {ProfileStep::ClocksAndColumns, 44},
                                                            {ProfileStep::FontAndOffset, 47}};
    for (std::size_t count = 0; count <= count_of_fields; ++count) {
      CAPTURE(count);
      const std::string text = text_of(std::vector<std::string>(count, "7"));
      const auto done = static_cast<std::size_t>(std::ranges::count_if(
          last_fields, [&](const auto& step) { return step.second <= count; }));
      CHECK(read(text).steps.size() == done);
      // A text that isn't ended is no field.
      CHECK(read(text + "7").steps.size() == done);
    }
  }

  TEST_CASE("what is no number in 16 bits says nothing") {
    for (const char* text : {"", " ", "x", "7x", "--7", "32768", "-32769", "1e9", "nan", "0x10"}) {
      CAPTURE(text);
      const ProfileValues values = read(text_of(all_fields(text))).values;
      CHECK_FALSE(values.height);
      CHECK_FALSE(values.warning1);
      CHECK_FALSE(values.columns[10].width);
      CHECK_FALSE(values.time_offset);
    }
    CHECK(read(text_of(all_fields(" -7 "))).values.height == -7);
    CHECK(read(text_of(all_fields("8.25"))).values.font_size == 8);
  }

  TEST_CASE("a text with control characters says nothing") {
    for (const char* text : {"", "  ", "a\nb", "a\tb", "\x7f", "\2"}) {
      const ProfileValues values = read(text_of(all_fields(text))).values;
      CHECK_FALSE(values.show_data_file);
      CHECK_FALSE(values.database);
      CHECK_FALSE(values.operator_name);
      CHECK_FALSE(values.hot_list);
      CHECK_FALSE(values.font_name);
    }
    CHECK(read(text_of(all_fields(" a b "))).values.database == "a b");
  }

  TEST_CASE("a column is shown by a T, hidden by anything else, and neither by nothing") {
    for (const auto& [text, shown] : std::map<std::string, std::optional<bool>>{
             {"T", true}, {"F", false}, {"t", false}, {"99", false}, {"", std::nullopt}}) {
      CHECK(read(text_of(all_fields(text))).values.columns[0].shown == shown);
    }
  }

  TEST_CASE("the group is the third field, and the eighth only repeats it") {
    auto fields = all_fields("1");
    fields[2] = "4";
    fields[7] = "9";
    CHECK(read(text_of(fields)).values.group == 4);
  }

  TEST_CASE("no text that is written ends its field early") {
    CHECK(profile_field(" A\3nn\n ") == "Ann\3");
    ProfileValues values;
    values.operator_name = "A\3B";
    values.database = "/calls\4\4.mdb";
    const ProfileValues again = read(write_profile_fields(values)).values;
    CHECK(again.operator_name == "AB");
    CHECK(again.database == "/calls.mdb");
  }

  TEST_CASE("any text is read without harm") {
    check_property([](const std::string& text) { read(text); });
  }
}

TEST_SUITE("serverlink/the group of a profile") {
  std::string block_with(const std::vector<std::string>& fields) {
    return joined(std::string(count_of_flags, '0'), fields);
  }

  TEST_CASE("the group of a profile is its third field") {
    CHECK(group_of_profile(block_with({"7000", "9000", "4"})) == 4);
    CHECK(group_of_profile(block_with({"", "", "12", "0"})) == 12);
  }

  TEST_CASE("a profile that ends before its third field has no group") {
    CHECK(group_of_profile("") == no_group);
    CHECK(group_of_profile(std::string(count_of_flags, '1')) == no_group);
    CHECK(group_of_profile(block_with({"7000", "9000"})) == no_group);
    CHECK(group_of_profile(block_with({"7000", "9000"}) + "4") == no_group);
  }

  TEST_CASE("any text is survived when its group is asked for") {
    check_property([](const std::string& text) {
      const int failed = failure_number_of([&] { group_of_profile(text); });
      RC_ASSERT(failed == no_failure || failed == failure_number::overflow);
    });
  }
}

}  // namespace
}  // namespace lineweir::test
