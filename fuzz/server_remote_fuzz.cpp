// Callers of a server's published objects, beside a console on a socket: any member with any
// arguments, callers that leave, calls and changes of lines in between. Only who has asked to be
// called back is, about its own group alone and with the truth.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <span>

#include "server/scripted_remote_service.h"
#include "server/server_room.h"
#include "server/table_witness.h"

using namespace lineweir;
using namespace lineweir::server;
using platform::RemoteArgument;
using platform::RemoteArguments;

namespace {

void require(bool holds, const char* what) {
  if (holds) return;
  std::fprintf(stderr, "wrong: %s\n", what);
  std::abort();
}

struct Member {
  const char* name;
  // i and s, as the interface tells them; o is a client's object.
  const char* arguments;
  // The place of the group, or -1.
  int group_place;
};

constexpr Member members[] = {
    {"AddObjectReference", "oi", 1},
    {"DropObjectReference", "oi", 1},
    {"InputSerialPort", "is", 0},
    {"OutputSerialPort", "i", 0},
    {"GetDimType", "i", 0},
    {"GetLineNumbers", "i", 0},
    {"GetStudioNames", "", -1},
    {"GetStudioStatus", "i", 0},
    {"gettimes", "i", 0},
    {"SetNextCall", "ii", 1},
    {"CallerDataServer", "iis", 1},
    {"MessageGroupData", "iiis", 0},
    {"NoMember", "i", -1},
};

constexpr int numbers[] = {0,  1,  2,   3,
                           9,  10, 11,  20,
                           21, -1, 255, std::numeric_limits<int>::min(),
                           65, 1,  2,   std::numeric_limits<int>::max()};
constexpr const char* objects[] = {"/a", "/b", ""};
constexpr const char* callers[] = {":1.1", ":1.2", ":1.3"};
constexpr const char* words[] = {"N00", "P01", "F00", "H01", "S01", "L00", "O02", "P15",
                                 "P20", "X",   "U05", "Q00", "",    "M",   "C19", "Z05"};

// Who asks to be called back, by caller and group: the object.
using Asked = std::map<std::pair<std::string, int>, std::string>;

class RemoteSteps {
 public:
  explicit RemoteSteps(std::span<const std::uint8_t> bytes)
      : bytes_(bytes), room_(options(next())) {
    room_.server->publish(service_);
    console_ = room_.seat("host", 1 + next() % 2);
  }

  void play() {
    while (!bytes_.empty()) {
      take_step();
      look();
    }
    for (const char* caller : callers) leave(caller);
    console_->hang_up();
    room_.wait(std::chrono::minutes(2));
    require(room_.figure("seats_let_in") == 0, "seats stay");
    require(room_.loop.scheduled() <= 2, "calls stay");
    room_.crash();
    require(!service_.on_call && !service_.on_gone, "handlers stay");
  }

 private:
  static ServerOptions options(std::uint8_t byte) {
    ServerOptions options = ServerRoom::two_studios();
    options.groups[0].kind = 1 + byte % 4;
    options.groups[1].lines = 20;
    options.groups[1].missing_lines = {2};
    return options;
  }

  std::uint8_t next() {
    if (bytes_.empty()) return 0;
    const std::uint8_t byte = bytes_.front();
    bytes_ = bytes_.subspan(1);
    return byte;
  }

  std::string text() {
    const std::uint8_t length = next();
    if (length >= 200) return words[length % 16];
    // A record of caller data, and a text that is too long for anything.
    if (length >= 198) return std::string(11, field_end);
    if (length >= 196) return std::string(40'000, 'x');
    std::string taken;
    while (taken.size() < length && !bytes_.empty()) taken += static_cast<char>(next());
    return taken;
  }

  void take_step() {
    const std::uint8_t step = next();
    switch (step % 8) {
      case 0:
        return leave(callers[step / 8 % 3]);
      case 1:
        return work_exchange();
      case 2:
        return room_.wait(platform::Milliseconds(next() * next()));
      case 3:
        console_->word("NHSFPL"[next() % 6], next() % 20, next() % 2, next() % 2);
        return;
      default:
        return call(callers[step / 8 % 3]);
    }
  }

  void work_exchange() {
    const std::uint8_t what = next();
    exchange::SimulatedExchange& exchange = room_.exchange(1 + what % 2);
    if ((what & 2U) != 0) {
      exchange.arrive(next() % 20, text());
    } else {
      exchange.leave(next() % 20);
    }
  }

  void call(const std::string& caller) {
    const Member& member = members[next() % std::size(members)];
    RemoteArguments arguments;
    for (const char* type = member.arguments; *type != '\0'; ++type) {
      if (*type == 'i') arguments.emplace_back(numbers[next() % std::size(numbers)]);
      if (*type == 's') arguments.emplace_back(text());
      if (*type == 'o') arguments.emplace_back(std::string(objects[next() % 3]));
    }
    const auto result = service_.call(caller, member.name, arguments);
    note(caller, member, arguments, result);
  }

  void note(const std::string& caller, const Member& member, const RemoteArguments& arguments,
            const std::optional<RemoteArgument>& result) {
    const std::string name = member.name;
    const int group = member.group_place < 0
                          ? 0
                          : std::get<int>(arguments[static_cast<std::size_t>(member.group_place)]);
    const bool there = group == 1 || group == 2;
    if (name == "NoMember") return require(!result, "a member that isn't there");
    if (name == "GetStudioNames" || name == "GetStudioStatus") {
      return require(result && std::holds_alternative<std::string>(*result), "a text");
    }
    require(result.has_value() == there, "a call of a group that isn't there");
    if (!there) return;
    if (name == "AddObjectReference") asked_[{caller, group}] = std::get<std::string>(arguments[0]);
    if (name == "DropObjectReference" && *result == RemoteArgument(true)) {
      asked_.erase({caller, group});
    }
    if (name == "OutputSerialPort") require(*result == RemoteArgument(status(group)), "status");
    if (name == "GetDimType") require(std::holds_alternative<int>(*result), "a number");
  }

  void leave(const std::string& caller) {
    if (service_.on_gone) service_.on_gone(caller);
    std::erase_if(asked_, [&](const auto& asked) { return asked.first.first == caller; });
  }

  std::string status(int group) {
    std::string text;
    const int lines = room_.exchange(group).line_count();
    for (int line = 0; line < lines; ++line) {
      const bool missing = group == 2 && line == 1;
      text += exchange::status_item(line, missing ? 'F' : room_.exchange(group).letter(line));
    }
    return text;
  }

  void look() {
    for (const auto& told : service_.told) look_at(told);
    service_.told.clear();
    require(witness_.look_at(*console_), "a frame that isn't for the console");
    if (!console_->is_open() || !witness_.knows_lines()) return;
    const int group = witness_.group();
    for (int line = 0; line < witness_.line_count(); ++line) {
      const bool missing = group == 2 && line == 1;
      require(missing || witness_.letter(line) == room_.exchange(group).letter(line), "a letter");
    }
  }

  void look_at(const ScriptedRemoteService::Told& told) {
    const auto group_at = [&](std::size_t place) { return std::get<int>(told.arguments[place]); };
    const auto is_for = [&](int group) {
      const auto asked = asked_.find({told.caller, group});
      return asked != asked_.end() && asked->second == told.object;
    };
    require(!told.object.empty(), "an object that is none");
    if (told.member == "ReturnCommand") return require(is_for(1) || is_for(2), "a command");
    if (told.member == "ReturnCallerData") return require(is_for(group_at(2)), "caller data");
    if (told.member == "ReturnNextCall") return require(is_for(group_at(1)), "next call");
    if (told.member == "ReturnMessageData") return require(is_for(group_at(1)), "message");
    require(false, "a member that no console has");
  }

  std::span<const std::uint8_t> bytes_;
  ServerRoom room_;
  ScriptedRemoteService service_;
  std::unique_ptr<FrameConsole> console_;
  TableWitness witness_;
  Asked asked_;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  RemoteSteps({data, size}).play();
  return 0;
}
