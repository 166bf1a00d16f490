#pragma once

#include <memory>
#include <string>

#include "platform/scripted/scripted_store.h"
#include "platform/scripted/virtual_event_loop.h"
#include "platform/sqlite_store/sqlite_store.h"
#include "pumped_poster.h"
#include "store_asker.h"
#include "temporary_directory.h"

namespace lineweir {

class SqliteDesk final : public StoreDesk {
 public:
  explicit SqliteDesk(std::chrono::milliseconds lock_wait = std::chrono::seconds(5))
      : lock_wait_(lock_wait) {
    begin_again();
  }

  platform::Store& store() override { return *store_; }
  bool run_until(const std::function<bool()>& condition) override {
    return poster_.run_until(condition);
  }
  void begin_again() override {
    store_ = nullptr;
    store_ = std::make_unique<platform::SqliteStore>(path(), poster_, lock_wait_);
    store_->on_trouble = [this](const std::string& told) { trouble_ = told; };
  }
  void begin_empty() override {
    store_ = nullptr;
    name_ = "another-" + name_;
    begin_again();
  }
  std::string file(const std::string& name) override { return (directory_.path() / name).string(); }

  std::filesystem::path path() const { return directory_.path() / name_; }
  const TemporaryDirectory& directory() const { return directory_; }
  const std::string& trouble() const { return trouble_; }
  void end() { store_ = nullptr; }

 private:
  std::chrono::milliseconds lock_wait_;
  TemporaryDirectory directory_;
  std::string name_ = "server.db";
  PumpedPoster poster_;
  std::string trouble_;
  std::unique_ptr<platform::SqliteStore> store_;
};

class ScriptedDesk final : public StoreDesk {
 public:
  platform::ScriptedStore& store() override { return *store_; }
  bool run_until(const std::function<bool()>& condition) override {
    for (int i = 0; i < 1000 && !condition(); ++i) loop_.advance(platform::Milliseconds(100));
    return condition();
  }
  void begin_again() override { store_->forget_what_waits(); }
  void begin_empty() override { store_->content() = {}; }
  std::string file(const std::string& name) override { return name; }

  platform::VirtualEventLoop& loop() { return loop_; }

 private:
  platform::VirtualEventLoop loop_;
  std::unique_ptr<platform::ScriptedStore> store_ =
      std::make_unique<platform::ScriptedStore>(loop_);
};

}  // namespace lineweir
