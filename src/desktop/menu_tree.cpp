#include "desktop/menu_tree.h"

#include <QAction>
#include <QHelpEvent>
#include <QMenu>
#include <QMenuBar>
#include <QToolTip>
#include <algorithm>

#include "desktop/core_text.h"
#include "desktop/element_looks.h"
#include "desktop/not_allowed.h"

namespace lineweir {
namespace {

constexpr std::string_view separator = "-";

// A menu that tells of an item only what it can't do.
class Menu : public QMenu {
 public:
  using QMenu::QMenu;

 protected:
  bool event(QEvent* event) override {
    if (event->type() != QEvent::ToolTip) return QMenu::event(event);
    const auto* help = static_cast<const QHelpEvent*>(event);
    const QAction* action = actionAt(help->pos());
    const QString why = action == nullptr ? QString() : action->statusTip();
    if (why.isEmpty()) {
      QToolTip::hideText();
    } else {
      QToolTip::showText(help->globalPos(), why, this, actionGeometry(actionAt(help->pos())));
    }
    return true;
  }
};

// The entries of an array carry names that a server gives, in which & marks no letter.
QString menu_text(const MenuItem& item) {
  QString text = shown_text(item, item.caption.get());
  return item.index() == no_index ? text : text.replace(u'&', QStringLiteral("&&"));
}

}  // namespace

MenuTree::MenuTree(Form& form, QMenuBar& bar)
    : FormWatch(form), bar_(bar), frame_([this] { show_changes(); }) {
  for (MenuItem* item : form.menu_bar()) bar_.addAction(make_action(*item));
}

bool MenuTree::shown() const {
  return std::ranges::any_of(watched_form().menu_bar(),
                             [](const MenuItem* item) { return item->visible.get(); });
}

QAction* MenuTree::action_of(const MenuItem& item) const {
  const auto found = actions_.find(&item);
  return found == actions_.end() ? nullptr : found->second;
}

void MenuTree::changed(Element& element, PropertyId) {
  if (element.kind() != ElementKind::MenuItem) return;
  changed_items_.insert(static_cast<MenuItem*>(&element));
  frame_.mark();
}

void MenuTree::removed(Element& element) {
  if (element.kind() != ElementKind::MenuItem) return;
  // What goes is no item any more, only an element still.
  const auto goes = [&element](const MenuItem* item) { return item == &element; };
  std::erase_if(changed_items_, goes);
  std::erase_if(changed_menus_, goes);
  const auto found = actions_.find(&element);
  if (found == actions_.end()) return;
  found->second->setVisible(false);
  found->second->deleteLater();
  actions_.erase(found);
}

void MenuTree::menu_changed(MenuItem& parent) {
  changed_menus_.insert(&parent);
  frame_.mark();
}

void MenuTree::show_changes() {
  const auto menus = std::exchange(changed_menus_, {});
  for (MenuItem* parent : menus) {
    QAction* action = action_of(*parent);
    if (action == nullptr) continue;
    if (action->menu() == nullptr) action->setMenu(make_menu());
    fill(*parent, *action->menu());
  }
  const auto items = std::exchange(changed_items_, {});
  for (const MenuItem* item : items) show_item(*item);
}

bool MenuTree::set_letters(int pixels) {
  QFont font = bar_.font();
  if (font.pixelSize() == pixels) return false;
  font.setPixelSize(pixels);
  bar_.setFont(font);
  for (QMenu* menu : menus_) menu->setFont(font);
  return true;
}

QMenu* MenuTree::make_menu() {
  auto* menu = new Menu(&bar_);
  menu->setFont(bar_.font());
  menus_.push_back(menu);
  return menu;
}

void MenuTree::fill(const MenuItem& parent, QMenu& menu) {
  for (QAction* action : menu.actions()) menu.removeAction(action);
  for (MenuItem* item : parent.children()) {
    QAction* action = action_of(*item);
    menu.addAction(action == nullptr ? make_action(*item) : action);
  }
}

QAction* MenuTree::make_action(MenuItem& item) {
  auto* action = new QAction(&bar_);
  action->setObjectName(object_name(item));
  actions_[&item] = action;
  QObject::connect(action, &QAction::triggered, &bar_, [this, &item] { choose(item); });
  if (!item.shortcut.empty()) {
    action->setShortcut(QKeySequence(QString::fromStdString(item.shortcut)));
  }
  if (item.caption.get() == separator) action->setSeparator(true);
  if (!item.children().empty()) {
    QMenu* menu = make_menu();
    action->setMenu(menu);
    fill(item, *menu);
  }
  show_item(item);
  return action;
}

void MenuTree::show_item(const MenuItem& item) {
  QAction* action = action_of(item);
  if (action == nullptr) return;
  if (!action->isSeparator()) action->setText(menu_text(item));
  action->setCheckable(item.checked);
  action->setChecked(item.checked);
  action->setEnabled(item.enabled);
  action->setVisible(item.visible);
  const QString why = item.withheld && !item.enabled ? not_allowed_text() : QString();
  action->setStatusTip(why);
}

void MenuTree::choose(MenuItem& item) {
  // The mark is the item's own, whatever the click made of it.
  show_item(item);
  if (item.reachable()) item.on_click();
}

}  // namespace lineweir
