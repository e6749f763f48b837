#include "core/host/windows_text.h"

#include <windows.h>

namespace quillon {
namespace {

std::wstring ToWide(UINT codePage, std::string_view text) {
  const int size = static_cast<int>(text.size());
  std::wstring wide(
      static_cast<std::size_t>(::MultiByteToWideChar(codePage, 0, text.data(), size, nullptr, 0)), L'\0');
  ::MultiByteToWideChar(codePage, 0, text.data(), size, wide.data(), static_cast<int>(wide.size()));
  return wide;
}

std::string FromWide(UINT codePage, std::wstring_view text) {
  const int size = static_cast<int>(text.size());
  const int length = ::WideCharToMultiByte(codePage, 0, text.data(), size, nullptr, 0, nullptr, nullptr);
  std::string bytes(static_cast<std::size_t>(length), '\0');
  ::WideCharToMultiByte(codePage, 0, text.data(), size, bytes.data(), length, nullptr, nullptr);
  return bytes;
}

}  // namespace

std::wstring Widen(std::string_view text) { return ToWide(CP_UTF8, text); }
std::string Narrow(std::wstring_view text) { return FromWide(CP_UTF8, text); }
std::wstring WidenBytes(std::string_view bytes) { return ToWide(CP_ACP, bytes); }
std::string NarrowBytes(std::wstring_view text) { return FromWide(CP_ACP, text); }

}  // namespace quillon
