#pragma once

#include <string>

namespace logging {

inline constexpr char kDefaultLogName[] = "ZQRMLOG.LOG";
inline constexpr char kLogExtension[] = ".LOG";

// The name, a path or a bare one, with the log's extension: in place of its own when that has three characters, else
// behind it. A name with any character but the ASCII letters and digits, space, '-', '.', ':', '_' and the log
// directory's separator gives kDefaultLogName, without a directory.
std::string NormalizeLogName(std::string name);

// The contents of a text file. A file that can't be read gives an empty text.
std::string ReadWholeFile(const std::string& path);

// Appends the line with a single write, so that lines of several processes don't mix, and closes the file. A missing
// file is created. Whatever fails is dropped without a word: a log that can't be written fails nobody.
void AppendLine(const std::string& path, const std::string& line);

}  // namespace logging
