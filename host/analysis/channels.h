#pragma once

#include <vector>

#include "host/analysis/findings.h"
#include "host/analysis/tone_search.h"

namespace host {

// The channel whose tone was heard best, or the loudest when none was; 0 when there are no channels.
std::size_t ReferenceChannel(const std::vector<ChannelFindings>& channels);

// Compares the tone on a channel with that on the reference channel.
void CompareChannels(const ToneSearch& reference, const ToneSearch& search, ChannelFindings& channel);

}  // namespace host
