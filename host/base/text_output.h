#pragma once

#include <cstdio>
#include <string>

#include "host/base/failure.h"

namespace host {

// Whether text is coloured: where it goes to a terminal that can show colours, and NO_COLOR isn't set; or as somebody wants.
enum class Colour { kAuto, kAlways, kNever };

// What the other end of a stream can show; nothing but plain text in a file, a pipe, or a terminal whose TERM is "dumb".
struct Style {
  bool terminal = false;
  bool colour = false;
  bool unicode = false;
  int columns = 0;  // of the terminal; 0 for one that isn't there, and then nothing is wrapped

  static Style Of(std::FILE* stream, Colour colour = Colour::kAuto);
};

// "PASS" in green or "FAIL" in red.
std::string PassOrFail(bool passed, const Style& style);

// A bar of `cells` columns; `share` from 0.0 to 1.0 of it is filled.
std::string Bar(double share, int cells, const Style& style);

// A text without line feeds, in lines no wider than the style's columns where its words have room; those behind the first
// begin with `indent` blanks. A character counts for one column.
std::string Wrapped(const std::string& text, const Style& style, int indent = 0);

// An amplitude in dB relative to full scale, 1.0. Minus infinity for silence.
double Decibels(double amplitude);

// For standard error, with line feeds.
std::string FailureText(const Failure& failure, const Style& style = {});

}  // namespace host
