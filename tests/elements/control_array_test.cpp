#include "elements/control_array.h"

#include <doctest/doctest.h>

#include "elements/label.h"
#include "support/failure_number.h"
#include "support/listen.h"
#include "support/property_check.h"
#include "support/recording_watch.h"

namespace lineweir::test {
namespace {

TEST_SUITE("elements/control array") {
  TEST_CASE("it is made with its model, element 0") {
    Form form("Form");
    const ControlArray<Label> rows(form, "Row");

    CHECK(rows.name() == "Row");
    CHECK(rows.count() == 1);
    CHECK(rows.upper_bound() == 1);
    CHECK(rows(0).index() == 0);
    CHECK(form.find("Row", 0) == &rows(0));
    CHECK(form.find("Row") == nullptr);
  }

  TEST_CASE("a loaded element has the model's properties but isn't visible") {
    Form form("Form");
    ControlArray<Label> rows(form, "Row");
    rows(0).caption = "x";
    rows(0).left = 60;
    rows(0).font.bold = true;

    const Label& loaded = rows.load(3);

    CHECK(loaded.index() == 3);
    CHECK(loaded.caption == "x");
    CHECK(loaded.left.get() == 60);
    CHECK(loaded.font.bold.get());
    CHECK_FALSE(loaded.visible.get());
    CHECK(rows(0).visible.get());
  }

  TEST_CASE("a later change of the model doesn't reach the elements made from it") {
    Form form("Form");
    ControlArray<Label> rows(form, "Row");
    rows.load(1);
    rows(0).caption = "late";
    CHECK(rows(1).caption == "");
  }

  TEST_CASE("elements between are not loaded by loading one beyond them") {
    Form form("Form");
    ControlArray<Label> rows(form, "Row");
    rows.load(3);

    CHECK(rows.count() == 2);
    CHECK(rows.upper_bound() == 4);
    CHECK_FALSE(rows.loaded(1));
    CHECK(form.count("Row") == 2);
  }

  TEST_CASE("an element that isn't there is failure 340") {
    Form form("Form");
    ControlArray<Label> rows(form, "Row");
    rows.load(3);

    for (const int index : {-1, 1, 4, 1000}) {
      CHECK(failure_number_of([&] { rows(index).caption = "x"; }) == 340);
    }
    CHECK(failure_number_of([&] { rows.unload(2); }) == 340);
    CHECK(failure_number_of([&] { rows.unload(-1); }) == 340);
  }

  TEST_CASE("loading what is loaded is failure 360, and so is a negative index") {
    Form form("Form");
    ControlArray<Label> rows(form, "Row");
    rows.load(1).caption = "kept";

    CHECK(failure_number_of([&] { rows.load(0); }) == 360);
    CHECK(failure_number_of([&] { rows.load(1); }) == 360);
    CHECK(failure_number_of([&] { rows.load(-1); }) == 360);
    CHECK(rows(1).caption == "kept");
  }

  TEST_CASE("the model can't be unloaded") {
    Form form("Form");
    ControlArray<Label> rows(form, "Row");
    CHECK(failure_number_of([&] { rows.unload(0); }) == 5);
    CHECK(rows.loaded(0));
  }

  TEST_CASE("unloading the last element lowers the bound past the gaps before it") {
    Form form("Form");
    ControlArray<Label> rows(form, "Row");
    rows.load(2);
    rows.load(5);

    rows.unload(5);
    CHECK(rows.upper_bound() == 3);
    rows.unload(2);
    CHECK(rows.upper_bound() == 1);
    CHECK(rows.load(2).index() == 2);
  }

  TEST_CASE("events are set for the elements there and for those to come") {
    Form form("Form");
    ControlArray<Label> rows(form, "Row");
    rows.load(1);
    std::vector<int> clicked;
    rows.wire_each([&](Label& label) {
      listen(label.on_click, [&clicked, &label] { clicked.push_back(label.index()); });
    });
    rows.load(2);

    for (const int index : {2, 0, 1}) rows(index).on_click();

    CHECK(clicked == std::vector<int>{2, 0, 1});
  }

  TEST_CASE("the form is told of elements that come and go") {
    Form form("Form");
    ControlArray<Label> rows(form, "Row");
    RecordingWatch watch(form);

    rows.load(1);
    CHECK(watch.take() == Told{"+Row(1)", "Row(1).Visible"});
    rows.unload(1);
    CHECK(watch.take() == Told{"-Row(1)"});
    CHECK(form.find("Row", 1) == nullptr);
  }

  TEST_CASE("any loading and unloading leaves what a set of indices would hold") {
    check_property([](const std::vector<std::uint8_t>& steps) {
      Form form("Form");
      ControlArray<Label> rows(form, "Row");
      std::vector<bool> there(8, false);
      there[0] = true;
      for (const std::uint8_t step : steps) {
        const int index = step % 8;
        const auto at = static_cast<std::size_t>(index);
        if (step < 128) {
          RC_ASSERT(failure_number_of([&] { rows.load(index); }) == (there[at] ? 360 : no_failure));
          there[at] = true;
        } else {
          const int expected = index == 0 ? 5 : there[at] ? no_failure : 340;
          RC_ASSERT(failure_number_of([&] { rows.unload(index); }) == expected);
          if (index != 0) there[at] = false;
        }
      }
      int count = 0;
      for (int index = 0; index < 8; ++index) {
        const bool expected = there[static_cast<std::size_t>(index)];
        RC_ASSERT(rows.loaded(index) == expected);
        count += expected ? 1 : 0;
      }
      RC_ASSERT(rows.count() == count);
      RC_ASSERT(form.count("Row") == count);
      RC_ASSERT(rows.loaded(rows.upper_bound() - 1));
    });
  }
}

}  // namespace
}  // namespace lineweir::test
