#pragma once

#include <cstdint>

// For a program on Linux that is linked with this: lets one of the allocations fail that it and the libraries in its process
// make with malloc, calloc, realloc or new.

// Lets the allocation fail that is the `number`-th from now on, counted from 1; 0 for none.
void FailAllocation(std::uint64_t number);

// Whether that allocation has come and failed.
bool HasAllocationFailed();
