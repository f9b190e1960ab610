#pragma once

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <tuple>
#include <vector>

#include "logging/logger.h"
#include "support/temp_directory.h"

// Every test begins with an empty log directory of the process's own, which it may replace by whatever it likes.
class LoggerTest : public testing::Test {
 protected:
  LoggerTest() {
    setenv("ZQRMT_TEST_LOG_DIRECTORY", directory.c_str(), 0);
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

  static inline const TempDirectory parent;
  static inline const std::string directory = parent / "log";
  static inline const std::string live = directory + "/ZQRMLOG.LOG";
};
