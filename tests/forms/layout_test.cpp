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
      {"LogWaiting", on_panel(rows, log_waiting_place(rows))},
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

TEST_SUITE("forms/layout: the form") {
  TEST_CASE("each row count has its design size, with and without the menu bar") {
    for (int rows = 0; rows <= most_rows; ++rows) {
      CAPTURE(rows);
      int with_bar = 8880;
      int without_bar = 8595;
      if (rows <= 10) {
        with_bar = rows * 315 + 4105;
        without_bar = rows * 315 + 3820;
      }
      CHECK(content_height(rows) == without_bar);
      if (rows == 0) with_bar = without_bar = 7005;
      CHECK(root_height(rows, true) == with_bar);
      CHECK(root_height(rows, false) == without_bar);
      CHECK(root_width(rows) == (rows <= 10 ? 9420 : 12000));
    }
  }

  TEST_CASE("a reset gives some row counts another height") {
    for (int rows = 0; rows <= most_rows; ++rows) {
      CAPTURE(rows);
      int with_bar = 8881;
      int without_bar = 8595;
      if (rows <= 10) {
        with_bar = rows * 315 + 4105;
        without_bar = rows * 315 + 3820;
      }
      if (rows == 0) with_bar = without_bar = 7255;
      if (rows == 17) {
        with_bar = 8865;
        without_bar = 8580;
      }
      CHECK(reset_height(rows, true) == with_bar);
      CHECK(reset_height(rows, false) == without_bar);
    }
  }

  TEST_CASE("rows follow one another without a gap down to the panel") {
    for (int rows = 0; rows <= most_rows; ++rows) {
      CAPTURE(rows);
      const int first = rows <= 10 ? 420 : 600;
      for (int row = 0; row < rows; ++row) CHECK(row_top(rows, row) == first + 315 * row);
      CHECK(panel_top(rows) == first + 315 * rows);
    }
  }
}

TEST_SUITE("forms/layout: the panel") {
  TEST_CASE("up to 10 rows") {
    for (int rows = 0; rows <= 10; ++rows) {
      CAPTURE(rows);
      const LayoutRange& range = layout_range(rows);
      CHECK(range.caption_top == 180);
      CHECK(range.main_heading == Place{680, 180, 575, 225});
      CHECK(range.conference_heading == Place{8910, 180, 465, 225});
      CHECK(range.main_button_left == 780);
      CHECK(range.conference_button_left == 8955);
      CHECK(range.strip_left == 1260);
      CHECK(range.strip_width == 7590);
      CHECK(range.drop_left == 300);
      CHECK(range.second_drop_left == 675);
      CHECK(range.next_button == Place{1500, 315, 1290, 500});
      CHECK(range.next_to_conf_button == Place{2850, 315, 1290, 500});
      CHECK(range.dial == Place{4200, 315, 1290, 500});
      CHECK_FALSE(range.buttons_on_form);
      CHECK(range.options_button == Place{8010, 315, 1290, 500});
      CHECK(link_label_place(rows) == Place{4395, 1005, 4465, 255});
      CHECK(range.time_clock == Place{570, 950, 1695, 1740});
      CHECK(range.show_clock == Place{2345, 950, 1695, 1740});
      CHECK_FALSE(range.clocks_on_form);
      CHECK(range.lamp == Place{9090, 60, 195, 195});
      CHECK_FALSE(range.lamp_on_form);
      CHECK(message_place(rows) == Place{4395, 1295, 4465, 1145});
    }
  }

  TEST_CASE("11 to 20 rows share the sides, the clocks and the lamp") {
    for (int rows = 11; rows <= most_rows; ++rows) {
      CAPTURE(rows);
      const LayoutRange& range = layout_range(rows);
      CHECK(range.caption_top == 150);
      CHECK(range.main_heading == Place{730, 150, 575, 225});
      CHECK(range.conference_heading == Place{9750, 150, 465, 225});
      CHECK(range.main_button_left == 830);
      CHECK(range.conference_button_left == 9795);
      CHECK(range.strip_left == 1310);
      CHECK(range.strip_width == 8380);
      CHECK(range.drop_left == 290);
      CHECK(range.second_drop_left == 665);
      CHECK(range.time_clock == Place{10260, 300, 1695, 1740});
      CHECK(range.show_clock == Place{10260, 2100, 1695, 1740});
      CHECK(range.clocks_on_form);
      CHECK(range.lamp == Place{11700, 60, 195, 195});
      CHECK(range.lamp_on_form);
    }
  }

  TEST_CASE("the buttons stand on the panel up to 18 rows and beside the rows from 19") {
    for (int rows = 11; rows <= 18; ++rows) {
      CAPTURE(rows);
      const LayoutRange& range = layout_range(rows);
      CHECK(range.next_button == Place{1310, 305, 1290, 500});
      CHECK(range.next_to_conf_button == Place{2660, 305, 1290, 500});
      CHECK(range.dial == Place{4010, 305, 1290, 500});
      CHECK_FALSE(range.buttons_on_form);
      CHECK(range.options_button == Place{9335, 305, 1290, 500});
    }
    const LayoutRange& with_19 = layout_range(19);
    CHECK(with_19.next_button == Place{10340, 4805, 1560, 500});
    CHECK(with_19.next_to_conf_button == Place{10340, 5435, 1560, 500});
    CHECK(with_19.dial == Place{10340, 6065, 1560, 500});
    CHECK(with_19.buttons_on_form);
    CHECK(with_19.options_button == Place{10610, 1190, 1290, 500});

    const LayoutRange& with_20 = layout_range(20);
    CHECK(with_20.next_button == Place{10340, 5120, 1560, 500});
    CHECK(with_20.next_to_conf_button == Place{10340, 5745, 1560, 500});
    CHECK(with_20.dial == Place{10340, 6380, 1560, 500});
    CHECK(with_20.buttons_on_form);
    CHECK(with_20.options_button == Place{10610, 935, 1290, 500});
  }

  TEST_CASE("the message display shrinks row by row") {
    struct Row {
      int rows;
      int top;
      int height;
    };
    for (const Row& expected :
         {Row{11, 1230, 2650}, Row{12, 1230, 2340}, Row{13, 1230, 2020}, Row{14, 1230, 1720},
          Row{15, 1230, 1390}, Row{16, 1230, 1080}, Row{17, 1230, 760}, Row{18, 1115, 660},
          Row{19, 480, 880}, Row{20, 485, 660}}) {
      CAPTURE(expected.rows);
      CHECK(message_place(expected.rows) == Place{1310, expected.top, 8440, expected.height});
    }
  }

  TEST_CASE("the label of the link stands above the message display") {
    for (int rows = 11; rows <= most_rows; ++rows) {
      CAPTURE(rows);
      CHECK(link_label_place(rows) ==
            Place{1310, rows <= 18 ? 960 : 210, 8440, rows == 18 ? 150 : 255});
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
