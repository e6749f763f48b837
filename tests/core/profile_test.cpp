#include <gtest/gtest.h>

#include <chrono>
#include <initializer_list>
#include <memory>
#include <thread>

#include "core/host/ProfileFunctions.h"
#include "core/host/ProfileText.h"
#include "core/text/Text.h"
#include "tests/world/TestFolder.h"

namespace quillon {
namespace {

using namespace std::string_literals;
using Name = ProfileFunctions::Name;

struct Entry {
  std::string section;
  Name key, value;
};

/// The values of `keys` with a bar between them; "-" stands for none.
std::string Values(const std::string& file, const std::string& section,
                   std::initializer_list<std::string> keys) {
  const ProfileText text(file);
  std::string values;
  for (const auto& key : keys) values += (values.empty() ? "" : "|") + text.Value(section, key).value_or("-");
  return values;
}

/// Writes the entries as the profile functions do; a new reader has to find the same.
void ExpectEdits(const std::string& before, std::initializer_list<Entry> entries, const std::string& after) {
  ProfileText text(before);
  for (const auto& [section, key, value] : entries) {
    const auto old = text.Bytes();
    const bool changed = !key    ? text.DeleteSection(section)
                         : value ? text.SetValue(section, *key, *value)
                                 : text.DeleteKey(section, *key);
    EXPECT_EQ(changed, text.Bytes() != old) << '[' << section << "] " << key.value_or("");
  }
  EXPECT_EQ(text.Bytes(), after);
  const ProfileText reread(after);
  EXPECT_EQ(text.SectionNames(), reread.SectionNames());
  for (const auto& [section, key, value] : entries)
    EXPECT_EQ(text.Value(section, key.value_or("")), reread.Value(section, key.value_or(""))) << section;
}

TEST(ProfileText, ReadsValuesWithoutBlanksAndOnePairOfQuotes) {
  const auto* file = "[S]\r\na=  v \t\r\nb=\r\nc= \t\r\nd=a=b\r\ne=a ; b\r\nf=%PATH%\\n\r\n";
  EXPECT_EQ(Values(file, "S", {"a", "b", "c", "d", "e", "f", "g"}), "v|||a=b|a ; b|%PATH%\\n|-");
  EXPECT_EQ(Values(file, "T", {"a"}), "-");
  file =
      "[S]\r\na=\"v\"\r\nb='v'\r\nc=\"v'\r\nd=\"v\r\ne=\"\r\nf=\"\"\r\ng=\"\"\"\r\nh=  \" v \"  \r\n"
      "i='\"v\"'\r\nj=\"a.exe\" -x \"b\"\r\n";
  EXPECT_EQ(Values(file, "S", {"a", "b", "c", "d", "e", "f", "g", "h", "i", "j"}),
            "v|v|\"v'|\"v|\"||\"| v |\"v\"|a.exe\" -x \"b");
}

TEST(ProfileText, MatchesNamesWithoutCaseAndOuterBlanks) {
  const auto* file = "\t[ My  Route ] ; note\r\n  my key\t= 1 \r\n[Été]\r\né=2\r\n\xE9=3\r\n";
  EXPECT_EQ(Values(file, " MY  ROUTE\t", {"\tMy Key ", "mykey"}), "1|-");
  EXPECT_EQ(Values(file, "My Route", {"my key"}), "-");
  EXPECT_EQ(Values(file, "éTÉ", {"É", "\xE9", "\xC9"}), "2|3|-");
}

TEST(ProfileText, TakesTheFirstOfEqualNamesAndOnlyKeysOfSections) {
  const auto* file =
      "x=1\r\n[A]\r\nk=1\r\nK=2\r\nlone\r\n;c=1\r\n#h=1\r\n=e\r\n[B\r\n[a]\r\nk=3\r\nj=4\r\n[]\r\nk=5\r\n";
  EXPECT_EQ(Values(file, "A", {"k", "j", "lone", ";c", "#h", ""}), "1|-|-|-|1|e");
  EXPECT_EQ(Values(file, "", {"x", "k"}) + Values(file, "B", {"k"}), "-|5-");
  file = "[Foo [v2]]\r\nk=1\r\n[C:\\a;b=c\\(2)\\]\r\nk=2\r\n[b]=3\r\nk=4\r\n";
  EXPECT_EQ(Values(file, "foo [V2]", {"k"}) + Values(file, "Foo [v2", {"k"}), "1-");
  EXPECT_EQ(Values(file, "C:\\A;b=c\\(2)\\", {"k"}) + Values(file, "b", {"k"}), "24");
}

TEST(ProfileText, ReadsAllLineEndsAndEncodings) {
  for (const auto* end : {"\r\n", "\n", "\r", "\r\r\n", "\n\r"}) {
    const auto file = ReplaceAll("[A]\na=1\n\nb=2\n[B]\na=3", "\n", end);
    EXPECT_EQ(Values(file, "A", {"a", "b"}) + Values(file, "B", {"a", "b"}), "1|23|-");
  }
  EXPECT_EQ(Values("[A]\r\na=1\0x\r\n\0b=2\r\nc=3"s, "A", {"a", "b", "c"}), "1|-|3");
  EXPECT_EQ(Values("\xEF\xBB\xBF[A]\r\na=1\r\n[B]\r\n", "A", {"a"}), "-");
  EXPECT_EQ(Values("\xFE\xFF\0[\0A\0]\0\r\0\n\0a\0=\0\x31"s, "A", {"a"}), "-");
  EXPECT_EQ(Values(EncodeGameText("[É]\r\nk=é€Ж\r\n"), "\xE9", {"K"}), "\xE9\x80?");
  ExpectEdits(EncodeGameText("[A]\nЖ=1\n"), {{"A", "\xE9", "\x80"}, {"A", "\xC9", "é"}, {"\xC9", "", ""}},
              EncodeGameText("[A]\nЖ=1\né=Ã©\r\n[É]\r\n=\r\n"));
}

TEST(ProfileText, EditsInPlace) {
  ExpectEdits("", {{"B", "k", "1"}, {" A ", " k ", " 2 "}, {"b", "j", "\"3\""}, {"A", "", ""}, {"a", "", ""}},
              "[B]\r\nk=1\r\nj=\"3\"\r\n[A]\r\nk= 2 \r\n=\r\n");
  ExpectEdits("; top\n\n [A] x\n  a  =  1  \n; tail\r\n \r\n\n[B]\r\n\r\n",
              {{"A", "A", "2"}, {"a", "z", "3"}, {"B", "b", "4"}, {"C", "c", "5"}},
              "; top\n\n [A] x\n  a  =2\n; tail\r\nz=3\r\n \r\n\n[B]\r\nb=4\r\n\r\n[C]\r\nc=5\r\n");
  ExpectEdits("[A]\nb = \"1\" \nlone\n;c=1", {{"A", "b", "\"1\""}, {"A", "lone", "2"}, {"A", ";c", "3"}},
              "[A]\nb = \"1\" \nlone\n;c=1\r\nlone=2\r\n;c=3\r\n");
  ExpectEdits("[A]\r\na=1", {{"A", "a", "2"}}, "[A]\r\na=2\r\n");
  ExpectEdits("[A]\r\r\na=1\r\r\n", {{"A", "b", "2"}}, "[A]\r\r\na=1\r\r\nb=2\r\n");
  ExpectEdits("\xEF\xBB\xBF[A]", {{"A", "a", "1"}}, "\xEF\xBB\xBF[A]\r\n[A]\r\na=1\r\n");
  ExpectEdits("[A]\r\nb=1\0x\r\nc\0=2\r\n"s, {{"A", "a", "3"}}, "[A]\r\nb=1\0x\r\nc\0=2\r\na=3\r\n"s);
}

TEST(ProfileText, FindsWhatOddNamesAndValuesMakeOfTheText) {
  ExpectEdits("", {{"A", "x=y", "1"}, {"A", "x=y", "2"}, {"A", "x", "3"}}, "[A]\r\nx=3\r\nx=y=2\r\n");
  ExpectEdits("", {{"A", "k", "1\r\n[B]\r\nj=2"}, {"B", "j", "3"}}, "[A]\r\nk=1\r\n[B]\r\nj=3\r\n");
  ExpectEdits("", {{"A", "[k]", "1"}, {"A", "j", "2"}, {"k", "i", "3"}}, "[A]\r\nj=2\r\n[k]=1\r\ni=3\r\n");
  ExpectEdits("[A]\r\n[k=1\r\n", {{"A", "[k", "]"}, {"k=", "j", "2"}}, "[A]\r\n[k=]\r\nj=2\r\n");
  ExpectEdits("", {{"Foo [v2]", "k", "1"}, {"B", "k", "2"}, {"FOO [V2]", "k", "3"}},
              "[Foo [v2]]\r\nk=3\r\n[B]\r\nk=2\r\n");
}

TEST(ProfileText, Deletes) {
  const auto* const file = "x=0\r\n[A]\r\na=1\r\nb=2\r\nA=3\r\n\r\n[B]\r\na=4\r\n[a]\r\nc=5\r\n";
  ExpectEdits(file, {{"A", "a", {}}, {"B", "A", {}}, {"A", "c", {}}, {"C", "a", {}}, {"A", "a", "6"}},
              "x=0\r\n[A]\r\nb=2\r\nA=6\r\n\r\n[B]\r\n[a]\r\nc=5\r\n");
  ExpectEdits(file, {{"a", {}, "x"}, {"A", "d", "6"}}, "x=0\r\n[B]\r\na=4\r\n[a]\r\nc=5\r\nd=6\r\n");
  ExpectEdits("[A]\r\na=1\r\n", {{"A", "a", {}}, {"A", "a", "2"}, {"A", {}, {}}, {"A", {}, {}}}, "");
}

TEST(ProfileText, ListsAndReplacesSections) {
  ProfileText text("[ One ]\r\n; c\r\n\r\n a = 1 \r\nlone\r\nb=\"2\"\r\nb=3\r\n\r\n[Two]\r\n[one]\r\n=v\r\n");
  EXPECT_EQ(text.SectionNames(), "One\0Two\0one\0"s);
  EXPECT_EQ(text.KeyNames("ONE"), "a\0b\0b\0"s);
  EXPECT_EQ(text.SectionLines("One"), "a=1\0lone\0b=\"2\"\0b=3\0"s);
  text.ReplaceSection("one", "n=1\0m=2\0"s);
  text.ReplaceSection("New", "a=1\0"s);
  EXPECT_EQ(text.Bytes(), "[ One ]\r\nn=1\r\nm=2\r\n\r\n[Two]\r\n[one]\r\n=v\r\n[New]\r\na=1\r\n");
  EXPECT_EQ(text.Value("One", "M"), "2");
}

class ProfileFunctionsTest : public testing::Test, protected TestFolder {
 protected:
  std::string Get(Name section, Name key, std::size_t size = 2048, Name otherwise = "default") {
    return profiles_->GetString(section, key, otherwise, size, file_);
  }
  FileCode Set(Name section, Name key, Name value) {
    return profiles_->WriteString(section, key, value, file_);
  }

  const std::string file_ = Path("p.ini");
  std::unique_ptr<FileSystem> files_ = MakeHostFileSystem();
  std::unique_ptr<ProfileFunctions> profiles_ = MakeProfileFunctions(*files_);
};

TEST_F(ProfileFunctionsTest, GivesWhatABufferHolds) {
  Put("p.ini", "[One]\r\nk=\"" + std::string(3000, 'v') + "\"\r\nj=\r\n[Two]\r\n=\r\nk=1\r\n[Three]\r\n");
  EXPECT_EQ(Get("One", "k"), std::string(2047, 'v'));
  EXPECT_EQ(Get("One", "k", 1) + Get("One", "k", 0) + Get("One", "j"), "");
  EXPECT_EQ(Get("One", "x", 2048, {}) + Get("One", "x", 2048, "  \"a\"  ") + Get("One", "x", 4),
            "  \"a\"def");
  EXPECT_EQ(Get({}, "k", 15), "One\0Two\0Three\0"s);
  EXPECT_EQ(Get({}, {}, 8), "One\0Tw"s);
  EXPECT_EQ(Get("one", {}), "k\0j\0"s);
  EXPECT_EQ(Get("Two", {}) + Get("Three", {}) + Get("Four", {}), "defaultdefaultdefault");
}

TEST_F(ProfileFunctionsTest, SeesEveryForeignChange) {
  EXPECT_EQ(Get("A", "k"), "default");
  for (int i = 10; i < 100; ++i) {  // faster than the clock of the files
    Put("p.ini", "[A]\r\nk=" + std::to_string(i) + "\r\n");
    ASSERT_EQ(Get("A", "k"), std::to_string(i));
  }
  std::this_thread::sleep_for(std::chrono::milliseconds(60));  // until the stamp counts
  EXPECT_EQ(Get("A", "k"), "99");
  EXPECT_EQ(Set("A", "k", "02"), FileCode::Ok);
  Put("p.ini", "[A]\r\nk=03\r\n");
  EXPECT_EQ(Get("A", "k"), "03");
  fs::remove(Host("p.ini"));
  EXPECT_EQ(Get({}, {}) + Get("A", "k"), "default");
  EXPECT_EQ(Set("B", "k", "1"), FileCode::Ok);
  EXPECT_EQ(Bytes("p.ini"), "[B]\r\nk=1\r\n");
}

TEST_F(ProfileFunctionsTest, WritesOnlyChanges) {
  Put("p.ini", "[A]\nk=1\n");
  FileSystem::Stamp before, after;
  ASSERT_EQ(files_->GetStamp(file_, before), FileCode::Ok);
  EXPECT_EQ(Set("a", "K", "1"), FileCode::Ok);
  EXPECT_EQ(Set("A", "x", {}), FileCode::Ok);
  EXPECT_EQ(Set("B", {}, "1"), FileCode::Ok);
  ASSERT_EQ(files_->GetStamp(file_, after), FileCode::Ok);
  EXPECT_EQ(before, after);
  EXPECT_EQ(profiles_->WriteString("A", "x", {}, Path("new.ini")), FileCode::Ok);
  EXPECT_EQ(Bytes("new.ini"), UnderWine() ? "missing" : "");  // Wine deletes nothing from nothing
}

TEST_F(ProfileFunctionsTest, TellsWhyAWriteFailed) {
  Put("p.ini", "[A]\r\nk=1\r\n");
  std::vector<std::pair<std::string, FileCode>> refusals = {{Path("none\\p.ini"), FileCode::PathNotFound},
                                                            {Root(), FileCode::AccessDenied},
                                                            {Path("p?.ini"), FileCode::InvalidName},
                                                            {"p.ini", FileCode::FileNotFound}};
  if (MarksBindEverybody()) refusals.emplace_back(file_, FileCode::AccessDenied);
  const auto expectRefusals = [&] {
    EXPECT_EQ(Set({}, "k", "2"), FileCode::FileNotFound);
    ASSERT_EQ(files_->SetAttributes(file_, kReadOnly), FileCode::Ok);
    for (const auto& [file, code] : refusals)
      EXPECT_EQ(profiles_->WriteString("A", "k", "2", file), code) << file;
    EXPECT_EQ(Get("A", "k"), "1");
    ASSERT_EQ(files_->SetAttributes(file_, 0), FileCode::Ok);
  };
  expectRefusals();
  const ProfileFunctions::Batch batch(*profiles_);
  expectRefusals();
}

TEST_F(ProfileFunctionsTest, WritesABatchAtItsEnd) {
  const auto write = [&](int file, const std::string& key) {
    ASSERT_EQ(profiles_->WriteString("A", key, "v", Path(std::to_string(file))), FileCode::Ok);
    ASSERT_EQ(profiles_->GetString("A", key, {}, 9, Path(std::to_string(file))), "v");
  };
  {
    const ProfileFunctions::Batch batch(*profiles_);
    for (const auto* key : {"a", "b"}) {
      const ProfileFunctions::Batch inner(*profiles_);
      for (int file = 0; file < 40; ++file) write(file, key);  // more files than are kept parsed
    }
    EXPECT_EQ(Bytes("39"), "[A]\r\na=v\r\n");
  }
  for (int file = 0; file < 40; ++file) EXPECT_EQ(Bytes(std::to_string(file)), "[A]\r\na=v\r\nb=v\r\n");
  {
    const ProfileFunctions::Batch batch(*profiles_);
    write(0, "c");
    fs::remove_all(Root());
  }
  EXPECT_EQ(profiles_->GetString("A", "c", "lost", 9, Path("0")), "lost");
}

}  // namespace
}  // namespace quillon
