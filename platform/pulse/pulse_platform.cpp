#include "platform/pulse/pulse_platform.h"

#include <chrono>
#include <thread>
#include <vector>

#include "platform/com_ptr.h"
#include "platform/property.h"
#include "platform/pulse/device_enumerator.h"
#include "platform/pulse/endpoint.h"

namespace pulse_audio {

namespace {

class PulsePlatform final : public platform::Platform {
 public:
  explicit PulsePlatform(const std::string& server) : connection_(std::make_shared<Connection>(server)) {}

  HRESULT CreateInstance(REFCLSID classId, IUnknown* outer, REFIID iid, void** object) override {
    if (outer != nullptr) return CLASS_E_NOAGGREGATION;
    if (!(classId == core_audio::EnumeratorClass())) return REGDB_E_CLASSNOTREG;
    try {
      ComPtr<IMMDeviceEnumerator> enumerator;
      NewDeviceEnumerator(connection_, enumerator.Receive());
      return enumerator->QueryInterface(iid, object);
    } catch (...) {
      // Only the allocator throws in here.
      return E_OUTOFMEMORY;
    }
  }

  HRESULT ClearProperty(PROPVARIANT* value) override { return platform::ReleaseProperty(value); }

  void Wait(DWORD milliseconds) override { std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds)); }

  std::string State() const override {
    Server server;
    std::vector<Endpoint> endpoints;
    const HRESULT status = Ask(&server, &endpoints);
    rapidjson::StringBuffer text;
    platform::StateWriter writer(text);
    writer.StartObject();
    writer.Key("platform");
    writer.String("pulse");
    writer.Key("status");
    writer.Int(status);
    writer.Key("server");
    writer.StartObject();
    writer.Key("name");
    platform::WriteText(writer, server.name);
    writer.Key("version");
    platform::WriteText(writer, server.version);
    writer.EndObject();
    writer.Key("endpoints");
    writer.StartArray();
    for (const Endpoint& endpoint : endpoints) platform::WriteEndpoint(writer, endpoint);
    writer.EndArray();
    writer.EndObject();
    return {text.GetString(), text.GetSize()};
  }

 private:
  HRESULT Ask(Server* server, std::vector<Endpoint>* endpoints) const {
    const Connection::Lock lock(*connection_);
    const HRESULT status = GetServer(*connection_, server);
    return status == S_OK ? ListEndpoints(*connection_, endpoints) : status;
  }

  std::shared_ptr<Connection> connection_;
};

}  // namespace

std::unique_ptr<platform::Platform> PlatformOn(const std::string& server) {
  return std::make_unique<PulsePlatform>(server);
}

}  // namespace pulse_audio
