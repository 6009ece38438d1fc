#include "tests/support/kept_blocks.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string_view>

#ifdef KVUTILS_SANITIZE
#include "tests/sanitizer/living_blocks.h"
#endif

namespace kv::test {

#ifdef KVUTILS_SANITIZE

namespace {

using sanitizer::LivingBlock;

// State that lives as long as the process: an object, or without a name any object, of a source. A
// module in the place of a source is code in it that is not instrumented.
struct ProcessState {
  std::string_view source;  // its end
  std::string_view object;
  std::string_view reason;
};

constexpr char kRoles[] = "utils/paths/folder_roles.cpp";

constexpr ProcessState kProcessState[] = {
    {kRoles, "ms_FileNamesStorage", "remembered paths"},
    {kRoles, "ms_LanguageFolder", "the language of the installation"},
    {kRoles, "ms_CDFolders", "the folders of the medium"},
    {kRoles, "ms_ThemePaths", "where themes are looked for"},
    {kRoles, "ms_WritablePaths", "where the user's files are looked for"},
    {kRoles, "sFeaturePackFolder", "the add-on, which the host sets"},
    {kRoles, "sFeaturePackFileNames", "the files of the add-on"},
    {"utils/platform/time_zone.cpp", "cachedZone", "the zone of the last question"},
    {"utils/platform/parameters.cpp", "sender", "the parameters of the application"},
    {"utils/astro/dwarf_planets.cpp", "ms_DwarfPlanets", "the records, which the host may read"},
    {"kvutils.dll", "", "ICU: zones, and what it has loaded of its data"},
    {"_test.cpp", "", "what a case notes in objects of its own source"},
    {"program", "", "GoogleTest: results and traces"},
};

std::string_view ViewOf(const char* text) { return text == nullptr ? "" : text; }

bool IsProcessState(const sanitizer::Holder& holder) {
  return std::any_of(std::begin(kProcessState), std::end(kProcessState),
                     [&](const ProcessState& state) {
                       return ViewOf(holder.source).ends_with(state.source) &&
                              (state.object.empty() || state.object == ViewOf(holder.object));
                     });
}

void ExpectKept(void*, const LivingBlock& block) {
  if (IsProcessState(block.holder)) return;
  if (block.holder.source == nullptr) {
    ADD_FAILURE() << block.size << " bytes are lost; asked for at " << block.caller;
  } else {
    ADD_FAILURE() << block.size << " bytes are held by \"" << ViewOf(block.holder.object)
                  << "\" of " << block.holder.source << "; asked for at " << block.caller;
  }
}

}  // namespace

void KeptBlocks::Start() {
  // GoogleTest's first trace of a thread starts another thread, with a block that it alone knows.
  { SCOPED_TRACE("before the case"); }
  count_ = sanitizer::KvasanBlockCount();
}
void KeptBlocks::ExpectNoneLost() const {
  sanitizer::KvasanVisitBlocks(count_, nullptr, ExpectKept);
}

#else

void KeptBlocks::Start() {}
void KeptBlocks::ExpectNoneLost() const {}

#endif

}  // namespace kv::test
