#pragma once

#include <filesystem>
#include <string>

#include "host/base/failure.h"
#include "host/call/module_loader.h"
#include "host/contract/contract.h"

namespace host {

// Where the module is when no --module names it: the first of the usual places beside rmthost that holds it, or, when
// none does, the first of them.
std::filesystem::path DefaultModuleFile();

// The module's log file.
std::filesystem::path LogFile();

// What a module gave isn't a data contract with an outcome.
Failure UnreadableReply();

// The loaded test module.
class Module {
 public:
  // Throws Failure when `file` isn't there or isn't such a module.
  explicit Module(const std::filesystem::path& file);

  // Runs a test: the module gets `contract`, valid UTF-8 without a NUL, and its reply is returned, both otherwise as
  // they are. Blocks until the test has ended; for a test to run, the calling thread must be on a platform. Throws
  // Failure when the module gives no reply.
  std::string Call(Test test, const std::string& contract) const;

 private:
  // 16-bit characters on every system, also where the module's own declaration spells them wchar_t.
  using Export = char16_t* (*)(const char16_t*);

  Export Find(const std::filesystem::path& file, const char* name) const;

  LoadedLibrary library_;
  Export play_, record_;
};

}  // namespace host
