#pragma once

#include <gtest/gtest.h>

#include <filesystem>

// A log directory that can't be used as it should be.
struct BadLog {
  const char* name;
  void (*prepare)(const std::filesystem::path& log);
  const char* reply;  // a piece of what a playback test then answers
};

// Its test is in log_test.cpp; what only one operating system can have joins from a source of its own.
class BadLogTest : public testing::TestWithParam<BadLog> {};
