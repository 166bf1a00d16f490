#pragma once

#include <string>

#include "forms/entry_fields.h"
#include "support/scripted_console.h"
#include "support/server_packet.h"

namespace lineweir::test {

// A console whose user works on Form4.
struct EntryForm : ScriptedConsole {
  using ScriptedConsole::ScriptedConsole;

  CallerDataForm& form() { return console.Form4; }
  TextBox& box(int entry) { return form().TheText(entry); }
  const std::string& text(int entry) { return box(entry).text; }
  CallerRecord& record(int line) { return console.lines.CallerData(line); }
  Label& shown(int line, int entry) {
    return console.Lineweir.labels_of(entry_field(entry).field)(line);
  }

  void open(int line) { console.caller_data.show_for_line(line); }

  // Keys in a field, as the keyboard gives them.
  void type(int entry, const std::string& keys) {
    box(entry).set_focus();
    for (const char c : keys) {
      int key = static_cast<unsigned char>(c);
      box(entry).on_key_press(key);
      if (key != 0) box(entry).enter(key);
    }
  }

  // The field that has the focus; 0 for none.
  int focused() {
    for (int entry = 1; entry <= entry_field_count; ++entry) {
      if (form().focused() == &box(entry)) return entry;
    }
    return 0;
  }

  void save() { form().Command3D1.on_click(); }

  void use_only(std::initializer_list<int> entries) {
    console.caller_data.LogFieldOn.fill(false);
    for (const int entry : entries) {
      console.caller_data.LogFieldOn[static_cast<std::size_t>(entry - 1)] = true;
    }
  }

  void connect_socket() {
    platform.winsock1.stand_connected();
    console.Lineweir.WinsockMenu.checked = true;
  }

  // A frame that another console has sent comes from the server as caller data.
  void call_data_arrives(std::string frame) {
    connect_socket();
    frame[2] = static_cast<char>(ServerCommand::SrvCallerData);
    platform.winsock1.arrive(frame);
    platform.loop.advance(platform::Milliseconds(60));
  }

  // The server tells the caller data of a line.
  void receive(int line, const std::string& data) {
    ServerPacket packet = server_packet(ServerCommand::SrvCallerData, data);
    packet.LineNo = static_cast<std::uint8_t>(line);
    platform.winsock1.arrive(frame_of(packet));
    platform.loop.advance(platform::Milliseconds(60));
  }

  void connect_remote() {
    platform.remote_objects.set_present(true);
    console.remote.SerialInputObject = platform.remote_objects.create("Quorlink.SerialInput");
    console.Lineweir.NetworkConnectionOption.checked = true;
    platform.remote_objects.take_calls();
  }
};

}  // namespace lineweir::test
