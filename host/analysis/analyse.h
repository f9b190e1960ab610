#pragma once

#include "host/analysis/findings.h"
#include "host/analysis/recording.h"

namespace host {

// What was wrong with what was heard: a pure function. It gives findings for any recording, and the same for the same.
// Levels are taken from all of it; of a recording longer than 4 s, the rest is found in those 4 s in which the tone is
// heard best. The cost is linear in the number of samples.
RecordingFindings AnalyseRecording(const Recording& recording);

}  // namespace host
