#include <gtest/gtest.h>

#include <string>

#include "tests/support/guarded_buffer.h"
#include "utils/text/text.h"

namespace {

using kv::test::GuardedBuffer;

struct UrlCase {
  std::string in;
  std::string out;
};

const UrlCase kDecoded[] = {
    {"", ""},
    {"plain", "plain"},
    {"a+b", "a+b"},
    {"%2F", "/"},
    {"%2f", "%2f"},
    {"%2F%2f%2F", "/%2f/"},
    {"a%20b", "a b"},
    {"%C3%A9", "\xC3\xA9"},
    {"%FF%00z", std::string("\xFF\0z", 3)},
    {"%", "%"},
    {"%4", "%4"},
    {"%41", "A"},
    {"a%", "a%"},
    {"ab%4", "ab%4"},
    {"%%41", "%A"},
    {"%4%41", "%4A"},
    {"%G1", "%G1"},
    {"%1G", "%1G"},
    {"%:0%@0%/0", "%:0%@0%/0"},
    {"%2541", "%41"},
};

TEST(DecodeUrl, DecodesUpperCaseEscapes) {
  for (const UrlCase& row : kDecoded) {
    SCOPED_TRACE(row.in);
    GuardedBuffer<char> buffer(row.out.size() + 1);
    decodeURL(buffer.Get(), row.in.c_str(), 0);
    buffer.ExpectHolds({row.out.c_str(), row.out.size() + 1});
  }
}

TEST(DecodeUrl, TakesTheGivenLength) {
  const struct {
    const char* in;
    int inLen;
    const char* out;
  } rows[] = {
      {"%41%42", 3, "A"},  {"%41%42", 4, "A%"}, {"%41%42", 5, "A%4"},
      {"%41%42", 2, "%4"}, {"%41%42", 1, "%"},  {"%41%42", -1, ""},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.inLen);
    const std::string out = row.out;
    GuardedBuffer<char> buffer(out.size() + 1);
    decodeURL(buffer.Get(), row.in, row.inLen);
    buffer.ExpectHolds({out.c_str(), out.size() + 1});
  }
}

TEST(DecodeUrl, WorksInPlace) {
  for (const UrlCase& row : kDecoded) {
    SCOPED_TRACE(row.in);
    GuardedBuffer<char> buffer(row.in.size() + 1, row.in);
    decodeURL(buffer.Get(), buffer.Get(), 0);
    EXPECT_EQ(std::string(buffer.Get(), row.out.size() + 1), row.out + '\0');
    EXPECT_EQ(buffer.Get()[row.in.size() + 1], GuardedBuffer<char>::kGuard);
  }
}

TEST(DecodeUrl, TakesNull) {
  GuardedBuffer<char> buffer(1);
  decodeURL(buffer.Get(), nullptr, 0);
  buffer.ExpectHolds({"", 1});
  decodeURL(buffer.Get(), nullptr, 5);
  buffer.ExpectHolds({"", 1});
  decodeURL(nullptr, "a", 1);
}

// What an output holds that is not assigned.
constexpr const char* kUntouched = "untouched";

struct UrlParts {
  const char* url;
  const char* scheme;
  const char* host;
  const char* port;
  const char* path;
};

const UrlParts kUrls[] = {
    {"scheme://host:8080/p/q", "scheme", "host", "8080", "/p/q"},
    {"host", kUntouched, "host", kUntouched, kUntouched},
    {"host/", kUntouched, "host", kUntouched, "/"},
    {"host/p", kUntouched, "host", kUntouched, "/p"},
    {"host:80", kUntouched, "host", "80", kUntouched},
    {"host:80/p", kUntouched, "host", "80", "/p"},
    {"s://host", "s", "host", kUntouched, kUntouched},
    {"s://host/p:1", "s", "host", kUntouched, "/p:1"},
    {"s://host:/p", "s", "host", "", "/p"},
    {"s://host:", "s", "host", "", kUntouched},
    {"s://:80", "s", "", "80", kUntouched},
    {"s:///p", "s", "", kUntouched, "/p"},
    {"s://", "s", "", kUntouched, kUntouched},
    {"://host", "", "host", kUntouched, kUntouched},
    {"", kUntouched, "", kUntouched, kUntouched},
    {"/p", kUntouched, "", kUntouched, "/p"},
    {":", kUntouched, "", "", kUntouched},
    {"s:/p", kUntouched, "s", "", "/p"},
    {"mailto:me", kUntouched, "mailto", "me", kUntouched},
    {"s://user:word@host:80/p", "s", "user", "word@host:80", "/p"},
    {"a/b://c/d", "a/b", "c", kUntouched, "/d"},
    {"a://b://c", "a", "b", "", "//c"},
};

TEST(ExtractUrlParts, SplitsAtTheFirstSeparators) {
  for (const UrlParts& row : kUrls) {
    SCOPED_TRACE(row.url);
    std::string scheme = kUntouched;
    std::string host = kUntouched;
    std::string port = kUntouched;
    std::string path = kUntouched;
    extractURLParts(row.url, &scheme, &host, &port, &path);
    EXPECT_EQ(scheme, row.scheme);
    EXPECT_EQ(host, row.host);
    EXPECT_EQ(port, row.port);
    EXPECT_EQ(path, row.path);
  }
}

TEST(ExtractUrlParts, GivesEachPartAlone) {
  for (const UrlParts& row : kUrls) {
    SCOPED_TRACE(row.url);
    std::string part = kUntouched;
    extractURLParts(row.url, &part, nullptr, nullptr, nullptr);
    EXPECT_EQ(part, row.scheme);
    part = kUntouched;
    extractURLParts(row.url, nullptr, &part, nullptr, nullptr);
    EXPECT_EQ(part, row.host);
    part = kUntouched;
    extractURLParts(row.url, nullptr, nullptr, &part, nullptr);
    EXPECT_EQ(part, row.port);
    part = kUntouched;
    extractURLParts(row.url, nullptr, nullptr, nullptr, &part);
    EXPECT_EQ(part, row.path);
    extractURLParts(row.url, nullptr, nullptr, nullptr, nullptr);
  }
}

TEST(ExtractUrlParts, AssignsNothingForNull) {
  std::string part = kUntouched;
  extractURLParts(nullptr, &part, &part, &part, &part);
  EXPECT_EQ(part, kUntouched);
}

TEST(ExtractUrlParts, TakesAnOutputAsUrl) {
  std::string url = "scheme://a-host-of-some-length:8080/path";
  std::string host;
  std::string path;
  extractURLParts(url.c_str(), &url, &host, nullptr, &path);
  EXPECT_EQ(url, "scheme");
  EXPECT_EQ(host, "a-host-of-some-length");
  EXPECT_EQ(path, "/path");
}

TEST(AppExternalUrlScheme, StartsEmpty) { EXPECT_STREQ(GetAppExternalURLScheme(), ""); }

TEST(AppExternalUrlScheme, KeepsSixtyFourBytes) {
  const char* stored = GetAppExternalURLScheme();
  for (const std::size_t length : {0U, 1U, 62U, 63U, 64U}) {
    SCOPED_TRACE(length);
    const std::string scheme(length, 's');
    SetAppExternalURLScheme(scheme.c_str());
    EXPECT_EQ(GetAppExternalURLScheme(), scheme);
    EXPECT_EQ(GetAppExternalURLScheme(), static_cast<const void*>(stored));
  }
  for (const std::size_t length : {65U, 66U, 640U}) {
    SCOPED_TRACE(length);
    SetAppExternalURLScheme(std::string(length, 'l').c_str());
    EXPECT_EQ(GetAppExternalURLScheme(), std::string(64, 'l'));
  }
}

TEST(AppExternalUrlScheme, FillsTheRestWithNul) {
  SetAppExternalURLScheme(std::string(64, 's').c_str());
  SetAppExternalURLScheme("kv");
  EXPECT_EQ(std::string(GetAppExternalURLScheme(), 65), "kv" + std::string(63, '\0'));
  SetAppExternalURLScheme(nullptr);
  EXPECT_STREQ(GetAppExternalURLScheme(), "");
}

TEST(AppExternalUrlScheme, TakesItsOwnText) {
  SetAppExternalURLScheme("abcdef");
  SetAppExternalURLScheme(GetAppExternalURLScheme() + 2);
  EXPECT_STREQ(GetAppExternalURLScheme(), "cdef");
}

}  // namespace
