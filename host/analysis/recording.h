#pragma once

#include <cstddef>
#include <vector>

namespace host {

// What a capture endpoint gave while the tone played. Full scale is 1.0; samples may be anything, NaN and infinities
// too, and channels may differ in length.
struct Recording {
  double rate = 0.0;                         // frames per second
  std::vector<std::vector<float>> channels;  // the samples of each
  // The frames before which the host itself failed to keep up and lost sound.
  std::vector<std::size_t> discontinuities;

  // Of the first channel.
  std::size_t Frames() const { return channels.empty() ? 0 : channels.front().size(); }
};

}  // namespace host
