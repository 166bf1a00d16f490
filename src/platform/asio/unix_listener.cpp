#include "platform/asio/unix_listener.h"

#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <stdexcept>
#include <utility>

#include <boost/asio/local/stream_protocol.hpp>
#include <boost/asio/steady_timer.hpp>

#include "platform/asio/open_port.h"
#include "platform/asio/stream_connection.h"
#include "platform/disk/beside_files.h"

namespace lineweir::platform {

namespace {

using local = asio::local::stream_protocol;

constexpr int backlog_of_tools = 64;

[[noreturn]] void fail_to_listen(const std::string& path, const std::string& reason) {
  throw std::runtime_error("Can't listen on " + path + ": " + reason);
}

local::endpoint endpoint_of(const std::string& path) {
  try {
    return local::endpoint(path);
  } catch (const boost::system::system_error&) {
    fail_to_listen(path, "the path is too long");
  }
}

void remove_stale(asio::io_context& context, const local::endpoint& endpoint) {
  const std::string path = endpoint.path();
  struct stat found {};
  if (::lstat(path.c_str(), &found) != 0) return;
  if (!S_ISSOCK(found.st_mode)) fail_to_listen(path, "there is a file of another kind");
  local::socket probe(context);
  error_code answer;
  probe.connect(endpoint, answer);
  if (answer != asio::error::connection_refused) fail_to_listen(path, "another process uses it");
  ::unlink(path.c_str());
}

local::acceptor open_socket(asio::io_context& context, const std::string& path) {
  const local::endpoint endpoint = endpoint_of(path);
  remove_stale(context, endpoint);
  local::acceptor acceptor(context, endpoint.protocol());
  error_code failed;
  acceptor.bind(endpoint, failed);
  if (failed) fail_to_listen(path, failed.message());
  // Nobody gets in before it listens.
  if (::chmod(path.c_str(), S_IRUSR | S_IWUSR) != 0) fail_to_listen(path, std::strerror(errno));
  acceptor.listen(backlog_of_tools, failed);
  if (failed) fail_to_listen(path, failed.message());
  return acceptor;
}

bool may_use(local::socket& peer) {
  ucred credentials{};
  socklen_t size = sizeof credentials;
  return ::getsockopt(peer.native_handle(), SOL_SOCKET, SO_PEERCRED, &credentials, &size) == 0 &&
         (credentials.uid == 0 || credentials.uid == ::geteuid());
}

}  // namespace

class UnixListener::Inside : public std::enable_shared_from_this<Inside> {
 public:
  Inside(AsioLoop& loop, std::string path)
      : loop_(loop),
        path_(std::move(path)),
        acceptor_(open_socket(loop.context(), path_)),
        identity_(disk_identity(path_)),
        pause_(loop.context()) {}

  // Null once the listener is gone.
  UnixListener* listener = nullptr;

  void accept() {
    acceptor_.async_accept(
        [self = shared_from_this()](const error_code& error, local::socket peer) {
          if (self->listener == nullptr) return;
          if (error) {
            self->accept_later();
            return;
          }
          if (may_use(peer) && self->listener->on_connection) {
            self->listener->on_connection(
                make_connection(self->loop_, PlainStream(std::move(peer)), "local"));
          }
          // Who came in may have ended the listener.
          if (self->listener != nullptr) self->accept();
        });
  }

  void close() {
    listener = nullptr;
    error_code ignored;
    acceptor_.close(ignored);
    pause_.cancel();
    // Another process may have its own there meanwhile.
    if (identity_ && disk_identity(path_) == identity_) ::unlink(path_.c_str());
  }

 private:
  void accept_later() {
    pause_.expires_after(pause_without_descriptors);
    pause_.async_wait([self = shared_from_this()](const error_code&) {
      if (self->listener != nullptr) self->accept();
    });
  }

  AsioLoop& loop_;
  std::string path_;
  local::acceptor acceptor_;
  std::optional<DiskIdentity> identity_;
  asio::steady_timer pause_;
};

UnixListener::UnixListener(AsioLoop& loop, const std::string& path)
    : inside_(std::make_shared<Inside>(loop, path)) {
  inside_->listener = this;
}

UnixListener::~UnixListener() { inside_->close(); }

void UnixListener::accept() { inside_->accept(); }

}  // namespace lineweir::platform
