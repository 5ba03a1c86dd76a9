// Runs a fuzzer over the files of the folders it is given, once each, and over the empty input: the main function
// of a fuzzer where it is built as a test.
#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);

namespace fs = std::filesystem;

static std::vector<char> ReadFile(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

int main(int argc, char** argv) {
  LLVMFuzzerTestOneInput(nullptr, 0);
  std::vector<fs::path> seeds;
  for (int i = 1; i < argc; ++i)
    for (const auto& entry : fs::recursive_directory_iterator(argv[i]))
      if (entry.is_regular_file()) seeds.push_back(entry.path());
  if (seeds.empty()) {
    std::fprintf(stderr, "no seeds\n");
    return 1;
  }
  std::sort(seeds.begin(), seeds.end());
  for (const fs::path& seed : seeds) {
    std::printf("%s\n", seed.c_str());  // the last one named is the one that failed
    std::fflush(stdout);
    const std::vector<char> bytes = ReadFile(seed);
    // A block of exactly this size, so that a sanitizer sees a read past its end.
    const auto data = std::make_unique<uint8_t[]>(bytes.size());
    std::copy(bytes.begin(), bytes.end(), data.get());
    LLVMFuzzerTestOneInput(data.get(), bytes.size());
  }
  return 0;
}
