// Counts the formats below a folder.
//
//   formatid_example_folder_scan FOLDER
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <map>
#include <string>

#include "formatid/formatid.hpp"

int main(int argc, char** argv) {
  if (argc != 2) return 2;
  std::map<std::string, std::uint64_t> counts;
  std::error_code error;
  const auto options = std::filesystem::directory_options::skip_permission_denied;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(argv[1], options, error)) {
    std::error_code ignored;
    if (!entry.is_regular_file(ignored)) continue;
    const formatid::Result result = formatid::identify(formatid::Source::file(entry.path()));
    const bool isRead = result.status() == kFiOk;
    ++counts[std::string(isRead ? result.name() : result.statusText())];
  }
  for (const auto& [name, count] : counts) {
    std::printf("%6llu  %s\n", static_cast<unsigned long long>(count), name.c_str());
  }
  return error ? 1 : 0;
}
