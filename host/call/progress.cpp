#include "host/call/progress.h"

#include <fmt/format.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <string_view>
#include <utility>

#include "host/base/system.h"

namespace host {
namespace {

// A line of the log that tells progress ends like this, behind the percent.
constexpr std::string_view kProgressText = "% Progress completed, [ZQ_RMT_TESTS_AUDIO::AudioRecordTestClass]";
constexpr auto kPollInterval = std::chrono::milliseconds(50);
constexpr int kBarCells = 40;

// The percentage in a line of the log that tells progress.
std::optional<int> PercentIn(const std::string& line) {
  const std::size_t end = line.rfind(kProgressText);
  const std::size_t start = end == std::string::npos ? end : line.rfind(' ', end);
  if (start == std::string::npos) return std::nullopt;
  return std::clamp(std::atoi(line.c_str() + start), 0, 100);
}

}  // namespace

Progress::Progress(Span span, const std::filesystem::path& logFile)
    : span_(std::move(span)), log_(logFile), style_(Style::Of(stderr)) {
  if (!IsTerminal(stderr)) return;
  follower_ = std::jthread([this](const std::stop_token& stop) { Follow(stop); });
}

Progress::~Progress() {
  if (!follower_.joinable()) return;
  follower_.request_stop();
  follower_.join();
  Erase();
}

void Progress::Follow(const std::stop_token& stop) {
  std::unique_lock lock(mutex_);
  int drawn = -1, percent = 0;
  do {
    for (const std::string& line : log_.Lines()) percent = PercentIn(line).value_or(percent);
    if (percent != drawn) Draw(percent);
    drawn = percent;
    // Only a request to stop ends the wait early.
  } while (!stopped_.wait_for(lock, stop, kPollInterval, [&stop] { return stop.stop_requested(); }));
}

void Progress::Draw(int percent) {
  const double share = span_.start + (span_.end - span_.start) * percent / 100.0;
  const std::string ending = fmt::format(" {:3} %", static_cast<int>(share * 100));
  // The last column stays free: some terminals wrap when it is filled.
  const int room = TerminalWidth() - static_cast<int>(span_.label.size() + ending.size()) - 4;
  const std::string line =
      room < 1 ? ending : fmt::format("{} {}{}", span_.label, Bar(share, std::min(room, kBarCells), style_), ending);
  std::fprintf(stderr, "\r%s", line.c_str());
  std::fflush(stderr);
  drawnBytes_ = std::max(drawnBytes_, line.size());
}

void Progress::Erase() {
  // As many blanks as columns were drawn, or a little more.
  const std::size_t columns = std::min(drawnBytes_, static_cast<std::size_t>(TerminalWidth() - 1));
  std::fprintf(stderr, "\r%s\r", std::string(columns, ' ').c_str());
  std::fflush(stderr);
}

}  // namespace host
