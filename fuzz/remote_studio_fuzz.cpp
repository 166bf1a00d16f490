// A console on a server's published objects which answer and call back anything, in any order, and
// come and go, while time passes and the user works. Nothing crashes or hangs, and nobody is asked
// for what isn't there. What is told of the lines in between is so; and once the server is sound
// the console is with it again, and holds the truth.

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <span>
#include <string>
#include <vector>

#include "any_remote_objects.h"
#include "base/text.h"
#include "core/console.h"
#include "platform/scripted/scripted_platform.h"
#include "wire/server_packet_codec.h"
#include "wire/studio_texts.h"

using namespace lineweir;
using platform::Milliseconds;

namespace {

constexpr int told_lines = 10;
constexpr std::int64_t equipment = 1;

void require(bool holds, const std::string& what) {
  if (holds) return;
  std::fprintf(stderr, "wrong: %s\n", what.c_str());
  std::abort();
}

class RemoteDesk {
 public:
  explicit RemoteDesk(std::span<const std::uint8_t> bytes) : server_(platform_.loop, bytes) {
    server_.answers = {
        {"AddObjectReference", true},
        {"DropObjectReference", true},
        {"GetDimType", equipment},
        {"GetLineNumbers", std::string("01020304050607080910")},
        {"GetStudioNames", std::string("Morning\3Late Show\3")},
        {"GetStudioStatus",
         encode_studio_parts({{true, true, true, true}, std::vector<bool>(told_lines, true)})},
        {"OutputSerialPort", std::string("F00R01F02F03F04F05F06F07F08F09")},
        {"gettimes", std::string("0\00309:59:00\0030\00310:00:00\3")},
    };
    console_.startup.Main("D");
    click(console_.Lineweir.NetworkConnectionOption);
  }

  void play() {
    while (server_.has_bytes() && !platform_.ended) {
      take_step();
      look();
    }
    if (!platform_.ended) end();
  }

 private:
  platform::Services services() {
    platform_.other_remote_objects = &server_;
    return platform_.services();
  }

  void advance(int milliseconds) { platform_.loop.advance(Milliseconds(milliseconds)); }

  void take_step() {
    const std::uint8_t step = server_.next();
    switch (step % 16) {
      case 0:
        return advance(server_.next());
      case 1:
        return advance(server_.next() * 100);
      case 2:
        return server_.tell_presence(step < 128);
      case 3:
        return click_item(step / 16);
      case 4:
        return choose_group(step / 16);
      case 5:
        return work_on_line(step / 16);
      case 6:
        platform_.dialogs.answer_question(step < 128);
        return;
      case 7:
        return check_told_lines();
      default:
        return server_.call_back_anything();
    }
  }

  static void click(MenuItem& item) {
    if (item.enabled) item.on_click();
  }

  void click_item(int which) {
    MainForm& form = console_.Lineweir;
    MenuItem* const items[] = {&form.NetworkConnectionOption,
                               &form.Com1,
                               &form.PortOn,
                               &form.DimLineNumMenu,
                               &form.StudioMode,
                               &form.ScreenerMode,
                               &form.StudioLinNumMenu,
                               &form.SyncTimeMenu,
                               &form.MitelPhone1,
                               &form.Line20Mode};
    if (which < 10) return click(*items[which]);
    if (which == 10) return form.NextButton.on_click();
    if (which == 11) return form.NextToConfButton.on_click();
    if (which == 12) {
      console_.FlashMessA.Text1.text = server_.text();
      return console_.FlashMessA.FlashSend.on_click();
    }
    if (console_.MyMsgbox.ReconnectButton.visible) console_.MyMsgbox.ReconnectButton.on_click();
  }

  void choose_group(int index) {
    ControlArray<MenuItem>& groups = console_.Lineweir.StudioGr;
    if (groups.loaded(index)) click(groups(index));
  }

  void work_on_line(int choice) {
    const int line = server_.next() % told_lines;
    MainForm& form = console_.Lineweir;
    switch (choice % 4) {
      case 0:
        return form.OnHybrid1(line).on_click();
      case 1:
        return form.OnHybrid2(line).on_click();
      case 2:
        return form.LineName(line).on_dbl_click();
      default:
        if (!console_.Form4.visible) return;
        console_.Form4.TheText(1).text = server_.text();
        return console_.Form4.Command3D1.on_click();
    }
  }

  // A status text that is told twice, as a ringing line may have to be.
  void check_told_lines() {
    std::string told;
    for (int line = 0; line < told_lines; ++line) {
      told += "FRSHNCLPOKYB"[server_.next() % 12];
      told += zero_filled(line, 2);
    }
    tell_lines(told);
  }

  void tell_lines(const std::string& told) {
    const int calls_before = server_.calls;
    for (int times = 0; times < 2; ++times) {
      server_.call_back("ReturnCommand", {told});
      advance(100);
    }
    // A console that has asked meanwhile believes the answer.
    if (server_.calls != calls_before) return;
    for (int line = 0; line < told_lines; ++line) {
      const char letter = told[static_cast<std::size_t>(line) * status_item_length];
      const char shown = console_.lines.StatusLetter(line);
      const bool is_free = letter == 'F' && shown == ' ';
      // Who is on hold and has told his name is ready, with equipment that has no word for it.
      const bool is_ready = letter == 'H' && shown == 'S';
      require(shown == letter || is_free || is_ready,
              "the letter of a line: " + std::string(1, letter) + " is shown as " + shown + " in " +
                  told);
    }
  }

  void look() {
    const LineTable& lines = console_.lines;
    require(server_.fault.empty(), server_.fault);
    require(console_.program.GroupNumber >= 1, "the group");
    require(lines.TheNextCall >= no_line && lines.TheNextCall < lines.LineCount, "the next call");
  }

  void end() {
    server_.become_sound();
    advance(10'000);
    if (platform_.ended) return;
    const std::string letters = "N00R01S02H03C04F05F06F07F08F09";
    server_.answers["OutputSerialPort"] = letters;
    console_.Lineweir.NetworkConnectionOption.on_click();
    advance(100);
    require(console_.Lineweir.NetworkConnectionOption.checked, "the way");
    require(console_.remote.connected, "no reference");
    require(!console_.remote_link.is_silent(), "the server is taken for lost");
    require(console_.Lineweir.mouse_pointer == pointer_default, "the pointer waits");
    require(console_.lines.ThePhoneFlag == equipment, "the equipment");
    require(console_.Lineweir.StudioGr(1).caption == "Late Show", "the groups");
    tell_lines(letters);
    check_calls_back();
    look();
  }

  void check_calls_back() {
    const std::int64_t group = console_.program.GroupNumber;
    CallerDetails details;
    details.sender = "Zoe of another console";
    details.fields[0] = "Ann";
    server_.call_back("ReturnNextCall", {std::int64_t{3}, group});
    server_.call_back("ReturnCallerData", {encode_caller_data(details), std::int64_t{4}, group});
    server_.call_back("ReturnMessageData", {std::string("Zoe\3weather at ten"), group,
                                            std::int64_t{255}, std::int64_t{0}});
    platform_.loop.run_pending();
    require(console_.lines.TheNextCall == 2, "the next call as it was told");
    require(trimmed(console_.lines.CallerData(3)[CallerField::CallerName]) == "Ann", "a name");
    const std::string& message = console_.Lineweir.Text1.text;
    require(message.find("weather at ten") != std::string::npos, "a message");
  }

  platform::ScriptedPlatform platform_;
  fuzz::AnyRemoteObjects server_;
  Console console_{services()};
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  RemoteDesk({data, size}).play();
  return 0;
}
