// Writes files that are made to cost much: small ones that unfold, or send their readers to and
// fro.
#ifndef FI_TESTS_SUPPORT_HOSTILE_FILES_H_
#define FI_TESTS_SUPPORT_HOSTILE_FILES_H_

#include <cstddef>
#include <cstdint>
#include <string>

namespace fi::testing {

// A Snappy block that begins with `head`, of up to 60 bytes, and goes on with copies of its last
// two bytes up to `size` bytes.
std::string UnfoldingBlock(const std::string& head, size_t size);

// An iWork archive of `indexes` indexes of 1 MB, each of half a million empty messages, and behind
// them `megabytes` of zeros. It has some 50 KB for each megabyte.
std::string UnfoldingArchive(size_t indexes, size_t megabytes);

// The directory of a package with `count` entries of one byte of name, all for one member, behind
// the package `before`, of which it is the directory then.
std::string PackageOfEntries(uint32_t count);

// A compound file of about `sectors` sectors whose directory is all of them, in an order in which
// neighbours are far apart, with a root of 1023 children that form a list, each in another sector.
std::string ToAndFroCompoundFile(uint32_t sectors);

// A docx package whose content types list `overrides` parts in front of the main one, and an xlsx
// package of version 16 with `titles` titles of parts in front of the version.
std::string LongContentTypes(size_t overrides);
std::string LongTitles(size_t titles, const std::string& target);

}  // namespace fi::testing

#endif  // FI_TESTS_SUPPORT_HOSTILE_FILES_H_
