#include "platform/postgres/postgres_address.h"

#include <libpq-fe.h>

#include <algorithm>
#include <memory>

#include "letters/utf8.h"

namespace lineweir::platform {
namespace {

using Options = std::map<std::string, std::string>;

// What a connection of the server's has unless the URL tells it another way.
const Options usual_options = {
    {"fallback_application_name", "lineweir"},
    // Kerberos would ask its own servers while everything waits.
    {"gssencmode", "disable"},
    {"keepalives_idle", "10"},
    {"keepalives_interval", "5"},
    {"tcp_user_timeout", "15000"},
    {"target_session_attrs", "read-write"},
};

Options given_options(PQconninfoOption* options) {
  Options given;
  const std::unique_ptr<PQconninfoOption, decltype(&PQconninfoFree)> owned(options, PQconninfoFree);
  for (const auto* option = options; option != nullptr && option->keyword != nullptr; ++option) {
    if (option->val != nullptr && *option->val != '\0') given[option->keyword] = option->val;
  }
  return given;
}

std::vector<std::string> parts_of(const std::string& list) {
  std::vector<std::string> parts(1);
  for (const char c : list) {
    if (c == ',') {
      parts.emplace_back();
    } else {
      parts.back() += c;
    }
  }
  return parts;
}

bool is_port(const std::string& text) {
  constexpr std::size_t longest = 5;
  return text.size() <= longest &&
         std::ranges::all_of(text, [](char c) { return c >= '0' && c <= '9'; });
}

// A password whose "@" or "/" isn't written as %40 or %2F shows as one of these in what follows it.
bool is_name(const std::string& text) {
  return is_utf8(text) && text.find_first_of("@/:'\"\\") == std::string::npos &&
         std::ranges::none_of(text, [](char c) { return static_cast<unsigned char>(c) <= ' '; });
}

bool is_host(const std::string& text) {
  if (text.starts_with('/')) return text.find('@') == std::string::npos && is_utf8(text);
  return std::ranges::all_of(text, [](char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '.' ||
           c == '-' || c == '_' || c == ':' || c == '%';
  });
}

std::string take(Options& options, const std::string& key) {
  const auto found = options.extract(key);
  return found.empty() ? std::string() : found.mapped();
}

// Nothing where the lists don't fit each other.
std::optional<std::vector<PostgresHost>> hosts_of(const std::string& names,
                                                  const std::string& addresses,
                                                  const std::string& ports) {
  const auto all_names = parts_of(names);
  const auto all_addresses = parts_of(addresses);
  const auto all_ports = parts_of(ports);
  const std::size_t count = std::max(all_names.size(), all_addresses.size());
  const auto fits = [count](const auto& list) { return list.size() == 1 || list.size() == count; };
  if (!fits(all_ports) || (!addresses.empty() && all_addresses.size() != count) ||
      (!names.empty() && all_names.size() != count)) {
    return std::nullopt;
  }
  std::vector<PostgresHost> hosts;
  for (std::size_t i = 0; i < count; ++i) {
    hosts.push_back({.name = names.empty() ? "" : all_names[i],
                     .address = addresses.empty() ? "" : all_addresses[i],
                     .port = all_ports.size() == 1 ? all_ports[0] : all_ports[i]});
    const PostgresHost& host = hosts.back();
    if (!is_host(host.name) || !is_host(host.address) || !is_port(host.port)) return std::nullopt;
  }
  return hosts;
}

}  // namespace

bool PostgresAddress::is_meant(std::string_view text) {
  return text.starts_with("postgresql:") || text.starts_with("postgres:");
}

std::optional<PostgresAddress> PostgresAddress::read(const std::string& url) {
  if (!url.starts_with("postgresql://") && !url.starts_with("postgres://")) return std::nullopt;
  Options options = given_options(PQconninfoParse(url.c_str(), nullptr));
  const std::string database = options["dbname"];
  // A service's file could name hosts, which would be looked up while everything waits.
  if (database.empty() || !is_name(database) || options.contains("service")) return std::nullopt;
  // What the environment tells is taken where the URL tells nothing.
  Options usual = given_options(PQconndefaults());
  std::string names = take(options, "host");
  std::string addresses = take(options, "hostaddr");
  std::string ports = take(options, "port");
  if (names.empty() && addresses.empty()) {
    names = usual["host"];
    addresses = usual["hostaddr"];
  }
  if (ports.empty()) ports = usual["port"];
  auto hosts = hosts_of(names, addresses, ports);
  if (!hosts) return std::nullopt;

  PostgresAddress address;
  address.hosts_ = std::move(*hosts);
  const std::string where = names.empty() ? addresses : names;
  address.shown_ =
      "the database '" + database + "' on " + (where.empty() ? "this machine" : "'" + where + "'");
  address.options_ = std::move(options);
  // The letters are the store's own matter.
  address.options_["client_encoding"] = "UTF8";
  for (const auto& [key, value] : usual_options) address.options_.try_emplace(key, value);
  return address;
}

std::string PostgresAddress::user() const {
  const auto found = options_.find("user");
  return found == options_.end() ? std::string() : found->second;
}

}  // namespace lineweir::platform
