#include "studio/stop_signal.h"

#include <sys/signalfd.h>

#include <cerrno>
#include <system_error>

namespace lineweir::studio {

StopSignal::StopSignal() {
  sigset_t stops{};
  sigemptyset(&stops);
  for (const int signal : {SIGINT, SIGTERM, SIGHUP}) sigaddset(&stops, signal);
  requests_ = Descriptor(signalfd(-1, &stops, SFD_CLOEXEC | SFD_NONBLOCK));
  if (requests_.number() < 0) throw std::system_error(errno, std::generic_category(), "signalfd");
  sigprocmask(SIG_BLOCK, &stops, &blocked_before_);

  struct sigaction ignore {};
  ignore.sa_handler = SIG_IGN;
  sigaction(SIGPIPE, &ignore, &broken_pipe_before_);
}

StopSignal::~StopSignal() {
  // A request that has been heeded must not end the process when it is let through again.
  signalfd_siginfo heeded{};
  while (read(descriptor(), &heeded, sizeof heeded) > 0) {
  }
  sigaction(SIGPIPE, &broken_pipe_before_, nullptr);
  sigprocmask(SIG_SETMASK, &blocked_before_, nullptr);
}

}  // namespace lineweir::studio
