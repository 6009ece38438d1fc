// Files of every format that the library reads, cut off at each byte and damaged at random: what is
// loaded is a part of what is there. KVUTILS_DAMAGES is the number of damages of each format.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "tests/faults/operations.h"
#include "tests/paths/shell_stand_in.h"
#include "tests/support/sandbox.h"
#include "utils/astro/astro.h"
#include "utils/download/download.h"
#include "utils/files/files.h"
#include "utils/paths/paths.h"
#include "utils/text/text.h"

namespace {

using kv::test::ReadBytes;
using kv::test::WriteBytes;
using Texts = std::vector<std::string>;

int Damages() {
  const char* count = std::getenv("KVUTILS_DAMAGES");
  return count == nullptr ? 400 : std::atoi(count);
}

std::size_t LinesOf(std::string_view text) {
  return 1 + static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n'));
}

// One to four bytes changed, taken out, put in or repeated.
std::string Damaged(std::string text, std::mt19937& random) {
  const auto below = [&random](std::size_t limit) { return random() % limit; };
  for (auto edits = 1 + below(4); edits > 0; --edits) {
    const std::size_t place = below(text.size() + 1);
    const char byte = below(4) == 0 ? "\0\n}!\t\r\x1A;"[below(8)] : static_cast<char>(random());
    switch (below(4)) {
      case 0:
        text.erase(place, 1 + below(8));
        break;
      case 1:
        text.insert(place, 1 + below(300), byte);
        break;
      case 2:
        text.insert(place, text.substr(place, below(80)));
        break;
      default:
        if (place < text.size()) text[place] = byte;
    }
  }
  return text;
}

class TornFiles : public kv::test::Sandbox {
 protected:
  // load(content) reads the content, checks what holds of any, and gives the records as text.
  template <typename Load>
  void Tear(const std::string& whole, Load load) {
    const Texts all = load(whole);
    EXPECT_FALSE(all.empty());
    for (std::size_t size = 0; size <= whole.size(); ++size) {
      SCOPED_TRACE("cut at " + std::to_string(size));
      ExpectPart(load(whole.substr(0, size)), all);
    }
    std::mt19937 random(20240229);
    for (int i = 0; i < Damages(); ++i) {
      SCOPED_TRACE("damage " + std::to_string(i));
      load(Damaged(whole, random));
      if (HasFailure()) break;
    }
  }

 private:
  // All records but the one that is torn are those of the whole file.
  static void ExpectPart(const Texts& part, const Texts& all) {
    EXPECT_LE(part.size(), all.size());
    const auto torn = std::count_if(part.begin(), part.end(), [&all](const std::string& record) {
      return std::find(all.begin(), all.end(), record) == all.end();
    });
    EXPECT_LE(torn, 1);
  }
};

TEST_F(TornFiles, RegistryGivesNoMoreEntriesThanRecords) {
  const std::string saved = Writable() + "download\\files_crc_sum.dat";
  std::string whole;
  for (char i = 1; i <= 20; ++i) whole += std::string(4, i) + std::string(4, '\x7F');
  Tear(whole, [&saved](const std::string& content) {
    WriteBytes(saved, content);
    { const CheckFileVersion versions; }
    const std::string written = kv::test::FileExists(saved) ? ReadBytes(saved) : "";
    EXPECT_EQ(written.size() % 8, 0U);
    EXPECT_LE(written.size(), (content.size() + 7) / 8 * 8);
    Texts records;
    for (std::size_t i = 0; i < written.size(); i += 8) records.push_back(written.substr(i, 8));
    return records;
  });
}

TEST_F(TornFiles, RecordsOfDwarfPlanetsAreTheWholeOnes) {
  std::string whole;
  for (char i = 1; i <= 4; ++i) whole += std::string(sizeof(DwarfPlanetRecord), i);
  Tear(whole, [](const std::string& content) {
    WriteBytes("catalogs\\Planets&Moons\\DwarfPlanets.bin", content);
    DwarfPlanetsIO::ms_DwarfPlanets.clear();
    const DwarfPlanetsIO reader;
    Texts records;
    for (const DwarfPlanetRecord& record : DwarfPlanetsIO::ms_DwarfPlanets) {
      records.emplace_back(reinterpret_cast<const char*>(&record), sizeof record);
    }
    EXPECT_EQ(records.size(), content.size() / sizeof(DwarfPlanetRecord));
    return records;
  });
}

TEST_F(TornFiles, ListsOfTheInstallationAreNoLongerThanTheFile) {
  Tear("!c\nm1\nm2\n}\nt1\n}\nw1\r\nw2\n}\n", [](const std::string& content) {
    WriteBytes("media\\fileutils.ini", content);
    kv::test::ForgetEverything();
    const KelvarisPath resolver;
    Texts lines = KelvarisPath::ms_CDFolders;
    for (const Texts& list : {KelvarisPath::ms_ThemePaths, KelvarisPath::ms_WritablePaths}) {
      lines.insert(lines.end(), list.begin(), list.end());
    }
    EXPECT_LE(lines.size(), LinesOf(content));
    for (const std::string& line : lines) EXPECT_LE(line.size(), 255U);
    return lines;
  });
}

TEST_F(TornFiles, AddOnListIsNoLongerThanTheFile) {
  KelvarisPath resolver;
  Tear("pack\\\n! c\nCatalogs:A.txt\nmedia:b\nc\n}\n", [&resolver](const std::string& content) {
    WriteBytes("feature_pack\\feature_pack_filelist.txt", content);
    KelvarisPath::sFeaturePackFileNames.clear();
    KelvarisPath::sFeaturePackFolder.clear();
    resolver.GetPath("nowhere");
    const Texts& names = KelvarisPath::sFeaturePackFileNames;
    EXPECT_LE(names.size(), LinesOf(content));
    Texts lines = {KelvarisPath::sFeaturePackFolder};
    lines.insert(lines.end(), names.begin(), names.end());
    for (const std::string& line : lines) EXPECT_LE(line.size(), 255U);
    return lines;
  });
}

TEST_F(TornFiles, TextFileGivesItsLinesAndNumbers) {
  Tear("\xEF\xBB\xBFone\n! c\n\n1 2 3\n0x10 7e2\n}\nend\n", [](const std::string& content) {
    WriteBytes("t.txt", content);
    MTextFile file(true);
    EXPECT_TRUE(file.Open("t.txt", false));
    Texts lines;
    char line[64];
    while (file.Readln(line, sizeof line) != -1) lines.emplace_back(line);
    EXPECT_LE(lines.size(), LinesOf(content));
    file.SeekToBegin();
    double values[2] = {};
    for (int rows = 0; file.Readln(values, 2) != -1; ++rows) EXPECT_LE(rows, 1000);
    file.SeekToBegin();
    EXPECT_LE(std::abs(file.GetNumberLines(true)), static_cast<int>(lines.size()));
    return lines;
  });
}

TEST_F(TornFiles, TabColumnHasNoMoreFieldsThanLines) {
  Tear("a\tb\nc\t\td\n!x\ty\nlonger\tfield\tand more\n}\n", [](const std::string& content) {
    WriteBytes("table.txt", content);
    Texts fields;
    ReadTabSeparatedColumn(fields, "table.txt", 1);
    EXPECT_LE(fields.size(), LinesOf(content));
    for (const std::string& field : fields) EXPECT_LE(field.size(), 511U);
    return fields;
  });
}

TEST_F(TornFiles, Utf8FileIsLoadedWholeOrNot) {
  const std::string whole = "a\xC3\xA9\xE2\x82\xAC\xF0\x9F\x8C\x8D z";
  const auto load = [](const std::string& content) {
    WriteBytes("u.txt", content);
    std::string text = "+";
    const bool isLoaded = loadUTF8StringFromFile(text, "u.txt");
    EXPECT_EQ(text, isLoaded ? "+" + content : "+");
    return Texts(isLoaded ? 1 : 0);
  };
  Tear(whole, load);
}

// Descriptors and the list of languages tell what is deleted: never what is elsewhere.
TEST_F(TornFiles, RemovalGoesNowhereElse) {
  const kv::test::WideShellStandIn shell;
  WriteBytes(Root() + "kept\\a.txt", "a");
  WriteBytes("a.txt", "a");
  const KelvarisPath resolver;
  Tear("all;media\\find;not_delete;a.txt,b.txt\n", [&](const std::string& content) {
    WriteBytes(Writable() + "media\\find\\a.txt", "a");
    WriteBytes("media\\supported_languages.ini", "en\n" + content);
    const char* const descriptors[] = {content.c_str(), "base;media"};
    KvFoldersRemover(descriptors, 2).Run();
    EXPECT_TRUE(kv::test::FileExists(Root() + "kept\\a.txt"));
    EXPECT_TRUE(kv::test::FileExists("a.txt"));
    for (const auto& request : shell.Requests()) {
      const std::string path = kv::test::Narrow(request.from.c_str()) + "\\";
      EXPECT_TRUE(path.starts_with(Writable())) << path;
    }
    return Texts(1);
  });
}

}  // namespace
