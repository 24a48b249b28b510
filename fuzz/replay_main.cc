// Replays inputs through a fuzz target without libFuzzer: each argument is a file, or a folder
// whose files (at any depth) are taken in the order of their names. Exits with 1 when an input
// cannot be read or there was none, so that a lost seed folder shows.
#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <system_error>
#include <vector>

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv);
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);

namespace {

namespace fs = std::filesystem;

std::vector<fs::path> CollectFiles(const fs::path& argument) {
  std::error_code error;
  if (!fs::is_directory(argument, error)) return {argument};
  std::vector<fs::path> files;
  for (const auto& entry : fs::recursive_directory_iterator(argument, error)) {
    if (entry.is_regular_file(error)) files.push_back(entry.path());
  }
  std::sort(files.begin(), files.end());
  return files;
}

bool Replay(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  const std::vector<char> bytes{std::istreambuf_iterator<char>(file),
                                std::istreambuf_iterator<char>()};
  if (!file.is_open() || file.bad()) return false;
  LLVMFuzzerTestOneInput(reinterpret_cast<const uint8_t*>(bytes.data()), bytes.size());
  return true;
}

}  // namespace

int main(int argc, char** argv) {
  (void)LLVMFuzzerInitialize(&argc, &argv);
  size_t count = 0;
  for (int i = 1; i < argc; ++i) {
    for (const fs::path& path : CollectFiles(argv[i])) {
      if (!Replay(path)) {
        std::fprintf(stderr, "cannot read %s\n", path.c_str());
        return 1;
      }
      ++count;
    }
  }
  std::printf("replayed %zu inputs\n", count);
  return count == 0 ? 1 : 0;
}
