#pragma once

#include "elements/element.h"

namespace lineweir {

// The element through which a form reaches a table of a database file.
class DataSource : public Element {
 public:
  DataSource(Form& form, std::string_view name)
      : Element(form, ElementKind::Data, name, no_index) {}

  Property<std::string> database_name{*this, PropertyId::DatabaseName};
  Property<std::string> record_source{*this, PropertyId::RecordSource};

 protected:
  PropertyId change_property() const override { return PropertyId::DatabaseName; }
};

}  // namespace lineweir
