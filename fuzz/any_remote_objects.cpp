#include "any_remote_objects.h"

#include <iterator>
#include <limits>
#include <memory>
#include <string_view>

#include "base/failure.h"

namespace lineweir::fuzz {
namespace {

using platform::Milliseconds;
using platform::RemoteValue;

constexpr int most_lines = 20;

constexpr std::int64_t numbers[] = {0,
                                    1,
                                    2,
                                    3,
                                    10,
                                    11,
                                    21,
                                    -1,
                                    255,
                                    32'767,
                                    32'768,
                                    std::numeric_limits<int>::max(),
                                    std::numeric_limits<int>::min(),
                                    std::numeric_limits<std::int64_t>::max(),
                                    std::numeric_limits<std::int64_t>::min(),
                                    16'777'215};

constexpr std::string_view texts[] = {
    "F00R01H02S03N04C05L06P07O08K09",
    "R00R01R02R03R04R05R06R07R08R09",
    "F00F01F02F03F04F05F06F07F08F09F10F11F12F13F14F15F16F17F18F19",
    "N00",
    "U05",
    "U",
    "",
    "ERROR",
    "True\3False\3True\3True\0031\0032\0030\3",
    "09:59:00\3"
    "25:61:99\00310:00:00\3",
    "0\3",
    "Morning\3Late Show\3",
    "\3\3\3\3",
    "Zoe\2Ann\2Elm Street\2Springfield\2\2\0025550100\2\2\2words\2\2",
    "Zoe\3weather at ten",
    "4142x3",
};

struct Method {
  const char* name;
  // i and s, as the interface tells them.
  const char* arguments;
};

constexpr Method methods[] = {
    {"ReturnCommand", "s"},        {"ReturnCallerData", "sii"}, {"ReturnNextCall", "ii"},
    {"ReturnMessageData", "siii"}, {"ReturnSomething", "i"},
};

constexpr int failures[] = {failure_number::no_such_class, failure_number::no_answer,
                            failure_number::type_mismatch, 438};

bool is_group(const RemoteValue& value) {
  const auto* number = std::get_if<std::int64_t>(&value);
  return number != nullptr && *number >= 1;
}

// From 1, or 0 for none.
bool is_line(const RemoteValue& value) {
  const auto* number = std::get_if<std::int64_t>(&value);
  return number != nullptr && *number >= 0 && *number <= most_lines;
}

}  // namespace

class AnyRemoteObjects::Object final : public platform::RemoteObject {
 public:
  explicit Object(AnyRemoteObjects& owner) : owner_(owner) {}

  RemoteValue call(std::string_view member, const Values& arguments) override {
    return owner_.use(member, arguments);
  }
  void tell(std::string_view member, const Values& arguments, Failed failed) override {
    owner_.tell(member, arguments, failed);
  }

 private:
  AnyRemoteObjects& owner_;
};

std::unique_ptr<platform::RemoteObject> AnyRemoteObjects::create(const std::string&) {
  if (!present_) throw Failure(failure_number::no_such_class, "absent");
  return std::make_unique<Object>(*this);
}

std::uint8_t AnyRemoteObjects::next() {
  if (bytes_.empty()) return 0;
  const std::uint8_t byte = bytes_.front();
  bytes_ = bytes_.subspan(1);
  return byte;
}

std::string AnyRemoteObjects::text() {
  const std::uint8_t length = next();
  if (length >= 200) return std::string(texts[length % std::size(texts)]);
  if (length >= 198) return std::string(40'000, 'x');
  std::string taken;
  while (taken.size() < length && !bytes_.empty()) taken += static_cast<char>(next());
  return taken;
}

RemoteValue AnyRemoteObjects::any_value() {
  const std::uint8_t kind = next();
  switch (kind % 4) {
    case 0:
      return numbers[kind / 4U % std::size(numbers)];
    case 1:
      return kind < 128;
    case 2:
      return text();
    default:
      return {};
  }
}

void AnyRemoteObjects::call_back_anything() {
  const std::uint8_t which = next();
  const Method& method = methods[which % std::size(methods)];
  Values arguments;
  for (const char* type = method.arguments; *type != '\0'; ++type) {
    if (which >= 224) {
      arguments.push_back(any_value());
    } else if (*type == 's') {
      arguments.emplace_back(text());
    } else {
      arguments.emplace_back(numbers[next() % std::size(numbers)]);
    }
  }
  if (which >= 248) arguments.resize(next() % 6);
  call_back(method.name, arguments);
}

void AnyRemoteObjects::call_back(const std::string& method, const Values& arguments) {
  loop_.schedule(Milliseconds{0}, [this, method, arguments] { on_callback(method, arguments); });
}

void AnyRemoteObjects::tell_presence(bool present) {
  present_ = present;
  loop_.schedule(Milliseconds{0}, [this, present] { on_presence(present); });
}

void AnyRemoteObjects::become_sound() {
  sound_ = true;
  bytes_ = {};
  tell_presence(true);
}

RemoteValue AnyRemoteObjects::use(std::string_view member, const Values& arguments) {
  look_at(member, arguments);
  ++calls;
  if (!present_) throw Failure(failure_number::no_such_class, "absent");
  const std::uint8_t kind = sound_ ? 0 : next();
  switch (kind % 8) {
    case 1:
      throw Failure(failures[kind / 8U % std::size(failures)], "refused");
    case 2:
      return any_value();
    case 3:
      return text();
    case 4:
      for (int passes = kind / 64; passes > 0; --passes) {
        call_back_anything();
        loop_.yield();
      }
      return right_answer(member);
    default:
      return right_answer(member);
  }
}

void AnyRemoteObjects::tell(std::string_view member, const Values& arguments,
                            const platform::RemoteObject::Failed& failed) {
  look_at(member, arguments);
  if (!present_) throw Failure(failure_number::no_such_class, "absent");
  const std::uint8_t kind = sound_ ? 0 : next();
  if (kind % 8 == 1) throw Failure(failures[kind / 8U % std::size(failures)], "refused");
  if (kind % 8 == 2 && failed) {
    loop_.schedule(Milliseconds(kind),
                   [failed] { failed(Failure(failure_number::no_answer, "late")); });
  }
}

RemoteValue AnyRemoteObjects::right_answer(std::string_view member) const {
  const auto found = answers.find(member);
  return found == answers.end() ? RemoteValue{} : found->second;
}

void AnyRemoteObjects::look_at(std::string_view member, const Values& arguments) {
  const auto has_text = [&](std::size_t place) {
    return std::holds_alternative<std::string>(arguments[place]);
  };
  bool holds = false;
  if (member == "InputSerialPort") {
    holds = arguments.size() == 2 && is_group(arguments[0]) && has_text(1);
  } else if (member == "SetNextCall") {
    holds = arguments.size() == 2 && is_line(arguments[0]) && is_group(arguments[1]);
  } else if (member == "CallerDataServer") {
    holds = arguments.size() == 3 && is_line(arguments[0]) && is_group(arguments[1]) && has_text(2);
  } else if (member == "MessageGroupData") {
    holds = arguments.size() == 4 && is_group(arguments[0]) && has_text(3);
  } else if (member == "GetStudioNames") {
    holds = arguments.empty();
  } else if (member.ends_with("ObjectReference")) {
    holds = arguments.size() == 2 && has_text(0) && is_group(arguments[1]);
  } else {
    holds = answers.contains(member) && arguments.size() == 1 && is_group(arguments[0]);
  }
  if (!holds && fault.empty()) fault = "what is asked of " + std::string(member);
}

}  // namespace lineweir::fuzz
