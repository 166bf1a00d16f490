#include "clocks/show_plan_store.h"

#include <algorithm>
#include <optional>

#include "core/guard.h"

namespace lineweir {
namespace {

constexpr int reread_entries = 34;

// The content of a file that is made if there is none.
std::string content_of(platform::Files& files, const std::string& path) {
  if (auto content = files.read(path)) return *std::move(content);
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

void ShowPlanStore::load_plan(const std::string& path) {
  plan = decode_show_plan(content_of(files_, path));
  open_as(path, path);
}

void ShowPlanStore::load_default_plan() {
  plan = decode_show_plan(content_of(files_, std::string(default_show_file)));
  open_as(std::string(default_show_file), default_show_name);
}

void ShowPlanStore::new_plan(const std::string& path) {
  files_.replace(path, encode_show_plan({}));
  plan = {};
  open_as(path, path);
}

void ShowPlanStore::save_plan() {
  if (!is_open()) throw Failure(failure_number::file_access, "No show data file is open");
  files_.replace(open_path_, encode_show_plan(plan));
}

void ShowPlanStore::save_plan_as(const std::string& path) {
  files_.replace(path, encode_show_plan(plan));
  open_as(path, path);
}

void ShowPlanStore::read_first_34() {
  if (!is_open()) return;
  const auto content = files_.read(open_path_);
  if (!content) return;
  const ShowPlan on_disk = decode_show_plan(*content);
  const int held = std::min(show_entries_held(*content), reread_entries);
  for (int entry = 1; entry <= held; ++entry) plan.ShowTimes(entry) = on_disk.ShowTimes(entry);
}

void ShowPlanStore::open_as(const std::string& path, std::string_view shown_name) {
  open_path_ = path;
  TheDataFileName = shown_name;
}

}  // namespace lineweir
