// Compound documents as data. One is written as its children between semicolons:
//
//   'Book'= 09 08 'text'              a stream; names and bytes as in samples.h
//   06'Spaces'{ 'Info'{}; 'A'= 00 }   a storage with what is in it
//   $NAME                             what tests/data/storage_parts.txt defines
#ifndef FI_TESTS_SUPPORT_STORAGE_SAMPLES_H_
#define FI_TESTS_SUPPORT_STORAGE_SAMPLES_H_

#include <string>
#include <vector>

#include "tests/support/storage_handle.h"

namespace fi::testing {

// Fails the test when the notation is wrong.
std::vector<StorageNode> SampleStorage(const std::string& notation);

}  // namespace fi::testing

#endif  // FI_TESTS_SUPPORT_STORAGE_SAMPLES_H_
