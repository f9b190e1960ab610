#pragma once

namespace virtual_audio {

// The machine of the description "virtual": what a PC might have, with the microphone in front of the speaker.
inline constexpr char kBuiltInMachine[] = R"json({
  "clock": "real",
  "endpoints": [
    {"id": "{0.0.0.00000000}.{speaker}", "name": "Speaker", "flow": "render",
     "default": ["console", "multimedia", "communications"], "levels": [0.25, 0.75],
     "format": {"tag": "extensible", "channels": 2, "rate": 48000, "bits": 16}},
    {"id": "{0.0.0.00000000}.{headphones}", "name": "Headphones", "flow": "render", "levels": [0.5, 0.5],
     "format": {"tag": "extensible", "channels": 2, "rate": 44100, "bits": 24}},
    {"id": "{0.0.0.00000000}.{monitor}", "name": "Monitor Speakers", "flow": "render", "state": "unplugged"},
    {"id": "{0.0.1.00000000}.{microphone}", "name": "Microphone", "flow": "capture",
     "default": ["console", "multimedia", "communications"], "levels": [0.5],
     "format": {"tag": "extensible", "channels": 1, "rate": 48000, "bits": 24},
     "hears": [{"endpoint": "{0.0.0.00000000}.{speaker}", "gain": 0.5}]},
    {"id": "{0.0.1.00000000}.{linein}", "name": "Line In", "flow": "capture",
     "format": {"tag": "extensible", "channels": 2, "rate": 48000, "bits": 16},
     "hears": [{"endpoint": "{0.0.0.00000000}.{headphones}"}]}
  ]
})json";

}  // namespace virtual_audio
