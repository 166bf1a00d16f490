#include "studio/event_script.h"

#include <doctest/doctest.h>

#include <fstream>

#include "temporary_folder.h"

using namespace lineweir::studio;
using Kind = StudioEvent::Kind;

namespace {

std::string error_of(std::string_view text, int line_count = 10) {
  std::string error;
  return parse_script(text, "show.txt", line_count, error) ? "none" : error;
}

}  // namespace

TEST_CASE("a script is read event by event") {
  std::string error;
  const auto events = parse_script(
      "# a short show\n"
      "2.5 call 3\n"
      "\n"
      "  10\thangup 3\r\n"
      "12 busy 4\n"
      "13 idle 4\n"
      "14 set 9 E\n"
      "20 word N03\n"
      "30 quit",
      "show.txt", 10, error);
  REQUIRE(events);
  CHECK(*events == std::vector<TimedEvent>{
                       {Moment(2'500), {Kind::Call, 3}},
                       {Moment(10'000), {Kind::HangUp, 3}},
                       {Moment(12'000), {Kind::Busy, 4}},
                       {Moment(13'000), {Kind::Idle, 4}},
                       {Moment(14'000), {Kind::Set, 9, 'E'}},
                       {Moment(20'000), {Kind::Word, 0, ' ', "N03"}},
                       {Moment(30'000), {Kind::Quit}},
                   });
}

TEST_CASE("the order is that of the times, and among equal ones that of the file") {
  std::string error;
  const auto events = parse_script("5 call 1\n1 call 2\n5 call 0\n", "s", 10, error);
  REQUIRE(events);
  CHECK((*events)[0].event.line == 2);
  CHECK((*events)[1].event.line == 1);
  CHECK((*events)[2].event.line == 0);
}

TEST_CASE("an empty script has no events") {
  std::string error;
  const auto events = parse_script("", "s", 10, error);
  REQUIRE(events);
  CHECK(events->empty());
}

TEST_CASE("a mistake is told with file and line") {
  CHECK(error_of("1 call 3\n\nx call 3\n") == "show.txt:3: \"x\" is not a time in seconds");
  CHECK(error_of("1\n") == "show.txt:1: an event is missing behind the time");
  CHECK(error_of("# c\n1 cal 3") == "show.txt:2: there is no event \"cal\"");
  CHECK(error_of("1 call") == "show.txt:1: \"call\" takes 1 argument(s), not 0");
  CHECK(error_of("1 quit now") == "show.txt:1: \"quit\" takes 0 argument(s), not 1");
  CHECK(error_of("1 call 10") == "show.txt:1: \"10\" is not a line from 0 to 9");
  CHECK(error_of("1 call 10", 20) == "none");
  CHECK(error_of("1 call 20", 20) == "show.txt:1: \"20\" is not a line from 0 to 19");
  CHECK(error_of("1 call -1") == "show.txt:1: \"-1\" is not a line from 0 to 9");
  CHECK(error_of("1 call 99999999999999999999") ==
        "show.txt:1: \"99999999999999999999\" is not a line from 0 to 9");
  CHECK(error_of("1 set 3 x") == "show.txt:1: \"x\" is not a status letter of FRSHPOENCLKYB");
  CHECK(error_of("1 set 3 NN") == "show.txt:1: \"NN\" is not a status letter of FRSHPOENCLKYB");
  CHECK(error_of("1 word N3") == "show.txt:1: \"N3\" is not a command word");
}

TEST_CASE("a script is read from its file") {
  const TemporaryFolder folder;
  std::ofstream(folder.path("show.txt")) << "1 call 3\n2 call 77\n";
  std::string error;
  CHECK_FALSE(read_script(folder.path("show.txt"), 10, error));
  CHECK(error == folder.path("show.txt") + ":2: \"77\" is not a line from 0 to 9");

  CHECK_FALSE(read_script(folder.path("none.txt"), 10, error));
  CHECK(error == folder.path("none.txt") + ": can't be read");
  CHECK_FALSE(read_script(folder.path(""), 10, error));
  CHECK(error == folder.path("") + ": can't be read");
}
