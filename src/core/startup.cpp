#include "core/startup.h"

#include "core/console.h"
#include "core/guard.h"
#include "core/text.h"
#include "core/time_text.h"
#include "core/window_caption.h"
#include "screen/pictures.h"

namespace lineweir {

Startup::Startup(Console& console) : console_(console) {
  MainForm& form = console.Lineweir;
  form.on_load = [this] { Form_Load(); };
  form.on_unload = [this] { Form_Unload(); };
  form.ExitMenu.on_click = [this] {
    guard(console_, "Lineweir_ExitMenu_Click", [&] { console_.Lineweir.unload(); });
  };
}

void Startup::Main(std::string_view command_line) {
  command_line_ = command_line;
  console_.AboutBox.show();
  console_.services.loop.run_pending();
  console_.Lineweir.load();
  console_.Lineweir.show();
  // The main window takes the focus, which closes the splash window.
  if (console_.AboutBox.visible) console_.AboutBox.on_lost_focus();
}

void Startup::Form_Load() {
  guard(console_, "Lineweir_Form_Load", [&] {
    MainForm& form = console_.Lineweir;
    console_.program.StartDirectory = console_.services.files.current_directory();
    read_command_line();
    console_.lines.resize(lines_of_small_layout);
    for (int line = 1; line < console_.lines.LineCount; ++line) form.load_row(line);
    form.mouse_pointer = pointer_hourglass;
    form.caption = window_caption(console_, form.StudioMode.checked);
    show_time_of_day();
    console_.services.loop.run_pending();
    for (int line = 0; line < console_.lines.LineCount; ++line) {
      form.DataRow(line).picture = pictures::DataRowWhite;
      form.LineNumb(line).caption = std::to_string(line + 1);
      form.OnHybrid1(line).picture = pictures::HybridNormUp;
      form.OnHybrid2(line).picture = pictures::HybridNormUp;
      console_.rows.HybridPictureSet(line, 0, 0);
    }
    console_.layout.RedefineScreen();
    form.mouse_pointer = pointer_default;
  });
}

void Startup::Form_Unload() {
  guard(console_, "Lineweir_Form_Unload", [&] {
    console_.services.comm1.close();
    console_.services.comm2.close();
    if (console_.services.end_program) console_.services.end_program();
  });
}

void Startup::read_command_line() {
  console_.program.EmptyLineOverride = command_line_ == "E";
  if (command_line_ != "D") return;
  console_.program.DebugMode = true;
  console_.Lineweir.SyncTimeTimer.interval = 60000;
}

void Startup::show_time_of_day() {
  const std::string now = clock_text(seconds_of_day(console_.services.clock.now()));
  const auto without_half_day = left_part(now, now.size() - 3);
  console_.Lineweir.RealTime.caption = without_half_day;
  console_.Lineweir.RealTime2.text = without_half_day;
}

}  // namespace lineweir
