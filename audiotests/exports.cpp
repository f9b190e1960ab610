#include <exception>

#include "audiotests/playback_sequence.h"
#include "audiotests/record_sequence.h"
#include "audiotests/zqrmt_tests_audio.h"

namespace {

// Each constructor logs the module's version, in this order.
ZQ_RMT_TESTS_AUDIO::AudioRecordTestClass recordTest;
ZQ_RMT_TESTS_AUDIO::AudioPlaybackTestClass playbackTest;

static_assert(sizeof(ZQRMTChar) == sizeof(char16_t));

// Calls `run` with the host's text. No error may cross the C boundary as an exception: for a failing probe of the log
// directory and for a lack of memory, which the tests don't handle themselves, the answer is a null pointer. Both are
// standard exceptions, and nothing else is thrown in here but outcomes, which the tests do handle.
//
// A handler for everything would also catch what unwinds a cancelled thread in the GNU C library, and that library ends
// the process when it isn't passed on.
template <class Run>
ZQRMTChar* Answer(const ZQRMTChar* contract, const Run& run) {
  constexpr char16_t kNoText[] = u"";
  try {
    // On Windows the host's wide character is wchar_t, which has 16 bits too.
    return reinterpret_cast<ZQRMTChar*>(
        run(contract == nullptr ? kNoText : reinterpret_cast<const char16_t*>(contract)));
  } catch (const std::exception&) {
    return nullptr;
  }
}

}  // namespace

ZQRMTChar* AudioPlaybackTest(const ZQRMTChar* contract) {
  return Answer(contract, [](const char16_t* text) { return playbackTest.RunAudioPlaybackTest(text); });
}

ZQRMTChar* AudioRecordTest(const ZQRMTChar* contract) {
  return Answer(contract, [](const char16_t* text) { return recordTest.RunAudioRecordTest(text); });
}
