#include "forms/about_form.h"

#include <string>

#include "base/version.h"

namespace lineweir {

AboutForm::AboutForm() : Form("AboutBox") {
  caption = "About Lineweir";
  width = 5400;
  height = 2700;
  Label1.caption = "Lineweir";
  Label2.caption = std::string("Version ") + program_version;
  Label3.caption = "The operator's console of a talk show's telephones";
  for (Label* label : {&Label1, &Label2, &Label3}) label->alignment = align_center;
}

}  // namespace lineweir
