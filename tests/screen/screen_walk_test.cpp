// The main form as it really stands for every row count, with and without its menu bar, in talent
// and producer mode, at design size and at other sizes.

#include <doctest/doctest.h>

#include <array>
#include <cmath>
#include <string>
#include <vector>

#include "support/rows_of.h"

namespace lineweir::test {
namespace {

constexpr int most_rows_walked = 20;

struct Edges {
  std::string name;
  int left;
  int top;
  int right;
  int bottom;
};

// The element's edges on the form, whatever it stands in.
Edges edges_of(const Control& control) {
  int left = control.left;
  int top = control.top;
  for (const Control* outer = control.container(); outer != nullptr; outer = outer->container()) {
    left += outer->left;
    top += outer->top;
  }
  return {control.name() + (control.index() == no_index ? "" : std::to_string(control.index())),
          left, top, left + control.width, top + control.height};
}

// Places are rounded to whole twips one by one, in their container as well: a fifth of a pixel.
constexpr int rounding = 3;

bool overlap(const Edges& a, const Edges& b) {
  return a.left < b.right - rounding && b.left < a.right - rounding &&
         a.top < b.bottom - rounding && b.top < a.bottom - rounding;
}

bool inside(const Edges& part, const Edges& whole) {
  return part.left >= whole.left - rounding && part.top >= whole.top - rounding &&
         part.right <= whole.right + rounding && part.bottom <= whole.bottom + rounding;
}

// All that stands side by side and may not touch.
std::vector<Edges> side_by_side(MainForm& form) {
  std::vector<const Control*> controls = {
      &form.Label10, &form.Label9,           &form.NextButton, &form.NextToConfButton, &form.Dial,
      &form.Label1,  &form.OptionsButton,    &form.Text1,      &form.picRealTimeClock, &form.Drop1,
      &form.Hold1,   &form.picShowTimeClock, &form.Shape1,     &form.LowCover};
  if (!form.ScreenerMode.checked) {
    controls.push_back(&form.Drop2);
    controls.push_back(&form.Hold2);
  }
  for (int line = 0; line < form.DataRow.upper_bound(); ++line) {
    controls.push_back(&form.DataRow(line));
    controls.push_back(&form.OnHybrid1(line));
    controls.push_back(&form.OnHybrid2(line));
  }
  std::vector<Edges> edges;
  for (const Control* control : controls) {
    if (control->visible) edges.push_back(edges_of(*control));
  }
  return edges;
}

Edges content_of(const MainForm& form) {
  return {"content", 0, 0, form.width, form.height - (form.Options.visible ? 285 : 0)};
}

void check_side_by_side(MainForm& form) {
  const std::vector<Edges> edges = side_by_side(form);
  const Edges content = content_of(form);
  for (std::size_t i = 0; i < edges.size(); ++i) {
    CAPTURE(edges[i].name);
    CHECK(inside(edges[i], content));
    for (std::size_t k = i + 1; k < edges.size(); ++k) {
      if (!overlap(edges[i], edges[k])) continue;
      FAIL_CHECK(edges[i].name << " overlaps " << edges[k].name);
    }
  }
}

void check_rows(Console& console) {
  MainForm& form = console.Lineweir;
  const Control& below_top = console.program.VisibleLines > 0
                                 ? static_cast<Control&>(form.DataRow(0))
                                 : static_cast<Control&>(form.ScreenBottom);
  CHECK(edges_of(form.ScreenTop).bottom == below_top.top);
  for (int line = 0; line < console.program.VisibleLines; ++line) {
    CAPTURE(line);
    const Edges strip = edges_of(form.DataRow(line));
    const Edges below = line + 1 < console.program.VisibleLines ? edges_of(form.DataRow(line + 1))
                                                                : edges_of(form.ScreenBottom);
    CHECK(strip.bottom == below.top);
    int left = strip.left;
    for (const int column : console.display.ColumnsInUse) {
      const Edges label = edges_of(form.column_labels(column)(line));
      CHECK(inside(label, strip));
      CHECK(label.left >= left - rounding);
      left = label.right;
      CHECK(std::abs(form.CaptionLabel(column).left - label.left) <= rounding);
    }
  }
}

// What lies on a button lies within it.
void check_lettering(MainForm& form) {
  for (const PanelButton& laid : form.panel_buttons()) {
    CAPTURE(laid.button.name());
    CHECK(laid.image.width == laid.button.width);
    CHECK(laid.image.height == laid.button.height);
    CHECK(inside(edges_of(laid.label), edges_of(laid.button)));
  }
}

void check_backgrounds(const MainForm& form) {
  const Edges content = content_of(form);
  const Edges top = edges_of(form.ScreenTop);
  const Edges bottom = edges_of(form.ScreenBottom);
  CHECK(top.left == 0);
  CHECK(top.top == 0);
  CHECK(top.right == content.right);
  CHECK(bottom.left == 0);
  CHECK(bottom.right == content.right);
  CHECK(bottom.bottom == content.bottom);
  CHECK(form.ScreenTopImage.width == form.ScreenTop.width);
  CHECK(form.ScreenTopImage.height == form.ScreenTop.height);
  CHECK(form.ScreenBottomImage.width == form.ScreenBottom.width);
  CHECK(form.ScreenBottomImage.height == form.ScreenBottom.height);
}

void check_form(Console& console) {
  check_side_by_side(console.Lineweir);
  check_rows(console);
  check_lettering(console.Lineweir);
  check_backgrounds(console.Lineweir);
}

struct Size {
  double across;
  double down;
};
// Smaller, as designed, half as large again, and a large screen.
constexpr std::array sizes = {Size{0.7, 0.75}, Size{1, 1}, Size{1.5, 1.5}, Size{4.8, 3.6}};

TEST_SUITE("screen: every row count") {
  TEST_CASE("nothing overlaps and nothing leaves the form, at any size and in either mode") {
    ScriptedConsole desk;
    Console& console = desk.console;
    MainForm& form = console.Lineweir;
    form.EventClockMenu.on_click();
    form.TimeClockMenuItem.on_click();
    for (const bool producer : {false, true}) {
      (producer ? form.ScreenerMode : form.StudioMode).on_click();
      for (const bool menus : {true, false}) {
        if (form.Options.visible != menus) form.OptionsButton.on_click();
        for (int rows = 0; rows <= most_rows_walked; ++rows) {
          show_rows(console, rows);
          const int width = form.width;
          const int height = form.height;
          for (const Size& size : sizes) {
            CAPTURE(producer);
            CAPTURE(menus);
            CAPTURE(rows);
            CAPTURE(size.across);
            resize(console, static_cast<int>(width * size.across),
                   static_cast<int>(height * size.down));
            CHECK(console.program.VisibleLines == rows);
            check_form(console);
          }
        }
      }
    }
  }

  TEST_CASE("at design size the elements have the design's numbers") {
    ScriptedConsole desk;
    Console& console = desk.console;
    MainForm& form = console.Lineweir;
    for (int rows = 1; rows <= most_rows_walked; ++rows) {
      // Its design size is a pixel less than the size of its layout.
      if (rows == 17) continue;
      CAPTURE(rows);
      show_rows(console, rows);
      const bool small = rows <= 10;
      const int first = small ? 420 : 600;
      const int panel = first + 315 * rows;
      CHECK(form.width == (small ? 9420 : 12000));
      CHECK(form.DataRow(0).left == (small ? 1260 : 1310));
      CHECK(form.DataRow(rows - 1).top == panel - 315);
      CHECK(form.DataRow(rows - 1).height == 315);
      CHECK(form.LineNumb(rows - 1).top == panel - 315 + 45);
      CHECK(form.LineNumb(0).left == form.DataRow(0).left + 60);
      CHECK(form.CaptionLabel(0).top == (small ? 180 : 150));
      CHECK(form.ScreenBottom.top == panel);
      CHECK(form.Drop1.left == (small ? 300 : 290));
      CHECK(form.Drop1.top == panel + 105);
      CHECK(form.Hold1.top == panel + 510);
      CHECK(form.Drop2.left == (small ? 675 : 665));
      CHECK(form.Text1.left == (small ? 4395 : 1310));
      CHECK(form.Text1.width == (small ? 4465 : 8440));
      CHECK(form.Text2.top == form.Text1.top);
      CHECK(form.Text2.height == form.Text1.height);
      CHECK(form.Label1.top == (small ? 1005 : rows <= 18 ? 960 : 210));
      CHECK(form.picRealTimeClock.left == (small ? 570 : 10260));
      CHECK(form.picRealTimeClock.top == (small ? 950 : 300));
      CHECK(form.picShowTimeClock.left == (small ? 2345 : 10260));
      CHECK(form.picShowTimeClock.top == (small ? 950 : 2100));
    }
  }

  TEST_CASE("from 18 to 19 rows the buttons move to the right column, to 20 down by a row") {
    ScriptedConsole desk;
    Console& console = desk.console;
    const MainForm& form = console.Lineweir;
    struct Row {
      int rows;
      int left;
      int top;
      int options_left;
      int options_top;
      const char* top_picture;
    };
    for (const Row& expected :
         {Row{18, 1310, 305, 9335, 305, "20TM.jpg"}, Row{19, 10340, 4805, 10610, 1190, "19TM.jpg"},
          Row{20, 10340, 5120, 10610, 935, "20TM.jpg"}}) {
      CAPTURE(expected.rows);
      show_rows(console, expected.rows);
      CHECK(form.NextButton.left == expected.left);
      CHECK(form.NextButton.top == expected.top);
      CHECK((form.NextButton.container() == nullptr) == (expected.rows > 18));
      CHECK(form.OptionsButton.left == expected.options_left);
      CHECK(form.OptionsButton.top == expected.options_top);
      CHECK(form.BlackScreenTop.picture == expected.top_picture);
      CHECK(form.LowCover.visible == (expected.rows == 18));
    }
  }

  TEST_CASE("a form enlarged by half has each element at one and a half times its design left") {
    ScriptedConsole desk;
    Console& console = desk.console;
    const MainForm& form = console.Lineweir;
    resize(console, 9420 * 3 / 2, 7255 * 3 / 2);
    CHECK(form.DataRow(0).left == 1890);
    CHECK(form.OnHybrid1(4).left == 1170);
    CHECK(form.NextButton.left == 2250);
    CHECK(form.Dial.left == 6300);
    CHECK(form.Drop1.left == 450);
    CHECK(form.picRealTimeClock.left == 855);
    // Fonts follow only where text grows with the form.
    CHECK(form.LineName(0).font.size == 8);
  }

  TEST_CASE("no rows: the panel stays, and no row is shown") {
    ScriptedConsole desk;
    Console& console = desk.console;
    MainForm& form = console.Lineweir;
    for (int line = 0; line < 10; ++line) console.DisplayOptionForm.LineCheck(line).value = 0;
    console.row_choice.RefreshVisibleRows();
    CHECK(console.program.VisibleLines == 0);
    CHECK(root_height(0, true) == 7005);
    for (int line = 0; line < 10; ++line) CHECK_FALSE(form.DataRow(line).visible);
    CHECK(form.NextButton.shown());
    CHECK(form.NextButton.picture == "Center1Up");
    CHECK(form.ScreenTopImage.visible);
    check_backgrounds(form);
  }
}

}  // namespace
}  // namespace lineweir::test
