// Text utilities: editing and splitting, character sets, URLs, comparison, case mapping, and small
// numeric and binary helpers.
//
// Narrow text is NUL-terminated bytes, wide text UTF-16 in wchar_t units of 16 bits; where the
// encoding matters, the declaration names it. Lengths count bytes or units without the NUL unless
// said otherwise; a count beyond the range of int is given as its largest value. Nothing here keeps
// memory for the caller, and what fails says so by its result. Nothing is thrown but std::bad_alloc
// and what a caller's Comparator throws. Callers own every buffer; an output may not overlap an
// input unless the declaration allows it. A null text counts as an empty one where nothing else is
// said, and a null buffer makes the call do nothing.
//
// Functions are reentrant, but for three process-wide states meant for the host's main thread: the
// current code page (SetCodePage), the application's URL scheme, and the locale of the C run-time
// library, which LowerCase and UpperCase follow.
#ifndef KVUTILS_UTILS_TEXT_TEXT_H_
#define KVUTILS_UTILS_TEXT_TEXT_H_

#include "utils/export.h"

#include <string>
#include <vector>

// ---- Editing in place --------------------------------------------------------------------------
//
// Border space is exactly space, tab, line feed and carriage return. The Clear functions go by
// isspace instead, which knows vertical tab and form feed too. No byte above 127 is white space,
// whatever the process's locale.

// Removes leading and trailing border space. "\t a b \r\n" becomes "a b".
KVUTILS_API void DeleteBorderSpace(char* s);
KVUTILS_API void DeleteBorderSpaces(std::string& s);

// True when s is empty or all border space.
KVUTILS_API bool IsEmptyString(const std::string& s);

// Cuts trailing isspace characters.
KVUTILS_API void ClearStringRight(char* s);

// Removes every isspace character, wherever it stands.
KVUTILS_API void ClearString(char* s);
KVUTILS_API void ClearString(std::string* s);

// Removes every character that occurs in set.
KVUTILS_API void ClearString(char* s, const char* set);

// Replaces every `from`, or every character that occurs in set, by `to`, which may be NUL.
KVUTILS_API void ReplaceChar(char* s, char from, char to);
KVUTILS_API void ReplaceChars(char* s, const char* set, char to);

// Applies toupper or tolower to each byte. Bytes above 127 stay, so UTF-8 text stays valid.
KVUTILS_API void UpperString(char* s);
KVUTILS_API void LowerString(char* s);

// Replaces every occurrence of find in buf by repl, from left to right; replaced text is not
// searched again. Returns the length of the result, or -1, with buf unchanged, when that is more
// than bufSize characters or buf is null. A result of exactly bufSize characters is accepted: buf
// holds bufSize + 1 bytes. An empty or null find replaces nothing; a null repl is the empty text.
KVUTILS_API int ReplaceSubstring(char* buf, int bufSize, const char* find, const char* repl);

// The same on a string of any length; returns the number of replacements.
// "aaa" with "a" replaced by "aa" is "aaaaaa" and 3.
KVUTILS_API int findAndReplace(std::string& s, const char* find, const char* repl);

// ---- Splitting and searching -------------------------------------------------------------------

// Splits text at each run of delim. out is cleared first. A leading run yields one empty token, a
// trailing run nothing. True when there is a token.
//   ",,a,,b,," at ',' is "", "a", "b"; "" is nothing and false.
// In the wide form delim is widened as a signed value: '\xE9' splits at U+FFE9.
KVUTILS_API bool GetTokens(std::vector<std::string>& out, std::string text, char delim);
KVUTILS_API bool GetTokens(std::vector<std::wstring>& out, std::wstring text, char delim);

// Splits text at each run of characters from the set delims; no token is ever empty. out is cleared
// first and may not own text. True when there is a token.
KVUTILS_API bool GetTokens(std::vector<std::string>& out, const char* text, const char* delims);

// Appends to out each piece of text that a delim ends, empty ones included; what follows the last
// delim is left out. Returns the number of elements in out, those that were there before included.
//   "a;;b;c" at ';' appends "a", "", "b".
KVUTILS_API int GetSubStrings(std::vector<std::string>& out, std::string text, char delim);

// Offset of the first occurrence of needle in hay, both counted in bytes. A needle of size 0 is
// found at 0. -1 when there is none, when it lies at 2147483648 or beyond, and when a needle of
// another size, or the hay for it, is null.
KVUTILS_API int MemorySearch(const unsigned char* hay, unsigned int haySize,
                             const unsigned char* needle, unsigned int needleSize);

// ---- Backslash escapes -------------------------------------------------------------------------

// Expands \" \\ \n \r \t, \s (space) and \x or \X with two hex digits; any other character after a
// backslash stands for itself. A character in place of a hex digit counts as 0, and so does one
// that is missing. A backslash at the end appends a NUL character.
//   R"(\x41\s\q)" is "A q".
KVUTILS_API std::string ParseString(std::string text);

// The same without the \x form, from the text src into dst, which may be the same buffer. Returns
// the number of characters written and writes no terminator: dst is zeroed by the caller and holds
// as many characters as src. A backslash at the end writes nothing. 0 when either is null.
KVUTILS_API int ParseString2(char* src, char* dst);

// ---- Counted converters ------------------------------------------------------------------------
//
// in holds inLen units (none when inLen is negative or in is null) and needs no terminator. outLen
// is the room in out, in output units; no terminator is written. The whole input is walked and
// every output unit is counted, but stored only while it fits. Results:
//   n >= 0  all n units are stored; outLen is unchanged. Empty input gives 0.
//   -1      out is too small: outLen is the room needed, and out is filled as far as units fit.
//   -2      malformed input, whatever the room: outLen is unchanged, what was stored stays.
// A null out has no room, whatever outLen says, and so measures: -1 and the size in outLen.

// Latin-1 to UTF-8: bytes above 127 become two. Never -2. The first of two bytes is stored even
// when the second does not fit.
KVUTILS_API int isolat1_to_utf8(char* out, int& outLen, const char* in, int inLen);

// UTF-8 to Latin-1: leads 0xC2 and 0xC3 with any byte behind them; every other byte above 127 is
// malformed. It cannot measure: when out is full, such a lead is counted alone and the byte behind
// it is read as the next lead, so that a character above 127 that does not fit gives -2, not -1.
KVUTILS_API int utf8_to_isolat1(char* out, int& outLen, const char* in, int inLen);

// UTF-16 to UTF-8 of at most three bytes a character. A surrogate pair becomes the one 16-bit value
// (high << 10) | (low & 0x3FF): D83D DE00 gives the three bytes of U+F600. A high surrogate
// without a low one behind it is malformed; a lone low surrogate is an ordinary unit.
KVUTILS_API int utf16_to_utf8(char* out, int& outLen, const wchar_t* in, int inLen);

// UTF-8 to UTF-16. Overlong forms and encoded surrogates pass; a stray or missing continuation
// byte, a lead of 0xF8 and above, and values beyond U+10FFFF are malformed. Of a surrogate pair,
// both units are stored or none.
KVUTILS_API int utf8_to_utf16(wchar_t* out, int& outLen, const char* in, int inLen);

// ---- Whole texts between character sets --------------------------------------------------------

// text, UTF-8 or else Latin-1, as UTF-16, up to its first NUL unit. Malformed UTF-8 ends the result
// before the fault. A Latin-1 text of n bytes gives only the characters that the first n bytes of
// its UTF-8 form hold in full: "\xE9t\xE9" gives U+00E9 and 't'. Empty for null.
KVUTILS_API std::wstring Ascii2Unicode(const char* text, bool isUtf8);

// Converts the text in buf from codePage (-1: the current one, see SetCodePage) to UTF-8. buf holds
// bufSize bytes, NUL included. True when it fits; false, with buf unchanged, when it does not, when
// the code page is unknown to the system or still unset, bufSize is negative, or buf is null. A
// bufSize of 0 is true and does nothing. Code page 0 is the system's ANSI code page.
KVUTILS_API bool Ascii2Utf8(char* buf, int bufSize, int codePage);

// The reverse, from UTF-8 to the current code page, with the same results. Characters that the code
// page lacks become the system's default character.
KVUTILS_API bool Utf82Ascii(char* buf, int bufSize);

// Converts text to the system's ANSI code page, which is not the current code page of this library,
// into out of outSize bytes, NUL included. False, with out unchanged, when it does not fit or a
// pointer is null.
KVUTILS_API bool Unicode2Ascii(const wchar_t* text, char* out, int outSize);

// ---- URLs --------------------------------------------------------------------------------------

// Decodes "%" followed by two digits or letters A to F (upper case only) into one byte; everything
// else, '+' included, is copied. An inLen of 0 takes in to its terminator, a negative one takes
// nothing. out is terminated, holds inLen + 1 bytes and may be in itself.
KVUTILS_API void decodeURL(char* out, const char* in, int inLen);

// Decodes "%hh" and "%uhhhh" with hex digits of either case. -1, with nothing written, for any
// other use of '%', for an unpaired high surrogate, for a result beyond the range of int and for a
// null in. Otherwise:
//   without a "%u" escape  returns the number of bytes n; out, unless null, gets them and a NUL;
//   with a "%u" escape     the text is taken as UTF-16 (bytes above 127 as signed values, 65408 and
//                          up) and becomes UTF-8 as utf16_to_utf8 makes it, n bytes. Returns n when
//                          out is null; otherwise stores them without a terminator and returns n
//                          + 1.
//   "a%u00e9" returns 3 when out is null, 4 otherwise.
// out holds n + 1 bytes.
KVUTILS_API int unescape(char* out, const char* in);

// Splits "scheme://host:port/path". Each output may be null and is assigned only when its part is
// found; path begins with its "/". A null url assigns nothing.
//   "scheme://host:8080/p/q" is "scheme", "host", "8080", "/p/q"; "host" is host "host" alone.
KVUTILS_API void extractURLParts(const char* url, std::string* scheme, std::string* host,
                                 std::string* port, std::string* path);

// Stores the first 64 bytes of scheme, process-wide. The stored text is empty at first, belongs to
// the library, stays in the same place and is always terminated.
KVUTILS_API void SetAppExternalURLScheme(const char* scheme);
KVUTILS_API const char* GetAppExternalURLScheme();

// ---- Comparison --------------------------------------------------------------------------------
//
// Names in UTF-8 are compared by the system's invariant rules, whatever the user's locale: case
// never counts, and diacritics count only under the Cyrillic code page 1251. Malformed UTF-8 counts
// as U+FFFD. Texts of any length are compared whole, terminator included. Results are -1, 0 and 1,
// and -3 when the system's comparison fails or a text is null.
//
// Most pairs are decided without the system, by what has been learned of its order: that takes a
// thousand questions under each set of rules, and ten thousand with the first letter beyond ASCII.
//
// The first comparison, if no language has been set before, sets the language of GetSystemLocale
// and the multi-byte code page of the C run-time library. CompareStringsRangeExt does not, nor do
// CompareStringsForJapan and a CompareStringsRange of no bytes. SetCodePage leaves the run-time
// library's code page as it is.

// Sets the current code page from a language code: "ru" 1251, "ja" 932, everything else, null
// included, 1252. Returns it. The code must match exactly: "RU" gives 1252.
KVUTILS_API int SetCodePage(const char* language);

// stringSort: hyphen and apostrophe count as other punctuation does (SORT_STRINGSORT).
KVUTILS_API int CompareStrings(const char* a, const char* b, bool stringSort);

// CompareStrings without stringSort.
KVUTILS_API int CompareStringsWestern(const char* a, const char* b);
KVUTILS_API int CompareStringsRussian(const char* a, const char* b);

// Always -1.
KVUTILS_API int CompareStringsForJapan(const char* a, const char* b);

// Compares the first maxBytes bytes of each text. Those that compare equal are ordered by how many
// bytes were compared, the smaller number first. 0 when maxBytes is 0 or negative.
//   "Abc" and "abcd" give 0 for 3 and -1 for 4.
KVUTILS_API int CompareStringsRange(const char* a, const char* b, int maxBytes);

// Compares the first n UTF-16 units of both texts, n being the length of a or, without
// useFirstLength, of b; a shorter text is compared as it is. 0 when they compare equal. Otherwise
// the lengths count: with a before b the result is -1 if a is longer, else 1; with a after b it is
// 1 if a is longer, else -1.
//   "a" and "b" give 1, "b" and "a" give -1, "ab" and "b" give -1 (useFirstLength).
KVUTILS_API int CompareStringsRangeExt(const char* a, const char* b, bool useFirstLength,
                                       bool stringSort);

// Ignores case and nothing else, under every code page.
KVUTILS_API int CompareNoCaseStrings(const char* a, const char* b);

// There are no special comparisons: always -1, and id is ignored.
KVUTILS_API int GetSpecialCompareFunctionId();
KVUTILS_API void SetSpecialCompareFunctionId(int id);

// ---- Natural order of names --------------------------------------------------------------------
//
// For sorting: negative when a sorts before b, 0 when they count as equal, positive when a sorts
// after b. Names of any length are compared whole.

// Orders names by their text and, where both have a digit, by the value of the number there. Texts
// are compared byte by byte in upper case (A to Z alone), bytes above 127 as signed values cut to
// 16 bits, so 65408 and up. Numbers are those of atoi, whose overflow they share.
// Callers rely on how a number against other text, and the end of a name, decide: by the difference
// of the raw characters, case included. So leading zeros count: behind two equal numbers both
// cursors move together while both see digits.
//   "M 31" and "m 4" give 27, "Item9" and "Item10" -1, "abc" and "ABC" 0, "ab" and "abc" -99,
//   "x2y" and "x02y" 'y' - '2'.
KVUTILS_API int CompareStringWithNumber(const char* a, const char* b);

// CompareStrings without stringSort on the names without their parentheses: -1, 0, 1, or -3 when
// the system's comparison fails or a text is null. "(2) Name" and "2 Name" are equal.
KVUTILS_API int CompareAsterNameWithNumber(const char* a, const char* b);

// 1, 0 or -1 by the decimal integers at the beginning of the names without their parentheses,
// leading white space and a sign accepted. 0 when either has none. Callers rely on it: what follows
// the number does not count. "(10) Name" and "(9) Other" give 1.
KVUTILS_API int SortAsterNameWithNumber(const char* a, const char* b);

// ---- Greek letters and diacritics --------------------------------------------------------------

// The abbreviation of a Greek letter, two or three lower-case letters, by its place in the alphabet
// from 0: "0" gives "alf", "11" "mu", "23" "ome". The number is read as atoi reads it, leading
// white space, a sign and what atoi makes of an overflow included; a text without one gives 0.
// `out` holds 4 bytes, NUL included. False, with out untouched, for a number outside 0 to 24 and
// for null pointers. Callers rely on it: 24 is an empty text and true.
KVUTILS_API bool Greek2Ascii(char* out, const char* number);

// The text with each marker, "###" and the three characters after it, replaced by the abbreviation
// of the number that is read behind the "###"; by nothing when Greek2Ascii refuses the number.
// Callers rely on it: a marker takes three characters with it, whatever they are, or those that are
// left. "Alpha ###00 Cen" is "Alpha alfCen".
KVUTILS_API std::string ConvertStringWithGreek(const char* text);

// The text, UTF-8 or else Latin-1 as Ascii2Unicode reads it, as UTF-16 with accented Latin letters
// made plain and sharp s made "SS"; every other character stays. Callers rely on the letters that
// the table lacks: capital E with acute, grave or circumflex and small c with dot stay. `out` holds
// twice as many units as `in` has bytes, and one for the NUL. Always true; a null out is not
// written.
//   U+00C9 U+00F6 U+00DF give U+00C9 'o' 'S' 'S'.
KVUTILS_API bool FromDiacritic(wchar_t* out, const char* in, bool isUtf8);

// Always true. Callers rely on it: the text stays as it is.
KVUTILS_API bool FromDiacritic(char* text, int size, bool isUtf8);

// ---- Classification and case mapping -----------------------------------------------------------

// True for a letter or digit of any script, as the system classifies it.
KVUTILS_API bool IsAlphaDigital(wchar_t c);

// Maps UTF-8 text in place by the C run-time library's rules for the process's locale (in the "C"
// locale, A to Z alone). text holds size bytes, NUL included. A result that does not fit leaves
// text as it is and goes to the diagnostic output.
KVUTILS_API void LowerCase(char* text, int size);
KVUTILS_API void UpperCase(char* text, int size);

// Writes the full Unicode upper case of in, UTF-8, with a NUL to out, by the rules of ICU's default
// locale. Returns its length in bytes, which may exceed that of in: "straße" (7 bytes) is
// "STRASSE", "ŉ" (2 bytes) is "ʼN" (3 bytes). A null out measures. Malformed UTF-8 becomes U+FFFD.
// A text that ICU has no room for, from some GiB on, gives 0 and an empty out.
KVUTILS_API int ConvertToUpperCase(char* out, const char* in);

// ---- Numbers -----------------------------------------------------------------------------------

// Reads a mantissa with an implied leading point and a signed exponent behind it: " 12345-3" is
// 0.12345e-3, "5" is 0.5. White space counts nowhere. Reads as "%lg" does, with "." as the point
// whatever the process's locale; what follows the number is ignored. False, with *value unchanged,
// when there is no number or a pointer is null.
KVUTILS_API bool GetDoubleValue(double* value, const char* text);

// Takes the decimal digits of *value as digits in base radix: 777 in base 8 becomes 511. False when
// a digit is not below radix, with *value the digits behind the last one accepted (789 in base 8
// leaves 89; a radix of 0 or less accepts none, so *value stays), for a negative input, which
// becomes 0, and for a null value. 0 is 0 in every radix. Results are cut to 32 bits.
KVUTILS_API bool FromCustomRadixToDec(int* value, int radix);

// The value of a hexadecimal digit of either case; 0 for every other character.
KVUTILS_API unsigned int valhex(char c);

// x rounded to the nearest integer, halves upwards: 2.5 is 3, -2.5 is -2. Saturates beyond the
// range of int; 0 for what is not a number.
KVUTILS_API int GetNearestInt(double x);

// ---- Binary helpers ----------------------------------------------------------------------------

// The first four characters of text as a number, the first in the most significant byte: "RIFF" is
// 0x52494646. -1 when there are fewer.
KVUTILS_API int GetFOURCC(const char* text);

// A 31-bit hash of text, 0 to 0x7FFFFFFF; 0 for an empty text. It is stored in files: equal texts
// give equal values on every machine and in every version.
KVUTILS_API int GetUniqueID(const char* text);

// Base 64 with the alphabet A-Z a-z 0-9 - _ and no padding. alphabetTail, unless null, gives the
// characters 62 and 63 and the padding character (NUL for none): "+/=".

// Encodes length bytes of data (none when negative, or data is null) into out, without a
// terminator. Returns the number of characters; a null out measures. -1, with nothing written, when
// that is beyond the range of int.
//   FF FE is "__4", and "//4=" with "+/=".
KVUTILS_API int btos(char* out, const unsigned char* data, int length, const char* alphabetTail);

// Decodes at most maxChars characters of text into out, which may be null to measure. Returns the
// number of bytes. Ends at the terminator and at the padding character; any other character outside
// the alphabet gives -1, with the bytes before it written.
//   "AQID" is 1, 2, 3; "AQ==" is 1 byte with "+/=", -1 with null.
KVUTILS_API int stob(unsigned char* out, const char* text, const char* alphabetTail, int maxChars);

// Reverses the byte order of the fields of a packed record. layout holds the sizes of its count
// fields in order: 2, 4 and 8 are reversed; a field of any other size, in particular a negative
// one, is passed over, at its absolute value.
//   {4, -2, 2} turns 01 02 03 04 05 06 07 08 into 04 03 02 01 05 06 08 07.
KVUTILS_API void SwapStruct(void* data, const int* layout, int count);

// The order of a sorted array, supplied by the caller of BinarySearch. Compare is negative when key
// sorts before element, 0 when they are equal, positive when it sorts after.
class Comparator {
 public:
  virtual int Compare(const void* key, const void* element) = 0;

 protected:
  ~Comparator() = default;
};

// Searches the array of count elements of size bytes each, ascending by comparator. Returns an
// element that equals key; without one, the element at which the search ends, which is where key
// belongs or a neighbour, so a caller that needs a match compares again. Returns base when count is
// 0 or comparator is null.
//   In 1, 3, 7: 5 gives 7, 0 gives 1, 9 gives 7.
KVUTILS_API void* BinarySearch(const void* key, const void* base, unsigned long long count,
                               unsigned long long size, Comparator* comparator);

#endif  // KVUTILS_UTILS_TEXT_TEXT_H_
