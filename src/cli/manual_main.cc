// Writes the man page and the completions into a folder, at build time.

#include <fstream>
#include <string>

#include "cli/usage.h"

int main(int count, char** arguments) {
  if (count != 2) return 2;
  const std::string folder = arguments[1];
  const struct {
    const char* name;
    std::string text;
  } files[] = {{"formatid.1", fi::app::ManualPage()},
               {"formatid.bash", fi::app::BashCompletion()},
               {"_formatid", fi::app::ZshCompletion()},
               {"formatid.fish", fi::app::FishCompletion()}};
  for (const auto& file : files) {
    std::ofstream stream(folder + '/' + file.name, std::ios::binary);
    stream << file.text;
    stream.close();
    if (!stream) return 1;
  }
  return 0;
}
