#include "platform/disk_journal/disk_call_journal.h"

#include <chrono>
#include <future>
#include <random>
#include <sstream>
#include <thread>
#include <utility>

#include "platform/disk_journal/journal_keeper.h"
#include "platform/disk_journal/log_writer.h"

namespace lineweir::platform {
namespace {

// Some thousand calls.
constexpr std::size_t memory_room = 1 << 20;

// After this the program ends without its threads.
constexpr auto longest_leave = std::chrono::seconds(3);

// Begins with the time, so that the names of runs are in the order of their starts.
std::string new_run_name() {
  std::random_device random;
  const auto time = std::chrono::duration_cast<std::chrono::microseconds>(
      std::chrono::system_clock::now().time_since_epoch());
  std::ostringstream name;
  name << std::hex;
  name.fill('0');
  name.width(14);
  name << time.count() << 'x';
  name.width(8);
  name << random();
  return name.str();
}

}  // namespace

struct DiskCallJournal::Running {
  Running(const JournalPlaces& places, std::function<std::unique_ptr<DatabaseEngine>()> make_engine)
      : keeper(exchange, places), writer(exchange, std::move(make_engine)) {
    exchange.run = new_run_name();
    exchange.memory = HandoverMemory::make(places.memory(exchange.run), memory_room);
    if (!exchange.memory) {
      exchange.memory =
          HandoverMemory::make(places.memory_beside_journal(exchange.run), memory_room);
    }
  }

  JournalExchange exchange;
  JournalKeeper keeper;
  LogWriter writer;
  std::thread keeper_thread;
  std::thread writer_thread;
  std::promise<void> writer_ended;
};

DiskCallJournal::DiskCallJournal(Setup setup)
    : running_(std::make_shared<Running>(JournalPlaces(setup.folder, setup.memory_folder),
                                         std::move(setup.make_engine))),
      self_(std::make_shared<DiskCallJournal*>(this)) {
  running_->exchange.tell = [self = self_, post = std::move(setup.post)] {
    post([self] {
      if (*self != nullptr) (*self)->tell();
    });
  };
  running_->keeper_thread = std::thread([running = running_] { running->keeper.run(); });
  running_->writer_thread = std::thread([running = running_] {
    running->writer.run();
    running->writer_ended.set_value();
  });
}

DiskCallJournal::~DiskCallJournal() {
  *self_ = nullptr;
  {
    const std::lock_guard lock(running_->exchange.mutex);
    running_->exchange.tell = nullptr;
    running_->exchange.leaving = true;
    running_->exchange.keeper_wake.notify_one();
  }
  // The writer ends last.
  const bool ended =
      running_->writer_ended.get_future().wait_for(longest_leave) == std::future_status::ready;
  for (std::thread* thread : {&running_->keeper_thread, &running_->writer_thread}) {
    if (ended) {
      thread->join();
    } else {
      thread->detach();
    }
  }
}

void DiskCallJournal::put(LoggedCall call) {
  const std::lock_guard lock(running_->exchange.mutex);
  running_->exchange.hand_over({{}, {}, std::move(call)});
}

void DiskCallJournal::use(const std::string& file, const std::string& table, int number_column) {
  const std::lock_guard lock(running_->exchange.mutex);
  running_->exchange.for_writer.push_back(
      [=](CallMover& mover) { mover.use(file, table, number_column); });
  running_->exchange.writer_wake.notify_one();
}

void DiskCallJournal::redirect(const std::string& from, const std::string& to) {
  JournalExchange& exchange = running_->exchange;
  const std::lock_guard lock(exchange.mutex);
  exchange.for_writer.push_back([&exchange, from, to](CallMover& mover) {
    std::vector<JournalRecord> records = mover.take_back(from);
    const std::lock_guard writer_lock(exchange.mutex);
    for (JournalRecord& record : records) {
      const RecordName former = std::exchange(record.name, {});
      record.instead_of = former;
      record.call.file = to;
      exchange.hand_over(std::move(record));
      // The keeper strikes it out behind the new one.
      exchange.stored.push_back(former);
    }
  });
  exchange.writer_wake.notify_one();
}

CallJournalState DiskCallJournal::state() const {
  const std::lock_guard lock(running_->exchange.mutex);
  CallJournalState state = running_->exchange.logs;
  if (state.waiting > 0) state.journal_trouble = running_->exchange.journal_trouble;
  return state;
}

void DiskCallJournal::tell() {
  std::vector<std::string> replaced;
  {
    const std::lock_guard lock(running_->exchange.mutex);
    replaced = std::exchange(running_->exchange.replaced, {});
  }
  for (const std::string& file : replaced) {
    on_replaced(file);
  }
  const CallJournalState now = state();
  if (now == told_) return;
  told_ = now;
  on_change();
}

}  // namespace lineweir::platform
