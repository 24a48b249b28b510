// The handle on a decrypted package.
#ifndef FI_TOOLKIT_CRYPTO_PACKAGE_VIEW_H_
#define FI_TOOLKIT_CRYPTO_PACKAGE_VIEW_H_

#include <cstdint>
#include <string_view>

#include "toolkit/crypto/plaintext.h"
#include "toolkit/io/positioned_handle.h"

namespace fi::crypto {

class PackageView final : public io::PositionedHandle {
 public:
  // `depth` counts this view and those around it. `work` is that of the document, or null.
  PackageView(std::string_view name, uint32_t depth, Work* work);

  Plaintext& plaintext() { return plaintext_; }

 protected:
  int64_t Size() override;
  int32_t ReadAt(int64_t offset, uint8_t* buffer, uint32_t size, uint32_t* count) override;
  int32_t OtherInfo(uint32_t code, void* out) override;

 private:
  ~PackageView() override = default;

  const uint32_t depth_;
  Plaintext plaintext_;
};

}  // namespace fi::crypto

#endif  // FI_TOOLKIT_CRYPTO_PACKAGE_VIEW_H_
