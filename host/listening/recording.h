#pragma once

#include <cstddef>
#include <vector>

namespace host {

// What was captured from an endpoint, on a scale where full scale is 1.0.
struct Recording {
  double rate = 0.0;                         // frames per second
  std::vector<std::vector<float>> channels;  // of equal length
  std::vector<std::size_t> discontinuities;  // frames before which the recording itself lost sound

  std::size_t Frames() const { return channels.empty() ? 0 : channels.front().size(); }
};

}  // namespace host
