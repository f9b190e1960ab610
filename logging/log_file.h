#pragma once

#include <string>

namespace logging {

inline constexpr char kDefaultLogName[] = "ZQRMLOG.LOG";
inline constexpr char kLogExtension[] = ".LOG";

// `name`, a path or a bare file name, with the extension of logs. It replaces an extension of three characters;
// otherwise it is appended. If the name has any character but the ASCII letters and digits, space, '-', '.', ':', '_'
// and the separator of the log directory, the result is kDefaultLogName, without a directory.
std::string NormalizeLogName(std::string name);

// The contents of a text file; empty if it can't be read.
std::string ReadWholeFile(const std::string& path);

// Appends the line with a single write, so that lines of several processes don't mix, and closes the file. Creates a
// missing file. Failures are ignored: a log that can't be written must not fail a test.
void AppendLine(const std::string& path, const std::string& line);

}  // namespace logging
