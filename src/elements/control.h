#pragma once

#include "base/event.h"
#include "elements/element.h"

namespace lineweir {

// Mouse buttons as the mouse events name them.
inline constexpr int left_button = 1;
inline constexpr int right_button = 2;

// An element that stands somewhere on a form and that the user's hands can reach. Sizes and places
// are whole twips, relative to the container, or to the form where there is none.
class Control : public Element {
 public:
  Property<bool> visible{*this, PropertyId::Visible, true};
  Property<bool> enabled{*this, PropertyId::Enabled, true};
  Property<int> left{*this, PropertyId::Left};
  Property<int> top{*this, PropertyId::Top};
  Property<int> width{*this, PropertyId::Width};
  Property<int> height{*this, PropertyId::Height};
  Property<bool> tab_stop{*this, PropertyId::TabStop, true};

  Event<void()> on_click;
  Event<void()> on_dbl_click;
  Event<void(int button, int shift)> on_mouse_down;
  Event<void(int button, int shift)> on_mouse_up;
  Event<void()> on_got_focus;
  Event<void()> on_lost_focus;

  // A key's character, 0 to 255; a handler swallows the key by setting it to 0.
  Event<void(int& key)> on_key_press;

  // A key's code, before it becomes a character; a handler swallows it by setting it to 0.
  Event<void(int& key_code, int shift)> on_key_down;

  // The picture or frame that this control stands in, or null. It must outlive the control.
  Control* container() const { return container_; }
  void set_container(Control* container);

  void move(int new_left, int new_top, int new_width, int new_height);
  void move(int new_left, int new_top);

  // True when the control and all its containers are visible.
  bool shown() const;

  void bring_to_front();
  void set_focus();

 protected:
  using Element::Element;

 private:
  Control* container_ = nullptr;
};

// What elements with text of their own share. Sizes are in points.
class FontProperties {
 public:
  explicit FontProperties(Element& owner)
      : name(owner, PropertyId::FontName, "DejaVu Sans"),
        size(owner, PropertyId::FontSize, 8),
        bold(owner, PropertyId::FontBold, false),
        italic(owner, PropertyId::FontItalic, false) {}

  Property<std::string> name;
  Property<int> size;
  Property<bool> bold;
  Property<bool> italic;
};

// Colours hold red in the low byte.
inline constexpr int color_black = 0;
inline constexpr int color_red = 255;
inline constexpr int color_green = 65280;
inline constexpr int color_yellow = 65535;
inline constexpr int color_white = 16777215;

}  // namespace lineweir
