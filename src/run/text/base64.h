#ifndef FI_RUN_TEXT_BASE64_H_
#define FI_RUN_TEXT_BASE64_H_

#include <string>
#include <string_view>

namespace fi::app {

// Appends `bytes` in base64 (RFC 4648, section 4, with padding).
void AppendBase64(std::string_view bytes, std::string& out);

}  // namespace fi::app

#endif  // FI_RUN_TEXT_BASE64_H_
