#include "catalogue/Previews.h"

#include <ctime>

#include "core/Aside.h"
#include "core/CopyOver.h"
#include "core/text/Text.h"

namespace quillon {
namespace {

constexpr std::uint64_t kTooSmall = 2048;         // bytes
constexpr std::uint64_t kTooLarge = 64ull << 20;  // bytes: no preview comes from such a file
constexpr int kQuality = 80;

/// The first four characters, not bytes.
std::string FirstFour(std::string_view name) {
  std::size_t at = 0;
  for (int characters = 0; at < name.size(); ++at)
    if ((static_cast<unsigned char>(name[at]) & 0xC0) != 0x80 && characters++ == 4) break;
  return std::string(name.substr(0, at));
}

int CurrentMinute() {
  const std::time_t now = std::time(nullptr);
  return static_cast<int>(now / 60 % 60);
}

}  // namespace

void Previews::Run(const std::vector<std::string>& zips) {
  std::size_t done = 0;
  for (const auto& zip : zips) {
    progress_.Detail(done++, zips.size(), "routes");
    step_("Looking for a preview of " + zip, zip);
    TakeReadyPreview(zip);
    if (!PreviewFound) MakeJpegs(zip, ".gif", 50);
  }
  progress_.Detail(0, 0, {});
  // The last route's find decides for all.
  if (PreviewFound) return;
  for (const auto& zip : zips) MakeJpegs(zip, ".bmp", 254);
  for (const auto& zip : zips) ChooseAmongJpegs(zip);
}

void Previews::TakeReadyPreview(const std::string& zip) {
  PreviewFound = false;
  const Installation& app = program_.app;
  // A route's own picture beats a hand-made one.
  for (const auto& ready : {app.CustomPreview(zip), app.RoutePics(zip) + "\\ts" + zip + ".jpg"}) {
    if (!program_.files.FileExists(ready)) continue;
    CopyOver(program_.files, ready, app.Preview(zip));
    PreviewFound = true;
  }
}

std::vector<std::string> Previews::PicturesOf(const std::string& zip, std::string_view extension) const {
  const std::string folder = program_.app.RoutePics(zip) + "\\";
  std::vector<std::string> names;
  for (auto& name : program_.files.ListFiles(folder + "*" + std::string(extension)))
    if (const auto size = program_.files.Size(folder + name); size > kTooSmall && size < kTooLarge)
      names.push_back(std::move(name));
  return names;
}

void Previews::MakeJpegs(const std::string& zip, std::string_view extension, int mostRandom) {
  const std::string folder = program_.app.RoutePics(zip) + "\\";
  for (const auto& name : PicturesOf(zip, extension)) {
    const std::string temporary = ReplaceAll(
        FirstFour(name) + std::to_string(CurrentMinute()) + std::to_string(program_.random.Whole(mostRandom)),
        extension, "");
    step_("Making a preview from " + name, zip);
    const std::string bytes = program_.files.ReadAll(folder + name);
    if (Picture::IsHuge(bytes)) continue;
    const std::string jpeg =
        Aside(progress_, [&] { return Picture::Load(bytes, folder + name).ToJpeg(kQuality); });
    program_.files.WriteAll(folder + temporary + ".jpg", jpeg);
  }
}

void Previews::ChooseAmongJpegs(const std::string& zip) {
  const std::string folder = program_.app.RoutePics(zip) + "\\";
  bool a = false, b = false, c = false;
  for (const auto& name : PicturesOf(zip, ".jpg")) {
    step_("Looking at " + name, zip);
    const std::string bytes = program_.files.ReadAll(folder + name);
    const Picture::Size size = Aside(progress_, [&] { return Picture::Measure(bytes, folder + name); });
    const std::int64_t area = std::int64_t{size.width} * size.height;
    const auto take = [&] { CopyOver(program_.files, folder + name, program_.app.Preview(zip)); };
    if (area > 10000 && area < 52000) {
      take();
      a = true;
    }
    if (area < 80000 && !a) {
      take();
      b = true;
    }
    if (area < 330000 && !a && !b) {
      take();
      c = true;
    }
    if (area < 490000 && !a && !b && !c) take();
  }
}

}  // namespace quillon
