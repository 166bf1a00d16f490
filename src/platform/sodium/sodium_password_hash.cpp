#include "platform/sodium/sodium_password_hash.h"

#include <utility>

#include "platform/sodium/argon2id.h"
#include "platform/sodium/sodium_random_numbers.h"

namespace lineweir::platform {

SodiumPasswordHash::SodiumPasswordHash(Poster& poster, int threads)
    : poster_(poster), here_(std::make_shared<SodiumPasswordHash*>(this)) {
  begin_sodium();
  std::string unknown = random_bytes(32);
  nobody_ = argon2id_hash(unknown);
  for (int i = 0; i < threads; ++i) threads_.emplace_back([this] { run(); });
}

SodiumPasswordHash::~SodiumPasswordHash() {
  {
    const std::lock_guard lock(mutex_);
    ending_ = true;
  }
  added_.notify_all();
  for (std::thread& thread : threads_) thread.join();
}

void SodiumPasswordHash::hash(std::string password, std::function<void(std::string hash)> done) {
  ask({.number = next_number_, .is_check = false, .hash = {}, .password = std::move(password)},
      [done = std::move(done)](Answer answer) { done(std::move(answer.hash)); });
}

void SodiumPasswordHash::verify(std::string hash, std::string password,
                                std::function<void(bool fits)> done) {
  ask({.number = next_number_,
       .is_check = true,
       .hash = std::move(hash),
       .password = std::move(password)},
      [done = std::move(done)](const Answer& answer) { done(answer.fits); });
}

void SodiumPasswordHash::ask(Asked asked, Telling tell) {
  tellings_.emplace(next_number_++, std::move(tell));
  {
    const std::lock_guard lock(mutex_);
    waiting_.push_back(std::move(asked));
  }
  added_.notify_one();
}

void SodiumPasswordHash::run() {
  for (;;) {
    std::unique_lock lock(mutex_);
    added_.wait(lock, [this] { return ending_ || !waiting_.empty(); });
    if (ending_) return;
    Asked asked = std::move(waiting_.front());
    waiting_.pop_front();
    const std::weak_ptr here = here_;
    lock.unlock();

    Answer answer;
    if (asked.is_check) {
      answer.fits = argon2id_fits(asked.hash, asked.password, nobody_);
    } else {
      answer.hash = argon2id_hash(asked.password);
    }
    poster_.post([here, number = asked.number, answer = std::move(answer)] {
      if (const auto object = here.lock()) (*object)->take(number, answer);
    });
  }
}

void SodiumPasswordHash::take(std::uint64_t number, Answer answer) {
  early_.emplace(number, std::move(answer));
  while (!early_.empty() && early_.begin()->first == tellings_.begin()->first) {
    const Telling tell = std::move(tellings_.begin()->second);
    Answer told = std::move(early_.begin()->second);
    tellings_.erase(tellings_.begin());
    early_.erase(early_.begin());
    tell(std::move(told));
  }
}

}  // namespace lineweir::platform
