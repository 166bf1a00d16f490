#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "clocks/show_plan.h"
#include "letters/letters.h"
#include "platform/files.h"

namespace lineweir {

// The plan that is used when no settings name another: the file, and the name that is shown for it.
inline constexpr std::string_view default_show_file = "NoName.txt";
inline constexpr std::string_view default_show_name = "NoName.TXT";

// What the user is told of a stored plan that isn't there.
std::string plan_not_found(const Letters& letters, const std::string& path);

// The plan in memory and the file that is open for it, if any. Files are read and replaced whole,
// so that a save never leaves half a plan, and the next read sees what any console saved last.
//
// Where a file can't be read or written a Failure is thrown, and plan and open file are as they
// were: number 76 where a new file can't be made, 75 otherwise.
class ShowPlanStore {
 public:
  explicit ShowPlanStore(platform::Files& files) : files_(files) {}

  // The clock engine reads it.
  ShowPlan plan;

  // The open file's path, as it is shown.
  std::string TheDataFileName;

  // Opens the file, which is made if there is none, and reads its 42 records into the plan.
  void load_plan(const std::string& path);

  // The same for NoName.txt, which is shown as NoName.TXT.
  void load_default_plan();

  // The default plan serves while the stored one is out of reach. The settings keep the path of
  // that one until the user chooses a file.
  void load_default_plan_for(const std::string& stored_path);

  // The open plan serves while the one of that path is out of reach, which is kept in the same way.
  void serve_for(const std::string& path) { out_of_reach_ = path; }

  // Opens the file that holds this content.
  void use_plan(const std::string& path, std::string_view content);

  // What the settings and the user's profile store.
  const std::string& path_to_store() const {
    return out_of_reach_.empty() ? TheDataFileName : out_of_reach_;
  }

  // Opens the file and fills plan and file with 42 blank records.
  void new_plan(const std::string& path);

  // Writes a plan to the open file, or to another one, which is then the open one. With that it is
  // the plan in memory too.
  void save_plan(const ShowPlan& edited);
  void save_plan_as(const std::string& path, const ShowPlan& edited);

  // The plan as it was last read or saved.
  const ShowPlan& saved_plan() const { return plan_before_changes_ ? *plan_before_changes_ : plan; }

  // Puts a plan in force that isn't saved yet. Undoing brings back the plan of before the first
  // such change since the last one that was read or saved.
  void change_unsaved(const ShowPlan& edited);
  void undo_unsaved();

  // Reads the times of the first 34 records anew, as far as the file holds them, so that what
  // another console saved is seen. Texts and the later times stay, as does everything where the
  // file can't be read. While changes are unsaved it is the plan behind them that is read anew.
  void read_first_34();

  // Until another file is opened nothing is read and nothing can be saved.
  void close() { open_path_.clear(); }
  bool is_open() const { return !open_path_.empty(); }

 private:
  // The plan as that file holds it.
  void open_as(const std::string& path, std::string_view shown_name, const ShowPlan& held);

  platform::Files& files_;
  std::string open_path_;
  std::string out_of_reach_;
  // While changes are unsaved.
  std::optional<ShowPlan> plan_before_changes_;
};

}  // namespace lineweir
