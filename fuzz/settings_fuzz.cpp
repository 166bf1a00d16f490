// A console's start from a settings file and further settings of any bytes, and its next starts
// from what the one before has saved. Nothing may crash or hang, whatever is shown has a size, and
// a third start finds what the second one left.

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "core/further_settings.h"
#include "screen/fonts.h"
#include "state/settings_record.h"
#include "support/scripted_console.h"

namespace {

using namespace lineweir;

void require(bool holds) {
  if (!holds) std::abort();
}

std::string saved_by_start(const std::string& settings, const std::string& further) {
  platform::ScriptedPlatform platform;
  platform.files.replace(std::string(settings_file_name), settings);
  platform.files.replace(std::string(further_settings_file), further);
  Console console(platform.services());
  console.startup.Main("");
  platform.loop.advance(platform::Milliseconds(2000));
  require(console.Lineweir.width > 0 && console.Lineweir.height > 0);
  require(console.lines.LineCount == lines_of_small_layout ||
          console.lines.LineCount == lines_of_large_layout);
  require(console.program.GroupNumber >= 1);
  require(console.Lineweir.LineName(0).font.size >= smallest_font);
  require(console.Lineweir.LineName(0).font.size <= largest_font);
  return encode_settings(console.settings.collect());
}

}  // namespace

// The first two bytes are the length of the further settings.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size < 2) return 0;
  const std::string bytes(reinterpret_cast<const char*>(data) + 2, size - 2);
  const std::size_t further = data[0] + 256u * data[1];
  const std::string texts = bytes.substr(0, further);
  const std::string record = bytes.size() > further ? bytes.substr(further) : std::string();
  const std::string saved = saved_by_start(record, texts);
  require(saved.size() == settings_record_size);
  // A start may choose what the record before it doesn't name, as a plan that is there.
  const std::string chosen = saved_by_start(saved, texts);
  const std::string again = saved_by_start(chosen, texts);
  for (const SettingsField& field : settings_fields) {
    if (again.compare(field.offset, field.width, chosen, field.offset, field.width) == 0) continue;
    std::fprintf(stderr, "the field at %zu isn't what was saved\n", field.offset);
    std::abort();
  }
  return 0;
}
