#include <gtest/gtest.h>

#include <string>

#include "utils/text/text.h"

namespace {

TEST(GetFourcc, PutsTheFirstCharacterIntoTheTopByte) {
  const struct {
    const char* text;
    int code;
  } rows[] = {
      {"RIFF", 0x52494646},
      {"RIFFx", 0x52494646},
      {"    ", 0x20202020},
      {"\n\t a", 0x0A092061},
      {"\x01\x02\x03\x04", 0x01020304},
      {"\x7F\xFF\x80\xE9", 0x7FFF80E9},
      {"\x80zzz", -2139456902},
      {"\xFF\xFF\xFF\xFE", -2},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(testing::PrintToString(row.text));
    EXPECT_EQ(GetFOURCC(row.text), row.code);
  }
}

TEST(GetFourcc, RefusesFewerThanFourCharacters) {
  for (const char* text : {"", "R", "RI", "RIF"}) EXPECT_EQ(GetFOURCC(text), -1);
  EXPECT_EQ(GetFOURCC(nullptr), -1);
}

// The values stand in registry files: none of them may ever change.
TEST(GetUniqueId, GivesTheStoredValues) {
  const struct {
    std::string text;
    int id;
  } rows[] = {
      {"", 0},
      {"a", 0x3AB551CE},
      {"abc", 0x356598D0},
      {"123456789", 0x0000C2FA},
      {"media:fileutils.ini", 0x746CAD53},
      {"catalogs:Planets&Moons:DwarfPlanets.bin", 0x27EBF327},
      {"\xFF", 0x2D02EF8D},
      {"\x80\x80\x80\x80\x80", 0x14B106BD},
      {"\xC3\xA9t\xC3\xA9", 0x020C9BC9},
      {std::string(300, 'a'), 0x618C3F13},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(testing::PrintToString(row.text));
    EXPECT_EQ(GetUniqueID(row.text.c_str()), row.id);
  }
  EXPECT_EQ(GetUniqueID(nullptr), 0);
}

}  // namespace
