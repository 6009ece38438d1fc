// The text files of the sample installation.
#ifndef KVUTILS_EXAMPLES_TOUR_INSTALLATION_H_
#define KVUTILS_EXAMPLES_TOUR_INSTALLATION_H_

#include <string>
#include <vector>

namespace tour {

// Data names of what the tour reads. The add-on supplies the discoveries; the case of a name does
// not matter there.
inline constexpr char kListsName[] = "media:fileutils.ini";
inline constexpr char kObserverName[] = "media:observer.txt";
inline constexpr char kNamesName[] = "media:dwarf_names.txt";
inline constexpr char kDiscoveriesName[] = "media:Discoveries.txt";
inline constexpr char kRecordsName[] = "catalogs:Planets&Moons:DwarfPlanets.bin";
inline constexpr char kMoonsName[] = "catalogs:Planets&Moons:Moons.txt";
inline constexpr char kDeepSkyName[] = "media:messier.txt";
inline constexpr char kMinorPlanetsName[] = "media:minor_planets.txt";
inline constexpr char kStarsName[] = "media:stars.txt";
inline constexpr char kAccentsName[] = "media:accents.txt";
// What a server would send: a newer list of moons, and names of constellations in other languages.
inline constexpr char kNewMoonsName[] = "server:Moons.txt";
inline constexpr char kArchiveName[] = "server:constellations.zip";

struct ObjectName {
  unsigned number = 0;
  std::string name;
  std::string description;  // may be empty
};

struct Discovery {
  unsigned number = 0;
  std::string year;
  std::string discoverers;
};

struct Observer {
  std::string place = "an unnamed place";
  std::string zone = "UTC";
};

// What each file holds; empty lists and the defaults when it is missing. Rows that cannot be read
// are left out.
std::vector<ObjectName> ReadObjectNames();
std::vector<Discovery> ReadDiscoveries();
Observer ReadObserver();
// The tab-separated columns, one at least, of each line of a data file.
std::vector<std::vector<std::string>> ReadRows(const char* dataName);

}  // namespace tour

#endif  // KVUTILS_EXAMPLES_TOUR_INSTALLATION_H_
