#pragma once

#include <cstdlib>
#include <filesystem>
#include <random>
#include <string>

// A new, empty directory, which is removed with everything in it when the object ends. Its name has only characters
// that the logger accepts in a path.
class TempDirectory {
 public:
  TempDirectory() {
    std::random_device random;
    do {
      path_ = std::filesystem::temp_directory_path() / ("zqrmt-" + std::to_string(random()) + std::to_string(random()));
    } while (!std::filesystem::create_directory(path_));
  }
  TempDirectory(const TempDirectory&) = delete;
  TempDirectory& operator=(const TempDirectory&) = delete;
  ~TempDirectory() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }

  const std::filesystem::path& Path() const { return path_; }
  std::string operator/(const std::string& name) const { return (path_ / name).string(); }

 private:
  std::filesystem::path path_;
};
