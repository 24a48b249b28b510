// A chain of sectors: each unit's successor is looked up in a table. The chain is followed only as
// far as it is asked for, and remembers points on its way, so that going back does not start anew.
#ifndef FI_TOOLKIT_STORAGE_CHAIN_H_
#define FI_TOOLKIT_STORAGE_CHAIN_H_

#include <array>
#include <cstdint>

namespace fi::storage {

inline constexpr uint32_t kNoUnit = 0xFFFFFFFF;

// The successors of the units (sectors or mini sectors) of a file.
class Links {
 public:
  // The unit behind `unit`; a number not below Count() where the chain ends or is broken.
  virtual uint32_t Next(uint32_t unit) = 0;

  // How many units exist: no chain is longer, and a higher number is none.
  virtual uint32_t Count() const = 0;

 protected:
  ~Links() = default;
};

class Chain {
 public:
  // `links` is borrowed.
  void Start(Links& links, uint32_t first);

  // The chain's index-th unit, counted from 0, or kNoUnit behind its end. A chain that runs into
  // itself ends where that is noticed: within three times its length up to where it closes.
  uint32_t At(uint32_t index);

 private:
  struct Point {
    uint32_t index = 0;
    uint32_t unit = kNoUnit;
  };

  // Points kept for going back, in 4 KB: at most 1/512 of the chain is followed again.
  static constexpr uint32_t kPoints = 1024;

  Point NearestBefore(uint32_t index) const;
  bool Extend(Point at);
  void Remember(Point at);

  Links* links_ = nullptr;
  uint32_t length_ = 0;  // the chain is not longer; exact once its end was met
  Point cursor_;         // the last answer
  Point frontier_;       // the furthest answer
  Point mark_;           // the unit at the last power of two, which a loop meets again
  uint32_t stride_ = 1;
  std::array<uint32_t, kPoints> points_;  // units at multiples of the stride up to the frontier
};

}  // namespace fi::storage

#endif  // FI_TOOLKIT_STORAGE_CHAIN_H_
