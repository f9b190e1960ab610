#pragma once

#include <string>

namespace logging {

// Calls rotate(path) unless another process is in this function with the same file, or just was: then that one's rotation
// serves for this one, and nobody waits. Passes on what `rotate` raises.
//
// The turn is a lock on the live file itself. A lock file would be one more name beside the logs, and a directory can be
// locked by anyone who may read it, who could so keep the log from ever being rotated; the log only by those who may write
// to it. The system ends the lock of a process that ends. Where there is no lock to be had, because the file can't be
// opened or its file system has no locks, everyone rotates.
void RotateInTurn(const std::string& path, void (*rotate)(const std::string& path));

}  // namespace logging
