#pragma once

#include "elements/button.h"
#include "elements/form.h"

namespace lineweir {

// LogDataForm: which of the ten fields of a caller's details are in use.
class LogDataWindow : public Form {
 public:
  LogDataWindow();

  CheckBox CallerNameCheck{*this, "CallerNameCheck"};
  CheckBox StreetAddressCheck{*this, "StreetAddressCheck"};
  CheckBox CityCheck{*this, "CityCheck"};
  CheckBox StateCheck{*this, "StateCheck"};
  CheckBox ZipCodeCheck{*this, "ZipCodeCheck"};
  CheckBox PhoneNumberCheck{*this, "PhoneNumberCheck"};
  CheckBox StationCheck{*this, "StationCheck"};
  CheckBox BandCheck{*this, "BandCheck"};
  CheckBox CommentsCheck{*this, "CommentsCheck"};
  CheckBox UserCheck{*this, "UserCheck"};
  Button ExitLayout{*this, "ExitLayout", "E&xit"};
  Button CancelLayout{*this, "CancelLayout", "&Cancel"};

  // The ten boxes in the order of the fields.
  CheckBox& box(std::size_t field);
};

}  // namespace lineweir
