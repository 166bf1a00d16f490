// A thousand consoles on one server, as a table: how long until all have a whole screen, how long a
// change takes to the last seat of its group, and what that costs. Beside it a bare relay that only
// copies the bytes of a change to as many sockets, which is the limit.
//
//   server_load lineweir-server lineweir-admin
//     [SEATS [GROUPS [CHANGES [SECONDS [tls|plain [STORE FIRST]]]]]]
//
// CHANGES is how many a second in each group; "tls" connects the seats by TLS. All is on the
// loopback, and ends by itself. With a STORE, as the configuration names it, the groups from FIRST
// on are those of one server of several; spread_load.sh runs these.

#include <arpa/inet.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <signal.h>
#include <sys/epoll.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <map>
#include <memory>
#include <set>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "load_socket.h"
#include "wire/password_scramble.h"
#include "wire/sent_frame.h"
#include "wire/server_packet_framing.h"

namespace {

using namespace lineweir;
using bench::fail;
using bench::LoadSocket;
using Clock = std::chrono::steady_clock;
using namespace std::chrono_literals;

constexpr const char* user = "load";
constexpr const char* password = "load";
constexpr int lines = 10;
constexpr auto longest_wait = 120s;
constexpr auto speaks_every = 15s;

double milliseconds(Clock::duration span) {
  return std::chrono::duration<double, std::milli>(span).count();
}

struct Plan {
  int seats = 1000;
  int groups = 50;
  int changes = 40;
  int seconds = 10;
  LoadSocket::Kind connections = LoadSocket::Kind::Plain;
  // Empty: a file of the server's own.
  std::string store = {};
  int first_group = 1;

  int group_of(int seat) const { return seat % groups + first_group; }
};

void send_all(int socket, std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t written = ::write(socket, bytes.data(), bytes.size());
    if (written <= 0) fail("the administrator's connection was closed");
    bytes.remove_prefix(static_cast<std::size_t>(written));
  }
}

// What a process has used so far.
struct Usage {
  double processor_seconds = 0;
  double memory_megabytes = 0;
};

Usage usage_of(pid_t process) {
  Usage usage;
  std::ifstream stat("/proc/" + std::to_string(process) + "/stat");
  std::string text((std::istreambuf_iterator<char>(stat)), {});
  std::istringstream fields(text.substr(text.rfind(')') + 2));
  std::string skipped;
  for (int i = 0; i < 11; ++i) fields >> skipped;
  double in_program = 0;
  double in_system = 0;
  fields >> in_program >> in_system;
  usage.processor_seconds = (in_program + in_system) / static_cast<double>(::sysconf(_SC_CLK_TCK));
  std::ifstream status("/proc/" + std::to_string(process) + "/status");
  for (std::string line; std::getline(status, line);) {
    if (line.starts_with("VmRSS:")) usage.memory_megabytes = std::stod(line.substr(6)) / 1024;
  }
  return usage;
}

// Seats that hear what they are told, and how long each change took to the last of its group.
class Audience {
 public:
  explicit Audience(const Plan& plan) : plan_(plan), poll_(::epoll_create1(EPOLL_CLOEXEC)) {
    seats_.resize(static_cast<std::size_t>(plan.seats));
    heard_.resize(static_cast<std::size_t>(plan.first_group + plan.groups));
  }
  ~Audience() { ::close(poll_); }
  Audience(const Audience&) = delete;
  Audience& operator=(const Audience&) = delete;

  void connect(int port, LoadSocket::Kind kind, const std::string& greeting = {}) {
    for (int i = 0; i < plan_.seats; ++i) {
      Seat& seat = seats_[static_cast<std::size_t>(i)];
      seat.group = plan_.group_of(i);
      seat.socket = LoadSocket(port, kind);
      epoll_event event{.events = EPOLLIN, .data = {.u32 = static_cast<std::uint32_t>(i)}};
      ::epoll_ctl(poll_, EPOLL_CTL_ADD, seat.socket.descriptor(), &event);
      seat.socket.write_all(greeting.empty() ? login(seat)
                                             : greeting + static_cast<char>(seat.group));
    }
  }

  // Until each seat has been told of lines, times, studio, names and callers.
  bool all_have_screens() const { return whole_screens_ == plan_.seats; }

  void begin_change(int group, int line) {
    Change& change = heard_[static_cast<std::size_t>(group)][line];
    change = {Clock::now(), 0};
  }
  const std::vector<double>& delays() const { return delays_; }
  long frames() const { return frames_; }

  void listen(std::chrono::milliseconds wait) {
    epoll_event events[256];
    const int count = ::epoll_wait(poll_, events, 256, static_cast<int>(wait.count()));
    for (int i = 0; i < count; ++i) hear(seats_[events[i].data.u32]);
    if (Clock::now() >= spoken_ + speaks_every) speak();
  }

 private:
  struct Seat {
    LoadSocket socket;
    int group = 0;
    ReceiveBuffer received;
    std::set<std::uint8_t> screen;
    bool has_screen = false;
  };
  struct Change {
    Clock::time_point begun;
    int heard_by = 0;
  };

  // A seat that says nothing for long is dropped.
  void speak() {
    spoken_ = Clock::now();
    for (Seat& seat : seats_) {
      if (!seat.has_screen) continue;
      seat.socket.write_all(
          sent_frame(client_packet(ClientCommand::CmdTimeRequest, seat.group, 0)));
    }
  }

  static std::string login(const Seat& seat) {
    ServerPacket packet = client_packet(ClientCommand::CmdPasswordLogin, seat.group, 0);
    packet.Buffer = login_buffer(*pass_encode(user, 1), *pass_encode(password, 2));
    return sent_frame(packet);
  }

  void hear(Seat& seat) {
    char bytes[65536];
    seat.received.append(seat.socket.read(bytes, sizeof bytes));
    while (const auto body = seat.received.first_body()) {
      const ServerPacket packet = packet_of(*body);
      seat.received.drop_first();
      ++frames_;
      take(seat, packet);
    }
  }

  void take(Seat& seat, const ServerPacket& packet) {
    using enum ServerCommand;
    switch (static_cast<ServerCommand>(packet.CMD)) {
      case SrvPasswordResult:
        if (packet.AltInfo != 'T') fail("a login was refused");
        return begin_session(seat);
      case SrvLineStatus:
        return take_change(seat, packet.LineNo);
      case SrvFullStatus:
      case SrvTimes:
      case SrvStudioStatus:
      case SrvLineNumbers:
      case SrvNextCall:
        seat.screen.insert(packet.CMD);
        if (seat.screen.size() == 5 && !std::exchange(seat.has_screen, true)) ++whole_screens_;
        return;
      default:
        return;
    }
  }

  void begin_session(Seat& seat) {
    using enum ClientCommand;
    std::string frames;
    for (const ClientCommand command : {CmdConnectConsole, CmdRequestStudioStatus, CmdRequestTimes,
                                        CmdRequestStatus, CmdRequestLineNumbers}) {
      frames += sent_frame(client_packet(command, seat.group, 0));
    }
    seat.socket.write_all(frames);
  }

  void take_change(const Seat& seat, int line) {
    Change& change = heard_[static_cast<std::size_t>(seat.group)][line];
    if (++change.heard_by == plan_.seats / plan_.groups) {
      delays_.push_back(milliseconds(Clock::now() - change.begun));
    }
  }

  Plan plan_;
  int poll_;
  std::vector<Seat> seats_;
  std::vector<std::map<int, Change>> heard_;
  std::vector<double> delays_;
  int whole_screens_ = 0;
  long frames_ = 0;
  Clock::time_point spoken_ = Clock::now();
};

struct Figures {
  double screens_after = 0;
  std::vector<double> delays;
  double frames_a_second = 0;
  double processor_share = 0;
  double memory = 0;
};

// Brings changes about for so many seconds, evenly, and listens. `change` is told group, line and
// whether a caller comes or goes.
template <class Change>
void play(const Plan& plan, Audience& audience, Change change) {
  const auto begun = Clock::now();
  long done = 0;
  const long wanted = static_cast<long>(plan.groups) * plan.changes * plan.seconds;
  while (done < wanted) {
    const double passed = std::chrono::duration<double>(Clock::now() - begun).count();
    const long due = std::min(wanted, static_cast<long>(passed * plan.groups * plan.changes));
    for (; done < due; ++done) {
      const int group = static_cast<int>(done % plan.groups) + plan.first_group;
      const long turn = done / plan.groups;
      const int line = static_cast<int>(turn % lines);
      audience.begin_change(group, line);
      change(group, line, turn / lines % 2 == 0);
    }
    audience.listen(1ms);
  }
  const auto end = Clock::now() + 2s;
  while (Clock::now() < end) audience.listen(10ms);
}

// A process of its own, ended with this object.
struct Child {
  pid_t process = -1;
  ~Child() {
    if (process <= 0) return;
    ::kill(process, SIGKILL);
    ::waitpid(process, nullptr, 0);
  }
};

Figures measure_server(const Plan& plan, const std::string& server, const std::string& admin) {
  char folder[] = "/tmp/server_load.XXXXXX";
  if (::mkdtemp(folder) == nullptr) fail("no folder could be made");
  const std::string path = folder;
  std::ofstream configuration(path + "/server.toml");
  configuration << "listen = \"127.0.0.1:0\"\nseats = 5000\nseats_of_address = 5000\n";
  if (plan.connections == LoadSocket::Kind::Tls) configuration << "[tls]\n";
  if (!plan.store.empty()) configuration << "store = \"" << plan.store << "\"\n";
  for (int group = plan.first_group; group < plan.first_group + plan.groups; ++group) {
    configuration << "[[group]]\nnumber = " << group << "\nname = \"Studio " << group << "\"\n";
  }
  configuration.close();
  int output[2];
  if (::pipe(output) != 0) fail("no pipe could be made");
  Child child;
  child.process = ::fork();
  if (child.process == 0) {
    ::dup2(output[1], STDOUT_FILENO);
    if (std::freopen((path + "/log").c_str(), "w", stderr) == nullptr) ::_exit(1);
    ::execl(server.c_str(), server.c_str(), "--config", (path + "/server.toml").c_str(), nullptr);
    ::_exit(1);
  }
  ::close(output[1]);
  char ready[200] = {};
  if (::read(output[0], ready, sizeof ready - 1) <= 0) fail("the server doesn't begin");
  const int port = std::atoi(std::string(ready).substr(std::string(ready).rfind(':') + 1).c_str());
  const std::string add = "echo " + std::string(password) + " | " + admin + " --socket " + path +
                          "/admin.sock user add " + user + " --template engineer --password-stdin";
  // Another server has added the user.
  const bool is_there = !plan.store.empty() && plan.first_group != 1;
  if (!is_there && std::system(add.c_str()) != 0) fail("no user could be added");  // NOLINT
  const int control = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  (path + "/admin.sock").copy(address.sun_path, sizeof address.sun_path - 1);
  if (::connect(control, reinterpret_cast<sockaddr*>(&address), sizeof address) != 0) {
    fail("the administrator's socket is not there");
  }

  Figures figures;
  Audience audience(plan);
  const auto storm = Clock::now();
  audience.connect(port, plan.connections);
  while (!audience.all_have_screens()) {
    if (Clock::now() - storm > longest_wait) fail("not all seats got a screen");
    audience.listen(100ms);
  }
  figures.screens_after = milliseconds(Clock::now() - storm) / 1000;
  const Usage before = usage_of(child.process);
  const long frames_before = audience.frames();
  char answers[65536];
  play(plan, audience, [&](int group, int line, bool comes) {
    send_all(control, std::string("{\"command\":\"") + (comes ? "call" : "hangup") +
                          "\",\"group\":" + std::to_string(group) +
                          ",\"line\":" + std::to_string(line + 1) + "}\n");
    // Its answers are only taken out of the way.
    while (::recv(control, answers, sizeof answers, MSG_DONTWAIT) > 0) {
    }
  });
  const Usage after = usage_of(child.process);
  figures.delays = audience.delays();
  figures.processor_share = (after.processor_seconds - before.processor_seconds) / plan.seconds;
  figures.memory = after.memory_megabytes;
  figures.frames_a_second = static_cast<double>(audience.frames() - frames_before) / plan.seconds;
  ::close(control);
  std::filesystem::remove_all(path);
  return figures;
}

// The limit: copies each message of the first connection to the sockets of its group.
[[noreturn]] void relay(int listener, const Plan& plan) {
  std::vector<std::vector<int>> groups(static_cast<std::size_t>(plan.groups) + 1);
  const int control = ::accept(listener, nullptr, nullptr);
  for (int i = 0; i < plan.seats; ++i) {
    const int seat = ::accept(listener, nullptr, nullptr);
    unsigned char group[2];
    if (::read(seat, group, 2) != 2) ::_exit(1);
    const int yes = 1;
    ::setsockopt(seat, IPPROTO_TCP, TCP_NODELAY, &yes, sizeof yes);
    groups[group[1]].push_back(seat);
  }
  if (::write(control, "g", 1) != 1) ::_exit(1);
  std::string waiting;
  for (;;) {
    char bytes[65536];
    const ssize_t count = ::read(control, bytes, sizeof bytes);
    if (count <= 0) ::_exit(0);
    waiting.append(bytes, static_cast<std::size_t>(count));
    constexpr std::size_t frame = 14;
    while (waiting.size() >= frame) {
      for (const int seat : groups[static_cast<unsigned char>(waiting[4])]) {
        if (::write(seat, waiting.data(), frame) < 0) ::_exit(1);
      }
      waiting.erase(0, frame);
    }
  }
}

Figures measure_relay(const Plan& plan) {
  const int listener = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  socklen_t size = sizeof address;
  if (::bind(listener, reinterpret_cast<sockaddr*>(&address), size) != 0 ||
      ::listen(listener, 2048) != 0) {
    fail("the relay can't listen");
  }
  ::getsockname(listener, reinterpret_cast<sockaddr*>(&address), &size);
  Child child;
  child.process = ::fork();
  if (child.process == 0) relay(listener, plan);
  ::close(listener);
  const int port = ntohs(address.sin_port);
  LoadSocket control(port, LoadSocket::Kind::Plain);
  Audience audience(plan);
  audience.connect(port, LoadSocket::Kind::Plain, "s");
  char go = 0;
  while (control.read(&go, 1).empty()) audience.listen(1ms);
  const Usage before = usage_of(child.process);
  Figures figures;
  play(plan, audience, [&](int group, int line, bool comes) {
    ServerPacket packet = server_packet(ServerCommand::SrvLineStatus, group, comes ? "R" : "F");
    packet.LineNo = field_byte(line);
    control.write_all(sent_frame(packet));
  });
  const Usage after = usage_of(child.process);
  figures.delays = audience.delays();
  figures.processor_share = (after.processor_seconds - before.processor_seconds) / plan.seconds;
  figures.memory = after.memory_megabytes;
  figures.frames_a_second = static_cast<double>(audience.frames()) / plan.seconds;
  return figures;
}

double percentile(std::vector<double> values, double share) {
  if (values.empty()) return -1;
  std::sort(values.begin(), values.end());
  return values[static_cast<std::size_t>(share * static_cast<double>(values.size() - 1))];
}

void print(const std::string& name, const Plan& plan, const Figures& figures) {
  std::printf("%-8s %6d %7d %8.0f %9.1f %9.2f %9.2f %8.1f %% %7.1f MB\n", name.c_str(), plan.seats,
              plan.groups, figures.frames_a_second, figures.screens_after,
              percentile(figures.delays, 0.5), percentile(figures.delays, 0.99),
              figures.processor_share * 100, figures.memory);
  std::fflush(stdout);
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 3) fail("usage: server_load SERVER ADMIN [SEATS [GROUPS [CHANGES [SECONDS [tls]]]]]");
  ::signal(SIGPIPE, SIG_IGN);
  const rlimit many{8192, 8192};
  ::setrlimit(RLIMIT_NOFILE, &many);
  const auto number = [&](int place, int otherwise) {
    return argc > place ? std::max(1, std::atoi(argv[place])) : otherwise;
  };
  Plan plan;
  plan.seats = number(3, plan.seats);
  plan.groups = number(4, plan.groups);
  plan.changes = number(5, plan.changes);
  plan.seconds = number(6, plan.seconds);
  if (argc > 7 && std::string(argv[7]) == "tls") plan.connections = LoadSocket::Kind::Tls;
  if (argc > 9) {
    plan.store = argv[8];
    plan.first_group = number(9, 1);
    print("server", plan, measure_server(plan, argv[1], argv[2]));
    return 0;
  }
  std::printf("%-8s %6s %7s %8s %9s %9s %9s %10s %10s\n", "", "seats", "groups", "frames/s",
              "screens s", "p50 ms", "p99 ms", "processor", "memory");
  for (const int seats : {10, 100, plan.seats}) {
    Plan part = plan;
    part.seats = seats;
    part.groups = std::max(1, plan.groups * seats / plan.seats);
    print("relay", part, measure_relay(part));
    print("server", part, measure_server(part, argv[1], argv[2]));
  }
}
