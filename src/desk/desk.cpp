#include "desk/desk.h"

namespace lineweir::desk {
namespace {

struct CadenceText {
  int cadence;
  std::string_view text;
};

constexpr std::array cadence_texts = {
    CadenceText{0, ""},      CadenceText{8, "on"},    CadenceText{12, "AIR"},
    CadenceText{16, "ring"}, CadenceText{24, "hold"}, CadenceText{88, "rdy"},
};

constexpr std::size_t heading_width = 6;
constexpr std::size_t cell_width = 4;
constexpr std::size_t message_length = 3;

std::string padded(std::string text, std::size_t width) {
  if (text.size() < width) text.append(width - text.size(), ' ');
  return text;
}

std::size_t place(int number) { return static_cast<std::size_t>(number); }

}  // namespace

std::string lamp_text(int cadence) {
  for (const CadenceText& row : cadence_texts) {
    if (row.cadence == cadence) return std::string(row.text);
  }
  return std::to_string(cadence);
}

std::vector<LampPlace> Desk::receive(std::string_view bytes) {
  std::vector<LampPlace> changed;
  for (const LampMessage& message : reader_.receive(bytes)) {
    const auto column = column_of(layout_, message.address);
    if (!column) {
      strange_ += message_length;
      continue;
    }
    const std::array cadence = {message.first, message.second};
    for (int row = 0; row < lamp_rows; ++row) {
      int& lamp = lamps_[place(row)][place(*column)];
      if (lamp == cadence[place(row)]) continue;
      lamp = cadence[place(row)];
      changed.push_back({row, *column});
    }
  }
  return changed;
}

std::optional<std::string> Desk::press(std::string_view key) const {
  const auto code = key_code(layout_, key);
  if (!code) return std::nullopt;
  return std::string(1, static_cast<char>(*code));
}

int Desk::lamp(LampPlace lamp) const { return lamps_.at(place(lamp.row)).at(place(lamp.column)); }

std::optional<std::string> Desk::shown(std::string_view lamp_wanted) const {
  for (int row = 0; row < lamp_rows; ++row) {
    for (int column = 0; column < lamp_columns; ++column) {
      if (lamp_name(layout_, {row, column}) == lamp_wanted) return lamp_text(lamp({row, column}));
    }
  }
  return std::nullopt;
}

std::string Desk::picture() const {
  if (layout_ == Layout::TenLines) {
    return heading_row(1) + lamp_row("main", 0) + lamp_row("conf", 1) +
           "\n  drop1 [DROP] hold1 [HOLD]   drop2 [DROP] hold2 [HOLD]   next [NEXT]\n"
           "  dial  [1][2][3][4][5][6][7][8][9][0][*][#]\n";
  }
  return heading_row(1) + lamp_row("", 0) + heading_row(lamp_columns + 1) + lamp_row("", 1) +
         "\n  drop1 [DROP] hold1 [HOLD]   next [NEXT]\n"
         "  dial  [1][2][3][4][5][6][7][8][9][0][*][#]\n";
}

std::string Desk::heading_row(int first_line) const {
  std::string row = "  " + padded("line", heading_width);
  for (int column = 0; column < lamp_columns; ++column) {
    row += "  " + padded(std::to_string(first_line + column), cell_width);
  }
  row.erase(row.find_last_not_of(' ') + 1);
  return row + '\n';
}

std::string Desk::lamp_row(std::string_view heading, int row) const {
  std::string text = "  " + padded(std::string(heading), heading_width);
  for (int column = 0; column < lamp_columns; ++column) {
    text += '[' + padded(lamp_text(lamp({row, column})), cell_width) + ']';
  }
  return text + '\n';
}

}  // namespace lineweir::desk
