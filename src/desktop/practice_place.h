#pragma once

#include <QLockFile>
#include <memory>
#include <string>

namespace lineweir {

// The folder of the practice console below that of the real one, from which nothing but the look is
// taken over. It is the current directory from now on. One process has it at a time.
class PracticePlace {
 public:
  // Why there can be no practice, in a sentence for the user; empty where it can be.
  const std::string& problem() const { return problem_; }

  PracticePlace();

 private:
  std::string problem_;
  std::unique_ptr<QLockFile> lock_;
};

}  // namespace lineweir
