// ReadTabSeparatedColumn: one field of each line of a table.
#include <climits>
#include <string>
#include <vector>

#include "tests/files/binary_file_fixture.h"
#include "tests/support/failing_system.h"
#include "tests/support/held_file.h"

namespace {

using kv::test::CreateFolders;
using kv::test::RemoveFile;
using kv::test::WriteBytes;

using Column = std::vector<std::string>;

class TabColumn : public kv::test::Sandbox {
 protected:
  static Column Read(const std::string& table, int column) {
    WriteBytes("t.txt", table);
    Column out;
    const bool isAny = ReadTabSeparatedColumn(out, "t.txt", column);
    EXPECT_EQ(isAny, !out.empty());
    return out;
  }
};
class TabColumnIn : public kv::test::SandboxIn {};

TEST_F(TabColumn, HoldsTheFieldsOfItsNumber) {
  const struct {
    const char* what;
    const char* table;
    int column;
    Column fields;
  } rows[] = {
      {"two lines", "a\tb\nc\t\td\n", 1, {"b", "d"}},
      {"the first field", "a\tb\nc\t\td\n", 0, {"a", "c"}},
      {"behind all fields", "a\tb\nc\t\td\n", 2, {}},
      {"lines of one field", "a\nb\tc\nd\n", 1, {"c"}},
      {"the last line unended", "a\tb", 1, {"b"}},
      {"lines ended as on Windows", "a\tb\r\nc\td\r\n", 1, {"b", "d"}},
      {"a byte-order mark",
       "\xEF\xBB\xBF"
       "a\tb\n",
       0,
       {"a"}},
      {"a run of tabs", "a\t\t\t\tb\t\tc\n", 2, {"c"}},
      {"tabs at both ends", "\t\ta\tb\t\t\n", 0, {"a"}},
      {"tabs at both ends, behind", "\t\ta\tb\t\t\n", 2, {}},
      {"spaces at both ends", "  a\tb  \n", 1, {"b"}},
      {"spaces at inner ends", "a \t b\tc d\n", 0, {"a "}},
      {"spaces at inner ends", "a \t b\tc d\n", 1, {" b"}},
      {"spaces inside", "a \t b\tc d\n", 2, {"c d"}},
      {"a field of spaces", "a\t  \tb\n", 1, {"  "}},
      {"comments", "!x\ty\n  ! x\ty\na\tb\n!\nc\td", 1, {"b", "d"}},
      {"no comments", "a!\t!b\n", 1, {"!b"}},
      {"blank lines", "\n\r\n \t \na\tb\n\n\nc\td\n", 1, {"b", "d"}},
      {"an end marker", "a\tb\n}\nc\td\n", 1, {"b"}},
      {"an end marker with more", "a\tb\n}x\ty\nc\td\n", 1, {"b"}},
      {"an end marker behind spaces", "a\tb\n \t} x\nc\td\n", 1, {"b"}},
      {"an end marker at once", "}\na\tb\n", 0, {}},
      {"no end marker", "a}\t}b\nc\td\n", 1, {"}b", "d"}},
      {"other scripts", "Марс\tкрасный\n火星\t赤🌍\n", 1, {"красный", "赤🌍"}},
      {"bytes that are no UTF-8", "\x80\t\xFF\n", 1, {"\xFF"}},
      {"no lines", "", 0, {}},
      {"comments alone", "!a\n!b\n", 0, {}},
      {"a negative column", "a\tb\nc\td\n", -1, {}},
      {"the smallest column", "a\tb\nc\td\n", INT_MIN, {}},
      {"the greatest column", "a\tb\nc\td\n", INT_MAX, {}},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.what);
    EXPECT_EQ(Read(row.table, row.column), row.fields);
  }
}

TEST_F(TabColumn, CutsLinesAt511Bytes) {
  const struct {
    const char* what;
    std::string table;
    Column fields;
  } rows[] = {
      {"511 bytes", std::string(509, 'x') + "\tb\nc\td\n", {"b", "d"}},
      {"512 bytes", std::string(509, 'x') + "\tbc\nc\td\n", {"b", "d"}},
      {"a tab at the end", std::string(510, 'x') + "\tb\nc\td\n", {"d"}},
      {"a tab behind", std::string(511, 'x') + "\tb\nc\td\n", {"d"}},
      {"a long field", "a\t" + std::string(600, 'x') + "\nc\td\n", {std::string(509, 'x'), "d"}},
      {"trimmed first", std::string(1000, ' ') + "a\tb" + std::string(1000, ' ') + "\n", {"b"}},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.what);
    EXPECT_EQ(Read(row.table, 1), row.fields);
  }
}

// The line of 4095 bytes ends within the second field; what follows is a line of its own.
TEST_F(TabColumn, ContinuesALineBeyond4095BytesAsAnother) {
  EXPECT_EQ(Read("a\tb" + std::string(4092, 'x') + "c\td\n", 1),
            (Column{"b" + std::string(508, 'x'), "d"}));
}

TEST_F(TabColumn, IsAppended) {
  WriteBytes("t.txt", "a\tb\nc\td\n");
  WriteBytes("empty.txt", "");
  Column out = {"before"};
  EXPECT_TRUE(ReadTabSeparatedColumn(out, "t.txt", 1));
  EXPECT_EQ(out, (Column{"before", "b", "d"}));
  EXPECT_TRUE(ReadTabSeparatedColumn(out, "t.txt", 0));
  EXPECT_EQ(out, (Column{"before", "b", "d", "a", "c"}));
  EXPECT_TRUE(ReadTabSeparatedColumn(out, "t.txt", 7)) << "what was there counts";
  EXPECT_TRUE(ReadTabSeparatedColumn(out, "t.txt", -1));
  EXPECT_TRUE(ReadTabSeparatedColumn(out, "empty.txt", 0));
  EXPECT_EQ(out, (Column{"before", "b", "d", "a", "c"}));
}

TEST_F(TabColumn, MayBeLong) {
  std::string table;
  for (int i = 0; i < 100'000; ++i) table += "x\t" + std::to_string(i) + "\ty\n";
  const Column fields = Read(table, 1);
  ASSERT_EQ(fields.size(), 100'000U);
  EXPECT_EQ(fields.front(), "0");
  EXPECT_EQ(fields[54'321], "54321");
  EXPECT_EQ(fields.back(), "99999");
}

TEST_F(TabColumn, IsThatOfTheFileThatTheNameResolvesTo) {
  const std::string places[] = {
      Work() + "media\\a.txt",
      Writable() + "media\\a.txt",
      Work() + "en\\media\\a.txt",
      Writable() + "en\\media\\a.txt",
  };
  for (const std::string& place : places) {
    SCOPED_TRACE(place);
    WriteBytes(place, "x\t" + place);
    Column out;
    EXPECT_TRUE(ReadTabSeparatedColumn(out, "media:a.txt", 1));
    EXPECT_EQ(out, Column{place});
  }
}

TEST_P(TabColumnIn, IsReadUnderAnyName) {
  WriteBytes(Work() + "media\\" + GetParam() + ".txt", "a\t" + GetParam());
  Column out;
  EXPECT_TRUE(ReadTabSeparatedColumn(out, ("media:" + GetParam() + ".txt").c_str(), 1));
  EXPECT_EQ(out, Column{GetParam()});
}
INSTANTIATE_TEST_SUITE_P(Scripts, TabColumnIn, testing::ValuesIn(kv::test::kFolderNames),
                         kv::test::FolderNameTag);

TEST_F(TabColumn, IsFalseForWhatNamesNoFileWhateverIsThere) {
  const std::string tooLong =
      std::string(100, 'a') + "\\" + std::string(100, 'b') + "\\" + std::string(100, 'c');
  WriteBytes("gone.txt", "a\tb");
  WriteBytes(tooLong, "a\tb");
  CreateFolders("folder");
  CreateFolders("en");
  Column out = {"before"};
  EXPECT_TRUE(ReadTabSeparatedColumn(out, "gone.txt", 7));
  RemoveFile("gone.txt");
  for (const char* name : {static_cast<const char*>(nullptr), "", ":", "missing.txt", "a\x80",
                           "folder", "folder:", "gone.txt", tooLong.c_str()}) {
    SCOPED_TRACE(testing::PrintToString(name).substr(0, 40));
    EXPECT_FALSE(ReadTabSeparatedColumn(out, name, 0));
    EXPECT_EQ(out, Column{"before"});
  }
}

TEST_F(TabColumn, IsFalseWhileAnotherProcessHoldsTheFile) {
  WriteBytes("t.txt", "a\tb");
  Column out = {"before"};
  {
    const kv::test::HeldFile held("t.txt");
    EXPECT_FALSE(ReadTabSeparatedColumn(out, "t.txt", 0));
  }
  EXPECT_EQ(out, Column{"before"});
  EXPECT_TRUE(ReadTabSeparatedColumn(out, "t.txt", 0));
  EXPECT_TRUE(kv::test::IsFree("t.txt"));
}

TEST_F(TabColumn, RaisesWhenTheFoldersCannotBeTold) {
  WriteBytes("t.txt", "a\tb\n");
  Column out = {"before"};
  {
    const kv::test::ImportPatch patch("GetCurrentDirectoryW", kv::test::TellNoFolder);
    EXPECT_EQ(kv::test::Raised([&out] { ReadTabSeparatedColumn(out, "t.txt", 1); }, 0),
              "KelvarisPath::GetCDPath return false");
  }
  EXPECT_EQ(out, Column{"before"});
  EXPECT_EQ(Read("a\tb\n", 1), Column{"b"});
}

}  // namespace
