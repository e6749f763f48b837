// Which folders are laid over a loaded route, and in which order.
#pragma once

#include <array>
#include <string_view>

namespace quillon {

/// Source and destination, each below its root, with closing backslashes.
struct CopyRow {
  std::string_view source, destination;
};

/// From the shared extras of the game to the route.
inline constexpr std::array<CopyRow, 18> kExtrasRows = {{
    {"\\EnvFiles\\", "\\EnvFiles\\"},
    {"\\EnvFiles\\Textures\\", "\\EnvFiles\\Textures\\"},
    {"\\Shapes\\", "\\Shapes\\"},
    {"\\Sound\\", "\\Sound\\"},
    {"\\Terrtex\\", "\\Terrtex\\"},
    {"\\Terrtex\\Snow\\", "\\Terrtex\\Snow\\"},
    {"\\Textures\\", "\\Textures\\"},
    {"\\Textures\\Autumn\\", "\\Textures\\Autumn\\"},
    {"\\Textures\\AutumnSnow\\", "\\Textures\\AutumnSnow\\"},
    {"\\Textures\\Night\\", "\\Textures\\Night\\"},
    {"\\Textures\\Snow\\", "\\Textures\\Snow\\"},
    {"\\Textures\\Spring\\", "\\Textures\\Spring\\"},
    {"\\Textures\\SpringSnow\\", "\\Textures\\SpringSnow\\"},
    {"\\Textures\\Winter\\", "\\Textures\\Winter\\"},
    {"\\Textures\\WinterSnow\\", "\\Textures\\WinterSnow\\"},
    {"\\swe_objects_1\\Extras\\", "\\Extras\\"},
    {"\\swe_objects_1\\Shapes\\", "\\Shapes\\"},
    {"\\swe_objects_1\\Textures\\", "\\Textures\\"},
}};

/// From the route's custom folder to the route. They win over the extras.
inline constexpr std::array<CopyRow, 21> kCustomRows = {{
    {"\\", "\\"},
    {"\\ENVFILES\\", "\\ENVFILES\\"},
    {"\\ENVFILES\\TEXTURES\\", "\\ENVFILES\\TEXTURES\\"},
    {"\\LO_TILES\\", "\\LO_TILES\\"},
    {"\\SHAPES\\", "\\SHAPES\\"},
    {"\\SOUND\\", "\\SOUND\\"},
    {"\\TD\\", "\\TD\\"},
    {"\\TILES\\", "\\TILES\\"},
    {"\\TERRTEX\\", "\\TERRTEX\\"},
    {"\\TERRTEX\\SNOW\\", "\\TERRTEX\\SNOW\\"},
    {"\\TEXTURES\\", "\\Textures\\"},
    {"\\TEXTURES\\AUTUMN\\", "\\Textures\\Autumn\\"},
    {"\\TEXTURES\\AUTUMNSNOW\\", "\\Textures\\Autumnsnow\\"},
    {"\\TEXTURES\\NIGHT\\", "\\Textures\\Night\\"},
    {"\\TEXTURES\\SNOW\\", "\\Textures\\Snow\\"},
    {"\\TEXTURES\\SPRING\\", "\\Textures\\Spring\\"},
    {"\\TEXTURES\\SPRINGSNOW\\", "\\Textures\\Springsnow\\"},
    {"\\TEXTURES\\WINTER\\", "\\Textures\\Winter\\"},
    {"\\TEXTURES\\WINTERSNOW\\", "\\Textures\\Wintersnow\\"},
    {"\\TUTOR\\", "\\TUTOR\\"},
    {"\\WORLD\\", "\\WORLD\\"},
}};

/// One kind of file from the top of a `Custom` or `Stuffed` folder to a folder of the route.
struct TopRow {
  std::string_view destination, pattern;
};

inline constexpr std::array<TopRow, 16> kTopRows = {{
    {"\\SHAPES\\", "*.s"},
    {"\\SHAPES\\", "*.sd"},
    {"\\SHAPES\\", "*.pal"},
    {"\\SOUND\\", "*.wav"},
    {"\\SOUND\\", "*.sms"},
    {"\\TERRTEX\\", "*.ace"},
    {"\\TERRTEX\\SNOW\\", "*.ace"},
    {"\\Textures\\", "*.ace"},
    {"\\Textures\\Autumn\\", "*.ace"},
    {"\\Textures\\Autumnsnow\\", "*.ace"},
    {"\\Textures\\Night\\", "*.ace"},
    {"\\Textures\\Snow\\", "*.ace"},
    {"\\Textures\\Spring\\", "*.ace"},
    {"\\Textures\\Springsnow\\", "*.ace"},
    {"\\Textures\\Winter\\", "*.ace"},
    {"\\Textures\\Wintersnow\\", "*.ace"},
}};

/// A folder of `Custom` or `Stuffed` to the route's folder of the same name.
struct FolderRow {
  std::string_view folder, pattern;
};

inline constexpr std::array<FolderRow, 14> kFolderRows = {{
    {"\\SHAPES\\", "*.*"},
    {"\\SOUND\\", "*.wav"},
    {"\\SOUND\\", "*.sms"},
    {"\\TERRTEX\\", "*.*"},
    {"\\TERRTEX\\SNOW\\", "*.*"},
    {"\\Textures\\", "*.*"},
    {"\\Textures\\Autumn\\", "*.*"},
    {"\\Textures\\Autumnsnow\\", "*.*"},
    {"\\Textures\\Night\\", "*.*"},
    {"\\Textures\\Snow\\", "*.*"},
    {"\\Textures\\Spring\\", "*.*"},
    {"\\Textures\\Springsnow\\", "*.*"},
    {"\\Textures\\Winter\\", "*.*"},
    {"\\Textures\\Wintersnow\\", "*.*"},
}};

}  // namespace quillon
