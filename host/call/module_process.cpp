#include "host/call/module_process.h"

#include <chrono>
#include <cstdio>
#include <future>
#include <iostream>
#include <iterator>
#include <memory>

#include "host/call/child_process.h"
#include "host/call/module.h"
#include "host/call/module_request.h"
#include "host/commands/commands.h"
#include "host/endpoints/endpoint_choice.h"
#include "host/endpoints/platform.h"
#include "host/listening/listener.h"
#include "text/utf.h"

namespace host {
namespace {

using Seconds = std::chrono::duration<double>;

struct CloseStream {
  void operator()(std::FILE* stream) const { std::fclose(stream); }
};

using WhatWasHeard = std::variant<Heard, std::string>;

// Listens for the object's life, beside the module: on a thread, and so a connection to the audio system, of its own.
// Two streams of one connection can get in each other's way: PipeWire's PulseAudio server now and then gives the second
// one silence.
class ListeningThread {
 public:
  ListeningThread(const std::string& platform, const std::string& captureId) {
    std::promise<void> begun;
    const std::future<void> hasBegun = begun.get_future();
    heard_ = std::async(std::launch::async, Listen, platform, captureId, std::move(begun), end_.get_future());
    hasBegun.wait();
  }

  WhatWasHeard Finish() {
    end_.set_value();
    return heard_.get();
  }

 private:
  static WhatWasHeard Listen(const std::string& platform, const std::string& captureId, std::promise<void>&& toBegin,
                             const std::future<void>& end) {
    // Also when it ends without having begun.
    std::promise<void> begun = std::move(toBegin);
    try {
      const Platform connection(platform);
      Listener listener(captureId);
      begun.set_value();
      end.wait();
      return listener.Finish();
    } catch (const std::exception& error) {
      return std::string(error.what());
    }
  }

  std::future<WhatWasHeard> heard_;  // first, so that the thread is told to end before it is waited for
  std::promise<void> end_;
};

void Report(const WhatWasHeard& heard, CallReport& report) {
  if (const Heard* something = std::get_if<Heard>(&heard)) report.heard = HeardJson(*something);
  if (const std::string* reason = std::get_if<std::string>(&heard)) report.notHeard = *reason;
}

void CallModule(const CallRequest& request, const Module& module, CallReport& report) {
  report.called = true;
  const auto start = std::chrono::steady_clock::now();
  try {
    report.reply = module.Call(request.test, request.contract);
  } catch (const Failure& failure) {
    report.failure = failure;
  }
  report.seconds = Seconds(std::chrono::steady_clock::now() - start).count();
}

void CallAndListen(const CallRequest& request, CallReport& report) {
  const Module module(text::PathFromUtf8(request.module));
  if (request.listenTo.empty()) return CallModule(request, module, report);
  // The endpoints of such a platform are those of the thread that is on it.
  if (EndsWithProcess(request.platform)) {
    Listener listener(request.listenTo);
    CallModule(request, module, report);
    return Report(listener.Finish(), report);
  }
  ListeningThread listener(request.platform, request.listenTo);
  CallModule(request, module, report);
  Report(listener.Finish(), report);
}

CallReport Call(const CallRequest& request) {
  CallReport report;
  try {
    const Platform platform(request.platform);
    if (!EndsWithProcess(request.platform)) {
      CallAndListen(request, report);
      return report;
    }
    const std::vector<Endpoint> saved = TestedEndpoints(ReadEndpoints(), request.test, request.contract);
    CallAndListen(request, report);
    report.restoration = PutBack(saved);
  } catch (const Failure& failure) {
    report.failure = failure;
  }
  return report;
}

Answer Check(const CheckRequest& request) {
  try {
    return CheckInProcess(request);
  } catch (const Failure& failure) {
    Answer answer;
    answer.failure = failure;
    answer.exitCode = failure.exitCode;
    return answer;
  }
}

}  // namespace

int ServeModuleRequest() {
  const std::string text{std::istreambuf_iterator<char>(std::cin), std::istreambuf_iterator<char>()};
  const std::unique_ptr<std::FILE, CloseStream> output(SeparateOutput());
  if (output == nullptr) return 1;
  const ModuleRequest request = ReadRequest(text);
  const CallRequest* call = std::get_if<CallRequest>(&request);
  const std::string report =
      call != nullptr ? CallReportJson(Call(*call)) : AnswerJson(Check(std::get<CheckRequest>(request)));
  const bool isWhole = std::fwrite(report.data(), 1, report.size(), output.get()) == report.size();
  return isWhole && std::fflush(output.get()) == 0 ? 0 : 1;
}

}  // namespace host
