#include "host/report/svg_plot.h"

#include <fmt/format.h>

#include <string_view>
#include <vector>

#include "host/report/diagrams.h"
#include "host/report/markup.h"
#include "host/report/run_words.h"
#include "host/report/sound_text.h"
#include "host/report/style_sheets.h"
#include "text/utf.h"

namespace host {
namespace {

constexpr double kMargin = 20.0;

// About how wide a character is, in the height of its font; rather too wide than too narrow, as the viewer's font isn't
// known. `character` is UTF-8.
double WidthOf(std::string_view character) {
  const auto first = static_cast<unsigned char>(character.front());
  if (first >= 0xE1) return 1.1;  // U+1000 and above, where ideographs and pictures are
  if (first >= 0x80) return 0.8;
  if (std::string_view("mwMW@%").find(character) != std::string_view::npos) return 1.15;
  return first >= 'A' && first <= 'Z' ? 0.8 : 0.65;
}

// The characters of valid UTF-8.
std::vector<std::string> CharactersOf(std::string_view text) {
  std::vector<std::string> characters;
  for (const char c : text) {
    const bool continues = (static_cast<unsigned char>(c) & 0xC0) == 0x80 && !characters.empty();
    if (continues) {
      characters.back() += c;
    } else {
      characters.emplace_back(1, c);
    }
  }
  return characters;
}

// Lines of at most `width` font heights, broken at blanks where there are any.
std::vector<std::string> LinesOf(const std::string& text, double width) {
  std::vector<std::string> lines(1);
  double used = 0.0, sinceBlank = 0.0;
  std::size_t blank = std::string::npos;  // in the last line
  for (const std::string& character : CharactersOf(text::Printable(text))) {
    const double more = WidthOf(character);
    if (used + more > width) {
      std::string rest;
      if (blank != std::string::npos) {
        rest = lines.back().substr(blank + 1);
        lines.back().resize(blank);
      }
      used = blank != std::string::npos ? sinceBlank : 0.0;
      lines.push_back(rest);
      blank = std::string::npos;
    }
    if (character == " ") {
      blank = lines.back().size();
      sinceBlank = -more;
    }
    lines.back() += character;
    used += more;
    sinceBlank += more;
  }
  return lines;
}

// What stands above the diagrams, line by line downwards.
class Heading {
 public:
  void Add(const std::string& text, double fontHeight = 12.0, const char* style = "") {
    if (text.empty()) return;
    for (const std::string& line : LinesOf(text, (kDiagramsWidth - 2 * kMargin) / fontHeight)) {
      bottom_ += fontHeight * 1.4;
      svg_ += fmt::format("<text class=\"{}\" x=\"{:.0f}\" y=\"{:.1f}\">{}</text>\n", style, kMargin, bottom_,
                          Escaped(line));
    }
  }
  // In a row, or in as many as they need.
  void AddChecks(const std::vector<Check>& checks) {
    constexpr double kFontHeight = 12.0, kGap = 10.0;
    double x = kMargin;
    if (!checks.empty()) bottom_ += kFontHeight * 1.8;
    for (const Check& check : checks) {
      const std::string text = fmt::format("{}: {}", check.name, Word(check.result));
      const double width = 0.54 * kFontHeight * static_cast<double>(text.size());
      if (x + width > kDiagramsWidth - kMargin) {
        x = kMargin;
        bottom_ += kFontHeight * 1.4;
      }
      svg_ += fmt::format("<text x=\"{:.1f}\" y=\"{:.1f}\">{}: <tspan class=\"{}\">{}</tspan></text>\n", x, bottom_,
                          Escaped(check.name), StyleOf(check.result), Word(check.result));
      x += width + kGap;
    }
  }
  double Bottom() const { return bottom_; }
  const std::string& Svg() const { return svg_; }

 private:
  double bottom_ = 12.0;
  std::string svg_;
};

}  // namespace

std::string SvgPlot(const RunRecord& run) {
  const std::string figures = fmt::format("{}", fmt::join(SoundFigures(*run.call.heard), ", "));
  Heading heading;
  heading.Add(VerdictTitle(run), 26, run.Passed() ? "verdict pass" : "verdict fail");
  heading.Add(EndpointsTitle(run), 15, "title");
  heading.Add(ReasonOf(run));
  heading.Add(figures);
  heading.Add(TestedText(run), 12, "faint");
  heading.Add(VirtualNote(run), 12, "tone");
  heading.AddChecks(run.verdict.checks);
  const double top = heading.Bottom() + 8, height = top + kDiagramsHeight;
  return fmt::format(
             "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
             "<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"0 0 {0:.0f} {1:.0f}\" width=\"{0:.0f}\" "
             "height=\"{1:.0f}\" role=\"img\" aria-labelledby=\"title description\">\n"
             "<title id=\"title\">{2}: {3}</title>\n<desc id=\"description\">What was heard in {4:.2f} s: {5}.</desc>\n"
             "<style>{6}{7}</style>\n<rect class=\"paper\" width=\"100%\" height=\"100%\"/>\n",
             kDiagramsWidth, height, Escaped(VerdictTitle(run)), Escaped(EndpointsTitle(run)), run.call.heard->seconds,
             Escaped(figures), kDrawingStyle, kPictureStyle) +
         heading.Svg() + Diagrams(run, top) + "</svg>\n";
}

}  // namespace host
