#include "elements/list_box.h"

#include <doctest/doctest.h>

#include "elements/form.h"
#include "support/failure_number.h"
#include "support/listen.h"
#include "support/recording_watch.h"

namespace lineweir::test {
namespace {

using Texts = std::vector<std::string>;

template <class Control>
struct ListForm {
  Form form{"Form"};
  Control list{form, "List"};

  ListForm() { list.list = Texts{"a", "b", "c"}; }
};

TEST_SUITE("elements/list") {
  TEST_CASE("entries are added behind, changed and taken out by index") {
    ListForm<ListBox> form;
    form.list.add_item("d");
    form.list.set_item(1, "B");
    form.list.remove_item(0);
    CHECK(form.list.list.get() == Texts{"B", "c", "d"});
    CHECK(form.list.list_count() == 3);
  }

  TEST_CASE("an index outside the list is failure 5 and changes nothing") {
    ListForm<ListBox> form;
    for (const int index : {-1, 3, 1000}) {
      CHECK(failure_number_of([&] { form.list.remove_item(index); }) == 5);
      CHECK(failure_number_of([&] { form.list.set_item(index, "x"); }) == 5);
      CHECK(failure_number_of([&] { form.list.select(index); }) == 5);
    }
    CHECK(form.list.list.get() == Texts{"a", "b", "c"});
    CHECK(form.list.list_index.get() == -1);
  }

  TEST_CASE("each change of the entries is one notice") {
    ListForm<ListBox> form;
    RecordingWatch watch(form.form);
    form.list.add_item("d");
    form.list.set_item(0, "a");
    CHECK(watch.take() == Told{"List.List"});
  }

  TEST_CASE("a choice by hand runs the click, even of the entry already chosen") {
    ListForm<ListBox> form;
    int clicks = 0;
    listen(form.list.on_click, [&] { ++clicks; });
    form.list.select(2);
    form.list.select(2);
    CHECK(form.list.list_index.get() == 2);
    CHECK(clicks == 2);
    form.list.list_index = 0;
    CHECK(clicks == 2);
  }

  TEST_CASE("the choice follows its entry when one before it goes, and ends with its own") {
    ListForm<ListBox> form;
    form.list.select(2);
    form.list.remove_item(0);
    CHECK(form.list.list_index.get() == 1);
    form.list.remove_item(1);
    CHECK(form.list.list_index.get() == -1);
    form.list.select(0);
    form.list.add_item("later");
    form.list.remove_item(1);
    CHECK(form.list.list_index.get() == 0);
  }

  TEST_CASE("clearing takes the choice with it") {
    ListForm<ListBox> form;
    form.list.select(1);
    form.list.clear();
    CHECK(form.list.list_count() == 0);
    CHECK(form.list.list_index.get() == -1);
  }
}

TEST_SUITE("elements/combo box") {
  TEST_CASE("the box shows the chosen entry") {
    ListForm<ComboBox> form;
    int changes = 0;
    listen(form.list.on_change, [&] { ++changes; });
    form.list.select(1);
    CHECK(form.list.text == "b");
    CHECK(changes == 1);
  }

  TEST_CASE("no choice, and a choice beyond the list, leave the text") {
    ListForm<ComboBox> form;
    form.list.text = "typed";
    form.list.list_index = 7;
    form.list.list_index = -1;
    CHECK(form.list.text == "typed");
  }

  TEST_CASE("taking out an entry before the chosen one keeps the text") {
    ListForm<ComboBox> form;
    form.list.select(2);
    form.list.remove_item(0);
    CHECK(form.list.list_index.get() == 1);
    CHECK(form.list.text == "c");
  }
}

}  // namespace
}  // namespace lineweir::test
