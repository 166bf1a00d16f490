#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "elements/form.h"

namespace lineweir {

class CallLogFile;
class ShowPlanStore;
struct ConsoleState;

// The files that a profile names. Who sends a profile must not reach more with it than he who works
// at the console, and never what isn't of the kind that he names:
//
// - A show plan is opened if the file holds a plan and nothing else. One that is empty or isn't
//   there is begun only as NAME.txt in the console's own folder. While a plan is being edited it
//   stays; the profile's one is opened when the editor is left, unless the user has chosen another
//   one meanwhile.
// - A call log is opened if it is one, and never made.
// - The hot list's path is kept, and nothing is opened.
//
// A path that is longer than its field is refused.
class ProfileFiles final : private FormWatch {
 public:
  ProfileFiles(ConsoleState& state, ShowPlanStore& show_plan, CallLogFile& call_log_file);

  // What a profile is to name.
  std::string show_plan() const;
  std::string call_log() const;

  // What a profile names. No call fails; the handler stands for whom a failure is reported.
  void take_show_plan(const std::string& path, const std::string& handler);
  void take_call_log(const std::string& path, const std::string& handler);
  void take_hot_list(std::string_view path);

 private:
  // A plan that a profile has named while another one was being edited.
  struct AwaitedPlan {
    std::string path;
    std::string handler;
    std::string edited;
  };

  void changed(Element& element, PropertyId property) override;
  // None where the user has chosen another plan meanwhile.
  std::optional<AwaitedPlan> awaited_plan() const;
  void open_plan(const std::string& path);

  ConsoleState& state_;
  ShowPlanStore& show_plan_;
  CallLogFile& call_log_file_;
  std::optional<AwaitedPlan> awaited_plan_;
};

// Whether a profile may begin a show plan of that name: NAME.txt in the console's own folder, where
// it doesn't hide and isn't the trace.
bool may_begin_plan(std::string_view path);

}  // namespace lineweir
