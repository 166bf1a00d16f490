#include "practice/closed_ways.h"

#include "base/failure.h"

namespace lineweir::practice {
namespace {

constexpr const char* only_practice = "This is practice: nothing leads out of it.";

}  // namespace

void ClosedPort::open() { throw Failure(failure_number::device_unavailable, only_practice); }

void ClosedPort::output(std::string_view) {
  throw Failure(failure_number::port_not_open, "Operation valid only when open");
}

std::string ClosedSocket::refusal() const { return only_practice; }

void ClosedSocket::send_data(std::string_view) {
  throw Failure(failure_number::socket_wrong_state, only_practice);
}

std::unique_ptr<platform::RemoteObject> NoRemoteObjects::create(const std::string&) {
  throw Failure(failure_number::no_such_class, only_practice);
}

}  // namespace lineweir::practice
