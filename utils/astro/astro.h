#ifndef KVUTILS_UTILS_ASTRO_ASTRO_H_
#define KVUTILS_UTILS_ASTRO_ASTRO_H_

// Astronomical helpers: angles between radians and sexagesimal parts, packed catalogue dates, and
// the store of dwarf planet records.
//
// Angles are in radians. Output pointers must be valid; none is checked for null. The conversions
// hold no state and may be called from any thread; the store belongs to one thread at a time.

#include "utils/export.h"

#include <vector>

// ------------------------------------------------------------------------------------------------
// Angles
//
// Given and returned, in both directions: the leading field alone carries the sign; minutes and
// seconds are never negative. Callers rely on this convention: a value between -1 and 0 of the
// leading field loses its sign (-0 deg 30' comes out as 0, 30, 0.0), and Dec2Rad cannot form one.
//
// Splitting an angle (Rad2RA, Rad2Dec):
// - The angle becomes seconds as radians / pi * 12.0 * 3600.0 (180.0 for degrees). They are
//   rounded as a whole, halves upward, before they are split, so a carry into minutes and the
//   leading field is automatic: 0h 59m 59.7s rounded is 1h 0m 0s.
// - Without roundToSecond, a value less than 1e-6 s away from a whole second becomes that second.
// - Nothing is wrapped: 2 pi gives 24h 0m 0s, and larger angles give more hours.
// - More hours (degrees) than an int holds give 2147483647, or -2147483647 for a negative angle,
//   with the minutes and seconds of the angle. An infinite angle, or one whose seconds overflow a
//   double, gives 0 minutes and 0.0 seconds beside it. Not a number gives 0, 0, not a number.

// Radians to hours, minutes and seconds of time. Seconds are in [0, 60).
KVUTILS_API void Rad2RA(int* hours, int* minutes, double* seconds, double radians,
                        bool roundToSecond);

// Radians to degrees, minutes and seconds of arc. Seconds are in [0, 60).
KVUTILS_API void Rad2Dec(int* degrees, int* minutes, double* seconds, double radians,
                         bool roundToSecond);

// *radians = ((hours * 60 + minutes) * 60 + seconds) * pi / 12.0 / 3600.0, in this order. The whole
// seconds are a 32-bit integer that wraps around. The parts are used with the signs they have: they
// are not checked.
KVUTILS_API void RA2Rad(double* radians, int hours, int minutes, double seconds);

// *radians = ((|degrees| * 60 + minutes) * 60 + seconds) * pi / 180.0 / 3600.0, in this order,
// times -1.0 when degrees is negative. The whole seconds are a 32-bit integer that wraps around.
KVUTILS_API void Dec2Rad(double* radians, int degrees, int minutes, double seconds);

// ------------------------------------------------------------------------------------------------
// Packed dates

// Unpacks a date in the form that minor-planet orbit catalogues use (the packed dates of the Minor
// Planet Center): century letter (I 1800, J 1900, K 2000), two year digits, one month character,
// one day character, and optionally the digits of a day fraction.
//   K194R gives 2019, 4, 27.0; J9611 gives 1996, 1, 1.0; K194R25 gives 2019, 4, 27.25.
// False, with nothing written, for an unknown century letter and for year characters that are no
// number; true otherwise. No pointer may be null.
//
// - A decimal digit of the month or day stands for its value, any other character for its code
//   minus 55 (A is 10, V is 31). Neither is checked against a range: month 0 comes from '0', month
//   42 from 'a'. Bytes above 127 count as negative codes.
// - The two year characters and the fraction are read as "%d" of scanf reads: leading white space
//   and a sign are accepted, reading stops at the first other character. A fraction beyond the
//   range of int is taken as the nearest int.
// - A fraction k adds k / p days, where p is the smallest power of ten that is not below k, at
//   least 1. Callers rely on what follows from this: leading zeros do not count (K194R05 gives
//   27.5), 1 and every power of ten add a whole day (K194R1 and K194R10 give 28.0), a negative
//   number is added as it is (K194R-3 gives 24.0).
// - Nothing is read behind the terminator. A month or day character that is missing because the
//   text ends counts as the terminator itself, whose code 0 stands for -55: K19 gives 2019, -55,
//   -55.0.
KVUTILS_API bool UnpackDate(short* year, short* month, double* day, const char* packed);

// ------------------------------------------------------------------------------------------------
// Dwarf planet records

// Orbital elements of one object. Their fields belong to the host: here they are an opaque block.
struct alignas(4) Elements {
  unsigned char bytes[68];
};

// Identifier of a solar-system object. Two identifiers denote the same object when their object
// numbers are equal.
struct SSO_ID {
  unsigned int hostField;     // the host's own; stored and copied, never compared
  unsigned int objectNumber;  // compared
};

// One record; its memory image is its image in the file (little-endian).
struct DwarfPlanetRecord {
  Elements elements;
  SSO_ID id;
};

static_assert(sizeof(Elements) == 68 && alignof(Elements) == 4);
static_assert(sizeof(SSO_ID) == 8 && alignof(SSO_ID) == 4);
static_assert(sizeof(DwarfPlanetRecord) == 76 && alignof(DwarfPlanetRecord) == 4);

// The store of dwarf planet records. All instances share one process-wide array, which is loaded
// from "catalogs:Planets&Moons:DwarfPlanets.bin" and written back whole when an instance is
// destroyed after any change. The file is nothing but 76-byte records one after another. Callers
// use the instance of GetReader.
class KVUTILS_API DwarfPlanetsIO {
 public:
  // Loads the file into the array if the array is empty: the file that KelvarisPath::GetPath finds,
  // in file order; a piece shorter than a record at its end is ignored. A file that is missing or
  // cannot be opened leaves the array empty, without a message. Throws MException (code 2) when the
  // system fails to read from the file (the records read until then stay in the array), MException
  // (code 0) when the folders cannot be determined, and std::bad_alloc, with the array empty.
  DwarfPlanetsIO();

  // An instance holds no data: nothing is copied and nothing is loaded.
  DwarfPlanetsIO(const DwarfPlanetsIO& other);
  DwarfPlanetsIO& operator=(const DwarfPlanetsIO& other);

  // If ms_IsChanged is set, writes the whole array to the path of KelvarisPath::GetWorkPath for the
  // writable folder, whose folders are made. A file that cannot be created is reported to
  // PrintDebugString; for a path over 259 bytes nothing is written and nothing reported. Callers
  // rely on every later destruction of an instance writing the file again: neither the array nor
  // ms_IsChanged is cleared. No exception leaves the destructor: where the system refuses to write,
  // the file ends there.
  virtual ~DwarfPlanetsIO();

  // Copies the elements of the first record with the object number of `id` to *out and returns
  // true; false, with *out untouched, when there is none.
  virtual bool Get(Elements* out, const SSO_ID& id);

  // Overwrites the first record with the object number of `rec` by `rec`, its id.hostField
  // included, or appends `rec` when there is none. Sets ms_IsChanged. The result is the number of
  // records afterwards.
  virtual int Set(const DwarfPlanetRecord& rec);

  static std::vector<DwarfPlanetRecord> ms_DwarfPlanets;  // in file order, new records last
  static bool ms_IsChanged;                               // set by Set, never reset
};

// The instance of the process, made by the first call (thread-safe) and destroyed, which saves the
// records, when the library is unloaded. What the constructor throws leaves this call. The next
// call then tries again, but loads nothing when the failed one left records in the array. Never
// null.
KVUTILS_API DwarfPlanetsIO* GetReader();

#endif  // KVUTILS_UTILS_ASTRO_ASTRO_H_
