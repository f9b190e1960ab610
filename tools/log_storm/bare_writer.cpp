#include "tools/log_storm/bare_writer.h"

#include <cstdio>
#include <filesystem>
#include <fstream>

void BareWriter::Write(const std::string& line) const {
  if (std::filesystem::exists(path_) && std::filesystem::file_size(path_) > 5000000) {
    for (int index = 50; index >= 1; --index) RotateStep(index);
  }
  std::ofstream(path_, std::ios::app).write(line.data(), static_cast<std::streamsize>(line.size()));
}

void BareWriter::RotateStep(int index) const {
  const auto moveIfThere = [](const std::string& from, const std::string& to) {
    if (std::filesystem::exists(from)) std::rename(from.c_str(), to.c_str());
  };
  if (std::filesystem::exists(Numbered(50))) std::remove(Numbered(50).c_str());
  moveIfThere(Numbered(index), Numbered(index + 1));
  moveIfThere(index == 1 ? path_ : Numbered(index - 1), Numbered(index));
}

std::string BareWriter::Numbered(int number) const {
  return path_.substr(0, path_.size() - 4) + "_" + std::to_string(number) + ".LOG";
}
