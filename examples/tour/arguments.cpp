#include "examples/tour/arguments.h"

#include <algorithm>
#include <iterator>
#include <string_view>

#include "examples/tour/format_text.h"

namespace tour {

const char kHelp[] =
    "usage: tour [DATE] [--zone ZONE] [--language CODE]\n"
    "\n"
    "Tells where the dwarf planets stand, from the data of the sample installation in the current\n"
    "folder, and where each data file was found.\n"
    "\n"
    "  DATE, --date DATE  2026-11-21, 2026-11-21T18:30 or 2026-11-21T18:30:15, in UTC, from 1800 "
    "to\n"
    "                     2199; the present when left out\n"
    "  --zone ZONE        the observer's time zone, such as Europe/Berlin; that of "
    "media:observer.txt\n"
    "                     when left out\n"
    "  --language CODE    en, de, fr, ru, es, pt-PT, pt, it, nl, zh or ja; en when left out\n"
    "  --help             this text\n"
    "\n"
    "Each run notes its pick of the night in the store of dwarf planets, which is saved to the\n"
    "folder Kelvaris_9 of your documents and is read from there by the next run.\n";

namespace {

constexpr std::string_view kLanguages[] = {"en", "de", "fr", "ru", "es", "pt-PT",
                                           "pt", "it", "nl", "zh", "ja"};

bool SetDate(const std::string& value, Arguments& arguments, std::string& complaint) {
  if (arguments.time) {
    complaint = "the date is given twice";
    return false;
  }
  arguments.time = ParseCivilTime(value);
  if (!arguments.time) {
    complaint = FormatText(
        "\"%.40s\" is not a date like 2026-11-21 or 2026-11-21T18:30:00 between %d and %d",
        value.c_str(), kFirstYear, kLastYear);
  }
  return arguments.time.has_value();
}

bool SetOption(const std::string& option, const std::string& value, Arguments& arguments,
               std::string& complaint) {
  if (option == "--date") return SetDate(value, arguments, complaint);
  if (option == "--zone") {
    arguments.zone = value;
    return true;
  }
  arguments.language = value;
  if (std::find(std::begin(kLanguages), std::end(kLanguages), value) != std::end(kLanguages)) {
    return true;
  }
  complaint = FormatText("\"%.40s\" is not a language of the library", value.c_str());
  return false;
}

}  // namespace

bool ParseArguments(int argc, const char* const* argv, Arguments& arguments,
                    std::string& complaint) {
  for (int i = 1; i < argc; ++i) {
    const std::string argument = argv[i];
    if (argument == "--help" || argument == "-h") {
      arguments.help = true;
    } else if (argument == "--date" || argument == "--zone" || argument == "--language") {
      if (i + 1 == argc) {
        complaint = argument + " needs a value";
        return false;
      }
      if (!SetOption(argument, argv[++i], arguments, complaint)) return false;
    } else if (argument.starts_with("-")) {
      complaint = FormatText("unknown option \"%.40s\"", argument.c_str());
      return false;
    } else if (!SetDate(argument, arguments, complaint)) {
      return false;
    }
  }
  return true;
}

}  // namespace tour
