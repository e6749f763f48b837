// The trains of the sample's game, and consists made of them.
#pragma once

#include <string>
#include <vector>

#include "sample/SampleFile.h"

namespace quillon {

/// Names of the consists in TRAINS\CONSISTS, which are those of the files without extension, too.
const std::vector<std::string>& GameConsists();

/// A consist of the game's trains under any name; `choice` picks the trains.
std::string ConsistText(const std::string& name, std::size_t choice);

/// TRAINS\ with all below it.
SampleFiles TrainFiles();

}  // namespace quillon
