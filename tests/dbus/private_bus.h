#pragma once

#include <QByteArray>
#include <QProcess>
#include <QStringList>

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
  // Another one at the same place.
  void start_again();

 private:
  void start(const QStringList& more);

  QByteArray address_;
  QByteArray address_before_;
  QProcess daemon_;
};

}  // namespace lineweir::test
