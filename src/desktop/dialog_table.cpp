#include "desktop/dialog_table.h"

#include <array>

#include "core/console.h"
#include "ui_about_box.h"
#include "ui_caller_data.h"
#include "ui_caller_flag.h"
#include "ui_database_viewer.h"
#include "ui_debug_form.h"
#include "ui_dial_form.h"
#include "ui_display_options.h"
#include "ui_flash_message.h"
#include "ui_import_preview.h"
#include "ui_log_data.h"
#include "ui_login_form.h"
#include "ui_message_box.h"
#include "ui_set_time.h"
#include "ui_show_data.h"
#include "ui_standby.h"
#include "ui_winsock_options.h"

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
    DialogRow{form_of<&Console::MyMsgbox>, set_up<Ui::MyMsgbox>, DialogKind::Message},
    DialogRow{form_of<&Console::DebugForm>, set_up<Ui::DebugForm>, DialogKind::Window},
    DialogRow{form_of<&Console::Standby>, set_up<Ui::Standby>, DialogKind::Splash},
    DialogRow{form_of<&Console::DisplayOptionForm>, set_up<Ui::DisplayOptionForm>,
              DialogKind::Dialog},
    DialogRow{form_of<&Console::Form2>, set_up<Ui::Form2>, DialogKind::Dialog},
    DialogRow{form_of<&Console::Form3>, set_up<Ui::Form3>, DialogKind::Dialog},
    DialogRow{form_of<&Console::Form4>, set_up<Ui::Form4>, DialogKind::Dialog},
    DialogRow{form_of<&Console::LogDataForm>, set_up<Ui::LogDataForm>, DialogKind::Dialog},
    DialogRow{form_of<&Console::DatabaseViewer>, set_up<Ui::DatabaseViewer>, DialogKind::Window},
    DialogRow{form_of<&Console::ImportPreview>, set_up<Ui::ImportPreview>, DialogKind::Window},
    DialogRow{form_of<&Console::LoginForm>, set_up<Ui::LoginForm>, DialogKind::Dialog},
    DialogRow{form_of<&Console::WinsockOptions>, set_up<Ui::WinsockOptions>, DialogKind::Dialog},
    DialogRow{form_of<&Console::FlashMessA>, set_up<Ui::FlashMessA>, DialogKind::Dialog},
    DialogRow{form_of<&Console::DialForm>, set_up<Ui::DialForm>, DialogKind::Dialog},
    DialogRow{form_of<&Console::FlagForm>, set_up<Ui::CallerFlagForm>, DialogKind::Dialog},
};

}  // namespace

std::span<const DialogRow> dialog_table() { return dialogs; }

}  // namespace lineweir
