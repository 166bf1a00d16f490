#pragma once

#include <map>
#include <set>
#include <vector>

#include "desktop/frame_timer.h"
#include "elements/form.h"
#include "elements/menu_item.h"

class QAction;
class QMenu;
class QMenuBar;

namespace lineweir {

// A form's menu bar, made from its menu items and kept true to them: captions with access keys,
// check marks, enabled and visible entries, and entries that come and go while the program runs.
class MenuTree : private FormWatch {
 public:
  // The bar must outlive this object.
  MenuTree(Form& form, QMenuBar& bar);

  // Whether the bar has an entry to show.
  bool shown() const;

  QAction* action_of(const MenuItem& item) const;

  // The size of the letters in the bar and its menus, in logical pixels; true where it is another
  // one than before.
  bool set_letters(int pixels);

  void flush() { frame_.flush(); }

 private:
  void changed(Element& element, PropertyId property) override;
  void removed(Element& element) override;
  void menu_changed(MenuItem& parent) override;

  void show_changes();
  QMenu* make_menu();
  void fill(const MenuItem& parent, QMenu& menu);
  QAction* make_action(MenuItem& item);
  void show_item(const MenuItem& item);
  void choose(MenuItem& item);

  QMenuBar& bar_;
  // Menus are windows, which don't take the bar's font for theirs.
  std::vector<QMenu*> menus_;
  std::map<const Element*, QAction*> actions_;
  std::set<MenuItem*> changed_items_;
  std::set<MenuItem*> changed_menus_;
  FrameTimer frame_;
};

}  // namespace lineweir
