#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <functional>
#include <string>
#include <tuple>
#include <vector>

#include "logging/log_directory.h"
#include "logging/logger.h"
#include "tests/support/process.h"
#include "tests/support/temp_directory.h"

// Every test begins with an empty log directory of its process, which it may change or replace as it likes.
class LoggerTest : public testing::Test {
 protected:
  LoggerTest() {
    SetEnvironment("ZQRMT_LOG_DIRECTORY", directory);
    std::filesystem::remove_all(directory);
    std::filesystem::create_directory(directory);
  }

  static void Write(const std::string& path, const std::string& contents = "") { std::ofstream(path) << contents; }

  static std::vector<std::string> Lines(const std::string& path) {
    std::vector<std::string> lines;
    std::ifstream file(path);
    for (std::string line; std::getline(file, line);) lines.push_back(line);
    return lines;
  }

  static void ExpectRaised(const std::string& operation, const std::function<void()>& action) {
    try {
      action();
      ADD_FAILURE() << "raised nothing instead of " << operation;
    } catch (const std::filesystem::filesystem_error& error) {
      EXPECT_NE(std::string(error.what()).find(": " + operation + ": "), std::string::npos) << error.what();
    }
  }

  // The path, which the tests write with '/', with this system's separator.
  static std::string Native(std::string path) {
    std::replace(path.begin(), path.end(), '/', logging::GetLogDirectory().separator);
    return path;
  }

  static inline const TempDirectory parent;
  static inline const std::string directory = parent / "log";
  static inline const std::string live = (parent.Path() / "log" / "ZQRMLOG.LOG").string();
};
