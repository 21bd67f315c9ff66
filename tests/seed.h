// The random engine of a property test. Its seed is VARION_TEST_SEED when that is set (to replay
// a failure), else a fresh one, and every failure reported while the engine lives names it.
#pragma once

#include <gtest/gtest.h>

#include <cerrno>
#include <cstdint>
#include <cstdlib>
#include <random>
#include <source_location>
#include <string>

namespace varion::testing {

inline std::uint64_t TestSeed() {
  const char* text = std::getenv("VARION_TEST_SEED");
  if (text && *text) {
    char* end = nullptr;
    errno = 0;
    const unsigned long long seed = std::strtoull(text, &end, 10);
    // strtoull would take "-1" and wrap it; a replay must use exactly the printed number.
    if (*text >= '0' && *text <= '9' && *end == '\0' && errno == 0) return seed;
    ADD_FAILURE() << "VARION_TEST_SEED is not a decimal seed: \"" << text << "\"; a fresh seed is used";
  }
  return std::random_device{}();
}

class SeededRng : public std::mt19937_64 {
 public:
  explicit SeededRng(std::source_location where = std::source_location::current())
      : SeededRng(TestSeed(), where) {}
  SeededRng(const SeededRng&) = delete;
  SeededRng& operator=(const SeededRng&) = delete;

  std::uint64_t Seed() const { return m_seed; }

 private:
  SeededRng(std::uint64_t seed, const std::source_location& where)
      : std::mt19937_64(seed),
        m_seed(seed),
        m_trace(where.file_name(), static_cast<int>(where.line()), "VARION_TEST_SEED=" + std::to_string(seed)) {}

  std::uint64_t m_seed;
  ::testing::ScopedTrace m_trace;
};

}  // namespace varion::testing
