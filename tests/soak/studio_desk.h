#pragma once

#include <string>
#include <utility>

#include "core/console.h"
#include "platform/scripted/scripted_platform.h"
#include "studio/boxed_exchange.h"
#include "support/recording_databases.h"

namespace lineweir::test {

// A console with the simulated studio at the other end of its serial line, in virtual time. What
// the line carries is handed over every 20 ms. Its call log stores nothing and writes down what it
// is told.
class StudioDesk {
 public:
  explicit StudioDesk(studio::BoxedExchangeOptions options) : exchange(std::move(options)) {
    console.startup.Main({});
    console.Lineweir.Data1.database_name = "calls.lwl";
    hand_over();
    console.Lineweir.PortOn.on_click();
  }

  void pass(platform::Milliseconds span) { platform.loop.advance(span); }

  studio::BoxedExchange exchange;
  RecordingDatabases databases;
  platform::ScriptedPlatform platform;
  Console console{platform.services(platform.files, databases)};

 private:
  void hand_over() {
    const platform::Milliseconds now = platform.loop.now();
    for (const std::string& word : platform.comm1.take_writes()) exchange.receive(word, now);
    exchange.advance(now);
    exchange.take_records();
    const std::string said = exchange.take_output();
    if (!said.empty()) platform.comm1.arrive(said);
    platform.loop.schedule(platform::Milliseconds(20), [this] { hand_over(); });
  }
};

}  // namespace lineweir::test
