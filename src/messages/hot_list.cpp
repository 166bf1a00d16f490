#include "messages/hot_list.h"

#include <algorithm>
#include <optional>

#include "base/text.h"
#include "elements/key_characters.h"
#include "state/console_state.h"
#include "state/guard.h"
#include "state/stored_path.h"
#include "state/wire.h"

namespace lineweir {
namespace {

constexpr std::string_view file_filter =
    "All Files (*.*)|*.*|Lineweir Database Files (*.lwb)|*.lwb";
constexpr int lwb_filter = 2;
constexpr auto browse_handler = "FlashMessA_BrowseButton_Click";
constexpr auto create_handler = "FlashMessA_MessCreateDatabase";
constexpr std::string_view file_ending = ".lwb";
constexpr int delete_key = 46;

}  // namespace

HotList::HotList(ConsoleState& state)
    : state_(state), file_(state.services.databases, state.services.letters) {
  FlashMessageForm& form = state.FlashMessA;
  const auto handle = [this](Event<void()>& event, const std::string& name,
                             void (HotList::*handler)()) {
    wire(
        event, state_.trace, name, [this, handler] { (this->*handler)(); },
        [this](const Failure& failure) { state_.messages.tell(failure); });
  };
  handle(form.AddCurrent.on_click, "FlashMessA_AddCurrent_Click", &HotList::AddCurrent_Click);
  handle(form.RemoveCurrent.on_click, "FlashMessA_RemoveCurrent_Click",
         &HotList::RemoveCurrent_Click);
  handle(form.UpdateButton.on_click, "FlashMessA_UpdateButton_Click", &HotList::UpdateButton_Click);
  handle(form.DBList1.on_dbl_click, "FlashMessA_DBList1_DblClick", &HotList::UpdateButton_Click);
  handle(form.BrowseButton.on_click, browse_handler, &HotList::BrowseButton_Click);
  wire(
      form.DBList1.on_drag, state_.trace, "FlashMessA_DBList1_MouseMove",
      [this](int from, int to) { DBList1_Drag(from, to); },
      [this](const Failure& failure) { state_.messages.tell(failure); });
  wire(form.DBList1.on_key_down, state_.trace, "FlashMessA_DBList1_KeyDown",
       [this](int& key_code, int shift) { DBList1_KeyDown(key_code, shift); });
}

void HotList::open(const std::string& file) {
  wanted_ = file;
  file_.open(file);
  FlashMessageForm& form = state_.FlashMessA;
  form.Data1.database_name = file;
  form.Data1.record_source = "Messages";
  form.Label1.caption = file;
  for (Button* button : {&form.AddCurrent, &form.RemoveCurrent, &form.UpdateButton}) {
    button->enabled = true;
  }
  form.DBList1.list_index = -1;
  show_entries();
}

void HotList::show_entries() {
  ListBox& list = state_.FlashMessA.DBList1;
  const std::vector<std::string> before = list.list;
  const int chosen = list.list_index;
  const std::vector<std::string>& now = file_.entries();
  list.list = now;
  if (chosen < 0 || chosen >= static_cast<int>(before.size())) return;
  // The choice stays with its message, wherever another program has put that.
  const std::string& text = before[static_cast<std::size_t>(chosen)];
  if (chosen < list.list_count() && now[static_cast<std::size_t>(chosen)] == text) return;
  const auto found = std::ranges::find(now, text);
  list.list_index = found == now.end() ? -1 : static_cast<int>(found - now.begin());
}

void HotList::show_none() {
  file_.close();
  FlashMessageForm& form = state_.FlashMessA;
  form.Data1.database_name = "";
  form.Data1.record_source = "";
  form.Label1.caption = "";
  for (Button* button : {&form.AddCurrent, &form.RemoveCurrent, &form.UpdateButton}) {
    button->enabled = false;
  }
  form.DBList1.list_index = -1;
  show_entries();
}

void HotList::keep_up() {
  const std::string file(trimmed(state_.program.MessageFile));
  if (file == wanted_) return;
  attempt([&] { open(file); },
          [&](const Failure& failure) {
            show_none();
            if (!file.empty()) refuse("FlashMessA_Form_Load", failure);
          });
}

void HotList::follow() {
  const std::string file(trimmed(state_.program.MessageFile));
  if (file != wanted_) return keep_up();
  if (file.empty()) return;
  // Another program may hold it for a moment; it is looked at again soon.
  attempt(
      [&] {
        if (!file_.is_open()) {
          open(file);
        } else if (file_.follow()) {
          show_entries();
        }
      },
      [](const Failure&) {});
}

bool HotList::FlashMessA_MessCreateDatabase(const std::string& file) {
  return attempt([&] { file_.create(file); },
                 [&](const Failure& failure) { refuse(create_handler, failure); });
}

void HotList::BrowseButton_Click() {
  platform::FileQuestion question;
  question.title = "Open";
  question.filter = file_filter;
  question.filter_index = lwb_filter;
  question.default_path = state_.program.MessageFile;
  question.may_be_new = true;
  question.shown_title = "Choose or create the hot list";
  question.shown_filter = "Hot lists (*.lwb)|*.lwb|All files (*.*)|*.*";
  const auto chosen = state_.services.dialogs.ask_file(question);
  if (!chosen || trimmed(*chosen).empty()) return;
  const std::string file = with_ending(*chosen);
  require_storable(file, longest_hot_list_path);
  if (open_or_create(file)) state_.program.MessageFile = file;
}

std::string HotList::with_ending(const std::string& file) const {
  const std::size_t name = file.find_last_of("/\\:") + 1;
  const bool has_one = file.find('.', name) != std::string::npos;
  return has_one || state_.services.files.exists(file) ? file : file + std::string(file_ending);
}

bool HotList::open_or_create(const std::string& file) {
  const std::string before = wanted_;
  std::optional<Failure> failed;
  const auto open_it = [&] {
    failed.reset();
    return attempt([&] { open(file); }, [&](const Failure& failure) { failed = failure; });
  };
  if (open_it()) return true;
  if (failed->number() == failure_number::database_not_found &&
      FlashMessA_MessCreateDatabase(file) && open_it()) {
    return true;
  }
  // One that a program was killed in while it made it has no table at all.
  if (failed->number() == failure_number::no_such_table) {
    const Failure refused = *failed;
    if (attempt([&] { file_.create(file); }, [](const Failure&) {}) && open_it()) return true;
    failed = refused;
  }
  wanted_ = before;
  if (failed->number() != failure_number::database_not_found) refuse(browse_handler, *failed);
  return false;
}

void HotList::AddCurrent_Click() {
  const std::string text = state_.FlashMessA.Text1.text;
  if (trimmed(text).empty()) {
    return state_.messages.ShowMessage("Nothing was added to the hot list: type a message first.");
  }
  file_.add(text);
  show_entries();
  state_.FlashMessA.DBList1.list_index = state_.FlashMessA.DBList1.list_count() - 1;
}

void HotList::RemoveCurrent_Click() {
  const int place = state_.FlashMessA.DBList1.list_index;
  if (place < 0) {
    return state_.messages.ShowMessage("Choose the message to remove in the hot list first.");
  }
  const bool removed = file_.remove(static_cast<std::size_t>(place));
  show_entries();
  ListBox& list = state_.FlashMessA.DBList1;
  if (removed) list.list_index = std::min(place, list.list_count() - 1);
}

void HotList::UpdateButton_Click() {
  FlashMessageForm& form = state_.FlashMessA;
  const auto& entries = form.DBList1.list.get();
  const int place = form.DBList1.list_index;
  if (place < 0 || place >= static_cast<int>(entries.size())) {
    return state_.messages.ShowMessage("Choose the message to use in the hot list first.");
  }
  form.Text1.text = entries[static_cast<std::size_t>(place)];
  form.Text1.caret_to_end();
  form.Text1.set_focus();
}

void HotList::DBList1_Drag(int from, int to) {
  if (from < 0 || to < 0 || from == to) return;
  const bool moved = file_.move(static_cast<std::size_t>(from), static_cast<std::size_t>(to));
  show_entries();
  if (moved) {
    state_.FlashMessA.DBList1.list_index = to;
  } else {
    state_.messages.ShowMessage(
        "Another program has changed the hot list meanwhile. It is shown as it is now.");
  }
}

void HotList::DBList1_KeyDown(int& key_code, int shift) {
  FlashMessageForm& form = state_.FlashMessA;
  if (shift != 0 || form.DBList1.list_index < 0) return;
  if (key_code == enter_key) {
    form.UpdateButton.on_click();
  } else if (key_code == delete_key) {
    form.RemoveCurrent.on_click();
  } else {
    return;
  }
  key_code = 0;
}

void HotList::refuse(const std::string& handler, const Failure& failure) {
  report_failure(state_.trace, handler, failure);
  state_.messages.tell(failure);
}

}  // namespace lineweir
