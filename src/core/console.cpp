#include "core/console.h"

#include "core/about_box.h"
#include "core/menu_toggles.h"

namespace lineweir {

Console::Console(const platform::Services& platform_services)
    : ConsoleState(platform_services),
      server(*this),
      serial_link(*this),
      socket_link(*this, server),
      remote_link(*this, remote),
      links(*this, serial_link, socket_link,
            {{Lineweir.NetworkConnectionOption, connection_remote_objects, remote_link},
             {Lineweir.WinsockMenu, connection_socket, socket_link}}),
      link(*this, links),
      show_plan(services.files),
      clocks(*this, show_plan, link),
      clock_menu(*this),
      set_time(*this),
      show_editor(*this, show_plan),
      rows(*this),
      panel(*this),
      button_press(*this, rows),
      blink(*this, rows),
      fonts(*this),
      visible_rows(*this),
      display(*this, rows, visible_rows),
      column_choice(*this, display),
      faces(*this, visible_rows),
      window(*this),
      profile_window(*this, window),
      row_states(*this),
      band(*this),
      layout(*this, clock_menu, visible_rows, rows, display, panel, faces, window),
      row_choice(*this, visible_rows, rows, display, layout),
      window_handling(*this, window, display, layout, fonts),
      call_log(*this),
      call_log_file(*this, display, call_log),
      call_log_watch(*this),
      user_field_title(*this, display, call_log),
      data_sender(*this, links),
      line_texts(*this),
      known_callers(*this, links),
      caller_notes(*this, row_states, line_texts, call_log, known_callers),
      caller_memory(*this, call_log, known_callers),
      caller_flag(*this, known_callers),
      caller_data(*this, call_log, data_sender, line_texts, caller_memory),
      received_data(*this, data_sender, line_texts, caller_data),
      log_data_options(*this, caller_data),
      log_viewer(*this, call_log),
      log_output(*this, show_plan, log_viewer),
      log_import(*this, log_viewer),
      phone(*this, links, link),
      next_caller(*this, links, phone, rows, caller_data, clocks),
      save_and_ready(*this, caller_data, next_caller),
      line_actions(*this, phone, caller_data, next_caller),
      switch_console_port(*this),
      next_key(*this, phone),
      modes(*this, links, next_key, rows, panel, layout, row_choice, switch_console_port),
      phone_choice(*this, links),
      hybrid_choice(*this, modes, panel),
      dial_pad(*this, links, phone),
      switch_console(*this, rows),
      message_sender(*this, links),
      message_display(*this),
      hot_list(*this),
      quick_line(*this, message_sender, message_display),
      flash_message(*this, message_sender, message_display, hot_list),
      line_steps(*this, rows, call_log, data_sender, line_texts, caller_data),
      decoder(*this, serial_link, link, caller_data, line_steps),
      port(*this, links, serial_link, link, decoder),
      line_events(*this, display, caller_data, line_steps),
      server_connection(*this, server, line_events),
      access_rights(*this, server, modes, message_display),
      login_exchange(*this, server, server_connection, access_rights, line_events),
      profile_flags(*this, caller_data, modes, fonts),
      profile_files(*this, show_plan, call_log_file),
      user_profile(*this, links, profile_flags, profile_files, display, window, fonts),
      line_count_change(*this, layout, caller_data, server),
      received_profile(*this, profile_flags, profile_files, display, profile_window, fonts,
                       line_count_change),
      client_callback(*this, phone, received_data, line_events, next_caller, message_display),
      group_choice(*this, links, display, caller_data, known_callers, line_events),
      time_sync(*this, links, server),
      received_memory(*this, server, known_callers),
      received_lines(*this, server, phone, received_data, next_caller, line_steps, line_events,
                     known_callers),
      studio_shape(*this, server, links, visible_rows, display, layout, modes),
      studio_groups(*this, server, access_rights, group_choice),
      remote_studio(*this, remote, modes, line_events, studio_shape, studio_groups),
      remote_session(*this, links, remote, remote_studio, port, link, remote_link),
      remote_watch(*this, remote_link, remote_session, link),
      group_session(*this, server, server_connection, login_exchange),
      server_phones(*this, server, links, modes, known_callers),
      server_notices(*this, server, server_connection, message_display),
      server_watch(*this, links, socket_link, server, server_connection, login_exchange, link),
      group_elsewhere(*this, server, server_connection, login_exchange, access_rights,
                      server_watch),
      login_dialogs(*this, links, server, server_connection, login_exchange, user_profile, window,
                    port),
      hot_keys(*this, caller_data, next_caller, line_actions, quick_line),
      settings(*this, links, show_plan, display, window, fonts, call_log_file, caller_data, port,
               switch_console_port, user_profile),
      restored_settings(*this, show_plan, layout, display, window, fonts, call_log_file,
                        caller_data, port),
      first_connection(*this, links, server, server_connection, login_exchange, port),
      startup(*this, show_plan, rows, layout, display, fonts, caller_data, port, settings,
              restored_settings, first_connection),
      shutdown(*this, links, show_plan, caller_data, port, user_profile, settings) {
  known_callers.on_change = [this] {
    caller_notes.known_changed();
    caller_memory.known_changed();
    caller_flag.known_changed();
  };
  caller_flag.on_flagged = [this] { caller_memory.ask_soon(); };
  access_rights.on_unknown_user = [this] { settings.SetFileSettings(); };
  socket_link.on_enter_group = [this] { return group_session.enter(); };
  remote_link.on_enter_group = [this] { return remote_session.enter_group(); };
  remote_link.on_line_names = [this] { remote_studio.name_lines(); };
  call_log_watch.on_replaced = [this] { log_viewer.look_again(); };
  wire_about_box(*this);
  wire_menu_toggles(*this);
  for (Form* form : forms()) {
    form->letters = &services.letters;
    timers.emplace_back(*form, services.loop);
  }
  // A log holds the texts of other consoles too, in whatever letters those have.
  DatabaseViewer.letters = &utf8_letters();
  ImportPreview.letters = &utf8_letters();
}

Console::~Console() = default;

std::vector<Form*> Console::forms() {
  return {&Lineweir,   &AboutBox, &MyMsgbox,       &DebugForm,     &Standby,   &DisplayOptionForm,
          &Form2,      &Form3,    &Form4,          &LogDataForm,   &LoginForm, &WinsockOptions,
          &FlashMessA, &DialForm, &DatabaseViewer, &ImportPreview, &FlagForm};
}

}  // namespace lineweir
