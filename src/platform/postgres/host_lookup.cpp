#include "platform/postgres/host_lookup.h"

#include <arpa/inet.h>
#include <netdb.h>
#include <sys/socket.h>

#include <algorithm>
#include <array>
#include <mutex>
#include <optional>
#include <thread>
#include <utility>

namespace lineweir::platform {
namespace {

struct Outcome {
  std::vector<PostgresHost> hosts;
  std::string failure;
};

bool needs_lookup(const PostgresHost& host) {
  return host.address.empty() && !host.name.empty() && !host.name.starts_with('/');
}

void look_up(const PostgresHost& host, Outcome& outcome) {
  addrinfo wanted{};
  wanted.ai_socktype = SOCK_STREAM;
  addrinfo* found = nullptr;
  const int result = ::getaddrinfo(host.name.c_str(), nullptr, &wanted, &found);
  if (result != 0) {
    outcome.failure = "The host '" + host.name + "' can't be found: " + ::gai_strerror(result) +
                      "; see that its name is right and that names can be looked up.";
    return;
  }
  for (const addrinfo* each = found; each != nullptr; each = each->ai_next) {
    std::array<char, NI_MAXHOST> text{};
    if (::getnameinfo(each->ai_addr, each->ai_addrlen, text.data(), text.size(), nullptr, 0,
                      NI_NUMERICHOST) != 0) {
      continue;
    }
    outcome.hosts.push_back({.name = host.name, .address = text.data(), .port = host.port});
  }
  ::freeaddrinfo(found);
}

Outcome look_up_all(const std::vector<PostgresHost>& hosts) {
  Outcome outcome;
  for (const PostgresHost& host : hosts) {
    if (needs_lookup(host)) {
      look_up(host, outcome);
    } else {
      outcome.hosts.push_back(host);
    }
  }
  if (!outcome.hosts.empty()) outcome.failure.clear();
  return outcome;
}

}  // namespace

// What the thread and the loop share. The poster is there as long as the lookup is.
struct HostLookup::Desk {
  std::mutex mutex;
  Poster* poster = nullptr;

  // Of the loop alone.
  std::optional<std::vector<PostgresHost>> searched;
  unsigned search = 0;
  Found found;
};

HostLookup::HostLookup(Poster& poster) : desk_(std::make_shared<Desk>()) {
  desk_->poster = &poster;
}

HostLookup::~HostLookup() {
  forget();
  const std::lock_guard lock(desk_->mutex);
  desk_->poster = nullptr;
}

void HostLookup::find(const std::vector<PostgresHost>& hosts, Found found) {
  desk_->found = std::move(found);
  if (desk_->searched == hosts) return;
  desk_->searched = hosts;
  const auto search = [desk = desk_, hosts, number = ++desk_->search] {
    Outcome outcome = look_up_all(hosts);
    const std::lock_guard lock(desk->mutex);
    if (desk->poster == nullptr) return;
    desk->poster->post([weak = std::weak_ptr(desk), outcome = std::move(outcome), number] {
      const auto there = weak.lock();
      if (!there || there->search != number) return;
      there->searched.reset();
      const Found told = std::exchange(there->found, nullptr);
      if (told) told(outcome.hosts, outcome.failure);
    });
  };
  if (std::ranges::any_of(hosts, needs_lookup)) {
    std::thread(search).detach();
  } else {
    search();
  }
}

void HostLookup::forget() { desk_->found = nullptr; }

}  // namespace lineweir::platform
