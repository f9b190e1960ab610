#include "host/report/progress.h"

#include <fmt/format.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <string_view>
#include <utility>

#include "host/base/system.h"

namespace host {
namespace {

// A line of the log that tells progress ends like this, behind the percent.
constexpr std::string_view kProgressText = "% Progress completed, [ZQ_RMT_TESTS_AUDIO::AudioRecordTestClass]";
constexpr auto kPollInterval = std::chrono::milliseconds(50);
constexpr int kBarCells = 40;

std::uintmax_t SizeOf(const std::filesystem::path& file) {
  std::error_code missing;
  const std::uintmax_t size = std::filesystem::file_size(file, missing);
  return missing ? 0 : size;
}

}  // namespace

Progress::Progress(std::string label, std::filesystem::path logFile, double start, double end)
    : label_(std::move(label)), logFile_(std::move(logFile)), start_(start), end_(end), style_(Style::Of(stderr)) {
  if (!IsTerminal(stderr)) return;
  position_ = SizeOf(logFile_);
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
  int drawn = -1;
  do {
    ReadNewLines();
    if (percent_ != drawn) Draw();
    drawn = percent_;
    // Only a request to stop ends the wait early.
  } while (!stopped_.wait_for(lock, stop, kPollInterval, [&stop] { return stop.stop_requested(); }));
}

void Progress::ReadNewLines() {
  const std::uintmax_t size = SizeOf(logFile_);
  if (size < position_) {
    // The log was rotated: the file of this name is a new one.
    position_ = 0;
    partialLine_.clear();
  }
  if (size == position_) return;
  std::ifstream log(logFile_, std::ios::binary);
  log.seekg(static_cast<std::streamoff>(position_));
  std::string text{std::istreambuf_iterator<char>(log), std::istreambuf_iterator<char>()};
  position_ += text.size();
  text.insert(0, partialLine_);

  std::size_t start = 0;
  for (std::size_t end; (end = text.find('\n', start)) != std::string::npos; start = end + 1) {
    ReadLine(text.substr(start, end - start));
  }
  partialLine_ = text.substr(start);
}

void Progress::ReadLine(const std::string& line) {
  const std::size_t end = line.rfind(kProgressText);
  if (end == std::string::npos) return;
  const std::size_t start = line.rfind(' ', end);
  if (start != std::string::npos) percent_ = std::clamp(std::atoi(line.c_str() + start), 0, 100);
}

void Progress::Draw() {
  const double share = start_ + (end_ - start_) * percent_ / 100.0;
  const std::string ending = fmt::format(" {:3} %", static_cast<int>(share * 100));
  // The last column stays free: some terminals wrap when it is filled.
  const int room = TerminalWidth() - static_cast<int>(label_.size() + ending.size()) - 4;
  const std::string line =
      room < 1 ? ending : fmt::format("{} {}{}", label_, Bar(share, std::min(room, kBarCells), style_), ending);
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
