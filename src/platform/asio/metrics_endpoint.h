#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include "platform/asio/asio_loop.h"

namespace lineweir::platform {

// Answers GET /metrics by HTTP with a text, and everything else with a refusal. One request a
// connection, which is bounded in size and time.
class MetricsEndpoint {
 public:
  // So many may ask at once; who comes then is closed.
  static constexpr int most_askers = 16;
  static constexpr Milliseconds longest_request{5000};

  // Throws std::runtime_error, whose text is a sentence. Port 0 takes a free one.
  MetricsEndpoint(AsioLoop& loop, const std::string& address, std::uint16_t port,
                  std::function<std::string()> text);
  ~MetricsEndpoint();
  MetricsEndpoint(const MetricsEndpoint&) = delete;
  MetricsEndpoint& operator=(const MetricsEndpoint&) = delete;

  std::uint16_t port() const;

 private:
  class Inside;
  class Asker;
  std::shared_ptr<Inside> inside_;
};

}  // namespace lineweir::platform
