#include "utils/text/text.h"

#include "utils/internal/number_scan.h"

#include <algorithm>
#include <cstring>
#include <string_view>

namespace {

constexpr std::size_t kCellSize = 3;

// The abbreviations in the order of the Greek alphabet, short ones padded with a space.
constexpr std::string_view kGreekCells =
    "alfbetgamdelepszetetatheiotkaplammu nu xi omipi rhosigtauupsphichipsiome";
constexpr int kGreekLetters = 24;
static_assert(kGreekCells.size() == kGreekLetters * kCellSize);

constexpr std::string_view kMarker = "###";
constexpr std::size_t kMarkerSize = kMarker.size() + 3;  // with the characters it consumes

}  // namespace

bool Greek2Ascii(char* out, const char* number) {
  if (out == nullptr || number == nullptr) return false;
  const int letter = kv::internal::ScanAtoi(number);
  // Callers rely on the number behind the last letter giving an empty text.
  if (letter < 0 || letter > kGreekLetters) return false;
  std::string_view cell =
      kGreekCells.substr(static_cast<std::size_t>(letter) * kCellSize, kCellSize);
  if (cell.ends_with(' ')) cell.remove_suffix(1);
  std::copy(cell.begin(), cell.end(), out);
  out[cell.size()] = '\0';
  return true;
}

std::string ConvertStringWithGreek(const char* text) {
  if (text == nullptr) return {};
  std::string converted;
  std::string_view rest = text;
  for (;;) {
    const std::size_t marker = rest.find(kMarker);
    converted += rest.substr(0, marker);
    if (marker == std::string_view::npos) return converted;
    // The number ends with the text or before its first character that is no digit, which may lie
    // behind the marker.
    char letter[kCellSize + 1];
    if (Greek2Ascii(letter, rest.data() + marker + kMarker.size())) converted += letter;
    rest.remove_prefix(std::min(marker + kMarkerSize, rest.size()));
  }
}
