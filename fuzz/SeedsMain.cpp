// Stands in for a fuzzer where there is none: feeds the target each file of the folders that are named.
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

int main(int count, char** arguments) {
  int fed = 0;
  for (int i = 1; i < count; ++i) {
    for (const auto& file : std::filesystem::directory_iterator(arguments[i])) {
      std::ifstream in(file.path(), std::ios::binary);
      const std::string bytes(std::istreambuf_iterator<char>(in), {});
      LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
      ++fed;
    }
  }
  std::printf("%d inputs\n", fed);
  return fed == 0 ? 1 : 0;
}
