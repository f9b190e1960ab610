#include "host/call/progress.h"

#include <fmt/core.h>

#include <algorithm>
#include <cstdio>
#include <utility>

#include "host/base/system.h"

namespace host {
namespace {

constexpr auto kInterval = std::chrono::milliseconds(50);
constexpr int kBarCells = 40;

}  // namespace

Progress::Progress(Span span, std::chrono::duration<double> expected)
    : span_(std::move(span)), expected_(expected), style_(Style::Of(stderr)) {
  if (!style_.terminal) return;
  follower_ = std::jthread([this](const std::stop_token& stop) { Follow(stop); });
}

Progress::~Progress() {
  if (!follower_.joinable()) return;
  follower_.request_stop();
  follower_.join();
  Erase();
}

void Progress::Follow(const std::stop_token& stop) {
  const auto begin = std::chrono::steady_clock::now();
  std::unique_lock lock(mutex_);
  do {
    Draw(std::min((std::chrono::steady_clock::now() - begin) / expected_, 1.0));
    // Only a request to stop ends the wait early.
  } while (!stopped_.wait_for(lock, stop, kInterval, [&stop] { return stop.stop_requested(); }));
}

void Progress::Draw(double share) {
  const double ofWhole = span_.start + (span_.end - span_.start) * share;
  const std::string ending = fmt::format(" {:3} %", static_cast<int>(ofWhole * 100));
  // The last column stays free: some terminals wrap when it is filled. The width may change meanwhile.
  const int room = TerminalWidth(stderr) - static_cast<int>(span_.label.size() + ending.size()) - 4;
  const std::string line =
      room < 1 ? ending : fmt::format("{} {}{}", span_.label, Bar(ofWhole, std::min(room, kBarCells), style_), ending);
  std::fprintf(stderr, "\r%s", line.c_str());
  std::fflush(stderr);
  drawnBytes_ = std::max(drawnBytes_, line.size());
}

void Progress::Erase() {
  // As many blanks as columns were drawn, or a little more.
  const std::size_t columns = std::min(drawnBytes_, static_cast<std::size_t>(TerminalWidth(stderr) - 1));
  std::fprintf(stderr, "\r%s\r", std::string(columns, ' ').c_str());
  std::fflush(stderr);
}

}  // namespace host
