#include "elements/form.h"

#include <doctest/doctest.h>

#include "elements/label.h"
#include "elements/picture.h"
#include "elements/timer.h"
#include "support/listen.h"
#include "support/recording_watch.h"

namespace lineweir::test {
namespace {

struct EventForm : Form {
  EventForm() : Form("Form") {
    listen(on_load, [this] { events.push_back("load"); });
    listen(on_unload, [this] { events.push_back("unload"); });
  }
  Told events;
};

TEST_SUITE("elements/form") {
  TEST_CASE("a form is loaded by its first showing and stays loaded while hidden") {
    EventForm form;
    CHECK_FALSE(form.loaded());

    form.show();
    form.hide();
    form.show();

    CHECK(form.loaded());
    CHECK(form.visible.get());
    CHECK(form.events == Told{"load"});
  }

  TEST_CASE("loading alone shows nothing") {
    EventForm form;
    form.load();
    form.load();
    CHECK(form.events == Told{"load"});
    CHECK_FALSE(form.visible.get());
  }

  TEST_CASE("unloading hides, takes the focus off and lets the form be loaded again") {
    EventForm form;
    Label label(form, "Label");
    form.show();
    label.set_focus();

    form.unload();
    form.unload();
    CHECK_FALSE(form.visible.get());
    CHECK_FALSE(form.loaded());
    CHECK(form.focused() == nullptr);

    form.show();
    CHECK(form.events == Told{"load", "unload", "load"});
  }

  TEST_CASE("elements keep their values over an unload") {
    EventForm form;
    Label label(form, "Label");
    form.show();
    label.caption = "kept";
    form.unload();
    form.show();
    CHECK(label.caption == "kept");
  }

  TEST_CASE("a form whose loading ends in unloading isn't shown") {
    Form form("Form");
    listen(form.on_load, [&] { form.unload(); });
    form.show();
    CHECK_FALSE(form.visible.get());
    CHECK_FALSE(form.loaded());
  }

  TEST_CASE("showing a form that is shown brings it to the front") {
    Form form("Form");
    RecordingWatch watch(form);
    form.show();
    CHECK(watch.take() == Told{"Form.Visible"});
    form.show();
    CHECK(watch.take() == Told{"shown again"});
  }

  TEST_CASE("the close button unloads, unless the form has its own answer") {
    EventForm form;
    form.show();
    listen(form.on_close, [&] { form.hide(); });
    form.close();
    CHECK(form.loaded());
    CHECK_FALSE(form.visible.get());

    form.on_close.forget_handler();
    form.close();
    CHECK(form.events == Told{"load", "unload"});
  }

  TEST_CASE("elements are found by name and index, whatever the case") {
    Form form("Form");
    Label plain(form, "LineName");
    Label indexed(form, "LineName", 2);

    CHECK(form.find("linename") == &plain);
    CHECK(form.find("LINENAME", 2) == &indexed);
    CHECK(form.find("LineName", 1) == nullptr);
    CHECK(form.find("Line") == nullptr);
    CHECK(form.find("") == nullptr);
    CHECK(form.count("LineNAME") == 2);
    CHECK(form.count("Nobody") == 0);
  }

  TEST_CASE("elements stand in the order of making until one is brought to the front") {
    Form form("Form");
    Label back(form, "Back");
    Label middle(form, "Middle");
    Label front(form, "Front");
    RecordingWatch watch(form);

    back.bring_to_front();
    back.bring_to_front();

    CHECK(form.elements() == std::vector<Element*>{&middle, &front, &back});
    CHECK(watch.take() == Told{"raised Back"});
  }

  TEST_CASE("an element that goes leaves the form, the focus included") {
    Form form("Form");
    Label stays(form, "Stays");
    RecordingWatch watch(form);
    {
      Label goes(form, "Goes");
      goes.set_focus();
      CHECK(watch.take() == Told{"+Goes", "focus Goes"});
    }
    CHECK(watch.take() == Told{"-Goes"});
    CHECK(form.elements() == std::vector<Element*>{&stays});
    CHECK(form.focused() == nullptr);
  }

  TEST_CASE("a control is shown only with all its containers") {
    Form form("Form");
    Picture panel(form, "Panel");
    Picture frame(form, "Frame");
    Label label(form, "Label");
    RecordingWatch watch(form);
    frame.set_container(&panel);
    label.set_container(&frame);
    label.set_container(&frame);
    CHECK(watch.take() == Told{"moved Frame", "moved Label"});
    CHECK(label.container() == &frame);

    CHECK(label.shown());
    panel.visible = false;
    CHECK_FALSE(label.shown());
    label.set_container(nullptr);
    CHECK(label.shown());
  }

  TEST_CASE("moving tells only what really moved") {
    Form form("Form");
    Label label(form, "Label");
    RecordingWatch watch(form);
    label.move(1, 2, 3, 4);
    CHECK(watch.take() == Told{"Label.Left", "Label.Top", "Label.Width", "Label.Height"});
    label.move(1, 5);
    CHECK(watch.take() == Told{"Label.Top"});
  }

  TEST_CASE("an observer that has left is told nothing") {
    Form form("Form");
    RecordingWatch stays(form);
    {
      RecordingWatch leaves(form);
      form.caption = "one";
      CHECK(leaves.take().size() == 1);
    }
    form.caption = "two";
    CHECK(stays.take() == Told{"Form.Caption", "Form.Caption"});
  }

  TEST_CASE("a timer without a handler may tick") {
    Form form("Form");
    Timer timer(form, "Timer1", true, 100);
    timer.tick();
    int ticks = 0;
    listen(timer.on_timer, [&] { ++ticks; });
    timer.tick();
    CHECK(ticks == 1);
  }
}

TEST_SUITE("elements/focus") {
  struct FocusForm {
    Form form{"Form"};
    Label first{form, "First"};
    Label second{form, "Second"};
    Label third{form, "Third"};
    Told events;

    FocusForm() {
      for (Label* label : {&first, &second, &third}) {
        listen(label->on_got_focus, [this, label] { events.push_back("got " + label->name()); });
        listen(label->on_lost_focus, [this, label] { events.push_back("lost " + label->name()); });
      }
    }
  };

  TEST_CASE("the loser is told before the winner") {
    FocusForm form;
    RecordingWatch watch(form.form);
    form.first.set_focus();
    form.second.set_focus();
    CHECK(form.events == Told{"got First", "lost First", "got Second"});
    CHECK(form.form.focused() == &form.second);
    CHECK(watch.take() == Told{"focus First", "focus Second"});
  }

  TEST_CASE("the focus may go to nothing") {
    FocusForm form;
    form.first.set_focus();
    form.form.focus(nullptr);
    CHECK(form.events == Told{"got First", "lost First"});
    CHECK(form.form.focused() == nullptr);
  }

  TEST_CASE("giving the focus to its owner does nothing") {
    FocusForm form;
    form.first.set_focus();
    RecordingWatch watch(form.form);
    form.first.set_focus();
    CHECK(form.events == Told{"got First"});
    CHECK(watch.take().empty());
  }

  TEST_CASE("a handler of the loser may send the focus on") {
    FocusForm form;
    form.first.set_focus();
    listen(form.first.on_lost_focus, [&] { form.third.set_focus(); });
    form.second.set_focus();
    CHECK(form.form.focused() == &form.third);
    CHECK(form.events == Told{"got First", "lost Second", "got Third"});
  }
}

}  // namespace
}  // namespace lineweir::test
