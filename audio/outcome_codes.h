#pragma once

namespace audio {

// What the engine throws, as a plain `int`: the id of the outcome that ends the test. The sequence of a test catches
// it and reports it.
constexpr int kPlatformError = 995582;     // a platform call failed, or gave something that can't be used
constexpr int kEndpointNotFound = 770117;  // no active endpoint matches the wanted name
constexpr int kNoMemoryForSink = 990414;   // the capture sink could not allocate its store
constexpr int kSinkWriteFailed = 995727;   // the capture sink could not take a packet

// A wrong order of calls inside the module. No sequence of the tests has one.
constexpr int kNoEndpointGiven = 995571;  // a volume snapshot of nothing
constexpr int kNotSetUp = 995583;         // a stream without a buffer duration, a tone without a format

}  // namespace audio
