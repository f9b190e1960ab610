#pragma once

#include <concepts>
#include <memory>
#include <string>
#include <string_view>
#include <type_traits>

namespace logging {

// The text of a log message, or a callable that makes it. The callable is called only after the message has passed the
// filter, and once, so that no text is made for a message that is rejected:
//
//   logger.LogDebug2(7600, [&] { return "Set TimeStamp:" + WideToNarrow(stamp); }, 0.0);
//
// It owns nothing and allocates nothing. What it was made from must outlive the call that takes it, as an argument
// written in place does.
class MessageText {
 public:
  template <typename Text>
  requires std::convertible_to<const Text&, std::string_view> MessageText(const Text& text) : text_(text) {}

  template <typename Maker>
  requires(std::is_object_v<Maker>&& std::is_invocable_r_v<std::string, const Maker&>) MessageText(const Maker& maker)
      : maker_(std::addressof(maker)),
        call_([](const void* object) -> std::string { return (*static_cast<const Maker*>(object))(); }) {}

  // The text itself. Throws what the callable throws.
  std::string Make() const { return call_ == nullptr ? std::string(text_) : call_(maker_); }

 private:
  std::string_view text_;
  const void* maker_ = nullptr;
  std::string (*call_)(const void*) = nullptr;
};

}  // namespace logging
