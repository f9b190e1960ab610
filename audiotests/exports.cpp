#include "audiotests/audio_playback_test.h"
#include "audiotests/audio_record_test.h"
#include "audiotests/zqrmt_tests_audio.h"

namespace {

// The order of construction is that of the version lines that a load writes.
ZQ_RMT_TESTS_AUDIO::AudioRecordTestClass recordTest;
ZQ_RMT_TESTS_AUDIO::AudioPlaybackTestClass playbackTest;

static_assert(sizeof(ZQRMTChar) == sizeof(char16_t));

// Calls `run` with the host's text. No C++ exception crosses a C boundary: what the tests don't answer themselves, a
// failing probe of the log directory or a lack of memory, gives a null pointer.
template <class Run>
ZQRMTChar* Answer(const ZQRMTChar* contract, const Run& run) {
  constexpr char16_t kNoText[] = u"";
  try {
    // Where the host's wide character isn't char16_t it is another name for the same 16 bits.
    return reinterpret_cast<ZQRMTChar*>(
        run(contract == nullptr ? kNoText : reinterpret_cast<const char16_t*>(contract)));
  } catch (...) {
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
