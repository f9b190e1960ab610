#pragma once

#include <gtest/gtest.h>

#include <filesystem>

// A log that can't be used.
struct BadLog {
  const char* name;
  void (*prepare)(const std::filesystem::path& log);
  const char* reply;  // a part of what a playback test replies
};

// The test is in log_test.cpp. Logs that only one operating system can have are in sources of their own.
class BadLogTest : public testing::TestWithParam<BadLog> {};
