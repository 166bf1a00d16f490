#include "state/server_addresses.h"

#include <algorithm>

#include "base/failure.h"
#include "base/names.h"
#include "base/text.h"
#include "state/guard.h"

namespace lineweir {
namespace {

constexpr std::string_view secured_prefix = "tls:";

bool is_number(std::string_view text) {
  return !text.empty() && std::ranges::all_of(text, is_digit);
}

[[noreturn]] void refuse(const std::string& sentence) {
  throw Failure(failure_number::invalid_argument, sentence);
}

std::string quoted(std::string_view text) { return "\"" + std::string(text) + "\""; }

int port_of(std::string_view text, std::string_view entry) {
  const int number = is_number(text) && text.size() <= 5 ? leading_number(text) : 0;
  if (number >= 1 && number <= highest_port) return number;
  refuse("The port in the address " + quoted(left_part(entry, 60)) +
         " isn't a number from 1 to 65535.");
}

// The host, and the text behind its colon where there is one.
struct HostAndPort {
  std::string_view host;
  std::string_view port;
  bool has_port = false;
};

HostAndPort parted(std::string_view text, std::string_view entry) {
  if (text.starts_with('[')) {
    const std::size_t end = text.find(']');
    if (end == std::string_view::npos) {
      refuse("The address " + quoted(left_part(entry, 60)) + " lacks a closing bracket.");
    }
    const std::string_view rest = trimmed(text.substr(end + 1));
    if (rest.empty()) return {trimmed(text.substr(1, end - 1)), {}, false};
    if (!rest.starts_with(':')) {
      refuse("Behind the bracket of the address " + quoted(left_part(entry, 60)) +
             " only a colon and a port can stand.");
    }
    return {trimmed(text.substr(1, end - 1)), trimmed(rest.substr(1)), true};
  }
  const std::size_t colon = text.find(':');
  // Several colons are those of an IPv6 address.
  if (colon == std::string_view::npos || text.find(':', colon + 1) != std::string_view::npos) {
    return {text, {}, false};
  }
  return {trimmed(text.substr(0, colon)), trimmed(text.substr(colon + 1)), true};
}

StudioServer server_of(std::string_view entry, int port) {
  std::string_view rest = entry;
  const bool secured = same_name(rest.substr(0, secured_prefix.size()), secured_prefix);
  if (secured) rest = trimmed(rest.substr(secured_prefix.size()));
  const HostAndPort parts = parted(rest, entry);
  if (parts.host.empty()) {
    refuse("The address " + quoted(left_part(entry, 60)) + " names no server.");
  }
  if (parts.host.size() > longest_server_host) {
    refuse("A server's name has at most " + std::to_string(longest_server_host) + " characters.");
  }
  StudioServer server;
  if (secured) server.host = secured_prefix;
  server.host += parts.host;
  server.port = parts.has_port ? port_of(parts.port, entry) : port;
  return server;
}

bool are_same(const StudioServer& a, const StudioServer& b) {
  return a.port == b.port && same_name(a.host, b.host);
}

}  // namespace

int port_number(std::string_view text) {
  const std::string_view digits = trimmed(text);
  if (!is_number(digits) || digits.size() > 5) {
    throw Failure(failure_number::type_mismatch, "Type mismatch");
  }
  const int number = leading_number(digits);
  if (number < 1 || number > highest_port) {
    throw Failure(failure_number::invalid_argument, "Invalid property value");
  }
  return number;
}

std::vector<StudioServer> studio_servers(std::string_view address, int port) {
  std::vector<StudioServer> servers;
  while (!address.empty()) {
    const std::size_t end = std::min(address.find(','), address.size());
    const std::string_view entry = trimmed(address.substr(0, end));
    address.remove_prefix(std::min(end + 1, address.size()));
    if (entry.empty()) continue;
    const StudioServer server = server_of(entry, port);
    const bool is_known = std::ranges::any_of(
        servers, [&](const StudioServer& other) { return are_same(other, server); });
    if (is_known) continue;
    if (servers.size() == most_servers) {
      refuse("A console can know at most " + std::to_string(most_servers) + " servers.");
    }
    servers.push_back(server);
  }
  if (servers.empty()) servers.push_back({{}, port});
  return servers;
}

std::vector<StudioServer> known_studio_servers(std::string_view address, int port) {
  std::vector<StudioServer> servers;
  attempt([&] { servers = studio_servers(address, port); },
          [&](const Failure&) {
            servers = {{std::string(trimmed(address)), port}};
          });
  return servers;
}

std::string name_of(const StudioServer& server) {
  return server.host + ", port " + std::to_string(server.port);
}

}  // namespace lineweir
