#pragma once

#include <QByteArray>
#include <QProcess>

namespace lineweir::test {

// A bus of this test's own, which is the user's bus of this process while it lives.
class PrivateBus {
 public:
  PrivateBus();
  ~PrivateBus();
  PrivateBus(const PrivateBus&) = delete;
  PrivateBus& operator=(const PrivateBus&) = delete;

  // The bus goes, with all connections to it.
  void kill();

 private:
  QByteArray address_before_;
  QProcess daemon_;
};

}  // namespace lineweir::test
