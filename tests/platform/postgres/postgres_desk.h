#pragma once

#include "platform/asio/asio_descriptor_watch.h"
#include "platform/asio/asio_loop.h"
#include "platform/postgres/postgres_cluster.h"
#include "platform/postgres_store/postgres_store.h"
#include "platform/store_asker.h"
#include "platform/temporary_directory.h"

namespace lineweir {

// A loop, run while a test waits for something.
inline bool run_loop_until(platform::AsioLoop& loop, const std::function<bool()>& condition,
                           std::chrono::seconds limit = std::chrono::seconds(30)) {
  const auto end = loop.now() + limit;
  while (!condition() && loop.now() < end) loop.yield();
  return condition();
}

class PostgresDesk final : public StoreDesk {
 public:
  explicit PostgresDesk(platform::PostgresPatience patience = {})
      : patience_(patience), url_(test::PostgresCluster::the().borrow()) {
    begin_again();
  }
  ~PostgresDesk() override {
    store_ = nullptr;
    test::PostgresCluster::the().give_back(url_);
  }
  PostgresDesk(const PostgresDesk&) = delete;
  PostgresDesk& operator=(const PostgresDesk&) = delete;

  platform::PostgresStore& store() override { return *store_; }
  bool run_until(const std::function<bool()>& condition) override {
    return run_loop_until(loop_, condition);
  }
  void begin_again() override {
    store_ = nullptr;
    store_ = std::make_unique<platform::PostgresStore>(
        *platform::PostgresAddress::read(url_),
        platform::PostgresConnection::Services{loop_, watch_, loop_}, patience_);
    store_->on_trouble = [this](const std::string& told) {
      trouble_ = told;
      if (!told.empty()) troubles_ += told + "\n";
    };
  }
  void begin_empty() override {
    store_ = nullptr;
    const std::string before = url_;
    url_ = test::PostgresCluster::the().borrow();
    test::PostgresCluster::the().give_back(before);
    begin_again();
  }
  std::string file(const std::string& name) override { return (directory_.path() / name).string(); }

  void end() { store_ = nullptr; }
  // What another program gets of it.
  std::string run(const std::string& sql) const {
    return test::PostgresCluster::run(url_, "SET search_path TO lineweir; " + sql);
  }
  const std::string& url() const { return url_; }
  platform::AsioLoop& loop() { return loop_; }
  const TemporaryDirectory& directory() const { return directory_; }
  const std::string& trouble() const { return trouble_; }
  // All that were told so far.
  const std::string& troubles() const { return troubles_; }

 private:
  platform::PostgresPatience patience_;
  TemporaryDirectory directory_;
  std::string url_;
  platform::AsioLoop loop_;
  platform::AsioDescriptorWatch watch_{loop_};
  std::string trouble_;
  std::string troubles_;
  std::unique_ptr<platform::PostgresStore> store_;
};

}  // namespace lineweir
