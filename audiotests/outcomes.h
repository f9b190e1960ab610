// The outcome codes that the tests report themselves; the engine's are in audio/outcome_codes.h.
#pragma once

namespace ZQ_RMT_TESTS_AUDIO {

constexpr int kBadInput = 995686;
constexpr int kRecordPassed = 995728;
constexpr int kPlaybackPassed = 995729;

}  // namespace ZQ_RMT_TESTS_AUDIO
