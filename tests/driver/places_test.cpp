#include <doctest/doctest.h>

#include "driver/places.h"
#include "driver_fixture.h"

namespace lineweir::test {
namespace {

TEST_CASE_FIXTURE(LaunchedFixture, "Elements are found on the main form without its name") {
  CHECK(say("get LineNumb(4).Caption") == "= \"5\"");
  CHECK(say("get Lineweir.LineNumb(4).Caption") == "= \"5\"");
  CHECK(say("get lineNUMB(4).caption") == "= \"5\"");
}

TEST_CASE_FIXTURE(LaunchedFixture, "Elements of other forms are found by the form's name") {
  CHECK(say("get MyMsgbox.OKButton.Caption") == "= \"&Ok\"");
  CHECK(say("get mymsgbox.okbutton.left") == "= 1770");
}

TEST_CASE_FIXTURE(LaunchedFixture, "A form is an element too") {
  CHECK(say("get Lineweir.Visible") == "= true");
  CHECK(say("get MyMsgbox.Visible") == "= false");
  CHECK(say("get Lineweir.WindowState") == "= 0");
}

TEST_CASE_FIXTURE(LaunchedFixture, "An array tells its count") {
  CHECK(say("get LineStatus.Count") == "= 10");
  CHECK(say("get Lineweir.LineStatus.Count") == "= 10");
  CHECK(say("set LineStatus.Count 5") == "error can't be set: LineStatus.Count");
  CHECK(say("get PortOn.Count") == "error no such path: PortOn.Count");
}

TEST_CASE_FIXTURE(LaunchedFixture, "A path without a property means the main one") {
  CHECK(say("get LineNumb(4)") == "= \"5\"");
  CHECK(say("get PortOn") == "= false");
  CHECK(say("get Shape1") == "= 65280");
  CHECK(say("get DataRow(0)") == "= \"DataRowWhite\"");
  CHECK(say("get Timer1") == "= true");
}

TEST_CASE_FIXTURE(LaunchedFixture, "What doesn't exist is told") {
  CHECK(say("get Nothing") == "error no such path: Nothing");
  CHECK(say("get Nothing.Caption") == "error no such path: Nothing.Caption");
  CHECK(say("get LineStatus.Caption") == "error no such path: LineStatus.Caption");
  CHECK(say("get LineStatus(-1).Caption") == "error no such path: LineStatus(-1).Caption");
  CHECK(say("get LineStatus(10).Caption") == "error no such path: LineStatus(10).Caption");
  CHECK(say("get PortOn(0).Caption") == "error no such path: PortOn(0).Caption");
  CHECK(say("get PortOn.Text") == "error PortOn has no Text");
  CHECK(say("get PortOn.Nonsense") == "error no such path: PortOn.Nonsense");
  CHECK(say("get PortOn.Checked.Checked") == "error no such path: PortOn.Checked.Checked");
  CHECK(say("get NoForm.PortOn.Checked") == "error no such path: NoForm.PortOn.Checked");
  CHECK(say("get Lineweir.Nothing.Caption") == "error no such path: Lineweir.Nothing.Caption");
}

TEST_CASE_FIXTURE(LaunchedFixture, "A property is set as the program sets it") {
  CHECK(say("set LineName(3).Caption \"Ann\"") == "ok");
  CHECK(say("get LineName(3).Caption") == "= \"Ann\"");
  CHECK(say("set LineName(3).Visible false") == "ok");
  CHECK(say("set LineName(3).ForeColor 16777215") == "ok");
  CHECK(say("set DataRow(3).Picture \"DataRowRed\"") == "ok");
  // The change event ran.
  CHECK(say("get DataRowImage(3).Picture") == "= \"DataRowRed\"");
}

TEST_CASE_FIXTURE(LaunchedFixture, "A value of another type or out of range is refused") {
  CHECK(say("set LineName(3).Caption 5") == "error not a text: 5");
  CHECK(say("set LineName(3).Visible 1") == "error not true or false: 1");
  CHECK(say("set LineName(3).Left \"a\"") == "error not a number: \"a\"");
  CHECK(say("set LineName(3).Left 1.5") == "error not a whole number: 1.5");
  CHECK(say("set LineName(3).Left 99999999999") == "error not a number in range: 99999999999");
  CHECK(say("set LineName(3).Left 2000000") == "error not a number in range: 2000000");
  CHECK(say("set DisplayOptionForm.List1.List \"a\"") == "error not a list of texts: \"a\"");
}

TEST_CASE_FIXTURE(LaunchedFixture, "Lists and grids") {
  CHECK(say("set DisplayOptionForm.List1.List [\"a\",\"b\"]") == "ok");
  CHECK(say("get DisplayOptionForm.List1.List") == "= [\"a\",\"b\"]");
  CHECK(say("set Form2.Grid1.Cell(3,1) \"12:00:00\"") == "ok");
  CHECK(say("get Form2.Grid1.Cell(3,1)") == "= \"12:00:00\"");
  CHECK(say("get Form2.Grid1.Cell(30,1)") == "error Subscript out of range");
  CHECK(say("get Form2.Grid1.Cell(-1,1)") == "error Subscript out of range");
  CHECK(say("get Form2.Grid1.Cell(1)") == "error no such path: Form2.Grid1.Cell(1)");
  CHECK(say("set Form2.Grid1.Cells [\"a\"]") == "error a grid keeps its number of cells");
}

TEST_CASE_FIXTURE(LaunchedFixture, "State that is no element has the path of its name") {
  CHECK(say("get TheNextCall") == "= -1");
  CHECK(say("get LineTable.TheNextCall") == "= -1");
  CHECK(say("set linetable.thenextcall 4") == "ok");
  CHECK(say("get TheNextCall") == "= 4");
  CHECK(say("set LineTable.StatusLetter(4) \"S\"") == "ok");
  CHECK(say("get StatusLetter(4)") == "= \"S\"");
  CHECK(say("set StatusLetter(4) \"NS\"") == "ok");
  CHECK(say("get StatusLetter(4)") == "= \"N\"");
  CHECK(say("set StatusLetter(4) \"\"") == "ok");
  CHECK(say("get StatusLetter(4)") == "= \" \"");
  CHECK(say("set SerialBuffer \"N0\"") == "ok");
  CHECK(say("get SerialBuffer") == "= \"N0\"");
  CHECK(say("get LoginForm.ChangeUser") == "= false");
  CHECK(say("get Lineweir.Comm1.PortOpen") == "= false");
  CHECK(say("get ShowDataFile") == "= \"NoName.TXT\"");
  CHECK(say("get TimeOffset") == "= 0");
  CHECK(say("set LineTable.CallerData(4).City \"Bonn\\u00e9\"") == "ok");
  CHECK(say("get CallerData(4).City") == "= \"Bonn\\u00e9\"");
  CHECK(say("get CallerData(4).Station") == "= \"          \"");
  CHECK(say("get LineTable.ClockRunning(4)") == "= 0");
  CHECK(say("get ThePhoneFlag") == "= 1");
  CHECK(say("get ShowTimes(3)") == "= \"           \"");
  CHECK(say("get DialLine") == "= -1");
  CHECK(say("get RecString") == "= \"\"");
  CHECK(say("get RowControls(4,1)") == "= \"5\"");
  CHECK(say("get ColumnsInUse").starts_with("= [0,1"));
}

TEST_CASE_FIXTURE(LaunchedFixture, "State beyond its bounds is refused") {
  CHECK(say("get LineTable.StatusLetter(10)") == "error Subscript out of range");
  CHECK(say("get LineTable.StatusLetter(-1)") == "error Subscript out of range");
  CHECK(say("get LineTable.StatusLetter") == "error no such path: LineTable.StatusLetter");
  CHECK(say("get LineTable.RingConfirm(26)") == "error Subscript out of range");
  CHECK(say("get ShowTimes(0)") == "error Subscript out of range");
  CHECK(say("get StatusLetter(1,2)") == "error one index is wanted");
  CHECK(say("set LineCount 27") == "error not a number in range: 27");
  CHECK(say("set RowControls(4,1) \"x\"") == "error can't be set: RowControls(4,1)");
  CHECK(say("get LineTable.Nonsense") == "error no such path: LineTable.Nonsense");
}

TEST_CASE_FIXTURE(LaunchedFixture, "Ports and the call log are state") {
  CHECK(say("get Comm1.PortOpen") == "= false");
  CHECK(say("set Comm1.CommPort 3") == "ok");
  CHECK(say("set Comm1.PortOpen true") == "ok");
  CHECK(say("get Comm1.CommPort") == "= 3");
  CHECK(say("set Comm1.CommPort 9").starts_with("error "));
  CHECK(say("get Data1.Recordset.Count") == "= 0");
  CHECK(say("get Data1.Recordset(0)") == "error Subscript out of range");
  CHECK(say("get Data1.DatabaseName") == "= \"\"");
}

TEST_CASE_FIXTURE(LaunchedFixture, "A form's elements are listed by their paths") {
  const std::string main_form = say("list Lineweir");
  CHECK(main_form.find("\"LineStatus(4)\"") != std::string::npos);
  CHECK(main_form.find("\"PortOn\"") != std::string::npos);
  CHECK(say("list MyMsgbox") ==
        "= [\"MyMsgbox.Label1\",\"MyMsgbox.OKButton\",\"MyMsgbox.ReconnectButton\"]");
  CHECK(say("list Nowhere") == "error no such form: Nowhere");
}

TEST_CASE_FIXTURE(LaunchedFixture, "Every path that is listed can be got") {
  int paths = 0;
  for (Form* form : session.console().forms()) {
    for (const std::string& path : driver::element_paths(session.console(), *form)) {
      ++paths;
      CAPTURE(path);
      CHECK(say("get " + path).starts_with("= "));
    }
  }
  CHECK(paths > 500);
}

TEST_CASE_FIXTURE(LaunchedFixture, "expect compares values") {
  CHECK(say("expect LineNumb(4).Caption \"5\"") == "ok");
  CHECK(say("expect LineNumb(4).Caption \"6\"") == "error expected \"6\" got \"5\"");
  CHECK(say("expect LineNumb(4).Caption 5") == "error expected 5 got \"5\"");
  CHECK(say("expect LineTable.ClockRunning(4) 0") == "ok");
  CHECK(say("expect LineTable.ClockRunning(4) 0.0") == "ok");
  CHECK(say("expect LineTable.ClockRunning(4) false") == "error expected false got 0");
  CHECK(say("expect PortOn.Checked 0") == "error expected 0 got false");
  CHECK(say("expect LineNumb(4).Caption \"\\u20ac\"") == "error expected \"\\u20ac\" got \"5\"");
}

TEST_CASE_FIXTURE(LaunchedFixture, "expect takes what a command gives as well") {
  CHECK(say("expect forms [\"Lineweir\"]") == "ok");
  CHECK(say("expect call GetCadence 3 \"\\u0000\\u0000\"") == "ok");
  CHECK(say("expect get PortOn.Checked false") == "ok");
  CHECK(say("expect list MyMsgbox []").starts_with("error expected [] got [\"MyMsgbox.Label1\""));
  CHECK(say("expect messages [\"a\"]") == "error expected [\"a\"] got []");
  CHECK(say("expect click PortOn true") == "error usage: expect PATH VALUE");
  CHECK(say("expect forms") == "error usage: expect PATH VALUE");
}

}  // namespace
}  // namespace lineweir::test
