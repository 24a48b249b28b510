// Limits of a ZIP package view: sizes that it accepts, and costs.
#ifndef FI_TOOLKIT_ZIP_LIMITS_H_
#define FI_TOOLKIT_ZIP_LIMITS_H_

#include <cstdint>

namespace fi::zip {

// The first look at the end of a file, in bytes: an end record without a comment, and the directory
// of a package of some forty members with it.
inline constexpr uint32_t kTailRead = 4096;

// The rest of where an end record can be: behind it comes a comment of up to 65,535 bytes.
inline constexpr uint32_t kMaxTail = 65535 + 22;

// Places that look like an end record and are tried, from the end on. A package nested without
// compression at the end, or a comment about packages, brings one or two.
inline constexpr uint32_t kMaxEndRecords = 16;

// Entries of a directory. The largest packages that people make (application stores, dumps of
// objects) stay below; a view of that many takes 8 MB for its index.
inline constexpr uint32_t kMaxEntries = 1'000'000;

// The directory in bytes, which is kept in memory: room for kMaxEntries of short names.
inline constexpr uint64_t kMaxDirectory = uint64_t{64} * 1024 * 1024;

// Bytes of a member's name, as many as IOMemberSource can ask for. Members of longer names are
// listed without a name.
inline constexpr uint32_t kMaxName = 511;

// Packed bytes of a single read: the local header with the beginning of the data, or a piece of the
// data. Most members that identify a document fit into one read.
inline constexpr uint32_t kInputBlock = 4096;

// Inflated bytes of the largest member that a view inflates at once and keeps, so that a reader may
// move freely. A larger member is inflated only as far as its reader reads.
inline constexpr uint32_t kMaxKept = 4096;

// Bytes of one deflated member that can be read. A probe reads kilobytes; a nested package, which
// is read from its end, has to be inflated whole. That takes about 0.2 s.
inline constexpr uint64_t kMaxInflated = uint64_t{64} * 1024 * 1024;

// Bytes that a view inflates, including repetitions after a move backwards: about half a second of
// work, however a file makes its readers move.
inline constexpr uint64_t kMaxInflatedByView = 3 * kMaxInflated;

// Packed bytes that a view inflates, including repetitions. Blocks without content cost 50 ns a
// byte and yield nothing that the limits above would see; reading a deflated package from its end
// takes four passes at most. A view in another container is not held by the size of a file, since
// its bytes may be inflated themselves.
inline constexpr uint64_t kMaxPasses = 4;  // over as many bytes as the file has
inline constexpr uint64_t kFreeOfPasses = uint64_t{2} * 1024 * 1024;
inline constexpr uint64_t kMaxPackedByNestedView = uint64_t{8} * 1024 * 1024;

// Inflated bytes per packed byte, and inflated bytes that can be read at any ratio. Text packs 5 to
// 20 times, sheets of equal rows up to 100; deflate itself ends at 1032.
inline constexpr uint64_t kMaxRatio = 256;
inline constexpr uint64_t kFreeOfRatio = uint64_t{1024} * 1024;

// What is done to find the members of a package without a central directory: headers that are
// followed, and bytes of members whose header does not tell their size, the inflated ones included.
// What tells the format of a document stands among its first members; the bytes take about 0.1 s.
inline constexpr uint32_t kMaxRebuilt = 4096;
inline constexpr uint64_t kMaxRebuiltExamined = uint64_t{32} * 1024 * 1024;

// Containers around a package, at most. Documents have a package in a package; a compound file
// around them may be one more level. Each multiplies what a read inside it costs.
inline constexpr uint32_t kMaxNesting = 3;

}  // namespace fi::zip

#endif  // FI_TOOLKIT_ZIP_LIMITS_H_
