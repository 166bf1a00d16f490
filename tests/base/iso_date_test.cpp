#include "base/iso_date.h"

#include <doctest/doctest.h>

namespace lineweir::test {
namespace {

TEST_SUITE("base/iso_date") {
  TEST_CASE("a date is read and written in the order year, month, day") {
    CHECK(iso_date_of("2026-12-31") == platform::DateTime{2026, 12, 31});
    CHECK(iso_date_of("2024-02-29") == platform::DateTime{2024, 2, 29});
    CHECK(iso_date_text({2026, 1, 5}) == "2026-01-05");
    CHECK(iso_date_text({987, 1, 5}) == "0987-01-05");
  }

  TEST_CASE("what isn't exactly a date is none") {
    for (const char* text :
         {"", "2026-12-3", "2026-12-310", " 2026-12-31", "2026/12/31", "2026-00-01", "2026-02-29",
          "2026-04-31", "2026-1x-01", "12/31/2026"}) {
      CAPTURE(text);
      CHECK_FALSE(iso_date_of(text));
    }
  }

  TEST_CASE("a moment has hours and minutes behind its date") {
    CHECK(iso_minute_of("2026-12-31 20:15") == platform::DateTime{2026, 12, 31, 20, 15});
    CHECK(iso_minute_text({2026, 12, 31, 8, 5, 59}) == "2026-12-31 08:05");
    for (const char* text : {"2026-12-31", "2026-12-31 24:00", "2026-12-31 10:60",
                             "2026-12-31T10:00", "2026-13-31 10:00", "2026-12-31 10:00:00"}) {
      CAPTURE(text);
      CHECK_FALSE(iso_minute_of(text));
    }
  }
}

}  // namespace
}  // namespace lineweir::test
