#pragma once

#include <functional>

#include "platform/event_loop.h"

namespace lineweir::platform {

// A call that a service makes from the loop, and not from where the reason for it arose. However
// often it is posted before it runs, it runs once. It is dropped with this object.
class PostedCall {
 public:
  // The loop must outlive this object.
  PostedCall(EventLoop& loop, std::function<void()> call) : loop_(loop), call_(std::move(call)) {}
  ~PostedCall() { cancel(); }
  PostedCall(const PostedCall&) = delete;
  PostedCall& operator=(const PostedCall&) = delete;

  void post() {
    if (posted_) return;
    posted_ = true;
    id_ = loop_.schedule(Milliseconds{0}, [this] {
      posted_ = false;
      call_();
    });
  }

  void cancel() {
    if (!posted_) return;
    posted_ = false;
    loop_.cancel(id_);
  }

 private:
  EventLoop& loop_;
  std::function<void()> call_;
  EventLoop::CallId id_ = 0;
  bool posted_ = false;
};

}  // namespace lineweir::platform
