// What tests change in their own process or ask about it.
#pragma once

#include <cstddef>
#include <string>

// Sets an environment variable, whether or not it has a value.
void SetEnvironment(const char* name, const std::string& value);

// Sets the time zone: three letters and how many hours UTC is ahead, as in "XST-2".
void SetTimeZone(const std::string& zone);

// The number of bytes that are allocated from the C library's heap.
std::size_t BytesInUse();
