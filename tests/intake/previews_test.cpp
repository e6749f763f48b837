// Which picture a route is shown by.
#include <gd.h>

#include <memory>
#include <random>

#include "tests/intake/IntakeTest.h"

namespace quillon {
namespace {

using Image = std::unique_ptr<gdImage, decltype(&gdImageDestroy)>;

enum class Kind { Jpeg, Gif, Bmp };

/// A picture in a fine pattern of two colours: small as a GIF, big as a JPEG.
std::string PictureBytes(Kind kind, int width, int height, int shade = 0) {
  const Image image(gdImageCreate(width, height), &gdImageDestroy);
  gdImageColorAllocate(image.get(), shade, 0, 0);
  const int light = gdImageColorAllocate(image.get(), 255, 255, 255);
  for (int y = 0; y < height; ++y)
    for (int x = y % 2; x < width; x += 2) gdImageSetPixel(image.get(), x, y, light);
  int size = 0;
  void* bytes = kind == Kind::Jpeg  ? gdImageJpegPtr(image.get(), &size, 90)
                : kind == Kind::Gif ? gdImageGifPtr(image.get(), &size)
                                    : gdImageBmpPtr(image.get(), &size, 0);
  std::string result(static_cast<const char*>(bytes), static_cast<std::size_t>(size));
  gdFree(bytes);
  return result;
}

std::string Jpeg(int width, int height, int shade = 0) {
  return PictureBytes(Kind::Jpeg, width, height, shade);
}

/// `bytes` of this size; what follows a picture's end does not matter to it.
std::string Padded(std::string bytes, std::size_t size) {
  EXPECT_LE(bytes.size(), size);
  bytes.resize(size, '\0');
  return bytes;
}

class PreviewsTest : public IntakeTest {
 protected:
  void DropWith(const std::string& zip, const std::vector<ZipEntry>& pictures) {
    program.Drop(zip + ".zip", RouteEntries(zip, pictures));
  }
  std::string Preview(const std::string& zip) const {
    return program.ReadBytes(program.AppPath("routes\\ts" + zip + ".jpg"));
  }
  std::string NoImage() const {
    return program.ReadBytes(program.AppPath("resources\\Do_Not_Delete!\\qnnoimage.jpg"));
  }
  std::string Pictures(const std::string& zip) const { return program.AppPath("routes\\route_pics\\" + zip); }
  void MakeReady(const std::string& zip, const std::string& bytes) const {
    program.Write(program.AppPath("resources\\Do_Not_Delete!\\misc_info\\custom_previews\\ts" + zip + ".jpg"),
                  bytes);
  }
  /// The size of the picture in `bytes`, as "WxH".
  static std::string SizeOf(const std::string& bytes) {
    std::string copy = bytes;
    const Image image(gdImageCreateFromJpegPtr(static_cast<int>(copy.size()), copy.data()), &gdImageDestroy);
    return image ? std::to_string(image->sx) + "x" + std::to_string(image->sy) : "none";
  }
};

TEST_F(PreviewsTest, AreasDecideAmongJpegs) {
  struct Case {
    int width1, height1, width2, height2;
    int chosen;  // 0: none
  };
  const std::vector<Case> cases = {
      {200, 200, 320, 240, 1},   // a small one stops the wider bands
      {320, 240, 200, 200, 2},   // and may replace what they chose
      {800, 600, 790, 600, 2},   // within a band the last one wins
      {150, 100, 160, 100, 2},   //
      {1024, 768, 700, 700, 0},  // 490000 is too big
      {300, 300, 800, 600, 1},   // the third band stops the fourth
      {300, 200, 500, 500, 1},   // the second stops the third
      {500, 500, 300, 200, 2},   //
      {100, 100, 300, 200, 2},   // 10000 belongs to the second band
      {260, 200, 270, 200, 2},   // 52000 too
      {400, 200, 500, 500, 2},   // 80000 belongs to the third
      {660, 500, 700, 600, 2},   // 330000 to the fourth
      {1024, 768, 800, 600, 2},  //
  };
  for (std::size_t i = 0; i < cases.size(); ++i)
    DropWith("r" + std::to_string(i), {Entry("a.jpg", Jpeg(cases[i].width1, cases[i].height1, 1)),
                                       Entry("b.JPG", Jpeg(cases[i].width2, cases[i].height2, 2))});
  DropWith("small", {Entry("a.jpg", Padded(Jpeg(8, 8), 2048))});
  DropWith("large", {Entry("a.jpg", Padded(Jpeg(8, 8), 2049))});
  EXPECT_EQ(program.Run("add"), 0);
  for (std::size_t i = 0; i < cases.size(); ++i) {
    const auto& [width1, height1, width2, height2, chosen] = cases[i];
    const std::string expected = chosen == 0   ? NoImage()
                                 : chosen == 1 ? Jpeg(width1, height1, 1)
                                               : Jpeg(width2, height2, 2);
    EXPECT_TRUE(Preview("r" + std::to_string(i)) == expected) << "case " << i;
  }
  EXPECT_TRUE(Preview("small") == NoImage());
  EXPECT_EQ(SizeOf(Preview("large")), "8x8");
}

TEST_F(PreviewsTest, GifsAndBitmapsBecomeJpegs) {
  const std::string gif = PictureBytes(Kind::Gif, 200, 150), bmp = PictureBytes(Kind::Bmp, 160, 120);
  DropWith("gif", {Entry("Picture.gif", Padded(gif, 2049))});
  DropWith("smallgif", {Entry("Picture.gif", Padded(gif, 2048))});
  DropWith("bmp", {Entry("Map.bmp", bmp)});
  EXPECT_EQ(program.Run("add"), 0);
  EXPECT_EQ(SizeOf(Preview("gif")), "200x150");
  EXPECT_TRUE(Preview("smallgif") == NoImage());
  EXPECT_EQ(program.Names(Pictures("smallgif")), Texts{"picture.gif"});
  EXPECT_EQ(SizeOf(Preview("bmp")), "160x120");
  const auto names = program.Names(Pictures("gif"));
  ASSERT_EQ(names.size(), 2u) << "the picture and its JPEG, no temporary one";
  EXPECT_TRUE(names[0].starts_with("pict") && names[0].ends_with(".jpg")) << names[0];
  EXPECT_EQ(program.Names(Pictures("bmp")).size(), 2u);
  EXPECT_TRUE(program.ReadBytes(Pictures("bmp") + "/Map.bmp") == bmp);
}

TEST_F(PreviewsTest, AReadyPreviewOfTheLastRouteDecidesForAll) {
  MakeReady("b", "hand-made b");
  MakeReady("c", "hand-made c");
  DropWith("a", {Entry("a.jpg", Jpeg(200, 200))});
  DropWith("b", {});
  DropWith("c", {Entry("tsc.jpg", "the route's own")});
  EXPECT_EQ(program.Run("add"), 0);
  EXPECT_TRUE(Preview("a") == NoImage());
  EXPECT_EQ(Preview("b"), "hand-made b");
  EXPECT_EQ(Preview("c"), "the route's own");

  // The last route has none: pictures that qualify replace the ready previews of the others.
  DropWith("a", {Entry("a.jpg", Jpeg(200, 200))});
  MakeReady("a", "hand-made a");
  DropWith("b", {});
  DropWith("z", {});
  EXPECT_EQ(program.Run("add"), 0);
  EXPECT_EQ(SizeOf(Preview("a")), "200x200");
  EXPECT_EQ(Preview("b"), "hand-made b");
}

TEST_F(PreviewsTest, APictureThatCannotBeReadEndsTheIntake) {
  DropWith("corrupt", {Entry("a.jpg", std::string(3000, 'j'))});
  EXPECT_EQ(program.Run("add"), 1);
  EXPECT_NE(program.LastError(), 0);
  EXPECT_TRUE(program.LastErrorPath().ends_with("a.jpg"));
  EXPECT_EQ(Fate("corrupt"), "downloaded_routes Installed");
}

}  // namespace
}  // namespace quillon
