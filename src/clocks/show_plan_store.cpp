#include "clocks/show_plan_store.h"

#include <algorithm>
#include <utility>

#include "letters/path_text.h"
#include "state/guard.h"

namespace lineweir {
namespace {

constexpr int reread_entries = 34;

// Every database begins so; one that is opened or overwritten as a plan would lose its calls.
constexpr std::string_view database_mark = "SQLite format 3";

void require_no_database(std::string_view content, const std::string& path) {
  if (!content.starts_with(database_mark)) return;
  throw Failure(failure_number::file_access,
                path + " is a database, and no show plan. It was left as it is.");
}

void require_no_database(platform::Files& files, const std::string& path) {
  if (const auto content = files.read(path)) require_no_database(*content, path);
}

// The content of a file that is made if there is none.
std::string content_of(platform::Files& files, const std::string& path) {
  if (auto content = files.read(path)) {
    require_no_database(*content, path);
    return *std::move(content);
  }
  if (files.exists(path)) {
    throw Failure(failure_number::file_access, "Can't read " + path);
  }
  std::optional<Failure> refusal;
  if (!attempt([&] { files.append(path, ""); },
               [&](const Failure& failure) { refusal = failure; })) {
    throw Failure(failure_number::path_not_found, refusal->what());
  }
  return {};
}

}  // namespace

std::string plan_not_found(const Letters& letters, const std::string& path) {
  return "The Selected Show Data File " + shown_path(letters, path) + " cannot be found!";
}

void ShowPlanStore::load_plan(const std::string& path) {
  open_as(path, path, decode_show_plan(content_of(files_, path)));
}

void ShowPlanStore::load_default_plan() {
  const std::string path(default_show_file);
  open_as(path, default_show_name, decode_show_plan(content_of(files_, path)));
}

void ShowPlanStore::load_default_plan_for(const std::string& stored_path) {
  load_default_plan();
  out_of_reach_ = stored_path;
}

void ShowPlanStore::use_plan(const std::string& path, std::string_view content) {
  open_as(path, path, decode_show_plan(content));
}

void ShowPlanStore::new_plan(const std::string& path) { save_plan_as(path, {}); }

void ShowPlanStore::save_plan(const ShowPlan& edited) {
  if (!is_open()) throw Failure(failure_number::file_access, "No show data file is open");
  files_.replace(open_path_, encode_show_plan(edited));
  plan = edited;
  plan_before_changes_.reset();
}

void ShowPlanStore::save_plan_as(const std::string& path, const ShowPlan& edited) {
  require_no_database(files_, path);
  files_.replace(path, encode_show_plan(edited));
  open_as(path, path, edited);
}

void ShowPlanStore::change_unsaved(const ShowPlan& edited) {
  if (!plan_before_changes_) plan_before_changes_ = plan;
  plan = edited;
}

void ShowPlanStore::undo_unsaved() {
  if (plan_before_changes_) plan = *std::exchange(plan_before_changes_, std::nullopt);
}

void ShowPlanStore::read_first_34() {
  if (!is_open()) return;
  const auto content = files_.read(open_path_);
  if (!content) return;
  const ShowPlan on_disk = decode_show_plan(*content);
  const int held = std::min(show_entries_held(*content), reread_entries);
  ShowPlan& saved = plan_before_changes_ ? *plan_before_changes_ : plan;
  for (int entry = 1; entry <= held; ++entry) saved.ShowTimes(entry) = on_disk.ShowTimes(entry);
}

void ShowPlanStore::open_as(const std::string& path, std::string_view shown_name,
                            const ShowPlan& held) {
  plan = held;
  plan_before_changes_.reset();
  open_path_ = path;
  out_of_reach_.clear();
  TheDataFileName = shown_name;
}

}  // namespace lineweir
