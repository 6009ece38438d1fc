// New inputs out of those that are there.
#ifndef KVUTILS_TESTS_FUZZ_SUPPORT_MUTATION_H_
#define KVUTILS_TESTS_FUZZ_SUPPORT_MUTATION_H_

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace kv::fuzz {

// Numbers that look random; the same ones in every run with the same seed.
class Random {
 public:
  explicit Random(std::uint64_t seed) : state_(seed * 2 + 1) {}

  std::uint32_t Next();
  // From 0 to bound - 1; bound is not 0.
  std::size_t Below(std::size_t bound) { return Next() % bound; }

 private:
  std::uint64_t state_;
};

class Mutator {
 public:
  // `words` mean something to the target. An input is at most `maxSize` bytes long.
  Mutator(std::vector<std::string> words, std::size_t maxSize, std::uint64_t seed);

  // One of the inputs, changed in one to four ways. `inputs` holds at least one.
  std::string Make(const std::vector<std::string>& inputs);

 private:
  void Change(std::string& input, const std::vector<std::string>& inputs);
  void ChangeByte(std::string& input);
  void Remove(std::string& input);
  void Repeat(std::string& input);
  void Continue(std::string& input, const std::string& other);

  std::vector<std::string> words_;
  std::size_t maxSize_;
  Random random_;
};

}  // namespace kv::fuzz

#endif  // KVUTILS_TESTS_FUZZ_SUPPORT_MUTATION_H_
