// The sections of the tour that write nothing: names and letters, and the clock of an animation.

#include "examples/tour/frames.h"
#include "examples/tour/letters.h"
#include "examples/tour/name_order.h"
#include "tests/examples/tour_sections_fixture.h"
#include "utils/paths/paths.h"

#include <gtest/gtest.h>

#include <cctype>
#include <cstdio>
#include <string>

namespace {

using kv::test::FailureOf;
using kv::test::ReadBytes;
using kv::test::RemoveFile;
using kv::test::WriteBytes;
using TourNames = kv::test::TourSections;
using TourFrames = kv::test::TourSections;

TEST_F(TourNames, AreSortedByTheirNumbers) {
  EXPECT_EQ(
      tour::NameOrderText(),
      "  strcmp                        CompareStringWithNumber\n"
      "  M 1                           M 1                           Crab Nebula\n"
      "  M 101                         M 8                           Lagoon Nebula\n"
      "  M 104                         M 13                          Great Cluster in Hercules\n"
      "  M 13                          M 31                          Andromeda Galaxy\n"
      "  M 31                          M 42                          Orion Nebula\n"
      "  M 42                          m 57                          Ring Nebula\n"
      "  M 8                           M 101                         Pinwheel Galaxy\n"
      "  m 57                          M 104                         Sombrero Galaxy\n"
      "\n"
      "  strcmp                        SortAsterNameWithNumber       CompareAsterNameWithNumber\n"
      "  (1) Ceres                     (1) Ceres                     (1) Ceres\n"
      "  (10) Hygiea                   (2) Pallas                    (10) Hygiea\n"
      "  (2) Pallas                    (4) Vesta                     16 Psyche\n"
      "  (4) Vesta                     (10) Hygiea                   (2) Pallas\n"
      "  (433) Eros                    16 Psyche                     25143 Itokawa\n"
      "  (99942) Apophis               (433) Eros                    (4) Vesta\n"
      "  16 Psyche                     25143 Itokawa                 (433) Eros\n"
      "  25143 Itokawa                 (99942) Apophis               (99942) Apophis\n"
      "  The one goes by the number alone, the other by the text without its parentheses.\n");
}

TEST_F(TourNames, LoseTheirMarkersAndAccents) {
  EXPECT_EQ(tour::LettersText(),
            "  media:stars.txt           ConvertStringWithGreek\n"
            "  ###000 Cen                alf Cen                   Rigil Kentaurus\n"
            "  ###001 Per                bet Per                   Algol\n"
            "  ###011 Cep                mu Cep                    Herschel's Garnet Star\n"
            "  ###014 Cet                omi Cet                   Mira\n"
            "  ###017 Oct                sig Oct                   Polaris Australis\n"
            "  A marker takes the three characters behind it: \"###00 Cen\" is \"alfCen\".\n"
            "\n"
            "  media:accents.txt         FromDiacritic\n"
            "  Großer Bär                GroSSer Bar               Ursa Major in German\n"
            "  Béta Centauri             Beta Centauri             beta Centauri in Hungarian\n"
            "  Boötes                    Bootes                    the Herdsman in Latin\n"
            "  Lièvre                    Lievre                    Lepus in French\n"
            "  Éridan                    Éridan                    Eridanus in French\n"
            "  The capital É is not in the table of accented letters and stays.\n");
}

TEST_F(TourNames, ComeFromTheCopyOfTheUser) {
  WriteBytes(Writable() + "media\\stars.txt", "###023 X\n\n###024###00\n");
  const std::string text = tour::LettersText();
  EXPECT_TRUE(kv::test::Contains(text,
                                 "\n  ###023 X                  ome X                     \n"
                                 "  ###024###00               alf                       \n"))
      << text;
}

TEST_F(TourNames, FailWithoutTheirFiles) {
  const struct {
    const char* file;
    std::string (*section)();
  } kRows[] = {{"messier.txt", tour::NameOrderText},
               {"minor_planets.txt", tour::NameOrderText},
               {"stars.txt", tour::LettersText},
               {"accents.txt", tour::LettersText}};
  for (const auto& row : kRows) {
    SCOPED_TRACE(row.file);
    const std::string file = Work() + "media\\" + row.file;
    const std::string content = ReadBytes(file);
    WriteBytes(file, "! a comment alone\n");
    EXPECT_EQ(FailureOf(row.section), std::string("media:") + row.file + " is missing or empty");
    RemoveFile(file);
    KelvarisPath::ClearFileNamesStorage();
    EXPECT_EQ(FailureOf(row.section), std::string("media:") + row.file + " is missing or empty");
    WriteBytes(file, content);
  }
}

// What was measured, as one text: each run of digits as "#".
std::string WithoutDigits(const std::string& text) {
  std::string result;
  for (const char c : text) {
    const bool isDigit = std::isdigit(static_cast<unsigned char>(c)) != 0;
    if (!isDigit || !result.ends_with('#')) result += isDigit ? '#' : c;
  }
  return result;
}

std::string WithoutBlanks(std::string text) {
  std::erase(text, ' ');
  return text;
}

TEST_F(TourFrames, BeginInTurnAndStandStill) {
  const std::string text = tour::FramesText();
  EXPECT_EQ(WithoutBlanks(WithoutDigits(text)),
            "Framebeginsat,insecondsafterthelastoneitswork\n"
            "##.#-#.#ms\n##.##.#ms#.#ms\n##.##.#ms#.#ms\n##.##.#ms#.#ms\n##.##.#ms#.#ms\n"
            "Secondscountfromtheloadingofthelibrary.InsideaframeAnimationIntervalstands\n"
            "still:allthatisdrawninitseesonetime.\n");
  double last = 0.0;
  std::size_t line = text.find('\n') + 1;
  for (int number = 1; number <= 5; ++number, line = text.find('\n', line) + 1) {
    SCOPED_TRACE(number);
    int printedNumber = 0;
    double begin = 0.0;
    ASSERT_EQ(std::sscanf(text.c_str() + line, "%d %lf", &printedNumber, &begin), 2);
    EXPECT_EQ(printedNumber, number);
    EXPECT_GE(begin, last + (number == 1 ? 0.0 : 0.0199));
    last = begin;
  }
}

}  // namespace
