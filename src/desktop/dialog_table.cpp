#include "desktop/dialog_table.h"

#include <array>

#include "core/console.h"
#include "ui_about_box.h"
#include "ui_debug_form.h"
#include "ui_message_box.h"

namespace lineweir {
namespace {

template <auto form>
Form& form_of(Console& console) {
  return console.*form;
}

template <class Ui>
void set_up(QWidget& window) {
  Ui().setupUi(&window);
}

constexpr std::array dialogs = {
    DialogRow{form_of<&Console::AboutBox>, set_up<Ui::AboutBox>, DialogKind::Splash},
    DialogRow{form_of<&Console::MyMsgbox>, set_up<Ui::MyMsgbox>, DialogKind::Dialog},
    DialogRow{form_of<&Console::DebugForm>, set_up<Ui::DebugForm>, DialogKind::Window},
};

}  // namespace

std::span<const DialogRow> dialog_table() { return dialogs; }

}  // namespace lineweir
