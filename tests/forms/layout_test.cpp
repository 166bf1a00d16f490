#include "forms/layout.h"

#include <doctest/doctest.h>

#include <array>
#include <string>
#include <vector>

namespace lineweir {

static bool operator==(const Place& a, const Place& b) {
  return a.left == b.left && a.top == b.top && a.width == b.width && a.height == b.height;
}

namespace test {
namespace {

constexpr int most_rows = 20;

struct NamedPlace {
  std::string name;
  Place place;
};

Place on_panel(int rows, Place place) {
  place.top += panel_top(rows);
  return place;
}

// Everything that stands side by side on the form, in places of the form.
std::vector<NamedPlace> all_places(int rows, bool producer) {
  const LayoutRange& range = layout_range(rows);
  const auto panel_or_form = [&](bool on_form, const Place& place) {
    return on_form ? place : on_panel(rows, place);
  };
  std::vector<NamedPlace> places = {
      {"Label10", range.main_heading},
      {"Label9", range.conference_heading},
      {"NextButton", panel_or_form(range.buttons_on_form, range.next_button)},
      {"NextToConfButton", panel_or_form(range.buttons_on_form, range.next_to_conf_button)},
      {"Dial", panel_or_form(range.buttons_on_form, range.dial)},
      {"OptionsButton", on_panel(rows, range.options_button)},
      {"Label1", on_panel(rows, link_label_place(rows))},
      {"Text1", on_panel(rows, message_place(rows))},
      {"the band", on_panel(rows, band_place(rows))},
      {"picRealTimeClock", panel_or_form(range.clocks_on_form, range.time_clock)},
      {"picShowTimeClock", panel_or_form(range.clocks_on_form, range.show_clock)},
      {"Shape1", panel_or_form(range.lamp_on_form, range.lamp)},
      {"Drop1", {range.drop_left, panel_top(rows) + 105, producer ? 750 : 375, 375}},
      {"Hold1", {range.drop_left, panel_top(rows) + 510, producer ? 750 : 375, 375}},
  };
  if (!producer) {
    places.push_back({"Drop2", {range.second_drop_left, panel_top(rows) + 105, 375, 375}});
    places.push_back({"Hold2", {range.second_drop_left, panel_top(rows) + 510, 375, 375}});
  }
  for (int row = 0; row < rows; ++row) {
    const std::string index = "(" + std::to_string(row) + ")";
    const int top = row_top(rows, row);
    places.push_back({"DataRow" + index, {range.strip_left, top, range.strip_width, row_pitch}});
    places.push_back({"OnHybrid1" + index, {range.main_button_left, top, 375, row_pitch}});
    places.push_back({"OnHybrid2" + index, {range.conference_button_left, top, 375, row_pitch}});
  }
  if (const auto cover = low_cover_place(rows)) places.push_back({"LowCover", *cover});
  return places;
}

bool overlap(const Place& a, const Place& b) {
  return a.left < b.left + b.width && b.left < a.left + a.width && a.top < b.top + b.height &&
         b.top < a.top + a.height;
}

int right_of(const Place& place) { return place.left + place.width; }
int foot_of(const Place& place) { return place.top + place.height; }

// Twice the middle, which needn't be a whole number.
int doubled_middle(int left, int width) { return 2 * left + width; }

bool same_size(const Place& a, const Place& b) {
  return a.width == b.width && a.height == b.height;
}

TEST_SUITE("forms/layout: the form") {
  TEST_CASE("up to 10 rows each row makes the form higher, from 11 it has one size") {
    CHECK(root_height(1, true) == 4420);
    CHECK(root_height(1, false) == 4135);
    for (int rows = 2; rows <= 10; ++rows) {
      CHECK(root_height(rows, true) == root_height(rows - 1, true) + 315);
    }
    for (int rows = 11; rows <= most_rows; ++rows) CHECK(root_height(rows, true) == 8880);
    for (int rows = 1; rows <= most_rows; ++rows) {
      CAPTURE(rows);
      CHECK(root_height(rows, false) == root_height(rows, true) - 285);
      CHECK(content_height(rows) == root_height(rows, false));
    }
    for (int rows = 0; rows <= most_rows; ++rows) {
      CHECK(root_width(rows) == (rows <= 10 ? 9420 : 12000));
    }
  }

  TEST_CASE("a form without rows keeps its panel and has one height") {
    CHECK(root_height(0, true) == 7005);
    CHECK(root_height(0, false) == 7005);
    CHECK(reset_height(0, true) == 7255);
    CHECK(reset_height(0, false) == 7255);
    CHECK(content_height(0) == content_height(1) - 315);
  }

  TEST_CASE("a reset gives some row counts another height") {
    for (int rows = 1; rows <= most_rows; ++rows) {
      CAPTURE(rows);
      const int more_with_bar = reset_height(rows, true) - root_height(rows, true);
      const int more_without = reset_height(rows, false) - root_height(rows, false);
      CHECK(more_with_bar == (rows <= 10 ? 0 : rows == 17 ? -15 : 1));
      CHECK(more_without == (rows == 17 ? -15 : 0));
    }
  }

  TEST_CASE("rows follow one another without a gap down to the panel") {
    for (int rows = 0; rows <= most_rows; ++rows) {
      CAPTURE(rows);
      CHECK(row_top(rows, 0) == (rows <= 10 ? 420 : 600));
      for (int row = 1; row < rows; ++row) {
        CHECK(row_top(rows, row) == row_top(rows, row - 1) + 315);
      }
      if (rows > 0) CHECK(panel_top(rows) == row_top(rows, rows - 1) + 315);
    }
  }
}

TEST_SUITE("forms/layout: the sides of the rows") {
  TEST_CASE("a button, the strip and a button stand 105 twips apart") {
    for (int rows = 0; rows <= most_rows; ++rows) {
      CAPTURE(rows);
      const LayoutRange& range = layout_range(rows);
      CHECK(range.strip_left == (rows <= 10 ? 1260 : 1310));
      CHECK(range.strip_width == (rows <= 10 ? 7590 : 8380));
      CHECK(range.main_button_left + 375 == range.strip_left - 105);
      CHECK(range.conference_button_left == range.strip_left + range.strip_width + 105);
    }
  }

  TEST_CASE("the headings stand in the middle above the buttons, in line with the captions") {
    for (int rows = 0; rows <= most_rows; ++rows) {
      CAPTURE(rows);
      const LayoutRange& range = layout_range(rows);
      CHECK(range.caption_top == (rows <= 10 ? 180 : 150));
      CHECK(range.main_heading.width == 575);
      CHECK(range.conference_heading.width == 465);
      const auto stands_above = [&](const Place& heading, int button_left) {
        CHECK(heading.top == range.caption_top);
        CHECK(heading.height == 225);
        const int apart =
            doubled_middle(heading.left, heading.width) - doubled_middle(button_left, 375);
        CHECK(apart >= 0);
        CHECK(apart <= 1);
      };
      stands_above(range.main_heading, range.main_button_left);
      stands_above(range.conference_heading, range.conference_button_left);
    }
  }

  TEST_CASE("the keys of the main hybrid and those of the other touch") {
    for (int rows = 0; rows <= most_rows; ++rows) {
      CHECK(layout_range(rows).drop_left == (rows <= 10 ? 300 : 290));
      CHECK(layout_range(rows).second_drop_left == layout_range(rows).drop_left + 375);
    }
  }

  TEST_CASE("the lamp stands in the upper right corner, from 11 rows on the form itself") {
    for (int rows = 0; rows <= most_rows; ++rows) {
      const LayoutRange& range = layout_range(rows);
      CHECK(range.lamp_on_form == (rows > 10));
      CHECK(range.lamp == Place{rows <= 10 ? 9090 : 11700, 60, 195, 195});
    }
  }
}

TEST_SUITE("forms/layout: the panel") {
  TEST_CASE("three keys of one size stand in a row up to 18 rows and in a column from 19") {
    for (int rows = 0; rows <= most_rows; ++rows) {
      CAPTURE(rows);
      const LayoutRange& range = layout_range(rows);
      CHECK(range.buttons_on_form == (rows >= 19));
      CHECK(same_size(range.next_button, range.next_to_conf_button));
      CHECK(same_size(range.next_button, range.dial));
      CHECK(range.next_button.height == 500);
      if (rows <= 18) {
        CHECK(range.next_button.width == 1290);
        CHECK(range.next_to_conf_button.left == right_of(range.next_button) + 60);
        CHECK(range.dial.left == right_of(range.next_to_conf_button) + 60);
        CHECK(range.next_to_conf_button.top == range.next_button.top);
        CHECK(range.dial.top == range.next_button.top);
      } else {
        CHECK(range.next_button.width == 1560);
        CHECK(range.next_button.left == 10340);
        CHECK(range.next_to_conf_button.left == range.next_button.left);
        CHECK(range.dial.left == range.next_button.left);
      }
    }
    CHECK(layout_range(10).next_button.left == 1500);
    CHECK(layout_range(10).next_button.top == 315);
    CHECK(layout_range(18).next_button.left == 1310);
    CHECK(layout_range(18).next_button.top == 305);
  }

  TEST_CASE("from 19 to 20 rows the column goes down by a row, its middle key by a little less") {
    CHECK(layout_range(19).next_button.top == 4805);
    CHECK(layout_range(19).next_to_conf_button.top == 5435);
    CHECK(layout_range(19).dial.top == 6065);
    CHECK(layout_range(20).next_button.top == 4805 + row_pitch);
    CHECK(layout_range(20).next_to_conf_button.top == 5435 + row_pitch - 5);
    CHECK(layout_range(20).dial.top == 6065 + row_pitch);
  }

  TEST_CASE("the key of the options has the size of a key on the panel") {
    for (int rows = 0; rows <= most_rows; ++rows) {
      CHECK(same_size(layout_range(rows).options_button, layout_range(10).next_button));
    }
    CHECK(layout_range(10).options_button.left == 8010);
    CHECK(layout_range(10).options_button.top == layout_range(10).dial.top);
    CHECK(layout_range(18).options_button.left == 9335);
    CHECK(layout_range(18).options_button.top == layout_range(18).dial.top);
    for (const int rows : {19, 20}) {
      const LayoutRange& range = layout_range(rows);
      CHECK(right_of(range.options_button) == right_of(range.next_button));
      CHECK(range.options_button.top == (rows == 19 ? 1190 : 935));
    }
  }

  TEST_CASE("two dials of one size, side by side on the panel or one below the other beside rows") {
    for (int rows = 0; rows <= most_rows; ++rows) {
      CAPTURE(rows);
      const LayoutRange& range = layout_range(rows);
      CHECK(range.clocks_on_form == (rows > 10));
      CHECK(same_size(range.time_clock, Place{0, 0, 1695, 1740}));
      CHECK(same_size(range.show_clock, range.time_clock));
      if (rows <= 10) {
        CHECK(range.time_clock.left == 570);
        CHECK(range.time_clock.top == 950);
        CHECK(range.show_clock.left == right_of(range.time_clock) + 80);
        CHECK(range.show_clock.top == range.time_clock.top);
      } else {
        CHECK(range.time_clock.left == 10260);
        CHECK(range.time_clock.top == 300);
        CHECK(range.show_clock.left == range.time_clock.left);
        CHECK(range.show_clock.top == foot_of(range.time_clock) + 60);
      }
    }
  }

  TEST_CASE("the message display fills what its rows leave above the foot of the form") {
    for (int rows = 0; rows <= 10; ++rows)
      CHECK(message_place(rows) == Place{4395, 1295, 4465, 1145});
    const auto room_below = [](int rows) {
      return content_height(rows) - foot_of(on_panel(rows, message_place(rows)));
    };
    for (int rows = 11; rows <= most_rows; ++rows) {
      CAPTURE(rows);
      CHECK(message_place(rows).left == 1310);
      CHECK(message_place(rows).width == 8440);
      if (rows <= 17) CHECK(message_place(rows).top == 1230);
    }
    for (const int rows : {11, 13, 15, 17, 19}) CHECK(room_below(rows) == 650);
    for (const int rows : {12, 16}) CHECK(room_below(rows) == 645);
    CHECK(room_below(14) == 635);
    for (const int rows : {18, 20}) CHECK(room_below(rows) == 550);
    CHECK(message_place(18).top == 1115);
    CHECK(message_place(19).top == 480);
    CHECK(message_place(20).top == 485);
  }

  TEST_CASE("the label of the link stands above the message display, as wide as that") {
    for (int rows = 0; rows <= most_rows; ++rows) {
      CAPTURE(rows);
      const Place label = link_label_place(rows);
      const Place message = message_place(rows);
      CHECK(label.left == message.left);
      CHECK(label.width == message.width);
      CHECK(label.height == (rows == 18 ? 150 : 255));
      CHECK(foot_of(label) <= message.top);
      CHECK(label.top == (rows <= 10 ? 1005 : rows <= 18 ? 960 : 210));
    }
  }

  TEST_CASE("the band has two lines, below all else on the panel") {
    for (int rows = 0; rows <= most_rows; ++rows) {
      CAPTURE(rows);
      const Place band = band_place(rows);
      const Place upper = band_line_place(rows, 0);
      const Place lower = band_line_place(rows, 1);
      CHECK(band.top > foot_of(message_place(rows)));
      CHECK(upper.top == band.top);
      CHECK(lower.top > foot_of(upper));
      CHECK(foot_of(lower) <= foot_of(band));
      for (const Place& line : {upper, lower}) {
        CHECK(line.left == band.left);
        CHECK(line.width == band.width);
        CHECK(line.height >= 225);
      }
    }
  }

  TEST_CASE("texts that share a line have room by their lengths, side by side to its end") {
    const Place line = band_line_place(10, 0);
    CHECK(parted(line, {}).empty());
    CHECK(parted(line, {7}) == std::vector{line});
    for (const std::vector<std::size_t>& lengths :
         {std::vector<std::size_t>{0, 0}, {1, 1000}, {50, 50, 50}, {10, 20, 30, 40}}) {
      const std::vector<Place> places = parted(line, lengths);
      REQUIRE(places.size() == lengths.size());
      CHECK(places.front().left == line.left);
      CHECK(right_of(places.back()) == right_of(line));
      for (std::size_t i = 0; i < places.size(); ++i) {
        // Nobody is left with less than half of an equal share.
        CHECK(places[i].width * 2 * static_cast<int>(lengths.size()) >= line.width - 200);
        if (i > 0) CHECK(places[i].left == right_of(places[i - 1]) + 30);
        if (i > 0 && lengths[i] > lengths[i - 1]) CHECK(places[i].width > places[i - 1].width);
      }
    }
  }

  TEST_CASE("the corner is covered beside 18 rows only") {
    for (int rows = 0; rows <= most_rows; ++rows) {
      CAPTURE(rows);
      CHECK(low_cover_place(rows).has_value() == (rows == 18));
    }
    CHECK(*low_cover_place(18) == Place{10200, 3870, 1800, 2400});
  }

  TEST_CASE("nothing overlaps and nothing leaves the form") {
    for (int rows = 0; rows <= most_rows; ++rows) {
      for (const bool producer : {false, true}) {
        const auto places = all_places(rows, producer);
        for (std::size_t i = 0; i < places.size(); ++i) {
          const Place& place = places[i].place;
          CAPTURE(rows);
          CAPTURE(places[i].name);
          CHECK(place.left >= 0);
          CHECK(place.top >= 0);
          CHECK(place.left + place.width <= root_width(rows));
          CHECK(place.top + place.height <= content_height(rows));
          for (std::size_t k = i + 1; k < places.size(); ++k) {
            CAPTURE(places[k].name);
            CHECK_FALSE(overlap(place, places[k].place));
          }
        }
      }
    }
  }
}

}  // namespace
}  // namespace test
}  // namespace lineweir
