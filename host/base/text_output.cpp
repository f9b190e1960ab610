#include "host/base/text_output.h"

#include <fmt/core.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <string_view>

#include "host/base/system.h"
#include "text/utf.h"

namespace host {
namespace {

// Of UTF-8: all bytes but those that continue a character.
std::size_t CountCharacters(std::string_view text) {
  return static_cast<std::size_t>(std::ranges::count_if(text, [](char byte) { return (byte & 0xC0) != 0x80; }));
}

}  // namespace

Style Style::Of(std::FILE* stream, Colour colour) {
  const char* const type = std::getenv("TERM");
  const char* const noColour = std::getenv("NO_COLOR");  // https://no-color.org
  const bool isShown = IsTerminal(stream) && (type == nullptr || std::string_view(type) != "dumb");
  const bool isColoured = isShown && (noColour == nullptr || *noColour == '\0');
  return {.terminal = isShown,
          .colour = colour == Colour::kAuto ? isColoured : colour == Colour::kAlways,
          .unicode = isShown && TerminalIsUtf8(),
          .columns = isShown ? TerminalWidth(stream) : 0};
}

std::string PassOrFail(bool passed, const Style& style) {
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

std::string Wrapped(const std::string& text, const Style& style, int indent) {
  if (style.columns == 0) return text;
  // A terminal wraps what reaches its last column.
  const auto most = static_cast<std::size_t>(std::max(style.columns - 1, 1));
  std::string lines;
  std::size_t column = 0;
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t end = std::min(text.find(' ', at), text.size());
    const std::string_view word = std::string_view(text).substr(at, end - at);
    const std::size_t width = CountCharacters(word);
    if (column > static_cast<std::size_t>(indent) && column + 1 + width > most) {
      lines += "\n" + std::string(static_cast<std::size_t>(indent), ' ');
      column = static_cast<std::size_t>(indent);
    } else if (at != 0) {
      lines += ' ';
      ++column;
    }
    lines += word;
    column += width;
    at = end + 1;
  }
  return lines;
}

double Decibels(double amplitude) { return 20.0 * std::log10(amplitude); }

std::string FailureText(const Failure& failure, const Style& style) {
  std::string text = Wrapped("rmthost: " + text::Printable(failure.message), style) + "\n";
  for (const Candidate& candidate : failure.candidates) {
    text += fmt::format("  {}  {}\n", text::Printable(candidate.name), text::Printable(candidate.id));
  }
  return text + Wrapped(text::Printable(failure.advice), style) + "\n";
}

}  // namespace host
