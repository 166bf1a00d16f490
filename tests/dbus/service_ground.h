#pragma once

#include <QCoreApplication>
#include <QSocketNotifier>
#include <memory>

#include "platform/descriptor_watch.h"
#include "platform/poster.h"

namespace lineweir::test {

// What a service on the bus runs on, on the tests' loop.

class QtDescriptorWatch final : public platform::DescriptorWatch {
 public:
  void wait(int descriptor, bool to_write_too, std::function<void()> ready) override {
    stop();
    ready_ = std::move(ready);
    reading_ = watch(descriptor, QSocketNotifier::Read);
    if (to_write_too) writing_ = watch(descriptor, QSocketNotifier::Write);
  }
  void stop() override {
    let_go(reading_);
    let_go(writing_);
  }

 private:
  // It may be the one that runs now.
  struct Later {
    void operator()(QSocketNotifier* notifier) const {
      notifier->setEnabled(false);
      notifier->disconnect();
      notifier->deleteLater();
    }
  };
  using Notifier = std::unique_ptr<QSocketNotifier, Later>;

  static void let_go(Notifier& notifier) { notifier.reset(); }
  Notifier watch(int descriptor, QSocketNotifier::Type type) {
    Notifier notifier(new QSocketNotifier(descriptor, type));
    QObject::connect(notifier.get(), &QSocketNotifier::activated, notifier.get(), [this] {
      const auto ready = std::move(ready_);
      stop();
      ready();
    });
    return notifier;
  }

  std::function<void()> ready_;
  Notifier reading_;
  Notifier writing_;
};

class QtPoster final : public platform::Poster {
 public:
  void post(std::function<void()> call) override {
    QMetaObject::invokeMethod(QCoreApplication::instance(), std::move(call), Qt::QueuedConnection);
  }
};

}  // namespace lineweir::test
