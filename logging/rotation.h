#pragma once

#include <string>

namespace logging {

// Rotates the log file at `path`, whose name ends with kLogExtension, if it is above five million bytes:
//
//   ZQRMLOG.LOG -> ZQRMLOG_1.LOG -> ZQRMLOG_2.LOG -> ... -> ZQRMLOG_49.LOG -> gone
//
// Does nothing while another process with this module rotates it (RotateInTurn). What can't be moved stays where it is. Raises
// what Exists and SizeIfThere raise.
void RotateIfLarge(const std::string& path);

}  // namespace logging
