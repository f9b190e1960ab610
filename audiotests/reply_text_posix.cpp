#include "audiotests/reply_text.h"

#include <cstdlib>
#include <cstring>

namespace ZQ_RMT_TESTS_AUDIO {

char16_t* ReplyText(const std::u16string& text) {
  const std::size_t bytes = (text.size() + 1) * sizeof(char16_t);
  void* const copy = std::malloc(bytes);
  return copy == nullptr ? nullptr : static_cast<char16_t*>(std::memcpy(copy, text.c_str(), bytes));
}

}  // namespace ZQ_RMT_TESTS_AUDIO
