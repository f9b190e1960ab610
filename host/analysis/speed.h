#pragma once

#include <span>

#include "host/analysis/spectrum_of_stretch.h"

namespace host {

// Where in a spectrum a comb like the tone's stands.
struct CombFound {
  double speed = 1.0;      // of the tone
  double amplitude = 0.0;  // sum of its lines' amplitudes; no line counts for more than twice the middle one
};

// The speed from 0.45 to 2.2 at which the seven lines are strongest. The amplitude is 0 when the spectrum has no room.
// It finds the speed to half a line's width, about half a hertz in a second.
CombFound FindComb(const StretchSpectrum& spectrum);

}  // namespace host
