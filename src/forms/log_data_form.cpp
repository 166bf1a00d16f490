#include "forms/log_data_form.h"

#include <array>

#include "forms/columns.h"
#include "forms/entry_fields.h"

namespace lineweir {
namespace {

constexpr std::array boxes = {
    &LogDataWindow::CallerNameCheck, &LogDataWindow::StreetAddressCheck,
    &LogDataWindow::CityCheck,       &LogDataWindow::StateCheck,
    &LogDataWindow::ZipCodeCheck,    &LogDataWindow::PhoneNumberCheck,
    &LogDataWindow::StationCheck,    &LogDataWindow::BandCheck,
    &LogDataWindow::CommentsCheck,   &LogDataWindow::UserCheck,
};
static_assert(boxes.size() == log_field_count);

constexpr int row_pitch = 375;

}  // namespace

LogDataWindow::LogDataWindow() : Form("LogDataForm") {
  caption = "Log Data Options";
  width = 4200;
  height = 4600;
  for (std::size_t field = 0; field < boxes.size(); ++field) {
    const auto column = static_cast<std::size_t>(entry_fields[field].column);
    box(field).caption = column_rules[column].heading;
    box(field).move(240, 150 + row_pitch * static_cast<int>(field), 3700, 315);
  }
  ExitLayout.move(1480, 4050, 1215, 375);
  CancelLayout.move(2805, 4050, 1215, 375);
}

CheckBox& LogDataWindow::box(std::size_t field) { return this->*boxes.at(field); }

}  // namespace lineweir
