#pragma once

#include <condition_variable>
#include <cstdint>
#include <deque>
#include <map>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

#include "platform/password_hash.h"
#include "platform/poster.h"

namespace lineweir::platform {

// Argon2id in threads of its own. With more than one, what is told waits for what was asked before.
class SodiumPasswordHash final : public PasswordHash {
 public:
  // The poster outlives this object.
  explicit SodiumPasswordHash(Poster& poster, int threads = 1);
  // What waits isn't done any more; nobody is told.
  ~SodiumPasswordHash() override;
  SodiumPasswordHash(const SodiumPasswordHash&) = delete;
  SodiumPasswordHash& operator=(const SodiumPasswordHash&) = delete;

  void hash(std::string password, std::function<void(std::string hash)> done) override;
  void verify(std::string hash, std::string password, std::function<void(bool fits)> done) override;
  std::size_t waiting() const override { return tellings_.size(); }

 private:
  struct Asked {
    std::uint64_t number;
    // Whether the password fits it; without one a hash of the password is asked for.
    bool is_check;
    std::string hash;
    std::string password;
  };
  struct Answer {
    bool fits = false;
    std::string hash;
  };
  using Telling = std::function<void(Answer answer)>;

  void ask(Asked asked, Telling tell);
  void run();
  void take(std::uint64_t number, Answer answer);

  Poster& poster_;
  // Of a password that nobody has.
  std::string nobody_;

  // On the loop: who is to be told, by the numbers of what they asked, and the answers that came
  // before an earlier one.
  std::uint64_t next_number_ = 0;
  std::map<std::uint64_t, Telling> tellings_;
  std::map<std::uint64_t, Answer> early_;
  // What is told behind the end of this object is told to nobody.
  std::shared_ptr<SodiumPasswordHash*> here_;

  std::mutex mutex_;
  std::condition_variable added_;
  std::deque<Asked> waiting_;
  bool ending_ = false;
  std::vector<std::thread> threads_;
};

}  // namespace lineweir::platform
