#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "base/event.h"
#include "elements/control.h"
#include "elements/menu_item.h"
#include "letters/letters.h"

namespace lineweir {

// Told of everything that happens to a form's elements. Calls come on the one thread, after the
// change; an observer may read and write elements, and subscribe others, but not unsubscribe.
class FormObserver {
 public:
  virtual ~FormObserver() = default;
  virtual void changed(Element& element, PropertyId property) = 0;
  // The element is being made: only its name, index and kind may be read.
  virtual void added(Element& element) { (void)element; }
  // The element is about to go; only its name, index and kind may be read.
  virtual void removed(Element& element) { (void)element; }
  virtual void raised(Control& control) { (void)control; }
  virtual void moved_to_container(Control& control) { (void)control; }
  virtual void menu_changed(MenuItem& parent) { (void)parent; }
  virtual void focus_moved(Control* control) { (void)control; }
  // The form was shown although it is on the screen already, to bring it to the front.
  virtual void shown_again() {}
};

enum FormWindowState { window_normal = 0, window_minimised = 1, window_maximised = 2 };
enum MousePointerShape { pointer_default = 0, pointer_hourglass = 11 };

// A window: a set of elements. It is loaded when it is first shown and stays until it is unloaded;
// both run an event. The elements themselves live as long as the form object.
class Form : public Element {
 public:
  explicit Form(std::string_view name);
  ~Form() override = default;

  Property<std::string> caption{*this, PropertyId::Caption};
  Property<bool> visible{*this, PropertyId::Visible, false};
  Property<bool> enabled{*this, PropertyId::Enabled, true};
  Property<int> left{*this, PropertyId::Left};
  Property<int> top{*this, PropertyId::Top};
  Property<int> width{*this, PropertyId::Width};
  Property<int> height{*this, PropertyId::Height};
  Property<int> window_state{*this, PropertyId::WindowState, window_normal};
  Property<int> mouse_pointer{*this, PropertyId::MousePointer, pointer_default};

  // How the bytes of its elements' texts are read.
  const Letters* letters = &utf8_letters();

  // A modal form keeps the user's hands from the other windows while it is shown.
  bool modal = false;
  // Stays in the user's hands while a modal form is shown, as a message about that form must.
  bool reachable_beside_modal = false;

  Event<void()> on_load;
  // Runs while the form still stands on the screen, so that the user sees what it has to say.
  Event<void()> on_unload;
  Event<void()> on_got_focus;
  Event<void()> on_lost_focus;
  Event<void()> on_resize;
  Event<void()> on_click;
  // A key before the form's controls see it; a handler swallows it by setting the code to 0.
  Event<void(int& key_code, int shift)> on_key_down;
  // A character that the user types anywhere in the window, before the control that has the focus
  // sees it; a handler swallows it by setting it to 0.
  Event<void(int& key)> on_key_press;
  // The user closes the window. Without a handler the form is unloaded.
  Event<void()> on_close;

  bool loaded() const { return loaded_; }
  void load();
  void show();
  void hide() { visible = false; }
  void unload();
  // What the window's own close button does.
  void close();

  // All elements in the order of making, those of control arrays included.
  const std::vector<Element*>& elements() const { return elements_; }
  // The element of that name, ignoring case, and index; null if there is none.
  Element* find(std::string_view name, int index = no_index) const;
  int count(std::string_view name) const;
  // The entries of the menu bar.
  std::vector<MenuItem*> menu_bar() const;

  Control* focused() const { return focused_; }
  // Moves the focus, which may be to nothing; tells the control that loses and the one that gets
  // it.
  void focus(Control* control);

  // The observer is told until it is removed; it must outlive that.
  void add_observer(FormObserver& observer);
  void remove_observer(FormObserver& observer);

 protected:
  void property_changed(PropertyId id) override;

 private:
  friend class Element;
  friend class Control;
  friend class MenuItem;

  void add(Element& element);
  void remove(Element& element);
  void raise(Control& control);
  void tell_changed(Element& element, PropertyId id);
  void tell_moved_to_container(Control& control);
  void tell_menu_changed(MenuItem& parent);

  std::vector<Element*> elements_;
  std::vector<FormObserver*> observers_;
  Control* focused_ = nullptr;
  bool loaded_ = false;
};

// Watches a form for as long as it lives.
class FormWatch : public FormObserver {
 public:
  explicit FormWatch(Form& form) : form_(form) { form_.add_observer(*this); }
  ~FormWatch() override { form_.remove_observer(*this); }
  FormWatch(const FormWatch&) = delete;
  FormWatch& operator=(const FormWatch&) = delete;

  Form& watched_form() const { return form_; }

 private:
  Form& form_;
};

}  // namespace lineweir
