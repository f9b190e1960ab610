// What tests change or ask of their own process, on each operating system in its way.
#pragma once

#include <cstddef>
#include <string>

// Sets an environment variable, in the place of the value that it may have.
void SetEnvironment(const char* name, const std::string& value);

// Makes local time that of `zone`: three letters and how far UTC is ahead, as "XST-2".
void SetTimeZone(const std::string& zone);

// How many bytes of the C library's heap are handed out.
std::size_t BytesInUse();
