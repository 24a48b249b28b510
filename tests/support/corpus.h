// The corpus: a folder of real files, which are not part of the project. The variable
// FORMATID_CORPUS names it, in the environment or else in CMake's cache; where neither does, tests
// of it are skipped.
#ifndef FI_TESTS_SUPPORT_CORPUS_H_
#define FI_TESTS_SUPPORT_CORPUS_H_

#include <cstdlib>
#include <filesystem>

namespace fi::testing {

// Empty where there is none.
inline std::filesystem::path CorpusFolder() {
  const char* named = std::getenv("FORMATID_CORPUS");
  return named != nullptr ? named : FORMATID_CORPUS_DIR;
}

}  // namespace fi::testing

#endif  // FI_TESTS_SUPPORT_CORPUS_H_
