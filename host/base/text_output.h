#pragma once

#include <cstdio>
#include <string>

#include "host/base/failure.h"

namespace host {

// What the other end of a stream can show; nothing but plain text in a file or a pipe.
struct Style {
  bool terminal = false;
  bool colour = false;
  bool unicode = false;

  static Style Of(std::FILE* stream);
};

// "PASS" in green or "FAIL" in red.
std::string Verdict(bool passed, const Style& style);

// A bar of `cells` columns; `share` from 0.0 to 1.0 of it is filled.
std::string Bar(double share, int cells, const Style& style);

// An amplitude in dB relative to full scale, 1.0. Minus infinity for silence.
double Decibels(double amplitude);

// For standard error, with line feeds.
std::string FailureText(const Failure& failure);

}  // namespace host
