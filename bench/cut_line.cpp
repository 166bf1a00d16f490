#include "cut_line.h"

#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <array>
#include <stdexcept>
#include <vector>

namespace lineweir::bench {
namespace {

constexpr const char* socket_name = ".s.PGSQL.5432";
constexpr int looks_every_milliseconds = 5;

sockaddr_un address_of(const std::filesystem::path& folder) {
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  const std::string path = folder / socket_name;
  path.copy(address.sun_path, sizeof address.sun_path - 1);
  return address;
}

struct Pair {
  int server = -1;
  int database = -1;
};

// False once one end has gone.
bool carry(int from, int to) {
  std::array<char, 65536> piece;
  const ssize_t count = ::recv(from, piece.data(), piece.size(), MSG_DONTWAIT);
  if (count < 0) return true;
  return count > 0 &&
         ::send(to, piece.data(), static_cast<std::size_t>(count), MSG_NOSIGNAL) == count;
}

bool has_something(int socket) {
  pollfd wanted{socket, POLLIN, 0};
  return ::poll(&wanted, 1, 0) > 0;
}

}  // namespace

CutLine::CutLine(const std::filesystem::path& here, const std::filesystem::path& there)
    : there_(there), listener_(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
  const sockaddr_un address = address_of(here);
  constexpr int backlog = 16;
  if (::bind(listener_, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0 ||
      ::listen(listener_, backlog) != 0) {
    throw std::runtime_error("no socket in " + here.string());
  }
  thread_ = std::thread([this] { work(); });
}

CutLine::~CutLine() {
  ends_ = true;
  thread_.join();
  ::close(listener_);
}

void CutLine::work() {
  std::vector<Pair> pairs;
  const sockaddr_un address = address_of(there_);
  while (!ends_) {
    std::vector<pollfd> wanted = {{listener_, POLLIN, 0}};
    for (const Pair& pair : pairs) {
      if (carries_there) wanted.push_back({pair.server, POLLIN, 0});
      if (carries_back) wanted.push_back({pair.database, POLLIN, 0});
    }
    ::poll(wanted.data(), wanted.size(), looks_every_milliseconds);
    if ((wanted.front().revents & POLLIN) != 0 && carries_there && carries_back) {
      Pair pair;
      pair.server = ::accept4(listener_, nullptr, nullptr, SOCK_CLOEXEC);
      pair.database = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
      ::connect(pair.database, reinterpret_cast<const sockaddr*>(&address), sizeof address);
      pairs.push_back(pair);
    }
    std::erase_if(pairs, [this](const Pair& pair) {
      const bool stands =
          (!carries_there || !has_something(pair.server) || carry(pair.server, pair.database)) &&
          (!carries_back || !has_something(pair.database) || carry(pair.database, pair.server));
      if (stands) return false;
      ::close(pair.server);
      ::close(pair.database);
      return true;
    });
  }
  for (const Pair& pair : pairs) {
    ::close(pair.server);
    ::close(pair.database);
  }
}

}  // namespace lineweir::bench
