// The formatting library, compiled once: in each source that includes it, it would cost more than the source itself.
#include <fmt/format-inl.h>

// What the library's headers leave to its own source, as far as it is used here.
FMT_BEGIN_NAMESPACE
FMT_BEGIN_DETAIL_NAMESPACE
template auto thousands_sep_impl(locale_ref) -> thousands_sep_result<char>;
template auto decimal_point_impl(locale_ref) -> char;
template auto locale_ref::get<std::locale>() const -> std::locale;
FMT_END_DETAIL_NAMESPACE
FMT_END_NAMESPACE
