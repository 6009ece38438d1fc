#include "examples/tour/arguments.h"

#include "examples/tour/format_text.h"

#include <algorithm>
#include <iterator>
#include <string_view>

namespace tour {

const char kHelp[] =
    "usage: tour [DATE] [--zone ZONE] [--language CODE] [--only HALF]\n"
    "\n"
    "Tells where the dwarf planets stand, from the data of the sample installation in the current\n"
    "folder, and where each data file was found. Then shows what the library does besides: a\n"
    "download is checked, an update installed, an archive unpacked, names are sorted and made\n"
    "plain, frames are timed, HTML is put on the clipboard.\n"
    "\n"
    "  DATE, --date DATE  2026-11-21, 2026-11-21T18:30 or 2026-11-21T18:30:15, in UTC, of the\n"
    "                     years 1800 to 2199; the present when left out\n"
    "  --zone ZONE        the observer's time zone, such as Europe/Berlin; that of\n"
    "                     media:observer.txt when left out\n"
    "  --language CODE    en, de, fr, ru, es, pt-PT, pt, it, nl, zh or ja; en when left out\n"
    "  --only HALF        \"places\", the dwarf planets, or \"services\", what the library does\n"
    "                     besides; both when left out\n"
    "  --help             this text\n"
    "\n"
    "Each run notes its pick of the night in the store of dwarf planets, which is saved to the\n"
    "folder Kelvaris_9 of your documents and is read from there by the next run. The services\n"
    "write to a folder below the one for temporary files and remove it at the end; the text that\n"
    "was on the clipboard is put back.\n";

namespace {

constexpr std::string_view kLanguages[] = {"en", "de", "fr", "ru", "es", "pt-PT",
                                           "pt", "it", "nl", "zh", "ja"};

// Each of these functions makes one line of complaint, or none when all is well.
std::string SetDate(const std::string& value, Arguments& arguments) {
  if (arguments.time) return "the date is given twice";
  arguments.time = ParseCivilTime(value);
  if (arguments.time) return {};
  return Quoted(value) +
         FormatText(" is not a date like 2026-11-21 or 2026-11-21T18:30:00 between %d and %d",
                    kFirstYear, kLastYear);
}

std::string SetZone(const std::string& value, Arguments& arguments) {
  if (arguments.zone) return "--zone is given twice";
  arguments.zone = value;
  return {};
}

std::string SetLanguage(const std::string& value, Arguments& arguments) {
  if (arguments.language) return "--language is given twice";
  arguments.language = value;
  const bool isKnown =
      std::find(std::begin(kLanguages), std::end(kLanguages), value) != std::end(kLanguages);
  return isKnown ? std::string() : Quoted(value) + " is not a language of the library";
}

std::string SetOnly(const std::string& value, Arguments& arguments) {
  if (arguments.only) return "--only is given twice";
  arguments.only = value;
  if (value == kPlacesHalf || value == kServicesHalf) return {};
  return Quoted(value) + " is neither places nor services";
}

struct Option {
  std::string_view name;
  std::string (*set)(const std::string& value, Arguments& arguments);
};
constexpr Option kOptions[] = {
    {"--date", SetDate}, {"--zone", SetZone}, {"--language", SetLanguage}, {"--only", SetOnly}};

// Takes the argument at `next` and the value behind it, if it needs one.
std::string Take(const std::vector<std::string>& texts, std::size_t& next, Arguments& arguments) {
  const std::string& text = texts[next++];
  if (text == "--help" || text == "-h") {
    arguments.help = true;
    return {};
  }
  for (const Option& option : kOptions) {
    if (text != option.name) continue;
    if (next == texts.size() || texts[next].starts_with("--")) return text + " needs a value";
    return option.set(texts[next++], arguments);
  }
  if (text.starts_with("-")) return "unknown option " + Quoted(text);
  return SetDate(text, arguments);
}

}  // namespace

bool ParseArguments(const std::vector<std::string>& texts, Arguments& arguments,
                    std::string& complaint) {
  complaint.clear();
  for (std::size_t next = 0; next < texts.size() && complaint.empty();) {
    complaint = Take(texts, next, arguments);
  }
  return complaint.empty();
}

}  // namespace tour
