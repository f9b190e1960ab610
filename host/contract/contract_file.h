#pragma once

#include <cstddef>
#include <string>

#include "host/base/failure.h"
#include "host/contract/parsed_contract.h"

namespace host {

// The text of a regular file, or, when its name is "-", of standard input: valid UTF-8 without a NUL, in `mostMiB` MiB at most.
// `kind` says in messages what it should be, as "contract", and `advice` what to give in its place. Throws Failure. A file
// is never waited for; standard input is, so no Interruption may be there meanwhile: a request then ends rmthost at once.
std::string ReadTextFile(const std::string& name, const std::string& kind, std::size_t mostMiB,
                         const std::string& advice);

// The text of the contract in the file `name`, or, when that is "-", on standard input: valid UTF-8 without a NUL.
// Throws Failure.
std::string ReadContract(const std::string& name);

// The contract `name` isn't JSON; `advice` says what to do about it.
Failure NotJson(const std::string& name, const JsonFault& fault, const std::string& advice);

}  // namespace host
