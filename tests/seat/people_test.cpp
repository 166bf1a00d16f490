#include "seat/people.h"

#include <doctest/doctest.h>

using namespace lineweir;
using namespace lineweir::seat;

TEST_CASE("every caller's story fits the fields of the log") {
  REQUIRE_FALSE(caller_stories().empty());
  for (const CallerStory& story : caller_stories()) {
    CAPTURE(story.name);
    CHECK(story.name.size() <= entry_room(name_entry));
    CHECK(story.city.size() <= entry_room(entry_of(CallerField::City)));
    CHECK(story.topic.size() <= entry_room(entry_of(CallerField::Comments)));
  }
}
