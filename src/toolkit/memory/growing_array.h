// An array of plain elements that grows and never throws: memory that has run out is a result.
#ifndef FI_TOOLKIT_MEMORY_GROWING_ARRAY_H_
#define FI_TOOLKIT_MEMORY_GROWING_ARRAY_H_

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <limits>
#include <memory>
#include <type_traits>

namespace fi {

template <class T>
class GrowingArray {
  static_assert(std::is_trivially_copyable_v<T>);

 public:
  T* data() { return elements_.get(); }
  const T* data() const { return elements_.get(); }
  size_t size() const { return size_; }
  const T* begin() const { return data(); }
  const T* end() const { return data() + size_; }
  T& operator[](size_t index) { return data()[index]; }
  const T& operator[](size_t index) const { return data()[index]; }

  // Keeps the memory.
  void Clear() { size_ = 0; }

  // Elements that come in new are not initialised. False, and nothing changes, without memory.
  bool Resize(size_t size) {
    if (size > capacity_ && !Grow(size)) return false;
    size_ = size;
    return true;
  }

  bool Append(const T* elements, size_t count) {
    if (count > kMost - size_) return false;
    const size_t at = size_;
    if (!Resize(size_ + count)) return false;
    std::copy_n(elements, count, data() + at);
    return true;
  }

  bool Append(const T& element) { return Append(&element, 1); }

 private:
  struct Free {
    void operator()(T* elements) const { std::free(elements); }
  };

  static constexpr size_t kMost = std::numeric_limits<size_t>::max() / sizeof(T) / 4;
  static constexpr size_t kFirst = std::max<size_t>(512 / sizeof(T), 4);  // elements

  bool Grow(size_t size) {
    if (size > kMost) return false;
    const size_t capacity = std::max({size, capacity_ * 2, kFirst});
    void* grown = std::realloc(elements_.get(), capacity * sizeof(T));
    if (grown == nullptr) return false;
    (void)elements_.release();
    elements_.reset(static_cast<T*>(grown));
    capacity_ = capacity;
    return true;
  }

  std::unique_ptr<T[], Free> elements_;
  size_t size_ = 0;
  size_t capacity_ = 0;
};

}  // namespace fi

#endif  // FI_TOOLKIT_MEMORY_GROWING_ARRAY_H_
