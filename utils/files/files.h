// Files and diagnostics: a binary file, a line-oriented text file, functions for whole files, the
// library's exception and its diagnostic sink.
//
// Paths are NUL-terminated UTF-8 of any length with "\" between folders. A path that is null, empty
// or malformed (as utf8_to_utf16 judges it: overlong forms pass, unless they spell a NUL) names no
// file: the call fails as it does for a file that is missing. Other pointers must be valid unless a
// declaration says otherwise. Every object belongs to one thread at a time. Nothing returned by
// pointer outlives the object it came from.
#ifndef KVUTILS_UTILS_FILES_FILES_H_
#define KVUTILS_UTILS_FILES_FILES_H_

#include "utils/export.h"

#include <cstdarg>
#include <cstdio>
#include <memory>
#include <string>
#include <vector>

// windows.h makes GetMessage a macro; the name is taken back while the class below declares it.
#pragma push_macro("GetMessage")
#undef GetMessage

// The one exception type of the library, thrown by value. A host catches it as `const MException&`.
// Not exported: everything is inline, so that each module that throws or catches it has its own
// copy.
class MException {
 public:
  // Formats the message printf-style, cuts it at 1023 bytes, and writes it to standard output as it
  // is, so that every raised error is shown once, whether or not anybody catches it. Messages carry
  // their own line end. `code` says who raises: 2 the binary file, 0 the path resolver.
  MException(unsigned code, const char* format, ...) : m_Code(code) {
    char text[1024] = "";
    va_list arguments;
    va_start(arguments, format);
    if (std::vsnprintf(text, sizeof text, format, arguments) < 0) text[0] = '\0';
    va_end(arguments);
    std::printf("%s", text);
    m_Message = text;
  }
  MException(const MException&) = default;
  MException& operator=(const MException&) = default;
  virtual ~MException() = default;

  // The message as printed; it lives as long as this object.
  [[nodiscard]] virtual const char* GetMessage() const { return m_Message.c_str(); }
  [[nodiscard]] virtual unsigned GetCode() const { return m_Code; }

  // What a call of GetMessage becomes in a source that includes windows.h.
  [[nodiscard]] const char* GetMessageA() const { return GetMessage(); }
  [[nodiscard]] const char* GetMessageW() const { return GetMessage(); }

 private:
  std::string m_Message;
  unsigned m_Code;
};

#pragma pop_macro("GetMessage")

// The diagnostic sink. In this build it is silent: each call returns at once and reads none of its
// arguments, so a null text or a format that names more arguments than are passed does no harm.
// Any thread may call.
KVUTILS_API void WriteLogFile(const char* text);
KVUTILS_API void CloseLogFile();
extern "C" KVUTILS_API void PrintDebugString(const char* format, ...);

// A handler for failed allocations that a host may register with its run-time library; the library
// itself never does. Returns -1 (no retry) for every size in bytes and does nothing else.
KVUTILS_API int Handle_program_memory_depletion(unsigned long long size);

// A binary file of the local file system.
//
// Mode bits, combined by the caller:
//    1  create or truncate, for sequential writing; only together with a bit that writes
//    2  read: the file must exist, others may read too; wins over every other access bit
//    4  write: opens or creates, does not truncate; others may write
//    8  read and write an existing file; others may write
//   16  read and write an existing file, exclusively
//   32  others may read
//   64  others may write
// In use: 2, 4, 5 (create anew), 16, 34. Callers rely on the precedence: 6 reads only.
//
// Copies are shallow. Callers rely on it: a copy shares the system's handle, keeps its own count of
// opens, and neither knows of the other. The first to bring its count to 0 closes the handle; a
// close through the other then fails and leaves it in the state "close failed".
class KVUTILS_API MFile {
 public:
  // A closed file.
  MFile();
  // Opens `path`; the object is open afterwards. Throws MException, code 2,
  // "MFile::Load - file open failure\n" when the file cannot be opened, and as Open does.
  MFile(const char* path, unsigned mode);
  MFile(const MFile& other);
  MFile& operator=(const MFile& other);
  // Counts as one Close.
  virtual ~MFile();

  // Opens `path` and returns true; false when the system refuses, with the object closed and ready
  // for another Open. Opening the path that is open already (the same text, whatever the mode) only
  // counts: as many Close calls are due. A file that is refused because it is read-only loses that
  // attribute and is opened. A handle still open on another path is not closed first; callers close
  // it. Throws MException, code 2, "MFile::GetAccessMode - bad parameter inAccessMode\n" for a mode
  // with none of the bits 2, 4, 8, 16; the object is then as it was.
  virtual bool Open(const char* path, unsigned mode);

  // Takes back one Open. True when the file is closed, or still open because other opens are
  // outstanding; false when the last open or the close itself failed.
  virtual bool Close();

  // Reads or writes up to `count` bytes at the file pointer. Returns the bytes transferred, fewer
  // at the end of the file; 0 when the file is not open. When the system refuses, throws
  // MException, code 2, "MFile::Read - reading error in file %s\n" or "MFile::Write - writing error
  // in file %s\n".
  virtual unsigned Read(void* buffer, unsigned count);
  virtual unsigned Write(const void* buffer, unsigned count);

  // Moves the file pointer by `distance` bytes from the start (origin 0), the current position (1)
  // or the end (2). Returns the low 32 bits of the new position, or 0xFFFFFFFF when the system
  // refuses, as it does when no file is open. Throws MException, code 2, "MFile::Seek - bad
  // parameter inDistanceToMove\n" for another origin.
  unsigned Seek(unsigned origin, int distance);
  // The low 32 bits of the file pointer; 0 when the file is not open.
  [[nodiscard]] unsigned GetFilePointer() const;

  // The low 32 bits of the length in bytes, so a negative number from 2 GiB on; -1 when the file is
  // not open.
  [[nodiscard]] int GetLength() const;

  // A time stamp in whole seconds since 1970-01-01 00:00 UTC: 0 creation, 1 last access, any other
  // value last write. 0 when the system does not tell.
  [[nodiscard]] long long GetTime(int which) const;

  // Looks for the first occurrence of `pattern`, from the start of the file or from the file
  // pointer. Found: true, the file pointer just behind the match. Not found: false, the file
  // pointer where the search began. A closed file and a pointer at or past the end give false and
  // read nothing. Reads through Read, at most 65,535 bytes a call. Callers rely on it: the pieces
  // do not overlap, so a match that lies across two of them is not found. An empty pattern matches
  // at the first byte. A file whose length reads as negative is not searched.
  bool Search(const unsigned char* pattern, unsigned length, bool fromStart);

  // Memory mapping is not offered: false, `info` unwritten.
  bool GetMMInfo(long* info);

  // True for an existing file or folder.
  static bool IsExist(const char* path);
  // True when the file was deleted; folders are refused.
  static bool DeleteFileA(const char* path);
  // The length of the file, -1 when it cannot be opened.
  static int GetLength(const char* path);
  // As the member of the same name; 0 when the file cannot be opened.
  static long long GetTime(const char* path, int which);
  // Copies the content of `source` over the beginning of `target`, which is created if missing.
  // Callers rely on it: a longer target keeps its tail. The source is taken to
  // be as long as the low 32 bits of its length say. True when so many bytes were copied; false for
  // an empty source and one whose length the system does not tell, without creating the target,
  // when fewer bytes arrive than promised, and when memory is short. Throws MException, code 2,
  // when either file cannot be opened, read or written.
  static bool FileCopy(const char* source, const char* target);

 protected:
  bool Load(const char* path, unsigned mode);
  bool Unload();

  // What the mode bits ask of CreateFileW; the first matching test decides.
  unsigned GetAccessMode(unsigned mode) const;
  unsigned GetShareMode(unsigned mode) const;
  unsigned GetOpenMode(unsigned mode) const;
  unsigned GetFlagAndAttributes(unsigned mode) const;
  // The system's name of a Seek origin; 255 for an unknown one.
  unsigned GetMethodMove(unsigned origin) const;

  std::wstring m_Path;  // the path last loaded
  void* m_Handle;       // meaningful while m_State is 1; raw, because copies share it
  unsigned m_State;     // 1 open, 2 closed, 128 the last open failed, 256 the last close failed
  int m_OpenCount;      // opens of m_Path that are outstanding
};

// A text file read or written line by line.
//
// Reading skips comment lines (first character that is not white space equals the comment
// character) and, unless told otherwise, blank lines. A line that begins with the end character
// ends a section. Lines end in "\n" or "\r\n"; one read takes at most lineLength - 1 characters,
// and a longer line goes on in the next one. A leading UTF-8 byte-order mark is skipped. Numbers
// are read and printed with
// "." whatever locale the host has set.
//
// Copies share the stream and the line buffer, which live until the last copy is gone. Closing
// through one copy closes for all. On a closed object every read gives its end-of-file result and
// every write of numbers gives false.
class KVUTILS_API MTextFile {
 public:
  explicit MTextFile(bool deleteBorderSpace = false, char commentChar = '!', char endChar = '}',
                     int lineLength = 4096);
  MTextFile(const MTextFile& other);
  MTextFile& operator=(const MTextFile& other);
  ~MTextFile();

  // Closes what is open, then opens `path` for reading, or for writing as a new or emptied file.
  // False when the system refuses; the object is then closed.
  bool Open(const char* path, bool write);
  void Close();
  // Back to the first line, behind a byte-order mark.
  void SeekToBegin();

  // Whether lines returned as text lose the spaces, tabs and line ends at both ends. Otherwise they
  // keep their line feed.
  void SetBorderSpaceDelete(bool deleteBorderSpace);
  // Whether blank lines are skipped like comments; true after construction.
  void SkipEmptyStrings(bool skip);

  // True when a read has met the end of the file.
  [[nodiscard]] bool GetEndFileStatus() const;
  // The path last given to Open, empty when it was malformed.
  [[nodiscard]] std::wstring GetFileName() const;

  // The next significant line as text: at most size - 1 bytes of it are stored, with a NUL. Returns
  // the number of bytes stored; -2 when the line begins with the end character (it is stored all
  // the same); -1 at the end of the file, `dst` untouched. A null dst or a size below 1 stores
  // nothing and counts 0.
  int Readln(char* dst, int size);

  // The next significant line as numbers separated by spaces and tabs: stores at most `count` and
  // returns how many; the first token that is no number ends the row, surplus tokens are dropped.
  // -2 when the first token begins with the end character, -1 at the end of the file, 0 for a
  // significant blank line. Numbers are read as sscanf reads them: "%d" for short and int, "%u" for
  // the unsigned types, "%li" for long (0x and octal 0 prefixes), "%f" and "%lf". Plain decimals
  // (digits with perhaps a minus, a point and an exponent) are correctly rounded. The odd cases are
  // those of the sscanf that the compiler binds into the library, with this one libmingwex's and
  // not the system's: a number beyond the range of "%d" or "%li" gives the nearest one within it,
  // beyond that of "%u" 4294967295; "inf", "nan" and "0x10" are reals; of "12abc", "1e" and "1d5"
  // the beginning counts. Callers rely on it: no range is checked, a short takes the low 16 bits of
  // what was read.
  int Readln(short* values, int count);
  int Readln(unsigned short* values, int count);
  int Readln(int* values, int count);
  int Readln(unsigned int* values, int count);
  int Readln(long* values, int count);
  int Readln(float* values, int count);
  int Readln(double* values, int count);

  // Looks, from the beginning or from here, for a line that is no comment and that equals `text`
  // when its border space is removed. The next read continues behind it; false leaves the end of
  // the file.
  bool SearchString(const char* text, bool fromStart);

  // The number of significant lines before the next end marker, empty line or end of file; the read
  // position stays. With `untilEndMarker` the count is negated when no end marker stopped it: three
  // lines and "}" give 3, three lines and the end of the file give -3.
  int GetNumberLines(bool untilEndMarker);

  // printf-style output, flushed. A failure is not reported; a null format prints nothing.
  void Write(const char* format, ...);
  // The text (null counts as empty) and a line end; always true.
  bool Writeln(const char* text);
  // A row of numbers, each followed by a space, and a line end. False as soon as one could not be
  // written. Callers rely on it: an unsigned int above 2,147,483,647 is printed as a negative
  // number.
  bool Writeln(const short* values, int count);
  bool Writeln(const unsigned short* values, int count);
  bool Writeln(const int* values, int count);
  bool Writeln(const unsigned int* values, int count);
  // The same with a format of at most 31 characters, cut there; null means "%g " and "%lg ". It may
  // hold one conversion out of a, e, f, g with flags, width and precision of up to four digits;
  // another conversion prints nothing and gives false.
  bool Writeln(const float* values, int count, const char* format = nullptr);
  bool Writeln(const double* values, int count, const char* format = nullptr);

 protected:
  // Whether the current line is one that reading skips.
  bool IsComment() const;
  // The row reader behind the typed forms: scans each token with `format`, one conversion
  // of an integer or a real number, into a value of eight bytes and copies its first `itemSize`
  // bytes (eight at most). Another format reads no values.
  int Readln(void* out, int count, const char* format, int itemSize);

  // The standard functions of the same names on the stream; null and -1 when it is closed.
  char* fgets(char* buffer, int size);
  int fprintf(const char* format, ...);
  int vfprintf(const char* format, va_list arguments);

 private:
  class Stream;
  struct Internals;  // what the members share and the DLL does not export

  std::wstring m_FileName;
  int m_BomSkipped;  // 1 when the file open for reading began with EF BB BF
  std::shared_ptr<Stream> m_Stream;
  char m_CommentChar;
  char m_EndChar;
  bool m_DeleteBorderSpace;
  bool m_SkipEmptyStrings;
  std::shared_ptr<char[]> m_Line;  // the current line, m_LineLength + 1 bytes
  int m_LineLength;
};

// ---- Whole files -------------------------------------------------------------------------------
//
// A data name is resolved as KelvarisPath::GetPath resolves it, and belongs to the host's main
// thread as that does; a path is taken as it is. A file is read whole, in one piece. One whose
// length reads as negative (MFile::GetLength; from 2 GiB on) counts as unreadable, as does one that
// memory is short for; one that is cut while it is read is as long as what arrived. What MFile
// throws, on a read or write that the system refuses, passes through, and so does what the
// constructor of KelvarisPath throws (MException, code 0) where a data name is given and the
// folders of the process cannot be told. Nothing but std::bad_alloc is thrown besides; every other
// failure is a result.

// The standard streams of a UTF-8 path: _wfopen and _wfsopen on path and mode, both UTF-8. The
// caller closes the stream with fclose. Null when the system refuses, and for a mode or a share
// flag that the run-time library does not know, which never reaches it. A mode is "r", "w" or "a",
// then at most one of each of "+", "b" or "t", "c" or "n", "S" or "R", "D", "N", "T", in any order,
// then perhaps ", ccs=" and UTF-8, UTF-16LE or UNICODE in letters of any case; spaces do not count.
// A share flag is one of the five _SH_ constants of share.h from _SH_COMPAT to _SH_DENYNO.
extern "C" KVUTILS_API FILE* mm_fopen(const char* path, const char* mode);
extern "C" KVUTILS_API FILE* mm_fsopen(const char* path, const char* mode, int shareFlag);

// The bytes of the file that the data name resolves to, with a zero byte behind them; encoding and
// byte-order mark are left alone. The caller releases the buffer with delete[]. Null when the name
// resolves nowhere or the file cannot be opened.
KVUTILS_API char* GetKvFileContent(const char* name);

// Appends the text of the file at `path`, byte-order mark included, to `out`. False, with `out`
// unchanged, for a file that cannot be opened or read, is empty, holds a zero byte, or is malformed
// as utf8_to_utf16 judges it.
KVUTILS_API bool loadUTF8StringFromFile(std::string& out, const char* path);

// Appends the content of the file `source` to the existing file `target`, which nobody else may
// have open. False, with the content of the target unchanged, when either cannot be opened, as when
// both are the same file, and when the end of the target cannot be reached; true, without writing,
// for an empty source. How much was written is not checked. A read-only target has lost that
// attribute when it was opened, whatever the result (MFile::Open).
KVUTILS_API bool UniteFiles(const char* target, const char* source);

// 0 when the two files hold the same bytes. Otherwise the difference of their lengths as a 32-bit
// number or, for equal lengths, a value with the sign of memcmp; 1 when the first cannot be opened,
// else -1 when the second cannot. Callers rely on 0 alone: the other codes look alike.
KVUTILS_API int FileCompare(const char* first, const char* second);

// The local date of the last change of the file or folder that the data name resolves to: day (1 to
// 31), month (1 to 12) and full year in the three elements of `date`. False, with `date` untouched,
// when the name resolves nowhere and for a change before 1970 or after the year 3000. Callers rely
// on it: that the system tells the date is not checked, so a remembered path whose file is gone
// gives the local date of the first second of 1970 (UTC).
KVUTILS_API bool GetFileDate(short* date, const char* name);

// Appends to `out` the field number `column`, from 0, of each line of the tab-separated table that
// the data name resolves to. Lines are read as MTextFile reads them, trimmed, without comments and
// blank lines, up to a line that begins with "}", and cut at 511 bytes. Callers rely on it: a run
// of tabs is one separator, so an empty field does not count and later ones move left. Shorter
// lines, and all lines for a negative column, add nothing. True when `out` holds anything
// afterwards, entries from before included; false, with `out` unchanged, when the name resolves
// nowhere or the file cannot be opened.
KVUTILS_API bool ReadTabSeparatedColumn(std::vector<std::string>& out, const char* name,
                                        int column);

#endif  // KVUTILS_UTILS_FILES_FILES_H_
