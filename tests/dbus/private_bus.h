#pragma once

#include <QByteArray>
#include <QProcess>
#include <QStringList>
#include <QTemporaryFile>

namespace lineweir::test {

// A bus of this test's own, which is the user's bus of this process while it lives.
class PrivateBus {
 public:
  PrivateBus();
  // One with a configuration of its own, the text of which is given.
  explicit PrivateBus(const QByteArray& configuration);
  ~PrivateBus();
  PrivateBus(const PrivateBus&) = delete;
  PrivateBus& operator=(const PrivateBus&) = delete;

  // The bus goes, with all connections to it.
  void kill();
  // Another one at the same place.
  void start_again();

  const QByteArray& address() const { return address_; }

 private:
  void start(const QString& configuration, const QStringList& more);

  QByteArray address_;
  QByteArray address_before_;
  QTemporaryFile configuration_;
  QProcess daemon_;
};

}  // namespace lineweir::test
