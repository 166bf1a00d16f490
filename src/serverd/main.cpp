#include <fcntl.h>
#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <exception>
#include <iostream>

#include "platform/process/memory_dump.h"
#include "serverd/configuration_summary.h"
#include "serverd/server_program.h"
#include "serverd/tls_setup.h"

namespace {

using namespace lineweir::serverd;

constexpr int status_failed = 1;
constexpr int status_wrong = 2;

// Each seat takes a descriptor; the usual limit of 1024 is for programs that don't know what to do
// with more.
void allow_many_connections() {
  constexpr rlim_t enough = 65536;
  rlimit limit{};
  if (::getrlimit(RLIMIT_NOFILE, &limit) != 0) return;
  limit.rlim_cur = std::max(limit.rlim_cur, std::min(limit.rlim_max, enough));
  ::setrlimit(RLIMIT_NOFILE, &limit);
}

// Where the one who started the program has closed one of these, a file of the store would get its
// number, and the log would be written into it.
void open_standard_streams() {
  int opened = 0;
  while (opened >= 0 && opened <= STDERR_FILENO) opened = ::open("/dev/null", O_RDWR | O_CLOEXEC);
  if (opened > STDERR_FILENO) ::close(opened);
}

void check(const ProgramOptions& options, const Configuration& configuration) {
  check_tls(configuration, options.configuration_file);
  describe(configuration, std::cout);
}

int run(const ProgramOptions& options) {
  const Configuration configuration = configuration_of(options);
  if (options.check) {
    check(options, configuration);
    return 0;
  }
  allow_many_connections();
  return ServerProgram(options, configuration).run();
}

}  // namespace

int main(int argc, char** argv) {
  lineweir::platform::keep_memory_out_of_dumps();
  open_standard_streams();
  // A reader of the log or of the standard output that goes away doesn't end the server.
  std::signal(SIGPIPE, SIG_IGN);
  const ParsedOptions parsed = parse_options(argc, argv, std::cout, std::cerr);
  if (!parsed.options) return parsed.exit_code;
  try {
    return run(*parsed.options);
  } catch (const ConfigurationError& error) {
    std::cerr << error.what() << std::endl;
    return status_wrong;
  } catch (const std::exception& error) {
    std::cerr << "lineweir-server: " << error.what() << std::endl;
    return status_failed;
  }
}
