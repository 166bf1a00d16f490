#include "forms/menu_elements.h"

#include <array>

#include "base/failure.h"

namespace lineweir {
namespace {

constexpr std::string_view separator = "-";

MenuItem& numbered(const std::array<MenuItem*, 4>& items, int number) {
  if (number < 1 || number > 4) {
    throw Failure(failure_number::bad_port_number, "Bad port number");
  }
  return *items[static_cast<std::size_t>(number - 1)];
}

}  // namespace

MenuElements::MenuElements(Form& form)
    : Options(form, "Options"),
      AboutLineweir(form, Options, "AboutLineweir", "&About Lineweir"),
      ManualMenuItem(form, Options, "ManualMenuItem", "&Manual"),
      DiagnosisMenuItem(form, Options, "DiagnosisMenuItem", "D&iagnosis"),
      SaveSettingsMenu(form, Options, "SaveSettingsMenu", "&Save Settings"),
      DatabasePathMenuItem(form, Options, "DatabasePathMenuItem", "&Database Path"),
      ShowDatabaseMenuItem(form, Options, "ShowDatabaseMenuItem", "Show Data&base"),
      ShowData(form, Options, "ShowData", "S&how Data"),
      ServerShowData(form, Options, "ServerShowData", "Ser&ver Show Data"),
      GreyScreenOption(form, Options, "GreyScreenOption", "&Grey Screen"),
      FontMenuItem(form, Options, "FontMenuItem", "&Font"),
      TextGrowToggle(form, Options, "TextGrowToggle", "&Text Grows"),
      UrgentSound(form, Options, "UrgentSound", "&Urgent Sound"),
      ResetLineweirSize(form, Options, "ResetLineweirSize", "&Reset Size"),
      ExitMenu(form, Options, "ExitMenu", "E&xit"),
      Port(form, "Port"),
      Com1(form, Port, "Com1", "Com &1"),
      Com2(form, Port, "Com2", "Com &2"),
      Com3(form, Port, "Com3", "Com &3"),
      Com4(form, Port, "Com4", "Com &4"),
      NetworkConnectionOption(form, Port, "NetworkConnectionOption", "&Network"),
      WinsockMenu(form, Port, "WinsockMenu", "&Winsock"),
      PortSeparator(form, Port, "PortSeparator", separator),
      PortOn(form, Port, "PortOn", "&On"),
      Off(form, Port, "Off", "O&ff"),
      RemotePort(form, "RemotePort"),
      RemoteCom1(form, RemotePort, "RemoteCom1", "Com &1"),
      RemoteCom2(form, RemotePort, "RemoteCom2", "Com &2"),
      RemoteCom3(form, RemotePort, "RemoteCom3", "Com &3"),
      RemoteCom4(form, RemotePort, "RemoteCom4", "Com &4"),
      RemotePortSeparator(form, RemotePort, "RemotePortSeparator", separator),
      RemoteOn(form, RemotePort, "RemoteOn", "&On"),
      RemoteOff(form, RemotePort, "RemoteOff", "O&ff"),
      TimeClockMenu2(form, "TimeClockMenu2"),
      Clock(form, TimeClockMenu2, "Clock", "&Set Time"),
      SyncTimeMenu(form, TimeClockMenu2, "SyncTimeMenu", "Syn&chronize Time"),
      TimeOffsetMenu(form, TimeClockMenu2, "TimeOffsetMenu", "Time &Offset"),
      TimeClockSeparator(form, TimeClockMenu2, "TimeClockSeparator", separator),
      EventClockMenu(form, TimeClockMenu2, "EventClockMenu", "&Event Clock"),
      TimeClockMenuItem(form, TimeClockMenu2, "TimeClockMenuItem", "&Time Clock"),
      DigiClock(form, TimeClockMenu2, "DigiClock", "&Digital Clock"),
      WarningTime1Menu(form, TimeClockMenu2, "WarningTime1Menu", "Warning Time &1"),
      WarningTime2Menu(form, TimeClockMenu2, "WarningTime2Menu", "Warning Time &2"),
      ConfigurationMenuItem(form, "ConfigurationMenuItem"),
      LogDataOptionsMenu(form, ConfigurationMenuItem, "LogDataOptionsMenu", "&Log Data Options"),
      DisplayDataOptionsMenu(form, ConfigurationMenuItem, "DisplayDataOptionsMenu",
                             "&Display Data Options"),
      AutoDataEntry(form, ConfigurationMenuItem, "AutoDataEntry", "&Auto Data Entry"),
      Line20Mode(form, ConfigurationMenuItem, "Line20Mode", "&20 Lines"),
      ModeMenuItem(form, ConfigurationMenuItem, "ModeMenuItem", "&Mode"),
      StudioMode(form, ModeMenuItem, "StudioMode", "&Talent"),
      ScreenerMode(form, ModeMenuItem, "ScreenerMode", "&Producer"),
      PassiveMode(form, ModeMenuItem, "PassiveMode", "Pa&ssive"),
      MitelOption(form, ConfigurationMenuItem, "MitelOption", "&Handset"),
      MitelPhone1(form, MitelOption, "MitelPhone1", "Phone &1"),
      MitelPhone2(form, MitelOption, "MitelPhone2", "Phone &2"),
      NextGenPhoneMenu(form, ConfigurationMenuItem, "NextGenPhoneMenu", "&Phones"),
      NextGenPhone(form, "NextGenPhone"),
      RemoteNext(form, ConfigurationMenuItem, "RemoteNext", "&Remote Next"),
      NextBarDisable(form, ConfigurationMenuItem, "NextBarDisable", "No Next &Bar"),
      DimLineNumMenu(form, ConfigurationMenuItem, "DimLineNumMenu", "Line &Names"),
      StudioLinNumMenu(form, ConfigurationMenuItem, "StudioLinNumMenu", "Line N&umbers"),
      PracticeMenu(form, ConfigurationMenuItem, "PracticeMenu", "Pra&ctice Show"),
      ConfigurationSeparator(form, ConfigurationMenuItem, "ConfigurationSeparator", separator),
      StudioGr(form, "StudioGr") {
  Options.caption = "&Options";
  Port.caption = "&Port";
  RemotePort.caption = "&Remote Port";
  TimeClockMenu2.caption = "&Time Clocks";
  ConfigurationMenuItem.caption = "&Configuration";

  NextGenPhone.wire_each([this](MenuItem& item) { item.set_parent(NextGenPhoneMenu); });
  StudioGr.wire_each([this](MenuItem& item) { item.set_parent(ConfigurationMenuItem); });
  StudioGr(0).caption = "Group 1";
  NextGenPhone.load(1).visible = false;

  ManualMenuItem.shortcut = "F1";
  ResetLineweirSize.shortcut = "F5";
  ServerShowData.visible = false;
  NextGenPhoneMenu.visible = false;
  for (MenuItem* item :
       {&StudioMode, &Off, &RemoteOff, &StudioLinNumMenu, &Com1, &StudioGr(0), &NextGenPhone(0)}) {
    item->checked = true;
  }
}

MenuItem& MenuElements::Com(int number) { return numbered({&Com1, &Com2, &Com3, &Com4}, number); }

void MenuElements::uncheck_coms() {
  for (MenuItem* item : {&Com1, &Com2, &Com3, &Com4}) item->checked = false;
}

int MenuElements::chosen_com() const {
  int number = 0;
  for (const MenuItem* item : {&Com1, &Com2, &Com3, &Com4}) {
    ++number;
    if (item->checked) return number;
  }
  return 0;
}

MenuItem& MenuElements::RemoteCom(int number) {
  return numbered({&RemoteCom1, &RemoteCom2, &RemoteCom3, &RemoteCom4}, number);
}

}  // namespace lineweir
