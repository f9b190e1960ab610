// Calls both exports with any text. Each must answer, and the answer must be a contract that comes back unchanged from
// the second call on. Nothing is played, because the thread is on no platform.

#include <utf8.h>

#include <cstdlib>
#include <memory>
#include <string>

#include "audiotests/zqrmt_tests_audio.h"
#include "logging/model_logger.h"

namespace {

// Bytes that aren't UTF-8 become halves of surrogate pairs, which have no form in UTF-8.
std::u16string TextOf(const std::uint8_t* data, std::size_t size) {
  if (utf8::is_valid(data, data + size)) return utf8::utf8to16(std::string(data, data + size));
  std::u16string text;
  for (std::size_t i = 0; i < size; ++i) text += static_cast<char16_t>(data[i] < 0x80 ? data[i] : 0xDC00 + data[i]);
  return text;
}

std::u16string Answer(ZQRMTTestFunction* test, const std::u16string& contract) {
  const std::unique_ptr<char16_t, decltype(&std::free)> reply(test(contract.c_str()), std::free);
  if (reply == nullptr) std::abort();
  return reply.get();
}

// Whether the text has a number of more than 15 digits. RapidJSON's normal precision may read such a double wrong by a
// unit in its last place, so that it changes each time.
bool HasLongNumber(const std::u16string& text) {
  std::size_t digits = 0;
  for (const char16_t unit : text) {
    const bool digit = unit >= u'0' && unit <= u'9';
    if (!digit && unit != u'.') digits = 0;
    if (digit && ++digits > 15) return true;
  }
  return false;
}

}  // namespace

// tools/fuzz gives the process a log directory of its own, with a flag file that keeps the module's lines out of it.
extern "C" int LLVMFuzzerInitialize(int*, char***) {
  // The text of each line of the records is made, which is part of what is fuzzed, but not written.
  logging::GetModelLogger().SetLevel(logging::kDebug3);
  logging::GetModelLogger().SetLogFile("nolog");
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  for (ZQRMTTestFunction* test : {AudioRecordTest, AudioPlaybackTest}) {
    const std::u16string second = Answer(test, Answer(test, TextOf(data, size)));
    if (Answer(test, second) != second && !HasLongNumber(second)) std::abort();
  }
  return 0;
}
