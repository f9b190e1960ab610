// A host that ends a thread which is in a test.

#include <gtest/gtest.h>
#include <pthread.h>

#include <chrono>
#include <thread>

#include "tests/support/machines.h"
#include "tests/support/module_under_test.h"

namespace {

// Plays on a real clock, again and again, until the thread is cancelled.
void* PlayOn(void* module) {
  auto& played = *static_cast<ModuleUnderTest*>(module);
  std::string machine = QuietMachine();
  machine.replace(machine.find("virtual"), 7, "real");
  played.StartMachine(machine);
  while (true) played.Play(kPlayContract);
  return nullptr;
}

TEST(Cancellation, EndsTheThreadAndTheNextCallIsLikeAnyOther) {
  ModuleUnderTest module;
  const std::size_t before = module.LogLines().size();
  pthread_t thread;
  ASSERT_EQ(pthread_create(&thread, nullptr, PlayOn, &module), 0);
  // The first line of the call comes before the tone.
  for (int poll = 0; poll < 20000 && module.LogLines().size() == before; ++poll) {
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
  }
  ASSERT_EQ(pthread_cancel(thread), 0);
  void* result = nullptr;
  ASSERT_EQ(pthread_join(thread, &result), 0);
  EXPECT_EQ(result, PTHREAD_CANCELED);
  module.StartMachine(QuietMachine());
  EXPECT_NE(module.Play(kPlayContract).find(ReturnCode(ZQRMT_RETURN_PLAYBACK_PASSED)), std::string::npos);
}

}  // namespace
