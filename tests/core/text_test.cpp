#include "core/text/Text.h"

#include <gtest/gtest.h>

namespace quillon {
namespace {

using namespace std::string_literals;
using Strings = std::vector<std::string>;

TEST(GameText, IsReadInAnyOfItsEncodings) {
  const auto expected = "Gr\xC3\xBC\xC3\x9F\x65 \xE2\x82\xAC\r\n\xF0\x9F\x9A\x82\n"s;
  const auto utf16 = "G\0r\0\xFC\0\xDF\0e\0 \0\xAC\x20\r\0\n\0\x3D\xD8\x82\xDE\n\0"s;
  std::string swapped = utf16;
  for (std::size_t i = 0; i < swapped.size(); i += 2) std::swap(swapped[i], swapped[i + 1]);
  EXPECT_EQ(DecodeGameText("\xFF\xFE" + utf16), expected);
  EXPECT_EQ(DecodeGameText("\xFE\xFF" + swapped), expected);
  EXPECT_EQ(DecodeGameText("\xEF\xBB\xBF" + expected), expected);
  EXPECT_EQ(DecodeGameText(expected), expected);
  EXPECT_EQ(DecodeGameText("Gr\xFC\xDF\x65 \x80\r\n"), "Gr\xC3\xBC\xC3\x9F\x65 \xE2\x82\xAC\r\n");
  EXPECT_EQ(DecodeGameText("\x93Zug\x94 \x8E\x81"), "\xE2\x80\x9CZug\xE2\x80\x9D \xC5\xBD\xC2\x81");
  EXPECT_EQ(DecodeGameText(""), "");
  EXPECT_EQ(DecodeGameText("\xFF\xFE"), "");
  // Broken UTF-16 costs only the broken part.
  EXPECT_EQ(DecodeGameText("\xFF\xFE"s + "a\0b"s), "a");
  EXPECT_EQ(DecodeGameText("\xFF\xFE"s + "\x3D\xD8x\0"s), "\xEF\xBF\xBDx");
  EXPECT_EQ(DecodeGameText("\xFF\xFE"s + "\x82\xDE\x3D\xD8"s), "\xEF\xBF\xBD\xEF\xBF\xBD");
}

TEST(GameText, IsWrittenAsTheGameWritesIt) {
  EXPECT_EQ(EncodeGameText("e\xC3\xA9\r\n"), "\xFF\xFE"s + "e\0\xE9\0\r\0\n\0"s);
  const auto text = "Zug \xF0\x9F\x9A\x82 \xE2\x82\xAC"s;
  EXPECT_EQ(DecodeGameText(EncodeGameText(text)), text);
  EXPECT_EQ(DecodeGameText(EncodeGameText("a\xFF\x62")), "a\xEF\xBF\xBD\x62");
}

TEST(Lines, EndAtAnyLineEndAndKeepBlankOnes) {
  EXPECT_EQ(Lines("a\r\nb\nc\rd"), (Strings{"a", "b", "c", "d"}));
  EXPECT_EQ(Lines("a\r\n\r\n b \r\n"), (Strings{"a", "", " b "}));
  EXPECT_EQ(Lines("\n\r"), (Strings{"", ""}));
  EXPECT_EQ(Lines(""), Strings{});
}

TEST(CaseRules, AreUnicodesSimpleOnes) {
  EXPECT_EQ(UpperCase("M\xC3\xBChle stra\xC3\x9F\x65"), "M\xC3\x9CHLE STRA\xC3\x9F\x45");
  EXPECT_EQ(LowerCase("\xC3\x89T\xC3\x89 \xD0\x96 [Z]"), "\xC3\xA9t\xC3\xA9 \xD0\xB6 [z]");
  EXPECT_EQ(LowerCase("A\xFF\xC3 B\xC3\x84"), "a\xFF\xC3 b\xC3\xA4");
  EXPECT_TRUE(EqualNoCase("TILES\\\xC3\x84.t", "tiles\\\xC3\xA4.T"));
  EXPECT_FALSE(EqualNoCase("tiles", "tile"));
}

}  // namespace
}  // namespace quillon
