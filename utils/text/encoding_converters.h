// The forms of the counted converters.
#ifndef KVUTILS_UTILS_TEXT_ENCODING_CONVERTERS_H_
#define KVUTILS_UTILS_TEXT_ENCODING_CONVERTERS_H_

namespace kv::internal {

// One character at a time, for any room: these define the results in every case.
int CountIsolat1ToUtf8(char* out, int& outLen, const char* in, int inLen);
int CountUtf8ToIsolat1(char* out, int& outLen, const char* in, int inLen);
int CountUtf16ToUtf8(char* out, int& outLen, const wchar_t* in, int inLen);
int CountUtf8ToUtf16(wchar_t* out, int& outLen, const char* in, int inLen);

inline constexpr int kMostBytesOfUnit = 3;  // in UTF-8, for each of UTF-16

// One character at a time, for a text that is not empty and ample room: so many bytes for a unit of
// UTF-16, one unit for a byte of UTF-8.
int ShortUtf16ToUtf8(char* out, const wchar_t* in, int inLen);
int ShortUtf8ToUtf16(wchar_t* out, const char* in, int inLen);

// Blocks of ASCII and the characters between them, for a text and an output of one unit at least.
int MixedUtf16ToUtf8(char* out, int& outLen, const wchar_t* in, int inLen);
int MixedUtf8ToUtf16(wchar_t* out, int& outLen, const char* in, int inLen);

}  // namespace kv::internal

#endif  // KVUTILS_UTILS_TEXT_ENCODING_CONVERTERS_H_
