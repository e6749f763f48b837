#include "desktop/FileTypes.h"

namespace quillon {

void RegisterFileTypes(Registry& registry, const std::string& appFolder) {
  const auto createClassKey = [&](std::string_view key) { registry.CreateKey(RegRoot::ClassesRoot, key); };
  const auto setClassValue = [&](std::string_view key, const std::string& value) {
    registry.RegSetValue(RegRoot::ClassesRoot, key, "", value);
  };
  const std::string command = appFolder + "\\Larkmoor.exe %1", icon = appFolder + "\\Larkmoor.exe,0";

  createClassKey(".qnz");
  createClassKey(".qnc");
  setClassValue(".qnz", "Larkmoor.Compressed.Route");
  setClassValue(".qnc", "Larkmoor.Terrain.Cache");
  createClassKey("Larkmoor.Compressed.Route");
  createClassKey("Larkmoor.Compressed.Route\\shell\\open\\command");
  createClassKey("Larkmoor.Compressed.Route\\DefaultIcon");
  createClassKey("Larkmoor.Terrain.Cache");
  createClassKey("Larkmoor.Terrain.Cache\\shell\\open\\command");
  createClassKey("Larkmoor.Terrain.Cache\\DefaultIcon");
  setClassValue("Larkmoor.Compressed.Route", "Larkmoor Compressed Route File");
  setClassValue("Larkmoor.Terrain.Cache", "Larkmoor Compressed Terrain File");
  setClassValue("Larkmoor.Compressed.Route\\shell\\open\\command", command);
  setClassValue("Larkmoor.Compressed.Route\\DefaultIcon", icon);
  setClassValue("Larkmoor.Terrain.Cache\\shell\\open\\command", command);
  setClassValue("Larkmoor.Terrain.Cache\\DefaultIcon", icon);
}

}  // namespace quillon
