#include "desktop/manual_sections.h"

#include <algorithm>
#include <array>

#include "forms/main_form.h"

namespace lineweir {
namespace {

struct SectionRow {
  std::string_view form;
  const char* anchor;
};

constexpr std::array sections = {
    SectionRow{"AboutBox", "options"},
    SectionRow{"CallerFlagForm", "caller-data"},
    SectionRow{"CertificateQuestion", "about-a-servers-certificate"},
    SectionRow{"CloseQuestion", "close-the-console-on-air"},
    SectionRow{"DatabaseViewer", "looking-at-it"},
    SectionRow{"DebugForm", "trace"},
    SectionRow{"DialForm", "the-dial-pad"},
    SectionRow{"DisplayOptionForm", "columns-and-lines"},
    SectionRow{"FlashMessA", "messages"},
    SectionRow{"Form2", "the-show-plan"},
    SectionRow{"Form3", "time-clocks"},
    SectionRow{"Form4", "caller-data"},
    SectionRow{"ImportPreview", "export-print-import"},
    SectionRow{"LogDataForm", "fields-of-the-caller-data"},
    SectionRow{"LoginForm", "who-you-are"},
    SectionRow{"MyMsgbox", "what-the-program-says"},
    SectionRow{"Standby", "on-the-main-window"},
    SectionRow{"WinsockOptions", "a-server"},
};

}  // namespace

QString manual_section_of(std::string_view form) {
  const auto row = std::ranges::find(sections, form, &SectionRow::form);
  return row == sections.end() ? QString() : QString::fromLatin1(row->anchor);
}

QString manual_section_of(const MainForm& form) {
  return form.ScreenerMode.checked ? QStringLiteral("for-the-screener")
                                   : QStringLiteral("for-the-host");
}

}  // namespace lineweir
