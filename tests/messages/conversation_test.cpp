#include "messages/conversation.h"

#include <doctest/doctest.h>
#include <rapidcheck.h>

#include "support/property_check.h"

namespace lineweir::test {
namespace {

std::string from(std::string_view sender, std::string_view text) {
  return std::string(sender) + sender_end + std::string(text);
}

TEST_SUITE("messages/conversation") {
  TEST_CASE("a message shows its sender, a sign and all behind the first mark") {
    CHECK(shown_message(from("Ann", "Hi")) == "Ann>Hi");
    CHECK(shown_message(from("Ann", from("Bea", "Hi"))) == "Ann>Bea\x03Hi");
    CHECK(shown_message("Hi") == "Hi");
    CHECK(shown_message("") == "");
    CHECK(shown_message(from("", "")) == ">");
  }

  TEST_CASE("what is typed loses what would end a frame, and keeps its lines") {
    CHECK(sendable("a\x02\x03\x04\x04\x05\x05z") == "az");
    CHECK(sendable("a\tb\r\nc \xff") == "a\tb\r\nc \xff");
    CHECK(sendable(std::string("\0\x1f\x7f", 3)) == "");
    CHECK(sendable_line("a\r\nb\nc\x05") == "a  b c");
  }

  TEST_CASE("a line goes to the end of the conversation with the name in front") {
    CHECK(with_line("Hi", "Ann", "Yo") == "Hi\r\nAnn> Yo");
    CHECK(with_line("", "", "") == "\r\n> ");
  }

  TEST_CASE("a conversation that has room stays whole") {
    const std::string full(longest_message, 'x');
    CHECK(last_lines(full) == full);
    CHECK(last_lines("") == "");
    CHECK(last_lines("\r\n") == "\r\n");
  }

  TEST_CASE("whole lines go from the top, and no more than must") {
    const std::string rest = "last\r\n" + std::string(longest_message - 6, 'x');
    CHECK(last_lines("first\r\n" + rest) == rest);
    CHECK(last_lines("first\r\nsecond\r\n" + rest) == rest);
    CHECK(last_lines("\r\n" + rest) == rest);
  }

  TEST_CASE("the last line stays whatever its length") {
    const std::string longer(longest_message + 1, 'x');
    CHECK(last_lines(longer) == longer);
    CHECK(last_lines("first\r\n" + longer) == longer);
    CHECK(last_lines(longer + "\r\nlast") == "last");
  }

  TEST_CASE("what is left is always the end of the conversation, from the beginning of a line") {
    check_property([] {
      std::string whole;
      const int lines = *rc::gen::inRange(0, 80);
      for (int line = 0; line < lines; ++line) {
        whole += std::string(static_cast<std::size_t>(*rc::gen::inRange(0, 1500)), 'x') +
                 *rc::gen::element<std::string>("\r\n", "\r", "\n", "\r\n\r\n");
      }
      const std::string left = last_lines(whole);
      RC_ASSERT(whole.ends_with(left));
      const std::size_t gone = whole.size() - left.size();
      constexpr std::string_view breaks = "\r\n";
      RC_ASSERT(left.size() <= longest_message || left.find_first_of(breaks) == std::string::npos);
      if (gone == 0) return;
      RC_ASSERT(breaks.find(whole[gone - 1]) != std::string_view::npos);
      RC_ASSERT(!(whole[gone - 1] == '\r' && left.starts_with('\n')));
      // One line more would have been too much.
      const std::size_t own_break = gone > 1 && whole.substr(gone - 2, 2) == breaks ? 2 : 1;
      const std::size_t before =
          gone == own_break ? std::string::npos : whole.find_last_of(breaks, gone - own_break - 1);
      const std::size_t with_one_more =
          whole.size() - (before == std::string::npos ? 0 : before + 1);
      RC_ASSERT(with_one_more > longest_message);
    });
  }

  TEST_CASE("who wrote what is told from a dialog's message and from a conversation's last line") {
    const auto check = [](const std::string& message, const char* sender, const char* text) {
      CAPTURE(message);
      const SeatMessage words = words_of(message);
      CHECK(words.sender == sender);
      CHECK(words.text == text);
    };
    check(from("Ann", "Ann> Hi"), "Ann", "Hi");
    check(from("Ann", "Ann> Hi\r\nthere"), "Ann", "Hi\r\nthere");
    check(from("Ann", "Bea>Hi\r\nBea> Yo\r\nAnn> Yes"), "Ann", "Yes");
    check(from("Ann", "\r\nAnn> Yes"), "Ann", "Yes");
    check(from("", "\r\n> Yes"), "", "Yes");
    check(from("Ann", "other words"), "Ann", "other words");
    check("no sender", "", "no sender");
    check("", "", "");
  }
}

}  // namespace
}  // namespace lineweir::test
