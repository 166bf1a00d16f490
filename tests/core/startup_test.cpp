#include <doctest/doctest.h>

#include <string>
#include <vector>

#include "state/guard.h"
#include "state/settings_record.h"
#include "support/scripted_console.h"

namespace lineweir {
namespace {

using platform::Milliseconds;
using test::ScriptedConsole;

constexpr auto box_message =
    "Error communicating with Brenvox Interface Box!  Check cables and settings!";

SettingsRecord plain_settings() {
  SettingsRecord record;
  record.CommPort = 1;
  record.GroupNumber = 1;
  record.Warning1 = 30;
  record.Warning2 = 10;
  record.ModeCode = -1;
  record.MessageFontName = "Sans";
  record.MessageFontSize = 8;
  record.WindowHeight = 6970;
  record.WindowWidth = 9420;
  record.ColumnOrder.fill(column_not_listed);
  record.LogFieldOn.fill(true);
  return record;
}

// A workstation whose console has yet to start, so that ports can be prepared.
struct Workstation {
  explicit Workstation(const SettingsRecord& record) {
    platform.files.replace(std::string(settings_file_name), encode_settings(record));
  }

  void start(std::string_view command_line = {}) {
    console.messages.on_shown = [this](const std::string& text) { messages.push_back(text); };
    console.startup.Main(command_line);
  }

  platform::ScriptedPlatform platform;
  Console console{platform.services()};
  std::vector<std::string> messages;
};

TEST_CASE("a first start has the defaults and a closed port") {
  ScriptedConsole desk("");
  const MainForm& form = desk.console.Lineweir;
  CHECK(form.caption == "Lineweir - Talent        Studio #1 - Group 1      ");
  CHECK(form.Off.checked);
  CHECK_FALSE(desk.platform.comm1.is_open());
  CHECK(form.visible);
  CHECK_FALSE(desk.console.AboutBox.visible);
  CHECK(form.mouse_pointer == int{pointer_default});
  CHECK(form.Options.enabled);
  CHECK(desk.console.show_plan.TheDataFileName == "NoName.TXT");
  CHECK(desk.console.lines.LineCount == 10);
  CHECK(form.width == 9420);
  CHECK(form.height == 7255);
  CHECK(form.CaptionLabel(time_column).visible);
  CHECK_FALSE(form.CaptionLabel(user_column).visible);
  CHECK(desk.console.DisplayOptionForm.List1.list.get() ==
        std::vector<std::string>{"Time", "Caller Name", "City", "Comments"});
  CHECK(desk.console.DisplayOptionForm.MessageGroupSelector.list_count() == 10);
}

TEST_CASE("a settings file of 0 or 1 byte is no settings file") {
  for (const std::string& bytes : {std::string(), std::string("x")}) {
    ScriptedConsole desk("", bytes);
    CHECK(desk.console.show_plan.TheDataFileName == "NoName.TXT");
    CHECK(desk.console.Lineweir.CaptionLabel(time_column).visible);
  }
}

TEST_CASE("only a start without a settings file is a new user's") {
  const auto welcomed = [](const std::optional<std::string>& settings) {
    platform::ScriptedPlatform platform;
    if (settings) platform.files.replace(std::string(settings_file_name), *settings);
    Console console(platform.services());
    int calls = 0;
    console.startup.on_new_user = [&] {
      ++calls;
      // What is chosen here shows in the layout that follows.
      console.window.restore({9000, 12000, window_normal});
      CHECK_FALSE(console.Lineweir.visible);
    };
    console.startup.Main("");
    CHECK(console.Lineweir.width == (calls > 0 ? 12000 : 9420));
    return calls;
  };
  CHECK(welcomed(std::nullopt) == 1);
  CHECK(welcomed("") == 1);
  CHECK(welcomed(encode_settings(ScriptedConsole("").console.settings.collect())) == 0);
}

TEST_CASE("only the exact letters of the command line switch something on") {
  CHECK(ScriptedConsole("D").console.program.DebugMode);
  CHECK(ScriptedConsole("E").console.program.EmptyLineOverride);
  for (const char* nothing : {"", "d", "e", " D", "D ", "DE", "ED"}) {
    ScriptedConsole desk(nothing);
    CHECK_FALSE(desk.console.program.DebugMode);
    CHECK_FALSE(desk.console.program.EmptyLineOverride);
  }
  CHECK(ScriptedConsole("D").console.Lineweir.SyncTimeTimer.interval.get() == 60000);
  CHECK(ScriptedConsole("").console.Lineweir.SyncTimeTimer.interval.get() == 10000);
}

TEST_CASE("a stored open port is opened, probed and asked for its lines, twice") {
  SettingsRecord record = plain_settings();
  record.CommPort = 3;
  record.PortState = true;
  Workstation desk(record);
  desk.platform.comm1.reply("M", "Line monitor ON");
  desk.start();
  CHECK(desk.platform.comm1.is_open());
  CHECK(desk.platform.comm1.comm_port() == 3);
  CHECK(desk.console.Lineweir.Com3.checked);
  CHECK(desk.console.Lineweir.PortOn.checked);
  CHECK_FALSE(desk.console.Lineweir.Off.checked);
  const auto writes = desk.platform.comm1.take_writes();
  REQUIRE(writes.size() == 22);
  CHECK(writes[0] == "M");
  CHECK(writes[1] == "Q00");
  CHECK(writes[10] == "Q09");
  CHECK(writes[11] == "M");
  CHECK(writes[21] == "Q09");
  CHECK(desk.messages.empty());
}

TEST_CASE("a box that doesn't answer gives its message and leaves the port open") {
  SettingsRecord record = plain_settings();
  record.PortState = true;
  Workstation desk(record);
  desk.start();
  CHECK(desk.messages == std::vector<std::string>{box_message, box_message});
  CHECK(desk.platform.comm1.is_open());
  CHECK(desk.console.Lineweir.Off.checked);
  CHECK_FALSE(desk.console.Lineweir.PortOn.checked);
  CHECK(desk.platform.loop.now() > Milliseconds(6000));
}

TEST_CASE("a stored port that fails makes the start try the ports in turn") {
  SettingsRecord record = plain_settings();
  record.CommPort = 4;
  record.PortState = true;
  for (int failures = 1; failures <= 4; ++failures) {
    CAPTURE(failures);
    Workstation desk(record);
    desk.platform.comm1.reply("M", "Line monitor ON");
    desk.platform.comm1.fail_openings(failure_number::port_hardware_missing, failures);
    desk.start();
    CHECK(desk.platform.comm1.is_open());
    CHECK(desk.platform.comm1.comm_port() == failures);
    for (int number = 1; number <= 4; ++number) {
      CHECK(desk.console.Lineweir.Com(number).checked == (number == failures));
    }
    CHECK(desk.messages.empty());
  }
}

TEST_CASE("when all ports fail one message comes and the start goes on without a port") {
  SettingsRecord record = plain_settings();
  record.PortState = true;
  Workstation desk(record);
  desk.platform.comm1.fail_openings(failure_number::device_unavailable, 100);
  desk.start();
  CHECK(desk.messages == std::vector<std::string>{"No Com Port is available on this Computer!!"});
  CHECK_FALSE(desk.platform.comm1.is_open());
  CHECK(desk.console.Lineweir.visible);
  CHECK(desk.console.Lineweir.Options.enabled);
  CHECK(desk.console.Lineweir.mouse_pointer == int{pointer_default});
}

TEST_CASE("a stored connection above 98 leaves the serial port off whatever its switch says") {
  SettingsRecord record = plain_settings();
  record.CommPort = connection_socket;
  record.PortState = true;
  Workstation desk(record);
  desk.start();
  CHECK_FALSE(desk.platform.comm1.is_open());
  CHECK(desk.console.Lineweir.Off.checked);
}

TEST_CASE("stored values come back where they belong") {
  SettingsRecord record = plain_settings();
  record.GroupNumber = 0;
  record.Warning1 = 45;
  record.Warning2 = 20;
  record.TimeOffset = 12;
  record.OperatorName = "Marsh";
  record.UserName = "amarsh";
  record.DisplayUserName = "A. Marsh";
  record.ServerHost = "10.0.0.7 ";
  record.ServerPort = 2002;
  record.LogFieldOn[2] = false;
  record.UserFieldName = "Topic";
  record.LineNamesOn = true;
  record.GreyScreenOn = true;
  record.ServerShowOn = true;
  record.NextBarOff = true;
  record.RemotePortNumber = 3;
  record.MessageFontName = "Serif";
  record.MessageFontSize = 11;
  record.MessageFontItalic = true;
  Workstation desk(record);
  desk.start();
  Console& console = desk.console;
  CHECK(console.program.GroupNumber == 1);
  CHECK(console.clock_state.Warning1 == 45);
  CHECK(console.clock_state.Warning2 == 20);
  CHECK(console.clock_state.DelayOffset == 12);
  CHECK(console.program.OperatorName == "Marsh");
  CHECK_FALSE(console.caller_data.LogFieldOn[2]);
  CHECK(console.login.UserName.trimmed() == "amarsh");
  CHECK(console.Lineweir.Label1.caption == "A. Marsh");
  CHECK(console.login.ServerHost == "10.0.0.7");
  CHECK(console.login.ServerPort == 2002);
  CHECK(console.Lineweir.CaptionLabel(user_column).caption == "Topic");
  CHECK(console.DisplayOptionForm.CheckItem(user_column).caption == "Topic");
  CHECK(console.Lineweir.DimLineNumMenu.checked);
  CHECK_FALSE(console.Lineweir.StudioLinNumMenu.checked);
  CHECK(console.Lineweir.GreyScreenOption.checked);
  CHECK(console.Lineweir.ServerShowData.checked);
  CHECK(console.Lineweir.NextBarDisable.checked);
  CHECK(console.Lineweir.RemoteCom3.checked);
  CHECK(console.Lineweir.LineName(3).font.name == "Serif");
  CHECK(console.Lineweir.LineName(3).font.size == 11);
  CHECK(console.Lineweir.LineName(3).font.bold);
  CHECK(console.Lineweir.LineName(3).font.italic);
}

TEST_CASE("twenty lines are there before the port is asked for them") {
  SettingsRecord record = plain_settings();
  record.Line20On = true;
  record.PortState = true;
  Workstation desk(record);
  desk.platform.comm1.reply("M", "Line monitor ON");
  desk.start();
  CHECK(desk.console.lines.LineCount == 20);
  CHECK(desk.console.Lineweir.DataRow.count() == 20);
  CHECK(desk.platform.comm1.take_writes()[20] == "Q019");
}

TEST_CASE("columns come back in their order, those of place 99 are not listed") {
  SettingsRecord record = plain_settings();
  record.ColumnShown[0] = -1;
  record.ColumnOrder[0] = 1;
  record.ColumnShown[10] = -1;
  record.ColumnOrder[10] = 0;
  record.ColumnWidth[0] = 900;
  record.ColumnWidth[10] = 2000;
  Workstation desk(record);
  desk.start();
  CHECK(desk.console.DisplayOptionForm.List1.list.get() ==
        std::vector<std::string>{"User", "Time"});
  const MainForm& form = desk.console.Lineweir;
  CHECK(form.LineUser(0).visible);
  CHECK(form.LineUser(0).width == 2000);
  CHECK(form.LineTime(0).left > form.LineUser(0).left);
  CHECK_FALSE(form.LineName(0).visible);
}

TEST_CASE("the window gets its stored size, with the menu bar added while it is shown") {
  SettingsRecord record = plain_settings();
  record.WindowHeight = 8000;
  record.WindowWidth = 11000;
  Workstation desk(record);
  desk.start();
  CHECK(desk.console.Lineweir.height == 8285);
  CHECK(desk.console.Lineweir.width == 11000);
}

TEST_CASE("what was stored is stored again at the end") {
  SettingsRecord record = plain_settings();
  record.GroupNumber = 2;
  record.Warning1 = 44;
  record.UserFieldName = "Topic";
  record.ColumnShown[0] = -1;
  record.ColumnOrder[0] = 0;
  record.ColumnWidth.fill(700);
  record.ShowDataFile = "NONAME.TXT";
  record.ServerHost = "127.0.0.1";
  record.ServerPort = 2001;
  Workstation desk(record);
  desk.start();
  desk.console.Lineweir.close();
  CHECK(desk.platform.ended);
  const auto written = decode_settings(*desk.platform.files.read("Writ.inf"));
  REQUIRE(written);
  // The scrambled empty password is its key alone.
  record.UserPassword = written->UserPassword;
  CHECK(written->UserPassword.size() == 1);
  for (const SettingsField& field : settings_fields) {
    CAPTURE(field.offset);
    CHECK(encode_settings(*written).substr(field.offset, field.width) ==
          encode_settings(record).substr(field.offset, field.width));
  }
}

TEST_CASE("with a lamp that isn't green the settings stay as they were") {
  Workstation desk(plain_settings());
  desk.start();
  const auto before = desk.platform.files.read("Writ.inf");
  desk.console.clock_state.Warning1 = 77;
  desk.console.Lineweir.Shape1.fill_color = color_red;
  desk.console.Lineweir.close();
  CHECK(desk.platform.ended);
  CHECK(desk.platform.files.read("Writ.inf") == before);
}

TEST_CASE("without the trace a failure leaves no mark, with it a line") {
  for (const bool trace_on : {false, true}) {
    ScriptedConsole desk(trace_on ? "D" : "");
    std::vector<std::string> lines;
    desk.console.trace.on_line = [&](const std::string& line) { lines.push_back(line); };
    guard(desk.console.trace, "Lineweir_Timer5_Timer",
          [] { throw Failure(11, "Division by zero"); });
    const auto file = desk.platform.files.read("LWDebug.txt");
    if (trace_on) {
      CHECK(lines == std::vector<std::string>{"Lineweir_Timer5_Timer Error - Division by zero"});
      CHECK(desk.console.DebugForm.Text1.text.get() ==
            "1/5/2026 10:00:00 AM  Lineweir_Timer5_Timer Error - Division by zero\r\n");
      CHECK(file == desk.console.DebugForm.Text1.text.get());
    } else {
      CHECK(lines.empty());
      CHECK(desk.console.DebugForm.Text1.text == "");
      CHECK_FALSE(file);
    }
    CHECK_FALSE(desk.console.MyMsgbox.visible);
  }
}

TEST_CASE("a trace window of more than 10000 characters is cleared, the file is not") {
  ScriptedConsole desk("D");
  const std::string long_line(6000, 'x');
  desk.console.trace.WriteTrace(long_line);
  CHECK(desk.console.DebugForm.Text1.text.get().size() > 6000);
  desk.console.trace.WriteTrace(long_line);
  CHECK(desk.console.DebugForm.Text1.text == "");
  CHECK(desk.platform.files.read("LWDebug.txt")->size() > 12000);
}

TEST_CASE("a settings file that can't be read is told, and left as it is to the end") {
  platform::ScriptedPlatform desk;
  desk.files.replace("Writ.inf", encode_settings(plain_settings()));
  desk.files.set_readable("Writ.inf", false);
  std::vector<std::string> told;
  desk.dialogs.on_message = [&](const std::string& text) { told.push_back("box: " + text); };
  {
    Console console(desk.services());
    console.messages.on_shown = [&](const std::string& text) { told.push_back(text); };
    console.startup.Main("");
    REQUIRE(told.size() == 1);
    CHECK(told[0].starts_with("The settings could not be read, "));
    CHECK(told[0].ends_with("Can't read Writ.inf: Permission denied"));

    // Readable again, it still holds what this run has never seen.
    desk.files.set_readable("Writ.inf", true);
    console.Lineweir.SaveSettingsMenu.on_click();
    REQUIRE(told.size() == 2);
    CHECK(told[1].starts_with("The settings are not saved, "));
    console.Lineweir.close();
    REQUIRE(told.size() == 3);
    CHECK(told[2].starts_with("box: The settings are not saved, "));
    CHECK(desk.ended);
  }
  CHECK(*desk.files.read("Writ.inf") == encode_settings(plain_settings()));
}

TEST_CASE("settings that can't be saved are told while the window still stands") {
  class FullDisk final : public platform::StreamedFiles {
   public:
    std::optional<std::string> read(const std::string&) const override { return std::nullopt; }
    std::optional<std::string> read_short(const std::string&, std::size_t) const override {
      return std::nullopt;
    }
    std::optional<std::string> why_unreadable(const std::string&) const override { return {}; }
    void replace(const std::string&, std::string_view) override { fail(); }
    std::unique_ptr<platform::FileInMaking> begin_replace(const std::string&) override {
      fail();
      return nullptr;
    }
    void append(const std::string&, std::string_view) override { fail(); }
    bool exists(const std::string&) const override { return false; }
    std::string current_directory() const override { return "/console"; }
    std::unique_ptr<platform::ConsoleFile> console_file(const std::string& name) override {
      return memory_.console_file(name);
    }
    std::unique_ptr<platform::FileReader> open(const std::string&) const override {
      return nullptr;
    }
    bool same_file(const std::string&, const std::string&) const override { return false; }

   private:
    static void fail() { throw Failure(failure_number::file_access, "No space left"); }

    platform::MemoryFiles memory_;
  };
  platform::ScriptedPlatform desk;
  FullDisk files;
  Console console(desk.services(files, desk.databases));
  bool stood = false;
  std::string told;
  desk.dialogs.on_message = [&](const std::string& text) {
    told = text;
    stood = console.Lineweir.visible;
  };
  console.startup.Main("");
  console.Lineweir.close();
  CHECK(told == "The settings could not be saved: No space left");
  CHECK(stood);
  CHECK_FALSE(console.Lineweir.visible);
  CHECK(desk.ended);
}

}  // namespace
}  // namespace lineweir
