#include "callerdata/received_data.h"

#include <doctest/doctest.h>

#include "support/entry_form.h"
#include "support/server_packet.h"

namespace lineweir::test {
namespace {

using Texts = std::vector<std::string>;

// Eleven texts: the sender and "1" to "10".
std::string details(const std::string& sender, const std::string& mark = "") {
  std::string text = sender + '\2';
  for (int entry = 1; entry <= entry_field_count; ++entry)
    text += mark + std::to_string(entry) + '\2';
  return text;
}

void call_back(EntryForm& test, const std::string& data, int line) {
  test.platform.remote_objects.call_back("ReturnCallerData",
                                         {data, std::int64_t{line}, std::int64_t{1}});
  test.platform.loop.run_pending();
}

void check_row(EntryForm& test, int line, const std::string& mark) {
  for (int entry = 1; entry <= entry_field_count; ++entry) {
    CAPTURE(entry);
    CHECK(trimmed(test.shown(line, entry).caption.get()) == mark + std::to_string(entry));
  }
}

TEST_SUITE("callerdata/received data") {
  TEST_CASE("a call-back writes row and record of the line, which it counts from 1") {
    EntryForm test;
    call_back(test, details("Jo"), 4);
    check_row(test, 3, "");
    for (int entry = 1; entry <= entry_field_count; ++entry) {
      CHECK(trimmed(test.record(3)[entry_field(entry).field]) == std::to_string(entry));
    }
    CHECK(test.take_trace().empty());
  }

  TEST_CASE("over the socket the row shows the data and the record doesn't hold them") {
    EntryForm test;
    test.connect_socket();
    test.record(3).set(CallerField::Comments, "own");
    test.record(3).set(CallerField::TimeOnHold, "00:01:00");
    test.receive(3, details("Jo"));
    check_row(test, 3, "");
    for (int entry = 1; entry <= entry_field_count; ++entry) {
      CHECK(trimmed(test.record(3)[entry_field(entry).field]).empty());
    }
    CHECK(test.record(3)[CallerField::TimeOnHold] == "00:01:00");
  }

  TEST_CASE("what the record holds already, told again without a name, shows and stays held") {
    EntryForm test;
    test.connect_socket();
    for (int entry = 1; entry <= entry_field_count; ++entry) {
      test.record(3).set(entry_field(entry).field, std::to_string(entry));
    }
    test.receive(3, details(""));
    check_row(test, 3, "");
    for (int entry = 1; entry <= entry_field_count; ++entry) {
      CHECK(trimmed(test.record(3)[entry_field(entry).field]) == std::to_string(entry));
    }
    // Others are another seat's.
    test.receive(3, details("", "x"));
    check_row(test, 3, "x");
    CHECK(trimmed(test.record(3)[entry_field(1).field]).empty());
  }

  TEST_CASE("a name is the user's own whatever blanks are around it, and not where it goes on") {
    for (const char* name : {"Jon", " Jon ", "  Jon  "}) {
      CAPTURE(name);
      EntryForm test;
      test.connect_socket();
      test.console.program.ClientId = "Jon";
      test.receive(3, details(name));
      CHECK(test.shown(3, 1).caption == "");
    }
    for (const char* name : {"Jo", "Jox", "Jonx", "Joan"}) {
      CAPTURE(name);
      EntryForm test;
      test.connect_socket();
      test.console.program.ClientId = "Jon";
      test.receive(3, details(name));
      CHECK(test.shown(3, 1).caption == "1");
    }
  }

  TEST_CASE("what another user sends is his, also where the record holds the same") {
    EntryForm test;
    test.connect_socket();
    for (int entry = 1; entry <= entry_field_count; ++entry) {
      test.record(3).set(entry_field(entry).field, std::to_string(entry));
    }
    test.receive(3, details("Tom"));
    check_row(test, 3, "");
    CHECK(trimmed(test.record(3)[entry_field(1).field]).empty());
  }

  TEST_CASE("data that come with a ring are of the call that this begins") {
    EntryForm test;
    test.console.Lineweir.Timer1.enabled = false;
    test.console.lines.ThePhoneFlag = 2;
    SUBCASE("over the socket") {
      test.connect_socket();
      ServerPacket ring = server_packet(ServerCommand::SrvLineStatus, "R");
      ring.LineNo = 3;
      ServerPacket data = server_packet(ServerCommand::SrvCallerData, details(""));
      data.LineNo = 3;
      test.platform.winsock1.arrive(frame_of(ring) + frame_of(data));
      test.platform.loop.advance(platform::Milliseconds(200));
    }
    SUBCASE("over remote objects") {
      test.platform.remote_objects.call_back("ReturnCommand", {std::string("F00F01F02R03")});
      call_back(test, details(""), 4);
      test.platform.loop.advance(platform::Milliseconds(200));
    }
    REQUIRE(test.console.lines.StatusLetter(3) == 'R');
    check_row(test, 3, "");
    test.open(3);
    for (int entry = 1; entry <= entry_field_count; ++entry) {
      CAPTURE(entry);
      CHECK(trimmed(test.text(entry)) == std::to_string(entry));
    }
  }

  TEST_CASE("the fixed fields cut and pad") {
    EntryForm test;
    std::string data = "Jo\2";
    for (int entry = 1; entry <= entry_field_count; ++entry) data += std::string(120, 'x') + '\2';
    call_back(test, data, 1);
    CHECK(test.shown(0, 7).caption.get() == std::string(10, 'x'));
    CHECK(test.shown(0, 8).caption.get() == std::string(6, 'x'));
    CHECK(test.shown(0, 10).caption.get() == std::string(100, 'x'));
    CHECK(test.shown(0, 9).caption.get() == std::string(120, 'x'));
    call_back(test, details("Jo"), 1);
    CHECK(test.shown(0, 7).caption.get() == "7");
    CHECK(test.record(0)[CallerField::Station] == "7         ");
  }

  TEST_CASE("what this console sent itself changes nothing, also if the data differ") {
    EntryForm test;
    test.connect_socket();
    test.console.program.OperatorName = std::string(" \0Jo\0 ", 6);
    call_back(test, details("Jo"), 1);
    test.receive(0, details("Jo"));
    CHECK(test.shown(0, 1).caption == "");
    // The name of the sender is compared as it came.
    call_back(test, details(" Jo"), 1);
    check_row(test, 0, "");
  }

  TEST_CASE("the empty text empties name, city and comments of the row and nothing else") {
    EntryForm test;
    test.connect_socket();
    for (const bool over_socket : {false, true}) {
      CAPTURE(over_socket);
      call_back(test, details("Jo"), 1);
      const CallerRecord before = test.record(0);
      if (over_socket) {
        test.receive(0, "");
      } else {
        call_back(test, "", 1);
      }
      for (int entry = 1; entry <= entry_field_count; ++entry) {
        CAPTURE(entry);
        const bool emptied = entry == 1 || entry == 3 || entry == 9;
        CHECK(trimmed(test.shown(0, entry).caption.get()) ==
              (emptied ? "" : std::to_string(entry)));
      }
      CHECK(test.record(0) == before);
    }
  }

  TEST_CASE("what comes back from Form4 is read as it was sent") {
    EntryForm sender;
    sender.connect_socket();
    sender.console.program.OperatorName = "Jo";
    sender.open(2);
    for (int entry = 1; entry <= entry_field_count; ++entry) {
      sender.box(entry).text = "f" + std::to_string(entry);
    }
    sender.save();
    const std::string frame = sender.platform.winsock1.take_writes().at(0);

    EntryForm receiver;
    receiver.call_data_arrives(frame);
    check_row(receiver, 2, "f");
  }

  TEST_CASE("data that can't be are reported and change nothing") {
    EntryForm test;
    test.connect_socket();
    for (const int line : {0, -1, 11, 30000}) {
      CAPTURE(line);
      call_back(test, details("Jo"), line);
      CHECK(test.take_trace() ==
            Texts{"CBClientClass_ReturnCallerData Error - Subscript out of range"});
    }
    test.receive(255, details("Jo"));
    CHECK(test.take_trace().size() > 0);
    CHECK(test.shown(0, 1).caption == "");
  }

  TEST_CASE("over the socket the row shows the texts without the blanks of their fields") {
    EntryForm test;
    test.connect_socket();
    test.receive(3, "Jo\2  Ann \2\2 Bath\2");
    CHECK(test.shown(3, 1).caption == "Ann");
    CHECK(test.shown(3, 3).caption == "Bath");
    for (int entry = 4; entry <= entry_field_count; ++entry) {
      CHECK(test.shown(3, entry).caption == "");
    }
  }
}

}  // namespace
}  // namespace lineweir::test
