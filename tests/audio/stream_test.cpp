#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <fstream>

#include "audio/audio_capture_stream.h"
#include "audio/audio_render_stream.h"
#include "audio/endpoint_volume_snapshot.h"
#include "audio/outcome_codes.h"
#include "platform/audio_platform.h"
#include "tests/audio/outcome.h"
#include "tests/support/temp_directory.h"

namespace audio {
namespace {

// Puts the thread on a virtual machine with these endpoints and faults.
class Machine {
 public:
  explicit Machine(const std::string& endpoints, const std::string& faults = "") {
    const std::string file = directory_ / "machine.json";
    std::ofstream(file) << R"({"clock":"virtual","endpoints":[)" << endpoints << R"(],"faults":[)" << faults << "]}";
    EXPECT_EQ(AudioPlatformInitialize(("virtual:" + file).c_str()), 0) << AudioPlatformError();
  }
  ~Machine() { AudioPlatformUninitialize(); }

  std::string State() const {
    return std::unique_ptr<char, decltype(&std::free)>(AudioPlatformState(), &std::free).get();
  }
  bool Shows(const std::string& text) const { return State().find(text) != std::string::npos; }

 private:
  TempDirectory directory_;
};

// The level of the endpoint that `name` binds, which says which one it is, or the outcome if it binds none.
double Bound(const std::string& endpoints, const std::u16string& name) {
  const Machine machine(endpoints);
  float level = 0.0F;
  const int outcome = OutcomeOf([&] { level = AudioEndpointClass(eCapture, name).GetChannelLevel(0); });
  EXPECT_TRUE(machine.Shows(R"("liveObjects":0)"));
  return outcome + static_cast<double>(level);
}

TEST(Endpoint, IsBoundWhenItsWholeIdOccursInTheName) {
  const std::string abc = R"({"id":"{0.0.1.00000000}.{ABC}","flow":"capture","levels":[0.5]})";
  const std::string xyz = R"({"id":"{xyz}","flow":"capture","levels":[0.25]})";
  const std::string accented = R"({"id":"{\u00C9}","flow":"capture","levels":[0.125]})";
  EXPECT_EQ(Bound(abc, u"SWD\\MMDEVAPI\\{0.0.1.00000000}.{abc}"), 0.5);
  EXPECT_EQ(Bound(abc, u"{0.0.1.00000000}"), kEndpointNotFound) << "shorter than the id";
  EXPECT_EQ(Bound(abc + "," + xyz, u"{XYZ} and {0.0.1.00000000}.{ABC}"), 0.5);
  EXPECT_EQ(Bound(xyz + "," + accented, u"{\u00C9}"), 0.125);
  EXPECT_EQ(Bound(xyz + "," + accented, u"{\u00E9}"), kEndpointNotFound) << "only A to Z are folded";
  EXPECT_EQ(Bound(R"({"id":"x","flow":"capture","state":"unplugged"},{"id":"y","flow":"render"})", u"x y"),
            kEndpointNotFound);
}

constexpr char kSpeakers[] =
    R"({"id":"music","flow":"render","default":["multimedia"],"levels":[0.25,0.75],"muted":true},
       {"id":"console","flow":"render","default":["console"],"levels":[0.5],"muted":false})";

TEST(VolumeSnapshot, PutsBackWhatItSaved) {
  const Machine machine(kSpeakers);
  AudioEndpointClass endpoint(eRender, u"music");
  EndpointVolumeSnapshotClass snapshot(&endpoint);
  snapshot.RestoreLevels();
  EXPECT_FALSE(machine.Shows("SetChannelVolumeLevelScalar")) << "with nothing saved";
  snapshot.SaveMute();
  snapshot.SetMute(false);
  snapshot.SaveLevels();
  snapshot.SetAllLevels(100.0F);
  EXPECT_TRUE(machine.Shows(R"("levels":[1,1],"muted":false)"));
  snapshot.RestoreMute();
  snapshot.RestoreLevels();
  EXPECT_TRUE(machine.Shows(R"("levels":[0.25,0.75],"muted":true)"));
  EXPECT_EQ(OutcomeOf([] { EndpointVolumeSnapshotClass nothing(nullptr); }), kNoEndpointGiven);
}

TEST(RenderStream, TakesOverTheNamedEndpointInPlace) {
  const Machine machine(kSpeakers);
  {
    AudioRenderStreamClass stream;
    EXPECT_EQ(stream.GetChannelLevel(0), 0.5F) << "the default for the console";
    EndpointVolumeSnapshotClass snapshot(&stream);
    snapshot.SetMute(false);
    EXPECT_FALSE(machine.Shows("IAudioEndpointVolume::SetMute")) << "unmuted already";
    const std::string objects = machine.State().substr(0, machine.State().find("endpoints"));
    stream = AudioRenderStreamClass(u"music");
    EXPECT_TRUE(machine.Shows(objects));
    snapshot.SetAllLevels(-1.0F);
    EXPECT_TRUE(machine.Shows(R"("levels":[0,0])"));
    const std::string before = machine.State();
    EXPECT_EQ(OutcomeOf([&] { stream.Initialize(FixedTestFormat); }), kNotSetUp);
    EXPECT_EQ(machine.State(), before) << "no platform call without a buffer duration";
    stream.SetBufferDuration(15000000);
    stream.Initialize(FixedTestFormat);
    EXPECT_EQ(std::memcmp(&stream.GetFormat(), &FixedTestFormat, sizeof FixedTestFormat), 0);
  }
  EXPECT_TRUE(machine.Shows(R"("liveObjects":0)"));
  EXPECT_EQ(OutcomeOf([] { AudioEndpointClass endpoint(eCapture); }), kPlatformError) << "there is no such default";
}

TEST(CaptureStream, OffersTheDefaultEndpointsFormat) {
  const std::string wide = R"({"tag":"extensible","channels":2,"bits":24,"validBits":24,"channelMask":3})";
  const std::string speech = R"({"tag":"extensible","channels":1,"bits":16,"validBits":16,"channelMask":4})";
  const std::string plain = R"({"tag":"pcm","channels":1,"bits":16})";
  const std::string emptyHanded = R"({"call":1,"status":1,"operation":)";
  const struct {
    std::string role, format, closest, fault;
    int outcome, bits, validBits, channelMask;
  } cases[] = {
      {"multimedia", wide, "null", "", 0, 24, 24, 3},
      {"multimedia", wide, speech, "", 0, 16, 16, 3},  // a match replaces 20 bytes, without the mask
      {"multimedia", wide, plain, "", 0, 16, 0, 3},    // this one has 18 bytes
      {"multimedia", plain, "null", "", 0, 16, 0, 0},
      {"multimedia", wide, R"("none")", "", kPlatformError, 24, 24, 3},
      {"console", wide, "null", "", kPlatformError, 0, 0, 0},
      {"multimedia", wide, "null", emptyHanded + R"("IMMDevice::OpenPropertyStore"})", kPlatformError, 0, 0, 0},
      {"multimedia", wide, "null", emptyHanded + R"("IAudioClient::IsFormatSupported"})", kPlatformError, 24, 24, 3}};
  for (const auto& row : cases) {
    SCOPED_TRACE(row.role + row.format + row.closest + row.fault);
    const Machine machine(R"({"id":"default","flow":"capture","default":[")" + row.role + R"("],"format":)" +
                              row.format + R"(},{"id":"bound","flow":"capture","default":[],"closest":)" + row.closest +
                              "}",
                          row.fault);
    AudioCaptureStreamClass stream(u"bound");
    const std::string before = machine.State();
    EXPECT_EQ(OutcomeOf([&] { stream.Initialize(); }), kNotSetUp);
    EXPECT_EQ(machine.State(), before) << "no platform call without a buffer duration";
    stream.SetBufferDuration(15000000);
    EXPECT_EQ(OutcomeOf([&] { stream.Initialize(); }), row.outcome);
    EXPECT_EQ(int{stream.GetFormat().header.wBitsPerSample}, row.bits);
    EXPECT_EQ(stream.GetFormat().validBits(), row.validBits);
    EXPECT_EQ(stream.GetFormat().tail[2], row.channelMask);
  }
}

}  // namespace
}  // namespace audio
