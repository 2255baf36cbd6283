// Asks its host everything that can be asked, without an effect to show, with one, from another thread and as it goes,
// with and without buffers, and tells what it heard in its name.
#include <string>
#include <thread>

#include "support/Vst2Plugin.h"

namespace {

using namespace zeltestplugins;

constexpr std::int32_t kLastOperation = 60;

void AskEverything(vst2::HostCallback host, vst2::Effect* effect) {
    for (std::int32_t operation = -1; operation <= kLastOperation; ++operation) {
        char buffer[256] = {};
        host(effect, operation, -1, -1, nullptr, 0.0f);
        host(effect, operation, 0, 0, buffer, 0.0f);
        // The times are handed out to be used; writing into them must hurt nobody.
        if (operation != vst2::kHostGetTime) continue;
        auto* const time = reinterpret_cast<vst2::TimeInfo*>(host(effect, operation, 0, 0, nullptr, 0.0f));
        if (time != nullptr) time->tempo = -1.0;
    }
}

std::string TellHost(vst2::HostCallback host) {
    char product[64] = {};
    host(nullptr, vst2::kHostGetProductText, 0, 0, product, 0.0f);
    return std::to_string(host(nullptr, vst2::kHostVersion, 0, 0, nullptr, 0.0f)) + " " + product;
}

class Curious : public Vst2Plugin {
public:
    Curious(vst2::HostCallback host, const std::string& heard)
        : Vst2Plugin(host, {.name = "", .id = 0x5A437572, .inputs = 2, .outputs = 2, .version = 0x0102}),
          mHeard(heard) {
        mFacts.name = mHeard.c_str();
        AskEverything(host, &mEffect);
        std::thread(AskEverything, host, &mEffect).join();
    }
    ~Curious() override { AskEverything(mHost, nullptr); }

private:
    std::string mHeard;
};

}  // namespace

ZEL_VST2_ENTRY {
    AskEverything(host, nullptr);
    return (new Curious(host, TellHost(host)))->GetEffect();
}
