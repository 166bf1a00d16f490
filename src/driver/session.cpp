#include "driver/session.h"

#include <filesystem>

#include "driver/refusal.h"

namespace lineweir::driver {
namespace {

// How often calls that are due at once may have made others due at once.
constexpr int settling_rounds = 100;

}  // namespace

Session::Session(platform::StreamedFiles& files)
    : Session(files, platform_.databases, platform_.letters) {}

Session::Session(platform::StreamedFiles& files, platform::DatabaseEngine& databases,
                 const Letters& letters)
    : files_(files), databases_(databases), letters_(letters) {
  platform_.dialogs.on_message = [this](const std::string& text) { messages_.push_back(text); };
}

Console& Session::console() {
  if (!console_) throw Refusal("not launched");
  return *console_;
}

void Session::launch(const std::string& command_line) {
  if (console_) throw Refusal("already launched");
  platform_.restart();
  console_.emplace(platform_.services(files_, databases_, letters_));
  console_->messages.on_shown = [this](const std::string& text) { messages_.push_back(text); };
  console_->trace.on_line = [this](const std::string& line) { trace_.push_back(line); };
  act([&] { console_->startup.Main(command_line); });
}

void Session::act(const std::function<void()>& action) {
  platform_.loop.run(action);
  for (int round = 0; round < settling_rounds; ++round) platform_.loop.run_pending();
  remove_ended_console();
}

void Session::advance(platform::Milliseconds span) {
  platform_.loop.advance(span, [this] { remove_ended_console(); });
}

void Session::delete_file(const std::string& path) {
  platform_.databases.remove(path);
  std::error_code ignored;
  std::filesystem::remove(std::filesystem::path(files_.current_directory()) / path, ignored);
}

void Session::remove_ended_console() {
  if (!platform_.ended) return;
  console_.reset();
  platform_.restart();
}

}  // namespace lineweir::driver
