#include "elements/property.h"

#include <doctest/doctest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "elements/grid.h"
#include "elements/label.h"
#include "elements/line.h"
#include "elements/list_box.h"
#include "support/listen.h"
#include "support/property_check.h"
#include "support/recording_watch.h"

namespace lineweir::test {
namespace {

constexpr int last_property = static_cast<int>(PropertyId::RecordSource);

TEST_SUITE("elements/property") {
  TEST_CASE("a changed value is told once, after the change") {
    Form form("Form");
    Label label(form, "Name");
    RecordingWatch watch(form);

    label.caption = "Ready";
    label.left = 60;
    label.visible = false;

    CHECK(watch.take() == Told{"Name.Caption", "Name.Left", "Name.Visible"});
    CHECK(label.caption == "Ready");
  }

  TEST_CASE("setting an equal value tells nobody") {
    Form form("Form");
    Label label(form, "Name");
    ListBox list(form, "List");
    label.caption = "Ready";
    list.add_item("one");
    int changes = 0;
    listen(label.on_change, [&] { ++changes; });
    RecordingWatch watch(form);

    label.caption = "Ready";
    label.left = 0;
    label.visible = true;
    list.list = std::vector<std::string>{"one"};
    CHECK(label.caption.assign(std::string("Ready")));
    form.caption = "";

    CHECK(watch.take().empty());
    CHECK(changes == 0);
  }

  TEST_CASE("any sequence of values is told as often as the value really changes") {
    check_property([](const std::vector<int>& values) {
      Form form("Form");
      Label label(form, "Name");
      RecordingWatch watch(form);
      std::size_t changes = 0;
      int present = label.left;
      for (const int value : values) {
        if (value != present) ++changes;
        present = value;
        label.left = value;
      }
      RC_ASSERT(watch.take().size() == changes);
      RC_ASSERT(label.left.get() == present);
    });
  }

  TEST_CASE("assigning one property to another takes the value, not the element") {
    Form form("Form");
    Label model(form, "Model");
    Label copy(form, "Copy");
    model.caption = "Held";
    model.left = 5;
    RecordingWatch watch(form);

    copy.caption = model.caption;
    copy.left = model.left;

    CHECK(watch.take() == Told{"Copy.Caption", "Copy.Left"});
    copy.caption = "Next";
    CHECK(model.caption == "Held");
  }

  TEST_CASE("a value of the wrong type is refused and changes nothing") {
    Form form("Form");
    Label label(form, "Name");
    Grid grid(form, "Grid", 2, 2);
    label.caption = "Ready";
    RecordingWatch watch(form);

    CHECK_FALSE(label.caption.assign(std::int64_t{5}));
    CHECK_FALSE(label.left.assign(std::string("5")));
    CHECK_FALSE(label.left.assign(true));
    CHECK_FALSE(label.visible.assign(std::int64_t{0}));
    CHECK_FALSE(grid.cells.assign(std::string("x")));
    CHECK_FALSE(label.left.assign(std::int64_t{INT32_MAX} + 1));
    CHECK_FALSE(label.left.assign(std::int64_t{INT32_MIN} - 1));

    CHECK(watch.take().empty());
    CHECK(label.left.assign(std::int64_t{INT32_MIN}));
    CHECK(label.left.get() == INT32_MIN);
  }

  TEST_CASE("a value read from a property can be assigned to one of its kind") {
    Form form("Form");
    Label from(form, "From");
    Label to(form, "To");
    from.caption = "x";
    from.left = -7;
    from.visible = false;

    to.copy_properties(from);

    for (const PropertyBase* property : from.properties()) {
      CHECK(to.property(property->id())->value() == property->value());
    }
  }

  TEST_CASE("properties that the model doesn't have stay") {
    Form form("Form");
    Label label(form, "Label");
    ListBox list(form, "List");
    label.caption = "x";
    list.left = 30;

    label.copy_properties(list);

    CHECK(label.caption == "x");
    CHECK(label.left.get() == 30);
    CHECK(label.property(PropertyId::List) == nullptr);
  }

  TEST_CASE("each property has the name by which scripts know it, found whatever the case") {
    const std::vector<std::string> names = {
        "Caption",      "Text",         "Visible",     "Enabled",     "Checked",   "Value",
        "Picture",      "Left",         "Top",         "Width",       "Height",    "X1",
        "Y1",           "X2",           "Y2",          "BorderWidth", "ForeColor", "BackColor",
        "FillColor",    "Alignment",    "FontName",    "FontSize",    "FontBold",  "FontItalic",
        "SelStart",     "List",         "ListIndex",   "Cells",       "Row",       "Col",
        "Rows",         "Headings",     "SortColumn",  "SortDown",    "Interval",  "WindowState",
        "MousePointer", "NoLink",       "LinkedTo",    "Withheld",    "TabStop",   "Hint",
        "ToolTip",      "DatabaseName", "RecordSource"};
    REQUIRE(names.size() == last_property + 1);
    for (int number = 0; number <= last_property; ++number) {
      const auto id = static_cast<PropertyId>(number);
      const std::string& name = names[static_cast<std::size_t>(number)];
      CHECK(property_name(id) == name);
      CHECK(property_named(name) == id);
    }
    CHECK(property_named("fontSIZE") == PropertyId::FontSize);
    CHECK_FALSE(property_named("Captio"));
    CHECK_FALSE(property_named(""));
    CHECK(property_name(static_cast<PropertyId>(last_property + 1)).empty());
  }

  TEST_CASE("an element's change event belongs to its main property and follows the notice") {
    Form form("Form");
    Label label(form, "Name");
    Shape lamp(form, "Lamp");
    Told told;
    class Watch : public FormWatch {
     public:
      Watch(Form& watched, Told& events) : FormWatch(watched), events_(events) {}
      void changed(Element&, PropertyId) override { events_.push_back("notice"); }

     private:
      Told& events_;
    } watch(form, told);
    listen(label.on_change, [&] { told.push_back("change of " + label.caption.get()); });
    listen(lamp.on_change, [&] { told.push_back("lamp"); });

    label.caption = "Held";
    label.left = 1;
    lamp.left = 1;
    lamp.fill_color = color_red;

    CHECK(told == Told{"notice", "change of Held", "notice", "notice", "notice", "lamp"});
  }
}

}  // namespace
}  // namespace lineweir::test
