#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <functional>

namespace lineweir::test {

// The objects of a studio's server on the bus: whatever is called is handed over, and what comes
// back is the answer. It has the name quorlink.Server while it lives.
class ObjectServer final : public QDBusVirtualObject {
 public:
  // One use of a member. The object is the last part of its path.
  struct Use {
    QString object;
    QString member;
    QVariantList arguments;
  };
  // An invalid value is an answer without a value.
  using Answer = std::function<QVariant(const Use& use)>;

  explicit ObjectServer(Answer answer);
  ~ObjectServer() override;

  // Calls the object that the last client has registered, and doesn't wait.
  void call_back(const QString& method, const QVariantList& arguments);
  // The same, and waits for the client's answer, as a server of one thread does.
  bool call_back_and_wait(const QString& method, const QVariantList& arguments);

  QString introspect(const QString& path) const override;
  bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override;

 private:
  QDBusMessage callback(const QString& method, const QVariantList& arguments) const;
  // The client that hasn't registered an object; there is no other one on the bus.
  QString only_client() const;

  Answer answer_;
  QString connection_name_;
  QDBusConnection connection_;
  QString client_;
  QString client_object_ = QStringLiteral("/CBClientClass");
};

}  // namespace lineweir::test
