#include <doctest/doctest.h>

#include "support/next_run.h"

namespace lineweir::test {
namespace {

using Texts = std::vector<std::string>;

TEST_SUITE("callerdata/drafts outlive the program") {
  TEST_CASE("without drafts there is no file") {
    LineDesk desk;
    desk.open(line);
    desk.type(1, "Ann");
    desk.save();
    desk.platform.loop.advance(platform::Milliseconds(2000));
    CHECK_FALSE(desk.platform.files.exists(std::string(draft_file_name)));
    CHECK(desk.take_messages().empty());
  }

  TEST_CASE("half a second after it was typed a text survives the end of the program") {
    LineDesk desk;
    desk.box_sends("N03");
    desk.platform.loop.advance(platform::Milliseconds(5000));
    desk.open(line);
    desk.type(1, "Ann \"x\", Lee");
    desk.platform.loop.advance(platform::Milliseconds(500));

    NextRun next(draft_file(desk));
    CHECK(next.take_messages() ==
          Texts{"Caller data was typed and not saved when Lineweir ended: line 4 (Ann \"x\", Lee). "
                "Open the caller data of the line to save it."});
    next.open(line);
    CHECK(next.text(1) == "Ann \"x\", Lee");
    CHECK(next.tells(hung_up));
    next.save();
    REQUIRE(next.rows().size() == 1);
    CHECK(next.rows()[0][log_name] == "Ann \"x\", Lee");
    CHECK(next.rows()[0][log_placed_on_air] == "10:00:00 AM");
    CHECK(draft_file(next) == "");
  }

  TEST_CASE("that it can't survive is told once, and it does as soon as it can") {
    LineDesk desk;
    const std::string file(draft_file_name);
    desk.box_sends("N03");
    desk.open(line);
    desk.platform.files.set_writable(file, false);
    const auto type_on = [&] {
      desk.type(1, "a");
      desk.platform.loop.advance(platform::Milliseconds(500));
    };
    type_on();
    const Texts told = {
        "Can't write Drafts.csv: Permission denied. What was typed or saved for callers and isn't "
        "in the log yet won't outlive Lineweir. Make room there, or give it the right to that "
        "folder."};
    CHECK(desk.take_messages() == told);
    CHECK(desk.take_trace() == Texts{"DraftKeeper Error - Can't write Drafts.csv: "
                                     "Permission denied"});
    type_on();
    CHECK(desk.take_messages().empty());
    CHECK(desk.text(1) == "aa");
    desk.platform.files.set_writable(file, true);
    type_on();
    CHECK(draft_file(desk).find("aaa") != std::string::npos);
    desk.platform.files.set_writable(file, false);
    type_on();
    CHECK(desk.take_messages() == told);
  }

  TEST_CASE("a caller who is on the line in the next run gets an empty form") {
    LineDesk desk;
    desk.open(line);
    desk.type(1, "Ann");
    desk.console.caller_data.keep_draft();
    NextRun next(draft_file(desk));
    next.box_sends("N03");
    next.open(line);
    CHECK(next.text(1) == "");
    CHECK(next.form().OtherCall.visible);
    next.form().OtherCall.on_click();
    CHECK(next.text(1) == "Ann");
  }

  TEST_CASE("a caller whose clock ran already in the run before has what was typed for him") {
    LineDesk desk;
    desk.box_sends("N03");
    desk.open(line);
    desk.type(1, "Ann");
    desk.console.caller_data.keep_draft();
    NextRun next(draft_file(desk));
    next.server_reports('H');
    next.console.lines.ClockBase(line) = "09:59:00";
    next.console.caller_data.lines_changed();
    next.open(line);
    CHECK(next.text(1) == "Ann");
    CHECK_FALSE(next.form().OtherCall.visible);
    next.connect_socket();
    next.save();
    CHECK(next.shown(line, 1).caption == "Ann");
    CHECK(next.console.caller_data.lines_with_unsaved_data().empty());
    next.server_reports('F');
    CHECK(next.rows().size() == 1);
    CHECK(draft_file(next) == "");
  }

  TEST_CASE("who was told free by mistake as a session began has what was typed for him") {
    LineDesk desk;
    report_same_call(desk, "09:59:00", 'H');
    desk.open(line);
    desk.type(1, "Ann");
    wait(desk, 20);
    desk.console.lines.FreshConnect = true;
    desk.server_reports('F');
    CHECK(desk.tells(hung_up));
    report_same_call(desk, "09:59:00", 'H');
    CHECK(desk.text(1) == "Ann");
    CHECK_FALSE(desk.form().NoticeLabel.visible);
    CHECK_FALSE(desk.form().OtherCall.visible);
  }

  TEST_CASE("another studio's callers are others, whatever its group's number") {
    LineDesk desk;
    desk.box_sends("N03");
    desk.open(line);
    desk.type(1, "Ann");
    desk.console.caller_data.keep_draft();
    NextRun next(draft_file(desk));
    next.console.login.ServerHost = "other.example";
    report_same_call(next, "09:59:00", 'H');
    next.open(line);
    CHECK(next.text(1) == "");
    CHECK(next.form().OtherCall.visible);
  }

  TEST_CASE("who hung up in the run before isn't the one whose clock runs in this one") {
    LineDesk desk;
    desk.box_sends("N03");
    desk.open(line);
    desk.type(1, "Ann");
    desk.console.caller_data.keep_draft();
    desk.box_sends("F03");
    NextRun next(draft_file(desk));
    next.server_reports('H');
    next.console.lines.ClockBase(line) = "09:59:00";
    next.console.caller_data.lines_changed();
    next.open(line);
    CHECK(next.text(1) == "");
  }

  TEST_CASE("the draft of a line that isn't there any more is found on the last one") {
    LineDesk desk;
    desk.console.layout.set_line_count(lines_of_large_layout);
    desk.open(17);
    desk.type(1, "Ann");
    desk.console.caller_data.keep_draft();
    NextRun next(draft_file(desk));
    next.open(9);
    CHECK(next.text(1) == "Ann");
  }

  TEST_CASE("a saved or discarded text leaves the file") {
    LineDesk desk;
    desk.open(line);
    desk.type(1, "Ann");
    desk.form().close();
    CHECK(draft_file(desk) != "");
    desk.open(line);
    desk.save();
    CHECK(draft_file(desk) == "");
  }

  TEST_CASE("several restored texts are told with their lines, and each is saved as its own call") {
    LineDesk desk;
    desk.box_sends("N03N04");
    desk.open(line);
    desk.type(1, "Ann");
    desk.open(4);
    desk.type(3, "Bath");
    desk.form().close();
    NextRun next(draft_file(desk));
    CHECK(next.take_messages() ==
          Texts{"Caller data was typed and not saved when Lineweir ended: line 4 (Ann), line 5. "
                "Open the caller data of the line to save it."});
    next.open(4);
    CHECK(next.text(3) == "Bath");
    CHECK(next.text(1) == "");
    next.save();
    CHECK(next.rows().size() == 1);
    next.open(line);
    CHECK(next.text(1) == "Ann");
    next.form().DiscardCall.on_click();
    CHECK(next.rows().size() == 1);
    CHECK(draft_file(next) == "");
  }

  TEST_CASE("a file that can't be read as drafts is passed over") {
    for (const char* file : {"", "x", "\"", "Line,Call log\r\n1,2\r\n", "\0\xff\n"}) {
      NextRun next(file);
      CHECK(next.take_messages().empty());
    }
  }

  TEST_CASE("the first line and the last have callers before and after as others have") {
    for (const int at : {0, 9}) {
      CAPTURE(at);
      const std::string number = at == 0 ? "00" : "09";
      LineDesk desk;
      desk.box_sends("N" + number);
      desk.open(at);
      desk.type(1, "Ann");
      desk.box_sends("F" + number);
      CHECK_FALSE(desk.form().OtherCall.visible);
      desk.box_sends("R" + number);
      CHECK(desk.form().OtherCall.visible);
      desk.open(at);
      CHECK(desk.text(1) == "");
      desk.form().OtherCall.on_click();
      CHECK(desk.text(1) == "Ann");
      desk.save();
      CHECK(desk.rows().size() == 1);
    }
  }

  TEST_CASE("what is held of one line's ended call opens no form of another line") {
    LineDesk desk;
    desk.box_sends("N03N04");
    desk.open(line);
    desk.type(1, "Ann");
    desk.box_sends("F03");
    desk.open(4);
    CHECK(desk.text(1) == "");
    CHECK_FALSE(desk.form().NoticeLabel.visible);
    desk.open(5);
    CHECK(desk.text(1) == "");
    CHECK_FALSE(desk.form().DiscardCall.visible);
    desk.open(line);
    CHECK(desk.text(1) == "Ann");
    CHECK(desk.tells(hung_up));
  }

  TEST_CASE("a text that was kept needs no further keeping until it is typed on") {
    LineDesk desk;
    desk.box_sends("N03");
    desk.open(line);
    desk.type(1, "Ann");
    CHECK(desk.form().DraftTimer.enabled);
    desk.platform.loop.advance(platform::Milliseconds(600));
    CHECK_FALSE(desk.form().DraftTimer.enabled);
    desk.type(1, "a");
    CHECK(desk.form().DraftTimer.enabled);
    desk.form().close();
    CHECK_FALSE(desk.form().DraftTimer.enabled);
  }
}

}  // namespace
}  // namespace lineweir::test
