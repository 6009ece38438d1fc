#include <gtest/gtest.h>

#include <string>

#include "tests/support/guarded_buffer.h"
#include "utils/text/text.h"

namespace {

using kv::test::GuardedBuffer;

// What FromDiacritic writes into a buffer of just the promised size.
std::wstring Plain(const std::string& text, bool isUtf8 = true) {
  GuardedBuffer<wchar_t> out(2 * text.size() + 1);
  EXPECT_TRUE(FromDiacritic(out.Get(), text.c_str(), isUtf8));
  const std::wstring plain = out.Text();
  out.ExpectHolds(plain + L'\0');
  return plain;
}

TEST(FromDiacritic, MakesAccentedLettersPlain) {
  const struct {
    wchar_t plain;
    const char* accented;
  } rows[] = {
      {L'E', "ËĒĘĚĔĖ"},     {L'e', "èéêëēęěĕė"},  {L'A', "ÀÁÂÃÄÅĀĄĂÆ"}, {L'a', "àáâãäåāąăæ"},
      {L'I', "ÌÍÎÏĪĨĬĮİ"},  {L'i', "ìíîïīĩĭį"},   {L'U', "ÙÚÛÜŪŮŰŬŨŲ"}, {L'u', "ùúûüūůűŭų"},
      {L'O', "ÒÓÔÕÖØŌŐŎŒ"}, {L'o', "òóôõöøōőŏœ"}, {L'C', "ÇĆČĈĊ"},      {L'c', "çćčĉ"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.accented);
    const std::string text = row.accented;
    EXPECT_EQ(Plain(text), std::wstring(text.size() / 2, row.plain));
  }
}

// Every other character of the Basic Multilingual Plane stays, but for sharp s.
TEST(FromDiacritic, KeepsAllOtherCharacters) {
  const std::wstring known =
      L"ËĒĘĚĔĖèéêëēęěĕėÀÁÂÃÄÅĀĄĂÆàáâãäåāąăæÌÍÎÏĪĨĬĮİìíîïīĩĭįÙÚÛÜŪŮŰŬŨŲùúûüūůűŭų"
      L"ÒÓÔÕÖØŌŐŎŒòóôõöøōőŏœÇĆČĈĊçćčĉß";
  for (unsigned c = 1; c <= 0xFFFF; ++c) {
    if (c >= 0xD800 && c <= 0xDFFF) continue;  // halves of a character
    if (known.find(static_cast<wchar_t>(c)) != std::wstring::npos) continue;
    char text[16];
    int size = 15;
    const wchar_t unit = static_cast<wchar_t>(c);
    const int length = utf16_to_utf8(text, size, &unit, 1);
    ASSERT_GT(length, 0);
    text[length] = '\0';
    wchar_t out[8];
    EXPECT_TRUE(FromDiacritic(out, text, true));
    ASSERT_EQ(std::wstring(out), std::wstring(1, unit)) << c;
  }
}

TEST(FromDiacritic, LacksSomeLetters) {
  EXPECT_EQ(Plain("ÈÉÊċ"), L"ÈÉÊċ");
  EXPECT_EQ(Plain("Éöß"), L"ÉoSS");
}

TEST(FromDiacritic, MakesSharpSDouble) {
  EXPECT_EQ(Plain("ß"), L"SS");
  EXPECT_EQ(Plain("Großer Bär"), L"GroSSer Bar");
  EXPECT_EQ(Plain("ßßß"), L"SSSSSS");
  EXPECT_EQ(Plain("ẞ"), L"ẞ");
}

TEST(FromDiacritic, ReadsUtf8AndLatin1) {
  EXPECT_EQ(Plain(""), L"");
  EXPECT_EQ(Plain("", false), L"");
  EXPECT_EQ(Plain("Vega 12", false), L"Vega 12");
  EXPECT_EQ(Plain("Béta Кит"), L"Beta Кит");
  EXPECT_EQ(Plain("\xF0\x9F\x98\x80"), L"\xD83D\xDE00");
  // A Latin-1 text ends after as many bytes of its UTF-8 form as it has.
  EXPECT_EQ(Plain("\xE9\xE9\xE9\xE9", false), L"ee");
  EXPECT_EQ(Plain("\xDF\xE9\xDF\xE9", false), L"SSe");
  EXPECT_EQ(Plain("\xC3\xA9", false), L"A");
  // Malformed UTF-8 ends the text.
  EXPECT_EQ(Plain("\xC3\xA9t\x80t"), L"et");
}

TEST(FromDiacritic, TakesNullAndTextsOfAnyLength) {
  EXPECT_TRUE(FromDiacritic(static_cast<wchar_t*>(nullptr), "a", true));
  wchar_t out[2] = L"x";
  EXPECT_TRUE(FromDiacritic(out, nullptr, true));
  EXPECT_STREQ(out, L"");
  std::string text;
  for (int i = 0; i < 50000; ++i) text += "\xC3\x9F";
  EXPECT_EQ(Plain(text), std::wstring(100000, L'S'));
}

TEST(FromDiacritic, LeavesANarrowTextAlone) {
  for (const bool isUtf8 : {false, true}) {
    char text[] = "\xC3\xA9t\xC3\xA9";
    EXPECT_TRUE(FromDiacritic(text, static_cast<int>(sizeof text), isUtf8));
    EXPECT_STREQ(text, "\xC3\xA9t\xC3\xA9");
    EXPECT_TRUE(FromDiacritic(text, 0, isUtf8));
    EXPECT_TRUE(FromDiacritic(text, -1, isUtf8));
    EXPECT_STREQ(text, "\xC3\xA9t\xC3\xA9");
  }
  EXPECT_TRUE(FromDiacritic(static_cast<char*>(nullptr), 10, true));
}

}  // namespace
