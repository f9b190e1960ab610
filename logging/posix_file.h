// Files on POSIX systems, opened so that nothing that stands in the place of a log can do harm.
#pragma once

#include <pthread.h>

#include <string>

#include "text/descriptor_posix.h"

namespace logging {

// Holds off the cancellation of the thread, which is acted on after it: opening, writing and closing would be places for
// it, and a line would be left half written, or a file open.
class CancellationHeldOff {
 public:
  CancellationHeldOff() { pthread_setcancelstate(PTHREAD_CANCEL_DISABLE, &before_); }
  CancellationHeldOff(const CancellationHeldOff&) = delete;
  CancellationHeldOff& operator=(const CancellationHeldOff&) = delete;
  ~CancellationHeldOff() { pthread_setcancelstate(before_, nullptr); }

 private:
  int before_ = PTHREAD_CANCEL_ENABLE;
};

// Opens a regular file with the flags of open. Gives none if that fails or something else is there; a pipe or a device
// is never waited for. Used while cancellation is held off.
//
// Where anybody but root and this process's user can put names into the file's directory, a link is refused too, of both
// kinds: it could lead a process with more rights to any file of theirs. In other directories a link is the owner's wish.
//
// A file that O_CREAT makes gets the rights that the umask leaves. In a directory with the set-group-ID bit that its group may
// write to, the group may read and write the file too.
text::Descriptor OpenRegularFile(const std::string& path, int flags);

}  // namespace logging
