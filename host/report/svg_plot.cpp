#include "host/report/svg_plot.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <iterator>

#include "host/report/sound_text.h"
#include "text/utf.h"

namespace host {
namespace {

constexpr double kWidth = 820.0, kHeight = 560.0;
constexpr std::size_t kLongestTitle = 90;
constexpr double kToneHalfWidth = 15.0;  // Hz; the tone is a band
constexpr double kLowestDrawn = -120.0;  // dBFS

// Colours for paper and for a dark viewer. Without a style sheet's media queries it is the former.
constexpr const char* kStyle =
    "svg{color-scheme:light dark;--b:#fff;--t:#1b1f24;--g:#d0d7de;--w:#0969da;--s:#8250df;--m:#bf5a00}"
    "@media(prefers-color-scheme:dark){svg{--b:#0d1117;--t:#e6edf3;--g:#30363d;--w:#58a6ff;--s:#bc8cff;--m:#f0883e}}"
    ".b{fill:#fff;fill:var(--b)}"
    "text{font:12px system-ui,sans-serif;fill:#1b1f24;fill:var(--t)}"
    ".h{font-size:17px;font-weight:600}"
    ".g{stroke:#d0d7de;stroke:var(--g);fill:none}"
    ".w{stroke:#0969da;stroke:var(--w);fill:#0969da;fill:var(--w)}"
    ".s{stroke:#8250df;stroke:var(--s);stroke-width:1.5;fill:none}"
    ".m{fill:#bf5a00;fill:var(--m)}"
    "rect.m{opacity:.35}";

// Text as XML 1.0 can hold it.
std::string Escaped(const std::string& text) {
  std::string escaped;
  for (const char c : text::Printable(text::ValidUtf8(text))) {
    switch (c) {
      case '&': escaped += "&amp;"; break;
      case '<': escaped += "&lt;"; break;
      case '>': escaped += "&gt;"; break;
      default: escaped += c;
    }
  }
  // Two characters of the basic plane are none in XML.
  for (const char* forbidden : {"\xEF\xBF\xBE", "\xEF\xBF\xBF"}) {
    for (std::size_t at = 0; (at = escaped.find(forbidden, at)) != std::string::npos;) {
      escaped.replace(at, 3, "\xEF\xBF\xBD");
    }
  }
  return escaped;
}

std::string Text(double x, double y, const std::string& anchor, const std::string& text) {
  return fmt::format("<text x=\"{:.1f}\" y=\"{:.1f}\" text-anchor=\"{}\">{}</text>\n", x, y, anchor, Escaped(text));
}

// The area of a diagram, with its grid.
struct Area {
  double left, top, width, height;

  double X(double share) const { return left + share * width; }
  double Y(double share) const { return top + (1.0 - share) * height; }

  std::string VerticalLine(double share, const std::string& label) const {
    return fmt::format("<path class=\"g\" d=\"M{0:.1f} {1:.1f}V{2:.1f}\"/>\n", X(share), top, top + height) +
           Text(X(share), top + height + 16, "middle", label);
  }
  std::string HorizontalLine(double share, const std::string& label) const {
    return fmt::format("<path class=\"g\" d=\"M{:.1f} {:.1f}H{:.1f}\"/>\n", left, Y(share), left + width) +
           Text(left - 6, Y(share) + 4, "end", label);
  }
  std::string Caption(const std::string& caption) const { return Text(left, top - 8, "start", caption); }
};

// A round step of at most a sixth of the length.
double TimeStep(double seconds) {
  double step = std::pow(10.0, std::floor(std::log10(seconds / 6.0)));
  while (seconds / step > 8.0) step *= 2.0;
  return step;
}

std::string Waveform(const SoundSummary& sound, const Area& area) {
  const double scale = WaveformScale(sound.peak);
  std::string svg = area.Caption("Waveform: amplitude, full scale 1.0, over seconds");
  for (const double share : {-1.0, -0.5, 0.0, 0.5, 1.0}) {
    svg += area.HorizontalLine(0.5 + share / 2.0, fmt::format("{:g}", share * scale));
  }
  const double step = TimeStep(sound.seconds);
  const int steps = static_cast<int>(sound.seconds / step);
  for (int i = 0; i <= steps; ++i) {
    svg += area.VerticalLine(i * step / sound.seconds, fmt::format("{:.3g}", i * step));
  }
  // Along the largest samples and back along the least.
  svg += "<path class=\"w\" stroke-linejoin=\"round\" d=\"M";
  const std::size_t slices = sound.envelope.size();
  const auto point = [&](std::size_t slice, double sample) {
    const double x = area.X((static_cast<double>(slice) + 0.5) / static_cast<double>(slices));
    // Floats can be above full scale.
    const double share = std::clamp(sample / scale, -1.0, 1.0);
    fmt::format_to(std::back_inserter(svg), "{:.1f} {:.1f} ", x, area.Y(0.5 + share / 2.0));
  };
  for (std::size_t i = 0; i < slices; ++i) point(i, sound.envelope[i].second);
  for (std::size_t i = slices; i-- > 0;) point(i, sound.envelope[i].first);
  return svg + "Z\"/>\n";
}

std::string ToneMark(const SoundSummary& sound, const Area& area, double toneHz) {
  const double from = area.X(SpectrumPosition(sound, toneHz - kToneHalfWidth));
  const double width = area.X(SpectrumPosition(sound, toneHz + kToneHalfWidth)) - from;
  return fmt::format("<rect class=\"m\" x=\"{:.1f}\" y=\"{:.1f}\" width=\"{:.1f}\" height=\"{:.1f}\"/>\n",
                     from - width / 2.0, area.top, width * 2.0, area.height) +
         fmt::format("<text class=\"m\" x=\"{:.1f}\" y=\"{:.1f}\">tone, {}</text>\n", from + width * 2.0 + 2.0,
                     area.top + 14.0, FrequencyText(toneHz));
}

std::string Spectrum(const SoundSummary& sound, const Area& area, double toneHz) {
  std::string svg = area.Caption("Spectrum: dBFS, a sine of full scale 0, over frequency");
  for (double level = kLowestDrawn; level <= 0.0; level += 20.0) {
    svg += area.HorizontalLine(1.0 - level / kLowestDrawn, fmt::format("{:.0f}", level));
  }
  for (const double hertz : {20, 50, 100, 200, 500, 1000, 2000, 5000, 10000, 20000}) {
    if (hertz <= sound.highestHz) svg += area.VerticalLine(SpectrumPosition(sound, hertz), FrequencyText(hertz));
  }
  const bool isToneDrawn =
      toneHz - kToneHalfWidth > SoundSummary::kLowestHz && toneHz + kToneHalfWidth < sound.highestHz;
  if (isToneDrawn) svg += ToneMark(sound, area, toneHz);
  svg += "<path class=\"s\" stroke-linejoin=\"round\" d=\"M";
  const std::size_t bands = sound.spectrum.size();
  for (std::size_t band = 0; band < bands; ++band) {
    const double x = area.X((static_cast<double>(band) + 0.5) / static_cast<double>(bands));
    const double share = std::clamp(1.0 - sound.spectrum[band] / kLowestDrawn, 0.0, 1.0);
    fmt::format_to(std::back_inserter(svg), "{:.1f} {:.1f} ", x, area.Y(share));
  }
  return svg + "\"/>\n";
}

}  // namespace

std::string SvgPlot(const SoundSummary& sound, const std::string& title, double toneHz) {
  const std::string shown = Escaped(text::Shortened(text::ValidUtf8(title), kLongestTitle));
  const std::string figures = fmt::format("{}", fmt::join(SoundFigures(sound), ", "));
  const Area waveform{.left = 60, .top = 100, .width = 730, .height = 170};
  const Area spectrum{.left = 60, .top = 330, .width = 730, .height = 190};
  return fmt::format(
             "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
             "<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"0 0 {0} {1}\" width=\"{0}\" height=\"{1}\" "
             "role=\"img\" aria-labelledby=\"title description\">\n"
             "<title id=\"title\">{2}</title>\n"
             "<desc id=\"description\">What was heard in {3:.2f} s: {4}.</desc>\n"
             "<style>{5}</style>\n<rect class=\"b\" width=\"{0}\" height=\"{1}\"/>\n"
             "<text class=\"h\" x=\"20\" y=\"34\">{2}</text>\n",
             kWidth, kHeight, shown, sound.seconds, Escaped(figures), kStyle) +
         Text(20, 58, "start", figures) + Waveform(sound, waveform) + Spectrum(sound, spectrum, toneHz) + "</svg>\n";
}

}  // namespace host
