#include "core/console.h"

namespace lineweir {

Console::Console(const platform::Services& platform_services)
    : services(platform_services),
      trace(*this),
      messages(*this),
      server(*this),
      server_connection(*this),
      login_exchange(*this),
      remote_session(*this),
      time_sync(*this),
      phone(*this),
      client_callback(*this),
      modes(*this),
      rows(*this),
      panel(*this),
      button_press(*this),
      faces(*this),
      layout(*this),
      visible_rows(*this),
      display(*this),
      column_choice(*this),
      hybrid_choice(*this),
      group_choice(*this),
      window(*this),
      profile_window(*this),
      fonts(*this),
      call_log(*this),
      call_log_file(*this),
      data_sender(*this),
      caller_data(*this),
      caller_memory(*this),
      received_data(*this),
      log_data_options(*this),
      log_viewer(*this),
      log_output(*this),
      log_import(*this),
      line_steps(*this),
      decoder(*this),
      line_events(*this),
      port(*this),
      remote_port(*this),
      clocks(*this),
      next_caller(*this),
      line_actions(*this),
      dial_pad(*this),
      switch_console(*this),
      remote_next(*this),
      clock_menu(*this),
      set_time(*this),
      show_editor(*this),
      blink(*this),
      quick_line(*this),
      hot_keys(*this),
      settings(*this),
      startup(*this),
      shutdown(*this) {
  wire_about_box(*this);
  for (Form* form : forms()) timers.emplace_back(*form, services.loop);
}

std::vector<Form*> Console::forms() {
  return {&Lineweir,          &AboutBox,   &MyMsgbox, &DebugForm,      &Standby,
          &DisplayOptionForm, &Form2,      &Form3,    &Form4,          &LogDataForm,
          &LoginForm,         &FlashMessA, &DialForm, &DatabaseViewer, &ImportPreview};
}

}  // namespace lineweir
