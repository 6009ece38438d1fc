// Identifiers of paths.
#include <random>
#include <string>

#include "bench/support/comparison.h"
#include "bench/support/main.h"
#include "bench/support/opaque.h"
#include "tests/reference/identifiers.h"
#include "utils/text/text.h"

namespace {

std::string Path(std::size_t size) {
  std::mt19937 random(20240229);
  std::string path = std::string("C:\\").substr(0, size);
  while (path.size() < size)
    path += random() % 8 == 0 ? '\\' : static_cast<char>('a' + random() % 26);
  return path;
}

const kv::bench::Opaque kPlain(kv::reference::UniqueId);

}  // namespace

void kv::bench::CheckAgreement() {
  for (std::size_t size = 1; size < 300; ++size) {
    const std::string path = Path(size);
    Require(GetUniqueID(path.c_str()) == reference::UniqueId(path.c_str()), "GetUniqueID");
  }
}

void kv::bench::RegisterComparisons() {
  for (const std::size_t size : {1U, 4U, 8U, 30U, 60U, 100U, 200U}) {
    const std::string path = Path(size);
    Comparison("GetUniqueID, " + std::to_string(size) + " bytes")
        .Add("library", [path] { return GetUniqueID(path.c_str()); })
        .Add("plain", [path] { return kPlain(path.c_str()); });
  }
}
