// Which picture a route is shown by.
#include "core/pictures/Pictures.h"
#include "sample/Pictures.h"
#include "tests/intake/IntakeTest.h"

namespace quillon {
namespace {

/// A picture in a fine pattern of two colours: big as a JPEG.
std::string Jpeg(int width, int height) {
  Picture picture({width, height});
  for (int y = 0; y < height; ++y)
    for (int x = y % 2; x < width; x += 2) picture.At(x, y) = {255, 255, 255};
  return picture.ToJpeg(90);
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
    Drop(zip + ".zip", RouteEntries(zip, pictures));
  }
  std::string Preview(const std::string& zip) const {
    return ReadBytes(AppPath("routes\\ts" + zip + ".jpg"));
  }
  std::string NoImage() const { return ReadBytes(DataPath("qnnoimage.jpg")); }
  void MakeReady(const std::string& zip) const {
    Write(DataPath("misc_info\\custom_previews\\ts" + zip + ".jpg"), "hand-made " + zip);
  }
  /// The size of a route's preview, as "WxH".
  std::string SizeOf(const std::string& zip) const {
    const std::string bytes = Preview(zip);
    if (!bytes.starts_with("\xFF\xD8")) return "no JPEG";
    const Picture::Size size = Picture::Measure(bytes, zip);
    return std::to_string(size.width) + "x" + std::to_string(size.height);
  }
};

TEST_F(PreviewsTest, AreasDecideAmongJpegs) {
  // Two sizes and which of them is chosen. A narrower band stops the wider ones and replaces what they chose;
  // within a band the last one wins. 52000, 80000 and 330000 belong to the next band, 490000 to none.
  const std::vector<std::array<int, 5>> cases = {
      {200, 200, 320, 240, 1}, {320, 240, 200, 200, 2},  {300, 200, 500, 500, 1},
      {300, 300, 800, 600, 1}, {260, 200, 270, 200, 2},  {400, 200, 500, 500, 2},
      {660, 500, 700, 600, 2}, {1024, 768, 700, 700, 0}, {100, 100, 300, 200, 2}};
  const auto zip = [&](const auto& sizes) { return "r" + std::to_string(&sizes - cases.data()); };
  for (const auto& sizes : cases)
    DropWith(zip(sizes),
             {Entry("a.jpg", Jpeg(sizes[0], sizes[1])), Entry("b.JPG", Jpeg(sizes[2], sizes[3]))});
  DropWith("small", {Entry("a.jpg", Padded(Jpeg(8, 8), 2048))});
  DropWith("large", {Entry("a.jpg", Padded(Jpeg(8, 8), 2049))});
  EXPECT_EQ(Run("add"), 0);
  for (const auto& sizes : cases) {
    const std::string expected = sizes[4] == 0   ? NoImage()
                                 : sizes[4] == 1 ? Jpeg(sizes[0], sizes[1])
                                                 : Jpeg(sizes[2], sizes[3]);
    EXPECT_TRUE(Preview(zip(sizes)) == expected) << testing::PrintToString(sizes);
  }
  EXPECT_TRUE(Preview("small") == NoImage());
  EXPECT_EQ(SizeOf("large"), "8x8");
}

TEST_F(PreviewsTest, GifsAndBitmapsBecomeJpegs) {
  const std::string small = LandscapePicture("a", 0, 40, 30, PictureFormat::Gif);
  const std::string bmp = LandscapePicture("a", 0, 160, 120, PictureFormat::Bmp);
  DropWith("gif", {Entry("Picture.gif", LandscapePicture("a", 0, 200, 150, PictureFormat::Gif))});
  DropWith("largegif", {Entry("Picture.gif", Padded(small, 2049))});
  DropWith("smallgif", {Entry("Picture.gif", Padded(small, 2048))});
  DropWith("bmp", {Entry("Map.bmp", bmp)});
  EXPECT_EQ(Run("add"), 0);
  EXPECT_EQ(SizeOf("gif") + " " + SizeOf("bmp"), "200x150 160x120");
  EXPECT_TRUE(Preview("smallgif") == NoImage());
  EXPECT_EQ(Stored("route_pics\\smallgif"), Strings{"picture.gif"});
  EXPECT_EQ(Stored("route_pics\\largegif").size(), 2u);
  const auto names = Stored("route_pics\\gif");
  ASSERT_EQ(names.size(), 2u) << "the picture and its JPEG, no temporary one";
  EXPECT_TRUE(names[0].starts_with("pict") && names[0].ends_with(".jpg")) << names[0];
  EXPECT_EQ(Stored("route_pics\\bmp").size(), 2u);
  EXPECT_TRUE(ReadBytes(AppPath("routes\\route_pics\\bmp\\map.bmp")) == bmp);
}

TEST_F(PreviewsTest, AReadyPreviewOfTheLastRouteDecidesForAll) {
  for (const std::string zip : {"b", "c"}) MakeReady(zip);
  DropWith("a", {Entry("a.jpg", Jpeg(200, 200))});
  DropWith("b", {});
  DropWith("c", {Entry("tsc.jpg", "the route's own")});
  EXPECT_EQ(Run("add"), 0);
  EXPECT_TRUE(Preview("a") == NoImage());
  EXPECT_EQ(Preview("b") + ", " + Preview("c"), "hand-made b, the route's own");

  // The last route has none: pictures that qualify replace the ready previews of the others.
  MakeReady("a");
  DropWith("a", {Entry("a.jpg", Jpeg(200, 200))});
  DropWith("b", {});
  DropWith("z", {});
  EXPECT_EQ(Run("add"), 0);
  EXPECT_EQ(SizeOf("a") + " " + Preview("b"), "200x200 hand-made b");
}

TEST_F(PreviewsTest, APictureThatCannotBeReadEndsTheIntake) {
  DropWith("corrupt", {Entry("a.jpg", std::string(3000, 'j'))});
  EXPECT_EQ(Run("add"), 1);
  EXPECT_NE(LastError(), 0);
  EXPECT_TRUE(LastErrorPath().ends_with("a.jpg"));
  EXPECT_EQ(Fate("corrupt"), "downloaded_routes Installed");
}

}  // namespace
}  // namespace quillon
