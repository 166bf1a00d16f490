#include "serverd/configuration.h"

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "letters/code_pages.h"
#include "letters/utf8.h"
#include "platform/postgres/postgres_address.h"
#include "serverd/configuration_table.h"
#include "serverd/group_settings.h"

namespace lineweir::serverd {

namespace {

namespace fs = std::filesystem;

constexpr std::size_t longest_file = 1 << 20;
constexpr std::size_t most_addresses = 64;
constexpr int most_seats = 100'000;
constexpr int longest_shutdown = 3600;
constexpr int longest_user_name = 20;
constexpr std::string_view sqlite = "sqlite:";

std::string path_in(const fs::path& folder, const std::string& path) {
  return (folder / path).lexically_normal().string();
}

SocketAddress address_of(const ConfigurationTable& table, std::string_view key,
                         const std::string& text, std::string_view expected) {
  const auto address = read_socket_address(text);
  if (!address) table.refuse(key, std::string(expected) + ", not \"" + text + "\"");
  return *address;
}

void read_listen(ConfigurationTable& table, bool is_array, Configuration& configuration) {
  constexpr std::string_view expected =
      "an address and a port, such as \"127.0.0.1:2001\" or \"[::1]:2001\", or an array of them";
  std::vector<SocketAddress> addresses;
  const auto add = [&](const std::string& text) {
    const SocketAddress address = address_of(table, "listen", text, expected);
    if (address.port != 0 && std::ranges::find(addresses, address) != addresses.end()) {
      table.refuse("listen", "each address once, not " + address.text() + " twice");
    }
    addresses.push_back(address);
  };
  if (is_array) {
    table.each_text("listen", expected,
                    [&](const std::string& text, const toml::node&) { add(text); });
    if (addresses.empty() || addresses.size() > most_addresses) {
      table.refuse("listen", "1 to " + std::to_string(most_addresses) + " addresses");
    }
  } else if (const auto text = table.text("listen", expected)) {
    add(*text);
  }
  if (!addresses.empty()) configuration.listen = std::move(addresses);
}

// Beside the configuration, or in the folder that systemd has made for the server.
std::string usual_data_folder(const fs::path& folder) {
  const char* const state = std::getenv("STATE_DIRECTORY");
  return state != nullptr && *state == '/' ? state : folder.string();
}

void read_store(ConfigurationTable& table, const fs::path& folder, Configuration& configuration) {
  constexpr std::string_view a_file = "\"sqlite:\" and a file";
  const std::string expected =
      std::string(a_file) + ", or " + std::string(platform::PostgresAddress::form);
  const std::string store = table.text("store", expected).value_or("sqlite:server.db");
  if (platform::PostgresAddress::read(store)) {
    configuration.store_database = store;
    configuration.data_folder = usual_data_folder(folder);
    return;
  }
  // What isn't right isn't shown where it may hold a password.
  const bool is_file = store.starts_with(sqlite);
  if (!is_file && (store.find('@') != std::string::npos || store.find("//") != std::string::npos ||
                   platform::PostgresAddress::is_meant(store))) {
    table.refuse("store", expected);
  }
  if (!is_file || store.size() == sqlite.size()) {
    table.refuse("store", expected + ", not \"" + store + "\"");
  }
  configuration.store_file = path_in(folder, store.substr(sqlite.size()));
  configuration.data_folder = fs::path(configuration.store_file).parent_path().string();
}

void read_standby(ConfigurationTable& table, Configuration& configuration) {
  configuration.standby = table.flag("standby").value_or(false);
  if (!configuration.standby || !configuration.store_database.empty()) return;
  table.refuse("standby", "a database as the store, which several servers can share");
}

// A name of its own for each of several servers that keep theirs in one folder.
std::string journal_file(const Configuration& configuration, const fs::path& file) {
  constexpr const char* suffix = ".waiting";
  if (!configuration.store_file.empty()) return configuration.store_file + suffix;
  return (fs::path(configuration.data_folder) / file.stem()).string() + suffix;
}

void read_metrics(ConfigurationTable& table, Configuration& configuration) {
  constexpr std::string_view expected = "an address of the loopback and a port, \"127.0.0.1:9100\"";
  const auto text = table.text("metrics", expected);
  if (!text) return;
  configuration.metrics = address_of(table, "metrics", *text, expected);
  if (!configuration.metrics->is_loopback()) {
    table.refuse("metrics", std::string(expected) + ", not \"" + *text + "\"");
  }
}

void read_tls(ConfigurationTable& top, const fs::path& folder, Configuration& configuration) {
  auto table = top.table("tls");
  if (!table) return;
  configuration.tls = true;
  constexpr std::string_view a_certificate = "a file with a certificate";
  constexpr std::string_view a_key = "a file with the certificate's key";
  const auto certificate = table->text("certificate", a_certificate);
  const auto key = table->text("key", a_key);
  table->refuse_unknown();
  if (!certificate && !key) return;
  if (!certificate) table->refuse("certificate", a_certificate);
  if (!key) table->refuse("key", a_key);
  configuration.tls_files = TlsFiles{path_in(folder, *certificate), path_in(folder, *key),
                                     table->line("certificate"), table->line("key")};
}

void read_remote_objects(ConfigurationTable& table, Configuration& configuration) {
  constexpr std::string_view expected = "\"session\" or \"system\"";
  const auto bus = table.text("remote_objects", expected);
  if (!bus) return;
  if (*bus != "session" && *bus != "system") {
    table.refuse("remote_objects", std::string(expected) + ", not \"" + *bus + "\"");
  }
  configuration.remote_objects = *bus == "session" ? RemoteBus::Session : RemoteBus::System;
}

void read_character_set(ConfigurationTable& table, Configuration& configuration) {
  constexpr std::string_view expected = "the name of a character set, such as \"windows-1252\"";
  const auto name = table.text("character_set", expected);
  if (!name) return;
  if (find_code_page(*name) == nullptr) {
    table.refuse("character_set", std::string(expected) + ", not \"" + *name + "\"");
  }
  configuration.character_set = *name;
}

void read_fixed_seat(ConfigurationTable& table, server::ServerOptions& server) {
  constexpr std::string_view expected = "the address of a machine, such as \"192.168.1.20\"";
  const auto text = table.text("address", expected);
  const auto address = text ? usual_address(*text) : std::nullopt;
  if (!address) table.refuse("address", expected);
  if (std::ranges::find(server.fixed_seats, *address, &server::FixedSeat::address) !=
      server.fixed_seats.end()) {
    table.refuse("address", "each address once, not " + *address + " twice");
  }
  const std::string a_user =
      "the name of a user, at most " + std::to_string(longest_user_name) + " characters";
  const auto user = table.text("user", a_user);
  if (!user || cut_to_size(*user, longest_user_name).size() < user->size()) {
    table.refuse("user", a_user);
  }
  server.fixed_seats.push_back({*address, *user});
}

void add_group(ConfigurationTable& table, const fs::path& folder, server::ServerOptions& server) {
  server::GroupOptions group = read_group(table, folder);
  for (const server::GroupOptions& other : server.groups) {
    if (other.number == group.number) {
      table.refuse("number", "each number once, not " + std::to_string(group.number) + " twice");
    }
    if (other.exchange == group.exchange && group.exchange != "simulated") {
      table.refuse("exchange", "each box in one group, not \"" + group.exchange + "\" twice");
    }
  }
  server.groups.push_back(std::move(group));
}

// A name or a number of a machine; a number of IPv6 stands in brackets.
bool is_host(std::string_view text) {
  constexpr std::string_view digits = "0123456789";
  constexpr std::string_view letters = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ";
  const bool in_brackets = text.starts_with('[') && text.ends_with(']');
  if (in_brackets) text = text.substr(1, text.size() - 2);
  const std::string allowed =
      std::string(digits) + std::string(letters) + (in_brackets ? ":.%" : ".-_");
  return !text.empty() && text.front() != '-' &&
         text.find_first_not_of(allowed) == std::string_view::npos;
}

// What the consoles take as a server's address.
void read_address(ConfigurationTable& table, server::ServerOptions& server) {
  constexpr std::string_view expected =
      "how consoles reach this server, such as \"studio-a:2001\" or \"tls:studio-a:2001\"";
  constexpr std::string_view tls = "tls:";
  constexpr std::size_t longest = 200;
  const auto text = table.text("address", expected);
  if (!text) return;
  const std::string place = text->starts_with(tls) ? text->substr(tls.size()) : *text;
  const std::size_t colon = place.rfind(':');
  int port = 0;
  const char* const end = place.data() + place.size();
  const bool has_port = colon != std::string::npos && colon != 0 &&
                        std::from_chars(place.data() + colon + 1, end, port).ptr == end &&
                        port > 0 && port < 65536;
  if (!has_port || text->size() > longest || !is_host(place.substr(0, colon))) {
    table.refuse("address", std::string(expected) + ", not \"" + *text + "\"");
  }
  server.address = *text;
}

void read_retention(ConfigurationTable& top, server::ServerOptions& server) {
  constexpr int most_days = 36'500;
  constexpr std::string_view expected = "\"callers\" or \"calls\"";
  auto table = top.table("retention");
  if (!table) return;
  const auto days = table->number("days", 1, most_days);
  const auto what = table->text("forget", expected);
  table->refuse_unknown();
  if (!days) table->refuse("days", "for how many days it is known who called");
  if (what && *what != "callers" && *what != "calls") {
    table->refuse("forget", std::string(expected) + ", not \"" + *what + "\"");
  }
  server.retention = {.days = *days,
                      .what = what == "calls" ? platform::Store::Forgetting::Calls
                                              : platform::Store::Forgetting::Callers};
}

void read_server(ConfigurationTable& table, const fs::path& folder, server::ServerOptions& server) {
  server.seats = table.number("seats", 1, most_seats).value_or(server.seats);
  server.seats_of_address =
      table.number("seats_of_address", 1, most_seats).value_or(server.seats_of_address);
  read_address(table, server);
  read_retention(table, server);
  table.each_table("fixed_seat", [&](ConfigurationTable& each) { read_fixed_seat(each, server); });
  table.each_table("group", [&](ConfigurationTable& each) { add_group(each, folder, server); });
  std::ranges::sort(server.groups, {}, &server::GroupOptions::number);
}

// The first line's words up to "=", where the parser has found something wrong.
std::string key_of_line(std::string_view text, int line) {
  for (; line > 1; --line) {
    const std::size_t end = text.find('\n');
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
  }
  text = text.substr(0, text.find_first_of("=\r\n#"));
  const auto is_of_key = [](char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_' ||
           c == '-' || c == '.' || c == '[' || c == ']';
  };
  std::string key;
  for (const char c : text) {
    if (is_of_key(c)) key += c;
  }
  constexpr std::size_t longest = 40;
  return key.empty() ? "?" : key.substr(0, longest);
}

toml::table parse(std::string_view text, const std::string& file) {
  try {
    return toml::parse(text);
  } catch (const toml::parse_error& error) {
    const int line = static_cast<int>(error.source().begin.line);
    throw ConfigurationError(configuration_error(file, line, key_of_line(text, line),
                                                 "TOML; " + std::string(error.description())));
  }
}

}  // namespace

std::string configuration_error(const std::string& file, int line, const std::string& key,
                                const std::string& expected) {
  std::string error = file + ":" + std::to_string(line) + ": " + key + ": expected " + expected;
  std::ranges::replace_if(
      error, [](char c) { return static_cast<unsigned char>(c) < 0x20 || c == 0x7F; }, ' ');
  return error;
}

Configuration read_configuration(std::string_view text, const std::string& file) {
  const toml::table parsed = parse(text, file);
  const fs::path folder = fs::absolute(file).parent_path();
  ConfigurationTable table(parsed, file, "");
  Configuration configuration;
  read_listen(table, parsed.contains("listen") && parsed.get("listen")->is_array(), configuration);
  read_store(table, folder, configuration);
  read_standby(table, configuration);
  configuration.journal_file = journal_file(configuration, file);
  configuration.admin_socket =
      path_in(folder, table.text("admin_socket", "the path of a socket").value_or("admin.sock"));
  read_metrics(table, configuration);
  configuration.plain_text_network = table.flag("plain_text_network").value_or(false);
  configuration.shutdown_seconds = table.number("shutdown_seconds", 0, longest_shutdown)
                                       .value_or(configuration.shutdown_seconds);
  read_character_set(table, configuration);
  read_remote_objects(table, configuration);
  read_tls(table, folder, configuration);
  read_server(table, folder, configuration.server);
  table.refuse_unknown();
  if (configuration.server.groups.empty()) table.refuse("group", "at least one table, [[group]]");
  return configuration;
}

Configuration load_configuration(const std::string& file) {
  std::error_code ignored;
  std::ifstream stream(file, std::ios::binary);
  std::string text;
  if (fs::is_directory(file, ignored)) {
    errno = EISDIR;
    stream.setstate(std::ios::failbit);
  } else if (stream) {
    text.resize(longest_file + 1);
    stream.read(text.data(), static_cast<std::streamsize>(text.size()));
    text.resize(static_cast<std::size_t>(stream.gcount()));
    stream.clear(stream.rdstate() & std::ios::badbit);
  }
  if (!stream) {
    throw ConfigurationError(file + ": can't be read: " + std::strerror(errno));
  }
  if (text.size() > longest_file) {
    throw ConfigurationError(file + ": expected at most " + std::to_string(longest_file) +
                             " bytes");
  }
  return read_configuration(text, file);
}

}  // namespace lineweir::serverd
