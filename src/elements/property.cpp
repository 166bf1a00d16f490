#include "elements/property.h"

#include <array>

#include "base/names.h"
#include "elements/element.h"

namespace lineweir {
namespace {

struct PropertyNameRow {
  PropertyId id;
  std::string_view name;
};

constexpr std::array property_names = {
    PropertyNameRow{PropertyId::Caption, "Caption"},
    PropertyNameRow{PropertyId::Text, "Text"},
    PropertyNameRow{PropertyId::Visible, "Visible"},
    PropertyNameRow{PropertyId::Enabled, "Enabled"},
    PropertyNameRow{PropertyId::Checked, "Checked"},
    PropertyNameRow{PropertyId::Value, "Value"},
    PropertyNameRow{PropertyId::Picture, "Picture"},
    PropertyNameRow{PropertyId::Left, "Left"},
    PropertyNameRow{PropertyId::Top, "Top"},
    PropertyNameRow{PropertyId::Width, "Width"},
    PropertyNameRow{PropertyId::Height, "Height"},
    PropertyNameRow{PropertyId::X1, "X1"},
    PropertyNameRow{PropertyId::Y1, "Y1"},
    PropertyNameRow{PropertyId::X2, "X2"},
    PropertyNameRow{PropertyId::Y2, "Y2"},
    PropertyNameRow{PropertyId::BorderWidth, "BorderWidth"},
    PropertyNameRow{PropertyId::ForeColor, "ForeColor"},
    PropertyNameRow{PropertyId::BackColor, "BackColor"},
    PropertyNameRow{PropertyId::FillColor, "FillColor"},
    PropertyNameRow{PropertyId::Alignment, "Alignment"},
    PropertyNameRow{PropertyId::FontName, "FontName"},
    PropertyNameRow{PropertyId::FontSize, "FontSize"},
    PropertyNameRow{PropertyId::FontBold, "FontBold"},
    PropertyNameRow{PropertyId::FontItalic, "FontItalic"},
    PropertyNameRow{PropertyId::SelStart, "SelStart"},
    PropertyNameRow{PropertyId::List, "List"},
    PropertyNameRow{PropertyId::ListIndex, "ListIndex"},
    PropertyNameRow{PropertyId::Cells, "Cells"},
    PropertyNameRow{PropertyId::Row, "Row"},
    PropertyNameRow{PropertyId::Col, "Col"},
    PropertyNameRow{PropertyId::Rows, "Rows"},
    PropertyNameRow{PropertyId::Headings, "Headings"},
    PropertyNameRow{PropertyId::SortColumn, "SortColumn"},
    PropertyNameRow{PropertyId::SortDown, "SortDown"},
    PropertyNameRow{PropertyId::Interval, "Interval"},
    PropertyNameRow{PropertyId::WindowState, "WindowState"},
    PropertyNameRow{PropertyId::MousePointer, "MousePointer"},
    PropertyNameRow{PropertyId::NoLink, "NoLink"},
    PropertyNameRow{PropertyId::LinkedTo, "LinkedTo"},
    PropertyNameRow{PropertyId::Withheld, "Withheld"},
    PropertyNameRow{PropertyId::TabStop, "TabStop"},
    PropertyNameRow{PropertyId::Hint, "Hint"},
    PropertyNameRow{PropertyId::ToolTip, "ToolTip"},
    PropertyNameRow{PropertyId::DatabaseName, "DatabaseName"},
    PropertyNameRow{PropertyId::RecordSource, "RecordSource"},
};

}  // namespace

std::string_view property_name(PropertyId id) {
  for (const auto& row : property_names) {
    if (row.id == id) return row.name;
  }
  return {};
}

std::optional<PropertyId> property_named(std::string_view name) {
  for (const auto& row : property_names) {
    if (same_name(row.name, name)) return row.id;
  }
  return std::nullopt;
}

PropertyBase::PropertyBase(Element& owner, PropertyId id) : owner_(owner), id_(id) {
  owner.properties_.push_back(this);
}

void PropertyBase::notify() { owner_.property_changed(id_); }

}  // namespace lineweir
