#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "base/event.h"
#include "elements/property.h"

namespace lineweir {

class Form;

enum class ElementKind {
  Form,
  Label,
  Frame,
  Picture,
  Button,
  MenuItem,
  TextBox,
  CheckBox,
  OptionButton,
  ListBox,
  ComboBox,
  Grid,
  DataGrid,
  Line,
  Shape,
  Timer,
  Data,
};

// The index of an element that belongs to no control array.
inline constexpr int no_index = -1;

// Something with a name on a form. An element registers itself with its form when it is made and
// leaves it when it is destroyed; the form outlives it.
class Element {
 public:
  Element(const Element&) = delete;
  Element& operator=(const Element&) = delete;
  virtual ~Element();

  ElementKind kind() const { return kind_; }
  const std::string& name() const { return name_; }
  int index() const { return index_; }
  Form& form() const { return *form_; }

  const std::vector<PropertyBase*>& properties() const { return properties_; }
  PropertyBase* property(PropertyId id) const;

  // Takes over the values of all properties that both elements have.
  void copy_properties(const Element& model);

  // The element's own change event, such as `DataRow_Change`: runs when its main property, the one
  // named by change_property(), gets another value, by whatever hand.
  Event<void()> on_change;

 protected:
  Element(Form& form, ElementKind kind, std::string_view name, int index);

  virtual PropertyId change_property() const { return PropertyId::Caption; }

  // Called after each change of a property: tells the form's observers, then runs on_change.
  virtual void property_changed(PropertyId id);

 private:
  friend class PropertyBase;
  friend class Form;

  // Only a form makes itself this way: it is its own form and is registered nowhere.
  Element(ElementKind kind, std::string_view name);

  ElementKind kind_;
  std::string name_;
  int index_ = no_index;
  Form* form_ = nullptr;
  std::vector<PropertyBase*> properties_;
};

}  // namespace lineweir
