#include "server/admin_steps.h"

#include <algorithm>

#include "adminlink/admin_columns.h"
#include "wire/rights_layout.h"

namespace lineweir::server {
namespace {

using namespace std::chrono_literals;
using admin::Command;
using admin::Field;
using nlohmann::json;

constexpr const char* texts[] = {"host",
                                 "screener",
                                 "anna",
                                 "only2",
                                 "",
                                 "b\tc",
                                 "Zo\xC3\xAB",
                                 "engineer",
                                 "/b.db",
                                 "/c.db",
                                 "+Dial",
                                 "-ExitMenu",
                                 "+screener",
                                 "-all",
                                 "+Fly",
                                 "\x05\x05",
                                 "\xE6\xBC\xA2",
                                 "12345678901234567890123"};

}  // namespace

AdminSteps::AdminSteps(std::span<const std::uint8_t> bytes) : bytes_(bytes) { begin_again(); }

AdminSteps::~AdminSteps() = default;

bool AdminSteps::play() {
  while (!bytes_.empty() && fault_.empty()) take_step();
  room_.store.fail(false);
  room_.wait(5s);
  look_at_store();
  return fault_.empty();
}

std::uint8_t AdminSteps::next() {
  if (bytes_.empty()) return 0;
  const std::uint8_t byte = bytes_.front();
  bytes_ = bytes_.subspan(1);
  return byte;
}

std::string AdminSteps::text() {
  const int which = next();
  if (which >= 250) return std::string(static_cast<std::size_t>(next()) * 200, 'x');
  return texts[static_cast<std::size_t>(which) % std::size(texts)];
}

admin::Value AdminSteps::value(const admin::FieldRow& field) {
  const auto number = [&] {
    return std::clamp<std::int64_t>(field.least + below(24) - 1, field.least, field.most);
  };
  switch (field.kind) {
    case admin::FieldKind::Text:
      return text();
    case admin::FieldKind::Number:
      return number();
    case admin::FieldKind::Texts: {
      std::vector<std::string> several;
      for (int left = below(4); left > 0; --left) several.push_back(text());
      return several;
    }
    case admin::FieldKind::Numbers:
      break;
  }
  std::vector<std::int64_t> several;
  for (int left = below(4); left > 0; --left) several.push_back(number());
  return several;
}

admin::Request AdminSteps::request() {
  const admin::CommandRow& row = admin::commands[next() % admin::commands.size()];
  admin::Request made{.command = row.command};
  const auto known = fields_of(row);
  for (std::size_t i = 0; i < known.size(); ++i) {
    if (i < row.needed || below(2) == 0) made.values.emplace(known[i], value(row_of(known[i])));
  }
  return made;
}

std::string AdminSteps::any_line() {
  std::string line;
  for (int left = next(); left > 0 && !bytes_.empty(); --left) {
    const char byte = static_cast<char>(next());
    if (byte != '\n') line += byte;
  }
  return line;
}

void AdminSteps::take_step() {
  switch (below(16)) {
    case 0: {
      tool_->send_bytes(any_line() + '\n');
      const auto answers = tool_->take();
      require(answers.size() == 1, "a line has " + std::to_string(answers.size()) + " answers");
      // Whatever was asked for so may still come.
      tool_ = std::make_unique<AdminTool>(room_);
      break;
    }
    case 1:
      store_fails_ = !store_fails_;
      room_.store.fail(store_fails_);
      break;
    case 2:
      room_.store.take(std::chrono::milliseconds(next() * 8));
      break;
    case 3:
      // In the middle of its work.
      tool_->send_bytes(admin::line_of(request()) + '\n');
      tool_ = std::make_unique<AdminTool>(room_);
      break;
    case 4:
      tool_->send_bytes(admin::line_of(request()) + '\n');
      begin_again();
      break;
    case 5:
      seat_ = room_.seat("host", 1 + below(2));
      break;
    default:
      ask();
  }
}

void AdminSteps::ask() {
  const admin::Request asked = request();
  look_at(tool_->ask(asked), asked.command);
  if (!tool_->is_open()) tool_ = std::make_unique<AdminTool>(room_);
}

void AdminSteps::begin_again() {
  tool_ = nullptr;
  seat_ = nullptr;
  room_.store.fail(false);
  store_fails_ = false;
  room_.crash();
  room_.store.forget_what_waits();
  room_.passwords.forget_what_waits();
  room_.start();
  room_.wait(20s);
  tool_ = std::make_unique<AdminTool>(room_);
}

void AdminSteps::look_at(const json& answer, Command command) {
  const std::string name(row_of(command).name);
  require(answer.is_object(), name + " is not answered");
  if (!fault_.empty()) return;
  require(answer.dump().size() < admin::longest_answer, name + ": the answer is too long");
  const bool done = answer.at(std::string(admin::key::ok)).get<bool>();
  const bool has_reason = answer.contains(admin::key::error);
  require(done != has_reason, name + ": no reason, or one for what was done");
  if (has_reason) {
    const auto reason = answer.at(std::string(admin::key::error)).get<std::string>();
    require(reason.ends_with('.'), name + ": no sentence: " + reason);
  } else {
    require(answer.contains(admin::key::rows) ==
                (command == Command::More || !columns_of(command).empty()),
            name + ": a list where none is, or none");
    if (!store_fails_) look_at_store();
  }
}

// Where nothing waits the store knows what the server knows.
void AdminSteps::look_at_store() {
  const platform::StoreContent& content = room_.store.content();
  require(content.verdict().first_wrong == 0, "the audit is wrong");
  for (const auto& [name, account] : content.accounts) {
    require(!account.password_hash.empty(), "an account has no password");
    for (const auto& [group, rights] : account.rights) {
      require(why_rights_cannot_travel(rights).empty(), "rights that can't be sent");
    }
  }
}

void AdminSteps::require(bool holds, const std::string& what) {
  if (!holds && fault_.empty()) fault_ = what;
}

}  // namespace lineweir::server
