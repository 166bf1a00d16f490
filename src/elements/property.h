#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <variant>
#include <vector>

namespace lineweir {

class Element;

enum class PropertyId {
  Caption,
  Text,
  Visible,
  Enabled,
  Checked,
  Value,
  Picture,
  Left,
  Top,
  Width,
  Height,
  X1,
  Y1,
  X2,
  Y2,
  BorderWidth,
  ForeColor,
  BackColor,
  FillColor,
  Alignment,
  FontName,
  FontSize,
  FontBold,
  FontItalic,
  SelStart,
  List,
  ListIndex,
  Cells,
  Row,
  Col,
  Rows,
  Headings,
  SortColumn,
  SortDown,
  Interval,
  WindowState,
  MousePointer,
  NoLink,
  LinkedTo,
  Withheld,
  TabStop,
  Hint,
  ToolTip,
  DatabaseName,
  RecordSource,
};

std::string_view property_name(PropertyId id);

// Looks a property up by its name, ignoring case.
std::optional<PropertyId> property_named(std::string_view name);

// Any property's value, as a script sees it.
using PropertyValue = std::variant<bool, std::int64_t, std::string, std::vector<std::string>>;

// What all properties have in common. A property belongs to one element for its whole life.
class PropertyBase {
 public:
  PropertyBase(const PropertyBase&) = delete;
  PropertyBase& operator=(const PropertyBase&) = delete;
  virtual ~PropertyBase() = default;

  PropertyId id() const { return id_; }

  virtual PropertyValue value() const = 0;

  // Sets the property if the value's type fits, with the same notice as an assignment.
  // Returns false, and changes nothing, if it doesn't fit.
  virtual bool assign(const PropertyValue& value) = 0;

 protected:
  PropertyBase(Element& owner, PropertyId id);
  void notify();

 private:
  Element& owner_;
  PropertyId id_;
};

// A value that tells its element's form when it changes. Setting an equal value tells nobody.
template <class T>
class Property : public PropertyBase {
 public:
  Property(Element& owner, PropertyId id, T initial = T{})
      : PropertyBase(owner, id), value_(std::move(initial)) {}

  const T& get() const { return value_; }
  operator const T&() const { return value_; }

  Property& operator=(const T& value) {
    set(value);
    return *this;
  }
  // Takes over the value; each property keeps its own element.
  Property& operator=(const Property& other) {
    set(other.value_);
    return *this;
  }

  void set(const T& value) {
    if (value_ == value) return;
    value_ = value;
    notify();
  }

  PropertyValue value() const override {
    if constexpr (std::is_same_v<T, int>) {
      return std::int64_t{value_};
    } else {
      return value_;
    }
  }

  bool assign(const PropertyValue& value) override {
    if constexpr (std::is_same_v<T, int>) {
      const auto* number = std::get_if<std::int64_t>(&value);
      if (number == nullptr || *number < INT32_MIN || *number > INT32_MAX) return false;
      set(static_cast<int>(*number));
      return true;
    } else {
      const auto* same = std::get_if<T>(&value);
      if (same == nullptr) return false;
      set(*same);
      return true;
    }
  }

 private:
  T value_;
};

// Texts are compared before they are copied, so that writing a text that already stands there
// costs no memory.
template <>
class Property<std::string> : public PropertyBase {
 public:
  Property(Element& owner, PropertyId id, std::string initial = {})
      : PropertyBase(owner, id), value_(std::move(initial)) {}

  const std::string& get() const { return value_; }
  operator const std::string&() const { return value_; }

  operator std::string_view() const { return value_; }

  Property& operator=(std::string_view value) {
    set(value);
    return *this;
  }
  // Takes over the value; each property keeps its own element.
  Property& operator=(const Property& other) {
    set(other.value_);
    return *this;
  }

  void set(std::string_view value) {
    if (value_ == value) return;
    value_.assign(value);
    notify();
  }

  PropertyValue value() const override { return value_; }

  bool assign(const PropertyValue& value) override {
    const auto* text = std::get_if<std::string>(&value);
    if (text == nullptr) return false;
    set(*text);
    return true;
  }

  friend bool operator==(const Property& property, std::string_view text) {
    return property.value_ == text;
  }

 private:
  std::string value_;
};

}  // namespace lineweir
