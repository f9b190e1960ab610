#pragma once

#include <string>

namespace ZQ_RMT_TESTS_AUDIO {

// A copy of `text` with a zero unit at its end, which the host releases with free of the C library. Null if there is no
// memory.
char16_t* ReplyText(const std::u16string& text);

}  // namespace ZQ_RMT_TESTS_AUDIO
