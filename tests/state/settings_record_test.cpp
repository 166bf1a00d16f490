#include "state/settings_record.h"

#include <doctest/doctest.h>
#include <rapidcheck.h>

#include <string>

#include "support/failure_number.h"
#include "support/property_check.h"

namespace lineweir {
namespace {

using test::check_property;
using test::failure_number_of;

// A record in which every field differs from its neighbours.
SettingsRecord sample_record() {
  SettingsRecord record;
  record.CommPort = 100;
  record.PortState = true;
  record.RemotePortNumber = 2;
  record.RemoteState = true;
  record.ShowDataFile = "C:\\SHOW.TXT";
  record.DatabasePath = "calls.mdb";
  record.OperatorName = "Marsh";
  record.LogFieldOn = {true, false, true, false, true, false, true, false, true, false};
  record.GroupNumber = 3;
  record.Warning1 = 30;
  record.Warning2 = 10;
  record.MessageFile = "HOT.LWB";
  record.ColumnShown = {-1, -1, 0, -1, 0, 0, 0, 0, 0, -1, 0};
  record.ColumnWidth = {835, 1700, 1701, 1200, 600, 800, 1300, 900, 700, 2500, 1201};
  record.ColumnOrder = {0, 1, 99, 2, 99, 99, 99, 99, 99, 3, 99};
  record.ModeCode = -1;
  record.DisplayUserName = "A. Marsh";
  record.MessageFontName = "Sans";
  record.MessageFontBold = true;
  record.MessageFontSize = 9;
  record.MessageFontItalic = true;
  record.ServerHost = "127.0.0.1";
  record.ServerPort = 0x00010203;
  record.UserPassword = "<\xAC\xAD";
  record.RemoteNextOn = true;
  record.MitelPhoneChoice = 2;
  record.UserFieldName = "Topic";
  record.UserName = "amarsh";
  record.TimeOffset = 12;
  record.WindowHeight = 6970;
  record.WindowWidth = 9420;
  record.WindowState = 2;
  record.GreyScreenOn = true;
  return record;
}

std::string padded(std::string text, std::size_t width) {
  text.resize(width, ' ');
  return text;
}

std::string number(int value) {
  return {static_cast<char>(value & 0xFF), static_cast<char>((value >> 8) & 0xFF)};
}

// The sample's bytes, field by field in the order of the file.
std::string sample_bytes() {
  const std::string yes = number(-1);
  const std::string no = number(0);
  std::string bytes = number(100) + number(1) + number(2) + number(1);
  bytes += padded("C:\\SHOW.TXT", 100) + padded("calls.mdb", 100) + padded("Marsh", 30);
  for (int i = 0; i < 5; ++i) bytes += yes + no;
  bytes += number(3) + number(30) + number(10) + padded("HOT.LWB", 30);
  bytes += yes + yes + no + yes + no + no + no + no + no + yes + no;
  for (const int width : {835, 1700, 1701, 1200, 600, 800, 1300, 900, 700, 2500, 1201}) {
    bytes += number(width);
  }
  for (const int place : {0, 1, 99, 2, 99, 99, 99, 99, 99, 3, 99}) bytes += number(place);
  bytes += number(-1) + padded("A. Marsh", 30) + padded("Sans", 30) + yes + number(9) + yes;
  bytes += padded("127.0.0.1", 20) + std::string("\x03\x02\x01\x00", 4) + number(0);
  bytes += padded("<\xAC\xAD", 15);
  bytes += yes + no + no + no + number(2) + no + padded("Topic", 30) + padded("amarsh", 20);
  bytes += number(12) + no + no + no + number(6970) + number(9420) + number(2);
  bytes += no + no + no + yes;
  return bytes;
}

rc::Gen<std::string> stored_text(std::size_t width) {
  return rc::gen::map(rc::gen::container<std::string>(rc::gen::inRange<char>('!', '~')),
                      [width](std::string text) {
                        text.resize(std::min(text.size(), width));
                        return text;
                      });
}

// Fills every field of a record with something that its place in the file holds.
struct RandomField {
  SettingsRecord& record;
  const SettingsField& field;

  void operator()(int SettingsRecord::*member) const {
    record.*member =
        field.width == 2 ? *rc::gen::arbitrary<std::int16_t>() : *rc::gen::arbitrary<int>();
  }
  void operator()(bool SettingsRecord::*member) const {
    record.*member = *rc::gen::arbitrary<bool>();
  }
  void operator()(std::string SettingsRecord::*member) const {
    record.*member = *stored_text(field.width);
  }
  void operator()(LogFieldFlags SettingsRecord::*member) const {
    for (bool& flag : record.*member) flag = *rc::gen::arbitrary<bool>();
  }
  void operator()(ColumnNumbers SettingsRecord::*member) const {
    for (int& place : record.*member) place = *rc::gen::arbitrary<std::int16_t>();
  }
};

TEST_CASE("a record's bytes are these and no others") {
  CHECK(encode_settings(sample_record()) == sample_bytes());
  CHECK(sample_bytes().size() == settings_record_size);
  const auto read = decode_settings(sample_bytes());
  REQUIRE(read);
  CHECK(*read == sample_record());
}

TEST_CASE("every record that fits its fields comes back as it was") {
  check_property([] {
    SettingsRecord record;
    for (const SettingsField& field : settings_fields) {
      std::visit(RandomField{record, field}, field.member);
    }
    const std::string bytes = encode_settings(record);
    RC_ASSERT(bytes.size() == settings_record_size);
    RC_ASSERT(decode_settings(bytes) == record);
  });
}

TEST_CASE("a file of 0 or 1 bytes holds no record") {
  CHECK_FALSE(decode_settings(""));
  CHECK_FALSE(decode_settings("\x01"));
  CHECK(decode_settings(std::string(2, '\0')));
}

TEST_CASE("a record of any wrong length is read as far as it goes") {
  const std::string whole = sample_bytes();
  for (std::size_t length = 2; length <= whole.size(); ++length) {
    const auto read = decode_settings(whole.substr(0, length));
    REQUIRE(read);
    for (const SettingsField& field : settings_fields) {
      if (field.offset + field.width > length) continue;
      // What was there whole is written again as it was.
      CHECK(encode_settings(*read).substr(field.offset, field.width) ==
            whole.substr(field.offset, field.width));
    }
  }
  CHECK(decode_settings(whole + "and more") == sample_record());
}

TEST_CASE("any bytes at all are read as some record") {
  check_property([](const std::string& bytes) {
    const auto read = decode_settings(bytes);
    RC_ASSERT(read.has_value() == (bytes.size() >= 2));
    if (read) RC_ASSERT(decode_settings(encode_settings(*read)).has_value());
  });
}

TEST_CASE("a text longer than its field loses its tail") {
  SettingsRecord record;
  record.UserPassword = "0123456789ABCDEF";
  CHECK(decode_settings(encode_settings(record))->UserPassword == "0123456789ABCDE");
}

TEST_CASE("a number beyond 16 bits fails, and only the server's port may be larger") {
  SettingsRecord record;
  record.ServerPort = 70000;
  CHECK(decode_settings(encode_settings(record))->ServerPort == 70000);
  record.Warning1 = 32768;
  CHECK(failure_number_of([&] { encode_settings(record); }) == failure_number::overflow);
}

TEST_CASE("any number but 0 is a true flag") {
  std::string bytes = sample_bytes();
  for (const int written : {1, -1, 2, 256}) {
    bytes.replace(551, 2, number(written));
    CHECK(decode_settings(bytes)->GreyScreenOn);
  }
}

}  // namespace
}  // namespace lineweir
