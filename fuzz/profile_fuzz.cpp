// A profile that holds anything, on a console on which somebody has worked. Nothing may crash,
// hang, or come out of its range, and what the console then writes brings it to the same again.

#include <cstddef>
#include <cstdint>
#include <cstdlib>

#include "support/any_console.h"
#include "support/profile_blocks.h"

namespace {

using namespace lineweir;

void require(bool holds) {
  if (!holds) std::abort();
}

void advance(test::ScriptedConsole& desk) {
  desk.platform.loop.advance(platform::Milliseconds(1200));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  test::ScriptedConsole desk;
  Console& console = desk.console;
  test::offer_files(desk.platform);
  test::choose_anything(console, data[0]);
  console.received_profile.SetUserProfile({reinterpret_cast<const char*>(data) + 1, size - 1});
  advance(desk);

  require(console.lines.LineCount == lines_of_small_layout ||
          console.lines.LineCount == lines_of_large_layout);
  require(console.DisplayOptionForm.List1.list_count() <= optional_column_count);
  require(console.fonts.present().size >= smallest_font);
  require(console.fonts.present().size <= largest_font);
  require(console.Lineweir.height > 0 && console.Lineweir.width > 0);

  // Places that were beyond the list have come into it.
  console.received_profile.SetUserProfile(test::block_of(console));
  advance(desk);
  const std::string own = test::block_of(console);
  console.received_profile.SetUserProfile(own);
  advance(desk);
  require(test::block_of(console) == own);
  return 0;
}
