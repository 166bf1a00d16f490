#include "platform/asio/open_port.h"

#include <boost/asio/ip/v6_only.hpp>
#include <stdexcept>

namespace lineweir::platform {

namespace {

using boost::asio::ip::tcp;

constexpr int backlog_of_seats = 2048;

std::string text_of(const tcp::endpoint& endpoint) {
  const std::string address = endpoint.address().to_string();
  return (endpoint.address().is_v6() ? "[" + address + "]" : address) + ":" +
         std::to_string(endpoint.port());
}

}  // namespace

tcp::acceptor open_port(boost::asio::io_context& context, const std::string& address,
                        std::uint16_t port) {
  const tcp::endpoint endpoint(boost::asio::ip::make_address(address), port);
  try {
    tcp::acceptor acceptor(context, endpoint.protocol());
    acceptor.set_option(tcp::acceptor::reuse_address(true));
    // An address of version 6 means those of version 6, also where it means all.
    if (endpoint.address().is_v6()) acceptor.set_option(boost::asio::ip::v6_only(true));
    acceptor.bind(endpoint);
    acceptor.listen(backlog_of_seats);
    return acceptor;
  } catch (const boost::system::system_error& error) {
    throw std::runtime_error("Can't listen on " + text_of(endpoint) + ": " +
                             error.code().message());
  }
}

}  // namespace lineweir::platform
