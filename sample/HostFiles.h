// Plain files by host paths, in UTF-8. All failures are RunTimeErrors.
#pragma once

#include <string>
#include <string_view>

namespace quillon {

/// Makes the folder and those above it; one that exists is fine.
void MakeHostFolder(const std::string& hostFolder);

/// True for a folder with something in it, and for anything that is no folder.
bool HoldsSomething(const std::string& hostPath);

void RemoveHostTree(const std::string& hostFolder);

/// The file's folder exists.
void WriteHostFile(const std::string& hostPath, std::string_view bytes);

std::string ReadHostFile(const std::string& hostPath);

}  // namespace quillon
