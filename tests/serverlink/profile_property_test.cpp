#include <doctest/doctest.h>

#include <string>
#include <vector>

#include "support/any_console.h"
#include "support/profile_blocks.h"
#include "support/property_check.h"

namespace lineweir::test {
namespace {

// A console on which somebody has worked, with files that every seat has.
struct WorkedConsole : ScriptedConsole {
  explicit WorkedConsole(std::uint32_t seed, int most_lines = lines_of_large_layout) {
    offer_files(platform);
    choose_anything(console, seed, most_lines);
    take_trace();
    take_messages();
  }
};

// What the reader is to have then: the writer's profile, but for what doesn't go by it.
std::string wanted_of(Console& writer, Console& reader_before) {
  EditedProfile wanted(writer);
  const EditedProfile own(reader_before);
  for (std::size_t i = 0; i < count_of_flags; ++i) {
    if (profile_flags[i].use == FlagUse::OfSeat) wanted.flags[i] = own.flags[i];
  }
  // Where the writer has no log the reader's stays.
  if (wanted.fields[5].empty()) wanted.fields[5] = own.fields[5];
  return wanted.block();
}

// A bit of the block is another one, or bytes have come or gone.
std::string damaged(std::string block) {
  const int times = *rc::gen::inRange(1, 6);
  for (int i = 0; i < times && !block.empty(); ++i) {
    const auto place = *rc::gen::inRange<std::size_t>(0, block.size());
    switch (*rc::gen::inRange(0, 4)) {
      case 0:
        block[place] = static_cast<char>(*rc::gen::inRange(0, 256));
        break;
      case 1:
        block.erase(place, *rc::gen::inRange<std::size_t>(1, 9));
        break;
      case 2:
        block.insert(place, *rc::gen::inRange<std::size_t>(1, 9),
                     *rc::gen::element('9', '-', 'T', ' ', '/', '\3', '\2', '\xff'));
        break;
      default:
        block.insert(place, block.substr(*rc::gen::inRange<std::size_t>(0, block.size()), 20));
    }
  }
  return block;
}

// Nothing of the console is out of its range, and the show goes on.
void require_whole(ScriptedConsole& desk) {
  Console& console = desk.console;
  const MainForm& form = console.Lineweir;
  desk.platform.loop.advance(platform::Milliseconds(1200));
  RC_ASSERT(console.lines.LineCount == 10 || console.lines.LineCount == 20);
  RC_ASSERT(form.LineName.upper_bound() == console.lines.LineCount);
  RC_ASSERT(form.window_state >= int{window_normal} && form.window_state <= window_maximised);
  RC_ASSERT(form.height >= 1500 && form.height <= INT16_MAX);
  RC_ASSERT(form.width >= 1500 && form.width <= INT16_MAX);
  RC_ASSERT(console.fonts.present().size >= smallest_font);
  RC_ASSERT(console.fonts.present().size <= largest_font);
  RC_ASSERT(console.clock_state.DelayOffset < 60);
  RC_ASSERT(console.DisplayOptionForm.List1.list_count() <= 11);
  for (int column = 0; column < column_count; ++column) {
    RC_ASSERT(console.display.width_of(column) >= 0);
  }
  const std::string before = form.RealTime.caption;
  desk.platform.loop.advance(platform::Milliseconds(2000));
  RC_ASSERT(form.RealTime.caption != before);
  // What the user is told is about a file.
  for (const std::string& message : desk.take_messages()) {
    RC_ASSERT(message.find("File") != std::string::npos ||
              message.find("path") != std::string::npos ||
              message.find("file") != std::string::npos);
  }
}

TEST_SUITE("serverlink/profile properties") {
  TEST_CASE("the profile of one console brings another to the same options") {
    check_property([](std::uint32_t seed, std::uint32_t other_seed) {
      WorkedConsole writer(seed);
      WorkedConsole reader(other_seed);
      std::string wanted = wanted_of(writer.console, reader.console);
      reader.console.received_profile.SetUserProfile(block_of(writer.console));
      RC_ASSERT(reader.take_trace() == std::vector<std::string>{});
      RC_ASSERT(reader.take_messages() == std::vector<std::string>{});
      std::string again = block_of(reader.console);
      // Digits are for ten rows at most: a reader that goes over to more rows or fewer shows dials.
      wanted[36] = again[36];
      RC_ASSERT(again == wanted);
      RC_ASSERT(reader.console.show_plan.plan == writer.console.show_plan.plan);
    });
  }

  TEST_CASE("digits come and go with the profile where there is room for them on both") {
    check_property([](std::uint32_t seed, std::uint32_t other_seed) {
      WorkedConsole writer(seed, lines_of_small_layout);
      WorkedConsole reader(other_seed, lines_of_small_layout);
      reader.console.received_profile.SetUserProfile(block_of(writer.console));
      RC_ASSERT(reader.console.Lineweir.DigiClock.checked ==
                writer.console.Lineweir.DigiClock.checked);
    });
  }

  TEST_CASE("a block that ends anywhere does no harm") {
    WorkedConsole writer(1);
    const std::string block = block_of(writer.console);
    REQUIRE(block.size() > 200);
    for (std::size_t length = 0; length <= block.size(); ++length) {
      CAPTURE(length);
      WorkedConsole reader(static_cast<std::uint32_t>(length));
      reader.console.received_profile.SetUserProfile(block.substr(0, length));
      CHECK(reader.take_trace().empty());
      CHECK(reader.take_messages().empty());
      require_whole(reader);
    }
  }

  TEST_CASE("a block that is damaged anyhow does no harm") {
    check_property([](std::uint32_t seed, std::uint32_t other_seed) {
      WorkedConsole writer(seed);
      WorkedConsole reader(other_seed);
      reader.console.received_profile.SetUserProfile(damaged(block_of(writer.console)));
      require_whole(reader);
    });
  }

  TEST_CASE("any text does no harm") {
    check_property([](std::uint32_t seed, const std::string& text) {
      WorkedConsole reader(seed);
      reader.console.received_profile.SetUserProfile(text);
      require_whole(reader);
    });
  }
}

}  // namespace
}  // namespace lineweir::test
