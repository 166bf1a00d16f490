#include "elements/element.h"

#include "elements/form.h"

namespace lineweir {

Element::Element(Form& form, ElementKind kind, std::string_view name, int index)
    : kind_(kind), name_(name), index_(index), form_(&form) {
  form.add(*this);
}

Element::Element(ElementKind kind, std::string_view name) : kind_(kind), name_(name) {}

Element::~Element() {
  if (kind_ != ElementKind::Form) form_->remove(*this);
}

PropertyBase* Element::property(PropertyId id) const {
  for (PropertyBase* candidate : properties_) {
    if (candidate->id() == id) return candidate;
  }
  return nullptr;
}

void Element::copy_properties(const Element& model) {
  for (PropertyBase* mine : properties_) {
    if (const PropertyBase* theirs = model.property(mine->id())) mine->assign(theirs->value());
  }
}

void Element::property_changed(PropertyId id) {
  form_->tell_changed(*this, id);
  if (id == change_property()) on_change();
}

}  // namespace lineweir
