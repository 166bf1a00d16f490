#include "driver/places.h"

#include <algorithm>
#include <array>
#include <climits>
#include <optional>

#include "base/names.h"
#include "driver/hands.h"
#include "driver/path.h"
#include "driver/refusal.h"
#include "driver/states.h"
#include "elements/data_grid.h"

namespace lineweir::driver {
namespace {

using Parts = std::vector<PathPart>;

// Sizes and places beyond this lie outside any screen.
constexpr int largest_number = 1000000;

[[noreturn]] void refuse_path(std::string_view path) {
  throw NotUnderstood("no such path: " + on_one_line(path));
}

Parts parts_of(std::string_view path) {
  const auto parts = parse_path(path);
  if (!parts) refuse_path(path);
  return *parts;
}

// An element, and how many parts of the path lead to it.
struct Match {
  FoundElement found;
  std::size_t parts;
};

Element* element_named(const Form& form, const PathPart& part) {
  if (part.indices.size() > 1) return nullptr;
  return form.find(part.name, part.indices.empty() ? no_index : part.indices.front());
}

Form* form_named(Console& console, const PathPart& part) {
  if (!part.indices.empty()) return nullptr;
  for (Form* form : console.forms()) {
    if (same_name(form->name(), part.name)) return form;
  }
  return nullptr;
}

std::optional<Match> match_element(Console& console, const Parts& parts) {
  if (Form* form = form_named(console, parts[0])) {
    Element* element = parts.size() > 1 ? element_named(*form, parts[1]) : nullptr;
    if (element != nullptr) return Match{{*form, *element}, 2};
    return Match{{*form, *form}, 1};
  }
  Form& main_form = console.Lineweir;
  Element* element = element_named(main_form, parts[0]);
  if (element == nullptr) return std::nullopt;
  return Match{{main_form, *element}, 1};
}

// The property that is meant where a path names none.
PropertyId main_property(ElementKind kind) {
  switch (kind) {
    case ElementKind::Form:
    case ElementKind::Label:
    case ElementKind::Frame:
    case ElementKind::Button:
      return PropertyId::Caption;
    case ElementKind::TextBox:
    case ElementKind::ComboBox:
      return PropertyId::Text;
    case ElementKind::CheckBox:
    case ElementKind::OptionButton:
      return PropertyId::Value;
    case ElementKind::MenuItem:
      return PropertyId::Checked;
    case ElementKind::Picture:
      return PropertyId::Picture;
    case ElementKind::ListBox:
      return PropertyId::ListIndex;
    case ElementKind::Grid:
      return PropertyId::Cells;
    case ElementKind::DataGrid:
      return PropertyId::Rows;
    case ElementKind::Line:
      return PropertyId::Visible;
    case ElementKind::Shape:
      return PropertyId::FillColor;
    case ElementKind::Timer:
      return PropertyId::Enabled;
    case ElementKind::Data:
      return PropertyId::DatabaseName;
  }
  return PropertyId::Caption;
}

bool has_any_number(PropertyId id) {
  constexpr std::array any_number = {PropertyId::ForeColor, PropertyId::BackColor,
                                     PropertyId::FillColor, PropertyId::Interval};
  return std::ranges::find(any_number, id) != any_number.end();
}

void set_property(Console& console, Element& element, PropertyBase& property, const Json& value) {
  const PropertyValue wanted = property_value_of(value, property.value(), text_kind(element));
  if (const auto* number = std::get_if<std::int64_t>(&wanted)) {
    const int most = has_any_number(property.id()) ? INT_MAX : largest_number;
    if (*number > most || *number < -most) {
      throw NotUnderstood("not a number in range: " + printed(value));
    }
  }
  if (element.kind() == ElementKind::TextBox && property.id() == PropertyId::Text) {
    return replace_text(console, static_cast<TextBox&>(element), std::get<std::string>(wanted));
  }
  if (element.kind() == ElementKind::Grid && property.id() == PropertyId::Cells &&
      std::get<std::vector<std::string>>(wanted).size() !=
          std::get<std::vector<std::string>>(property.value()).size()) {
    throw NotUnderstood("a grid keeps its number of cells");
  }
  if (!property.assign(wanted)) throw NotUnderstood("not a value of it: " + printed(value));
}

Place property_place(Console& console, Element& element, PropertyId id) {
  PropertyBase* property = element.property(id);
  if (property == nullptr) {
    throw NotUnderstood(element.name() + " has no " + std::string(property_name(id)));
  }
  return {[property, &element] { return property_value(property->value(), text_kind(element)); },
          [&console, &element, property](const Json& value) {
            set_property(console, element, *property, value);
          }};
}

Place cell_place(const DataGrid& grid, int row, int column) {
  return {[&grid, row, column] { return text_value(grid.cell(row, column), text_kind(grid)); },
          nullptr};
}

Place cell_place(Grid& grid, int row, int column) {
  return {[&grid, row, column] { return text_value(grid.cell(row, column)); },
          [&grid, row, column](const Json& value) { grid.set_cell(row, column, text_of(value)); }};
}

std::optional<Place> element_place(Console& console, const Parts& parts, const Match& match) {
  Element& element = match.found.element;
  if (parts.size() == match.parts) {
    return property_place(console, element, main_property(element.kind()));
  }
  if (parts.size() != match.parts + 1) return std::nullopt;
  const PathPart& last = parts.back();
  if (same_name(last.name, "Cell") && last.indices.size() == 2) {
    if (auto* grid = dynamic_cast<Grid*>(&element)) {
      return cell_place(*grid, last.indices[0], last.indices[1]);
    }
    if (const auto* grid = dynamic_cast<const DataGrid*>(&element)) {
      return cell_place(*grid, last.indices[0], last.indices[1]);
    }
  }
  const auto id = property_named(last.name);
  if (!id || !last.indices.empty()) return std::nullopt;
  return property_place(console, element, *id);
}

std::optional<Place> count_place(Console& console, const Parts& parts) {
  if (parts.size() < 2 || parts.size() > 3 || !same_name(parts.back().name, "Count")) {
    return std::nullopt;
  }
  const PathPart& array = parts[parts.size() - 2];
  Form* form = parts.size() == 3 ? form_named(console, parts.front()) : &console.Lineweir;
  if (form == nullptr || !array.indices.empty() || form->find(array.name) != nullptr) {
    return std::nullopt;
  }
  const int count = form->count(array.name);
  if (count == 0) return std::nullopt;
  return Place{[count] { return Json(count); }, nullptr};
}

std::optional<Place> state_place(Session& session, const Parts& parts) {
  const StateName* state = find_state(path_shape(parts));
  if (state == nullptr) return std::nullopt;
  const Indices indices = path_indices(parts);
  Place place{[=, &session] { return state->get(session, indices); }, nullptr};
  if (state->set) {
    place.set = [=, &session](const Json& value) { state->set(session, indices, value); };
  }
  return place;
}

}  // namespace

TextKind text_kind(const Element& element) {
  // What names a database is a path.
  const bool unicode =
      element.form().letters == &utf8_letters() && element.kind() != ElementKind::Data;
  return unicode ? TextKind::Utf8 : TextKind::Bytes;
}

FoundElement find_element(Console& console, std::string_view path) {
  const Parts parts = parts_of(path);
  const auto match = match_element(console, parts);
  if (!match || match->parts != parts.size()) refuse_path(path);
  return match->found;
}

Form& find_form(Console& console, std::string_view name) {
  const Parts parts = parts_of(name);
  Form* form = parts.size() == 1 ? form_named(console, parts.front()) : nullptr;
  if (form == nullptr) throw NotUnderstood("no such form: " + on_one_line(name));
  return *form;
}

Place find_place(Session& session, std::string_view path) {
  Console& console = session.console();
  const Parts parts = parts_of(path);
  if (const auto state = state_place(session, parts)) return *state;
  if (const auto count = count_place(console, parts)) return *count;
  if (const auto match = match_element(console, parts)) {
    if (const auto place = element_place(console, parts, *match)) return *place;
  }
  refuse_path(path);
}

std::vector<std::string> element_paths(const Console& console, const Form& form) {
  std::vector<std::string> paths;
  for (const Element* element : form.elements()) {
    std::string path = &form == &console.Lineweir ? "" : form.name() + ".";
    path += element->name();
    if (element->index() != no_index) path += "(" + std::to_string(element->index()) + ")";
    paths.push_back(std::move(path));
  }
  return paths;
}

}  // namespace lineweir::driver
