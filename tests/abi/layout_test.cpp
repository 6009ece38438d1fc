// Sizes and offsets that hosts compiled against the library rely on.
#include <gtest/gtest.h>

#include <cstddef>
#include <type_traits>

#include "utils/astro/astro.h"
#include "utils/files/files.h"
#include "utils/paths/paths.h"
#include "utils/platform/platform.h"
#include "utils/text/text.h"

namespace {

static_assert(sizeof(long) == 4 && sizeof(wchar_t) == 2 && sizeof(void*) == 8);

static_assert(sizeof(Elements) == 68 && alignof(Elements) == 4);
static_assert(sizeof(SSO_ID) == 8);
static_assert(sizeof(DwarfPlanetRecord) == 76 && alignof(DwarfPlanetRecord) == 4);
static_assert(offsetof(DwarfPlanetRecord, elements) == 0);
static_assert(offsetof(DwarfPlanetRecord, id) == 68);
static_assert(std::is_trivially_copyable_v<DwarfPlanetRecord>);

static_assert(sizeof(KelvarisPath::ms_WorkDir) == 260);
static_assert(sizeof(SetupType) == 4 && kSetupTypeUnknown == -1);

static_assert(std::is_polymorphic_v<MException> && std::has_virtual_destructor_v<MException>);
static_assert(std::is_polymorphic_v<MFile> && std::has_virtual_destructor_v<MFile>);
static_assert(!std::is_polymorphic_v<MTextFile>);
static_assert(std::has_virtual_destructor_v<KelvarisPath>);
static_assert(std::has_virtual_destructor_v<DwarfPlanetsIO>);
static_assert(std::is_abstract_v<Comparator> && !std::has_virtual_destructor_v<Comparator>);

// Members of the file classes, in the order in which a debugger or a derived class meets them.
class FileFields : public MFile {
 public:
  bool AreInOrder() const {
    return Before(&m_Path, &m_Handle) && Before(&m_Handle, &m_State) &&
           Before(&m_State, &m_OpenCount) && Offset(&m_Path) == sizeof(void*);
  }

 private:
  static bool Before(const void* first, const void* second) { return first < second; }
  std::size_t Offset(const void* member) const {
    return static_cast<std::size_t>(static_cast<const char*>(member) -
                                    reinterpret_cast<const char*>(this));
  }
};

TEST(Layout, FileKeepsTheOrderOfItsFields) { EXPECT_TRUE(FileFields().AreInOrder()); }

TEST(Layout, DwarfPlanetStoreHoldsNoDataOfItsOwn) {
  EXPECT_EQ(sizeof(DwarfPlanetsIO), sizeof(void*));
}

}  // namespace
