#include "stream/id_stream.h"

#include <gtest/gtest.h>

#include <numeric>
#include <string>
#include <vector>

#include "formatid/platform.h"
#include "tests/support/bytes.h"
#include "tests/support/memory_handle.h"

namespace fi {
namespace {

using testing::Bytes;
using testing::MemoryHandle;

// Bytes 0, 1, 2 ... of the given number, modulo 251 so that no power of two repeats them.
std::string Counting(size_t size) {
  std::string bytes(size, '\0');
  for (size_t i = 0; i < size; ++i) bytes[i] = static_cast<char>(i % 251);
  return bytes;
}

TEST(IdStream, ReadsEveryByteWhateverTheHandleDoes) {
  struct Case {
    const char* name;
    uint32_t mostPerRead;
    bool has64Bit;
  };
  const std::string bytes = Counting(5000);
  for (const Case& test : {Case{"whole", UINT32_MAX, true}, Case{"one byte", 1, true},
                           Case{"seven bytes, 32 bit", 7, false}}) {
    SCOPED_TRACE(test.name);
    MemoryHandle handle(bytes);
    handle.mostPerRead = test.mostPerRead;
    handle.has64Bit = test.has64Bit;
    const ScopedStream stream(&handle);
    std::string got;
    for (uint32_t byte; (byte = IdStreamGetByte(stream.get())) != kEndOfData;) {
      got += static_cast<char>(byte);
    }
    EXPECT_EQ(got, bytes);
    EXPECT_EQ(IdStreamPosition(stream.get()), 5000);
  }
}

TEST(IdStream, SeeksInsideTheBufferLeaveTheHandleAlone) {
  MemoryHandle handle(Counting(100));
  const ScopedStream stream(&handle);
  IdStreamSkip(10, stream.get());
  const uint64_t reads = handle.reads;
  EXPECT_EQ(IdStreamSeek(stream.get(), 3, kIoFromStart), 0);
  EXPECT_EQ(IdStreamGetByte(stream.get()), 3u);
  EXPECT_EQ(IdStreamSeek(stream.get(), 5, kIoFromCurrent), 0);
  EXPECT_EQ(IdStreamGetByte(stream.get()), 9u);
  EXPECT_EQ(handle.seeks, 0u);
  EXPECT_EQ(handle.reads, reads);
}

TEST(IdStream, SeekTable) {
  struct Case {
    int64_t offset;
    uint16_t origin;
    int32_t result;
    uint32_t next;
  };
  const Case cases[] = {
      {0, kIoFromStart, 0, 0},
      {4999, kIoFromStart, 0, 4999 % 251},
      {5000, kIoFromStart, 0, kEndOfData},
      {1 << 30, kIoFromStart, 0, kEndOfData},
      {-1, kIoFromStart, -1, kEndOfData},
      {-4, kIoFromEnd, 0, 4996 % 251},
      {-5000, kIoFromEnd, 0, 0},
      {-5001, kIoFromEnd, -1, 100},  // stays where it was
      {-50, kIoFromCurrent, 0, 50},
      {3000, kIoFromCurrent, 0, 3100 % 251},
      {INT64_MAX, kIoFromCurrent, -1, 100},
  };
  for (const Case& test : cases) {
    SCOPED_TRACE(std::to_string(test.offset) + " from " + std::to_string(test.origin));
    MemoryHandle handle(Counting(5000));
    const ScopedStream stream(&handle);
    IdStreamSkip(100, stream.get());
    EXPECT_EQ(IdStreamSeek(stream.get(), test.offset, test.origin), test.result);
    EXPECT_EQ(IdStreamGetByte(stream.get()), test.next);
    if (test.offset < INT32_MIN || test.offset > INT32_MAX) continue;

    MemoryHandle narrow(Counting(5000));
    narrow.has64Bit = false;
    const ScopedStream stream32(&narrow);
    IdStreamSkip(100, stream32.get());
    const bool wraps = test.offset == -1 && test.origin == kIoFromStart;  // to 4 GB - 1
    EXPECT_EQ(IdStreamSeek(stream32.get(), test.offset, test.origin), wraps ? 0 : test.result);
    EXPECT_EQ(IdStreamGetByte(stream32.get()), test.next);
  }
}

TEST(IdStream, FailedSeekLeavesTheTargetAsPosition) {
  MemoryHandle handle(Counting(5000));
  const ScopedStream stream(&handle);
  IdStreamGetByte(stream.get());
  handle.failingSeek = handle.seeks + 1;
  EXPECT_EQ(IdStreamSeek(stream.get(), 4000, kIoFromStart), -1);
  EXPECT_EQ(IdStreamPosition(stream.get()), 4000);
  EXPECT_EQ(IdStreamGetByte(stream.get()), 4000u % 251);  // the refill puts the handle right
}

TEST(IdStream, ContinuesAfterAProbeMovedTheHandle) {
  MemoryHandle handle(Counting(5000));
  const ScopedStream stream(&handle);
  IdStreamSkip(2047, stream.get());
  EXPECT_EQ(IoHandleSeek(&handle, 7, kIoFromStart), 0);
  EXPECT_EQ(IdStreamGetByte(stream.get()), 2047u % 251);
  EXPECT_EQ(IdStreamGetByte(stream.get()), 2048u % 251);
}

TEST(IdStream, ReadErrorsAreEndOfDataAndPassOver) {
  MemoryHandle handle(Counting(10));
  handle.failingRead = 1;
  const ScopedStream stream(&handle);
  EXPECT_EQ(IdStreamGetByte(stream.get()), kEndOfData);
  EXPECT_EQ(IdStreamGetByte(stream.get()), 0u);
}

TEST(IdStream, Words) {
  MemoryHandle handle(Bytes("\x34\x12\x34\x12\x01\x02\x03\x04\x01\x02\x03\x84\x05"));
  const ScopedStream stream(&handle);
  EXPECT_EQ(IdStreamGetWordLE(stream.get()), 0x1234);
  EXPECT_EQ(IdStreamGetWordBE(stream.get()), 0x3412);
  uint32_t value = 0;
  EXPECT_EQ(IdStreamGetDwordBE(stream.get(), &value), 0);
  EXPECT_EQ(value, 0x01020304u);
  EXPECT_EQ(IdStreamGetDwordLE(stream.get(), &value), 0);
  EXPECT_EQ(value, 0x84030201u);
  // One byte is left: nothing fits, the value stays, and the byte is consumed.
  EXPECT_EQ(IdStreamGetDwordLE(stream.get(), &value), -1);
  EXPECT_EQ(value, 0x84030201u);
  EXPECT_EQ(IdStreamGetWordLE(stream.get()), -1);
}

TEST(IdStream, UncheckedDwordFillsWithOnesPastTheEnd) {
  struct Case {
    std::string bytes;
    uint32_t value;
  };
  for (const Case& test : {Case{Bytes("\x01\x02\x03\x04"), 0x01020304u},
                           Case{Bytes("\x01\x02\x03"), 0xFFFFFFFFu}, Case{"", 0xFFFFFFFFu}}) {
    MemoryHandle handle(test.bytes);
    const ScopedStream stream(&handle);
    EXPECT_EQ(IdStreamReadDwordBE(stream.get()), test.value) << test.bytes.size();
  }
}

TEST(IdStream, Skip) {
  MemoryHandle handle(Counting(3000));
  const ScopedStream stream(&handle);
  EXPECT_EQ(IdStreamSkip(0, stream.get()), 0u);
  EXPECT_EQ(IdStreamSkip(3000, stream.get()), 0u);
  EXPECT_EQ(IdStreamSkip(1, stream.get()), kEndOfData);
}

TEST(IdStream, PlainAsciiPrefix) {
  const uint8_t bytes[] = {1, 127, 0, 128};
  EXPECT_TRUE(IsPlainAsciiPrefix(bytes, 0));
  EXPECT_TRUE(IsPlainAsciiPrefix(bytes, 2));
  EXPECT_FALSE(IsPlainAsciiPrefix(bytes, 3));
  EXPECT_FALSE(IsPlainAsciiPrefix(bytes + 3, 1));
}

TEST(IdStream, BufferSizeComesFromTheOption) {
  UTOptionSet* set = UTGetGlobalOptionSet();
  struct Case {
    uint32_t kilobytes;
    uint32_t size;
  };
  for (const Case& test : {Case{1, 1024}, Case{64, 65536}, Case{0, kDefaultStreamBuffer},
                           Case{65537, kDefaultStreamBuffer}, Case{2, 2048}}) {
    ASSERT_EQ(UTSetOption(set, kUtOptionBufferSize, &test.kilobytes, 4), 0u);
    MemoryHandle handle("");
    const ScopedStream stream(&handle);
    EXPECT_EQ(stream.get()->bufferSize, test.size) << test.kilobytes;
  }
}

}  // namespace
}  // namespace fi
