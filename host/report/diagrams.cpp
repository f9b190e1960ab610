#include "host/report/diagrams.h"

#include <fmt/core.h>

#include <algorithm>
#include <cmath>
#include <iterator>

#include "host/analysis/tone.h"
#include "host/base/text_output.h"
#include "host/report/markup.h"
#include "host/report/sound_text.h"

namespace host {
namespace {

constexpr double kToneHalfWidth = 15.0;  // Hz; the tone is a band
constexpr double kLowestDrawn = -120.0;  // dBFS
constexpr double kNarrowestMark = 2.0;

std::string Text(double x, double y, const char* anchor, const std::string& text, const char* style = "") {
  return fmt::format("<text class=\"{}\" x=\"{:.1f}\" y=\"{:.1f}\" text-anchor=\"{}\">{}</text>\n", style, x, y, anchor,
                     Escaped(text));
}

std::string Rectangle(const char* style, double x, double y, double width, double height) {
  return fmt::format("<rect class=\"{}\" x=\"{:.1f}\" y=\"{:.1f}\" width=\"{:.1f}\" height=\"{:.1f}\"/>\n", style, x, y,
                     width, height);
}

// The area of a diagram, with its grid.
struct Area {
  double left, top, width, height;

  double X(double share) const { return left + share * width; }
  double Y(double share) const { return top + (1.0 - share) * height; }

  std::string VerticalLine(double share, const std::string& label) const {
    return fmt::format("<path class=\"grid\" d=\"M{0:.1f} {1:.1f}V{2:.1f}\"/>\n", X(share), top, top + height) +
           Text(X(share), top + height + 16, "middle", label);
  }
  std::string HorizontalLine(double share, const std::string& label) const {
    return fmt::format("<path class=\"grid\" d=\"M{:.1f} {:.1f}H{:.1f}\"/>\n", left, Y(share), left + width) +
           Text(left - 6, Y(share) + 4, "end", label);
  }
  std::string Caption(const std::string& caption) const { return Text(left, top - 10, "start", caption, "caption"); }
  // From one share to the other over the whole height, and wide enough to be seen.
  std::string Mark(const char* style, double from, double to) const {
    const double begin = X(std::clamp(from, 0.0, 1.0));
    const double length = std::max(X(std::clamp(to, 0.0, 1.0)) - begin, kNarrowestMark);
    return Rectangle(style, begin, top, length, height);
  }
};

// The channel whose findings are the recording's, and whose sound is drawn. Null without findings.
const ChannelFindings* DrawnChannel(const RunRecord& run) {
  const std::optional<RecordingFindings>& findings = run.call.findings;
  return findings.has_value() && !findings->channels.empty() ? &findings->channels[findings->referenceChannel]
                                                             : nullptr;
}

// A round step of at most a sixth of the length.
double TimeStep(double seconds) {
  double step = std::pow(10.0, std::floor(std::log10(seconds / 6.0)));
  while (seconds / step > 8.0) step *= 2.0;
  return step;
}

// The stretches that are marked in the waveform, and from the right what the colours mean.
std::string Marks(const ChannelFindings& channel, double seconds, const Area& area) {
  bool byPath = false, byHost = false;
  std::string svg;
  for (const ClippedStretch& one : channel.clipping.clippedStretches) {
    svg += area.Mark("clipped", one.beginSeconds / seconds, (one.beginSeconds + one.lengthSeconds) / seconds);
  }
  for (const ToneInterruption& one : channel.interruptions) {
    svg += area.Mark(one.byHost ? "lost" : "tone", one.beginSeconds / seconds,
                     (one.beginSeconds + one.lengthSeconds) / seconds);
    (one.byHost ? byHost : byPath) = true;
  }
  double right = area.left + area.width;
  const auto explain = [&](const char* style, const std::string& meaning, double width) {
    svg += Text(right, area.top - 10, "end", meaning) + Rectangle(style, right - width, area.top - 19, 10, 10);
    right -= width + 14;
  };
  if (!channel.clipping.clippedStretches.empty()) explain("clipped", "cut off: too loud", 114);
  if (byPath) explain("tone", "interrupted", 82);
  if (byHost) explain("lost", "not captured by this computer", 192);
  return svg;
}

std::string Waveform(const SoundSummary& sound, const ChannelFindings* channel, const std::string& caption,
                     const Area& area) {
  const double scale = WaveformScale(sound.peak);
  std::string svg = area.Caption(caption);
  for (const double share : {-1.0, -0.5, 0.0, 0.5, 1.0}) {
    svg += area.HorizontalLine(0.5 + share / 2.0, fmt::format("{:g}", share * scale));
  }
  const double step = TimeStep(sound.seconds);
  const int steps = static_cast<int>(sound.seconds / step);
  for (int i = 0; i <= steps; ++i) {
    svg += area.VerticalLine(i * step / sound.seconds, fmt::format("{:.3g}{}", i * step, i == steps ? " s" : ""));
  }
  // Along the largest samples and back along the least.
  svg += "<path class=\"sound\" stroke-linejoin=\"round\" d=\"M";
  const std::size_t slices = sound.envelope.size();
  const auto point = [&](std::size_t slice, double sample) {
    const double x = area.X((static_cast<double>(slice) + 0.5) / static_cast<double>(slices));
    // Floats can be above full scale.
    const double share = std::clamp(sample / scale, -1.0, 1.0);
    fmt::format_to(std::back_inserter(svg), "{:.1f} {:.1f} ", x, area.Y(0.5 + share / 2.0));
  };
  for (std::size_t i = 0; i < slices; ++i) point(i, sound.envelope[i].second);
  for (std::size_t i = slices; i-- > 0;) point(i, sound.envelope[i].first);
  svg += "Z\"/>\n";
  if (channel != nullptr) svg += Marks(*channel, sound.seconds, area);
  if (IsSilent(sound)) svg += Text(area.X(0.5), area.Y(0.62), "middle", SilenceText(sound), "silence");
  return svg;
}

std::string Spectrum(const SoundSummary& sound, const Area& area, bool tonePlays) {
  std::string svg = area.Caption("Which frequencies it had: dB, full scale 0");
  for (double level = kLowestDrawn; level <= 0.0; level += 20.0) {
    svg += area.HorizontalLine(1.0 - level / kLowestDrawn, fmt::format("{:.0f}", level));
  }
  for (const double hertz : {20, 50, 100, 200, 500, 1000, 2000, 5000, 10000, 20000}) {
    if (hertz <= sound.highestHz) svg += area.VerticalLine(SpectrumPosition(sound, hertz), FrequencyText(hertz));
  }
  if (tonePlays && kToneHz + kToneHalfWidth < sound.highestHz) {
    const double from = SpectrumPosition(sound, kToneHz - kToneHalfWidth);
    const double to = SpectrumPosition(sound, kToneHz + kToneHalfWidth);
    svg += area.Mark("tone", from - (to - from) / 2.0, to + (to - from) / 2.0);
    svg += Text(area.X(to) + 6, area.top + 14, "start", "the test tone, " + FrequencyText(kToneHz), "tone");
  }
  svg += "<path class=\"spectrum\" stroke-linejoin=\"round\" d=\"M";
  const std::size_t bands = sound.spectrum.size();
  for (std::size_t band = 0; band < bands; ++band) {
    const double x = area.X((static_cast<double>(band) + 0.5) / static_cast<double>(bands));
    const double share = std::clamp(1.0 - sound.spectrum[band] / kLowestDrawn, 0.0, 1.0);
    fmt::format_to(std::back_inserter(svg), "{:.1f} {:.1f} ", x, area.Y(share));
  }
  return svg + "\"/>\n";
}

// Without a sign for what is nothing when rounded.
std::string SignedTenths(double value) { return std::abs(value) < 0.05 ? "0.0" : fmt::format("{:+.1f}", value); }

// A bar for each partial. How loud the tone should come through isn't known, only that its partials are alike: those
// expected have the energy of those heard.
std::string Partials(const ChannelFindings* channel, const Area& area) {
  std::string svg = area.Caption("The test tone's seven parts");
  const bool isHeard = channel != nullptr && channel->tone.heard && channel->tone.partials.size() == kPartials;
  const std::vector<double> heard = isHeard ? channel->tone.partials : std::vector<double>(kPartials, 0.0);
  double energy = 0.0;
  for (const double amplitude : heard) energy += amplitude * amplitude;
  const double expected = energy > 0.0 ? std::sqrt(energy / kPartials) : 1.0;
  const double highest = std::max(1.5, *std::max_element(heard.begin(), heard.end()) / expected * 1.15);
  const double room = area.width / kPartials;
  svg += fmt::format("<path class=\"grid\" d=\"M{:.1f} {:.1f}H{:.1f}\"/>\n", area.left, area.Y(0.0), area.X(1.0));
  for (std::size_t i = 0; i < kPartials; ++i) {
    const double left = area.left + room * static_cast<double>(i), ratio = heard[i] / expected;
    const double height = area.height * ratio / highest, due = area.height / highest;
    if (ratio > 0.0) {
      svg += Rectangle("heard", left + 5, area.Y(0.0) - height, room - 10, height);
      const std::string decibels = ratio < 0.01 ? "none" : SignedTenths(Decibels(ratio));
      svg += Text(left + room / 2, area.Y(0.0) - std::max(height, due) - 4, "middle", decibels, "small");
    }
    svg += Rectangle("expected", left + 3, area.Y(0.0) - due, room - 6, due);
    const double hertz = kToneHz + PartialOffsetHz(i);
    svg += Text(left + room / 2, area.Y(0.0) + 16, "middle", fmt::format("{:.0f}", hertz), "small");
  }
  if (!isHeard) svg += Text(area.X(0.5), area.Y(0.3), "middle", "not heard");
  const double legend = area.top + area.height + 34;
  svg += Rectangle("heard", area.left, legend - 9, 10, 10) + Text(area.left + 14, legend, "start", "heard");
  svg += Rectangle("expected", area.left + 62, legend - 9, 10, 10) + Text(area.left + 76, legend, "start", "expected");
  return svg + Text(area.X(1.0), legend, "end", "dB, Hz");
}

}  // namespace

std::string Diagrams(const RunRecord& run, double top) {
  const SoundSummary& sound = *run.call.heard;
  const ChannelFindings* channel = DrawnChannel(run);
  const bool tonePlays = run.render.has_value();
  std::string caption = "What was heard over time: 1 is full scale";
  if (channel != nullptr && run.call.findings->channels.size() > 1) {
    caption = fmt::format("What was heard over time, channel {} of {}: 1 is full scale",
                          run.call.findings->referenceChannel + 1, run.call.findings->channels.size());
  }
  const Area waveform{.left = 60, .top = top + 28, .width = 730, .height = 150};
  const Area spectrum{.left = 60, .top = top + 240, .width = tonePlays ? 480.0 : 730.0, .height = 160};
  const Area partials{.left = 580, .top = top + 240, .width = 210, .height = 160};
  return Waveform(sound, channel, caption, waveform) + Spectrum(sound, spectrum, tonePlays) +
         (tonePlays ? Partials(channel, partials) : "");
}

}  // namespace host
