#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "host/answer.h"

// With --json every call of rmthost writes one JSON document, on one line, to standard output:
//
//   formatVersion  1; grows when a key changes its meaning or goes, not when one is added
//   command        "list", "play", "record", "run", "check", "version" or "help"; null when the command line names none
//   ok             whether the exit code is 0
//   exitCode       the exit code
//   result         what the command found out; absent when it found out nothing
//   error          why there is no full answer: {"message", "advice", "exitCode", "candidates"}, each candidate
//   {"name",
//                  "id"}; absent when there is one
//
// result of list:
//   platform       as --platform was given
//   endpoints      [{"id", "name", "flow": "render" or "capture",
//                    "state": "active", "disabled", "notpresent" or "unplugged",
//                    "default": the roles among "console", "multimedia" and "communications",
//                    "levels": scalars from 0.0 to 1.0, one a channel, or null when not known,
//                    "muted": true, false, or null when not known,
//                    "format": {"channels", "rate": Hz, "bits": per sample, "encoding": "pcm", "float" or "other"}, or
//                              null when not known}]
// result of play and record:
//   passed         true or false
//   returnCode, returnMessage   as the module gave them
//   advice         what to do about a test that did not pass; null when it passed
//   render         {"id", "name"} of the endpoint the tone is played on; null for a record test that only listens
//   capture        {"id", "name"}; record only
//   maxAmplitude   largest absolute sample, full scale 1.0; record only, null when the test did not pass
//   maxAmplitudeDbfs            the same in dBFS; null too when the capture is silent
//   log            the module's log file
//   reply          the module's reply, unchanged
// result of run:
//   test           "play" or "record"
//   passed, returnCode, returnMessage, advice, log, reply   as above
// result of check:
//   changed, dropped, addedOther, doubled, added   [{"path": JSON Pointer; one of more than 300 bytes ends in "...",
//                    "before": the value sent; only in changed and dropped,
//                    "after": the value that came back; only in changed, added (with the default) and addedOther (with
//                             another value)}], an object or array as {} or [], without what is in it
// result of version:
//   version        rmthost's version
//   module         {"path", "found": whether the file exists}
//   logDirectory   the directory of the log
//   platform       as --platform was given
// result of help:
//   text           the help
namespace host {

// JSON texts, put together from JSON texts.
using JsonMembers = std::vector<std::pair<const char*, std::string>>;

// Bytes of `text` that aren't UTF-8 are replaced.
std::string JsonString(std::string_view text);
// null for a number that JSON can't hold.
std::string JsonNumber(double value);
std::string JsonBool(bool value);
std::string JsonArray(const std::vector<std::string>& elements);
std::string JsonObject(const JsonMembers& members);

// The whole document, with its line feed. An empty `command` is written as null.
std::string JsonDocument(const std::string& command, const Answer& answer);

}  // namespace host
