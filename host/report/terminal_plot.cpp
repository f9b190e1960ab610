#include "host/report/terminal_plot.h"

#include <fmt/core.h>

#include <algorithm>
#include <array>
#include <cmath>

#include "host/report/sound_text.h"

namespace host {
namespace {

constexpr int kRows = 6;
constexpr int kLabelColumns = 8;
constexpr int kFewestColumns = 20, kMostColumns = 120;
constexpr double kLowestDrawn = -120.0;  // dBFS
// The levels of the spectrum, from the lowest drawn to 0 dBFS.
constexpr std::array<const char*, 9> kBlocks = {" ", "▁", "▂", "▃", "▄", "▅", "▆", "▇", "█"};
constexpr std::array<const char*, 9> kPlainBlocks = {" ", ".", ":", "-", "=", "+", "*", "#", "@"};

// A cell of the waveform has so many dots; in ASCII it is one dot or none.
struct Grid {
  int columns, rows;
};
constexpr Grid kBraille{.columns = 2, .rows = 4};
constexpr Grid kPlain{.columns = 1, .rows = 1};

// Whether the sound passes through a dot, counted from the left and the top.
class Dots {
 public:
  Dots(const SoundSummary& sound, int columns, int rows)
      : rows_(rows), spans_(static_cast<std::size_t>(columns), {0.0, 0.0}) {
    const double scale = WaveformScale(sound.peak);
    const std::size_t slices = sound.envelope.size(), width = spans_.size();
    for (std::size_t column = 0; column < width; ++column) {
      const std::size_t begin = column * slices / width;
      const std::size_t end = std::max((column + 1) * slices / width, begin + 1);
      for (std::size_t slice = begin; slice < end; ++slice) {
        spans_[column].first = std::min<double>(spans_[column].first, sound.envelope[slice].first / scale);
        spans_[column].second = std::max<double>(spans_[column].second, sound.envelope[slice].second / scale);
      }
    }
  }

  bool At(int column, int row) const {
    const auto& [least, largest] = spans_[static_cast<std::size_t>(column)];
    const double top = 1.0 - 2.0 * row / rows_, bottom = 1.0 - 2.0 * (row + 1) / rows_;
    // Silence is a line, not nothing: the row below the middle.
    return (largest > bottom + 1.0 / rows_ && least < top - 1.0 / rows_) || row == rows_ / 2;
  }

 private:
  int rows_;
  std::vector<std::pair<double, double>> spans_;  // of the sound, -1.0 to 1.0
};

// The eight dots of U+2800 to U+28FF, column by column from the top.
std::string BrailleCell(const Dots& dots, int column, int row) {
  static constexpr std::array<std::array<unsigned, 4>, 2> kBits = {
      {{0x01, 0x02, 0x04, 0x40}, {0x08, 0x10, 0x20, 0x80}}};
  unsigned cell = 0;
  for (int x = 0; x < kBraille.columns; ++x) {
    for (int y = 0; y < kBraille.rows; ++y) {
      const bool isSet = dots.At(column * kBraille.columns + x, row * kBraille.rows + y);
      if (isSet) cell |= kBits[static_cast<std::size_t>(x)][static_cast<std::size_t>(y)];
    }
  }
  return {'\xE2', static_cast<char>(0xA0 | (cell >> 6)), static_cast<char>(0x80 | (cell & 0x3F))};
}

std::string Waveform(const SoundSummary& sound, int columns, const Style& style) {
  const Grid& grid = style.unicode ? kBraille : kPlain;
  const Dots dots(sound, columns * grid.columns, kRows * grid.rows);
  const double scale = WaveformScale(sound.peak);
  std::string text;
  for (int row = 0; row < kRows; ++row) {
    std::string label;
    if (row == 0) label = fmt::format("{:+g}", scale);
    if (row == kRows - 1) label = fmt::format("{:+g}", -scale);
    text += fmt::format("{:>{}} ", label, kLabelColumns - 1);
    for (int column = 0; column < columns; ++column) {
      if (style.unicode) {
        text += BrailleCell(dots, column, row);
      } else {
        text += dots.At(column, row) ? '#' : ' ';
      }
    }
    text += '\n';
  }
  const std::string end = fmt::format("{:.1f} s", sound.seconds);
  return text + fmt::format("{:{}}0{:>{}}\n", "", kLabelColumns, end, columns - 1);
}

std::string SpectrumLine(const SoundSummary& sound, int columns, const Style& style) {
  const auto& blocks = style.unicode ? kBlocks : kPlainBlocks;
  const std::size_t bands = sound.spectrum.size(), width = static_cast<std::size_t>(columns);
  std::string text = fmt::format("{:>{}} ", "20 Hz", kLabelColumns - 1);
  for (std::size_t column = 0; column < width; ++column) {
    const std::size_t begin = column * bands / width;
    const std::size_t end = std::max((column + 1) * bands / width, begin + 1);
    const double level = *std::max_element(sound.spectrum.begin() + static_cast<std::ptrdiff_t>(begin),
                                           sound.spectrum.begin() + static_cast<std::ptrdiff_t>(end));
    const double share = std::clamp(1.0 - level / kLowestDrawn, 0.0, 1.0);
    text += blocks[static_cast<std::size_t>(std::lround(share * 8.0))];
  }
  return text + " " + FrequencyText(sound.highestHz) + "\n";
}

// What the cells of the spectrum mean.
std::string SpectrumScale(const Style& style) {
  const auto& blocks = style.unicode ? kBlocks : kPlainBlocks;
  std::string text = fmt::format("{:{}}{:.0f} dB ", "", kLabelColumns, kLowestDrawn);
  for (const char* block : blocks) text += block;
  return text + " 0 dBFS\n";
}

std::string FigureLines(const SoundSummary& sound, int columns) {
  std::string text, line;
  for (const std::string& figure : SoundFigures(sound)) {
    if (!line.empty() && line.size() + figure.size() + 2 > static_cast<std::size_t>(columns)) {
      text += line + "\n";
      line.clear();
    }
    line += "  " + figure;
  }
  return text + line + "\n";
}

}  // namespace

std::string TerminalPlot(const SoundSummary& sound, const Style& style, double toneHz) {
  const int endLabel = static_cast<int>(FrequencyText(sound.highestHz).size()) + 1;
  // A terminal wraps what reaches its last column.
  const int width = std::clamp(style.columns - 1, kFewestColumns, kMostColumns) - kLabelColumns - endLabel;
  std::string text = FigureLines(sound, kLabelColumns + width + endLabel);
  text += Waveform(sound, width, style) + SpectrumLine(sound, width, style);
  if (toneHz > SoundSummary::kLowestHz && toneHz < sound.highestHz) {
    const int place = static_cast<int>(SpectrumPosition(sound, toneHz) * width);
    text += fmt::format("{:{}}^ tone, {}\n", "", kLabelColumns + place, FrequencyText(toneHz));
  }
  return text + SpectrumScale(style);
}

}  // namespace host
