#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include "host/base/failure.h"

namespace host {

// A file that a person named for rmthost to write. What is written goes into a new file beside it, under a name that
// can't be foreseen, and takes the place of the named one on Commit. Until then, and when anything fails, the named file
// is as it was; the new one is removed with the object.
class OutputFile {
 public:
  // `name` in UTF-8. `ending`, such as ".svg", is what the name must end with, in capitals or not; `option`, such as
  // "--plot", is where it was named. Throws Failure, exit code kBadInput, for another ending, for a folder that isn't
  // there or takes no new file, and where something stands that is no file: a folder, a device, a pipe, a link.
  OutputFile(std::string name, const std::string& ending, const std::string& option);
  OutputFile(const OutputFile&) = delete;
  OutputFile& operator=(const OutputFile&) = delete;
  ~OutputFile();

  // As it was named.
  const std::string& Name() const { return name_; }
  // The new file, in UTF-8, for another process to write with OverwriteFile.
  std::string Temporary() const;
  // What to throw when that process couldn't, for the reason that it gives.
  Failure NotWritten(const std::string& reason) const;

  // Makes `content` the whole content of the new file. Throws Failure, exit code kBroken.
  void Write(std::string_view content) const;
  // Puts the new file in the place of the named one. Throws Failure, exit code kBroken. Called once, at the end.
  void Commit();

 private:
  std::string name_;
  std::filesystem::path target_, temporary_;
};

}  // namespace host
