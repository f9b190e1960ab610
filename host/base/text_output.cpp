#include "host/base/text_output.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "host/base/system.h"
#include "text/utf.h"

namespace host {

Style Style::Of(std::FILE* stream) {
  if (!IsTerminal(stream)) return {};
  const char* noColour = std::getenv("NO_COLOR");  // https://no-color.org
  return {.terminal = true, .colour = noColour == nullptr || *noColour == '\0', .unicode = TerminalIsUtf8()};
}

std::string Verdict(bool passed, const Style& style) {
  const char* word = passed ? "PASS" : "FAIL";
  return style.colour ? fmt::format("\x1b[1;{}m{}\x1b[0m", passed ? 32 : 31, word) : word;
}

std::string Bar(double share, int cells, const Style& style) {
  const int filled = static_cast<int>(std::lround(std::clamp(share, 0.0, 1.0) * cells));
  std::string bar = "[";
  for (int cell = 0; cell < cells; ++cell) {
    if (style.unicode) {
      bar += cell < filled ? "█" : "░";
    } else {
      bar += cell < filled ? '#' : '.';
    }
  }
  return bar + "]";
}

double Decibels(double amplitude) { return 20.0 * std::log10(amplitude); }

std::string FailureText(const Failure& failure) {
  std::string text = fmt::format("rmthost: {}\n", text::Printable(failure.message));
  for (const Candidate& candidate : failure.candidates) {
    text += fmt::format("  {}  {}\n", text::Printable(candidate.name), text::Printable(candidate.id));
  }
  return text + text::Printable(failure.advice) + "\n";
}

}  // namespace host
