#pragma once

#include <cstdint>
#include <map>
#include <span>
#include <string>
#include <vector>

#include "platform/remote_objects.h"
#include "platform/scripted/virtual_event_loop.h"

namespace lineweir::fuzz {

// The objects of a server that answers and calls back anything, as the bytes decide it: a right
// answer, one of another type, no member of that name, no answer at all, or an answer that takes
// its time while calls come in.
class AnyRemoteObjects final : public platform::RemoteObjects {
 public:
  using Value = platform::RemoteValue;
  using Values = std::vector<Value>;

  // The loop outlives the objects.
  AnyRemoteObjects(platform::VirtualEventLoop& loop, std::span<const std::uint8_t> bytes)
      : loop_(loop), bytes_(bytes) {}

  std::unique_ptr<platform::RemoteObject> create(const std::string& class_name) override;

  // What decides the rest.
  bool has_bytes() const { return !bytes_.empty(); }
  std::uint8_t next();
  std::string text();

  // The other program calls a method, with the right arguments and any others.
  void call_back_anything();
  void call_back(const std::string& method, const Values& arguments);
  void tell_presence(bool present);
  // From now on the program is there and its answers are right.
  void become_sound();

  // The right answers by member.
  std::map<std::string, Value, std::less<>> answers;
  // The first thing that no console may ask for; empty where there was none.
  std::string fault;
  // How many calls were to be answered.
  int calls = 0;

 private:
  class Object;

  Value use(std::string_view member, const Values& arguments);
  void tell(std::string_view member, const Values& arguments,
            const platform::RemoteObject::Failed& failed);
  void look_at(std::string_view member, const Values& arguments);
  Value right_answer(std::string_view member) const;
  Value any_value();

  platform::VirtualEventLoop& loop_;
  std::span<const std::uint8_t> bytes_;
  bool present_ = true;
  bool sound_ = false;
};

}  // namespace lineweir::fuzz
