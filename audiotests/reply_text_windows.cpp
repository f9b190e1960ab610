#include <wchar.h>

#include "audiotests/reply_text.h"

namespace ZQ_RMT_TESTS_AUDIO {

static_assert(sizeof(wchar_t) == sizeof(char16_t));

// The C library's own copy: hosts release it with the free that belongs to this function.
char16_t* ReplyText(const std::u16string& text) {
  return reinterpret_cast<char16_t*>(_wcsdup(reinterpret_cast<const wchar_t*>(text.c_str())));
}

}  // namespace ZQ_RMT_TESTS_AUDIO
