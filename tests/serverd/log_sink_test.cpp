#include "serverd/log_sink.h"

#include <doctest/doctest.h>
#include <fcntl.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <climits>

using namespace lineweir::serverd;
using lineweir::server::LogLevel;

namespace {

std::string read_all(int descriptor) {
  std::string all;
  std::array<char, 65536> piece;
  ::fcntl(descriptor, F_SETFL, O_NONBLOCK);
  ssize_t count = 0;
  while ((count = ::read(descriptor, piece.data(), piece.size())) > 0) {
    all.append(piece.data(), static_cast<std::size_t>(count));
  }
  return all;
}

}  // namespace

TEST_CASE("A line of the log has its level, as a word or as the journal takes it") {
  CHECK(log_line(LogForm::Words, LogLevel::Warning, "a line is mute") ==
        "warning: a line is mute\n");
  const std::array<LogLevel, 5> levels{LogLevel::Error, LogLevel::Warning, LogLevel::Notice,
                                       LogLevel::Info, LogLevel::Debug};
  std::string journal;
  for (const LogLevel level : levels) journal += log_line(LogForm::Journal, level, "x");
  CHECK(journal == "<3>x\n<4>x\n<5>x\n<6>x\n<7>x\n");
}

TEST_CASE("A line of the log stays one line, and is cut between letters") {
  CHECK(log_line(LogForm::Words, LogLevel::Error, "a\nb\tc\x7F") == "error: a b c \n");
  std::string umlauts;
  for (int i = 0; i < PIPE_BUF; ++i) umlauts += "ä";
  for (const std::string shift : {"", "x"}) {
    const std::string line = log_line(LogForm::Words, LogLevel::Error, shift + umlauts);
    CHECK(line.size() <= PIPE_BUF);
    CHECK(line.size() >= PIPE_BUF - 1);
    CHECK(line.ends_with("ä\n"));
  }
}

TEST_CASE("What doesn't matter enough isn't logged") {
  std::array<int, 2> pipe{};
  REQUIRE(::pipe(pipe.data()) == 0);
  LogSink sink(pipe[1], LogForm::Words, LogLevel::Info);
  sink.write(LogLevel::Debug, "no");
  sink.write(LogLevel::Info, "yes");
  CHECK(read_all(pipe[0]) == "info: yes\n");
  ::close(pipe[0]);
  ::close(pipe[1]);
}

TEST_CASE("A reader that doesn't read holds nobody up, and is told what it has missed") {
  std::array<int, 2> ends{};
  SUBCASE("of a pipe") { REQUIRE(::pipe(ends.data()) == 0); }
  SUBCASE("of a socket") { REQUIRE(::socketpair(AF_UNIX, SOCK_STREAM, 0, ends.data()) == 0); }
  LogSink sink(ends[1], LogForm::Words, LogLevel::Info);
  constexpr int lines = 10'000;
  const std::string text(1000, 'x');
  for (int i = 0; i < lines; ++i) sink.write(LogLevel::Info, text);
  std::string got = read_all(ends[0]);
  const auto whole = static_cast<int>(got.size() / (text.size() + 7));
  CHECK(whole > 10);
  CHECK(whole < lines);
  sink.write(LogLevel::Info, "again");
  got = read_all(ends[0]);
  CHECK(got.starts_with("warning: "));
  CHECK(got.ends_with(" lines of this log were lost\ninfo: again\n"));
  const int lost = std::stoi(got.substr(9));
  // The last one may have gone in part.
  CHECK(lost >= lines - whole - 1);
  CHECK(lost <= lines - whole);
  ::close(ends[0]);
  sink.write(LogLevel::Info, "nobody there");
  ::close(ends[1]);
}
