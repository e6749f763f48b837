// The platform's profile functions beside those over plain files, which stand in for them in a batch.
#include <gtest/gtest.h>

#include "core/host/FileProfiles.h"
#include "tests/world/TestFolder.h"

namespace quillon {
namespace {

using Name = ProfileFunctions::Name;

class TwoProfilesTest : public testing::Test, protected TestFolder {
 protected:
  void Start(const std::string& bytes) const {
    for (const char* file : {"theirs.ini", "ours.ini"}) Put(file, bytes);
  }
  void Set(Name section, Name key, Name value) {
    EXPECT_EQ(theirs_->WriteString(section, key, value, Path("theirs.ini")),
              ours_->WriteString(section, key, value, Path("ours.ini")));
  }
  /// Both read the same, from either file.
  void ExpectSame(Name section, Name key, std::size_t size = 2048) {
    const std::string expected = theirs_->GetString(section, key, "default", size, Path("theirs.ini"));
    for (const char* file : {"theirs.ini", "ours.ini"}) {
      EXPECT_EQ(ours_->GetString(section, key, "default", size, Path(file)), expected)
          << file << " [" << section.value_or("-") << "] " << key.value_or("-");
      EXPECT_EQ(theirs_->GetString(section, key, "default", size, Path(file)), expected) << file;
    }
  }
  void ExpectAllSame(const Strings& sections, const Strings& keys) {
    ExpectSame({}, {});
    for (const auto& section : sections) {
      ExpectSame(section, {});
      for (const auto& key : keys) ExpectSame(section, key);
    }
  }

  const std::unique_ptr<FileSystem> files_ = MakeHostFileSystem();
  const std::unique_ptr<ProfileFunctions> theirs_ = MakeProfileFunctions(*files_);
  const std::unique_ptr<ProfileFunctions> ours_ = MakeFileProfiles(*files_);
};

TEST_F(TwoProfilesTest, ReadAFileAlike) {
  Start(
      "[ My Route (2) ]\r\n  a  =  1  \r\nA=2\r\nb=\"quoted \"\r\nc='x\r\nd=\r\n;e=1\r\nlone\r\n#f=6\r\n"
      "g=a=b ; c\r\n\r\n[M\xC3\xBChle & S\xC3\xB6hne]\nZip=M\xC3\xBChle\n[my route "
      "(2)]\r\nh=hidden\r\n[Last]\r\nk=v");
  ExpectSame(" My Route (2) ", " A ");
  ExpectAllSame({"my route (2)", "M\xC3\xBChle & S\xC3\xB6hne", "LAST", "None"},
                {"a", " A ", "b", "c", "d", "lone", "#f", "g", "h", "k", "zip"});
  for (const std::size_t size : {0, 1, 2, 5, 30}) {
    ExpectSame({}, {}, size);
    ExpectSame("My Route (2)", {}, size);
    ExpectSame("M\xC3\xBChle & S\xC3\xB6hne", "Zip", size);
  }
}

TEST_F(TwoProfilesTest, EditAFileAlike) {
  Start("[A]\r\na=1\r\nb=2");
  const std::string umlauts = "\xC3\x84\xC3\x96\xC3\x9C \xE2\x82\xAC", large(3000, 'v');
  Set("A", "A", "changed");
  Set("a", "c", " 3 ");
  Set("New", "k", "\"kept\"");
  Set(umlauts, umlauts, umlauts);
  Set("Large", "k", large);
  Set("A", "b", {});
  Set("A", "none", {});
  Set("None", {}, {});
  Set("New", "k=l", "1");
  Set("Large", "k", large + "x");
  ExpectAllSame({"A", "New", umlauts, "Large"}, {"a", "b", "c", "k", umlauts});
  Set("NEW", {}, {});
  ExpectAllSame({"New", "Large"}, {"k"});
}

TEST_F(TwoProfilesTest, TakeTurnsOnOneFileAndGoFurtherThanOldPaths) {
  std::string folder = Path("");
  for (int depth = 0; depth < 6; ++depth) folder += std::string(50, 'f') + "\\";
  for (auto end = folder.find('\\', Root().size() + 1); end != folder.npos; end = folder.find('\\', end + 1))
    EXPECT_EQ(files_->CreateFolder(folder.substr(0, end)), FileCode::Ok);
  for (const auto& file : {Path("p.ini"), folder + "p.ini"}) {
    for (const char* key : {"a", "b"}) {
      const std::string value = std::string("batch ") + key;
      EXPECT_EQ(theirs_->WriteString("S", "k", key, file), FileCode::Ok);
      {
        const ProfileFunctions::Batch batch(*theirs_);
        EXPECT_EQ(theirs_->GetString("S", "k", {}, 99, file), key);
        EXPECT_EQ(theirs_->WriteString("S", "k", value, file), FileCode::Ok);
      }
      EXPECT_EQ(theirs_->GetString("S", "k", {}, 99, file), value);
    }
  }
}

}  // namespace
}  // namespace quillon
