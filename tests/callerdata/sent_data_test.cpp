#include "callerdata/caller_data.h"

#include <doctest/doctest.h>

#include "support/caller_data_frame.h"
#include "support/entry_form.h"
#include "support/server_packet.h"

namespace lineweir::test {
namespace {

using Texts = std::vector<std::string>;

TEST_SUITE("callerdata/saved data on their way") {
  TEST_CASE("on the serial link nothing goes out") {
    EntryForm test;
    test.platform.winsock1.stand_connected();
    test.platform.comm1.open();
    test.open(0);
    test.type(1, "Ann");
    test.save();
    CHECK(test.platform.winsock1.take_writes().empty());
    CHECK(test.platform.comm1.take_writes().empty());
    CHECK(test.platform.remote_objects.take_calls().empty());
    CHECK_FALSE(test.form().loaded());
  }

  TEST_CASE("over the socket one frame goes out with eleven texts") {
    EntryForm test;
    test.connect_socket();
    test.console.program.OperatorName = " Jo ";
    test.console.program.GroupNumber = 3;
    test.console.program.ConsoleNumber = 2;
    test.open(4);
    test.box(1).text = "  Ann Lee ";
    test.box(3).text = "Albany";
    test.box(7).text = " WXYZ ";
    test.box(8).text = "Female";
    test.box(10).text = "vip";
    test.save();
    CHECK(test.platform.winsock1.take_writes() ==
          Texts{data_frame(4, 3, 2,
                           fields_text("Jo", {"Ann Lee", "", "Albany", "", "", "", "WXYZ", "Female",
                                              "", "vip"}))});
    // The row and the texts of any length have what was typed, the fixed fields the trimmed text.
    CHECK(test.shown(4, 1).caption == "  Ann Lee ");
    CHECK(test.record(4)[CallerField::CallerName] == "  Ann Lee ");
    CHECK(test.record(4)[CallerField::Station] == "WXYZ      ");
    CHECK_FALSE(test.form().loaded());
  }

  TEST_CASE("codes 0 around a text don't go out") {
    EntryForm test;
    test.connect_socket();
    test.open(0);
    test.box(1).text = std::string("\0\0Ann\0", 6);
    test.box(7).text = std::string("\0KQ\0", 4);
    test.save();
    CHECK(test.platform.winsock1.take_writes() ==
          Texts{data_frame(
              0, 1, 0,
              fields_text(test.console.program.ClientId, {"Ann", "", "", "", "", "", "KQ"}))});
    CHECK(test.record(0)[CallerField::Station] == "KQ        ");
  }

  TEST_CASE("characters that part fields and frames become blanks") {
    EntryForm test;
    test.connect_socket();
    test.open(0);
    test.box(1).text = "\1A\2B\3C\4\4D\5\5E\r\nF";
    test.save();
    CHECK(test.shown(0, 1).caption == " A B C  D  E  F");
    CHECK(
        test.platform.winsock1.take_writes() ==
        Texts{data_frame(0, 1, 0, fields_text(test.console.program.ClientId, {"A B C  D  E  F"}))});
  }

  TEST_CASE("over the remote objects the property of the line is written, which counts from 1") {
    EntryForm test;
    test.connect_remote();
    test.console.program.OperatorName = "Jo";
    test.console.program.GroupNumber = 3;
    // The remote objects go before the socket.
    test.connect_socket();
    test.open(4);
    test.type(1, "Ann");
    test.save();
    const auto calls = test.platform.remote_objects.take_calls();
    REQUIRE(calls.size() == 1);
    CHECK(calls[0].member == "CallerDataServer");
    REQUIRE(calls[0].arguments.size() == 3);
    CHECK(std::get<std::int64_t>(calls[0].arguments[0]) == 5);
    CHECK(std::get<std::int64_t>(calls[0].arguments[1]) == 3);
    CHECK(std::get<std::string>(calls[0].arguments[2]) == fields_text("Jo", {"Ann"}));
    CHECK(test.platform.winsock1.take_writes().empty());
  }

  TEST_CASE("clearing a line's data is the empty text on both roads") {
    EntryForm test;
    test.console.data_sender.tell_data_cleared("Test", 4);
    test.connect_socket();
    test.console.data_sender.tell_data_cleared("Test", 4);
    CHECK(test.platform.winsock1.take_writes() == Texts{data_frame(4, 1, 0, "")});
    test.connect_remote();
    test.console.data_sender.tell_data_cleared("Test", 4);
    const auto calls = test.platform.remote_objects.take_calls();
    REQUIRE(calls.size() == 1);
    CHECK(std::get<std::int64_t>(calls[0].arguments[0]) == 5);
    CHECK(std::get<std::string>(calls[0].arguments[2]) == "");
  }

  TEST_CASE(
      "without a connection it says so, and the row and the record are changed all the same") {
    EntryForm test;
    test.console.Lineweir.WinsockMenu.checked = true;
    test.open(2);
    test.type(1, "Ann");
    test.save();
    CHECK(test.take_messages() == Texts{"Lineweir is not currently connected to a server."});
    CHECK(test.shown(2, 1).caption == "Ann");
    CHECK(test.record(2)[CallerField::CallerName] == "Ann");
    // The text waits for another try.
    CHECK(test.form().loaded());
    CHECK(test.text(1) == "Ann");
    test.connect_socket();
    test.save();
    CHECK(test.platform.winsock1.take_writes().size() == 1);
    CHECK_FALSE(test.form().loaded());
  }

  TEST_CASE("another failure is tried again and then reported, and the record stays changed") {
    EntryForm test;
    test.console.Lineweir.NetworkConnectionOption.checked = true;
    test.open(2);
    test.type(1, "Ann");
    test.save();
    CHECK(test.take_trace() ==
          Texts{"Form4_Command3D1_Click Error - The remote objects are not connected"});
    CHECK(test.record(2)[CallerField::CallerName] == "Ann");
    CHECK(test.text(1) == "Ann");
  }

  TEST_CASE("a line that the table doesn't have is reported") {
    EntryForm test;
    test.open(10);
    CHECK(test.take_trace() == Texts{"Form4_Form_Load Error - Subscript out of range"});
    test.save();
    CHECK(test.take_trace().at(0).starts_with("Form4_Command3D1_Click Error - "));
  }
}

}  // namespace
}  // namespace lineweir::test
