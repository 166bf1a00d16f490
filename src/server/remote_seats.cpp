#include "server/remote_seats.h"

#include <algorithm>

#include "base/text.h"
#include "exchange/command_word.h"
#include "server/remote_client.h"
#include "wire/studio_texts.h"

namespace lineweir::server {
namespace {

using platform::RemoteArgument;

constexpr char next_key_letter = 'U';
constexpr std::size_t longest_word = 3;
constexpr std::size_t most_seats = 1000;

// The arguments have the member's types; the service has looked.
int number_at(const platform::RemoteArguments& arguments, std::size_t place) {
  return std::get<int>(arguments.at(place));
}
const std::string& text_at(const platform::RemoteArguments& arguments, std::size_t place) {
  return std::get<std::string>(arguments.at(place));
}

// What comes of the equipment's own next key a console passes on as it stands.
bool is_next_key(std::string_view word) {
  return word.size() <= longest_word && word.starts_with(next_key_letter) &&
         std::all_of(word.begin() + 1, word.end(), is_digit);
}

// Nothing for a text that is no word of the equipment, which gets no others.
std::optional<LineOrder> order_of(std::string_view word) {
  const auto meaning = exchange::parse_word(word);
  if (!meaning && !is_next_key(word)) return std::nullopt;
  LineOrder order{LineOrder::Kind::Word, std::string(word)};
  if (meaning && exchange::names_line(meaning->action)) order.line = meaning->number;
  return order;
}

// From 0; -1 for a number that is no line's, as any below 1.
int line_of(int number) { return number < 1 ? -1 : number - 1; }

}  // namespace

struct RemoteSeats::Member {
  std::string_view name;
  RemoteArgument (RemoteSeats::*answer)(const std::string& caller, const Arguments& arguments);
  // The place of the group among the arguments; the group must be there for the call to do
  // anything. -1 for a member that has none.
  int group_place;
};

const RemoteSeats::Member* RemoteSeats::member_of(const std::string& name) {
  static constexpr Member members[] = {
      {"AddObjectReference", &RemoteSeats::add_client, 1},
      {"DropObjectReference", &RemoteSeats::drop_client, 1},
      {"InputSerialPort", &RemoteSeats::obey, 0},
      {"OutputSerialPort", &RemoteSeats::status, 0},
      {"GetDimType", &RemoteSeats::kind, 0},
      {"GetLineNumbers", &RemoteSeats::line_numbers, 0},
      {"GetStudioNames", &RemoteSeats::group_names, -1},
      {"GetStudioStatus", &RemoteSeats::studio_status, -1},
      {"gettimes", &RemoteSeats::times, 0},
      {"SetNextCall", &RemoteSeats::next_call, 1},
      {"CallerDataServer", &RemoteSeats::caller_data, 1},
      {"MessageGroupData", &RemoteSeats::message, 0},
  };
  for (const Member& member : members) {
    if (member.name == name) return &member;
  }
  return nullptr;
}

RemoteSeats::RemoteSeats(const Context& context, SeatBook& seats, Groups& groups,
                         platform::RemoteService& service)
    : context_(context), book_(seats), groups_(groups), service_(service) {
  service_.on_call = [this](const std::string& caller, const std::string& member,
                            const Arguments& arguments) { return call(caller, member, arguments); };
  service_.on_gone = [this](const std::string& caller) { forget(caller); };
}

RemoteSeats::~RemoteSeats() {
  service_.on_call = nullptr;
  service_.on_gone = nullptr;
  for (const auto& seat : seats_) book_.remove(*seat, SeatBook::Leaving::Goodbye);
}

std::optional<RemoteArgument> RemoteSeats::call(const std::string& caller, const std::string& name,
                                                const Arguments& arguments) {
  const Member* const member = member_of(name);
  if (member == nullptr) return std::nullopt;
  if (member->group_place >= 0) {
    const int group = number_at(arguments, static_cast<std::size_t>(member->group_place));
    if (book_.find_group(group) == nullptr) {
      context_.figures.refuse(Refusal::OtherGroup);
      return std::nullopt;
    }
  }
  return (this->*member->answer)(caller, arguments);
}

void RemoteSeats::forget(const std::string& caller) {
  for (const auto& seat : seats_) {
    if (seat->caller == caller) book_.remove(*seat, SeatBook::Leaving::Vanished);
  }
  std::erase_if(seats_, [&](const auto& seat) { return seat->caller == caller; });
}

RemoteClient& RemoteSeats::seat_of(const std::string& caller, int group) {
  const auto known = std::find_if(seats_.begin(), seats_.end(), [&](const auto& seat) {
    return seat->caller == caller && seat->of_group == group;
  });
  if (known != seats_.end()) return **known;
  if (seats_.size() >= most_seats) {
    const std::string oldest = seats_.front()->caller;
    forget(oldest);
  }
  seats_.push_back(
      std::make_unique<RemoteClient>(book_.new_number(), caller, group, book_, service_));
  return *seats_.back();
}

RemoteArgument RemoteSeats::add_client(const std::string& caller, const Arguments& arguments) {
  RemoteClient& seat = seat_of(caller, number_at(arguments, 1));
  seat.object = text_at(arguments, 0);
  if (std::ranges::count(book_.all(), &seat) == 0) {
    seat.since = context_.clock.now();
    book_.add(seat);
  }
  Group& group = *book_.find_group(seat.of_group);
  book_.join(seat, group);
  group.tell_callers(seat);
  return true;
}

RemoteArgument RemoteSeats::drop_client(const std::string& caller, const Arguments& arguments) {
  RemoteClient& seat = seat_of(caller, number_at(arguments, 1));
  if (seat.object != text_at(arguments, 0)) return false;
  // It stays the same one to its callers if it comes back.
  book_.remove(seat, SeatBook::Leaving::Goodbye);
  seat.object.clear();
  return true;
}

// The empty text behind each word is part of it and says nothing.
RemoteArgument RemoteSeats::obey(const std::string& caller, const Arguments& arguments) {
  const std::string_view word = trimmed(text_at(arguments, 1));
  Group& group = *book_.find_group(number_at(arguments, 0));
  if (word.empty()) return true;
  const auto order = order_of(word);
  if (!order) {
    context_.figures.refuse(Refusal::Malformed);
  } else if (order->line >= 0 && !group.lines().exists(order->line)) {
    context_.figures.refuse(Refusal::OtherLine);
  } else if (const auto refusal = group.lines().obey(seat_of(caller, group.number()), *order)) {
    context_.figures.refuse(*refusal);
  }
  return true;
}

RemoteArgument RemoteSeats::status(const std::string&, const Arguments& arguments) {
  return book_.find_group(number_at(arguments, 0))->lines().status_text();
}

RemoteArgument RemoteSeats::kind(const std::string&, const Arguments& arguments) {
  return book_.find_group(number_at(arguments, 0))->options().kind;
}

RemoteArgument RemoteSeats::line_numbers(const std::string&, const Arguments& arguments) {
  std::string numbers;
  const int count = book_.find_group(number_at(arguments, 0))->lines().count();
  for (int line = 1; line <= count; ++line) numbers += zero_filled(line, 2);
  return numbers;
}

RemoteArgument RemoteSeats::group_names(const std::string&, const Arguments&) {
  // A program on this machine can't be sent to another server.
  return encode_list(names_of_groups(groups_, {}, context_.letters));
}

RemoteArgument RemoteSeats::studio_status(const std::string&, const Arguments& arguments) {
  const Group* const group = book_.find_group(number_at(arguments, 0));
  return group == nullptr ? std::string(no_studio_status) : group->studio_status().Buffer;
}

RemoteArgument RemoteSeats::times(const std::string&, const Arguments& arguments) {
  return book_.find_group(number_at(arguments, 0))->times().Buffer;
}

RemoteArgument RemoteSeats::next_call(const std::string& caller, const Arguments& arguments) {
  Group& group = *book_.find_group(number_at(arguments, 1));
  const int line = line_of(number_at(arguments, 0));
  if (line >= 0 && !group.lines().exists(line)) {
    context_.figures.refuse(Refusal::OtherLine);
  } else {
    group.choose_next(seat_of(caller, group.number()), line);
  }
  return true;
}

RemoteArgument RemoteSeats::caller_data(const std::string& caller, const Arguments& arguments) {
  Group& group = *book_.find_group(number_at(arguments, 1));
  const int line = line_of(number_at(arguments, 0));
  if (!group.lines().exists(line)) {
    context_.figures.refuse(Refusal::OtherLine);
  } else {
    group.caller_data().take(seat_of(caller, group.number()), line, text_at(arguments, 2));
  }
  return true;
}

RemoteArgument RemoteSeats::message(const std::string&, const Arguments& arguments) {
  Group& group = *book_.find_group(number_at(arguments, 0));
  const TextMessage message{number_at(arguments, 1), number_at(arguments, 2),
                            text_at(arguments, 3)};
  if (!group.take_message(encode_text_message(message))) {
    context_.figures.refuse(Refusal::Malformed);
  }
  return true;
}

}  // namespace lineweir::server
