#pragma once

#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "server/server_options.h"
#include "serverd/socket_address.h"

namespace lineweir::serverd {

// A certificate and its key that the configuration names, and where it names them.
struct TlsFiles {
  std::string certificate;
  std::string key;
  int certificate_line = 0;
  int key_line = 0;

  friend bool operator==(const TlsFiles&, const TlsFiles&) = default;
};

enum class RemoteBus { None, Session, System };

// What the server's configuration file tells. All paths are whole.
struct Configuration {
  std::vector<SocketAddress> listen = {{"127.0.0.1", 2001}};
  // The file of the built-in store; empty where the store is a database.
  std::string store_file = {};
  // The URL of the database; it may hold a password, so it is shown to nobody.
  std::string store_database = {};
  // For what the server makes by itself: beside its store's file, or where it may keep what it
  // likes.
  std::string data_folder = {};
  // Other servers have the same groups in the same database, and one of all leads.
  bool standby = false;
  // Where what the store hasn't taken yet is kept.
  std::string journal_file = {};
  std::string admin_socket = {};
  std::optional<SocketAddress> metrics = {};
  bool plain_text_network = false;
  // The table [tls] is there, so that all addresses have TLS. Without files in it they are made.
  bool tls = false;
  std::optional<TlsFiles> tls_files = {};
  // How long seats are told before the end that the server ends.
  int shutdown_seconds = 1;
  // Of the consoles' texts.
  std::string character_set = "windows-1252";
  RemoteBus remote_objects = RemoteBus::None;
  server::ServerOptions server = {};
};

// The text is one line: file, line, key, and what was expected.
class ConfigurationError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

std::string configuration_error(const std::string& file, int line, const std::string& key,
                                const std::string& expected);

// Reads a configuration's text. The file's name is for the errors, and paths are relative to its
// folder. Throws ConfigurationError.
Configuration read_configuration(std::string_view text, const std::string& file);

// The same of a file. Throws ConfigurationError, also where it can't be read.
Configuration load_configuration(const std::string& file);

}  // namespace lineweir::serverd
