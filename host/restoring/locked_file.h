#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <utility>

namespace host {

// A file of this user's that one process at a time holds. The system drops the hold with the process, however it ends. Each
// system has a source file of its own; CMake picks it.
class LockedFile {
 public:
  // Opens a file and holds it; `isNew` makes it, where nothing may be. Nothing when another process holds it, or it isn't
  // there. Throws Failure for a file that can't be opened, that isn't this user's alone to write, or that is no regular
  // file.
  static std::optional<LockedFile> Hold(const std::filesystem::path& file, bool isNew);
  // The same for a file that is made when it isn't there.
  static std::optional<LockedFile> HoldOrMake(const std::filesystem::path& file);

  LockedFile(LockedFile&& other) noexcept : path_(std::move(other.path_)), handle_(std::exchange(other.handle_, -1)) {}
  LockedFile& operator=(LockedFile&& other) noexcept {
    std::swap(path_, other.path_);
    std::swap(handle_, other.handle_);
    return *this;
  }
  ~LockedFile();

  const std::filesystem::path& Path() const { return path_; }
  // All of it, but no more than 1 MiB. Throws Failure.
  std::string Read() const;
  // Makes `content` all of it, and returns once it would outlive a power cut. Throws Failure.
  void Write(const std::string& content) const;
  // Gives it another name, in the same folder, for good. Throws Failure.
  void Rename(const std::filesystem::path& file);
  // Takes it away.
  void Remove();

 private:
  LockedFile(std::filesystem::path path, std::intptr_t handle) : path_(std::move(path)), handle_(handle) {}

  std::filesystem::path path_;
  std::intptr_t handle_;
};

// The content of a file that another process may hold, up to 1 MiB; empty when it can't be read.
std::string ReadHeldFile(const std::filesystem::path& file);

}  // namespace host
