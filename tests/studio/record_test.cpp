#include "studio/record.h"

#include <doctest/doctest.h>

#include <fstream>
#include <iterator>
#include <sstream>

#include "studio/studio_log.h"
#include "temporary_folder.h"

using namespace lineweir::studio;
using Kind = Record::Kind;

namespace {

std::string content(const std::string& path) {
  std::ifstream file(path);
  return {std::istreambuf_iterator<char>(file), {}};
}

}  // namespace

TEST_CASE("a record is one readable line") {
  CHECK(format_record({Moment(12'500), Kind::Word, "N05"}) == "12.500 word N05");
  CHECK(format_record({Moment(0), Kind::Item, "F05"}) == "0.000 item F05");
  CHECK(format_record({Moment(1), Kind::Text, "Line monitor ON"}) == "0.001 text Line monitor ON");
  CHECK(format_record({Moment(1), Kind::Event, "call 3"}) == "0.001 call 3");
  CHECK(format_record({Moment(1), Kind::Seat, "P03"}) == "0.001 seat P03");
  CHECK(format_record({Moment(1), Kind::Noise, "zz"}) == "0.001 noise zz");
  CHECK(format_record({Moment(1), Kind::Note, "so"}) == "0.001 note so");
}

TEST_CASE("bytes that don't print are written as their code") {
  CHECK(printable("a b~") == "a b~");
  CHECK(printable(std::string_view("\0\n\\\x7f\xff", 5)) == "\\x00\\x0a\\x5c\\x7f\\xff");
}

TEST_CASE("the log is in its file line by line, while the studio runs") {
  const TemporaryFolder folder;
  const std::string path = folder.path("log");
  std::ofstream(path) << "old\n";
  std::ostringstream unused;
  StudioLog log(path, unused);
  log.write({Moment(1), Kind::Word, "M"});
  CHECK(content(path) == "0.001 word M\n");
  log.write({Moment(2), Kind::Text, "Line monitor ON"});
  CHECK(content(path) == "0.001 word M\n0.002 text Line monitor ON\n");
  CHECK(unused.str() == "");
}

TEST_CASE("the log can go to the standard output or nowhere, but not where nothing can be") {
  std::ostringstream out;
  StudioLog to_output("-", out);
  to_output.write({Moment(1), Kind::Word, "M"});
  CHECK(out.str() == "0.001 word M\n");
  StudioLog nowhere("", out);
  nowhere.write({Moment(1), Kind::Word, "M"});
  CHECK(out.str() == "0.001 word M\n");
  const TemporaryFolder folder;
  CHECK_THROWS_WITH(StudioLog(folder.path("none/log"), out),
                    (folder.path("none/log") + ": can't be written").c_str());
}
