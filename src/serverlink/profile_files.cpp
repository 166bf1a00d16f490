#include "serverlink/profile_files.h"

#include <utility>

#include "base/names.h"
#include "base/text.h"
#include "callerdata/call_log_file.h"
#include "clocks/show_plan_store.h"
#include "letters/path_text.h"
#include "state/console_state.h"
#include "state/guard.h"
#include "state/stored_path.h"

namespace lineweir {
namespace {

constexpr std::string_view plan_ending = ".txt";

}  // namespace

bool may_begin_plan(std::string_view path) {
  return path.size() > plan_ending.size() && path.find_first_of("/\\:") == std::string_view::npos &&
         path.front() != '.' && same_name(right_part(path, plan_ending.size()), plan_ending) &&
         !same_name(path, trace_file_name);
}

ProfileFiles::ProfileFiles(ConsoleState& state, ShowPlanStore& show_plan,
                           CallLogFile& call_log_file)
    : FormWatch(state.Form2), state_(state), show_plan_(show_plan), call_log_file_(call_log_file) {}

std::string ProfileFiles::show_plan() const {
  const auto awaited = awaited_plan();
  return awaited ? awaited->path : show_plan_.path_to_store();
}

std::optional<ProfileFiles::AwaitedPlan> ProfileFiles::awaited_plan() const {
  const bool is_edited_still = awaited_plan_ && awaited_plan_->edited == show_plan_.TheDataFileName;
  return is_edited_still ? awaited_plan_ : std::nullopt;
}

void ProfileFiles::changed(Element& element, PropertyId property) {
  const bool is_left = &element == &state_.Form2 && property == PropertyId::Visible;
  if (!is_left || state_.Form2.visible) return;
  const auto awaited = awaited_plan();
  awaited_plan_.reset();
  if (awaited) take_show_plan(awaited->path, awaited->handler);
}

std::string ProfileFiles::call_log() const { return call_log_file_.path_to_store(); }

void ProfileFiles::take_show_plan(const std::string& path, const std::string& handler) {
  // What is in the editor belongs to the file that is open.
  if (state_.Form2.visible) {
    awaited_plan_ = {path, handler, show_plan_.TheDataFileName};
    return;
  }
  guard(state_.trace, handler, [&] {
    require_storable(path, longest_plan_path);
    open_plan(path);
  });
}

void ProfileFiles::open_plan(const std::string& path) {
  if (same_name(path, default_show_name)) return show_plan_.load_default_plan();
  const auto content = state_.services.files.read_short(path, show_file_size);
  if (content && is_show_plan(*content)) return show_plan_.use_plan(path, *content);
  const bool exists = state_.services.files.exists(path);
  const bool is_empty = exists ? content && content->empty() : true;
  if (is_empty && may_begin_plan(path)) return show_plan_.load_plan(path);
  if (exists) {
    return state_.messages.ShowMessage("The Selected Show Data File " +
                                       shown_path(state_.services.letters, path) +
                                       " is no show plan!");
  }
  state_.messages.ShowMessage(plan_not_found(state_.services.letters, path));
  show_plan_.serve_for(path);
}

void ProfileFiles::take_call_log(const std::string& path, const std::string& handler) {
  guard(state_.trace, handler, [&] {
    require_storable(path, longest_log_path);
    call_log_file_.use_stored(path, handler);
  });
}

void ProfileFiles::take_hot_list(std::string_view path) {
  state_.program.MessageFile = left_part(path, longest_hot_list_path);
}

}  // namespace lineweir
