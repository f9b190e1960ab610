#pragma once

#include <cstddef>
#include <string>

namespace logging {

inline constexpr char kDefaultLogName[] = "ZQRMLOG.LOG";
inline constexpr char kLogExtension[] = ".LOG";

// `name`, a path or a bare file name, with the extension of logs. It replaces an extension of three characters;
// otherwise it is appended. If the name has any character but the ASCII letters and digits, space, '-', '.', ':', '_'
// and the separator of the log directory, the result is kDefaultLogName, without a directory.
std::string NormalizeLogName(std::string name);

// The contents of a text file up to kMaxReadBytes; empty if it can't be read or is no regular file.
inline constexpr std::size_t kMaxReadBytes = 65536;
std::string ReadWholeFile(const std::string& path);

// Appends the line with a single write, so that lines of several processes don't mix, and closes the file. Creates a
// missing file. Failures are ignored: a log that can't be written must not fail a test. On POSIX systems a line that the
// disk has no room for is taken off again as far as it went, unless another process has written behind it.
void AppendLine(const std::string& path, const std::string& line);

}  // namespace logging
