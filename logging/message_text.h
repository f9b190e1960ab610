#pragma once

#include <concepts>
#include <memory>
#include <string>
#include <string_view>
#include <type_traits>

namespace logging {

// The text of a log message, or a way to make it. A callable is called when the message has passed the filter, and at
// most once, so that a message nobody wants costs no text:
//
//   logger.LogDebug2(7600, [&] { return "Set TimeStamp:" + WideToNarrow(stamp); }, 0.0);
//
// Owns nothing and allocates nothing: what it was made from must outlive the call it is handed to, as an argument
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
