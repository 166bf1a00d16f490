#pragma once

namespace lineweir {

class HeldObjects;
class LineEvents;
class Modes;
class StudioGroups;
class StudioShape;
struct ConsoleState;

// What the server of the remote objects tells of the present studio group when it is asked, member
// by member.
class RemoteStudio {
 public:
  RemoteStudio(ConsoleState& state, HeldObjects& objects, Modes& modes, LineEvents& line_events,
               StudioShape& shape, StudioGroups& groups);

  // A failure of these is reported under the handler's own name, and the caller goes on.
  void GetStudioStat();
  void GetTheTimes();
  void RefreshStudioNames();

  // The state of the lines, the kind of equipment, and the names of the lines. Fail as the members
  // do.
  void take_lines();
  void name_lines();

 private:
  ConsoleState& state_;
  HeldObjects& objects_;
  Modes& modes_;
  LineEvents& line_events_;
  StudioShape& shape_;
  StudioGroups& groups_;
};

}  // namespace lineweir
