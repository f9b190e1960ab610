#pragma once

#include <string>

// A writer to the shared log that follows the framework's rule and nothing else, as programs without this module's logger
// do: it looks whether the log is there, then how large it is, rotates without asking whether somebody else does, and
// appends.
class BareWriter {
 public:
  explicit BareWriter(std::string path) : path_(std::move(path)) {}

  // Raises std::filesystem::filesystem_error when the log is moved away between the two looks; the line is lost then.
  void Write(const std::string& line) const;

 private:
  void RotateStep(int index) const;
  std::string Numbered(int number) const;

  std::string path_;
};
