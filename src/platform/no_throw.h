// The one place where an exception ends: nothing passes the C boundary.
#ifndef FI_PLATFORM_NO_THROW_H_
#define FI_PLATFORM_NO_THROW_H_

namespace fi {

// The result of `body`, or `failure` when it throws (memory ran out, or a host's C++ code threw).
template <class Result, class Body>
Result NoThrow(Result failure, Body&& body) noexcept {
  try {
    return body();
  } catch (...) {
    return failure;
  }
}

}  // namespace fi

#endif  // FI_PLATFORM_NO_THROW_H_
