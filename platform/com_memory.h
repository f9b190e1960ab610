#pragma once

#include <memory>

#include "platform/core_audio.h"

struct CoTaskMemRelease {
  void operator()(void* memory) const { CoTaskMemFree(memory); }
};

// Text or a structure that a platform operation allocated for its caller; released with CoTaskMemFree.
template <class Content>
using CoTaskMemory = std::unique_ptr<Content, CoTaskMemRelease>;
