#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

#include "forms/columns.h"
#include "forms/entry_fields.h"
#include "lines/caller_record.h"

namespace lineweir {

inline constexpr std::string_view settings_file_name = "Writ.inf";
// Beside it, what its record has no room for.
inline constexpr std::string_view further_settings_file = "lineweir.ini";

// Of each column that is shown as the user chooses.
inline constexpr int optional_column_count = column_count - first_optional_column;

using ColumnNumbers = std::array<int, optional_column_count>;

// The connection that the settings name beside the serial ports 1 to 4. Those from the lowest code
// of a way on are no ports.
inline constexpr int connection_none = 0;
inline constexpr int lowest_way_code = 99;
inline constexpr int connection_remote_objects = lowest_way_code;
inline constexpr int connection_socket = 100;

// A column that List1 doesn't hold.
inline constexpr int column_not_listed = 99;

// The settings file's one record: 553 bytes, packed. Numbers are little-endian, 16 bits and signed
// but for ServerPort, which has 32; a true flag is -1; texts have one byte a character and are
// padded with blanks on the right. Every field from RemoteNextOn on stands at an odd offset.
struct SettingsRecord {
  int CommPort = connection_none;
  bool PortState = false;
  int RemotePortNumber = 0;
  bool RemoteState = false;
  std::string ShowDataFile;
  std::string DatabasePath;
  std::string OperatorName;
  LogFieldFlags LogFieldOn{};
  int GroupNumber = 0;
  int Warning1 = 0;
  int Warning2 = 0;
  std::string MessageFile;
  // By column less 2: the columns 2 to 12.
  ColumnNumbers ColumnShown{};
  ColumnNumbers ColumnWidth{};
  ColumnNumbers ColumnOrder{};
  int ModeCode = 0;
  std::string DisplayUserName;
  std::string MessageFontName;
  bool MessageFontBold = false;
  int MessageFontSize = 0;
  bool MessageFontItalic = false;
  std::string ServerHost;
  int ServerPort = 0;
  int reserved = 0;
  // Scrambled; trailing blanks of the field belong to the padding.
  std::string UserPassword;
  bool RemoteNextOn = false;
  bool EventClockOn = false;
  bool TimeClockOn = false;
  bool AutoDataOn = false;
  int MitelPhoneChoice = 0;
  bool LineNamesOn = false;
  std::string UserFieldName;
  std::string UserName;
  int TimeOffset = 0;
  bool SyncTimeOn = false;
  bool DigiClockOn = false;
  bool Line20On = false;
  int WindowHeight = 0;
  int WindowWidth = 0;
  int WindowState = 0;
  bool ServerShowOn = false;
  bool TextGrowOn = false;
  bool NextBarOff = false;
  bool GreyScreenOn = false;

  friend bool operator==(const SettingsRecord&, const SettingsRecord&) = default;
};

// A flag of the record is held as -1 (or as 1, where the kind says so) for true and 0 for false;
// any number but 0 is read as true.
enum class SettingKind { Number, Flag, FlagOfOne, Text, Flags, Numbers };

struct SettingsField {
  using Member =
      std::variant<int SettingsRecord::*, bool SettingsRecord::*, std::string SettingsRecord::*,
                   LogFieldFlags SettingsRecord::*, ColumnNumbers SettingsRecord::*>;

  std::size_t offset;
  std::size_t width;
  SettingKind kind;
  Member member;
};

inline constexpr std::size_t settings_record_size = 553;

inline constexpr std::array settings_fields = {
    SettingsField{0, 2, SettingKind::Number, &SettingsRecord::CommPort},
    SettingsField{2, 2, SettingKind::FlagOfOne, &SettingsRecord::PortState},
    SettingsField{4, 2, SettingKind::Number, &SettingsRecord::RemotePortNumber},
    SettingsField{6, 2, SettingKind::FlagOfOne, &SettingsRecord::RemoteState},
    SettingsField{8, 100, SettingKind::Text, &SettingsRecord::ShowDataFile},
    SettingsField{108, 100, SettingKind::Text, &SettingsRecord::DatabasePath},
    SettingsField{208, 30, SettingKind::Text, &SettingsRecord::OperatorName},
    SettingsField{238, 20, SettingKind::Flags, &SettingsRecord::LogFieldOn},
    SettingsField{258, 2, SettingKind::Number, &SettingsRecord::GroupNumber},
    SettingsField{260, 2, SettingKind::Number, &SettingsRecord::Warning1},
    SettingsField{262, 2, SettingKind::Number, &SettingsRecord::Warning2},
    SettingsField{264, 30, SettingKind::Text, &SettingsRecord::MessageFile},
    SettingsField{294, 22, SettingKind::Numbers, &SettingsRecord::ColumnShown},
    SettingsField{316, 22, SettingKind::Numbers, &SettingsRecord::ColumnWidth},
    SettingsField{338, 22, SettingKind::Numbers, &SettingsRecord::ColumnOrder},
    SettingsField{360, 2, SettingKind::Number, &SettingsRecord::ModeCode},
    SettingsField{362, 30, SettingKind::Text, &SettingsRecord::DisplayUserName},
    SettingsField{392, 30, SettingKind::Text, &SettingsRecord::MessageFontName},
    SettingsField{422, 2, SettingKind::Flag, &SettingsRecord::MessageFontBold},
    SettingsField{424, 2, SettingKind::Number, &SettingsRecord::MessageFontSize},
    SettingsField{426, 2, SettingKind::Flag, &SettingsRecord::MessageFontItalic},
    SettingsField{428, 20, SettingKind::Text, &SettingsRecord::ServerHost},
    SettingsField{448, 4, SettingKind::Number, &SettingsRecord::ServerPort},
    SettingsField{452, 2, SettingKind::Number, &SettingsRecord::reserved},
    SettingsField{454, 15, SettingKind::Text, &SettingsRecord::UserPassword},
    SettingsField{469, 2, SettingKind::Flag, &SettingsRecord::RemoteNextOn},
    SettingsField{471, 2, SettingKind::Flag, &SettingsRecord::EventClockOn},
    SettingsField{473, 2, SettingKind::Flag, &SettingsRecord::TimeClockOn},
    SettingsField{475, 2, SettingKind::Flag, &SettingsRecord::AutoDataOn},
    SettingsField{477, 2, SettingKind::Number, &SettingsRecord::MitelPhoneChoice},
    SettingsField{479, 2, SettingKind::Flag, &SettingsRecord::LineNamesOn},
    SettingsField{481, 30, SettingKind::Text, &SettingsRecord::UserFieldName},
    SettingsField{511, 20, SettingKind::Text, &SettingsRecord::UserName},
    SettingsField{531, 2, SettingKind::Number, &SettingsRecord::TimeOffset},
    SettingsField{533, 2, SettingKind::Flag, &SettingsRecord::SyncTimeOn},
    SettingsField{535, 2, SettingKind::Flag, &SettingsRecord::DigiClockOn},
    SettingsField{537, 2, SettingKind::Flag, &SettingsRecord::Line20On},
    SettingsField{539, 2, SettingKind::Number, &SettingsRecord::WindowHeight},
    SettingsField{541, 2, SettingKind::Number, &SettingsRecord::WindowWidth},
    SettingsField{543, 2, SettingKind::Number, &SettingsRecord::WindowState},
    SettingsField{545, 2, SettingKind::Flag, &SettingsRecord::ServerShowOn},
    SettingsField{547, 2, SettingKind::Flag, &SettingsRecord::TextGrowOn},
    SettingsField{549, 2, SettingKind::Flag, &SettingsRecord::NextBarOff},
    SettingsField{551, 2, SettingKind::Flag, &SettingsRecord::GreyScreenOn},
};

constexpr bool settings_fields_are_seamless() {
  std::size_t end = 0;
  for (const SettingsField& field : settings_fields) {
    if (field.offset != end) return false;
    end += field.width;
  }
  return end == settings_record_size;
}
static_assert(settings_fields_are_seamless());
// The file has room for so many fields and columns.
static_assert(entry_field_count == 10 && optional_column_count == 11);

// The record's bytes. Texts are cut and padded to their fields; a number that doesn't fit its field
// is a Failure of number 6.
std::string encode_settings(const SettingsRecord& record);

// Reads a record as far as the bytes go: what is missing reads as 0 and as the empty text. Texts
// lose their padding. Nothing for fewer than 2 bytes, which is a file without a record.
std::optional<SettingsRecord> decode_settings(std::string_view bytes);

}  // namespace lineweir
