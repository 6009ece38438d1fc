// What is removed on two fixed occasions, in the order of removal.
#include "utils/paths/paths.h"

#include <cstddef>

namespace {

constexpr const char* kDownloads[] = {
    R"(all;catalogs\asteroids)",
    R"(all;catalogs\comets)",
    R"(all;catalogs\spacecraft)",
    R"(base;download)",
    R"(all;media\find;not_delete;find_stars_usno.kwd)",
};

constexpr const char* kDataAfterError[] = {
    R"(all;catalogs\observed_objects)",
    R"(all;catalogs\Planets&Moons)",
    R"(all;catalogs\asteroids)",
    R"(all;catalogs\comets)",
    R"(all;catalogs\spacecraft)",
    R"(base;workspaces)",
    R"(base;.\;delete;home_params.ini,settings.ini,user.wsi)",
    R"(base;media\find;not_delete;find_stars_usno.kwd)",
    R"(base;media\fonts)",
    R"(base;media\information)",
    R"(base;media\settings)",
    R"(base;media\win_gui)",
    R"(languages;.\)",
};

template <std::size_t Count>
void Remove(const char* const (&descriptors)[Count]) {
  KvFoldersRemover(descriptors, static_cast<int>(Count)).Run();
}

}  // namespace

void deleteDownloads() { Remove(kDownloads); }

void deleteDataAfterError() { Remove(kDataAfterError); }
