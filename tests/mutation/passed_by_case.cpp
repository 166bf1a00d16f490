#include <doctest/doctest.h>

#include <chrono>
#include <cstdlib>
#include <fstream>

#include "mutation_point.h"

namespace {

// Writes to the file that LINEWEIR_MUTANTS_BY_CASE names which mutants each case passes, and how
// long it takes, so that a mutant is only tried with cases that can see it.
class PassedByCase : public doctest::IReporter {
 public:
  explicit PassedByCase(const doctest::ContextOptions&) {
    const char* path = std::getenv("LINEWEIR_MUTANTS_BY_CASE");
    if (path != nullptr) out_.open(path);
  }

  void test_run_start() override { tell(0, "*"); }
  void test_case_start(const doctest::TestCaseData& data) override {
    name_ = data.m_name;
    begin_ = std::chrono::steady_clock::now();
  }
  void test_case_end(const doctest::CurrentTestCaseStats&) override {
    const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - begin_;
    tell(taken.count(), name_);
  }

  void report_query(const doctest::QueryData&) override {}
  void test_run_end(const doctest::TestRunStats&) override {}
  void test_case_reenter(const doctest::TestCaseData&) override {}
  void test_case_exception(const doctest::TestCaseException&) override {}
  void subcase_start(const doctest::SubcaseSignature&) override {}
  void subcase_end() override {}
  void log_assert(const doctest::AssertData&) override {}
  void log_message(const doctest::MessageData&) override {}
  void test_case_skipped(const doctest::TestCaseData&) override {}

 private:
  void tell(double seconds, const std::string& name) {
    if (out_.is_open()) {
      out_ << "= " << seconds << ' ' << name << '\n' << lineweir::MutationPoints::take_passed();
    }
  }

  std::ofstream out_;
  std::string name_;
  std::chrono::steady_clock::time_point begin_;
};

REGISTER_LISTENER("passed_by_case", 1, PassedByCase);

}  // namespace
