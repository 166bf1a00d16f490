#pragma once

#include <QString>
#include <QWidget>
#include <stdexcept>
#include <vector>

#include "every_dialog.h"
#include "shown_console.h"

namespace lineweir::test {

// The dialog with as much in it as it can have.
inline QWidget& open_full(ShownConsole& desk, Form& form) {
  form.on_load.forget_handler();
  if (&form == &desk.console.MyMsgbox) {
    desk.console.messages.ShowMessage(
        "Error communicating with Brenvox Interface Box!  Check cables and settings!");
    desk.console.MyMsgbox.ReconnectButton.visible = true;
    desk.console.MyMsgbox.OKButton.left = 2760;
  }
  if (&form == &desk.console.Form2) {
    for (Grid* grid : {&desk.console.Form2.Grid1, &desk.console.Form2.Grid2}) {
      grid->set_cell(1, 0, "10:00:00");
      grid->set_cell(1, 1, "10:15:00");
      grid->set_cell(1, 2, "News");
    }
  }
  if (&form == &desk.console.Form3) desk.console.Form3.Text1.text = "09:20:08";
  if (&form == &desk.console.Form4) {
    desk.console.Form4.MemoryLabel.caption = "Dev Patel, Hull\r\n3 calls, last on 1/5/2026";
    desk.console.Form4.MemoryLabel.visible = true;
    desk.console.Form4.MemoryFill.caption = "&Fill in name and city";
    desk.console.Form4.MemoryFill.visible = true;
    desk.console.Form4.FlagLabel.caption = "Barred until 12/31/2026: shouts (anna)";
    desk.console.Form4.FlagLabel.visible = true;
    desk.console.Form4.FlagCaller.visible = true;
    desk.console.Form4.DiscardCall.visible = true;
    desk.console.Form4.OtherCall.caption = "Form&er caller";
    desk.console.Form4.OtherCall.visible = true;
    desk.console.Form4.show_notice("The caller has hung up\r\nChanged elsewhere: City \"Hull\"");
  }
  if (&form == &desk.console.DisplayOptionForm) {
    for (int column = 2; column < column_count; ++column) {
      desk.console.DisplayOptionForm.WidthText(column).text = "12000";
    }
  }
  if (&form == &desk.console.FlagForm) {
    desk.console.FlagForm.NumberLabel.caption = "Flag of 312 555 0100, Dev Patel";
    desk.console.FlagForm.BarredFlag.value = true;
    desk.console.FlagForm.show_notice("The last day is over already.");
  }
  form.show();
  desk.settle();
  QWidget* window = desk.desktop.dialog(form)->window();
  if (window == nullptr) throw std::runtime_error(form.name() + " has no window");
  desk.settle();
  return *window;
}

inline void close(ShownConsole& desk, Form& form) {
  form.on_unload.forget_handler();
  form.unload();
  desk.settle();
}

inline bool is_part_of_control(const QWidget& widget) {
  const QString name = widget.objectName();
  return name.startsWith(QLatin1String("qt_")) || name.isEmpty();
}

// All that stands in the dialog and shows, without what Qt's own controls are made of.
inline std::vector<QWidget*> shown_controls(QWidget& window) {
  std::vector<QWidget*> controls;
  for (QWidget* widget : window.findChildren<QWidget*>()) {
    if (widget->isVisible() && !is_part_of_control(*widget)) controls.push_back(widget);
  }
  return controls;
}

template <class Check>
void for_each_dialog(ShownConsole& desk, Check check) {
  std::size_t controls = 0;
  for (Form* form : dialogs_of(desk.console)) {
    QWidget& window = open_full(desk, *form);
    controls += shown_controls(window).size();
    check(window);
    close(desk, *form);
  }
  CHECK(controls > 200);
}

}  // namespace lineweir::test
