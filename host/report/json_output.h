#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "host/base/answer.h"

// With --json every call of rmthost writes one JSON document, on one line, to standard output:
//
//   formatVersion  1; grows when a key changes its meaning or goes, not when one is added
//   command        "list", "play", "record", "repeat", "run", "check", "version", "completion", "man-page" or "help";
//   null
//                  when the command line names none
//   ok             whether the exit code is 0
//   exitCode       the exit code
//   result         what the command found out; absent when it found out nothing
//   error          why there is no full answer: {"message", "advice", "exitCode", "candidates"}, each candidate
//   {"name",
//                  "id"}; absent when there is one
//
// result of list, play, record, repeat and run:
//   platform       the one that was used, as --platform takes it, but never "auto"
//   platformAsked  as --platform was given
//   platformNote   why the virtual machine was used when "auto" was asked for; null when it wasn't
// result of list:
//   endpoints      [{"id", "name", "flow": "render" or "capture",
//                    "state": "active", "disabled", "notpresent" or "unplugged",
//                    "default": the roles among "console", "multimedia" and "communications",
//                    "levels": scalars from 0.0 to 1.0, one a channel, or null when not known,
//                    "muted": true, false, or null when not known,
//                    "format": {"channels", "rate": Hz, "bits": per sample, "encoding": "pcm", "float" or "other"}, or
//                              null when not known}]
// result of play, record and run, and each of the runs of repeat:
//   passed, returnCode, returnMessage, advice, reply   absent when the module gave no reply; then there is an error
//     passed       whether the test passed; for record within its limits
//     returnCode, returnMessage   as the module gave them
//     advice       what to do about a test that did not pass; null when it passed
//     reply        the module's reply, unchanged; not in repeat
//   seconds        how long the call of the module took; null when it didn't come back
//   restored       what became of mute and levels of the tested endpoints:
//                  {"state": "yes", "no", "unknown" when not all could be read before, or "not needed",
//                   "notNeeded": why, or null,
//                   "endpoints": [{"id", "name",
//                                  "before": how it was, a text, or null when that isn't known,
//                                  "putBack": what had to be put back, "mute" or "levels" or both,
//                                  "unknown": what couldn't be read before the test, in the same words,
//                                  "error": why it isn't as before, or null}]}
//   log            the module's log file
//   logLines       with --verbose: what came to the log meanwhile, also from other programs
// moreover of play, record, and each of the runs of repeat:
//   verdict        "pass", "silence", "too quiet", "clipping", or "failed" for an outcome that is no pass; absent when
//   the
//                  module gave no reply
//   render         {"id", "name"} of the endpoint the tone is played on; null for a record test that only listens
//   capture        {"id", "name"}; record only
//   limits         {"minPeak", "maxPeak"}, each null when there is none; record only
//   maxAmplitude   largest absolute sample, full scale 1.0; record only, null when the module reported no pass
//   maxAmplitudeDbfs            the same in dBFS; null too when the capture is silent
//   heard          what rmthost heard meanwhile, host/heard.h; record only, null when it didn't listen or heard nothing
//   notHeard       why it heard nothing; null when it did, or didn't listen
//   plot           the file that was drawn, or null; record only
// moreover of run:
//   test           "play" or "record"
// result of repeat:
//   test           "play" or "record"
//   asked          the number of runs asked for
//   passes         how many passed
//   failures       {what: how many}; what is the verdict, the return code of a test that failed, "timed out" or
//   "broken" peak, seconds  {"minimum", "median", "maximum"} of the runs that have one, or null runs           [as
//   above, with "error" for a run without a reply]; the last one may have been interrupted
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
// result of help, completion and man-page:
//   text           the text
namespace host {

// JSON texts, put together from JSON texts.
using JsonMembers = std::vector<std::pair<const char*, std::string>>;

// Bytes of `text` that aren't UTF-8 are replaced.
std::string JsonString(std::string_view text);
// null for an empty text.
std::string JsonTextOrNull(std::string_view text);
// null for a number that JSON can't hold.
std::string JsonNumber(double value);
std::string JsonBool(bool value);
std::string JsonArray(const std::vector<std::string>& elements);
std::string JsonObject(const JsonMembers& members);
void Append(JsonMembers& members, JsonMembers more);

// The object that "error" has.
std::string FailureJson(const Failure& failure);

// The whole document, with its line feed. An empty `command` is written as null.
std::string JsonDocument(const std::string& command, const Answer& answer);

}  // namespace host
