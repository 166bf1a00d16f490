#pragma once

#include <memory>
#include <string>
#include <vector>

#include "platform/remote_service.h"
#include "server/context.h"
#include "server/seat_book.h"

namespace lineweir::server {

class RemoteClient;

// Consoles and other programs that work the groups through the published objects. There is no
// login: who may call is for the bus to say.
class RemoteSeats {
 public:
  RemoteSeats(const Context& context, SeatBook& seats, Groups& groups,
              platform::RemoteService& service);
  ~RemoteSeats();
  RemoteSeats(const RemoteSeats&) = delete;
  RemoteSeats& operator=(const RemoteSeats&) = delete;

 private:
  using Arguments = platform::RemoteArguments;
  struct Member;
  static const Member* member_of(const std::string& name);

  std::optional<platform::RemoteArgument> call(const std::string& caller, const std::string& member,
                                               const Arguments& arguments);
  void forget(const std::string& caller);
  // The caller's seat in the group; one that hasn't asked to be called back gets one that hears
  // nothing.
  RemoteClient& seat_of(const std::string& caller, int group);

  // One for each member; told beside the table in the source.
  platform::RemoteArgument add_client(const std::string& caller, const Arguments& arguments);
  platform::RemoteArgument drop_client(const std::string& caller, const Arguments& arguments);
  platform::RemoteArgument obey(const std::string& caller, const Arguments& arguments);
  platform::RemoteArgument status(const std::string& caller, const Arguments& arguments);
  platform::RemoteArgument kind(const std::string& caller, const Arguments& arguments);
  platform::RemoteArgument line_numbers(const std::string& caller, const Arguments& arguments);
  platform::RemoteArgument group_names(const std::string& caller, const Arguments& arguments);
  platform::RemoteArgument studio_status(const std::string& caller, const Arguments& arguments);
  platform::RemoteArgument times(const std::string& caller, const Arguments& arguments);
  platform::RemoteArgument next_call(const std::string& caller, const Arguments& arguments);
  platform::RemoteArgument caller_data(const std::string& caller, const Arguments& arguments);
  platform::RemoteArgument message(const std::string& caller, const Arguments& arguments);

  const Context& context_;
  SeatBook& book_;
  Groups& groups_;
  platform::RemoteService& service_;
  std::vector<std::unique_ptr<RemoteClient>> seats_;
};

}  // namespace lineweir::server
