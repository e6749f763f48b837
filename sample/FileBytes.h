// Stand-ins for the game's binary files, with sizes and compressibility like the real ones.
#pragma once

#include <cstddef>
#include <string>

#include "sample/Numbers.h"

namespace quillon {

/// .ace: packed by the game, so that nothing is left to pack, or plain: mostly even areas.
std::string TextureBytes(Numbers numbers, std::size_t size, bool packed = false);
/// _y.raw, _e.raw, _n.raw: heights of a terrain; deflate leaves a third.
std::string TerrainBytes(Numbers numbers, std::size_t size);
/// .s and .t: likewise.
std::string ShapeBytes(Numbers numbers, std::size_t size, bool packed = false);
/// .wav: 16-bit mono, 22,050 Hz; deflate leaves about a third.
std::string SoundBytes(Numbers numbers, std::size_t size);

}  // namespace quillon
