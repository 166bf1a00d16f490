#include "desktop/element_looks.h"

#include <algorithm>
#include <array>

#include "elements/form.h"
#include "elements/label.h"
#include "forms/row_elements.h"

namespace lineweir {
namespace {

constexpr std::array looks = {
    ElementLook{"BlackScreenTop", Look::FaceImage, "Metal background, upper part"},
    ElementLook{"GreyScreenTop", Look::FaceImage, "Grey background, upper part"},
    ElementLook{"BlackScreenBottom", Look::FaceImage, "Metal background of the control panel"},
    ElementLook{"GreyScreenBottom", Look::FaceImage, "Grey background of the control panel"},
    ElementLook{"ScreenTop", Look::Face, "Screen, upper part"},
    ElementLook{"ScreenTopImage", Look::FaceImage, "Background, upper part"},
    ElementLook{"ScreenBottom", Look::Panel, "Control panel"},
    ElementLook{"ScreenBottomImage", Look::FaceImage, "Background of the control panel"},
    ElementLook{"LowCover", Look::Cover, "Cover"},

    ElementLook{"CaptionLabel", Look::Heading, "Column heading"},
    ElementLook{"Label9", Look::Heading, "Heading of the right row buttons",
                "Heading of the next caller buttons"},
    ElementLook{"Label10", Look::Heading, "Heading of the left row buttons",
                "Heading of the answer buttons"},

    ElementLook{"DataRow", Look::Strip, "Line %1"},
    ElementLook{"DataRowImage", Look::Nothing, "Line %1 strip"},
    ElementLook{"LineNumb", Look::RowText, "Line %1 number"},
    ElementLook{"LineStatus", Look::RowStatus, "Line %1 status"},
    ElementLook{"LineTime", Look::RowTime, "Line %1 time"},
    ElementLook{"MyMark", Look::Mark, "Line %1 column edge"},
    ElementLook{"OnHybrid1", Look::RowKey, "Put line %1 on main hybrid", "Answer line %1"},
    ElementLook{"OnHybrid2", Look::RowKey, "Put line %1 on conference hybrid",
                "Make line %1 the next caller"},
    ElementLook{"CIcon1", Look::KeyIcon, "Line %1 main hybrid", "Line %1 state"},
    ElementLook{"CIcon2", Look::KeyIcon, "Line %1 conference hybrid", "Line %1 state"},

    ElementLook{"Drop1", Look::PanelKey, "Drop the caller on the main hybrid",
                "Drop the calls at this phone"},
    ElementLook{"Drop1Image", Look::Nothing, "Face of the button"},
    ElementLook{"Drop1Label", Look::DropCaption, "Caption of the button"},
    ElementLook{"Hold1", Look::PanelKey, "Hold the caller on the main hybrid",
                "Hold the calls at this phone"},
    ElementLook{"Hold1Image", Look::Nothing, "Face of the button"},
    ElementLook{"Hold1Label", Look::HoldCaption, "Caption of the button"},
    ElementLook{"Drop2", Look::PanelKey, "Drop the caller on the conference hybrid"},
    ElementLook{"Drop2Image", Look::Nothing, "Face of the button"},
    ElementLook{"Drop2Label", Look::DropCaption, "Caption of the button"},
    ElementLook{"Hold2", Look::PanelKey, "Hold the caller on the conference hybrid"},
    ElementLook{"Hold2Image", Look::Nothing, "Face of the button"},
    ElementLook{"Hold2Label", Look::HoldCaption, "Caption of the button"},
    ElementLook{"NextButton", Look::NextKey, "Next caller to main hybrid",
                "Ready, the caller at this phone may go on air"},
    ElementLook{"NextButtonImage", Look::Nothing, "Face of the button"},
    ElementLook{"CenterLabel1", Look::KeyCaption, "Caption of the button"},
    ElementLook{"NextToConfButton", Look::NextKey, "Next caller to conference hybrid",
                "Answer the next caller"},
    ElementLook{"NextToConfButtonImage", Look::Nothing, "Face of the button"},
    ElementLook{"CenterLabel2", Look::KeyCaption, "Caption of the button"},
    ElementLook{"Dial", Look::PanelKey, "Dial"},
    ElementLook{"DialImage", Look::Nothing, "Face of the button"},
    ElementLook{"CenterLabel3", Look::KeyCaption, "Caption of the button"},
    ElementLook{"OptionsButton", Look::PanelKey, "Setup"},
    ElementLook{"OptionsButtonImage", Look::Nothing, "Face of the button"},
    ElementLook{"SetupLabel", Look::KeyCaption, "Caption of the button"},

    ElementLook{"Shape1", Look::Lamp, "Link to the telephone system"},
    ElementLook{"Label1", Look::PanelText, "Link to the telephone system"},
    ElementLook{"Text1", Look::Message, "Messages"},
    ElementLook{"Text2", Look::Entry, "Message to send"},
    ElementLook{"ServerSilence", Look::PanelBanner, "Word from the server"},
    ElementLook{"LogWaiting", Look::PanelWarning, "Calls that wait for the call log"},

    ElementLook{"CallerNote", Look::CallerNote, "Caller"},

    ElementLook{"lblTime", Look::PanelText, "Clock caption"},
    ElementLook{"picRealTimeClock", Look::Clock, "Time clock"},
    ElementLook{"imgTimeClock", Look::Nothing, "Dial of the time clock"},
    ElementLook{"RealTime", Look::ClockDigits, "Time of day"},
    ElementLook{"picShowTimeClock", Look::Clock, "Event clock"},
    ElementLook{"imgShowClock", Look::Nothing, "Dial of the event clock"},
    ElementLook{"CountDownTime", Look::Countdown, "Time to the next event"},
    ElementLook{"StatusText", Look::ClockText, "Next event"},
    ElementLook{"RedClock", Look::RedClock, "Event warning"},
    ElementLook{"RedClockImage", Look::Nothing, "Red dial of the event clock"},
    ElementLook{"RealTime2", Look::LargeDigits, "Time of day"},
    ElementLook{"CountDownTime2", Look::LargeDigits, "Time to the next event"},
    ElementLook{"StatusText2", Look::LargeText, "Next event"},
};

// The texts of the rows that tell of the caller.
constexpr auto caller_looks = [] {
  std::array<ElementLook, entry_field_count> rows{};
  for (std::size_t i = 0; i < rows.size(); ++i) {
    rows[i] = {entry_fields[i].row.element, Look::RowText, entry_fields[i].row.spoken};
  }
  return rows;
}();

// Panel keys that open something of the console's own.
constexpr std::array keys_of_the_console = {std::string_view("Dial"),
                                            std::string_view("OptionsButton")};

constexpr ElementLook plain_label = {"", Look::PanelText, ""};
constexpr ElementLook plain_picture = {"", Look::Nothing, ""};
constexpr ElementLook plain_text_box = {"", Look::Entry, ""};
constexpr ElementLook plain_lamp = {"", Look::Lamp, ""};

const ElementLook& look_of_kind(ElementKind kind) {
  switch (kind) {
    case ElementKind::Label:
      return plain_label;
    case ElementKind::TextBox:
      return plain_text_box;
    case ElementKind::Shape:
      return plain_lamp;
    default:
      return plain_picture;
  }
}

bool in_producer_mode(const Form& form) {
  const auto* mode = dynamic_cast<const MenuItem*>(form.find("ScreenerMode"));
  return mode != nullptr && mode->checked;
}

}  // namespace

const ElementLook& look_of(const Control& control) {
  const auto* row = std::ranges::find(looks, control.name(), &ElementLook::element);
  if (row != looks.end()) return *row;
  const auto* of_caller = std::ranges::find(caller_looks, control.name(), &ElementLook::element);
  return of_caller == caller_looks.end() ? look_of_kind(control.kind()) : *of_caller;
}

bool commands_equipment(const Control& control) {
  switch (look_of(control).look) {
    case Look::RowKey:
    case Look::NextKey:
      return true;
    case Look::PanelKey:
      return std::ranges::find(keys_of_the_console, control.name()) == keys_of_the_console.end();
    default:
      return false;
  }
}

QString spoken_name(const Control& control) {
  const ElementLook& look = look_of(control);
  if (look.spoken.empty()) return object_name(control);
  const bool other_words = !look.spoken_to_producer.empty() && in_producer_mode(control.form());
  const std::string_view spoken = other_words ? look.spoken_to_producer : look.spoken;
  const int line =
      look.look == Look::Mark ? control.index() / column_count : std::max(0, control.index());
  return QString::fromLatin1(spoken.data(), static_cast<int>(spoken.size()))
      .replace(QLatin1String("%1"), QString::number(line + 1));
}

QString object_name(const Element& element) {
  QString name = QString::fromStdString(element.name());
  if (element.index() != no_index) name += QStringLiteral("(%1)").arg(element.index());
  return name;
}

}  // namespace lineweir
